// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The loading half of ZYLTPProgramFile: simdjson On-Demand straight into the program builder.
#include "ZYLTPProgramFile.h"

#include "ZYLTPCheck.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowCourse.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoCurveOnSurface.h"
#include "ZYLGeoPlane.h"

#include "ZYLSysException.h"

#include <simdjson.h>

#include <QDataStream>
#include <QFile>
#include <QPointF>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <new>
#include <tuple>
#include <utility>
#include <vector>

namespace od = simdjson::ondemand;

namespace {

// Unit vectors and orthogonality are checked here, where the fault can be located, to the
// tolerance the builder applies to frames taken as given.
constexpr double UnitTolerance = ZYLTPProgramBuilder::FrameTolerance;

struct Failure {
    QString message;
};
struct Cancelled {};

QString Tr(const char *text) { return QCoreApplication::translate("ZYLTPProgramFile", text); }

QString ErrorText(simdjson::error_code error)
{
    switch (error) {
    case simdjson::INCORRECT_TYPE:
        return Tr("wrong type");
    case simdjson::NUMBER_ERROR:
        return Tr("not a valid number");
    case simdjson::NUMBER_OUT_OF_RANGE:
        return Tr("number out of range");
    case simdjson::NO_SUCH_FIELD:
        return Tr("missing");
    case simdjson::TAPE_ERROR:
    case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
    case simdjson::UNCLOSED_STRING:
    case simdjson::EMPTY:
        return Tr("truncated or malformed JSON (%1)").arg(QString::fromUtf8(simdjson::error_message(error)));
    default:
        return Tr("malformed JSON (%1)").arg(QString::fromUtf8(simdjson::error_message(error)));
    }
}

// Returns the index of the member's name in `keys`, or `count` for another name. The name is
// compared as it stands in the file: unescaping it would copy every name of the file.
int KeyIndex(const od::field &field, const char *const *keys, int count)
{
    const od::raw_json_string key = field.key();
    for (int k = 0; k < count; ++k)
        if (key.unsafe_is_equal(std::string_view(keys[k])))
            return k;
    return count;
}

// Reads one program. Every read pushes its place onto a path so that a fault is reported
// where it is ("procedures[0].courses[12].points[40].tool_axis: not a unit vector"); the
// path costs a push and a pop per value, the text is only made on failure.
class Reader {
public:
    Reader(const char *begin, size_t size, const ZYLTPProgramFile::Progress &progress)
        : m_begin(begin), m_size(size), m_progress(progress)
    {
    }

    ZYLGeoRef<ZYLTPProgram> Read(od::document &document)
    {
        m_document = &document;
        od::object root;
        Check(document.get_object().get(root), "expected an object");
        // The members are read in the order they come, which lets the parser end on the
        // closing brace, so that anything after it is seen. References go backwards only
        // (boundaries to the surface, procedures to the resources), as written.
        static const char *const keys[] = {"format", "version", "surface", "boundaries", "heads", "tools", "procedures"};
        constexpr int numKeys = int(std::size(keys));
        bool seen[numKeys] = {};
        for (auto member : root) {  // NOLINT(performance-for-range-copy)
            od::field field;
            Check(std::move(member).get(field), "expected a member");
            if (field.key().unsafe_is_equal("process_rules")) {
                ReadProcessRules(field.value());
                continue;
            }
            const int k = KeyIndex(field, keys, numKeys);
            if (k == numKeys)
                continue;
            if (k > 1 && !(seen[0] && seen[1])) {
                Scope s(*this, keys[seen[0] ? 1 : 0]);
                Fail(Tr("missing before \"%1\"").arg(QLatin1String(keys[k])));
            }
            seen[k] = true;
            Scope s(*this, keys[k]);
            od::value value = field.value();
            switch (k) {
            case 0:
                if (String(value) != QLatin1String(ZYLTPProgramFile::FormatName))
                    Fail(Tr("not a tool path program file"));
                break;
            case 1: {
                const qint64 version = Integer(value, 1, std::numeric_limits<int>::max());
                if (version > ZYLTPProgramFile::Version)
                    Fail(Tr("version %1 is newer than this program reads (%2)").arg(version).arg(ZYLTPProgramFile::Version));
                break;
            }
            case 2:
                ReadSurface(value);
                break;
            case 3:
                ReadBoundaries(value);
                break;
            case 4:
                ReadHeads(value);
                break;
            case 5:
                ReadTools(value);
                break;
            default:
                ForEachElement(value, [this](od::value v) { ReadProcedure(v); });
                break;
            }
        }
        for (int k = 0; k < numKeys; ++k)
            if (!seen[k]) {
                Scope s(*this, keys[k]);
                Fail(Tr("missing"));
            }
        // A bracket lost inside a value the reader skipped shows as a depth that does not
        // come back to zero.
        const char *rest = nullptr;
        if (document.current_location().get(rest) == simdjson::SUCCESS || document.current_depth() != 0)
            Fail(Tr("unexpected content after the program"));
        Report(1.0);
        return ZYLGeoRef<ZYLTPProgram>(m_builder.TakeProgram());
    }

    [[noreturn]] void Fail(const QString &what) const { throw Failure{PathText() + QStringLiteral(": ") + what}; }

    QString PathText() const
    {
        QString place;
        for (const Element &e : m_path) {
            if (e.key) {
                if (!place.isEmpty())
                    place += QLatin1Char('.');
                place += QLatin1String(e.key);
            } else {
                place += QStringLiteral("[%1]").arg(e.index);
            }
        }
        if (place.isEmpty())
            place = QStringLiteral("document");
        return place;
    }

private:
    struct Element {
        const char *key;
        qint64 index;
    };
    // Keeps one path element for the lifetime of a read.
    class Scope {
    public:
        Scope(Reader &r, const char *key) : m_r(r) { m_r.m_path.push_back({key, 0}); }
        Scope(Reader &r, qint64 index) : m_r(r) { m_r.m_path.push_back({nullptr, index}); }
        ~Scope() { m_r.m_path.pop_back(); }
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        Reader &m_r;
    };

    // `onWrongType` is translated only on failure: this runs for every value of the file.
    void Check(simdjson::error_code error, const char *onWrongType) const
    {
        if (error)
            Fail(error == simdjson::INCORRECT_TYPE ? Tr(onWrongType) : ErrorText(error));
    }

    // Runs `read` with the builder's and the geometry's refusals turned into located faults.
    template<class F>
    auto Guard(F read) -> decltype(read())
    {
        try {
            return read();
        } catch (const ZYLSysException &e) {
            Fail(e.GetMessage());
        }
    }

    // Reads the numbers `members` of a parameter set one by one, each checked with the
    // builder's `check` of the whole set as soon as it is read: the members read before passed
    // and the others still hold valid defaults, so a refusal is the new member's and is
    // reported at its key, with the message the model's setter gives.
    template<class Parameters, class Member, size_t N>
    void ParameterFields(od::object &object, Parameters &parameters, const std::pair<const char *, Member> (&members)[N],
                         void (*check)(const Parameters &))
    {
        for (const auto &[key, member] : members) {
            parameters.*member = NumberField(object, key);
            Scope s(*this, key);
            Guard([&] { check(parameters); });
        }
    }

    void Report(double fraction)
    {
        if (m_progress && !m_progress(fraction))
            throw Cancelled{};
    }
    void ReportPosition()
    {
        if (!m_progress || m_size == 0)
            return;
        const char *at = nullptr;
        if (m_document->current_location().get(at) == simdjson::SUCCESS && at >= m_begin)
            Report(std::min(0.99, double(at - m_begin) / double(m_size)));
    }

    // The value of member `key`; the caller holds the scope of the key.
    od::value Field(od::object &object, const char *key)
    {
        od::value value;
        const simdjson::error_code error = object.find_field_unordered(key).get(value);
        if (error == simdjson::NO_SUCH_FIELD) {
            Scope s(*this, key);
            Fail(Tr("missing"));
        }
        if (error) {
            Scope s(*this, key);
            Fail(ErrorText(error));
        }
        return value;
    }

    // Reads on to the end of an object whose members were looked up by name, so that a
    // broken member list or closing brace after the last member read is seen.
    void Close(od::object &object)
    {
        od::value rest;
        const simdjson::error_code error = object.find_field("\x01").get(rest);
        if (error != simdjson::NO_SUCH_FIELD)
            Fail(error ? ErrorText(error) : Tr("unexpected member"));
    }

    od::object Object(od::value value)
    {
        od::object object;
        Check(value.get_object().get(object), "expected an object");
        return object;
    }
    double Number(od::value value)
    {
        double number = 0.0;
        Check(value.get_double().get(number), "expected a number");
        if (!std::isfinite(number))
            Fail(Tr("not a finite number"));
        return number;
    }
    qint64 Integer(od::value value, qint64 minimum, qint64 maximum)
    {
        qint64 number = 0;
        int64_t raw = 0;
        const simdjson::error_code error = value.get_int64().get(raw);
        if (error == simdjson::INCORRECT_TYPE || error == simdjson::NUMBER_ERROR)
            Fail(Tr("expected an integer"));
        Check(error, "expected an integer");
        number = raw;
        if (number < minimum || number > maximum)
            Fail(maximum < minimum ? Tr("%1 refers to nothing: the list is empty").arg(number)
                                   : Tr("%1 is out of range [%2, %3]").arg(number).arg(minimum).arg(maximum));
        return number;
    }
    QString String(od::value value)
    {
        std::string_view text;
        Check(value.get_string().get(text), "expected a string");
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }

    // Calls `read` for each element of the array member, with the element's index on the path.
    template<class F>
    qint64 ForEach(od::value value, const char *key, F read)
    {
        Scope s(*this, key);
        return ForEachElement(value, read);
    }
    template<class F>
    qint64 ForEachElement(od::value value, F read)
    {
        od::array array;
        Check(value.get_array().get(array), "expected an array");
        qint64 index = 0;
        for (auto element : array) {
            Scope s(*this, index);
            od::value item;
            Check(element.get(item), "expected a value");
            read(item);
            ++index;
        }
        return index;
    }

    double NumberField(od::object &object, const char *key)
    {
        od::value value = Field(object, key);
        Scope s(*this, key);
        return Number(value);
    }
    qint64 IntegerField(od::object &object, const char *key, qint64 minimum, qint64 maximum)
    {
        od::value value = Field(object, key);
        Scope s(*this, key);
        return Integer(value, minimum, maximum);
    }
    QString StringField(od::object &object, const char *key)
    {
        od::value value = Field(object, key);
        Scope s(*this, key);
        return String(value);
    }
    QStringList StringListField(od::object &object, const char *key)
    {
        QStringList list;
        ForEach(Field(object, key), key, [&](od::value v) { list.append(String(v)); });
        return list;
    }
    // `count` numbers in an array (the caller holds the scope).
    void Numbers(od::value value, double *out, int count)
    {
        int n = 0;
        ForEachElement(value, [&](od::value v) {
            const double x = Number(v);
            if (n < count)
                out[n] = x;
            ++n;
        });
        if (n != count)
            Fail(Tr("expected %1 numbers, found %2").arg(count).arg(n));
    }
    std::vector<double> NumberListField(od::object &object, const char *key)
    {
        std::vector<double> list;
        ForEach(Field(object, key), key, [&](od::value v) { list.push_back(Number(v)); });
        return list;
    }
    // Points and vectors alike; a point beyond the bounds of a program is refused here, where
    // it can be located, rather than by the builder.
    ZYLMathPoint PointValue(od::value value)
    {
        double x[3];
        Numbers(value, x, 3);
        const ZYLMathPoint point(x[0], x[1], x[2]);
        Guard([&] { ZYLTPCheck::Point(point); });
        return point;
    }
    // Knots are parameters, bounded like coordinates; their order and multiplicities are the
    // surface's to check.
    std::vector<double> KnotsField(od::object &object, const char *key)
    {
        std::vector<double> knots;
        ForEach(Field(object, key), key, [&](od::value v) {
            knots.push_back(Number(v));
            Guard([&] { ZYLTPCheck::Coordinate(knots.back()); });
        });
        return knots;
    }
    ZYLMathPoint PointField(od::object &object, const char *key)
    {
        od::value value = Field(object, key);
        Scope s(*this, key);
        return PointValue(value);
    }
    // A frame is read bit for bit (the constructors would make it orthonormal again and move
    // its last bits); it must be orthonormal to the stream reader's tolerance.
    ZYLMathAxis FrameValue(od::value value)
    {
        double x[12];
        Numbers(value, x, 12);
        const ZYLMathPoint origin(x[0], x[1], x[2]);
        Guard([&] { ZYLTPCheck::Point(origin); });
        const ZYLMathVector first(x[3], x[4], x[5]), second(x[6], x[7], x[8]), third(x[9], x[10], x[11]);
        constexpr double tolerance = 1e-9;
        const auto unit = [](const ZYLMathVector &v) { return std::fabs(v.GetSquaredLength() - 1.0) <= tolerance; };
        if (!unit(first) || !unit(second) || !unit(third) || std::fabs(first.Dot(second)) > tolerance
            || (first.Cross(second) - third).GetSquaredLength() > tolerance)
            Fail(Tr("not an orthonormal frame"));
        QByteArray bytes;
        {
            QDataStream out(&bytes, QIODevice::WriteOnly);
            out << origin << first << second << third;
        }
        QDataStream in(bytes);
        ZYLMathAxis frame;
        in >> frame;
        return frame;
    }
    ZYLMathAxis FrameField(od::object &object, const char *key)
    {
        od::value value = Field(object, key);
        Scope s(*this, key);
        return FrameValue(value);
    }
    ZYLCompTowMask MaskField(od::object &object, const char *key, int tows)
    {
        const QString text = StringField(object, key);
        Scope s(*this, key);
        ZYLCompTowMask mask;
        try {
            mask = ZYLCompTowMask::FromString(text);
        } catch (const ZYLSysException &) {
            Fail(Tr("\"%1\" is not a list of tows").arg(text));
        }
        if (mask.GetLastTow() >= tows)
            Fail(Tr("tow %1 is beyond the course's %2 tows").arg(mask.GetLastTow() + 1).arg(tows));
        return mask;
    }
    QList<std::pair<ZYLMathPoint, double>> CollisionPointsField(od::object &object)
    {
        QList<std::pair<ZYLMathPoint, double>> points;
        ForEach(Field(object, "collision_points"), "collision_points", [&](od::value v) {
            double x[4];
            Numbers(v, x, 4);
            if (x[3] < 0.0)
                Fail(Tr("negative radius"));
            Guard([&] {
                ZYLTPCheck::Point({x[0], x[1], x[2]});
                ZYLTPCheck::Length(x[3]);
            });
            points.append({ZYLMathPoint(x[0], x[1], x[2]), x[3]});
        });
        return points;
    }

    void ReadSurface(od::value value)
    {
        bool isNull = false;
        if (value.is_null().get(isNull) == simdjson::SUCCESS && isNull)
            return;
        od::object object = Object(value);
        const QString kind = StringField(object, "kind");
        QString error;
        if (kind == QLatin1String("plane")) {
            const ZYLMathAxis frame = FrameField(object, "frame");
            double d[4];
            {
                od::value domain = Field(object, "domain");
                Scope k(*this, "domain");
                Numbers(domain, d, 4);
                Guard([&] {
                    for (double extent : d)
                        ZYLTPCheck::Coordinate(extent);
                });
            }
            m_surface = ZYLGeoPlane::Create(frame, {d[0], d[1], d[2], d[3]}, &error);
        } else if (kind == QLatin1String("bspline")) {
            const int degreeU = int(IntegerField(object, "degree_u", 1, 3));
            const int degreeV = int(IntegerField(object, "degree_v", 1, 3));
            const int countU = int(IntegerField(object, "count_u", 2, 100000));
            const int countV = int(IntegerField(object, "count_v", 2, 100000));
            std::vector<double> knotsU = KnotsField(object, "knots_u");
            std::vector<double> knotsV = KnotsField(object, "knots_v");
            std::vector<ZYLMathPoint> points;
            ForEach(Field(object, "control_points"), "control_points",
                    [&](od::value v) { points.push_back(PointValue(v)); });
            m_surface = ZYLGeoBSplineSurface::Create(degreeU, degreeV, countU, countV, std::move(points),
                                                     std::move(knotsU), std::move(knotsV), &error);
        } else {
            Scope k(*this, "kind");
            Fail(Tr("unknown surface kind \"%1\"").arg(kind));
        }
        Close(object);
        if (!m_surface)
            Fail(error);
        Guard([&] { m_builder.SetPlySurface(m_surface.get()); });
    }

    void ReadBoundaries(od::value value)
    {
        ForEachElement(value, [&](od::value v) {
            if (!m_surface)
                Fail(Tr("a ply boundary needs a ply surface"));
            od::object boundary = Object(v);
            ZYLGeoRef<ZYLGeoAssembledCurveOnSurface> assembled(new ZYLGeoAssembledCurveOnSurface(m_surface.get()));
            ForEach(Field(boundary, "curves"), "curves", [&](od::value c) {
                od::object curve = Object(c);
                std::vector<QPointF> uv;
                ForEach(Field(curve, "uv"), "uv", [&](od::value p) {
                    double x[2];
                    Numbers(p, x, 2);
                    uv.emplace_back(x[0], x[1]);
                });
                Close(curve);
                QString error;
                ZYLGeoRef<ZYLGeoCurveOnSurface> made = ZYLGeoCurveOnSurface::CreateFromPolyline(m_surface.get(), uv, &error);
                if (!made) {
                    Scope k(*this, "uv");
                    Fail(error);
                }
                assembled->AddCurve(made.get());
            });
            Close(boundary);
            Guard([&] { m_builder.AddPlyBoundary(assembled.get()); });
        });
    }

    void ReadHeads(od::value value)
    {
        ForEachElement(value, [&](od::value v) {
            od::object head = Object(v);
            const QString name = StringField(head, "name");
            // The tow count is optional: heads of older files have none.
            int tows = 0;
            od::value towsValue;
            const simdjson::error_code error = head.find_field_unordered("tows").get(towsValue);
            if (error != simdjson::NO_SUCH_FIELD) {
                Scope k(*this, "tows");
                Check(error, "expected an integer");
                tows = int(Integer(towsValue, 1, ZYLTPMachineHead::MaxNumTows));
            }
            ZYLTPMachineHead *made = tows > 0 ? Guard([&] { return m_builder.AddMachineHead(name, tows); })
                                              : m_builder.AddMachineHead(name);
            const auto points = CollisionPointsField(head);
            Close(head);
            Guard([&] { m_builder.SetCollisionPoints(made, points); });
        });
    }

    // Tools are rollers ("roller", also the kind of a tool without one, as files once had
    // only rollers) or plain tools ("plain": a name and collision points).
    void ReadTools(od::value value)
    {
        ForEachElement(value, [&](od::value v) {
            od::object tool = Object(v);
            QString kind = QStringLiteral("roller");
            od::value kindValue;
            const simdjson::error_code error = tool.find_field_unordered("kind").get(kindValue);
            if (error != simdjson::NO_SUCH_FIELD) {
                Scope k(*this, "kind");
                Check(error, "expected a string");
                kind = String(kindValue);
            }
            const bool roller = kind == QLatin1String("roller");
            if (!roller && kind != QLatin1String("plain")) {
                Scope k(*this, "kind");
                Fail(Tr("unknown tool kind \"%1\"").arg(kind));
            }
            const QString name = StringField(tool, "name");
            ZYLTPTool *made = nullptr;
            if (roller) {
                const double width = NumberField(tool, "width");
                const double diameter = NumberField(tool, "diameter");
                made = Guard([&] { return m_builder.AddRoller(name, width, diameter); });
            } else {
                made = m_builder.AddTool(name);
            }
            const auto points = CollisionPointsField(tool);
            Close(tool);
            Guard([&] { m_builder.SetCollisionPoints(made, points); });
        });
    }

    // Optional: a file without them keeps the default rules.
    void ReadProcessRules(od::value value)
    {
        Scope s(*this, "process_rules");
        od::object object = Object(value);
        static constexpr std::pair<const char *, double ZYLTPProcessRules::*> numbers[] = {
            {"tow_width", &ZYLTPProcessRules::towWidth},
            {"min_steering_radius", &ZYLTPProcessRules::minSteeringRadius},
            {"min_cut_length", &ZYLTPProcessRules::minCutLength},
            {"min_add_length", &ZYLTPProcessRules::minAddLength},
            {"min_course_length", &ZYLTPProcessRules::minCourseLength}};
        ZYLTPProcessRules rules;
        ParameterFields(object, rules, numbers, &ZYLTPProcessRules::Check);
        Close(object);
        m_builder.SetProcessRules(rules);
    }

    void ReadProcedure(od::value value)
    {
        od::object object = Object(value);
        const QString kind = StringField(object, "kind");
        const QString name = StringField(object, "name");
        const QString description = StringField(object, "description");
        if (kind == QLatin1String("roll_layup")) {
            ReadRollLayup(object, Guard([&] { return m_builder.AddRollLayupProcedure(name, description); }));
        } else if (kind == QLatin1String("inspection")) {
            const ZYLTPProgram *program = m_builder.GetProgram();
            const int scanner = int(IntegerField(object, "scanner", 0, program->GetNumTools() - 1));
            const double feedRate = NumberField(object, "scan_feed_rate");
            std::vector<ZYLMathPoint> path;
            ForEach(Field(object, "path"), "path", [&](od::value v) { path.push_back(PointValue(v)); });
            Guard([&] {
                m_builder.AddInspectionProcedure(name, description, program->GetTool(scanner), std::move(path), feedRate);
            });
        } else {
            Scope k(*this, "kind");
            Fail(Tr("unknown procedure kind \"%1\"").arg(kind));
        }
        Close(object);
        ReportPosition();
    }

    void ReadRollLayup(od::object &object, ZYLTPRollLayupProcedure *procedure)
    {
        {
            od::object p = Object(Field(object, "parameters"));
            Scope s(*this, "parameters");
            using P = ZYLTPProgramBuilder::ProcedureParameters;
            static constexpr std::pair<const char *, double P::*> numbers[] = {
                {"laying_feed_rate", &P::layingFeedRate},   {"adding_feed_rate", &P::addingFeedRate},
                {"cutting_feed_rate", &P::cuttingFeedRate}, {"rapid_feed_rate", &P::rapidFeedRate},
                {"rapid_approach", &P::rapidApproach},      {"rapid_retract", &P::rapidRetract},
                {"safety_clearance", &P::safetyClearance},  {"add_cut_distance", &P::addCutDistance}};
            P parameters;
            ParameterFields(p, parameters, numbers, &ZYLTPProgramBuilder::CheckProcedureParameters);
            parameters.homeFrame = FrameField(p, "home_frame");
            parameters.defaultStrategy = ZYLTPCourseLink::OffPartMotionStrategy(
                IntegerField(p, "default_strategy", ZYLTPCourseLink::Linear, ZYLTPCourseLink::Custom));
            Close(p);
            Guard([&] { m_builder.SetProcedureParameters(procedure, parameters); });
        }

        const ZYLTPProgram *program = m_builder.GetProgram();
        ForEach(Field(object, "configurations"), "configurations", [&](od::value v) {
            od::object c = Object(v);
            const int head = int(IntegerField(c, "head", -1, program->GetNumMachineHeads() - 1));
            const int tool = int(IntegerField(c, "tool", 0, program->GetNumTools() - 1));
            Close(c);
            Guard([&] {
                m_builder.AddMachineConfiguration(procedure, head < 0 ? nullptr : program->GetMachineHead(head),
                                                  program->GetTool(tool));
            });
        });

        ForEach(Field(object, "courses"), "courses", [&](od::value v) { ReadCourse(v, procedure); });

        QList<int> order;
        ForEach(Field(object, "laying_order"), "laying_order",
                [&](od::value v) { order.append(int(Integer(v, 0, procedure->GetNumCourses() - 1))); });
        {
            Scope s(*this, "laying_order");
            Guard([&] { m_builder.SetLayingOrder(procedure, order); });
        }

        ForEach(Field(object, "links"), "links", [&](od::value v) { ReadLink(v, procedure); });
    }

    ZYLTPOnPartTrajectory::Values ValuesOf(od::object &object)
    {
        ZYLTPOnPartTrajectory::Values values;
        values.forwardTilt = NumberField(object, "forward_tilt");
        values.sideTilt = NumberField(object, "side_tilt");
        values.feedRate = NumberField(object, "feed_rate");
        values.compactionForce = NumberField(object, "compaction_force");
        return values;
    }
    ZYLTPOnPartTrajectory::Values ValuesField(od::object &object, const char *key)
    {
        od::object values = Object(Field(object, key));
        Scope s(*this, key);
        const ZYLTPOnPartTrajectory::Values read = ValuesOf(values);
        Close(values);
        return read;
    }
    std::pair<double, double> OffPartField(od::object &object, const char *key)
    {
        od::object motion = Object(Field(object, key));
        Scope s(*this, key);
        const double angle = NumberField(motion, "angle");
        const double length = NumberField(motion, "length");
        Close(motion);
        return {angle, length};
    }

    void ReadCourse(od::value value, ZYLTPRollLayupProcedure *procedure)
    {
        od::object object = Object(value);
        ZYLTPProgramBuilder::CourseData data;
        const int configuration =
            int(IntegerField(object, "configuration", 0, procedure->GetNumMachineConfigurations() - 1));
        const int tows = int(IntegerField(object, "tows", 1, ZYLTPMachineHead::MaxNumTows));
        if (const ZYLTPMachineHead *head = procedure->GetMachineConfiguration(configuration)->GetHead();
            head && head->GetNumTows() > 0 && tows > head->GetNumTows()) {
            Scope s(*this, "tows");
            Fail(Tr("the course's %1 tows are more than its head's %2").arg(tows).arg(head->GetNumTows()));
        }
        data.numTows = tows;
        data.rollIn = NumberField(object, "roll_in");
        data.rollOut = NumberField(object, "roll_out");
        data.layingFeedRate = NumberField(object, "laying_feed_rate");
        data.addFeedRate = NumberField(object, "add_feed_rate");
        data.cutFeedRate = NumberField(object, "cut_feed_rate");
        std::tie(data.approachAngle, data.approachLength) = OffPartField(object, "approach");
        std::tie(data.retractAngle, data.retractLength) = OffPartField(object, "retract");
        data.rollInValues = ValuesField(object, "roll_in_values");
        data.rollOutValues = ValuesField(object, "roll_out_values");
        data.prefix = StringListField(object, "prefix");
        data.suffix = StringListField(object, "suffix");

        // Points are most of a file: their members are taken as they come, which also checks
        // each point object up to its closing brace.
        const qint64 numPoints = ForEach(Field(object, "points"), "points", [&](od::value v) {
            od::object point = Object(v);
            static const char *const keys[] = {"tip", "tool_axis", "direction"};
            ZYLMathPoint read[3];
            bool seen[3] = {false, false, false};
            for (auto member : point) {
                od::field field;
                Check(std::move(member).get(field), "expected a member");
                const int k = KeyIndex(field, keys, 3);
                if (k == 3)
                    continue;
                Scope s(*this, keys[k]);
                read[k] = PointValue(field.value());
                if (k > 0 && std::fabs(ZYLMathVector(read[k].X(), read[k].Y(), read[k].Z()).GetLength() - 1.0) > UnitTolerance)
                    Fail(Tr("not a unit vector"));
                seen[k] = true;
            }
            for (int k = 0; k < 3; ++k)
                if (!seen[k]) {
                    Scope s(*this, keys[k]);
                    Fail(Tr("missing"));
                }
            const ZYLMathVector axis(read[1].X(), read[1].Y(), read[1].Z());
            const ZYLMathVector direction(read[2].X(), read[2].Y(), read[2].Z());
            if (std::fabs(axis.Dot(direction)) > UnitTolerance) {
                Scope s(*this, "direction");
                Fail(Tr("not perpendicular to the tool axis"));
            }
            data.tips.push_back(read[0]);
            data.normals.push_back(axis);
            data.directions.push_back(direction);
        });

        qint64 covered = 0;
        ForEach(Field(object, "runs"), "runs", [&](od::value v) {
            od::object r = Object(v);
            ZYLTPProgramBuilder::TowRun run;
            run.numPoints = int(IntegerField(r, "points", 1, std::max<qint64>(1, numPoints - covered)));
            covered += run.numPoints;
            run.towMask = MaskField(r, "tow_mask", tows);
            run.forcedMask = MaskField(r, "forced_mask", tows);
            const std::vector<double> rates = NumberListField(r, "forced_rates");
            if (rates.size() > 64) {
                Scope s(*this, "forced_rates");
                Fail(Tr("more than 64 rates"));
            }
            for (size_t i = 0; i < rates.size(); ++i)
                if (!(rates[i] >= 0.0 && rates[i] <= 1.0)) {
                    Scope s(*this, "forced_rates");
                    Scope k(*this, qint64(i));
                    Fail(Tr("not a fraction in [0, 1]"));
                }
            run.forcedRates = QList<double>(rates.begin(), rates.end());
            run.values = ValuesOf(r);
            Close(r);
            data.runs.push_back(std::move(run));
        });
        if (covered != numPoints) {
            Scope s(*this, "runs");
            Fail(Tr("the runs cover %1 points, the course has %2").arg(covered).arg(numPoints));
        }

        std::vector<std::pair<double, double>> ranges;
        ForEach(Field(object, "break_ranges"), "break_ranges", [&](od::value v) {
            double x[2];
            Numbers(v, x, 2);
            ranges.emplace_back(x[0], x[1]);
        });
        Close(object);

        // The frames were checked above: they are stored as read, so that save, load, save
        // gives the same bytes.
        data.frameMode = ZYLTPProgramBuilder::FrameMode::AsGiven;
        ZYLTPTowCourse *course = Guard([&] {
            return m_builder.AddTowCourse(procedure, procedure->GetMachineConfiguration(configuration), std::move(data));
        });
        {
            Scope s(*this, "break_ranges");
            for (size_t i = 0; i < ranges.size(); ++i) {
                Scope k(*this, qint64(i));
                Guard([&] { m_builder.AddBreakRange(course, ranges[i].first, ranges[i].second); });
            }
        }
        ReportPosition();
    }

    void ReadLink(od::value value, ZYLTPRollLayupProcedure *procedure)
    {
        od::object object = Object(value);
        const QString strategy = StringField(object, "strategy");
        const int last = procedure->GetNumCourses() - 1;
        const int from = int(IntegerField(object, "from", -1, last));
        const int to = int(IntegerField(object, "to", -1, last));
        const auto detail = ZYLTPCourseLink::OffPartMotionDetail(
            IntegerField(object, "detail", ZYLTPCourseLink::Coarse, ZYLTPCourseLink::Fine));
        const ZYLTPCourse *fromCourse = from < 0 ? nullptr : procedure->GetCourseByIndex(from);
        const ZYLTPCourse *toCourse = to < 0 ? nullptr : procedure->GetCourseByIndex(to);
        const bool procedureLink = strategy == QLatin1String("procedure");
        if (procedureLink ? (from < 0) == (to < 0) : (from < 0 || to < 0)) {
            Scope s(*this, from < 0 ? "from" : "to");
            Fail(procedureLink ? Tr("a procedure link joins exactly one course") : Tr("a course link needs both courses"));
        }

        ZYLTPProgramBuilder::LinkParameters parameters;
        parameters.detail = detail;
        if (strategy == QLatin1String("linear") && !procedureLink) {
            using L = ZYLTPProgramBuilder::LinkParameters;
            static constexpr std::pair<const char *, std::optional<double> L::*> distances[] = {
                {"rapid_approach", &L::rapidApproach}, {"rapid_retract", &L::rapidRetract}};
            ParameterFields(object, parameters, distances, &ZYLTPProgramBuilder::CheckLinkParameters);
        }
        if (procedureLink || strategy == QLatin1String("linear") || strategy == QLatin1String("safety_plane")) {
            const auto kind = strategy == QLatin1String("safety_plane") ? ZYLTPCourseLink::SafetyPlane : ZYLTPCourseLink::Linear;
            Guard([&] { m_builder.AddLink(procedure, fromCourse, toCourse, kind, parameters); });
        } else if (strategy == QLatin1String("custom")) {
            std::vector<ZYLMathAxis> frames;
            ForEach(Field(object, "frames"), "frames", [&](od::value v) { frames.push_back(FrameValue(v)); });
            Guard([&] { m_builder.AddCustomLink(procedure, fromCourse, toCourse, std::move(frames), parameters); });
        } else {
            Scope s(*this, "strategy");
            Fail(Tr("unknown link strategy \"%1\"").arg(strategy));
        }
        Close(object);
    }

    const char *m_begin;
    size_t m_size;
    const ZYLTPProgramFile::Progress &m_progress;
    od::document *m_document = nullptr;
    std::vector<Element> m_path;
    ZYLTPProgramBuilder m_builder;
    ZYLGeoRef<ZYLGeoSurface> m_surface;
};

// On-Demand checks the nesting only as far as it reads, and a search for a member that wraps
// around to the start of its object takes the part it passed for well formed (a "]" closing
// a "{" made it run off the document). So no bracket outside strings may close another kind
// than the last one open; the pass costs a fraction of the parse.
bool BracketsMatch(const char *text, size_t size)
{
    // Most bytes are digits: one table look-up passes them by.
    static constexpr std::array<bool, 256> marks = [] {
        std::array<bool, 256> table{};
        for (unsigned char c : {'"', '{', '}', '[', ']'})
            table[c] = true;
        return table;
    }();
    std::vector<char> open;
    const char *const end = text + size;
    for (const char *p = text; p < end; ++p) {
        if (!marks[static_cast<unsigned char>(*p)])
            continue;
        if (*p == '"') {
            for (++p; p < end && *p != '"'; ++p)
                p += *p == '\\';
        } else if (*p == '{' || *p == '[') {
            open.push_back(*p);
        } else if (open.empty()) {
            return true; // content after the document, which the reader reports
        } else if (open.back() != (*p == '}' ? '{' : '[')) {
            return false;
        } else {
            open.pop_back();
        }
    }
    return true; // what is left open, the parser finds truncated
}

ZYLTPProgramFile::LoadResult ReadPadded(simdjson::padded_string_view json, const ZYLTPProgramFile::Progress &progress)
{
    ZYLTPProgramFile::LoadResult result;
    if (!BracketsMatch(json.data(), json.size())) {
        result.error = QStringLiteral("document: ") + Tr("brackets that do not match");
        return result;
    }
    try {
        od::parser parser;
        od::document document;
        const simdjson::error_code error = parser.iterate(json).get(document);
        if (error) {
            result.error = QStringLiteral("document: ") + ErrorText(error);
            return result;
        }
        Reader reader(json.data(), json.size(), progress);
        result.program = reader.Read(document);
    } catch (const Failure &failure) {
        result.error = failure.message;
    } catch (const Cancelled &) {
        result.cancelled = true;
        result.error = Tr("Loading was cancelled");
    } catch (const simdjson::simdjson_error &e) {
        result.error = QStringLiteral("document: ") + ErrorText(e.error());
    } catch (const std::bad_alloc &) {
        result.error = Tr("Not enough memory to load the program");
    } catch (const ZYLSysException &e) {
        result.error = QStringLiteral("document: ") + e.GetMessage();
    }
    return result;
}

#ifdef Q_OS_UNIX
// A file mapped read-only with the parser's padding readable behind it. Mapping instead of
// reading saves copying a file of hundreds of megabytes into fresh memory, whose page
// faults alone took a third of the load time. Zero pages are reserved for file and padding
// first and the file is mapped over their start, so the padding is there whatever the size
// of the file. The mapping is private and lives only for the load; a file replaced while it
// loads (saving writes a new file and renames it) leaves the mapped one intact.
class MappedFile {
public:
    explicit MappedFile(const QByteArray &name)
    {
        const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
        if (fd < 0)
            return;
        struct stat info = {};
        if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0) {
            const size_t size = size_t(info.st_size);
            const size_t page = size_t(::sysconf(_SC_PAGESIZE));
            const size_t capacity = (size + simdjson::SIMDJSON_PADDING + page - 1) / page * page;
            void *base = ::mmap(nullptr, capacity, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            if (base != MAP_FAILED) {
                if (::mmap(base, size, PROT_READ, MAP_PRIVATE | MAP_FIXED | MAP_POPULATE, fd, 0) == base) {
                    m_base = static_cast<char *>(base);
                    m_size = size;
                    m_capacity = capacity;
                } else {
                    ::munmap(base, capacity);
                }
            }
        }
        ::close(fd);
    }
    ~MappedFile()
    {
        if (m_base)
            ::munmap(m_base, m_capacity);
    }
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    bool IsMapped() const { return m_base != nullptr; }
    simdjson::padded_string_view View() const { return simdjson::padded_string_view(m_base, m_size, m_capacity); }

private:
    char *m_base = nullptr;
    size_t m_size = 0;
    size_t m_capacity = 0;
};
#endif

} // namespace

ZYLTPProgramFile::LoadResult ZYLTPProgramFile::Load(const QString &fileName, const Progress &progress)
{
    const QByteArray name = QFile::encodeName(fileName);
#ifdef Q_OS_UNIX
    const MappedFile mapped(name);
    if (mapped.IsMapped())
        return ReadPadded(mapped.View(), progress);
#endif
    // Files that cannot be mapped (empty ones, special files) are read into memory.
    simdjson::padded_string json;
    if (simdjson::padded_string::load(std::string_view(name.constData(), size_t(name.size()))).get(json)) {
        LoadResult result;
        result.error = tr("Cannot read %1").arg(fileName);
        return result;
    }
    return ReadPadded(json, progress);
}

ZYLTPProgramFile::LoadResult ZYLTPProgramFile::Parse(const QByteArray &bytes, const Progress &progress)
{
    const simdjson::padded_string json(bytes.constData(), size_t(bytes.size()));
    return ReadPadded(json, progress);
}
