// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProgramFile.h"

#include "ZYLTPProgramFileWriter.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoCurveOnSurface.h"
#include "ZYLGeoPlane.h"
#include "ZYLGeoPolyline.h"

#include <QBuffer>
#include <QSaveFile>

#include <algorithm>

namespace {

// Curves that are not polylines in (u, v) are stored as this many segments per parameter
// span between kinks: the file keeps ply boundaries as polylines only.
constexpr int SamplesPerSpan = 64;

// The writing side of the format. Every member writes one part of the program in the order
// the reader expects it; the order never depends on anything but the program, which is what
// makes the output deterministic.
class ProgramWriter {
public:
    explicit ProgramWriter(ZYLTPProgramFileWriter &w) : w(w) {}

    void WriteProgram(const ZYLTPProgram &program)
    {
        w.BeginObject();
        w.Key("format");
        w.String(QString::fromLatin1(ZYLTPProgramFile::FormatName));
        w.Key("version");
        w.Int(ZYLTPProgramFile::Version);
        w.Key("surface");
        WriteSurface(program.GetPlySurface());
        w.Key("boundaries");
        w.BeginArray();
        for (const ZYLGeoAssembledCurveOnSurface *boundary : program.GetPlyBoundaries())
            WriteBoundary(*boundary);
        w.EndArray();
        w.Key("heads");
        w.BeginArray();
        for (int i = 0; i < program.GetNumMachineHeads(); ++i)
            WriteResource(*program.GetMachineHead(i), nullptr);
        w.EndArray();
        w.Key("tools");
        w.BeginArray();
        for (int i = 0; i < program.GetNumTools(); ++i)
            WriteResource(*program.GetTool(i), qobject_cast<const ZYLTPRoller *>(program.GetTool(i)));
        w.EndArray();
        w.Key("procedures");
        w.BeginArray();
        for (int i = 0; i < program.GetNumProcedures(); ++i)
            WriteProcedure(*program.GetProcedure(i));
        w.EndArray();
        WriteProcessRules(program.GetProcessRules());
        w.EndObject();
        w.Newline();
    }

private:
    void Fail(const QString &message) { throw ZYLTPProgramFileWriter::Failure{message}; }

    void Point(const ZYLMathPoint &p) { w.Triple(p.X(), p.Y(), p.Z()); }
    void Vector(const ZYLMathVector &v) { w.Triple(v.X(), v.Y(), v.Z()); }
    // A frame as origin and its three directions, bit for bit.
    void Frame(const ZYLMathAxis &a)
    {
        w.BeginArray();
        Coordinates(a.GetOrigin());
        for (int i = 0; i < 3; ++i)
            Coordinates(a.GetDirection(i));
        w.EndArray();
    }
    template<class T>
    void Coordinates(const T &p)
    {
        w.Number(p.X());
        w.Number(p.Y());
        w.Number(p.Z());
    }
    void NumberMember(const char *key, double value)
    {
        w.Key(key);
        w.Number(value);
    }
    void StringList(const QStringList &list)
    {
        w.BeginArray();
        for (const QString &s : list)
            w.String(s);
        w.EndArray();
    }

    // Written only when they differ from the defaults, so that a file that never had them
    // saves as it was.
    void WriteProcessRules(const ZYLTPProcessRules &rules)
    {
        if (rules == ZYLTPProcessRules())
            return;
        w.Key("process_rules");
        w.BeginObject();
        NumberMember("tow_width", rules.towWidth);
        NumberMember("min_steering_radius", rules.minSteeringRadius);
        NumberMember("min_cut_length", rules.minCutLength);
        NumberMember("min_add_length", rules.minAddLength);
        NumberMember("min_course_length", rules.minCourseLength);
        w.EndObject();
    }

    void WriteSurface(const ZYLGeoSurface *surface)
    {
        if (!surface) {
            w.Null();
            return;
        }
        w.BeginObject();
        if (const auto *plane = dynamic_cast<const ZYLGeoPlane *>(surface)) {
            w.Key("kind");
            w.String(QStringLiteral("plane"));
            w.Key("frame");
            Frame(plane->GetFrame());
            const ZYLGeoSurface::Domain d = plane->GetDomain();
            w.Key("domain");
            w.BeginArray();
            for (double v : {d.uMin, d.uMax, d.vMin, d.vMax})
                w.Number(v);
            w.EndArray();
        } else if (const auto *spline = dynamic_cast<const ZYLGeoBSplineSurface *>(surface)) {
            w.Key("kind");
            w.String(QStringLiteral("bspline"));
            w.Key("degree_u");
            w.Int(spline->GetDegreeU());
            w.Key("degree_v");
            w.Int(spline->GetDegreeV());
            w.Key("count_u");
            w.Int(spline->GetNumControlPointsU());
            w.Key("count_v");
            w.Int(spline->GetNumControlPointsV());
            w.Key("knots_u");
            w.Numbers(spline->GetKnotsU());
            w.Key("knots_v");
            w.Numbers(spline->GetKnotsV());
            w.Key("control_points");
            w.BeginArray();
            for (int i = 0; i < spline->GetNumControlPointsU(); ++i)
                for (int j = 0; j < spline->GetNumControlPointsV(); ++j)
                    Point(spline->GetControlPoint(i, j));
            w.EndArray();
        } else {
            Fail(ZYLTPProgramFile::tr("The ply surface is of a kind program files cannot hold"));
        }
        w.EndObject();
    }

    // Returns the (u, v) vertices of a curve on the ply surface: the vertices of a polyline
    // in (u, v) as they are, any other curve sampled between its kinks.
    static std::vector<QPointF> UVVertices(const ZYLGeoCurveOnSurface &curve)
    {
        std::vector<QPointF> uv;
        if (const auto *polyline = dynamic_cast<const ZYLGeoPolyline *>(curve.GetUVCurve())) {
            for (const ZYLMathPoint &p : polyline->GetPoints())
                uv.emplace_back(p.X(), p.Y());
            return uv;
        }
        std::vector<double> breaks{curve.GetStartParameter()};
        for (double k : curve.GetKinks())
            if (k > breaks.back() && k < curve.GetEndParameter())
                breaks.push_back(k);
        breaks.push_back(curve.GetEndParameter());
        uv.push_back(curve.GetUV(breaks.front()));
        for (size_t s = 0; s + 1 < breaks.size(); ++s)
            for (int k = 1; k <= SamplesPerSpan; ++k)
                uv.push_back(curve.GetUV(breaks[s] + (breaks[s + 1] - breaks[s]) * k / SamplesPerSpan));
        return uv;
    }

    void WriteBoundary(const ZYLGeoAssembledCurveOnSurface &boundary)
    {
        w.BeginObject();
        w.Key("curves");
        w.BeginArray();
        for (int c = 0; c < boundary.GetNumCurves(); ++c) {
            const auto *curve = dynamic_cast<const ZYLGeoCurveOnSurface *>(boundary.GetCurve(c));
            if (!curve)
                Fail(ZYLTPProgramFile::tr("A ply boundary curve does not lie on the ply surface"));
            w.BeginObject();
            w.Key("uv");
            w.BeginArray();
            for (const QPointF &p : UVVertices(*curve)) {
                w.BeginArray();
                w.Number(p.x());
                w.Number(p.y());
                w.EndArray();
            }
            w.EndArray();
            w.EndObject();
        }
        w.EndArray();
        w.EndObject();
    }

    void WriteResource(const ZYLTPResource &resource, const ZYLTPRoller *roller)
    {
        w.BeginObject();
        // Tools carry their kind; heads have only one.
        if (qobject_cast<const ZYLTPTool *>(&resource)) {
            w.Key("kind");
            w.String(roller ? QStringLiteral("roller") : QStringLiteral("plain"));
        }
        w.Key("name");
        w.String(resource.GetName());
        // A head's tow count is left out while unknown, so that programs without counts
        // write what they always wrote.
        if (const auto *head = qobject_cast<const ZYLTPMachineHead *>(&resource); head && head->GetNumTows() > 0) {
            w.Key("tows");
            w.Int(head->GetNumTows());
        }
        if (roller) {
            NumberMember("width", roller->GetWidth());
            NumberMember("diameter", roller->GetDiameter());
        }
        w.Key("collision_points");
        w.BeginArray();
        for (const auto &[centre, radius] : resource.GetCollisionPoints()) {
            w.BeginArray();
            for (double v : {centre.X(), centre.Y(), centre.Z(), radius})
                w.Number(v);
            w.EndArray();
        }
        w.EndArray();
        w.EndObject();
    }

    void WriteProcedure(const ZYLTPProcedure &procedure)
    {
        w.Newline();
        w.BeginObject();
        if (const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(&procedure)) {
            w.Key("kind");
            w.String(QStringLiteral("roll_layup"));
            w.Key("name");
            w.String(procedure.GetName());
            w.Key("description");
            w.String(procedure.GetDescription());
            WriteRollLayup(*layup);
        } else if (const auto *inspection = qobject_cast<const ZYLTPInspectionProcedure *>(&procedure)) {
            w.Key("kind");
            w.String(QStringLiteral("inspection"));
            w.Key("name");
            w.String(procedure.GetName());
            w.Key("description");
            w.String(procedure.GetDescription());
            const QList<const ZYLTPResource *> tools = inspection->GetTools();
            w.Key("scanner");
            w.Int(tools.isEmpty() ? -1 : tools.front()->GetId());
            NumberMember("scan_feed_rate", inspection->GetScanFeedRate());
            w.Key("path");
            w.BeginArray();
            for (const ZYLMathPoint &p : inspection->GetPath())
                Point(p);
            w.EndArray();
        } else {
            Fail(ZYLTPProgramFile::tr("Procedure \"%1\" is of a kind program files cannot hold").arg(procedure.GetName()));
        }
        w.EndObject();
    }

    void WriteRollLayup(const ZYLTPRollLayupProcedure &p)
    {
        w.Key("parameters");
        w.BeginObject();
        NumberMember("laying_feed_rate", p.GetLayingFeedrate());
        NumberMember("adding_feed_rate", p.GetAddingFeedrate());
        NumberMember("cutting_feed_rate", p.GetCuttingFeedrate());
        NumberMember("rapid_feed_rate", p.GetRapidFeedRate());
        NumberMember("rapid_approach", p.GetRapidApproach());
        NumberMember("rapid_retract", p.GetRapidRetract());
        NumberMember("safety_clearance", p.GetSafetyClearance());
        NumberMember("add_cut_distance", p.GetAddCutDistance());
        w.Key("home_frame");
        Frame(p.GetHomeFrame());
        w.Key("default_strategy");
        w.Int(p.GetDefaultStrategy());
        w.EndObject();

        w.Key("configurations");
        w.BeginArray();
        for (int i = 0; i < p.GetNumMachineConfigurations(); ++i) {
            const ZYLTPMachineConfiguration *c = p.GetMachineConfiguration(i);
            w.BeginObject();
            w.Key("head");
            w.Int(c->GetHead() ? c->GetHead()->GetId() : -1);
            w.Key("tool");
            w.Int(c->GetTool()->GetId());
            w.EndObject();
        }
        w.EndArray();

        w.Key("courses");
        w.BeginArray();
        for (int i = 0; i < p.GetNumCourses(); ++i)
            WriteCourse(p, *p.GetCourseByIndex(i));
        w.EndArray();

        w.Key("laying_order");
        w.BeginArray();
        for (int index : p.GetLayingOrder())
            w.Int(index);
        w.EndArray();

        w.Key("links");
        w.BeginArray();
        for (int i = 0; i < p.GetNumLinks(); ++i)
            WriteLink(p, *p.GetLinkByIndex(i));
        w.EndArray();
    }

    void WriteValues(const char *key, const ZYLTPOnPartTrajectory::Values &v)
    {
        w.Key(key);
        w.BeginObject();
        NumberMember("forward_tilt", v.forwardTilt);
        NumberMember("side_tilt", v.sideTilt);
        NumberMember("feed_rate", v.feedRate);
        NumberMember("compaction_force", v.compactionForce);
        w.EndObject();
    }

    void WriteCourse(const ZYLTPRollLayupProcedure &p, const ZYLTPCourse &course)
    {
        const auto *towCourse = qobject_cast<const ZYLTPTowCourse *>(&course);
        if (!towCourse)
            Fail(ZYLTPProgramFile::tr("Course %1 is of a kind program files cannot hold").arg(p.GetCourseIndex(&course)));
        int configuration = -1;
        for (int i = 0; i < p.GetNumMachineConfigurations(); ++i)
            if (p.GetMachineConfiguration(i) == &course.GetMachineConfiguration())
                configuration = i;

        w.Newline();
        w.BeginObject();
        w.Key("configuration");
        w.Int(configuration);
        // The width of the course in tows: the masks are checked against it on load, and a
        // course whose head knows no count gets it back, so that a reversed course keeps the
        // width it mirrors over.
        w.Key("tows");
        w.Int(towCourse->GetNumTows());
        NumberMember("roll_in", course.GetRollIn());
        NumberMember("roll_out", course.GetRollOut());
        NumberMember("laying_feed_rate", course.GetLayingFeedRate());
        NumberMember("add_feed_rate", course.GetAddFeedRate());
        NumberMember("cut_feed_rate", course.GetCutFeedRate());
        w.Key("approach");
        w.BeginObject();
        NumberMember("angle", course.GetApproachTrajectory()->GetAngle());
        NumberMember("length", course.GetApproachTrajectory()->GetLength());
        w.EndObject();
        w.Key("retract");
        w.BeginObject();
        NumberMember("angle", course.GetRetractTrajectory()->GetAngle());
        NumberMember("length", course.GetRetractTrajectory()->GetLength());
        w.EndObject();
        WriteValues("roll_in_values", course.GetRollInTrajectory()->GetValues());
        WriteValues("roll_out_values", course.GetRollOutTrajectory()->GetValues());
        w.Key("prefix");
        StringList(course.GetPrefixInstructions());
        w.Key("suffix");
        StringList(course.GetSuffixInstructions());

        // Tow points only: the roll-in and roll-out points follow from them.
        const ZYLTPCoursePoints &data = course.GetPointData();
        w.Key("points");
        w.BeginArray();
        for (int i = 1; i + 1 < data.GetNumPoints(); ++i) {
            w.Newline();
            w.BeginObject();
            w.Key("tip");
            Point(data.tips[size_t(i)]);
            w.Key("tool_axis");
            Vector(data.normals[size_t(i)]);
            w.Key("direction");
            Vector(data.directions[size_t(i)]);
            w.EndObject();
        }
        w.EndArray();

        w.Key("runs");
        w.BeginArray();
        for (int t = 0; t < course.GetNumTrajectories(); ++t) {
            const auto *run = qobject_cast<const ZYLTPTowTrajectory *>(course.GetTrajectory(t));
            if (!run)
                continue;
            w.Newline();
            w.BeginObject();
            w.Key("points");
            w.Int(run->GetNumPoints());
            w.Key("tow_mask");
            w.String(run->GetTowMask().GetString());
            w.Key("forced_mask");
            w.String(run->GetForcedMask().GetString());
            // Trailing full rates are implied, which keeps plain runs short.
            QList<double> rates = run->GetForcedRates();
            while (!rates.isEmpty() && rates.back() == 1.0)
                rates.removeLast();
            w.Key("forced_rates");
            w.Numbers(rates);
            const ZYLTPOnPartTrajectory::Values v = run->GetValues();
            NumberMember("forward_tilt", v.forwardTilt);
            NumberMember("side_tilt", v.sideTilt);
            NumberMember("feed_rate", v.feedRate);
            NumberMember("compaction_force", v.compactionForce);
            w.EndObject();
        }
        w.EndArray();

        w.Key("break_ranges");
        w.BeginArray();
        for (int b = 0; b < course.GetNumBreakRanges(); ++b) {
            w.BeginArray();
            w.Number(course.GetBreakRange(b)->GetStart());
            w.Number(course.GetBreakRange(b)->GetEnd());
            w.EndArray();
        }
        w.EndArray();
        w.EndObject();
    }

    void WriteLink(const ZYLTPRollLayupProcedure &p, const ZYLTPCourseLink &link)
    {
        w.Newline();
        w.BeginObject();
        w.Key("strategy");
        if (qobject_cast<const ZYLTPProcedureLink *>(&link))
            w.String(QStringLiteral("procedure"));
        else if (qobject_cast<const ZYLTPCustomCourseLink *>(&link))
            w.String(QStringLiteral("custom"));
        else if (link.GetStrategy() == ZYLTPCourseLink::SafetyPlane)
            w.String(QStringLiteral("safety_plane"));
        else
            w.String(QStringLiteral("linear"));
        w.Key("from");
        w.Int(link.GetFromCourse() ? p.GetCourseIndex(link.GetFromCourse()) : -1);
        w.Key("to");
        w.Int(link.GetToCourse() ? p.GetCourseIndex(link.GetToCourse()) : -1);
        w.Key("detail");
        w.Int(link.GetPointsDetail());
        if (const auto *linear = qobject_cast<const ZYLTPLinearCourseLink *>(&link)) {
            NumberMember("rapid_approach", linear->GetRapidApproach());
            NumberMember("rapid_retract", linear->GetRapidRetract());
        }
        if (const auto *custom = qobject_cast<const ZYLTPCustomCourseLink *>(&link)) {
            w.Key("frames");
            w.BeginArray();
            for (const ZYLMathAxis &frame : custom->GetFrames())
                Frame(frame);
            w.EndArray();
        }
        w.EndObject();
    }

    ZYLTPProgramFileWriter &w;
};

} // namespace

QString ZYLTPProgramFile::Save(const ZYLTPProgram &program, const QString &fileName)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return tr("Cannot write %1: %2").arg(fileName, file.errorString());
    try {
        ZYLTPProgramFileWriter writer(&file);
        ProgramWriter(writer).WriteProgram(program);
        writer.Flush();
    } catch (const ZYLTPProgramFileWriter::Failure &failure) {
        file.cancelWriting();
        return failure.message;
    } catch (const std::bad_alloc &) {
        file.cancelWriting();
        return tr("Not enough memory to save the program");
    }
    if (!file.commit())
        return tr("Cannot write %1: %2").arg(fileName, file.errorString());
    return {};
}

QByteArray ZYLTPProgramFile::Serialize(const ZYLTPProgram &program, QString *error)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    try {
        ZYLTPProgramFileWriter writer(&buffer);
        ProgramWriter(writer).WriteProgram(program);
        writer.Flush();
    } catch (const ZYLTPProgramFileWriter::Failure &failure) {
        if (error)
            *error = failure.message;
        return {};
    }
    buffer.close();
    if (error)
        error->clear();
    return bytes;
}
