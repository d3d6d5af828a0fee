// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysLocalizationManager.h"

#include "ZYLSysLogging.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QSet>
#include <QTranslator>

#include <cmath>
#include <vector>

struct ZYLSysLocalizationManager::Data {
    QLocale locale;
    QLocale initialLocale;
    QLocale readLocale;   // locale with group separators refused
    QLocale writeLocale;  // locale with group separators left out
    std::vector<std::unique_ptr<QTranslator>> translators;
    QString translationsFolder;
    bool translationsLoaded = false;

    void SetLocale(const QLocale &value)
    {
        locale = value;
        readLocale = value;
        readLocale.setNumberOptions(QLocale::RejectGroupSeparator);
        writeLocale = value;
        writeLocale.setNumberOptions(QLocale::OmitGroupSeparator);
    }
};

namespace {

const QLocale &CLocaleForReading()
{
    static const QLocale locale = [] {
        QLocale c = QLocale::c();
        c.setNumberOptions(QLocale::RejectGroupSeparator);
        return c;
    }();
    return locale;
}

bool InstallTranslator(std::vector<std::unique_ptr<QTranslator>> &translators, const QLocale &locale,
                       const QString &prefix, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(locale, prefix, QStringLiteral("_"), folder))
        return false;
    QCoreApplication::installTranslator(translator.get());
    translators.push_back(std::move(translator));
    return true;
}

} // namespace

ZYLSysLocalizationManager::ZYLSysLocalizationManager()
    : ZYLSysSettings("ZYLLocalization")
    , d(std::make_unique<Data>())
{
    d->initialLocale = QLocale();
    d->SetLocale(d->initialLocale);
    // Number text is read and written from the first call on; it must already be the user's.
    Restore();
}

ZYLSysLocalizationManager::~ZYLSysLocalizationManager() = default;

ZYLSysLocalizationManager *ZYLSysLocalizationManager::GetManager()
{
    static ZYLSysLocalizationManager manager;
    return &manager;
}

QLocale ZYLSysLocalizationManager::GetLocale() const
{
    return d->locale;
}

void ZYLSysLocalizationManager::SetLocale(const QLocale &locale)
{
    if (locale == d->locale)
        return;
    d->SetLocale(locale);
    QLocale::setDefault(locale);
    UpdateSetting("locale", locale.name());
    if (d->translationsLoaded)
        LoadTranslations(d->translationsFolder);
    emit LocaleChanged(locale);
}

bool ZYLSysLocalizationManager::ReadNumber(QStringView text, double *value) const
{
    bool ok = false;
    double number = d->readLocale.toDouble(text, &ok);
    // Text written by programs ("%.10f") uses the C locale whatever the user's locale is.
    if (!ok)
        number = CLocaleForReading().toDouble(text, &ok);
    if (!ok || !std::isfinite(number))
        return false;
    *value = number;
    return true;
}

QString ZYLSysLocalizationManager::FormatNumber(double value, int decimals, bool compact) const
{
    // Round first so that a tiny negative value shows as "0.000", not "-0.000".
    const double scale = std::pow(10.0, decimals);
    if (std::isfinite(value) && std::abs(value) * scale < 1e15) {
        value = std::round(value * scale) / scale;
        if (value == 0.0)
            value = 0.0;
    }
    QString text = d->writeLocale.toString(value, 'f', decimals);
    if (compact && decimals > 0) {
        const QString point = d->writeLocale.decimalPoint();
        const QString zero = d->writeLocale.zeroDigit();
        if (text.contains(point)) {
            while (text.endsWith(zero))
                text.chop(zero.size());
            if (text.endsWith(point))
                text.chop(point.size());
        }
    }
    return text;
}

int ZYLSysLocalizationManager::LoadTranslations(const QString &folder)
{
    for (const std::unique_ptr<QTranslator> &translator : d->translators)
        QCoreApplication::removeTranslator(translator.get());
    d->translators.clear();
    d->translationsFolder = folder;
    d->translationsLoaded = true;
    if (!QCoreApplication::instance())
        return 0;

    const QString path = folder.isEmpty() ? GetDefaultTranslationsFolder() : folder;
    const QDir directory(path);
    QSet<QString> prefixes;
    const QStringList files = directory.entryList({QStringLiteral("*.qm")}, QDir::Files, QDir::Name);
    for (const QString &file : files)
        prefixes.insert(file.section(QLatin1Char('_'), 0, 0).section(QLatin1Char('.'), 0, 0));
    QStringList ordered(prefixes.begin(), prefixes.end());
    ordered.sort();
    for (const QString &prefix : std::as_const(ordered))
        InstallTranslator(d->translators, d->locale, prefix, path);
    InstallTranslator(d->translators, d->locale, QStringLiteral("qtbase"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    qCDebug(lcZYLSystem) << "Installed" << d->translators.size() << "translators for" << d->locale.name()
                         << "from" << path;
    return int(d->translators.size());
}

QString ZYLSysLocalizationManager::GetDefaultTranslationsFolder()
{
    const QString overridden = qEnvironmentVariable("ZYL_TRANSLATIONS_DIR");
    if (!overridden.isEmpty())
        return overridden;
    if (!QCoreApplication::instance())
        return QString();
    return QCoreApplication::applicationDirPath() + QStringLiteral("/translations");
}

void ZYLSysLocalizationManager::RevertToDefaults()
{
    SetLocale(d->initialLocale);
    ZYLSysSettings::RevertToDefaults();
}

QString ZYLSysLocalizationManager::GetLocaleName() const
{
    return d->locale.name();
}

void ZYLSysLocalizationManager::SetLocaleName(const QString &name)
{
    const QLocale locale(name);
    // QLocale falls back to "C" for names it does not know; keep the current locale then.
    if (name.trimmed().isEmpty() || (locale == QLocale::c() && name != QLatin1String("C"))) {
        qCDebug(lcZYLSystem) << "Ignoring unknown locale" << name;
        return;
    }
    SetLocale(locale);
}
