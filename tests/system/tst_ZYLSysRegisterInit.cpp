// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysException.h"
#include "ZYLSysRegisterInit.h"
#include "ZYLSysSettings.h"

#include <QRegularExpression>
#include <QTest>

#include <stdexcept>

namespace {

class PlainSettings : public ZYLSysSettings {
public:
    PlainSettings() : ZYLSysSettings("InitTest") {}
};

} // namespace

// The initialisation state is process-wide, so the functions run as one story, in order.
class tst_ZYLSysRegisterInit : public QObject {
    Q_OBJECT
private slots:
    void queuedCallbacksRunOnceInOrder()
    {
        QStringList calls;
        PlainSettings settings;
        bool restoredFirst = false;
        QVERIFY(ZYLSysRegisterInit([&] {
            calls << "A";
            restoredFirst = settings.IsRestored();
        }));
        QVERIFY(ZYLSysRegisterInit([&] {
            calls << "B";
            throw ZYLSysException(QStringLiteral("host failure"));
        }));
        QVERIFY(ZYLSysRegisterInit([&] {
            calls << "C";
            throw std::runtime_error("std failure");
        }));
        QVERIFY(ZYLSysRegisterInit([&] {
            calls << "D";
            throw 42;
        }));
        QVERIFY(ZYLSysRegisterInit([&] {
            calls << "E";
            // Registered while the host is initialising: runs in the same pass.
            ZYLSysRegisterInit([&] { calls << "F"; });
        }));
        QVERIFY(calls.isEmpty());
        QVERIFY(!ZYLSysIsInitialized());

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("callback 2 failed: host failure"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("callback 3 failed: std failure"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("callback 4 failed"));
        QCOMPARE(ZYLSysRunInitCallbacks(), 6);
        QCOMPARE(calls, (QStringList{"A", "B", "C", "D", "E", "F"}));
        QVERIFY(ZYLSysIsInitialized());
        QVERIFY(restoredFirst);
    }

    void secondRunDoesNothingAndEmptyIsRefused()
    {
        QCOMPARE(ZYLSysRunInitCallbacks(), 0);
        QVERIFY(!ZYLSysRegisterInit(std::function<void()>()));
    }

};

QTEST_GUILESS_MAIN(tst_ZYLSysRegisterInit)
#include "tst_ZYLSysRegisterInit.moc"
