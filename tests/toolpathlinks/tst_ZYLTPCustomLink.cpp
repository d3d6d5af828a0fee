// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Custom links: conversion from other links, the point edits with known results, refusals
// that change nothing, exact undo (values, point list, point objects), and ends that follow
// the courses they join.
#include "ZYLTPLinkTestUtil.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPRetractTrajectory.h"

#include "ZYLSysException.h"

#include <QTest>

#include <functional>
#include <numbers>

using Custom = ZYLTPCustomCourseLink;
using Edit = std::function<void(Custom *, const QList<const ZYLTPOffPartPoint *> &)>;

class tst_ZYLTPCustomLink : public QObject {
    Q_OBJECT
private slots:
    void convert_data();
    void convert();
    void convertAsIsOrRefused_data();
    void convertAsIsOrRefused();
    void edits_data();
    void edits();
    void align_data();
    void align();
    void interpolationKinds_data();
    void interpolationKinds();
    void refusals_data();
    void refusals();
    void endsFollowCourses_data();
    void endsFollowCourses();
    void turnedRound();
    void followsReversedAndBrokenCourse();
    void saveAndLoad();
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

void tst_ZYLTPCustomLink::convert_data()
{
    QTest::addColumn<int>("strategy");
    QTest::addColumn<int>("detail");
    QTest::newRow("linear") << int(ZYLTPCourseLink::Linear) << int(ZYLTPCourseLink::Normal);
    QTest::newRow("linear coarse") << int(ZYLTPCourseLink::Linear) << int(ZYLTPCourseLink::Coarse);
    QTest::newRow("safety plane fine") << int(ZYLTPCourseLink::SafetyPlane) << int(ZYLTPCourseLink::Fine);
}

void tst_ZYLTPCustomLink::convert()
{
    QFETCH(int, strategy);
    QFETCH(int, detail);
    ZYLTPLinkedTestProgram t(3, ZYLTPCourseLink::OffPartMotionStrategy(strategy));
    ZYLTPRollLayupProcedure *p = t.procedure;
    ZYLTPCourseLink *old = t.links[1];
    t.Open();
    old->SetPointsDetail(ZYLTPCourseLink::OffPartMotionDetail(detail));
    t.Commit();
    const QList<const ZYLTPOffPartPoint *> oldPoints = ZYLTPPointsOf(old);
    const QList<double> tips = Tips(old);
    t.Open();
    Custom *custom = p->ConvertLinkToCustom(old);
    t.Commit();
    QVERIFY(custom && custom != old);
    QCOMPARE(p->GetLinkByIndex(2), custom);
    QCOMPARE(p->GetLinkByPosition(2), custom);
    QCOMPARE(custom->GetFromCourse(), t.courses[1]);
    QCOMPARE(custom->GetToCourse(), t.courses[2]);
    QCOMPARE(t.courses[1]->GetRetractLink(), custom);
    QCOMPARE(t.courses[2]->GetApproachLink(), custom);
    QVERIFY(NearAll(Tips(custom), tips));
    QCOMPARE(custom->GetPoint(3)->GetAxis(), oldPoints[3]->GetAxis());
    QCOMPARE(int(custom->GetPointsDetail()), detail);
    t.container.Undo();
    QCOMPARE(p->GetLinkByIndex(2), old);
    QCOMPARE(t.courses[2]->GetApproachLink(), old);
    QCOMPARE(ZYLTPPointsOf(old), oldPoints);
    t.container.Redo();
    QCOMPARE(p->GetLinkByIndex(2), custom);
}

void tst_ZYLTPCustomLink::convertAsIsOrRefused_data()
{
    QTest::addColumn<int>("which"); // 0 custom, 1 null, 2 approach, 3 retract, 4 other program
    QTest::newRow("custom as is") << 0;
    QTest::newRow("null") << 1;
    QTest::newRow("approach link") << 2;
    QTest::newRow("retract link") << 3;
    QTest::newRow("other program") << 4;
}

void tst_ZYLTPCustomLink::convertAsIsOrRefused()
{
    QFETCH(int, which);
    Fixture t;
    ZYLTPLinkedTestProgram other(2);
    ZYLTPRollLayupProcedure *p = t.procedure;
    QList<ZYLTPCourseLink *> links;
    links << t.link << nullptr << p->GetApproachLink() << p->GetRetractLink() << other.links[0];
    ZYLFeatTransaction *transaction = t.container.OpenTransaction("Convert");
    if (which == 0)
        QCOMPARE(p->ConvertLinkToCustom(t.link), t.link);
    else
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->ConvertLinkToCustom(links[which]));
    QCOMPARE(transaction->GetNumChanges(), 0);
    QCOMPARE(t.Bytes(), t.bytes);
    QCOMPARE(p->GetNumLinks(), 3);
}

void tst_ZYLTPCustomLink::edits_data()
{
    QTest::addColumn<QList<double>>("tips");
    QTest::newRow("translate one") << With(Straight, 2, {0, 0, 10});
    QTest::newRow("translate range") << With(With(With(Straight, 2, {1, 2, 3}), 3, {1, 2, 3}), 4, {1, 2, 3});
    QList<double> before = Straight;
    before = before.mid(0, 3) + QList<double>{110, 0, 45} + before.mid(3);
    QTest::newRow("insert before") << before;
    QList<double> after = Straight;
    after = after.mid(0, 15) + QList<double>{12.5, 40.625, 70, 5, 43.75, 70, -2.5, 46.875, 70} + after.mid(15);
    QTest::newRow("insert after") << after;
    QTest::newRow("remove") << Straight.mid(0, 9) + Straight.mid(12);
    QTest::newRow("interpolate") << Straight;
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

void tst_ZYLTPCustomLink::align_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<ZYLMathVector>("direction");
    QTest::addColumn<ZYLMathVector>("first");
    QTest::addColumn<ZYLMathVector>("third");
    QTest::newRow("first to y") << 0 << ZYLMathVector(0, 2, 0) << ZYLMathVector(0, 1, 0) << ZYLMathVector(0, 0, 1);
    QTest::newRow("third to x") << 2 << ZYLMathVector(1, 0, 0) << ZYLMathVector(0, 0, -1) << ZYLMathVector(1, 0, 0);
    QTest::newRow("first reversed") << 0 << ZYLMathVector(-1, 0, 0) << ZYLMathVector(-1, 0, 0) << ZYLMathVector(0, 0, 1);
    QTest::newRow("second reversed") << 1 << ZYLMathVector(0, -1, 0) << ZYLMathVector(1, 0, 0) << ZYLMathVector(0, 0, -1);
    QTest::newRow("already aligned") << 2 << ZYLMathVector(0, 0, 5) << ZYLMathVector(1, 0, 0) << ZYLMathVector(0, 0, 1);
}

void tst_ZYLTPCustomLink::align()
{
    QFETCH(int, axis);
    QFETCH(ZYLMathVector, direction);
    QFETCH(ZYLMathVector, first);
    QFETCH(ZYLMathVector, third);
    Fixture t;
    ZYLFeatTransaction *transaction = t.container.OpenTransaction("Align");
    t.link->AlignRange(t.points[3], t.points[3], ZYLTPOffPartPoint::Axis(axis), direction);
    const ZYLMathAxis frame = t.points[3]->GetAxis();
    QVERIFY(ZYLTPNear(frame.GetFirstDirection(), first));
    QVERIFY(ZYLTPNear(frame.GetThirdDirection(), third));
    QVERIFY(ZYLTPNear(frame.GetOrigin(), ZYLMathPoint(50, 25, 70)));
    QVERIFY(ZYLTPNear(t.points[2]->GetAxis().GetFirstDirection(), {1, 0, 0}));
    // An edit that changes nothing records nothing.
    QCOMPARE(transaction->GetNumChanges() == 0, first == ZYLMathVector(1, 0, 0) && third == ZYLMathVector(0, 0, 1));
}

void tst_ZYLTPCustomLink::interpolationKinds_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("halfTurn"); // target frame: (-x, -y, z) instead of (y, z, x)
    QTest::addColumn<ZYLMathVector>("first");
    QTest::addColumn<ZYLMathVector>("second");
    const double h = std::sqrt(0.5);
    // 120 degrees about (1, 1, 1) takes x to y: half-way is 60 degrees about it.
    const ZYLMathVector axis = *ZYLMathVector(1, 1, 1).Normalized();
    QTest::newRow("constant") << int(Custom::ConstantInterpolation) << false << ZYLMathVector(1, 0, 0)
                              << ZYLMathVector(0, 1, 0);
    QTest::newRow("linear") << int(Custom::LinearInterpolation) << false << ZYLMathVector(h, h, 0)
                            << ZYLMathVector(-1, 1, 2) / std::sqrt(6.0);
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

void tst_ZYLTPCustomLink::endsFollowCourses_data()
{
    QTest::addColumn<int>("course");
    QTest::addColumn<int>("parameter"); // 0 roll-in, 1 roll-out, 2 approach angle, 3 approach length, 4 retract angle, 5 retract length
    QTest::addColumn<double>("value");
    QTest::newRow("roll-in of the next course") << 1 << 0 << 40.0;
    QTest::newRow("roll-out of the previous course") << 0 << 1 << 25.0;
    QTest::newRow("approach angle") << 1 << 2 << std::numbers::pi / 6;
    QTest::newRow("approach length") << 1 << 3 << 5.0;
    QTest::newRow("retract angle") << 0 << 4 << std::numbers::pi / 4;
    QTest::newRow("retract length") << 0 << 5 << 0.0;
}

void tst_ZYLTPCustomLink::endsFollowCourses()
{
    QFETCH(int, course);
    QFETCH(int, parameter);
    QFETCH(double, value);
    Fixture t;
    ZYLTPTowCourse *c = t.courses[course];
    auto *approach = const_cast<ZYLTPApproachTrajectory *>(c->GetApproachTrajectory());
    auto *retract = const_cast<ZYLTPRetractTrajectory *>(c->GetRetractTrajectory());
    t.Open();
    t.link->TranslateRange(t.points[3], t.points[3], {0, 0, 40});
    t.Commit();
    const QList<double> before = Tips(t.link);
    t.Open();
    switch (parameter) {
    case 0: c->SetRollIn(value); break;
    case 1: c->SetRollOut(value); break;
    case 2: approach->SetAngle(value); break;
    case 3: approach->SetLength(value); break;
    case 4: retract->SetAngle(value); break;
    default: retract->SetLength(value); break;
    }
    t.Commit();
    const QList<double> after = Tips(t.link);
    QCOMPARE(ZYLTPPointsOf(t.link), t.points);
    QVERIFY(ZYLTPNear(t.points[0]->GetAxis(), t.courses[0]->GetRetractTrajectory()->GetFarFrame()));
    QVERIFY(ZYLTPNear(t.points[6]->GetAxis(), t.courses[1]->GetApproachTrajectory()->GetFarFrame()));
    // Exactly one end moved; the user's interior points stayed.
    const int moved = course == 0 ? 0 : 6;
    QVERIFY(!NearAll(after.mid(moved * 3, 3), before.mid(moved * 3, 3)));
    QVERIFY(NearAll(after.mid(3, 15), before.mid(3, 15)));
    QVERIFY(NearAll(after.mid(18 - moved * 3, 3), before.mid(18 - moved * 3, 3)));
    t.container.Undo();
    QVERIFY(NearAll(Tips(t.link), before));
}

void tst_ZYLTPCustomLink::turnedRound()
{
    Fixture t;
    t.Open();
    t.link->TranslateRange(t.points[2], t.points[2], {0, 0, 7});
    t.Commit();
    const QByteArray edited = t.Bytes();
    const QList<double> tips = Tips(t.link);
    t.Open();
    t.procedure->ReverseLayingOrder();
    t.Commit();
    // Now from course 1 back to course 0: the stored motion is read the other way round.
    QCOMPARE(t.link->GetFromCourse(), t.courses[1]);
    QVERIFY(ZYLTPNear(t.points[0]->GetAxis(), t.courses[1]->GetRetractTrajectory()->GetFarFrame()));
    QVERIFY(ZYLTPNear(t.points[6]->GetAxis(), t.courses[0]->GetApproachTrajectory()->GetFarFrame()));
    for (int i = 1; i < 6; ++i)
        QVERIFY(NearAll(Tips(t.link).mid(i * 3, 3), tips.mid((6 - i) * 3, 3)));
    // Edits after the turn address points in the present order.
    t.Open();
    t.link->TranslateRange(t.points[4], t.points[4], {0, 0, -7});
    t.Commit();
    QVERIFY(ZYLTPNear(t.points[4]->GetTipPoint(), ZYLMathPoint(80, 12.5, 70)));
    t.container.Undo();
    t.container.Undo();
    QCOMPARE(t.Bytes(), edited);
    QCOMPARE(ZYLTPPointsOf(t.link), t.points);
}

void tst_ZYLTPCustomLink::followsReversedAndBrokenCourse()
{
    Fixture t;
    const ZYLTPBreakRange *range = t.builder.AddBreakRange(t.courses[0], 40, 60);
    const QList<double> interior = Tips(t.link).mid(3, 15);
    const QByteArray bytes = t.Bytes();
    t.Open();
    t.courses[1]->Reverse(true);
    const ZYLTPCourse *piece = t.courses[0]->Break(range);
    t.Commit();
    // The link now leaves the second piece of course 0 and still joins course 1's new start.
    QCOMPARE(t.link->GetFromCourse(), piece);
    QCOMPARE(ZYLTPPointsOf(t.link), t.points);
    QVERIFY(ZYLTPNear(t.points[0]->GetAxis(), piece->GetRetractTrajectory()->GetFarFrame()));
    QVERIFY(ZYLTPNear(t.points[6]->GetAxis(), t.courses[1]->GetApproachTrajectory()->GetFarFrame()));
    QVERIFY(ZYLTPNear(t.points[6]->GetTipPoint(), ZYLMathPoint(110, 50, 20)));
    QVERIFY(NearAll(Tips(t.link).mid(3, 15), interior));
    t.container.Undo();
    QCOMPARE(t.Bytes(), bytes);
    QCOMPARE(t.link->GetFromCourse(), t.courses[0]);
}

void tst_ZYLTPCustomLink::saveAndLoad()
{
    Fixture t;
    t.Open();
    t.link->InsertPointsAfter(t.points[2], 2, Custom::SphericalInterpolation);
    t.link->AlignRange(t.points[3], t.points[3], ZYLTPOffPartPoint::FirstAxis, {0, 1, 1});
    t.procedure->ReverseLayingOrder();
    t.Commit();
    const QByteArray bytes = t.Bytes();
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Parse(bytes);
    QVERIFY2(loaded.program, qPrintable(loaded.error));
    auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(loaded.program->GetProcedure(0));
    auto *copy = qobject_cast<const Custom *>(procedure->GetCourseByIndex(1)->GetRetractLink());
    QVERIFY(copy);
    QVERIFY(NearAll(Tips(copy), Tips(t.link)));
    QCOMPARE(copy->GetPoint(5)->GetAxis(), t.link->GetPoint(5)->GetAxis());
    QCOMPARE(ZYLTPProgramFile::Serialize(*loaded.program), bytes);
}

QTEST_GUILESS_MAIN(tst_ZYLTPCustomLink)
#include "tst_ZYLTPCustomLink.moc"
