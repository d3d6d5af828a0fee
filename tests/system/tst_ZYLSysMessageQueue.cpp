// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysMessageQueue.h"

#include <QTest>

#include <thread>

using Messages = QList<ZYLSysMessageQueue::Message>;

class tst_ZYLSysMessageQueue : public QObject {
    Q_OBJECT
private slots:
    void withoutQueueGoesToTheLogger_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QtMsgType>("level");
        QTest::newRow("information") << 0 << QtInfoMsg;
        QTest::newRow("warning") << 1 << QtWarningMsg;
        QTest::newRow("unknown type") << 7 << QtCriticalMsg;
    }

    void withoutQueueGoesToTheLogger()
    {
        QFETCH(int, type);
        QFETCH(QtMsgType, level);
        QVERIFY(!ZYLSysMessageQueue::IsAnyOpen());
        QTest::ignoreMessage(level, "Tow 3 is too short");
        ZYLSysMessageQueue::Post(QStringLiteral("Tow 3 is too short"), type);
    }

    // Messages go to the innermost open queue, in posting order.
    void nestedQueuesCollectIntoTheInnermost()
    {
        ZYLSysMessageQueue outer;
        ZYLSysMessageQueue::Post(QStringLiteral("a"), 0);
        {
            ZYLSysMessageQueue inner;
            ZYLSysMessageQueue::Post(QStringLiteral("b"), 2);
            ZYLSysMessageQueue::Post(QStringLiteral("c"), 1);
            QCOMPARE(inner.GetMessages(), (Messages{{"b", 2}, {"c", 1}}));
        }
        ZYLSysMessageQueue::Post(QStringLiteral("d"), 0);
        QCOMPARE(outer.GetMessages(), (Messages{{"a", 0}, {"d", 0}}));
        QVERIFY(!outer.HasErrors());
        outer.Clear();
        QVERIFY(outer.GetMessages().isEmpty());
    }

};

QTEST_GUILESS_MAIN(tst_ZYLSysMessageQueue)
#include "tst_ZYLSysMessageQueue.moc"
