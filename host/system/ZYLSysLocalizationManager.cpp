// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysLocalizationManager.h"

#include "ZYLSysLogging.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QSet>
#include <QTranslator>

#include <charconv>
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
    // Set when the locale writes numbers as ASCII digits with "-": formatting can then use
    // std::to_chars and only swap the decimal point.
    bool asciiNumbers = false;
    QChar decimalPoint = QLatin1Char('.');

    void SetLocale(const QLocale &value)
    {
        locale = value;
        readLocale = value;
        readLocale.setNumberOptions(QLocale::RejectGroupSeparator);
        writeLocale = value;
        writeLocale.setNumberOptions(QLocale::OmitGroupSeparator);
        const QString point = value.decimalPoint();
        asciiNumbers = value.zeroDigit() == QLatin1String("0") && value.negativeSign() == QLatin1String("-")
                       && point.size() == 1;
        decimalPoint = point.isEmpty() ? QLatin1Char('.') : point.front();
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

// Reads plain ASCII numbers ("12.5", "-3e2") without QLocale, which is several times slower.
// When it reads the whole text, every locale that reads the text at all agrees with it (such
// text has no group or locale-specific decimal separator), so the result is the same.
bool ReadPlainNumber(QStringView text, double *value)
{
    char buffer[64];
    if (text.isEmpty() || text.size() > qsizetype(sizeof buffer))
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (!((c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'e' || c == u'E'))
            return false;
        buffer[i] = char(c);
    }
    const char *end = buffer + text.size();
    double number = 0.0;
    const std::from_chars_result result = std::from_chars(buffer, end, number);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(number))
        return false;
    *value = number;
    return true;
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
    if (ReadPlainNumber(text, value))
        return true;
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
    if (d->asciiNumbers && std::isfinite(value) && decimals >= 0 && decimals <= 17) {
        // QLocale::toString costs several times more than the rest of a value's text.
        char buffer[400];
        const std::to_chars_result result =
            std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
        if (result.ec == std::errc()) {
            qsizetype length = result.ptr - buffer;
            if (compact && decimals > 0) {
                while (buffer[length - 1] == '0')
                    --length;
                if (buffer[length - 1] == '.')
                    --length;
            }
            QString text = QString::fromLatin1(buffer, length);
            const qsizetype point = text.indexOf(QLatin1Char('.'));
            if (point >= 0)
                text[point] = d->decimalPoint;
            return text;
        }
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
