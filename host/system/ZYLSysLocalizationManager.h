// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSysSettings.h"
#include "ZYLSystemExport.h"

#include <QLocale>
#include <QStringView>

#include <memory>

/// The user's locale for number text and the host's translations.
///
/// The locale is persisted in the settings group "ZYLLocalization" under the key "locale"
/// (a locale name such as "de_DE"); without a persisted one it is the application's default
/// locale at first use. Setting it also makes it Qt's default locale, so that spin boxes and
/// value texts agree on the decimal separator.
///
/// Translations: `LoadTranslations` installs, for every name prefix of the ".qm" files in a
/// folder (e.g. "zyl" for "zyl_de.qm"), the best file for the locale, plus Qt's own "qtbase"
/// translation; a missing folder or file is not an error. After a first load, a change of
/// locale reloads them.
class ZYLSYSTEM_EXPORT ZYLSysLocalizationManager : public ZYLSysSettings {
    Q_OBJECT
    Q_PROPERTY(QString locale READ GetLocaleName WRITE SetLocaleName)
public:
    /// Returns the one instance; the first call reads the persisted locale.
    static ZYLSysLocalizationManager *GetManager();
    ~ZYLSysLocalizationManager() override;

    /// Returns the locale used for number text.
    QLocale GetLocale() const;
    /// Sets and persists the locale; emits `LocaleChanged` when it changes.
    void SetLocale(const QLocale &locale);

    /// Reads a number in the locale or, failing that, in the C locale; group separators and
    /// non-finite numbers are refused. Returns false, leaving value untouched, when unreadable.
    bool ReadNumber(QStringView text, double *value) const;
    /// Formats a number in the locale with fixed decimals and no group separators; compact
    /// drops trailing zeros. A result that rounds to zero never shows a minus sign.
    QString FormatNumber(double value, int decimals, bool compact = false) const;

    /// Installs the translations of the folder (empty: `GetDefaultTranslationsFolder`) for the
    /// locale, replacing those installed before. Returns the number of translators installed;
    /// 0 without an application object, a folder or a matching file.
    int LoadTranslations(const QString &folder = QString());
    /// Returns the folder named by ZYL_TRANSLATIONS_DIR, or "translations" beside the program.
    static QString GetDefaultTranslationsFolder();

    /// Goes back to the locale found at first use, then removes the persisted one.
    void RevertToDefaults() override;

signals:
    void LocaleChanged(const QLocale &locale);

private:
    ZYLSysLocalizationManager();

    QString GetLocaleName() const;
    void SetLocaleName(const QString &name);

    struct Data;
    std::unique_ptr<Data> d;
};
