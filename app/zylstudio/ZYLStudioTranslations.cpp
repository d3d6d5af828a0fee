// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioTranslations.h"

#include "ZYLStudioSession.h"

#include "ZYLSysLocalizationManager.h"

#include <QCoreApplication>
#include <QTranslator>

ZYLStudioTranslations::ZYLStudioTranslations() = default;

ZYLStudioTranslations::~ZYLStudioTranslations() = default;

QString ZYLStudioTranslations::Install() {
    ZYLSysLocalizationManager *localization = ZYLSysLocalizationManager::GetManager();
    localization->LoadTranslations();
    // A new translator replaces the old one: the old one's destructor uninstalls it.
    m_module = std::make_unique<QTranslator>();
    const QString name = QStringLiteral("ZYLToolPathUI");
    const QString separator = QStringLiteral("_");
    const QString folder = ZYLStudioSession::GetModuleDirectory();
    // The module's source texts include identifiers, so English is the fallback, not them.
    if (!m_module->load(localization->GetLocale(), name, separator, folder)
        && !m_module->load(QLocale(QLocale::English), name, separator, folder)) {
        m_module.reset();
        return {};
    }
    QCoreApplication::installTranslator(m_module.get());
    return m_module->language();
}
