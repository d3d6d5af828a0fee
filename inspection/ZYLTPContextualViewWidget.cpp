// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPContextualViewWidget.h"

#include "ui_ZYLTPContextualViewWidget.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditGraphics.h"
#include "ZYLTPRayPicker.h"

#include "ZYLSysValue.h"
#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPSafetyPlaneCourseLink.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisMouseEvent.h"
#include "ZYLVisVirtualObject.h"

#include <QStandardItemModel>

#include <utility>
#include <vector>

namespace {

enum ObjectType { CourseType = 0, LayingPointType = 1, CourseLinkType = 2 };

constexpr int HighlightPriority = 10;

// Label and value of each row of the property table.
using Properties = std::vector<std::pair<QString, QString>>;

QString Tr(const char *text) {
    return QCoreApplication::translate("ZYLTPContextualViewWidget", text);
}

QString Quantity(ZYLSysValue::Magnitude magnitude, double value) {
    return ZYLSysValue(magnitude, value).ToString();
}

int CourseNumber(const ZYLTPCourse *course) {
    return course->GetProcedure()->GetCourseIndex(course) + 1;
}

// "pre: A;B;  post: C;": the course's post-processor instructions in one line.
QString FormatPPInstructions(const ZYLTPTowCourse *course) {
    QString text;
    if (!course->GetPrefixInstructions().isEmpty()) {
        text += QStringLiteral("pre: ");
        for (const QString &instruction : course->GetPrefixInstructions())
            text += instruction + u';';
    }
    if (!course->GetSuffixInstructions().isEmpty()) {
        if (!text.isEmpty())
            text += QStringLiteral("  ");
        text += QStringLiteral("post: ");
        for (const QString &instruction : course->GetSuffixInstructions())
            text += instruction + u';';
    }
    return text;
}

// Rows of a course; without a course the labels of a course that is not a tow course.
Properties CourseProperties(const ZYLTPCourse *course) {
    const auto *tow = qobject_cast<const ZYLTPTowCourse *>(course);
    const auto value = [course](auto get) { return course ? get() : QString(); };
    Properties rows{
        {Tr("Course number"), value([&] { return QString::number(CourseNumber(course)); })},
        {Tr("Roller"), value([&] { return course->GetMachineConfiguration().GetTool()->GetName(); })},
        {Tr("Approach angle"),
         value([&] { return Quantity(ZYLSysValue::Angle, course->GetApproachTrajectory()->GetAngle()); })},
        {Tr("Roll-in distance"), value([&] { return Quantity(ZYLSysValue::Length, course->GetRollIn()); })},
        {Tr("Roll-out distance"), value([&] { return Quantity(ZYLSysValue::Length, course->GetRollOut()); })},
        {Tr("Retract distance"),
         value([&] { return Quantity(ZYLSysValue::Length, course->GetRetractTrajectory()->GetLength()); })},
        {Tr("Retract angle"),
         value([&] { return Quantity(ZYLSysValue::Angle, course->GetRetractTrajectory()->GetAngle()); })},
        {Tr("Laying feedrate"), value([&] { return Quantity(ZYLSysValue::FeedRate, course->GetLayingFeedRate()); })},
        {Tr("Add feedrate"), value([&] { return Quantity(ZYLSysValue::FeedRate, course->GetAddFeedRate()); })},
        {Tr("Cut feedrate"), value([&] { return Quantity(ZYLSysValue::FeedRate, course->GetCutFeedRate()); })},
    };
    if (tow)
        rows.emplace_back(Tr("PP instruction"), FormatPPInstructions(tow));
    rows.emplace_back(Tr("Length"), value([&] { return Quantity(ZYLSysValue::Length, course->GetLength()); }));
    rows.emplace_back(Tr("Layup time estimate"),
                      value([&] { return Quantity(ZYLSysValue::Time, course->GetOnPartTimeEstimate()); }));
    if (tow)
        rows.emplace_back(Tr("Used tows"), tow->GetUsedMask().GetString());
    return rows;
}

// Rows of a laying point; without a point the labels of a point on an on-part trajectory
// that is not a tow trajectory.
Properties LayingPointProperties(const ZYLTPOnPartPoint *point) {
    const ZYLTPTrajectory *trajectory = point ? point->GetTrajectory() : nullptr;
    const auto *onPart = qobject_cast<const ZYLTPOnPartTrajectory *>(trajectory);
    const auto *tow = qobject_cast<const ZYLTPTowTrajectory *>(trajectory);
    const ZYLTPCourse *course = trajectory ? trajectory->GetParent() : nullptr;
    Properties rows{
        {Tr("Course number"), course ? QString::number(CourseNumber(course)) : QString()},
        {Tr("Point number"), trajectory ? QString::number(trajectory->GetPointIndex(point) + 1) : QString()},
        {Tr("Feed rate"), onPart ? Quantity(ZYLSysValue::FeedRate, onPart->GetFeedRate()) : QString()},
    };
    if (tow) {
        rows.emplace_back(Tr("Enabled tows"), tow->GetTowMask().GetString());
        rows.emplace_back(Tr("Forced tows"), tow->GetForcedMask().GetString());
    }
    if (onPart || !point) {
        const auto value = [onPart](ZYLSysValue::Magnitude magnitude, double (ZYLTPOnPartTrajectory::*get)() const) {
            return onPart ? Quantity(magnitude, (onPart->*get)()) : QString();
        };
        rows.emplace_back(Tr("Compaction force"), value(ZYLSysValue::Force, &ZYLTPOnPartTrajectory::GetCompactionForce));
        rows.emplace_back(Tr("Front/back rotation"), value(ZYLSysValue::Angle, &ZYLTPOnPartTrajectory::GetForwardTilt));
        rows.emplace_back(Tr("Side/side rotation"), value(ZYLSysValue::Angle, &ZYLTPOnPartTrajectory::GetSideTilt));
    }
    if (const auto *towCourse = qobject_cast<const ZYLTPTowCourse *>(course))
        rows.emplace_back(Tr("PP instruction"), FormatPPInstructions(towCourse));
    rows.emplace_back(Tr("Process parameters"), QString());
    return rows;
}

QString LinkedCourse(const ZYLTPCourseLink *link, const ZYLTPCourse *course) {
    // The 0-based index, as the course is named in the procedure's own listings.
    return course ? Tr("course.%1").arg(link->GetProcedure()->GetCourseIndex(course)) : QString();
}

QString OffPartMotion(const ZYLTPCourseLink *link) {
    if (qobject_cast<const ZYLTPLinearCourseLink *>(link))
        return Tr("Linear");
    if (qobject_cast<const ZYLTPSafetyPlaneCourseLink *>(link))
        return Tr("Safety plane");
    if (qobject_cast<const ZYLTPCustomCourseLink *>(link))
        return Tr("Custom");
    return {};
}

Properties CourseLinkProperties(const ZYLTPCourseLink *link) {
    if (!link)
        return {{Tr("Off-part motion"), {}},
                {Tr("Course linked from"), {}},
                {Tr("Course linked to"), {}},
                {Tr("Length"), {}},
                {Tr("Link time estimate"), {}}};
    return {{Tr("Off-part motion"), OffPartMotion(link)},
            {Tr("Course linked from"), LinkedCourse(link, link->GetFromCourse())},
            {Tr("Course linked to"), LinkedCourse(link, link->GetToCourse())},
            {Tr("Length"), Quantity(ZYLSysValue::Length, link->GetLength())},
            {Tr("Link time estimate"), Quantity(ZYLSysValue::Time, link->GetTimeEstimate())}};
}

} // namespace

struct ZYLTPContextualViewWidget::Data {
    Ui::ZYLTPContextualViewWidget ui;
    ZYLTPVisualizationOptions options;
    QStandardItemModel *model = nullptr;
    // The pickable laying points and, in the same order, their tips for the picker.
    QList<const ZYLTPPoint *> layingPoints;
    ZYLTPRayPicker picker;
    std::unique_ptr<ZYLVisVirtualObject> highlight;

    static ZYLEditTPGraphicsMgr *Manager() { return ZYLEditTPGraphicsMgr::GetManager(); }
    static ZYLVisEnvironment *Environment() { return ZYLTPEditGraphics::GetEditEnvironment(); }
};

ZYLTPContextualViewWidget::ZYLTPContextualViewWidget(QWidget *parent)
    : QWidget(parent), d(std::make_unique<Data>()) {
    d->ui.setupUi(this);
    d->model = new QStandardItemModel(0, 2, this);
    d->model->setHorizontalHeaderLabels({tr("Property"), tr("Value")});
    d->ui.tableView->setModel(d->model);
    d->ui.tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    {
        // The display is applied once below, not for each item inserted.
        const QSignalBlocker blocker(d->ui.comboBox_ObjectType);
        d->ui.comboBox_ObjectType->addItems({tr("Course"), tr("Laying Point"), tr("Course Link")});
    }
    setupConnections();
    OnObjectTypeChanged(d->ui.comboBox_ObjectType->currentIndex());

    ZYLVisEnvironment *environment = Data::Environment();
    if (!environment)
        return;
    d->highlight = std::make_unique<ZYLVisVirtualObject>(environment);
    d->highlight->SetSelectability(false);
    environment->AddVirtualObject(d->highlight.get());
    ZYLTPEditGraphics::SelectAnyObject(*environment, true);
    connect(environment, &ZYLVisEnvironment::VisualizationSelectionChanged, this,
            [this] { OnVisualizationSelectionChanged(false); });
    connect(environment, &ZYLVisEnvironment::VisualizationPreselectionChanged, this,
            [this] { OnVisualizationSelectionChanged(true); });
    connect(environment, &ZYLVisEnvironment::MouseEvent, this, &ZYLTPContextualViewWidget::OnMouseEvent);
}

ZYLTPContextualViewWidget::~ZYLTPContextualViewWidget() = default;

void ZYLTPContextualViewWidget::setupConnections() {
    connect(d->ui.comboBox_ObjectType, &QComboBox::currentIndexChanged, this,
            &ZYLTPContextualViewWidget::OnObjectTypeChanged);
}

void ZYLTPContextualViewWidget::OnObjectTypeChanged(int index) {
    FillPropertyTable(nullptr);
    UpdateDisplayForType();
    if (d->highlight)
        d->highlight->SetRep(nullptr);
    d->layingPoints.clear();
    d->picker.SetPoints({});
    ZYLVisEnvironment *environment = Data::Environment();
    if (index == LayingPointType)
        CollectLayingPoints();
    if (environment)
        environment->SetMouseInteraction(index == LayingPointType ? ZYLVisEnvironment::DeliverMoves
                                                                  : ZYLVisEnvironment::NoMouseInteraction);
}

void ZYLTPContextualViewWidget::UpdateDisplayForType() {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    ZYLVisEnvironment *environment = Data::Environment();
    if (!environment)
        return;
    const int type = d->ui.comboBox_ObjectType->currentIndex();
    ZYLVisEnvironmentBatchContext batch(environment);
    ZYLTPVisualizationOptions options = manager->GetCurrentOptions();
    options.SetApproachRetractEnabled(type == CourseType);
    options.SetRollInOutEnabled(type == CourseType);
    options.SetTowEdgeDisplay(ZYLTPVisualizationOptions::TowEdgesDisplay(type == CourseType ? 3 : 0));
    options.SetTowHeadProfileDisplay(ZYLTPVisualizationOptions::HeadProfilesDisplay(type == CourseType ? 3 : 0));
    options.SetShortTowDisplay(ZYLTPVisualizationOptions::ShortTowDisplay(type == CourseType ? 4 : 0));
    options.SetLayingTrajectoryEnabled(type != CourseLinkType);
    options.SetTipPointEnabled(type == LayingPointType);
    if (type == CourseLinkType)
        options.SetLinkingPointsEnabled(false);
    options.SetLayingVectorsToDisplay(ZYLTPVisualizationOptions::NoVectors);
    options.SetLinkingTrajectoriesEnabled(type == CourseLinkType);
    d->options = options;
    manager->UpdateAllGraphics(options);
    manager->SetAllVirtualNodesVisibility(true);
    manager->SetAllVirtualNodesSelectable(type != LayingPointType);
}

void ZYLTPContextualViewWidget::CollectLayingPoints() {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    const ZYLTPProgram *program = manager ? manager->GetToolPathProgram() : nullptr;
    std::vector<ZYLMathPoint> tips;
    for (int p = 0; program && p < program->GetNumProcedures(); ++p) {
        const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(p));
        for (int c = 0; procedure && c < procedure->GetNumCourses(); ++c) {
            const ZYLTPCourse *course = procedure->GetCourseByIndex(c);
            // Only the points laid on the part: those of the roll-in and roll-out are not.
            const int first = course->GetTrajectoryIndex(course->GetRollInTrajectory()) + 1;
            const int last = course->GetTrajectoryIndex(course->GetRollOutTrajectory()) - 1;
            for (int t = first; t <= last; ++t) {
                const ZYLTPTrajectory *trajectory = course->GetTrajectory(t);
                for (int i = 0; trajectory && i < trajectory->GetNumPoints(); ++i) {
                    const ZYLTPPoint *point = trajectory->GetPoint(i);
                    d->layingPoints.append(point);
                    tips.push_back(point->GetTipPoint());
                }
            }
        }
    }
    d->picker.SetPoints(std::move(tips));
}

void ZYLTPContextualViewWidget::OnVisualizationSelectionChanged(bool isPreSelect) {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    ZYLVisEnvironment *environment = Data::Environment();
    if (!environment)
        return;
    const QSet<ZYLVisObject *> objects =
        isPreSelect ? environment->GetPreSelectedObjects() : environment->GetVisualizationSelection();
    if (objects.isEmpty())
        return;
    // Every object of the set would be shown in turn, so the last one is what stays.
    ZYLVisObject *last = nullptr;
    for (ZYLVisObject *object : objects)
        last = object;
    auto *node = qobject_cast<ZYLVisVirtualObject *>(last);
    switch (d->ui.comboBox_ObjectType->currentIndex()) {
    case CourseType:
        FillPropertyTable(manager->GetCourseObject(node));
        break;
    case CourseLinkType:
        FillPropertyTable(manager->GetCourseLinkObject(node));
        break;
    default:
        FillPropertyTable(nullptr);
        break;
    }
}

void ZYLTPContextualViewWidget::OnMouseEvent(const ZYLVisMouseEvent &mouseEvent) {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    if (mouseEvent.GetActionType() != ZYLVisMouseEvent::Moved || d->layingPoints.isEmpty() || !manager)
        return;
    const ZYLTPPoint *point = d->layingPoints.at(d->picker.Pick(mouseEvent));
    ZYLTPVisualizationOptions options = manager->GetCurrentOptions();
    ZYLVisOptions attributes = options.GetTipPointGraphicAttributes();
    // Blue on a white tip display, white on any other, and thicker, so it always stands out.
    attributes.SetColor(attributes.GetColor() == QColor(255, 255, 255) ? QColor(0, 0, 255) : QColor(255, 255, 255));
    attributes.SetLineThickness(attributes.GetLineThickness() + 2.0);
    options.SetTipPointGraphicAttributes(attributes);
    if (d->highlight)
        d->highlight->SetRep(manager->CreatePointSelectionVisRep(point, options, HighlightPriority));
    FillPropertyTable(point);
}

void ZYLTPContextualViewWidget::FillPropertyTable(const QObject *object) {
    Properties rows;
    switch (d->ui.comboBox_ObjectType->currentIndex()) {
    case CourseType:
        rows = CourseProperties(qobject_cast<const ZYLTPCourse *>(object));
        break;
    case LayingPointType:
        rows = LayingPointProperties(qobject_cast<const ZYLTPOnPartPoint *>(object));
        break;
    case CourseLinkType:
        rows = CourseLinkProperties(qobject_cast<const ZYLTPCourseLink *>(object));
        break;
    default:
        break;
    }
    d->model->removeRows(0, d->model->rowCount());
    d->model->setRowCount(int(rows.size()));
    for (int r = 0; r < int(rows.size()); ++r) {
        d->model->setItem(r, 0, new QStandardItem(rows[r].first));
        d->model->setItem(r, 1, new QStandardItem(rows[r].second));
    }
    d->ui.tableView->resizeColumnsToContents();
    d->ui.tableView->resizeRowsToContents();
}
