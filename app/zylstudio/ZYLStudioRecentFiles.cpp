// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioRecentFiles.h"

#include "ZYLSysSettings.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>

namespace {

Q_LOGGING_CATEGORY(lcZYLStudioRecentFiles, "zyl.studio.recentfiles")

const QString Group = QStringLiteral("ZYLStudio");
const QString Key = QStringLiteral("recentFiles");

QString Normalized(const QString &fileName) {
    return fileName.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(fileName).absoluteFilePath());
}

} // namespace

ZYLStudioRecentFiles::ZYLStudioRecentFiles(QObject *parent) : QObject(parent) {}

ZYLStudioRecentFiles::~ZYLStudioRecentFiles() = default;

QStringList ZYLStudioRecentFiles::GetFiles() const {
    QSettings settings(ZYLSysSettings::GetSettingsFilePath(), QSettings::IniFormat);
    settings.beginGroup(Group);
    const QVariant stored = settings.value(Key);
    // An INI file gives a single name as a plain string and a list as a string list; anything
    // else was not written by us.
    QStringList files;
    if (stored.typeId() == QMetaType::QStringList)
        files = stored.toStringList();
    else if (stored.typeId() == QMetaType::QString)
        files = QStringList{stored.toString()};
    QStringList result;
    for (const QString &file : files) {
        // Only absolute names are ever stored; anything else was not written by us.
        const QString normalized = QDir::isAbsolutePath(file) ? Normalized(file) : QString();
        if (!normalized.isEmpty() && !result.contains(normalized))
            result.append(normalized);
        if (result.size() == MaxCount)
            break;
    }
    return result;
}

void ZYLStudioRecentFiles::Add(const QString &fileName) {
    const QString normalized = Normalized(fileName);
    if (normalized.isEmpty())
        return;
    QStringList files = GetFiles();
    files.removeAll(normalized);
    files.prepend(normalized);
    while (files.size() > MaxCount)
        files.removeLast();
    Store(files);
}

void ZYLStudioRecentFiles::Remove(const QString &fileName) {
    QStringList files = GetFiles();
    if (files.removeAll(Normalized(fileName)) > 0)
        Store(files);
}

void ZYLStudioRecentFiles::Clear() {
    if (!GetFiles().isEmpty())
        Store({});
}

void ZYLStudioRecentFiles::Store(const QStringList &files) {
    QSettings settings(ZYLSysSettings::GetSettingsFilePath(), QSettings::IniFormat);
    settings.beginGroup(Group);
    if (files.isEmpty())
        settings.remove(Key);
    else
        settings.setValue(Key, files);
    settings.endGroup();
    settings.sync();
    if (settings.status() != QSettings::NoError)
        qCWarning(lcZYLStudioRecentFiles) << "Cannot write the recent files to" << settings.fileName();
    emit Changed();
}
