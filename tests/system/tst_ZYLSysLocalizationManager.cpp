// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysLocalizationManager.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_ZYLSysLocalizationManager : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_folder;
    ZYLSysLocalizationManager *m_manager = nullptr;

    static QString Course() { return QCoreApplication::translate("ZYLTest", "Course"); }

private slots:
    void initTestCase()
    {
        qputenv("ZYL_SETTINGS_DIR", m_folder.path().toUtf8());
        QFile file(m_folder.filePath(QStringLiteral("zyl.ini")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[ZYLLocalization]\nlocale=fr_FR\n");
        file.close();
        m_manager = ZYLSysLocalizationManager::GetManager();
    }

    void unknownStoredLocaleIsIgnored()
    {
        m_manager->SetLocale(QLocale(QStringLiteral("de_DE")));
        QFile file(m_folder.filePath(QStringLiteral("zyl.ini")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[ZYLLocalization]\nlocale=xx_garbage\n");
        file.close();
        m_manager->Restore();
        QCOMPARE(m_manager->GetLocale().name(), QStringLiteral("de_DE"));
    }

    void translationsFollowTheLocale()
    {
        m_manager->SetLocale(QLocale::c());
        QCOMPARE(m_manager->LoadTranslations(m_folder.filePath(QStringLiteral("missing"))), 0);
        QCOMPARE(Course(), QStringLiteral("Course"));
        // A damaged file beside the good one must not stop the loader.
        QTemporaryDir folder;
        QVERIFY(QFile::copy(QStringLiteral(ZYL_TEST_TRANSLATIONS "/zyltest_de.qm"), folder.filePath("zyltest_de.qm")));
        QFile damaged(folder.filePath(QStringLiteral("broken_de.qm")));
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        damaged.write("not a translation");
        damaged.close();
        m_manager->SetLocale(QLocale(QStringLiteral("de_DE")));
        QVERIFY(m_manager->LoadTranslations(folder.path()) >= 1);
        QCOMPARE(Course(), QStringLiteral("Bahn"));
        m_manager->SetLocale(QLocale(QStringLiteral("en_GB")));
        QCOMPARE(Course(), QStringLiteral("Course"));
        m_manager->SetLocale(QLocale(QStringLiteral("de_AT")));
        QCOMPARE(Course(), QStringLiteral("Bahn"));
    }

    void revertGoesBackToTheFirstLocale()
    {
        m_manager->SetLocale(QLocale(QStringLiteral("en_US")));
        m_manager->RevertToDefaults();
        QVERIFY(!m_manager->GetValue("locale").isValid());
        QCOMPARE(m_manager->GetLocale().name(), QStringLiteral("C"));
    }
};

QTEST_GUILESS_MAIN(tst_ZYLSysLocalizationManager)
#include "tst_ZYLSysLocalizationManager.moc"
