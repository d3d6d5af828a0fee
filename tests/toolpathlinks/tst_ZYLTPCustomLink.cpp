// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Custom links: the point edits with known results, each interpolation kind, and refusals
// that change nothing.
#include "ZYLTPLinkTestUtil.h"

#include "ZYLTPCustomCourseLink.h"

#include "ZYLSysException.h"

#include <QTest>

#include <functional>
#include <numbers>

using Custom = ZYLTPCustomCourseLink;
using Edit = std::function<void(Custom *, const QList<const ZYLTPOffPartPoint *> &)>;

class tst_ZYLTPCustomLink : public QObject {
    Q_OBJECT
private slots:
    void edits_data();
    void edits();
    void interpolationKinds_data();
    void interpolationKinds();
    void refusals_data();
    void refusals();
};

namespace {
// The converted straight link of a two-course program (Normal detail): (110,0,20) up to
// (110,0,70), across in 4 segments to (-10,50,70), down to (-10,50,20).
struct Fixture : ZYLTPLinkedTestProgram {
    Fixture() : ZYLTPLinkedTestProgram(2)
    {
        Open();
        link = procedure->ConvertLinkToCustom(links[0]);
        Commit();
        points = ZYLTPPointsOf(link);
        bytes = Bytes();
    }
    Custom *link = nullptr;
    QList<const ZYLTPOffPartPoint *> points;
    QByteArray bytes;
};

QList<double> Tips(const ZYLTPCourseLink *link)
{
    QList<double> tips;
    for (const ZYLTPOffPartPoint *p : ZYLTPPointsOf(link))
        tips << p->GetTipPoint().X() << p->GetTipPoint().Y() << p->GetTipPoint().Z();
    return tips;
}

bool NearAll(const QList<double> &a, const QList<double> &b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (qAbs(a[i] - b[i]) > 1e-9)
            return false;
    }
    return true;
}

const QList<double> Straight{110, 0, 20, 110, 0, 70, 80, 12.5, 70, 50, 25, 70, 20, 37.5, 70, -10, 50, 70, -10, 50, 20};

QList<double> With(QList<double> tips, int point, const ZYLMathVector &d)
{
    tips[point * 3] += d.X();
    tips[point * 3 + 1] += d.Y();
    tips[point * 3 + 2] += d.Z();
    return tips;
}

QHash<QString, Edit> Edits()
{
    const auto kind = Custom::ConstantInterpolation;
    QHash<QString, Edit> e;
    e["translate one"] = [](Custom *l, const auto &p) { l->TranslateRange(p[2], p[2], {0, 0, 10}); };
    e["translate range"] = [](Custom *l, const auto &p) { l->TranslateRange(p[2], p[4], {1, 2, 3}); };
    e["insert before"] = [=](Custom *l, const auto &p) { l->InsertPointsBefore(p[1], 1, kind); };
    e["insert after"] = [=](Custom *l, const auto &p) { l->InsertPointsAfter(p[4], 3, kind); };
    e["remove"] = [](Custom *l, const auto &p) { l->RemovePoint(p[3]); };
    e["interpolate"] = [=](Custom *l, const auto &p) {
        l->TranslateRange(p[2], p[3], {0, 0, 5});
        l->InterpolateRange(p[1], p[5], kind);
    };
    // Refused edits.
    e["move first"] = [](Custom *l, const auto &p) { l->TranslateRange(p[0], p[0], {1, 0, 0}); };
    e["range holding last"] = [](Custom *l, const auto &p) { l->TranslateRange(p[4], p[6], {1, 0, 0}); };
    e["range backwards"] = [](Custom *l, const auto &p) { l->TranslateRange(p[3], p[2], {1, 0, 0}); };
    e["null point"] = [](Custom *l, const auto &p) { l->TranslateRange(nullptr, p[2], {1, 0, 0}); };
    e["not finite"] = [](Custom *l, const auto &p) { l->TranslateRange(p[2], p[2], {qQNaN(), 0, 0}); };
    e["align zero"] = [](Custom *l, const auto &p) { l->AlignRange(p[2], p[2], ZYLTPOffPartPoint::ThirdAxis, {}); };
    e["align axis 3"] = [](Custom *l, const auto &p) { l->AlignRange(p[2], p[2], ZYLTPOffPartPoint::Axis(3), {1, 0, 0}); };
    e["align last"] = [](Custom *l, const auto &p) { l->AlignRange(p[6], p[6], ZYLTPOffPartPoint::FirstAxis, {0, 1, 0}); };
    e["insert before first"] = [=](Custom *l, const auto &p) { l->InsertPointsBefore(p[0], 1, kind); };
    e["insert after last"] = [=](Custom *l, const auto &p) { l->InsertPointsAfter(p[6], 1, kind); };
    e["negative count"] = [=](Custom *l, const auto &p) { l->InsertPointsAfter(p[2], -1, kind); };
    e["bad kind"] = [](Custom *l, const auto &p) { l->InterpolateRange(p[0], p[6], Custom::VectorInterpolation(7)); };
    e["remove first"] = [](Custom *l, const auto &p) { l->RemovePoint(p[0]); };
    e["remove last"] = [](Custom *l, const auto &p) { l->RemovePoint(p[6]); };
    return e;
}
} // namespace

void tst_ZYLTPCustomLink::edits_data()
{
    QTest::addColumn<QList<double>>("tips");
    QTest::newRow("translate one") << With(Straight, 2, {0, 0, 10});
    QList<double> before = Straight;
    before = before.mid(0, 3) + QList<double>{110, 0, 45} + before.mid(3);
    QList<double> after = Straight;
    after = after.mid(0, 15) + QList<double>{12.5, 40.625, 70, 5, 43.75, 70, -2.5, 46.875, 70} + after.mid(15);
    QTest::newRow("remove") << Straight.mid(0, 9) + Straight.mid(12);
}

void tst_ZYLTPCustomLink::edits()
{
    QFETCH(QList<double>, tips);
    Fixture t;
    t.Open();
    Edits()[QTest::currentDataTag()](t.link, t.points);
    t.Commit();
    const QList<const ZYLTPOffPartPoint *> edited = ZYLTPPointsOf(t.link);
    QVERIFY2(NearAll(Tips(t.link), tips), qPrintable(QDebug::toString(Tips(t.link))));
    // Points that stay keep their objects; the ends are still the first and last.
    const bool removed = tips.size() < Straight.size();
    for (const ZYLTPOffPartPoint *point : t.points)
        QCOMPARE(edited.contains(point), !(removed && point == t.points[3]));
    QCOMPARE(edited.front(), t.points.front());
    QCOMPARE(edited.back(), t.points.back());
    t.container.Undo();
    QCOMPARE(t.Bytes(), t.bytes);
    QCOMPARE(ZYLTPPointsOf(t.link), t.points);
    t.container.Redo();
    QCOMPARE(ZYLTPPointsOf(t.link), edited);
    QVERIFY(NearAll(Tips(t.link), tips));
}

void tst_ZYLTPCustomLink::interpolationKinds_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("halfTurn"); // target frame: (-x, -y, z) instead of (y, z, x)
    QTest::addColumn<ZYLMathVector>("first");
    QTest::addColumn<ZYLMathVector>("second");
    // 120 degrees about (1, 1, 1) takes x to y: half-way is 60 degrees about it.
    const ZYLMathVector axis = *ZYLMathVector(1, 1, 1).Normalized();
    QTest::newRow("spherical") << int(Custom::SphericalInterpolation) << false
                               << ZYLMathRotate({1, 0, 0}, axis, std::numbers::pi / 3)
                               << ZYLMathRotate({0, 1, 0}, axis, std::numbers::pi / 3);
    // Blending opposite directions degenerates half-way: the spherical frame is taken.
    QTest::newRow("linear half turn") << int(Custom::LinearInterpolation) << true << ZYLMathVector(0, 1, 0)
                                      << ZYLMathVector(-1, 0, 0);
}

void tst_ZYLTPCustomLink::interpolationKinds()
{
    QFETCH(int, kind);
    QFETCH(bool, halfTurn);
    QFETCH(ZYLMathVector, first);
    QFETCH(ZYLMathVector, second);
    Fixture t;
    const QList<const ZYLTPOffPartPoint *> &p = t.points;
    t.Open();
    // The editor's sequence for a dragged frame: align the first axis, then the second.
    t.link->AlignRange(p[5], p[5], ZYLTPOffPartPoint::FirstAxis, halfTurn ? ZYLMathVector(-1, 0, 0) : ZYLMathVector(0, 1, 0));
    if (!halfTurn)
        t.link->AlignRange(p[5], p[5], ZYLTPOffPartPoint::SecondAxis, {0, 0, 1});
    const ZYLMathAxis target = p[5]->GetAxis();
    QVERIFY(ZYLTPNear(target.GetThirdDirection(), halfTurn ? ZYLMathVector(0, 0, 1) : ZYLMathVector(1, 0, 0)));
    t.link->TranslateRange(p[3], p[3], {0, 0, 9});
    t.link->InterpolateRange(p[1], p[5], Custom::VectorInterpolation(kind));
    const ZYLMathAxis middle = p[3]->GetAxis();
    QVERIFY(ZYLTPNear(middle.GetOrigin(), ZYLMathPoint(50, 25, 70)));
    // The half turn's direction of rotation is open; either way is the same distance.
    const ZYLMathVector got = middle.GetFirstDirection();
    QVERIFY2(ZYLTPNear(got, first) || (halfTurn && ZYLTPNear(got, -first)), qPrintable(QDebug::toString(got)));
    QVERIFY(ZYLTPNear(middle.GetSecondDirection(), second) || (halfTurn && ZYLTPNear(middle.GetSecondDirection(), -second)));
    QVERIFY(qAbs(middle.GetFirstDirection().Cross(middle.GetSecondDirection()).Dot(middle.GetThirdDirection()) - 1) < 1e-12);
    QVERIFY(ZYLTPNear(p[5]->GetAxis(), target));
    t.Commit();
}

void tst_ZYLTPCustomLink::refusals_data()
{
    QTest::addColumn<bool>("open");
    for (const char *row : {"move first", "range holding last", "range backwards", "null point", "not finite",
                            "align zero", "align axis 3", "align last", "insert before first", "insert after last",
                            "negative count", "bad kind", "remove first", "remove last"})
        QTest::newRow(row) << true;
    QTest::newRow("translate one") << false; // outside a transaction
}

void tst_ZYLTPCustomLink::refusals()
{
    QFETCH(bool, open);
    Fixture t;
    Fixture other;
    if (open)
        t.Open();
    const Edit edit = Edits()[QTest::currentDataTag()];
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, edit(t.link, t.points));
    if (open) {
        QCOMPARE(t.container.GetOpenTransaction()->GetNumChanges(), 0);
        // A point of another link is refused by every edit alike.
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, edit(t.link, other.points));
    }
    QCOMPARE(t.Bytes(), t.bytes);
    QCOMPARE(ZYLTPPointsOf(t.link), t.points);
}

QTEST_GUILESS_MAIN(tst_ZYLTPCustomLink)
#include "tst_ZYLTPCustomLink.moc"
