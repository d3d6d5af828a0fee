// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDemoGenerator.h"

#include "ZYLTPCourse.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTowCourse.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoCurveOnSurface.h"

#include "ZYLSysException.h"

#include <QCoreApplication>
#include <QPointF>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

QString Tr(const char *text) { return QCoreApplication::translate("ZYLTPDemoGenerator", text); }

// std::mt19937_64's sequence is fixed by the standard, unlike the library's distributions,
// so the programs are the same on every platform for a seed.
class Random {
public:
    explicit Random(quint64 seed) : m_engine(seed) {}
    double Uniform(double a, double b) { return a + (b - a) * double(m_engine() >> 11) * 0x1.0p-53; }

private:
    std::mt19937_64 m_engine;
};

struct UV {
    double u, v;
    UV operator+(UV o) const { return {u + o.u, v + o.v}; }
    UV operator-(UV o) const { return {u - o.u, v - o.v}; }
    UV operator*(double f) const { return {u * f, v * f}; }
    double Dot(UV o) const { return u * o.u + v * o.v; }
    double Cross(UV o) const { return u * o.v - v * o.u; }
};

// The closed boundary polygon (counter-clockwise, last vertex = first) of a rectangle with
// rounded corners inside the panel's (u, v) domain.
std::vector<UV> RoundedRectangle(double u0, double u1, double v0, double v1, double radius)
{
    constexpr int ArcSegments = 12;
    const UV centres[4] = {{u1 - radius, v0 + radius}, {u1 - radius, v1 - radius}, {u0 + radius, v1 - radius},
                           {u0 + radius, v0 + radius}};
    std::vector<UV> polygon;
    for (int corner = 0; corner < 4; ++corner) {
        const double start = (corner - 1) * M_PI / 2;
        for (int k = 0; k <= ArcSegments; ++k) {
            const double a = start + (M_PI / 2) * k / ArcSegments;
            polygon.push_back(centres[corner] + UV{std::cos(a), std::sin(a)} * radius);
        }
    }
    polygon.push_back(polygon.front());
    return polygon;
}

// Clips the line p + λ·d to the convex counter-clockwise polygon; returns false when it
// misses it.
bool ClipLine(const std::vector<UV> &polygon, UV p, UV d, double *in, double *out)
{
    double lo = -std::numeric_limits<double>::infinity();
    double hi = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i + 1 < polygon.size(); ++i) {
        const UV edge = polygon[i + 1] - polygon[i];
        // Inside is left of every edge: edge × (x − a) >= 0.
        const double num = edge.Cross(p - polygon[i]);
        const double den = edge.Cross(d);
        if (std::fabs(den) < 1e-15) {
            if (num < 0.0)
                return false;
            continue;
        }
        const double t = -num / den;
        if (den > 0.0)
            lo = std::max(lo, t);
        else
            hi = std::min(hi, t);
    }
    if (!(lo < hi))
        return false;
    *in = lo;
    *out = hi;
    return true;
}

bool InsideConvex(const std::vector<UV> &polygon, UV p)
{
    for (size_t i = 0; i + 1 < polygon.size(); ++i)
        if ((polygon[i + 1] - polygon[i]).Cross(p - polygon[i]) < 0.0)
            return false;
    return true;
}

class Generator {
public:
    explicit Generator(const ZYLTPDemoGenerator::Parameters &p) : m_p(p), m_random(p.seed) {}

    ZYLGeoRef<ZYLTPProgram> Build()
    {
        MakeSurface();
        MakeBoundary();
        MakeMachine();
        m_procedure = m_builder.AddRollLayupProcedure(Tr("Ply layup"), Tr("Demonstration plies on a doubly curved panel"));
        m_configurations[0] = m_builder.AddMachineConfiguration(m_procedure, m_head, m_rollers[0]);
        m_configurations[1] = m_builder.AddMachineConfiguration(m_procedure, m_head, m_rollers[1]);
        MakeCourses();
        MakeLinks();
        if (m_p.inspection)
            MakeInspection();
        return ZYLGeoRef<ZYLTPProgram>(m_builder.TakeProgram());
    }

private:
    void MakeSurface()
    {
        const double radiusLength = m_random.Uniform(2500.0, 4000.0);
        const double radiusWidth = m_random.Uniform(1500.0, 2500.0);
        QString error;
        m_surface = ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(ZYLMathAxis(), ZYLTPDemoGenerator::PanelLength,
                                                                  ZYLTPDemoGenerator::PanelWidth, 1.0 / radiusLength,
                                                                  1.0 / radiusWidth, &error);
        if (!m_surface)
            throw ZYLSysException(error);
        m_builder.SetPlySurface(m_surface.get());
    }

    void MakeBoundary()
    {
        const double marginU = m_random.Uniform(120.0, 220.0);
        const double marginV = m_random.Uniform(100.0, 180.0);
        const double radius = m_random.Uniform(150.0, 320.0);
        m_polygon = RoundedRectangle(marginU, ZYLTPDemoGenerator::PanelLength - marginU, marginV,
                                     ZYLTPDemoGenerator::PanelWidth - marginV, radius);
        std::vector<QPointF> uv;
        for (const UV &p : m_polygon)
            uv.emplace_back(p.u, p.v);
        QString error;
        ZYLGeoRef<ZYLGeoCurveOnSurface> curve = ZYLGeoCurveOnSurface::CreateFromPolyline(m_surface.get(), uv, &error);
        if (!curve)
            throw ZYLSysException(error);
        ZYLGeoRef<ZYLGeoAssembledCurveOnSurface> boundary(new ZYLGeoAssembledCurveOnSurface(m_surface.get()));
        boundary->AddCurve(curve.get());
        m_builder.AddPlyBoundary(boundary.get());
    }

    void MakeMachine()
    {
        const double courseWidth = m_p.tows * m_p.towWidth;
        m_head = m_builder.AddMachineHead(Tr("Placement head"), m_p.tows);
        // Head body: spheres above and behind the tip, well clear of the part.
        m_builder.SetCollisionPoints(m_head, {{ZYLMathPoint(-60.0, 0.0, 130.0), 45.0},
                                              {ZYLMathPoint(-110.0, 0.0, 220.0), 70.0},
                                              {ZYLMathPoint(0.0, 0.0, 330.0), 90.0}});
        const double widths[2] = {courseWidth + 12.0, courseWidth + 24.0};
        const double diameters[2] = {60.0, 80.0};
        for (int r = 0; r < 2; ++r) {
            m_rollers[r] = m_builder.AddRoller(Tr("Roller %1").arg(r + 1), widths[r], diameters[r]);
            // The roller's fork: spheres beside both ends of the roller at axle height, 18 or
            // 28 mm clear of a flat part with the tool upright (so clear at the usual 10 mm
            // tolerance on the gently curved panel), brought down into the part by a side
            // tilt of about 0.4 rad.
            const double y = widths[r] / 2 + 10.0;
            QList<std::pair<ZYLMathPoint, double>> points;
            for (double x : {-10.0, 10.0})
                for (double side : {-1.0, 1.0})
                    points.append({ZYLMathPoint(x, side * y, diameters[r] / 2), 12.0});
            m_builder.SetCollisionPoints(m_rollers[r], points);
        }
    }

    // One course: the tow points along the line c + λ·d over [start, end] of the (u, v)
    // domain, with its tow masks from the tows' own entries into the boundary.
    void MakeCourse(UV c, UV d, const double (&towIn)[64], const double (&towOut)[64], double start, double end,
                    int ply)
    {
        const double length = end - start;
        int count = m_p.pointsPerCourse;
        if (count <= 0)
            count = std::max(2, int(std::ceil(length / m_p.pointSpacing)) + 1);
        ZYLTPProgramBuilder::CourseData data;
        data.tips.reserve(size_t(count));
        data.normals.reserve(size_t(count));
        data.directions.reserve(size_t(count));
        std::vector<quint64> masks(static_cast<size_t>(count));
        const int courseIndex = m_procedure->GetNumCourses();
        const bool bent = m_p.processFaults && courseIndex % 11 == 7 && length > 200.0;
        const bool shortRuns = m_p.processFaults && courseIndex % 11 == 8 && length > 800.0;
        for (int i = 0; i < count; ++i) {
            const double lambda = i + 1 == count ? end : start + length * i / (count - 1);
            // The S-bend: a sideways cosine bump of 6 mm over 30% of the course (at most
            // 300 mm), so its radius is about 760 mm on a long course.
            double offset = 0.0, slope = 0.0;
            const double bendLength = std::min(300.0, 0.3 * length), bendStart = start + 0.3 * length;
            if (bent && lambda > bendStart && lambda < bendStart + bendLength) {
                const double phase = 2.0 * M_PI * (lambda - bendStart) / bendLength;
                offset = 3.0 * (1.0 - std::cos(phase));
                slope = 3.0 * std::sin(phase) * 2.0 * M_PI / bendLength;
            }
            const UV across{-d.v, d.u};
            const UV p = c + d * lambda + across * offset;
            const UV heading = d + across * slope;
            ZYLMathPoint tip;
            ZYLMathVector du, dv;
            m_surface->EvaluateDerivatives(p.u, p.v, &tip, &du, &dv);
            const ZYLMathVector normal = *du.Cross(dv).Normalized();
            ZYLMathVector direction = du * heading.u + dv * heading.v;
            direction = *(direction - normal * normal.Dot(direction)).Normalized();
            data.tips.push_back(tip);
            data.normals.push_back(normal);
            data.directions.push_back(direction);
            // The tows lie side by side on the surface, which stretches (u, v): the offset of
            // a tow in (u, v) comes from the surface's metric. Away from a tow's entry and
            // exit the straight (u, v) clip decides; near them, the exact place does.
            const ZYLMathVector side = normal.Cross(direction);
            const double e = du.Dot(du), f = du.Dot(dv), g = dv.Dot(dv);
            const double b1 = du.Dot(side), b2 = dv.Dot(side), det = e * g - f * f;
            const UV perOffset{(g * b1 - f * b2) / det, (e * b2 - f * b1) / det};
            quint64 mask = 0;
            for (int t = 0; t < m_p.tows; ++t) {
                constexpr double Margin = 15.0;
                bool laid = lambda >= towIn[t] && lambda <= towOut[t];
                if (std::fabs(lambda - towIn[t]) < Margin || std::fabs(lambda - towOut[t]) < Margin)
                    laid = InsideConvex(m_polygon, p + perOffset * ((t - (m_p.tows - 1) / 2.0) * m_p.towWidth));
                if (laid)
                    mask |= quint64(1) << t;
            }
            if (shortRuns) {
                // Tows 1 and 2 cut for 60 mm; the last tow cut for 300 mm but for 40 mm fed.
                const double mid = start + 0.5 * length;
                if (lambda >= mid && lambda < mid + 60.0)
                    mask &= ~quint64(3);
                if (lambda >= mid + 150.0 && lambda < mid + 450.0 && !(lambda >= mid + 280.0 && lambda < mid + 320.0))
                    mask &= ~(quint64(1) << (m_p.tows - 1));
            }
            masks[size_t(i)] = mask;
        }

        // A few stretches tilted far to the side, so that the roller's fork comes too close to
        // the part: the collisions a check at 10 mm finds, and that tilting back clears.
        int tiltStart = -1, tiltEnd = -1;
        if (m_p.collisions && courseIndex % 11 == 3 && count >= 20) {
            tiltStart = count / 2;
            tiltEnd = tiltStart + std::max(3, count / 40);
        }
        const double feedRate = 6000.0;
        for (int i = 0; i < count;) {
            const bool tilted = i >= tiltStart && i < tiltEnd;
            int j = i + 1;
            while (j < count && masks[size_t(j)] == masks[size_t(i)] && (j >= tiltStart && j < tiltEnd) == tilted)
                ++j;
            ZYLTPProgramBuilder::TowRun run;
            run.numPoints = j - i;
            run.towMask = ZYLCompTowMask(masks[size_t(i)]);
            run.values.feedRate = feedRate;
            run.values.compactionForce = 400.0;
            run.values.sideTilt = tilted ? 0.45 : 0.0;
            data.runs.push_back(run);
            i = j;
        }
        data.rollInValues.feedRate = feedRate;
        data.rollOutValues.feedRate = feedRate;
        data.layingFeedRate = feedRate;
        data.prefix = {QStringLiteral("; course %1, ply %2").arg(courseIndex + 1).arg(ply + 1)};

        // Arc length of the tow points, for the break range.
        double arc = 0.0;
        for (size_t i = 1; i < data.tips.size(); ++i)
            arc += (data.tips[i] - data.tips[i - 1]).GetLength();
        const double rollIn = data.rollIn;

        ZYLTPTowCourse *course =
            m_builder.AddTowCourse(m_procedure, m_configurations[ply % 2], std::move(data));
        if (courseIndex % 4 == 1 && arc > 200.0)
            m_builder.AddBreakRange(course, rollIn + 0.45 * arc, rollIn + 0.45 * arc + 20.0);
        m_plyOfCourse.push_back(ply);
    }

    void MakeCourses()
    {
        static constexpr double Angles[4] = {0.0, 45.0, 90.0, -45.0};
        const double courseWidth = m_p.tows * m_p.towWidth;
        const UV centre{ZYLTPDemoGenerator::PanelLength / 2, ZYLTPDemoGenerator::PanelWidth / 2};
        int made = 0;
        for (int ply = 0; made < m_p.courses; ++ply) {
            if (ply >= 8 && made == 0)
                throw ZYLSysException(Tr("The courses do not fit on the demo panel"));
            const double angle = Angles[ply % 4] * M_PI / 180.0;
            const UV d{std::cos(angle), std::sin(angle)};
            const UV side{-d.v, d.u};
            double sMin = std::numeric_limits<double>::infinity(), sMax = -sMin;
            for (const UV &p : m_polygon) {
                sMin = std::min(sMin, (p - centre).Dot(side));
                sMax = std::max(sMax, (p - centre).Dot(side));
            }
            // Plies are shifted against each other so that their course edges do not stack.
            double s = sMin + courseWidth * (0.5 + m_random.Uniform(0.0, 0.5));
            for (int k = 0; made < m_p.courses && s <= sMax - courseWidth * 0.5; ++k, s += courseWidth) {
                // Every other course runs back, so that links stay short.
                const UV dir = k % 2 ? d * -1.0 : d;
                const UV towSide{-dir.v, dir.u};
                const UV c = centre + side * s;
                double towIn[64], towOut[64];
                double start = std::numeric_limits<double>::infinity(), end = -start;
                for (int t = 0; t < m_p.tows; ++t) {
                    const double offset = (t - (m_p.tows - 1) / 2.0) * m_p.towWidth;
                    if (!ClipLine(m_polygon, c + towSide * offset, dir, &towIn[t], &towOut[t])) {
                        towIn[t] = std::numeric_limits<double>::infinity();
                        towOut[t] = -towIn[t];
                        continue;
                    }
                    start = std::min(start, towIn[t]);
                    end = std::max(end, towOut[t]);
                }
                if (!(end - start > 4.0 * m_p.pointSpacing))
                    continue;
                if (m_p.processFaults && made == 5) {
                    // Too short a course: every tow laid over 120 mm about the middle.
                    const double middle = (start + end) / 2;
                    start = middle - 60.0;
                    end = middle + 60.0;
                    for (int t = 0; t < m_p.tows; ++t) {
                        towIn[t] = std::max(towIn[t], start);
                        towOut[t] = std::min(towOut[t], end);
                    }
                }
                MakeCourse(c, dir, towIn, towOut, start, end, ply);
                ++made;
            }
        }
    }

    // Frames of a hand-made link: up from the end of one course, over, and down onto the next.
    static std::vector<ZYLMathAxis> CustomFrames(const ZYLTPCourse *from, const ZYLTPCourse *to)
    {
        const ZYLMathAxis a = from->GetPointFrame(from->GetNumPoints() - 1, false);
        const ZYLMathAxis b = to->GetPointFrame(0, false);
        const ZYLMathPoint pa = a.GetOrigin() + a.GetThirdDirection() * 40.0;
        const ZYLMathPoint pb = b.GetOrigin() + b.GetThirdDirection() * 40.0;
        std::vector<ZYLMathAxis> frames;
        constexpr int Steps = 6;
        for (int k = 0; k <= Steps; ++k) {
            const double f = double(k) / Steps;
            const ZYLMathPoint p = pa + (pb - pa) * f + ZYLMathVector(0.0, 0.0, 80.0 * std::sin(M_PI * f));
            const ZYLMathAxis &like = k * 2 < Steps ? a : b;
            frames.emplace_back(p, like.GetFirstDirection(), like.GetSecondDirection());
        }
        return frames;
    }

    void MakeLinks()
    {
        const int n = m_procedure->GetNumCourses();
        if (n == 0)
            return;
        m_builder.AddLink(m_procedure, nullptr, m_procedure->GetCourseByIndex(0), ZYLTPCourseLink::Linear);
        for (int i = 0; i + 1 < n; ++i) {
            const ZYLTPCourse *from = m_procedure->GetCourseByIndex(i);
            const ZYLTPCourse *to = m_procedure->GetCourseByIndex(i + 1);
            if (m_plyOfCourse[size_t(i)] != m_plyOfCourse[size_t(i + 1)])
                m_builder.AddLink(m_procedure, from, to, ZYLTPCourseLink::SafetyPlane);
            else if (i % 10 == 6)
                m_builder.AddCustomLink(m_procedure, from, to, CustomFrames(from, to));
            else
                m_builder.AddLink(m_procedure, from, to, ZYLTPCourseLink::Linear);
        }
        m_builder.AddLink(m_procedure, m_procedure->GetCourseByIndex(n - 1), nullptr, ZYLTPCourseLink::Linear);
    }

    void MakeInspection()
    {
        std::vector<ZYLMathPoint> path;
        constexpr int Samples = 41;
        for (int k = 0; k < Samples; ++k) {
            const double u = ZYLTPDemoGenerator::PanelLength * (0.1 + 0.8 * k / (Samples - 1));
            const double v = ZYLTPDemoGenerator::PanelWidth / 2;
            path.push_back(m_surface->Evaluate(u, v) + m_surface->GetNormal(u, v) * 100.0);
        }
        m_builder.AddInspectionProcedure(Tr("Surface scan"), Tr("Scan of the laid plies along the centre line"),
                                         m_builder.AddTool(Tr("Scanner")), std::move(path), 3000.0);
    }

    const ZYLTPDemoGenerator::Parameters &m_p;
    Random m_random;
    ZYLTPProgramBuilder m_builder;
    ZYLGeoRef<ZYLGeoBSplineSurface> m_surface;
    std::vector<UV> m_polygon;
    ZYLTPMachineHead *m_head = nullptr;
    ZYLTPRoller *m_rollers[2] = {nullptr, nullptr};
    ZYLTPRollLayupProcedure *m_procedure = nullptr;
    const ZYLTPMachineConfiguration *m_configurations[2] = {nullptr, nullptr};
    std::vector<int> m_plyOfCourse;
};

} // namespace

ZYLGeoRef<ZYLTPProgram> ZYLTPDemoGenerator::Create(const Parameters &parameters)
{
    if (parameters.courses < 1 || parameters.courses > 1000000)
        throw ZYLSysException(Tr("The number of courses must be between 1 and 1000000"));
    if (parameters.pointsPerCourse != 0 && (parameters.pointsPerCourse < 2 || parameters.pointsPerCourse > 10000000))
        throw ZYLSysException(Tr("A course needs at least 2 points"));
    if (!(parameters.pointSpacing >= 0.01 && parameters.pointSpacing <= 1000.0))
        throw ZYLSysException(Tr("The point spacing must be between 0.01 mm and 1000 mm"));
    if (parameters.tows < 8 || parameters.tows > 16)
        throw ZYLSysException(Tr("The number of tows must be between 8 and 16"));
    if (!(parameters.towWidth >= 1.0 && parameters.towWidth <= 50.0))
        throw ZYLSysException(Tr("The tow width must be between 1 mm and 50 mm"));
    return Generator(parameters).Build();
}

ZYLGeoRef<ZYLTPProgram> ZYLTPDemoGenerator::CreateDefaultProgram(bool processFaults)
{
    Parameters parameters;
    parameters.processFaults = processFaults;
    // One ply: the studio's course ordering works on programs of roll layup procedures only.
    parameters.inspection = false;
    parameters.courses = 36;
    parameters.pointSpacing = 5.0;
    parameters.tows = 8;
    return Create(parameters);
}
