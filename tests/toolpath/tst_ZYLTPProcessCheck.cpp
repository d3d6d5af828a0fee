// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProcessCheck.h"
#include "ZYLTPProcessColoring.h"
#include "ZYLTPRollLayupProcedure.h"

#include <QTest>

#include <cmath>
#include <functional>
#include <limits>

using Curve = std::function<void(double s, ZYLMathPoint &tip, ZYLMathVector &normal)>;
using Stretches = QList<std::pair<int, quint64>>;
Q_DECLARE_METATYPE(Curve)

class tst_ZYLTPProcessCheck : public QObject {
    Q_OBJECT
private slots:
    void radius_data();
    void radius();
    void towRuns_data();
    void towRuns();
    void demoAgainstFinerSampling();
    void tightStretchDrawnRed();
};

namespace {
constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double CylinderRadius = 400.0;

// A curve on a cylinder of axis z given by its development (arc a around, height z).
void OnCylinder(double a, double z, ZYLMathPoint &tip, ZYLMathVector &normal)
{
    const double phi = a / CylinderRadius;
    normal = ZYLMathVector(std::cos(phi), std::sin(phi), 0.0);
    tip = ZYLMathPoint(CylinderRadius * normal.X(), CylinderRadius * normal.Y(), z);
}
} // namespace

void tst_ZYLTPProcessCheck::radius_data()
{
    QTest::addColumn<Curve>("curve");
    QTest::addColumn<double>("spacing");
    QTest::addColumn<double>("expected"); // signed radius; 0 for none
    QTest::addColumn<double>("tolerance");

    auto circle = [](double r) {
        return Curve([r](double s, ZYLMathPoint &p, ZYLMathVector &n) {
            p = ZYLMathPoint(r * std::sin(s / r), r - r * std::cos(s / r), 0.0);
            n = ZYLMathVector(0, 0, 1);
        });
    };
    QTest::newRow("circle on plane, left") << circle(800.0) << 5.0 << 800.0 << 1e-6;
    QTest::newRow("tight circle, coarse points") << circle(30.0) << 9.0 << 30.0 << 1e-6;
    QTest::newRow("circle on plane, right") << circle(-1200.0) << 2.5 << -1200.0 << 1e-6;
    QTest::newRow("line") << Curve([](double s, ZYLMathPoint &p, ZYLMathVector &n) {
        p = ZYLMathPoint(s, 2 * s, 5);
        n = ZYLMathVector(0, 0, 1);
    }) << 5.0 << Inf << 0.0;
    QTest::newRow("helix, a geodesic") << Curve([](double s, ZYLMathPoint &p, ZYLMathVector &n) {
        OnCylinder(s * 0.6, s * 0.8, p, n);
    }) << 5.0 << Inf << 0.0;
    // An isometry keeps geodesic curvature: a circle of the development is one on the cylinder.
    QTest::newRow("developed circle on cylinder") << Curve([](double s, ZYLMathPoint &p, ZYLMathVector &n) {
        constexpr double r = 900.0;
        OnCylinder(r * std::sin(s / r), r - r * std::cos(s / r), p, n);
    }) << 5.0 << 900.0 << 1e-4;
    QTest::newRow("repeated points") << Curve([](double, ZYLMathPoint &p, ZYLMathVector &n) {
        p = ZYLMathPoint(1, 2, 3);
        n = ZYLMathVector(0, 0, 1);
    }) << 5.0 << 0.0 << 0.0;
}

void tst_ZYLTPProcessCheck::radius()
{
    QFETCH(Curve, curve);
    QFETCH(double, spacing);
    QFETCH(double, expected);
    QFETCH(double, tolerance);
    ZYLTPProcessCheck::CourseInput course;
    course.tips.resize(41);
    course.normals.resize(41);
    for (int i = 0; i < 41; ++i)
        curve(i * spacing, course.tips[size_t(i)], course.normals[size_t(i)]);
    course.stretches = {{1, 1}};
    ZYLTPProcessRules rules;
    rules.minSteeringRadius = 1000.0;
    rules.minAddLength = rules.minCourseLength = 0.0;
    const ZYLTPProcessCheck check = ZYLTPProcessCheck::Run({rules, {course}});
    for (int i = 0; i < 41; ++i) {
        const std::optional<double> r = check.GetSteeringRadius(0, i);
        if (i == 0 || i == 40 || expected == 0.0) {
            QVERIFY2(!r, qPrintable(QString::number(i)));
        } else if (std::isinf(expected)) {
            QVERIFY2(r && (std::isinf(*r) || std::fabs(*r) > 1e8), qPrintable(QString::number(i)));
        } else {
            QVERIFY2(r && std::fabs(*r / expected - 1.0) <= tolerance + 1e-6,
                     qPrintable(QStringLiteral("%1: %2").arg(i).arg(r ? *r : 0.0)));
        }
    }
    const bool tight = expected != 0.0 && std::fabs(expected) < rules.minSteeringRadius;
    QCOMPARE(check.CountViolations(ZYLTPProcessCheck::SteeringRadius), tight ? 1 : 0);
    QCOMPARE(check.GetViolations().size(), size_t(tight ? 1 : 0));
    if (tight) {
        const ZYLTPProcessCheck::Violation &v = check.GetViolations().front();
        QCOMPARE(std::pair(v.firstPoint, v.lastPoint), std::pair(1, 39));
        QVERIFY(std::fabs(v.value - std::fabs(expected)) < 1e-3 * std::fabs(expected));
    }
}

void tst_ZYLTPProcessCheck::towRuns_data()
{
    // A straight course of tow points 10 mm apart (1 to 41, so 400 mm), stretches given by
    // their first point and mask; violations written "kind first-last tows value".
    QTest::addColumn<Stretches>("stretches");
    QTest::addColumn<QStringList>("expected");
    using S = Stretches;
    QTest::newRow("all tows throughout") << S{{1, 0xff}} << QStringList{};
    QTest::newRow("tow 2 fed 50 mm") << S{{1, 0xfd}, {10, 0xff}, {15, 0xfd}}
                                     << QStringList{"add_length 10-15 2 50"};
    QTest::newRow("tows 1, 2 cut 60 mm") << S{{1, 0xff}, {20, 0xfc}, {26, 0xff}}
                                        << QStringList{"cut_length 20-26 1,2 60"};
    QTest::newRow("short at the start and end") << S{{1, 0x03}, {4, 0x01}, {35, 0xff}, {40, 0x01}}
                                                << QStringList{"add_length 1-4 2 30", "add_length 35-40 2-8 50"};
    QTest::newRow("short course") << S{{1, 0}, {30, 0x0f}, {40, 0}} << QStringList{"course_length 30-40 1-4 100"};
    QTest::newRow("last stretch empty") << S{{1, 0x3}, {41, 0x3}} << QStringList{};
}

void tst_ZYLTPProcessCheck::towRuns()
{
    QFETCH(Stretches, stretches);
    QFETCH(QStringList, expected);
    ZYLTPProcessCheck::CourseInput course;
    for (int i = -1; i <= 41; ++i) {
        course.tips.emplace_back(i * 10.0, 0.0, 0.0);
        course.normals.emplace_back(0.0, 0.0, 1.0);
    }
    course.stretches.assign(stretches.begin(), stretches.end());
    ZYLTPProcessRules rules;
    rules.minAddLength = 100.0;
    rules.minCutLength = 100.0;
    rules.minCourseLength = 150.0;
    const ZYLTPProcessCheck check = ZYLTPProcessCheck::Run({rules, {course}});
    QStringList found;
    for (const ZYLTPProcessCheck::Violation &v : check.GetViolations())
        found << QStringLiteral("%1 %2-%3 %4 %5")
                     .arg(QLatin1String(ZYLTPProcessCheck::KindKey(v.kind)))
                     .arg(v.firstPoint).arg(v.lastPoint).arg(v.tows.GetString()).arg(v.value);
    QCOMPARE(found, expected);
}

namespace {
// The smallest radius of course `course` of a demo with its S-bends, points `spacing` apart.
double TightestRadius(double spacing, int course)
{
    ZYLTPDemoGenerator::Parameters p;
    p.courses = 10;
    p.pointSpacing = spacing;
    p.processFaults = true;
    const ZYLTPProcessCheck check = ZYLTPProcessCheck::Run(*ZYLTPDemoGenerator::Create(p));
    double tightest = Inf;
    for (size_t i = 0; i < check.GetCurvatures(course).size(); ++i)
        tightest = std::min(tightest, std::fabs(check.GetSteeringRadius(course, int(i)).value_or(Inf)));
    return tightest;
}
} // namespace

void tst_ZYLTPProcessCheck::demoAgainstFinerSampling()
{
    // Course 8 has an S-bend; course 1 is straight in the panel's parameters.
    for (int course : {0, 7}) {
        const double coarse = TightestRadius(5.0, course), fine = TightestRadius(1.25, course);
        QVERIFY2(std::fabs(coarse / fine - 1.0) < 0.03, qPrintable(QStringLiteral("%1 %2").arg(coarse).arg(fine)));
    }
}

void tst_ZYLTPProcessCheck::tightStretchDrawnRed()
{
    ZYLTPDemoGenerator::Parameters p;
    p.courses = 8;
    p.processFaults = true;
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(p);
    const auto *bent = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(0))->GetCourseByPosition(7);
    auto colours = [&] {
        QList<ZYLVisOptions> out;
        ZYLTPVisualizationOptions options;
        options.SetShortTowDisplay(ZYLTPVisualizationOptions::AllTows);
        ZYLTPCourseVisRep(bent, 7, options, out);
        QList<QRgb> list;
        for (const ZYLVisOptions &o : out)
            list << o.GetColor().rgb();
        return list;
    };
    const QRgb red = ZYLTPProcessColoring::GetBinColor(0).rgb();
    QVERIFY(!colours().contains(red));
    ZYLTPProcessColoring::SetCheck(std::make_shared<const ZYLTPProcessCheck>(ZYLTPProcessCheck::Run(*program)));
    const QList<QRgb> coloured = colours();
    ZYLTPProcessColoring::SetCheck(nullptr);
    QVERIFY(coloured.contains(red));
    QVERIFY(coloured.contains(ZYLTPProcessColoring::GetBinColor(ZYLTPProcessColoring::NumBins - 1).rgb()));
}

QTEST_GUILESS_MAIN(tst_ZYLTPProcessCheck)
#include "tst_ZYLTPProcessCheck.moc"
