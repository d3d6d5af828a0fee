// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCompTowMask.h"
#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

class tst_ZYLCompTowMask : public QObject {
    Q_OBJECT
private slots:
    void toString_data();
    void toString();
    void fromString_data();
    void fromString();
    void malformed_data();
    void malformed();
    void towIndexes_data();
    void towIndexes();
    void countsAndOperators();
};

static quint64 Bits(std::initializer_list<int> tows)
{
    quint64 raw = 0;
    for (int t : tows)
        raw |= quint64(1) << t;
    return raw;
}

void tst_ZYLCompTowMask::toString_data()
{
    QTest::addColumn<quint64>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << quint64(0) << QString();
    QTest::newRow("one") << Bits({0}) << "1";
    QTest::newRow("pair stays listed") << Bits({2, 3}) << "3,4";
    QTest::newRow("run of three") << Bits({2, 3, 4}) << "3-5";
    QTest::newRow("mixed") << (Bits({9}) | 0xFFull | (0x1Full << 11)) << "1-8,10,12-16";
    QTest::newRow("last tow") << Bits({63}) << "64";
    QTest::newRow("all") << ~quint64(0) << "1-64";
    QTest::newRow("alternating") << Bits({0, 2, 4}) << "1,3,5";
}

void tst_ZYLCompTowMask::toString()
{
    QFETCH(quint64, raw);
    QFETCH(QString, text);
    const ZYLCompTowMask mask(raw);
    QCOMPARE(mask.GetString(), text);
    ZYLCompTowMask back(0x5);
    back.SetString(text);
    QCOMPARE(back.GetRawValue(), raw);
}

void tst_ZYLCompTowMask::fromString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("raw");
    QTest::newRow("spaces") << " 1 - 3 , 5 " << Bits({0, 1, 2, 4});
    QTest::newRow("single range") << "2-2" << Bits({1});
    QTest::newRow("unordered") << "10,1,5-6" << Bits({0, 4, 5, 9});
    QTest::newRow("repeated") << "3,3,1-4" << Bits({0, 1, 2, 3});
    QTest::newRow("blank") << "   " << quint64(0);
}

void tst_ZYLCompTowMask::fromString()
{
    QFETCH(QString, text);
    QFETCH(quint64, raw);
    ZYLCompTowMask mask;
    mask.SetString(text);
    QCOMPARE(mask.GetRawValue(), raw);
}

void tst_ZYLCompTowMask::malformed_data()
{
    QTest::addColumn<QString>("text");
    for (const char *bad : {"3-1", "0", "65", "a", "1,,2", "1-", "-3", "1-2-3", "+2", "1,", "2x"})
        QTest::newRow(bad) << QString::fromLatin1(bad);
}

void tst_ZYLCompTowMask::malformed()
{
    QFETCH(QString, text);
    ZYLCompTowMask mask(Bits({1, 7}));
    try {
        mask.SetString(text);
        QFAIL("malformed text accepted");
    } catch (const ZYLSysException &e) {
        QVERIFY(!e.GetMessage().isEmpty());
    }
    QCOMPARE(mask.GetRawValue(), Bits({1, 7}));
}

void tst_ZYLCompTowMask::towIndexes_data()
{
    QTest::addColumn<int>("tow");
    QTest::addColumn<bool>("valid");
    QTest::newRow("-1") << -1 << false;
    QTest::newRow("0") << 0 << true;
    QTest::newRow("63") << 63 << true;
    QTest::newRow("64") << 64 << false;
}

void tst_ZYLCompTowMask::towIndexes()
{
    QFETCH(int, tow);
    QFETCH(bool, valid);
    ZYLCompTowMask mask(Bits({5}));
    if (valid) {
        mask.Enable(tow);
        QVERIFY(mask.IsEnabled(tow));
        mask.Disable(tow);
        QVERIFY(!mask.IsEnabled(tow));
        QCOMPARE(mask.GetRawValue(), tow == 5 ? quint64(0) : Bits({5}));
    } else {
        QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, mask.Enable(tow));
        QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, mask.Disable(tow));
        QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, mask.IsEnabled(tow));
        QCOMPARE(mask.GetRawValue(), Bits({5}));
    }
}

void tst_ZYLCompTowMask::countsAndOperators()
{
    const ZYLCompTowMask a(Bits({0, 1, 2, 40}));
    const ZYLCompTowMask b(Bits({2, 40, 63}));
    QCOMPARE(a.GetNumTows(), 4);
    QCOMPARE((a & b).GetRawValue(), Bits({2, 40}));
    QVERIFY(a != b);
    QVERIFY((a & b) == ZYLCompTowMask(Bits({40, 2})));
    QVERIFY(ZYLCompTowMask().IsAllDisabled());
    QVERIFY(!a.IsAllDisabled());
    QCOMPARE(b.GetLastTow(), 63);
    QCOMPARE(ZYLCompTowMask().GetLastTow(), -1);
}

QTEST_GUILESS_MAIN(tst_ZYLCompTowMask)
#include "tst_ZYLCompTowMask.moc"
