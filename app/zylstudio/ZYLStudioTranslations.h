// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QString>

#include <memory>

class QTranslator;

/// The translations the studio installs before it loads the module, for the locale of
/// `ZYLSysLocalizationManager`: the host's own (`LoadTranslations` of its translations folder,
/// Qt's included) and the module's "ZYLToolPathUI_<language>.qm" from the folder the module
/// is loaded from, English when the module has none for the locale. The module's identifiers
/// shown to the user (message keys, model names) read as sentences only through the latter.
///
/// Only the studio installs them; a session alone (as in the tests) shows the source texts.
class ZYLStudioTranslations {
public:
    ZYLStudioTranslations();
    /// Removes the module's translator from the application.
    ~ZYLStudioTranslations();

    /// Installs the translations, replacing those of an earlier call. Returns the language
    /// of the module's translation ("en", "de", ...), empty when the module has none.
    QString Install();

private:
    std::unique_ptr<QTranslator> m_module;
};
