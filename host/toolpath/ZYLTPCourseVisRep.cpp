// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCourseVisRep.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPProcessCheck.h"
#include "ZYLTPProcessColoring.h"
#include "ZYLTPPoint.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPVisCourseGeometry.h"
#include "ZYLTPVisPrimitives.h"

#include "ZYLVisTrianglePrimitive.h"

#include <algorithm>
#include <array>
#include <iterator>

using Options = ZYLTPVisualizationOptions;

struct ZYLTPCourseVisRep::Data {
    const ZYLTPCourse *course = nullptr;
    int index = -1;
    ZYLTPVisualizationOptions options;
};

namespace {

// Scratch arrays of a triangle strip builder. Kept per thread between representations: the
// arrays of one course are copied into its primitive, and reusing them spares the fresh
// pages a new allocation costs for every course of a large program.
struct StripBuffers {
    std::vector<double> xyz;
    std::vector<double> normals;
    std::vector<int> indices;
};

// Strips of triangles between two offset lines of a course, gathered into one primitive.
class TriangleStrips {
public:
    explicit TriangleStrips(StripBuffers &buffers)
        : m_b(buffers)
    {
        m_b.xyz.clear();
        m_b.normals.clear();
        m_b.indices.clear();
    }

    void Reserve(size_t numVertices)
    {
        m_b.xyz.reserve(3 * numVertices);
        m_b.normals.reserve(3 * numVertices);
        m_b.indices.reserve(3 * numVertices);
    }

    // Adds the strip between offsets a < b through the points `stations`. Both triangles of
    // each quad turn counter-clockwise seen from the surface normal, so the band is lit on
    // the side the tows face.
    void Add(const ZYLTPVisCourseGeometry &g, const std::vector<int> &stations, double a, double b)
    {
        if (stations.size() < 2)
            return;
        for (const int i : stations) {
            const int left = int(m_b.xyz.size() / 3);
            const ZYLMathVector side = g.GetSideDirection(i);
            const ZYLMathPoint &tip = g.GetTip(i);
            const ZYLMathVector &normal = g.GetNormal(i);
            for (const double offset : {a, b}) {
                const ZYLMathPoint p = tip + side * offset;
                m_b.xyz.insert(m_b.xyz.end(), {p.X(), p.Y(), p.Z()});
                m_b.normals.insert(m_b.normals.end(), {normal.X(), normal.Y(), normal.Z()});
            }
            if (i == stations.back())
                break;
            const int right = left + 1;
            const int nextLeft = left + 2;
            const int nextRight = left + 3;
            m_b.indices.insert(m_b.indices.end(), {left, nextRight, right, left, nextLeft, nextRight});
        }
    }

    void AddTo(ZYLTPVisPrimitiveList &out, const ZYLVisOptions &options)
    {
        if (m_b.indices.empty())
            return;
        out.Add(std::make_unique<ZYLVisTrianglePrimitive>(m_b.xyz, m_b.indices, m_b.normals), options);
    }

private:
    StripBuffers &m_b;
};

// How far the tow band and its edges may stray from the band through every laying point
// (mm): a hundredth of a millimetre, far below what a machine places tows to, and enough for
// a smooth course to need a vertex only every few centimetres.
constexpr double StationTolerance = 0.01;

class CourseBuilder {
public:
    CourseBuilder(const ZYLTPCourse &course, const Options &options, ZYLTPVisPrimitiveList &out)
        : m_course(course)
        , m_geometry(course, options.GetTowWidth())
        , m_options(options)
        , m_out(out)
    {
        m_stations.reserve(m_geometry.GetTowSpans().size());
        for (const auto &span : m_geometry.GetTowSpans())
            m_stations.push_back(m_geometry.ComputeStations(span, StationTolerance));
        // Radii of another state of the course (before an edit) would colour the wrong places.
        if ((m_check = ZYLTPProcessColoring::GetCheck())) {
            m_colours = m_check->FindColours(&course);
            if (m_colours && int(m_colours->perPoint.size()) != course.GetNumPoints())
                m_colours = nullptr;
        }
    }

    void Build()
    {
        AddTowFill();
        AddTowEdges();
        AddTowEnds();
        if (m_options.IsLayingTrajectoryEnabled())
            AddLayingTrajectory();
        if (m_options.IsRollInOutEnabled())
            AddRollInOut();
        if (m_options.IsApproachRetractEnabled())
            AddApproachRetract();
        if (m_options.IsTipPointEnabled())
            AddLayingPoints();
    }

private:
    const ZYLVisOptions &Attributes(Options::GraphicElement element) const
    {
        return m_options.GetGraphicAttributes(element);
    }

    void AddTowFill()
    {
        const Options::ShortTowDisplay display = m_options.GetShortTowDisplay();
        const bool plain = display == Options::AllTows || display == Options::AllTowsShortHighlighted;
        const bool shortApart = display == Options::ShortTowsOnly || display == Options::AllTowsShortHighlighted;
        if (!plain && !shortApart)
            return;
        const auto &spans = m_geometry.GetTowSpans();
        const std::vector<quint64> shortMasks = shortApart
                                                    ? m_geometry.ComputeShortTowMasks(m_options.GetMinimumTowLength())
                                                    : std::vector<quint64>(spans.size(), 0);
        thread_local StripBuffers buffers[2];
        TriangleStrips tows(buffers[0]);
        TriangleStrips shortTows(buffers[1]);
        const bool coloured = plain && m_colours;
        if (plain && !coloured)
            tows.Reserve(CountStripVertices([&](size_t s) { return spans[s].towMask & ~shortMasks[s]; }));
        for (size_t s = 0; s < spans.size(); ++s) {
            if (plain && !coloured)
                AddStrips(tows, s, spans[s].towMask & ~shortMasks[s]);
            AddStrips(shortTows, s, shortMasks[s]);
        }
        if (coloured)
            AddColouredTows(shortMasks);
        else
            tows.AddTo(m_out, Attributes(Options::CourseBandElement));
        shortTows.AddTo(m_out, Attributes(Options::ShortTowElement));
    }

    // The tows that are not short, one primitive per colour of the steering radius (see
    // ZYLTPProcessColoring), the first in the band's own colour for points without a radius.
    void AddColouredTows(const std::vector<quint64> &shortMasks)
    {
        constexpr int NumColours = ZYLTPProcessColoring::NumBins + 1;
        thread_local StripBuffers buffers[NumColours];
        std::vector<TriangleStrips> strips;
        strips.reserve(NumColours);
        for (StripBuffers &b : buffers)
            strips.emplace_back(b);
        auto colourOf = [this](int i) { return int(m_colours->perPoint[size_t(i)]); };
        const std::vector<int> &changes = m_colours->changes;
        const auto &spans = m_geometry.GetTowSpans();
        std::vector<int> stations, run;
        for (size_t s = 0; s < spans.size(); ++s) {
            const quint64 mask = spans[s].towMask & ~shortMasks[s];
            if (!mask)
                continue;
            // The band's own stations and each point where the colour changes, so that every
            // quad has the colour of its first point throughout.
            const std::vector<int> &own = m_stations[s];
            stations.clear();
            std::set_union(own.begin(), own.end(), std::upper_bound(changes.begin(), changes.end(), spans[s].first),
                           std::upper_bound(changes.begin(), changes.end(), spans[s].last),
                           std::back_inserter(stations));
            for (size_t j = 0; j + 1 < stations.size();) {
                const int colour = colourOf(stations[j]);
                size_t e = j + 1;
                while (e + 1 < stations.size() && colourOf(stations[e]) == colour)
                    ++e;
                run.assign(stations.begin() + qsizetype(j), stations.begin() + qsizetype(e) + 1);
                ZYLTPVisForEachBitRun(mask, [&](int first, int last) {
                    strips[size_t(colour)].Add(m_geometry, run, m_geometry.GetEdgeOffset(first),
                                               m_geometry.GetEdgeOffset(last + 1));
                });
                j = e;
            }
        }
        for (int colour = 0; colour < NumColours; ++colour) {
            ZYLVisOptions options = Attributes(Options::CourseBandElement);
            if (colour > 0)
                options.SetColor(ZYLTPProcessColoring::GetBinColor(colour - 1));
            strips[size_t(colour)].AddTo(m_out, options);
        }
    }

    template<class MaskOf>
    size_t CountStripVertices(MaskOf maskOf) const
    {
        size_t count = 0;
        const auto &spans = m_geometry.GetTowSpans();
        for (size_t s = 0; s < spans.size(); ++s) {
            ZYLTPVisForEachBitRun(maskOf(s), [&](int, int) {
                count += 2 * m_stations[s].size();
            });
        }
        return count;
    }

    void AddStrips(TriangleStrips &strips, size_t span, quint64 mask) const
    {
        // Neighbouring tows make one strip: the band has as few triangles as its outline allows.
        ZYLTPVisForEachBitRun(mask, [&](int first, int last) {
            strips.Add(m_geometry, m_stations[span], m_geometry.GetEdgeOffset(first),
                       m_geometry.GetEdgeOffset(last + 1));
        });
    }

    void AddTowEdges()
    {
        const Options::TowEdgesDisplay display = m_options.GetTowEdgeDisplay();
        const bool outer = display & Options::OuterTowEdges;
        const bool inner = display & Options::InnerTowEdges;
        if (!outer && !inner)
            return;
        // An edge that goes on from one span to the next stays one polyline, so that a long
        // course's outline is a few lines rather than a segment per point pair.
        std::vector<std::vector<ZYLMathPoint>> lines;
        std::array<int, 65> open;
        open.fill(-1);
        const auto &spans = m_geometry.GetTowSpans();
        for (size_t s = 0; s < spans.size(); ++s) {
            const auto &span = spans[s];
            std::array<bool, 65> drawn{};
            ZYLTPVisForEachBitRun(span.towMask, [&](int first, int last) {
                for (int edge = first; edge <= last + 1; ++edge) {
                    const bool isOuter = edge == first || edge == last + 1;
                    drawn[size_t(edge)] = isOuter ? outer : inner;
                }
            });
            for (int edge = 0; edge <= m_geometry.GetNumTows(); ++edge) {
                int &line = open[size_t(edge)];
                if (!drawn[size_t(edge)]) {
                    line = -1;
                    continue;
                }
                // A line going on from the previous span has its first station already.
                size_t from = 1;
                if (line < 0) {
                    line = int(lines.size());
                    lines.emplace_back();
                    from = 0;
                }
                std::vector<ZYLMathPoint> &points = lines[size_t(line)];
                const double offset = m_geometry.GetEdgeOffset(edge);
                for (size_t k = from; k < m_stations[s].size(); ++k)
                    points.push_back(m_geometry.GetOffsetPoint(m_stations[s][k], offset));
            }
        }
        for (std::vector<ZYLMathPoint> &points : lines) {
            if (points.size() >= 2)
                m_out.AddPolyline(std::move(points), Attributes(Options::TowEdgeElement));
        }
    }

    void AddTowEnds()
    {
        const Options::HeadProfilesDisplay display = m_options.GetTowHeadProfileDisplay();
        const bool adds = display & Options::HeadProfilesAtAdds;
        const bool cuts = display & Options::HeadProfilesAtCuts;
        if (!adds && !cuts)
            return;
        const auto &spans = m_geometry.GetTowSpans();
        std::vector<ZYLMathPoint> ends;
        const auto appendAcross = [&](int point, quint64 mask) {
            ZYLTPVisForEachBitRun(mask, [&](int first, int last) {
                ends.push_back(m_geometry.GetOffsetPoint(point, m_geometry.GetEdgeOffset(first)));
                ends.push_back(m_geometry.GetOffsetPoint(point, m_geometry.GetEdgeOffset(last + 1)));
            });
        };
        for (size_t s = 0; s < spans.size(); ++s) {
            const quint64 before = s == 0 ? 0 : spans[s - 1].towMask;
            const quint64 after = s + 1 == spans.size() ? 0 : spans[s + 1].towMask;
            if (adds)
                appendAcross(spans[s].first, spans[s].towMask & ~before);
            if (cuts)
                appendAcross(spans[s].last, spans[s].towMask & ~after);
        }
        m_out.AddSegments(std::move(ends), Attributes(Options::HeadProfileElement));
    }

    void AddLayingTrajectory()
    {
        // The tow points are every point but the roll-in (first) and roll-out (last) ones.
        const int n = m_geometry.GetNumPoints();
        if (n < 4)
            return;
        const auto &tips = m_course.GetPointData().tips;
        m_out.AddPolyline(std::vector<ZYLMathPoint>(tips.begin() + 1, tips.end() - 1),
                          Attributes(Options::LayingTrajectoryElement));
    }

    void AddRollInOut()
    {
        const int n = m_geometry.GetNumPoints();
        if (n < 3)
            return;
        m_out.AddSegments({m_geometry.GetTip(0), m_geometry.GetTip(1), m_geometry.GetTip(n - 2), m_geometry.GetTip(n - 1)},
                          Attributes(Options::RollInOutElement));
    }

    void AddApproachRetract()
    {
        std::vector<ZYLMathPoint> ends;
        for (const ZYLTPTrajectory *trajectory :
             {static_cast<const ZYLTPTrajectory *>(m_course.GetApproachTrajectory()),
              static_cast<const ZYLTPTrajectory *>(m_course.GetRetractTrajectory())}) {
            if (!trajectory)
                continue;
            for (int i = 0; i + 1 < trajectory->GetNumPoints(); ++i) {
                const ZYLTPPoint *a = trajectory->GetPoint(i);
                const ZYLTPPoint *b = trajectory->GetPoint(i + 1);
                if (a && b) {
                    ends.push_back(a->GetTipPoint());
                    ends.push_back(b->GetTipPoint());
                }
            }
        }
        m_out.AddSegments(std::move(ends), Attributes(Options::ApproachRetractElement));
    }

    void AddLayingPoints()
    {
        const int n = m_geometry.GetNumPoints();
        m_out.AddPoints(m_course.GetPointData().tips, m_options.GetTipPointGraphicAttributes());
        ZYLTPVisVectorSegments vectors(m_options.GetLayingVectorsToDisplay(), m_options.GetVectorLength(), false);
        if (vectors.IsEmpty())
            return;
        vectors.Reserve(n);
        // Frames are computed from the arrays; asking for point objects would create a view per
        // point only to read the same arrays.
        for (int i = 0; i < n; ++i)
            vectors.Add(m_course.GetPointFrame(i, true));
        vectors.AddTo(m_options, m_out);
    }

    const ZYLTPCourse &m_course;
    ZYLTPVisCourseGeometry m_geometry;
    std::vector<std::vector<int>> m_stations;
    std::shared_ptr<const ZYLTPProcessCheck> m_check;
    const ZYLTPProcessCheck::Colours *m_colours = nullptr;
    const Options &m_options;
    ZYLTPVisPrimitiveList &m_out;
};

} // namespace

ZYLTPCourseVisRep::ZYLTPCourseVisRep(const ZYLTPCourse *course, int index, const ZYLTPVisualizationOptions &options,
                                     QList<ZYLVisOptions> &out)
    : d(std::make_unique<Data>())
{
    d->course = course;
    d->index = index;
    d->options = options;
    if (!course)
        return;
    ZYLTPVisPrimitiveList list;
    CourseBuilder(*course, options, list).Build();
    AddPrimitives(list.GetPrimitives(), list.GetOptions());
    out.append(list.GetOptions());
    list.Release();
}

ZYLTPCourseVisRep::~ZYLTPCourseVisRep() = default;

const ZYLTPCourse *ZYLTPCourseVisRep::GetCourse() const
{
    return d->course;
}

int ZYLTPCourseVisRep::GetCourseIndex() const
{
    return d->index;
}

const ZYLTPVisualizationOptions &ZYLTPCourseVisRep::GetVisualizationOptions() const
{
    return d->options;
}
