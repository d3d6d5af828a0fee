// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDetailedTableModel.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPSafetyPlaneCourseLink.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLCompTowMask.h"
#include "ZYLSysValue.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <vector>

namespace {

using Model = ZYLTPDetailedTableModel;
using Magnitude = ZYLSysValue::Magnitude;

// Texts are marked with the panel's context, where the module's translation finds them.
QString Tr(const char *text)
{
    return Model::Translate(text);
}

// A cell as the model knows it, before it becomes text: cheap to make for every row when
// filtering, sorting or writing, and turned into text only when shown.
struct Cell {
    enum Kind : quint8 { Empty, Integer, Quantity, Seconds, Mask, String };
    Kind kind = Empty;
    Magnitude magnitude = ZYLSysValue::None;
    double number = 0.0;
    qint64 integer = 0;
    quint64 mask = 0;
    QString text;

    static Cell MakeInteger(qint64 n) { Cell c; c.kind = Integer; c.integer = n; return c; }
    static Cell MakeQuantity(Magnitude m, double v) { Cell c; c.kind = Quantity; c.magnitude = m; c.number = v; return c; }
    static Cell MakeSeconds(double v) { Cell c; c.kind = Seconds; c.number = v; return c; }
    static Cell MakeMask(const ZYLCompTowMask &m) { Cell c; c.kind = Mask; c.mask = m.GetRawValue(); return c; }
    static Cell MakeString(const QString &t) { Cell c; c.kind = String; c.text = t; return c; }

    QString Text() const
    {
        switch (kind) {
        case Empty: return {};
        case Integer: return QString::number(integer);
        case Quantity: return ZYLSysValue(magnitude, number).ToString();
        case Seconds: return QStringLiteral("%1").arg(number, 0, 'f', 6) + QLatin1Char('s');
        case Mask: return ZYLCompTowMask(mask).GetString();
        case String: return text;
        }
        return {};
    }

    // The number under the number role: a value in its display unit as rounded for display
    // (what its text reads back as), a time in seconds, a printed time as printed.
    bool HasNumber() const { return kind == Quantity || kind == Seconds; }
    double Number() const
    {
        if (kind == Seconds)
            return QString::number(number, 'f', 6).toDouble();
        if (magnitude == ZYLSysValue::Time)
            return number;
        const ZYLSysValue::Unit unit = ZYLSysValue::GetMagnitudeCurrentUnit(magnitude);
        const double scale = std::pow(10.0, ZYLSysValue::GetUnitDecimals(unit));
        const double shown = ZYLSysValue::ConvertFromSystemUnit(number, unit);
        return std::abs(shown) * scale < 1e15 ? std::round(shown * scale) / scale : shown;
    }
};

// The rows of one table and their cells, by row in program order.
class Source {
public:
    virtual ~Source() = default;
    virtual int Rows() const = 0;
    virtual Cell GetCell(int row, int column) const = 0;
    virtual QVariant VerticalHeader(int row, int role) const = 0;
};

QList<const ZYLTPRollLayupProcedure *> Procedures(const ZYLTPProgram *program)
{
    QList<const ZYLTPRollLayupProcedure *> procedures;
    for (int i = 0; program && i < program->GetNumProcedures(); ++i) {
        if (const auto *p = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(i)))
            procedures.append(p);
    }
    return procedures;
}

// --- Operation ---

class OperationSource final : public Source {
public:
    explicit OperationSource(const ZYLTPProgram *program)
    {
        QList<Model::Column> sorted = Model::GetColumns(Model::Operation);
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const Model::Column &a, const Model::Column &b) { return a.name < b.name; });
        for (const ZYLTPRollLayupProcedure *p : Procedures(program)) {
            for (const Model::Column &column : sorted)
                m_rows.push_back({column.label, Tr(column.name.toUtf8().constData()), PropertyCell(*p, column.label)});
            const QList<double> lengths = p->GetTowLengths();
            for (int tow = 0; tow < lengths.size(); ++tow) {
                const double length = lengths.at(tow);
                m_rows.push_back({Model::GetTowLengthLabel(tow + 1), Model::GetTowLengthText(tow + 1),
                                  std::trunc(length) < 1.0 ? Cell() : Cell::MakeQuantity(ZYLSysValue::Length, length)});
            }
        }
    }
    int Rows() const override { return int(m_rows.size()); }
    Cell GetCell(int row, int) const override { return m_rows[size_t(row)].cell; }
    QVariant VerticalHeader(int row, int role) const override
    {
        if (role == Qt::DisplayRole)
            return m_rows[size_t(row)].text;
        if (role == Model::LabelRole)
            return m_rows[size_t(row)].label;
        return {};
    }

private:
    static Cell PropertyCell(const ZYLTPRollLayupProcedure &p, const QString &label)
    {
        const auto time = [](double seconds) { return Cell::MakeQuantity(ZYLSysValue::Time, seconds); };
        const auto length = [](double mm) { return Cell::MakeQuantity(ZYLSysValue::Length, mm); };
        if (label == QLatin1String("Name"))
            return Cell::MakeString(p.GetName());
        if (label == QLatin1String("Comment"))
            return Cell::MakeString(p.GetDescription());
        if (label == QLatin1String("Total machine time"))
            return time(static_cast<const ZYLTPProcedure &>(p).GetTotalTimeEstimate());
        if (label == QLatin1String("Laying time"))
            return time(p.GetLayingTimeEstimate());
        if (label == QLatin1String("Linking time"))
            return time(p.GetLinkingTimeEstimate());
        if (label == QLatin1String("Approach time"))
            return time(p.GetApproachTimeEstimate());
        if (label == QLatin1String("Retract time"))
            return time(p.GetRetractTimeEstimate());
        if (label == QLatin1String("Overall course length"))
            return length(p.GetOverallCourseLength());
        if (label == QLatin1String("Total tow length"))
            return length(p.GetTotalMaterialLength());
        if (label == QLatin1String("Total course number"))
            return Cell::MakeInteger(p.GetNumCourses());
        QStringList rollers;
        for (const ZYLTPResource *tool : p.GetTools())
            rollers.append(tool->GetName());
        return Cell::MakeString(rollers.join(QLatin1String(", ")));
    }

    struct Row {
        QString label;
        QString text;
        Cell cell;
    };
    std::vector<Row> m_rows;
};

// --- Courses ---

class CourseSource final : public Source {
public:
    // Columns in the order of the course table's list, then the tow lengths.
    enum Column { Roller, ApproachDistance, ApproachAngle, RollIn, RollOut, RetractDistance, RetractAngle,
                  FeedRate, AddFeedRate, CutFeedRate, Instructions, Length, LayupTime, UsedTows, TotalTowLength,
                  FirstTowLength };

    explicit CourseSource(const ZYLTPProgram *program)
    {
        for (const ZYLTPRollLayupProcedure *p : Procedures(program)) {
            for (int position = 0; position < p->GetNumCourses(); ++position) {
                if (const auto *course = qobject_cast<const ZYLTPTowCourse *>(p->GetCourseByPosition(position)))
                    m_rows.push_back({course, position, {}});
            }
        }
    }
    int Rows() const override { return int(m_rows.size()); }
    QVariant VerticalHeader(int row, int role) const override
    {
        // Each row names its own course, so that the names stay right when courses of other
        // kinds are left out.
        if (role != Qt::DisplayRole)
            return {};
        return Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Course ")) + QString::number(m_rows[size_t(row)].position + 1);
    }
    Cell GetCell(int row, int column) const override
    {
        // A course's values are computed over its trajectories; a row is computed once.
        std::vector<Cell> &cells = m_rows[size_t(row)].cells;
        if (cells.empty()) {
            const QList<double> towLengths = m_rows[size_t(row)].course->GetTowLengths();
            for (int c = 0; c < FirstTowLength + Model::NumTowLengthColumns; ++c)
                cells.push_back(MakeCell(*m_rows[size_t(row)].course, c, towLengths));
        }
        return cells[size_t(column)];
    }

private:
    static Cell MakeCell(const ZYLTPTowCourse &c, int column, const QList<double> &towLengths)
    {
        const auto length = [](double mm) { return Cell::MakeQuantity(ZYLSysValue::Length, mm); };
        const auto angle = [](double rad) { return Cell::MakeQuantity(ZYLSysValue::Angle, rad); };
        const auto feed = [](double rate) { return Cell::MakeQuantity(ZYLSysValue::FeedRate, rate); };
        switch (column) {
        case Roller: {
            const ZYLTPTool *tool = c.GetMachineConfiguration().GetTool();
            return tool ? Cell::MakeString(tool->GetName()) : Cell();
        }
        case ApproachDistance: return length(c.GetApproachTrajectory()->GetLength());
        case ApproachAngle: return angle(c.GetApproachTrajectory()->GetAngle());
        case RollIn: return length(c.GetRollIn());
        case RollOut: return length(c.GetRollOut());
        case RetractDistance: return length(c.GetRetractTrajectory()->GetLength());
        case RetractAngle: return angle(c.GetRetractTrajectory()->GetAngle());
        case FeedRate: return feed(c.GetLayingFeedRate());
        case AddFeedRate: return feed(c.GetAddFeedRate());
        case CutFeedRate: return feed(c.GetCutFeedRate());
        case Instructions: return Cell::MakeString(InstructionsText(c));
        case Length: return length(c.GetLength());
        case LayupTime: return Cell::MakeSeconds(c.GetOnPartTimeEstimate());
        case UsedTows: return Cell::MakeMask(c.GetUsedMask());
        case TotalTowLength: return length(c.GetMaterialUsage());
        default: {
            const int tow = column - FirstTowLength;
            return tow >= 0 && tow < towLengths.size() ? length(towLengths.at(tow)) : Cell();
        }
        }
    }

    static QString InstructionsText(const ZYLTPCourse &c)
    {
        QString text;
        if (!c.GetPrefixInstructions().isEmpty()) {
            text = QStringLiteral("pre: ");
            for (const QString &line : c.GetPrefixInstructions())
                text += line + QLatin1Char(';');
        }
        if (!c.GetSuffixInstructions().isEmpty()) {
            if (!text.isEmpty())
                text += QLatin1String("  ");
            text += QLatin1String("post: ");
            for (const QString &line : c.GetSuffixInstructions())
                text += line + QLatin1Char(';');
        }
        return text;
    }

    struct Row {
        const ZYLTPTowCourse *course;
        int position;
        std::vector<Cell> cells;
    };
    mutable std::vector<Row> m_rows;
};

// --- Laying points ---

class LayingPointsSource final : public Source {
public:
    enum Column { CourseNumber, PointNumber, FeedRate, EnabledTows, ForcedTows, ForwardTilt, SideTilt };

    explicit LayingPointsSource(const ZYLTPProgram *program)
    {
        for (const ZYLTPRollLayupProcedure *p : Procedures(program)) {
            for (int position = 0; position < p->GetNumCourses(); ++position) {
                const ZYLTPCourse *course = p->GetCourseByPosition(position);
                m_courses.push_back({course, position, m_rows, m_rows + course->GetNumPoints()});
                m_rows = m_courses.back().endRow;
            }
        }
    }
    int Rows() const override { return m_rows; }
    QVariant VerticalHeader(int row, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(row + 1) : QVariant();
    }
    Cell GetCell(int row, int column) const override
    {
        const Entry &entry = Locate(row);
        const int point = row - entry.firstRow;
        if (column == CourseNumber)
            return Cell::MakeInteger(entry.position);
        if (column == PointNumber)
            return Cell::MakeInteger(point);
        const Trajectory &t = TrajectoryOf(entry, point);
        if (!t.onPart)
            return {};
        switch (column) {
        case FeedRate: return Cell::MakeQuantity(ZYLSysValue::FeedRate, t.onPart->GetFeedRate());
        case EnabledTows: return t.tow ? Cell::MakeMask(t.tow->GetTowMask()) : Cell();
        case ForcedTows: return t.tow ? Cell::MakeMask(t.tow->GetForcedMask()) : Cell();
        case ForwardTilt: return Cell::MakeQuantity(ZYLSysValue::Angle, t.onPart->GetForwardTilt());
        case SideTilt: return Cell::MakeQuantity(ZYLSysValue::Angle, t.onPart->GetSideTilt());
        default: return {};
        }
    }

private:
    struct Entry {
        const ZYLTPCourse *course;
        int position;
        int firstRow;
        int endRow;
    };
    // The trajectory of the point asked for last: rows are mostly read in order, and a
    // trajectory covers many of them.
    struct Trajectory {
        const Entry *entry = nullptr;
        int first = 0;
        int end = 0;
        const ZYLTPOnPartTrajectory *onPart = nullptr;
        const ZYLTPTowTrajectory *tow = nullptr;
    };

    const Entry &Locate(int row) const
    {
        if (m_last && row >= m_last->firstRow && row < m_last->endRow)
            return *m_last;
        const auto it = std::upper_bound(m_courses.begin(), m_courses.end(), row,
                                         [](int r, const Entry &e) { return r < e.firstRow; });
        m_last = &*(it - 1);
        return *m_last;
    }
    const Trajectory &TrajectoryOf(const Entry &entry, int point) const
    {
        if (m_trajectory.entry == &entry && point >= m_trajectory.first && point < m_trajectory.end)
            return m_trajectory;
        m_trajectory = {};
        m_trajectory.entry = &entry;
        m_trajectory.onPart = entry.course->GetTrajectoryOfPoint(point);
        if (m_trajectory.onPart) {
            m_trajectory.first = m_trajectory.onPart->GetFirstPointIndex();
            m_trajectory.end = m_trajectory.first + m_trajectory.onPart->GetNumPoints();
            m_trajectory.tow = qobject_cast<const ZYLTPTowTrajectory *>(m_trajectory.onPart);
        }
        return m_trajectory;
    }

    std::vector<Entry> m_courses;
    int m_rows = 0;
    mutable const Entry *m_last = nullptr;
    mutable Trajectory m_trajectory;
};

// --- Linking motion ---

class LinkingMotionSource final : public Source {
public:
    enum Column { MotionModel, FromCourse, ToCourse, Length, LinkingTime };

    explicit LinkingMotionSource(const ZYLTPProgram *program)
    {
        for (const ZYLTPRollLayupProcedure *p : Procedures(program)) {
            const int courses = p->GetNumCourses();
            for (int position = 0; position < courses; ++position)
                m_rows.push_back({p->GetCourseByPosition(position)->GetApproachLink(), p, position + 1});
            if (courses > 0)
                m_rows.push_back({p->GetCourseByPosition(courses - 1)->GetRetractLink(), p, courses + 1});
        }
    }
    int Rows() const override { return int(m_rows.size()); }
    QVariant VerticalHeader(int row, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        return Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "%1 %2")).arg(Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Link"))).arg(m_rows[size_t(row)].number);
    }
    Cell GetCell(int row, int column) const override
    {
        const Row &r = m_rows[size_t(row)];
        if (!r.link)
            return {};
        const auto position = [&r](const ZYLTPCourse *course) {
            return course ? Cell::MakeInteger(r.procedure->GetCoursePosition(course)) : Cell();
        };
        switch (column) {
        case MotionModel: return ModelCell(r.link);
        case FromCourse: return position(r.link->GetFromCourse());
        case ToCourse: return position(r.link->GetToCourse());
        case Length: return Cell::MakeQuantity(ZYLSysValue::Length, r.link->GetLength());
        case LinkingTime: return Cell::MakeQuantity(ZYLSysValue::Time, r.link->GetTimeEstimate());
        default: return {};
        }
    }

private:
    static Cell ModelCell(const ZYLTPCourseLink *link)
    {
        if (qobject_cast<const ZYLTPProcedureLink *>(link))
            return Cell::MakeString(Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "ProcedureLinkModel")));
        if (qobject_cast<const ZYLTPCustomCourseLink *>(link))
            return Cell::MakeString(Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "CustomModel")));
        if (qobject_cast<const ZYLTPSafetyPlaneCourseLink *>(link))
            return Cell::MakeString(Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "SafetyPlaneModel")));
        if (qobject_cast<const ZYLTPLinearCourseLink *>(link))
            return Cell::MakeString(Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "LinearModel")));
        return {};
    }

    struct Row {
        const ZYLTPCourseLink *link;
        const ZYLTPRollLayupProcedure *procedure;
        int number;
    };
    std::vector<Row> m_rows;
};

std::unique_ptr<Source> MakeSource(Model::Table table, const ZYLTPProgram *program)
{
    switch (table) {
    case Model::Operation: return std::make_unique<OperationSource>(program);
    case Model::Course: return std::make_unique<CourseSource>(program);
    case Model::LayingPoints: return std::make_unique<LayingPointsSource>(program);
    case Model::LinkingMotion: break;
    }
    return std::make_unique<LinkingMotionSource>(program);
}

bool IsNumeric(Model::ColumnType type)
{
    return type == Model::Integer || type == Model::PhysicalValue || type == Model::Time;
}

// Case-insensitive order of texts, for sorting text columns.
struct TextLess {
    bool operator()(const QString &a, const QString &b) const { return a.compare(b, Qt::CaseInsensitive) < 0; }
};

} // namespace

struct ZYLTPDetailedTableModel::Data {
    Table table;
    int columns = 0;
    std::unique_ptr<Source> source;
    // Row r of the model shows row order[r] of the source; empty for the program's order.
    std::vector<int> order;
    int sortColumn = -1;

    // The text and number of the last value of each column that was asked for. Neighbouring
    // rows mostly repeat a value (a trajectory covers many points), and formatting it, not
    // finding it, is what costs when a filter, a sort or a file reads a million rows.
    struct Memo {
        bool valid = false;
        Cell::Kind kind = Cell::Empty;
        ZYLSysValue::Unit unit = ZYLSysValue::System;
        double number = 0.0;
        quint64 mask = 0;
        QString text;
        QByteArray utf8;
        double shownNumber = 0.0;
    };
    mutable std::vector<Memo> memos;
    // Where the UTF-8 text of a column's integer or text cell is kept until the next one.
    struct Scratch {
        std::array<char, 24> digits;
        QByteArray text;
    };
    mutable std::vector<Scratch> scratches;
    Scratch &ScratchOf(int column) const
    {
        if (scratches.size() <= size_t(column))
            scratches.resize(size_t(column) + 1);
        return scratches[size_t(column)];
    }

    int SourceRow(int row) const { return order.empty() ? row : order[size_t(row)]; }
    // Returns the memo of a value cell (value, time, tow mask), made afresh when the cell
    // differs from the last one of its column. The unit is part of the key: the user may
    // change it while the table is open.
    const Memo &MemoOf(int column, const Cell &cell) const
    {
        if (memos.size() <= size_t(column))
            memos.resize(size_t(column) + 1);
        Memo &memo = memos[size_t(column)];
        const ZYLSysValue::Unit unit =
            cell.kind == Cell::Quantity ? ZYLSysValue::GetMagnitudeCurrentUnit(cell.magnitude) : ZYLSysValue::System;
        if (!memo.valid || memo.kind != cell.kind || memo.unit != unit || memo.number != cell.number
            || memo.mask != cell.mask) {
            memo = {true, cell.kind, unit, cell.number, cell.mask, cell.Text(), {},
                    cell.HasNumber() ? cell.Number() : 0.0};
            memo.utf8 = memo.text.toUtf8();
        }
        return memo;
    }
    static bool IsMemoized(const Cell &cell) { return cell.kind == Cell::Quantity || cell.kind == Cell::Seconds || cell.kind == Cell::Mask; }
    QString Text(int column, const Cell &cell) const { return IsMemoized(cell) ? MemoOf(column, cell).text : cell.Text(); }
    std::vector<double> SortKeys(int column, ColumnType type) const;
};

// One number per source row that orders the rows as the column should be ordered: the number
// of a numeric cell (empty cells lowest), or the rank of a text among the column's texts.
std::vector<double> ZYLTPDetailedTableModel::Data::SortKeys(int column, ColumnType type) const
{
    const int rows = source->Rows();
    std::vector<double> keys(static_cast<size_t>(rows));
    if (IsNumeric(type)) {
        for (int row = 0; row < rows; ++row) {
            const Cell cell = source->GetCell(row, column);
            keys[size_t(row)] = cell.kind == Cell::Integer ? double(cell.integer)
                                : cell.HasNumber()         ? MemoOf(column, cell).shownNumber
                                                           : -std::numeric_limits<double>::infinity();
        }
        return keys;
    }
    // Neighbouring rows mostly repeat a text: only a changed text is looked up.
    std::vector<QString> texts(static_cast<size_t>(rows));
    std::map<QString, double, TextLess> ranks;
    for (int row = 0; row < rows; ++row) {
        texts[size_t(row)] = Text(column, source->GetCell(row, column));
        if (row == 0 || texts[size_t(row)] != texts[size_t(row) - 1])
            ranks.emplace(texts[size_t(row)], 0.0);
    }
    double rank = 0.0;
    for (auto &entry : ranks)
        entry.second = rank++;
    for (int row = 0; row < rows; ++row) {
        keys[size_t(row)] = row > 0 && texts[size_t(row)] == texts[size_t(row) - 1] ? keys[size_t(row) - 1]
                                                                                  : ranks.at(texts[size_t(row)]);
    }
    return keys;
}

ZYLTPDetailedTableModel::ZYLTPDetailedTableModel(Table table, const ZYLTPProgram *program, QObject *parent)
    : QAbstractTableModel(parent)
    , d(std::make_unique<Data>())
{
    d->table = table;
    d->columns = table == Operation ? 1 : int(GetColumns(table).size()) + (table == Course ? NumTowLengthColumns : 0);
    d->source = MakeSource(table, program);
}

ZYLTPDetailedTableModel::~ZYLTPDetailedTableModel() = default;

QString ZYLTPDetailedTableModel::Translate(const char *text)
{
    return QCoreApplication::translate("ZYLTPDetailedInfoWidget", text);
}

const QList<ZYLTPDetailedTableModel::Column> &ZYLTPDetailedTableModel::GetColumns(Table table)
{
    const auto make = [](std::initializer_list<std::pair<const char *, ColumnType>> entries) {
        QList<Column> columns;
        for (const auto &[name, type] : entries)
            columns.append({QString::fromLatin1(name), type, QString::fromLatin1(name)});
        return columns;
    };
    static const QList<Column> operation = make({
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Name"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Comment"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Total machine time"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Laying time"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Linking time"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Approach time"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Retract time"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Overall course length"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Rollers"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Total tow length"), NotFilterable},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Total course number"), NotFilterable}});
    static const QList<Column> course = make({
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Roller"), Text},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Approach distance"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Approach angle"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Roll-in distance"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Roll-out distance"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Retract distance"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Retract angle"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Feed rate"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Add feed rate"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Cut feed rate"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Post-processor instructions"), Text},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Length"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Layup time estimate"), Time},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Used tows"), TowMask},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Total tow length"), PhysicalValue}});
    static const QList<Column> layingPoints = make({
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Course number"), Integer},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Point number"), Integer},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Feed rate"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Enabled tows"), TowMask},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Forced tows"), TowMask},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Front/Back tilt"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Side tilt"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Post-processor instructions"), Text},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Process parameters"), Text}});
    static const QList<Column> linkingMotion = make({
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Off-part motion model"), Text},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "From course"), Integer},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "To course"), Integer},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Length"), PhysicalValue},
        {QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Linking time"), Time}});
    switch (table) {
    case Operation: return operation;
    case Course: return course;
    case LayingPoints: return layingPoints;
    case LinkingMotion: break;
    }
    return linkingMotion;
}

QString ZYLTPDetailedTableModel::GetSettingsName(Table table)
{
    static const char *const names[] = {"OperationTable", "CourseTable", "LayingPointsTable", "LinkingMotionTable"};
    return QString::fromLatin1(names[std::clamp(int(table), 0, 3)]);
}

QString ZYLTPDetailedTableModel::GetTowLengthLabel(int tow)
{
    return QStringLiteral("%1 %2 %3").arg(QStringLiteral("Tow")).arg(tow).arg(QStringLiteral("length"));
}

QString ZYLTPDetailedTableModel::GetTowLengthText(int tow)
{
    return Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "%1 %2 %3")).arg(Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Tow"))).arg(tow).arg(Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "length")));
}

ZYLTPDetailedTableModel::Table ZYLTPDetailedTableModel::GetTable() const
{
    return d->table;
}

int ZYLTPDetailedTableModel::FindSection(const QString &label) const
{
    const Qt::Orientation orientation = d->table == Operation ? Qt::Vertical : Qt::Horizontal;
    const int count = orientation == Qt::Vertical ? rowCount() : columnCount();
    for (int section = 0; section < count; ++section) {
        if (headerData(section, orientation, LabelRole).toString() == label)
            return section;
    }
    return -1;
}

ZYLTPDetailedTableModel::ColumnType ZYLTPDetailedTableModel::GetColumnType(int column) const
{
    if (d->table == Operation || column < 0 || column >= columnCount())
        return NotFilterable;
    const QList<Column> &columns = GetColumns(d->table);
    return column < columns.size() ? columns.at(column).type : PhysicalValue;
}

int ZYLTPDetailedTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : d->source->Rows();
}

int ZYLTPDetailedTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : d->columns;
}

QVariant ZYLTPDetailedTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != NumberRole))
        return {};
    const int column = index.column();
    const Cell cell = d->source->GetCell(d->SourceRow(index.row()), column);
    if (role == NumberRole)
        return cell.HasNumber() ? QVariant(d->MemoOf(column, cell).shownNumber) : QVariant();
    if (cell.kind == Cell::Empty)
        return {};
    return cell.kind == Cell::Integer ? QVariant(cell.integer) : QVariant(d->Text(column, cell));
}

QVariant ZYLTPDetailedTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        if (section < 0 || section >= rowCount())
            return {};
        return d->source->VerticalHeader(d->SourceRow(section), role);
    }
    if (section < 0 || section >= columnCount())
        return {};
    if (d->table == Operation) {
        if (role == Qt::DisplayRole)
            return Tr(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "Value"));
        return role == LabelRole ? QVariant(QStringLiteral("Value")) : QVariant();
    }
    const QList<Column> &columns = GetColumns(d->table);
    const bool listed = section < columns.size();
    switch (role) {
    case Qt::DisplayRole:
        return listed ? Tr(columns.at(section).name.toUtf8().constData())
                      : GetTowLengthText(section - int(columns.size()) + 1);
    case ColumnIndexRole: return section;
    case ColumnTypeRole: return int(GetColumnType(section));
    case LabelRole:
        return listed ? columns.at(section).label : GetTowLengthLabel(section - int(columns.size()) + 1);
    default: return {};
    }
}

void ZYLTPDetailedTableModel::sort(int column, Qt::SortOrder order)
{
    const bool restore = column < 0 || column >= columnCount();
    if (restore && d->order.empty())
        return;
    std::vector<int> newOrder;
    if (!restore) {
        const std::vector<double> keys = d->SortKeys(column, GetColumnType(column));
        newOrder.resize(keys.size());
        for (size_t row = 0; row < newOrder.size(); ++row)
            newOrder[row] = int(row);
        const auto less = [&keys](int a, int b) { return keys[size_t(a)] < keys[size_t(b)]; };
        if (order == Qt::AscendingOrder)
            std::stable_sort(newOrder.begin(), newOrder.end(), less);
        else
            std::stable_sort(newOrder.begin(), newOrder.end(), [&less](int a, int b) { return less(b, a); });
    }
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    // Persistent indexes (selection, current cell) follow their rows.
    const QModelIndexList before = persistentIndexList();
    std::vector<int> sourceRows;
    sourceRows.reserve(size_t(before.size()));
    for (const QModelIndex &index : before)
        sourceRows.push_back(d->SourceRow(index.row()));
    d->order = std::move(newOrder);
    d->sortColumn = restore ? -1 : column;
    if (!before.isEmpty()) {
        std::vector<int> rowOf(static_cast<size_t>(rowCount()));
        for (int row = 0; row < rowCount(); ++row)
            rowOf[size_t(d->SourceRow(row))] = row;
        QModelIndexList after;
        after.reserve(before.size());
        for (qsizetype i = 0; i < before.size(); ++i)
            after.append(index(rowOf[size_t(sourceRows[size_t(i)])], before.at(i).column()));
        changePersistentIndexList(before, after);
    }
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int ZYLTPDetailedTableModel::GetSortColumn() const
{
    return d->sortColumn;
}

// The same numbers as data() gives, a cell without one (an invalid QVariant) being NaN.
bool ZYLTPDetailedTableModel::ReadNumbers(int column, int role, std::vector<double> &numbers) const
{
    if (column < 0 || column >= d->columns || (role != Qt::DisplayRole && role != NumberRole))
        return false;
    const int rows = rowCount();
    numbers.resize(size_t(rows));
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (int row = 0; row < rows; ++row) {
        const Cell cell = d->source->GetCell(d->SourceRow(row), column);
        double &number = numbers[size_t(row)];
        if (role == NumberRole)
            number = cell.HasNumber() ? d->MemoOf(column, cell).shownNumber : none;
        else if (cell.kind == Cell::Integer)
            number = double(cell.integer);
        else if (cell.kind == Cell::Empty)
            number = none;
        else
            return false;
    }
    return true;
}

// A tow mask's text reads back as its bits; an empty cell's text is the empty set.
bool ZYLTPDetailedTableModel::ReadBits(int column, int role, std::vector<quint64> &bits) const
{
    if (role != Qt::DisplayRole || GetColumnType(column) != TowMask)
        return false;
    const int rows = rowCount();
    bits.resize(size_t(rows));
    for (int row = 0; row < rows; ++row) {
        const Cell cell = d->source->GetCell(d->SourceRow(row), column);
        if (cell.kind != Cell::Mask && cell.kind != Cell::Empty)
            return false;
        bits[size_t(row)] = cell.mask;
    }
    return true;
}

QByteArrayView ZYLTPDetailedTableModel::GetCellUtf8(int row, int column) const
{
    const Cell cell = d->source->GetCell(d->SourceRow(row), column);
    switch (cell.kind) {
    case Cell::Empty:
        return {};
    case Cell::Integer: {
        std::array<char, 24> &digits = d->ScratchOf(column).digits;
        const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), cell.integer);
        return QByteArrayView(digits.data(), result.ptr - digits.data());
    }
    case Cell::String:
        return d->ScratchOf(column).text = cell.text.toUtf8();
    default:
        return d->MemoOf(column, cell).utf8;
    }
}
