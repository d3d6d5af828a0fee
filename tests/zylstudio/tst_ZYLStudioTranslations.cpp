// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The module's translation as the studio installs it: identifiers become sentences, in English
// whatever the user's locale when there is no other language.
#include "ZYLStudioTranslations.h"

#include "ZYLSysLocalizationManager.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

class tst_ZYLStudioTranslations : public QObject {
    Q_OBJECT
private slots:
    void moduleIdentifiersReadAsSentences_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<bool>("moduleFound");
        QTest::addColumn<QString>("wrongNumStarts");
        const QString sentence = QStringLiteral("More than one course has no link leading to it. "
                                                "Link the courses into one chain before accepting.");
        QTest::newRow("English") << "en_US" << true << sentence;
        QTest::newRow("German falls back to English") << "de_DE" << true << sentence;
        QTest::newRow("no module translation") << "en_US" << false << "WrongNumStarts";
    }
    void moduleIdentifiersReadAsSentences() {
        QFETCH(QString, locale);
        QFETCH(bool, moduleFound);
        QFETCH(QString, wrongNumStarts);
        QTemporaryDir empty;
        if (!moduleFound)
            qputenv("ZYL_MODULE_DIR", empty.path().toLocal8Bit());
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale(locale));
        ZYLStudioTranslations translations;
        QCOMPARE(translations.Install(), moduleFound ? QStringLiteral("en") : QString());
        qunsetenv("ZYL_MODULE_DIR");
        QCOMPARE(QCoreApplication::translate("ZYLTPEditCourseWidget", "WrongNumStarts"), wrongNumStarts);
        // Texts that already are sentences stay as they are.
        QCOMPARE(QCoreApplication::translate("ZYLTPEditCourseCmd", "Edit Course"), QStringLiteral("Edit Course"));
    }
};

QTEST_GUILESS_MAIN(tst_ZYLStudioTranslations)
#include "tst_ZYLStudioTranslations.moc"
