// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCompTowMask.h"
#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

namespace {

quint64 Bits(std::initializer_list<int> tows)
{
    quint64 raw = 0;
    for (int t : tows)
        raw |= quint64(1) << t;
    return raw;
}

// What a refused text must leave in place.
const quint64 kKept = Bits({1, 7});

} // namespace

class tst_ZYLCompTowMask : public QObject {
    Q_OBJECT
private slots:
    void fromString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint64>("raw");
        QTest::newRow("single range") << "2-2" << Bits({1});
        for (const char *bad : {"3-1", "0", "65", "a", "1,,2", "1-", "-3", "1-2-3", "+2", "1,", "2x"})
            QTest::newRow(bad) << QString::fromLatin1(bad) << kKept;
    }

    // Loose text is read; malformed text is refused with a message and changes nothing.
    void fromString()
    {
        QFETCH(QString, text);
        QFETCH(quint64, raw);
        ZYLCompTowMask mask(kKept);
        try {
            mask.SetString(text);
            QVERIFY2(raw != kKept, "malformed text accepted");
        } catch (const ZYLSysException &e) {
            QVERIFY(raw == kKept && !e.GetMessage().isEmpty());
        }
        QCOMPARE(mask.GetRawValue(), raw);
    }

    // Tows 0 to 63 switch on and off one by one; indexes outside throw and change nothing.
    void towIndexes()
    {
        ZYLCompTowMask mask(Bits({5}));
        for (int tow : {0, 63}) {
            mask.Enable(tow);
            QCOMPARE(mask.GetRawValue(), Bits({5, tow}));
            QVERIFY(mask.IsEnabled(tow));
            mask.Disable(tow);
            QVERIFY(!mask.IsEnabled(tow));
        }
        for (int tow : {-1, 64}) {
            QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, mask.Enable(tow));
            QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, mask.Disable(tow));
            QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, mask.IsEnabled(tow));
        }
        QCOMPARE(mask.GetRawValue(), Bits({5}));
    }

    void countsAndOperators()
    {
        const ZYLCompTowMask a(Bits({0, 1, 2, 40}));
        const ZYLCompTowMask b(Bits({2, 40, 63}));
        // The capacity, not the count: an empty mask still takes every tow index below it.
        QCOMPARE(ZYLCompTowMask().GetNumTows(), 64);
        QCOMPARE(a.GetNumTows(), 64);
        QVERIFY((a & b) == ZYLCompTowMask(Bits({40, 2})));
        QVERIFY(ZYLCompTowMask().IsAllDisabled());
        QVERIFY(!a.IsAllDisabled());
        QCOMPARE(b.GetLastTow(), 63);
        QCOMPARE(ZYLCompTowMask().GetLastTow(), -1);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLCompTowMask)
#include "tst_ZYLCompTowMask.moc"
