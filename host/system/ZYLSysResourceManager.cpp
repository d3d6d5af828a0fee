// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysResourceManager.h"

#include "ZYLSysLogging.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QWidget>

namespace {

const QString kImageFolder = QStringLiteral(":/zyl/images");
const QString kPlaceholder = QStringLiteral("zyl-placeholder");
const QString kThemeFolder = QStringLiteral(":/icons");
const QString kThemeName = QStringLiteral("zyl");

QString PathOf(const QString &name)
{
    return kImageFolder + QLatin1Char('/') + name + QStringLiteral(".svg");
}

QPixmap Render(const QString &path, int size)
{
    QSvgRenderer renderer(path);
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

// Names are checked against the resource, so "../x" or "a/b" cannot reach other files.
bool IsShipped(const QString &name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && name != kPlaceholder
           && QFile::exists(PathOf(name));
}

QString ResolvedPath(const QString &name)
{
    if (IsShipped(name))
        return PathOf(name);
    qCDebug(lcZYLSystem) << "No image named" << name << "- showing the placeholder";
    return PathOf(kPlaceholder);
}

} // namespace

QPixmap ZYLSysResourceManager::GetImage(const QString &name, int size)
{
    static QHash<QPair<QString, int>, QPixmap> cache;
    size = qBound(1, size, 1024);
    const QPair<QString, int> key(name, size);
    if (const auto found = cache.constFind(key); found != cache.cend())
        return *found;
    const QPixmap pixmap = Render(ResolvedPath(name), size);
    // Only shipped images are cached: a missing one should say so each time it is asked for.
    if (IsShipped(name))
        cache.insert(key, pixmap);
    return pixmap;
}

QIcon ZYLSysResourceManager::GetIcon(const QString &name)
{
    return QIcon(ResolvedPath(name));
}

bool ZYLSysResourceManager::HasImage(const QString &name)
{
    return IsShipped(name);
}

QString ZYLSysResourceManager::GetImagePath(const QString &name)
{
    return IsShipped(name) ? PathOf(name) : QString();
}

QStringList ZYLSysResourceManager::GetImageNames()
{
    QStringList names;
    const QStringList files = QDir(kImageFolder).entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    for (const QString &file : files) {
        const QString name = file.chopped(4);
        if (name != kPlaceholder)
            names.append(name);
    }
    return names;
}

QPixmap ZYLSysResourceManager::GetPlaceholderImage(int size)
{
    return Render(PathOf(kPlaceholder), qBound(1, size, 1024));
}

void ZYLSysResourceManager::ResolveStyleSheetImage(QWidget *widget, const QString &placeholder,
                                                   const QString &image)
{
    if (!widget || placeholder.isEmpty()) {
        qCWarning(lcZYLSystem) << "ResolveStyleSheetImage needs a widget and a placeholder";
        return;
    }
    QString styleSheet = widget->styleSheet();
    if (!styleSheet.contains(placeholder))
        return;
    const QString url = QStringLiteral("url(%1)").arg(ResolvedPath(image));
    // First the placeholders already wrapped in url(...), with or without quotes, then the
    // bare ones, so that neither form ends up as url(url(...)).
    const QRegularExpression wrapped(QStringLiteral("url\\(\\s*[\"']?%1[\"']?\\s*\\)")
                                         .arg(QRegularExpression::escape(placeholder)));
    styleSheet.replace(wrapped, url);
    styleSheet.replace(placeholder, url);
    widget->setStyleSheet(styleSheet);
}

void ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(QWidget *widget)
{
    if (!widget) {
        qCWarning(lcZYLSystem) << "ResolveUpDownImagesOfStyleSheet needs a widget";
        return;
    }
    ResolveStyleSheetImage(widget, QStringLiteral("@@@unchecked-image@@@"), QStringLiteral("button-collapse-right"));
    ResolveStyleSheetImage(widget, QStringLiteral("@@@checked-image@@@"), QStringLiteral("button-collapse-left"));
}

bool ZYLSysResourceManager::InstallIconTheme()
{
    if (!QFile::exists(kThemeFolder + QLatin1Char('/') + kThemeName + QStringLiteral("/index.theme"))) {
        qCWarning(lcZYLSystem) << "The icon theme" << kThemeName << "is missing from the resources";
        return false;
    }
    QStringList paths = QIcon::themeSearchPaths();
    if (!paths.contains(kThemeFolder)) {
        paths.prepend(kThemeFolder);
        QIcon::setThemeSearchPaths(paths);
    }
    const QString previous = QIcon::themeName();
    if (previous != kThemeName) {
        if (!previous.isEmpty())
            QIcon::setFallbackThemeName(previous);
        QIcon::setThemeName(kThemeName);
    }
    return true;
}

QString ZYLSysResourceManager::GetIconThemeName()
{
    return kThemeName;
}
