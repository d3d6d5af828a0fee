// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditCourseLayingPointsWidget.h"

#include "ui_ZYLTPEditCourseLayingPointsWidget.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPTiltGraphPoints.h"
#include "ZYLTPTiltGraphVerticalAxis.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowPoint.h"
#include "ZYLTPTowTrajectory.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPRoller.h"
#include "ZYLTPVisRepFactory.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLCmnUISettings.h"
#include "ZYLCompTowMask.h"
#include "ZYLEditValueContext.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLMathLine.h"
#include "ZYLSysException.h"
#include "ZYLSysLocalizationManager.h"
#include "ZYLSysMessageQueue.h"
#include "ZYLSysOutOfBoundsException.h"
#include "ZYLSysResourceManager.h"
#include "ZYLSysValue.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisRepSet.h"
#include "ZYLVisVirtualObject.h"

#include <QGraphicsScene>
#include <QMouseEvent>
#include <QItemSelection>
#include <QMessageBox>
#include <QPointer>

#include <array>
#include <tuple>

namespace {

using Options = ZYLTPVisualizationOptions;

enum Object { SelectedObject, UnselectedObject, PreviewObject, HeadObject, NumObjects };

ZYLEditTPGraphicsMgr *Manager() {
    return ZYLEditTPGraphicsMgr::GetManager();
}

// The options the points are drawn with while the panel is open: tip points and tool axes.
Options PointOptions() {
    Options options = Manager() ? Manager()->GetCurrentOptions() : Options();
    options.SetApproachRetractEnabled(false);
    options.SetRollInOutEnabled(true);
    options.SetTowEdgeDisplay(Options::NoTowEdges);
    options.SetShortTowDisplay(Options::NoTowFill);
    options.SetLayingTrajectoryEnabled(true);
    options.SetTipPointEnabled(true);
    options.SetLayingVectorsToDisplay(Options::ToolAxis);
    return options;
}

// Selected and previewed points replace the tool axis colour by one that stands out from it.
Options HighlightOptions(Options options, bool preview) {
    ZYLVisOptions axis = options.GetToolAxisGraphicAttributes();
    const bool red = axis.GetColor() == QColor(255, 0, 0);
    if (preview)
        axis.SetColor(red ? QColor(193, 193, 233) : QColor(233, 150, 122));
    else
        axis.SetColor(red ? QColor(0, 0, 255) : QColor(255, 0, 0));
    options.SetToolAxisGraphicAttributes(axis);
    options.SetLayingVectorsToDisplay(Options::ToolAxis);
    return options;
}

ZYLVisRep *PointsRep(const QList<const ZYLTPPoint *> &points, const Options &options, int priority) {
    return Manager() ? Manager()->CreatePointsSelectionVisRep(points, Options::ToolAxis, options, priority) : nullptr;
}

const ZYLTPOnPartTrajectory *OnPartTrajectory(const ZYLTPPoint *point) {
    return point ? qobject_cast<const ZYLTPOnPartTrajectory *>(point->GetTrajectory()) : nullptr;
}

QString AngleText(double angle) {
    return ZYLSysValue(ZYLSysValue::Angle, angle).ToString();
}

void CheckRow(int index, int rows) {
    if (index < 0 || index >= rows)
        throw ZYLSysOutOfBoundsException(index, 0, rows - 1);
}

// One selection of whole rows from the row numbers, merged into runs.
QItemSelection RowSelection(const QAbstractItemModel *model, const QList<int> &rows) {
    QItemSelection selection;
    const int last = model->columnCount() - 1;
    for (int i = 0; i < rows.size();) {
        int j = i;
        while (j + 1 < rows.size() && rows[j + 1] == rows[j] + 1)
            ++j;
        selection.select(model->index(rows[i], 0), model->index(rows[j], last));
        i = j + 1;
    }
    return selection;
}

// Whether each row of the table has its first cell selected, in one pass over the selection.
QList<bool> SelectedRowFlags(const QTableWidget *table) {
    QList<bool> flags(table->rowCount(), false);
    for (const QItemSelectionRange &range : table->selectionModel()->selection()) {
        if (range.left() > 0)
            continue;
        for (int row = range.top(); row <= range.bottom(); ++row)
            flags[row] = true;
    }
    return flags;
}

QList<int> SelectedRowNumbers(const QTableWidget *table) {
    QList<int> rows;
    const QList<bool> flags = SelectedRowFlags(table);
    for (int row = 0; row < flags.size(); ++row)
        if (flags[row])
            rows.append(row);
    return rows;
}

// Re-selects rows after a refill, up to the first one the table no longer has.
void ReselectRows(QTableWidget *table, QList<int> rows) {
    const auto gone = std::find_if(rows.begin(), rows.end(), [table](int row) { return row >= table->rowCount(); });
    rows.erase(gone, rows.end());
    ZYLEditValueContext context;
    table->selectionModel()->select(RowSelection(table->model(), rows), QItemSelectionModel::Select);
}

// Sets the text of a cell, making the item on first use so that a refill of the same rows
// does not rebuild the table.
void SetCell(QTableWidget *table, int row, int column, const QString &text) {
    if (QTableWidgetItem *item = table->item(row, column))
        item->setText(text);
    else
        table->setItem(row, column, new QTableWidgetItem(text));
}

} // namespace

struct ZYLTPEditCourseLayingPointsWidget::Data {
    Ui::ZYLTPEditCourseLayingPointsWidget ui;
    QPointer<ZYLVisEnvironment> environment;
    const ZYLTPCourse *course = nullptr;
    QList<const ZYLTPPoint *> points;
    QList<ZYLMathPoint> tipPoints;
    std::array<std::unique_ptr<ZYLVisVirtualObject>, NumObjects> objects;
    ZYLCompTowMask towMask;
    ZYLCompTowMask forcedMask;
    QList<double> forcedRates;
    bool firstClickSeen = false;
    QGraphicsScene forwardScene;
    QGraphicsScene sideScene;
    ZYLTPTiltGraphVerticalAxis *forwardAxis = nullptr;
    ZYLTPTiltGraphVerticalAxis *sideAxis = nullptr;
    ZYLTPTiltGraphPoints *forwardPoints = nullptr;
    ZYLTPTiltGraphPoints *sidePoints = nullptr;
    QList<ZYLEditTPGraphicsMgr::CollisionPoint> collisionPoints;
    QList<bool> collisionFlags;

    QList<QPushButton *> Headers() const {
        return {ui.Button_Select, ui.Button_Graph, ui.Button_Collision, ui.Button_Towcontrol};
    }
    ZYLVisVirtualObject *Live(Object which) const { return environment ? objects[which].get() : nullptr; }
    bool IsRowSelected(int row) const { return ui.listWidget->selectionModel()->isRowSelected(row, {}); }
};

ZYLTPEditCourseLayingPointsWidget::ZYLTPEditCourseLayingPointsWidget(ZYLVisEnvironment *environment, QWidget *parent)
    : QMainWindow(parent), d(std::make_unique<Data>()) {
    d->environment = environment;
    // A main window (for its tool bar) that lives inside the command frame, not beside it.
    setWindowFlag(Qt::Window, false);
    d->ui.setupUi(this);
    ZYLSysResourceManager::ResolveStyleSheetImage(d->ui.Button_Graph, QStringLiteral("@@@unchecked-image@@@"),
                                                  QStringLiteral("button-collapse-right"));
    ZYLSysResourceManager::ResolveStyleSheetImage(d->ui.Button_Graph, QStringLiteral("@@@checked-image@@@"),
                                                  QStringLiteral("button-collapse-left"));
    for (QPushButton *header : {d->ui.Button_Select, d->ui.Button_Collision, d->ui.Button_Towcontrol})
        ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(header);
    d->ui.forwardTiltView->setScene(&d->forwardScene);
    d->ui.sideTiltView->setScene(&d->sideScene);
    setupConnections();
}

ZYLTPEditCourseLayingPointsWidget::~ZYLTPEditCourseLayingPointsWidget() {
    for (QPushButton *header : d->Headers())
        ZYLCmnUISettings::GetInstance()->SetValue(this, header->objectName().toLatin1(), header->isChecked());
    RemoveEditGraphics();
}

void ZYLTPEditCourseLayingPointsWidget::setupConnections() {
    Ui::ZYLTPEditCourseLayingPointsWidget &ui = d->ui;
    const QList<QWidget *> frames{ui.frame_select, ui.frame_Graph, ui.frame_collision, ui.frame_towcontrol};
    const QList<QPushButton *> headers = d->Headers();
    for (int i = 0; i < headers.size(); ++i)
        connect(headers[i], &QPushButton::toggled, frames[i], &QWidget::setVisible);
    connect(ui.actionExpandCollapseAll, &QAction::triggered, this, [headers](bool checked) {
        for (QPushButton *header : headers)
            header->setChecked(checked);
    });

    using Self = ZYLTPEditCourseLayingPointsWidget;
    using Slot = void (Self::*)();
    connect(ui.listWidget->selectionModel(), &QItemSelectionModel::selectionChanged, this, &Self::OnPointSelectionChanged);
    connect(ui.tableWidgetTows->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &Self::OnTowItemSelectionChanged);
    connect(ui.spinBoxYScale, &QSpinBox::valueChanged, this, &Self::OnTiltYScaleChanged);
    connect(ui.doubleSpinBoxHeadPosition, &QSpinBox::valueChanged, this, &Self::OnHeadPositionValueChanged);
    const std::pair<QAbstractButton *, Slot> clicks[] = {
        {ui.pushButtonSelectAll, &Self::OnSelectAllPointsClicked},
        {ui.pushButtonDeselectAll, &Self::OnClearSelectAllPointsClicked},
        {ui.pushButtonSelectAllTows, &Self::OnTowSelectAllButtonClicked},
        {ui.pushButtonSelectOddTows, &Self::OnTowSelectOddButtonClicked},
        {ui.pushButtonSelectNoneTows, &Self::OnTowSelectNoneButtonClicked},
        {ui.pushButtonSelectEvenTows, &Self::OnTowSelectEvenButtonClicked},
        {ui.pushButtonSelectInvertTows, &Self::OnTowSelectInvertButtonClicked},
        {ui.pushButtonSelectFeedOnTows, &Self::OnTowSelectFeedOnButtonClicked},
        {ui.pushButtonSelectFeedOffTows, &Self::OnTowSelectFeedOffButtonClicked},
        {ui.pushButtonZoomIn, &Self::OnTiltZoomIn},
        {ui.pushButtonZoomOut, &Self::OnTiltZoomOut},
        {ui.pushButtonZoomAll, &Self::OnTitlZoomAll},
        {ui.pushButtonShiftLeft, &Self::OnTiltShiftLeft},
        {ui.pushButtonShiftRight, &Self::OnTiltShiftRight},
        {ui.pushButtonUpdateCollisionAvoidance, &Self::OnUpdateCollisionClicked},
    };
    for (const auto &[button, slot] : clicks)
        connect(button, &QAbstractButton::clicked, this, slot);
    const std::pair<QCheckBox *, Slot> checks[] = {
        {ui.checkBoxForwardTilt, &Self::OnForwardTiltCheckBoxStateChanged},
        {ui.checkBoxSideTilt, &Self::OnSideTiltCheckBoxStateChanged},
        {ui.checkBoxTowForceFeed, &Self::OnChangeForceFeedCheckChanged},
        {ui.checkBoxShowPointCollsionDetction, &Self::OnShowCollisionButtonClicked},
        {ui.checkBoxCenterOnHeadPosition, &Self::OnCenterOnHeadPosition},
        {ui.checkBoxShowHead, &Self::OnShowHeadButtonChecked},
    };
    for (const auto &[box, slot] : checks)
        connect(box, &QCheckBox::stateChanged, this, slot);
    // Values are taken when their editing is finished, not on every keystroke.
    const std::pair<QAbstractSpinBox *, Slot> finished[] = {
        {ui.doubleSpinBoxForwardTilt, &Self::OnForwardTiltValueChanged},
        {ui.doubleSpinBoxSideTilt, &Self::OnSideTiltValueChanged},
        {ui.doubleSpinBoxTowForceFeedRate, &Self::OnForceFeedRateChanged},
        {ui.doubleSpinBoxCollisionDetectionTol, &Self::OnUpdateCollisonToleranceValueChanged},
    };
    for (const auto &[box, slot] : finished)
        connect(box, &QAbstractSpinBox::editingFinished, this, slot);
    for (ZYLTPTiltGraphView *view : {ui.forwardTiltView, ui.sideTiltView}) {
        connect(view, &ZYLTPTiltGraphView::OnMouseMoveEvent, this, &Self::OnTiltGraphMouseMoveEvent);
        connect(view, &ZYLTPTiltGraphView::OnMousePressEvent, this, &Self::OnTiltGraphMousePressEvent);
        connect(view, &ZYLTPTiltGraphView::OnMouseReleaseEvent, this, &Self::OnTiltGraphMouseReleaseEvent);
        connect(view, &ZYLTPTiltGraphView::OnMouseDoubleClickEvent, this, &Self::OnTiltGraphMouseDoubleClickEvent);
        connect(view, &ZYLTPTiltGraphView::OnPreviewSelectionChanged, this, &Self::OnTiltPreviewSelectionChanged);
    }
}

// --- Course -------------------------------------------------------------------------------

void ZYLTPEditCourseLayingPointsWidget::SetCourse(const ZYLTPCourse *course) {
    if (!course)
        return;
    d->course = course;
    SetupGraphs();

    ZYLEditTPGraphicsMgr *manager = Manager();
    d->ui.checkBoxTowAllowChangeInd->setChecked(manager && manager->CanFeedTowsIndividually());
    d->ui.checkboxTowChangRateInd->setChecked(manager && manager->CanFeedTowsAtSeparateRates());

    d->collisionPoints.clear();
    if (manager)
        manager->GetCollisionPoints(course->GetMachineConfiguration(), d->collisionPoints);
    d->ui.checkBoxShowPointCollsionDetction->setEnabled(!d->collisionPoints.isEmpty());
    d->ui.pushButtonUpdateCollisionAvoidance->setEnabled(!d->collisionPoints.isEmpty());

    if (d->environment) {
        RemoveEditGraphics();
        for (std::unique_ptr<ZYLVisVirtualObject> &object : d->objects) {
            object = std::make_unique<ZYLVisVirtualObject>(d->environment, nullptr);
            object->SetSelectability(false);
            d->environment->AddVirtualObject(object.get());
        }
    }

    ResetControls();

    if (manager) {
        const bool show = d->ui.checkBoxShowHead->isChecked();
        manager->SetMachineHeadVisibility(show);
        const auto rollers = manager->GetRollersVirtualNodes();
        manager->SetRollersVisibility(show, rollers.isEmpty() ? -1 : rollers.first().first);
    }
    if (d->environment) {
        ZYLVisEnvironmentBatchContext batch(d->environment);
        UpdatePointGraphics();
    }

    for (QPushButton *header : d->Headers())
        header->setChecked(
            ZYLCmnUISettings::GetInstance()->GetValue(this, header->objectName().toLatin1(), header->isChecked()).toBool());
}

void ZYLTPEditCourseLayingPointsWidget::ResetControls() {
    d->ui.Button_Graph->setChecked(false);
    d->ui.frame_Graph->hide();
    ReloadPoints();
    FillPointList(false);
    d->ui.checkBoxForwardTilt->setChecked(false);
    d->ui.checkBoxSideTilt->setChecked(false);
    UpdateSelectionControls();
    UpdateHead();
}

void ZYLTPEditCourseLayingPointsWidget::ReloadPoints() {
    d->points.clear();
    d->tipPoints.clear();
    const int count = d->course ? d->course->GetNumPoints() : 0;
    d->points.reserve(count);
    d->tipPoints.reserve(count);
    for (int i = 0; i < count; ++i) {
        const ZYLTPPoint *point = d->course->GetPoint(i);
        d->points.append(point);
        d->tipPoints.append(point ? point->GetTipPoint() : ZYLMathPoint());
    }
    // A head position the course no longer has goes back to the first point, which moves the
    // head through the spin box; otherwise the head follows the reloaded point here.
    QSpinBox *head = d->ui.doubleSpinBoxHeadPosition;
    const int value = head->value();
    if (value < 1 || value > std::max(count, 1))
        head->setValue(1);
    else
        UpdateHead();
    head->setRange(1, std::max(count, 1));
    DetectCollisions();
}

void ZYLTPEditCourseLayingPointsWidget::FillPointList(bool keepSelection) {
    QTableWidget *table = d->ui.listWidget;
    const QList<int> kept = keepSelection ? SelectedRowNumbers(table) : QList<int>();
    table->setRowCount(d->points.size());
    // Tilts are constant along a trajectory: their texts are made once per trajectory.
    const ZYLTPOnPartTrajectory *last = nullptr;
    QString forward, side;
    for (int row = 0; row < d->points.size(); ++row) {
        const ZYLTPOnPartTrajectory *trajectory = OnPartTrajectory(d->points[row]);
        if (trajectory != last || !trajectory) {
            forward = trajectory ? AngleText(trajectory->GetForwardTilt()) : QString();
            side = trajectory ? AngleText(trajectory->GetSideTilt()) : QString();
            last = trajectory;
        }
        SetCell(table, row, 0, tr("Point.%1").arg(row + 1));
        SetCell(table, row, 1, forward);
        SetCell(table, row, 2, side);
    }
    table->resizeColumnsToContents();
    table->clearSelection();
    if (keepSelection)
        ReselectRows(table, kept);
}

// --- Selection ----------------------------------------------------------------------------

QList<const ZYLTPPoint *> ZYLTPEditCourseLayingPointsWidget::SelectedPoints() const {
    QList<const ZYLTPPoint *> points;
    const QList<bool> flags = SelectedRowFlags(d->ui.listWidget);
    for (int row = 0; row < flags.size() && row < d->points.size(); ++row)
        if (flags[row] && d->points[row])
            points.append(d->points[row]);
    return points;
}

QList<const ZYLTPPoint *> ZYLTPEditCourseLayingPointsWidget::UnselectedPoints() const {
    QList<const ZYLTPPoint *> points;
    const QList<bool> flags = SelectedRowFlags(d->ui.listWidget);
    for (int row = 0; row < d->points.size(); ++row)
        if (row >= flags.size() || !flags[row])
            points.append(d->points[row]);
    return points;
}

ZYLTPEditCourseLayingPointsWidget::Ranges ZYLTPEditCourseLayingPointsWidget::SelectedRanges() const {
    Ranges ranges;
    const QList<bool> flags = SelectedRowFlags(d->ui.listWidget);
    bool open = false;
    for (int row = 0; row < flags.size(); ++row) {
        if (flags[row] && !open)
            ranges.first.append(row);
        else if (!flags[row] && open)
            ranges.second.append(row);
        open = flags[row];
    }
    if (open)
        ranges.second.append(d->course ? d->course->GetNumPoints() - 1 : flags.size() - 1);
    return ranges;
}

void ZYLTPEditCourseLayingPointsWidget::UpdateSelectionControls() {
    if (ZYLEditValueContext::IsInEditContext())
        return;
    Ui::ZYLTPEditCourseLayingPointsWidget &ui = d->ui;
    const QList<const ZYLTPPoint *> selected = SelectedPoints();
    const bool any = !selected.isEmpty();
    ui.checkBoxForwardTilt->setEnabled(any);
    ui.checkBoxSideTilt->setEnabled(any);
    ui.doubleSpinBoxForwardTilt->setEnabled(any && ui.checkBoxForwardTilt->isChecked());
    ui.doubleSpinBoxSideTilt->setEnabled(any && ui.checkBoxSideTilt->isChecked());
    {
        ZYLEditValueContext context;
        const ZYLTPOnPartTrajectory *first = any ? OnPartTrajectory(selected.first()) : nullptr;
        ui.doubleSpinBoxForwardTilt->setValue(first ? first->GetForwardTilt() : 0.0);
        ui.doubleSpinBoxSideTilt->setValue(first ? first->GetSideTilt() : 0.0);
        if (!any) {
            ui.frame_towcontrol->setEnabled(false);
            ui.editbox_enabletows->clear();
            ui.doubleSpinBoxTowForceFeedRate->setValue(100.0);
            ui.tableWidgetTows->setRowCount(0);
        } else {
            LoadTowState();
            FillTowTable(false);
            if (!d->forcedRates.isEmpty())
                ui.doubleSpinBoxTowForceFeedRate->setValue(d->forcedRates.first() * 100.0);
        }
        ui.checkBoxTowForceFeed->setChecked(false);
    }
    ui.checkBoxTowAllowChangeInd->setEnabled(false);
    ui.checkboxTowChangRateInd->setEnabled(false);
    ui.pushButtonUpdateCollisionAvoidance->setEnabled(any && !d->collisionPoints.isEmpty());
    ui.checkBoxShowPointCollsionDetction->setEnabled(!d->collisionPoints.isEmpty());
    RefreshGraphs();
}

void ZYLTPEditCourseLayingPointsWidget::UpdatePointGraphics() {
    if (!d->environment)
        return;
    const Options options = PointOptions();
    d->objects[UnselectedObject]->SetRep(PointsRep(UnselectedPoints(), options, 1));
    d->objects[PreviewObject]->SetRep(PointsRep({}, HighlightOptions(options, true), 10));
    d->objects[SelectedObject]->SetRep(PointsRep(SelectedPoints(), HighlightOptions(options, false), 1));
}

void ZYLTPEditCourseLayingPointsWidget::SelectPointRows(int first, int last) {
    const QAbstractItemModel *model = d->ui.listWidget->model();
    ApplyPointSelection(QItemSelection(model->index(first, 0), model->index(last, 2)),
                        QItemSelectionModel::ClearAndSelect, first);
}

void ZYLTPEditCourseLayingPointsWidget::ApplyPointSelection(const QItemSelection &selection,
                                                            QItemSelectionModel::SelectionFlags flags, int row) {
    QTableWidget *table = d->ui.listWidget;
    const bool outer = ZYLEditValueContext::IsInEditContext();
    {
        ZYLEditValueContext context;
        table->selectionModel()->select(selection, flags);
        table->scrollTo(table->model()->index(row, 0));
    }
    // Inside another edit, that edit brings the controls and the view up to date at its end.
    if (!outer)
        FollowPointSelection();
}

void ZYLTPEditCourseLayingPointsWidget::FollowPointSelection() {
    UpdateSelectionControls();
    ZYLVisEnvironmentBatchContext batch(d->environment);
    UpdatePointGraphics();
}

void ZYLTPEditCourseLayingPointsWidget::ShowEditedPoints() {
    ZYLEditValueContext context;
    ReloadPoints();
    FillPointList(true);
    {
        ZYLVisEnvironmentBatchContext batch(d->environment);
        UpdatePointGraphics();
    }
    RefreshGraphs();
}

void ZYLTPEditCourseLayingPointsWidget::OnPointSelectionChanged() {
    if (!ZYLEditValueContext::IsInEditContext())
        FollowPointSelection();
}

void ZYLTPEditCourseLayingPointsWidget::OnSelectAllPointsClicked() {
    ZYLVisEnvironmentBatchContext batch(d->environment);
    d->ui.listWidget->selectAll();
}

void ZYLTPEditCourseLayingPointsWidget::OnClearSelectAllPointsClicked() {
    ZYLVisEnvironmentBatchContext batch(d->environment);
    d->ui.listWidget->clearSelection();
}

// --- Mouse in the 3-D view ----------------------------------------------------------------

int ZYLTPEditCourseLayingPointsWidget::PickPointIndex(const ZYLMathPoint &point, const ZYLMathVector &direction) const {
    ZYLMathLine line;
    line.SetOrigin(point);
    line.SetVector(direction);
    int best = -1;
    double bestDistance = 0.0;
    for (int i = 0; i < d->tipPoints.size(); ++i) {
        const double distance = line.GetSquaredDistanceTo(d->tipPoints[i]);
        if (best < 0 || distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

void ZYLTPEditCourseLayingPointsWidget::TogglePointSelection(int index, bool select) {
    // The click that reaches the panel first is the one that picked the course.
    if (!d->firstClickSeen) {
        d->firstClickSeen = true;
        return;
    }
    QTableWidget *table = d->ui.listWidget;
    CheckRow(index, table->rowCount());
    const bool selected = select && !d->IsRowSelected(index);
    ApplyPointSelection(QItemSelection(table->model()->index(index, 0), table->model()->index(index, 0)),
                        (selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect) |
                            QItemSelectionModel::Rows,
                        index);
}

void ZYLTPEditCourseLayingPointsWidget::PreviewPoint(int index) {
    CheckRow(index, d->ui.listWidget->rowCount());
    ZYLVisVirtualObject *preview = d->Live(PreviewObject);
    if (!preview)
        return;
    if (d->IsRowSelected(index) || index >= d->points.size())
        preview->SetRep(PointsRep({}, Options(), 10));
    else
        preview->SetRep(PointsRep({d->points[index]}, HighlightOptions(PointOptions(), true), 10));
}

void ZYLTPEditCourseLayingPointsWidget::ClearPointPreview() {
    if (ZYLVisVirtualObject *preview = d->Live(PreviewObject))
        preview->SetRep(PointsRep({}, Options(), 10));
}

void ZYLTPEditCourseLayingPointsWidget::Finish(bool commit) {
    if (commit)
        RemoveEditGraphics();
    else
        ResetControls();
}

void ZYLTPEditCourseLayingPointsWidget::RemoveEditGraphics() {
    if (!d->environment)
        return;
    for (Object which : {HeadObject, PreviewObject, SelectedObject, UnselectedObject})
        if (d->objects[which])
            d->environment->RemoveVirtualObject(d->objects[which].get());
}

// --- Tilt ---------------------------------------------------------------------------------

template<typename Edit>
void ZYLTPEditCourseLayingPointsWidget::RunEdit(Edit edit) {
    // Edits over several ranges run in a nested transaction, so that a range the model
    // refuses takes the ranges before it back with it.
    try {
        ZYLFeatEnvironment *environment = ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
        ZYLFeatTransactionContext transaction(environment ? environment->GetContainer() : nullptr, tr("Laying Points"),
                                              false, ZYLFeatTransactionContext::NoAutoUpdate);
        edit();
        transaction.FlagComplete();
    } catch (const ZYLSysException &exception) {
        QMessageBox::critical(ZYLCmdController::GetController()->GetDialogHandler()->GetWidget(), tr("Laying Points"),
                              exception.GetMessage());
    }
}

void ZYLTPEditCourseLayingPointsWidget::ApplyTilt() {
    if (ZYLEditValueContext::IsInEditContext() || !d->course)
        return;
    const auto [starts, ends] = SelectedRanges();
    const double forward = d->ui.doubleSpinBoxForwardTilt->value();
    const double side = d->ui.doubleSpinBoxSideTilt->value();
    // The edit goes through the model's own recorded operation; the panel holds the course
    // read-only otherwise.
    auto *course = const_cast<ZYLTPCourse *>(d->course);
    RunEdit([&] {
        if (starts.size() != ends.size())
            throw ZYLSysException(tr("The length of start and end range are not equal"));
        for (int k = 0; k < starts.size(); ++k) {
            const ZYLTPOnPartPoint *start = course->GetPoint(starts[k]);
            const ZYLTPOnPartPoint *end = course->GetPoint(ends[k]);
            if (start && end)
                course->SetRangeTilt(start, end, forward, side);
        }
    });
    if (starts.isEmpty())
        return;
    ShowEditedPoints();
}

void ZYLTPEditCourseLayingPointsWidget::OnForwardTiltCheckBoxStateChanged() {
    d->ui.doubleSpinBoxForwardTilt->setEnabled(d->ui.checkBoxForwardTilt->isChecked());
}

void ZYLTPEditCourseLayingPointsWidget::OnForwardTiltValueChanged() {
    ApplyTilt();
}

void ZYLTPEditCourseLayingPointsWidget::OnSideTiltCheckBoxStateChanged() {
    d->ui.doubleSpinBoxSideTilt->setEnabled(d->ui.checkBoxSideTilt->isChecked());
}

void ZYLTPEditCourseLayingPointsWidget::OnSideTiltValueChanged() {
    ApplyTilt();
}

// --- Tow control --------------------------------------------------------------------------

void ZYLTPEditCourseLayingPointsWidget::LoadTowState() {
    const QList<const ZYLTPPoint *> selected = SelectedPoints();
    const auto *trajectory =
        selected.isEmpty() ? nullptr : qobject_cast<const ZYLTPTowTrajectory *>(selected.first()->GetTrajectory());
    if (!trajectory)
        return;
    d->towMask = trajectory->GetTowMask();
    d->forcedMask = trajectory->GetForcedMask();
    d->forcedRates = trajectory->GetForcedRates();
    d->ui.editbox_enabletows->setText(d->towMask.GetString());
    d->ui.frame_towcontrol->setEnabled(!d->towMask.IsAllDisabled());
}

void ZYLTPEditCourseLayingPointsWidget::FillTowTable(bool keepSelection) {
    QTableWidget *table = d->ui.tableWidgetTows;
    if (d->towMask.IsAllDisabled()) {
        table->setRowCount(0);
        return;
    }
    const QList<int> kept = keepSelection ? SelectedRowNumbers(table) : QList<int>();
    const QLocale locale = ZYLSysLocalizationManager::GetManager()->GetLocale();
    QList<int> tows;
    for (int tow = 0; tow < ZYLCompTowMask::MaxTows; ++tow)
        if (d->towMask.IsEnabled(tow))
            tows.append(tow);
    table->setRowCount(tows.size());
    for (int row = 0; row < tows.size(); ++row) {
        const int tow = tows[row];
        const double rate = tow < d->forcedRates.size() ? d->forcedRates[tow] : 1.0;
        SetCell(table, row, 0, QString::number(tow + 1));
        SetCell(table, row, 1, d->forcedMask.IsEnabled(tow) ? tr("ON") : tr("OFF"));
        SetCell(table, row, 2, locale.toString(rate * 100.0, 'g', 6) + locale.percent());
    }
    table->resizeColumnsToContents();
    table->clearSelection();
    if (keepSelection)
        ReselectRows(table, kept);
}

void ZYLTPEditCourseLayingPointsWidget::SetTowRowSelected(int row, bool selected) {
    QTableWidget *table = d->ui.tableWidgetTows;
    CheckRow(row, table->rowCount());
    table->selectionModel()->select(table->model()->index(row, 0), (selected ? QItemSelectionModel::Select
                                                                             : QItemSelectionModel::Deselect) |
                                                                        QItemSelectionModel::Rows);
}

int ZYLTPEditCourseLayingPointsWidget::TowIndexOfRow(int row) const {
    const QTableWidgetItem *item = d->ui.tableWidgetTows->item(row, 0);
    bool ok = false;
    const int tow = item ? item->text().toInt(&ok, 10) : 0;
    return ok ? tow - 1 : -1;
}

void ZYLTPEditCourseLayingPointsWidget::SelectTowRows(const std::function<bool(int row)> &select) {
    // Decided for every row before any changes, so that "Invert" reads the old selection.
    QList<bool> rows;
    for (int row = 0; row < d->ui.tableWidgetTows->rowCount(); ++row)
        rows.append(select(row));
    for (int row = 0; row < rows.size(); ++row)
        SetTowRowSelected(row, rows[row]);
}

void ZYLTPEditCourseLayingPointsWidget::OnTowSelectAllButtonClicked() {
    SelectTowRows([](int) { return true; });
}

void ZYLTPEditCourseLayingPointsWidget::OnTowSelectNoneButtonClicked() {
    SelectTowRows([](int) { return false; });
}

void ZYLTPEditCourseLayingPointsWidget::OnTowSelectOddButtonClicked() {
    SelectTowRows([](int row) { return row % 2 == 0; });
}

void ZYLTPEditCourseLayingPointsWidget::OnTowSelectEvenButtonClicked() {
    SelectTowRows([](int row) { return row % 2 == 1; });
}

void ZYLTPEditCourseLayingPointsWidget::OnTowSelectFeedOnButtonClicked() {
    const QTableWidget *table = d->ui.tableWidgetTows;
    SelectTowRows([table](int row) { return table->item(row, 1) && table->item(row, 1)->text() == tr("ON"); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTowSelectFeedOffButtonClicked() {
    const QTableWidget *table = d->ui.tableWidgetTows;
    SelectTowRows([table](int row) { return table->item(row, 1) && table->item(row, 1)->text() == tr("OFF"); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTowSelectInvertButtonClicked() {
    const QTableWidget *table = d->ui.tableWidgetTows;
    SelectTowRows([table](int row) { return !table->selectionModel()->isSelected(table->model()->index(row, 1)); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTowItemSelectionChanged() {
    if (ZYLEditValueContext::IsInEditContext())
        return;
    ShowFirstSelectedTow();
}

void ZYLTPEditCourseLayingPointsWidget::ShowFirstSelectedTow() {
    ZYLEditValueContext context;
    const QList<int> rows = SelectedRowNumbers(d->ui.tableWidgetTows);
    const int tow = rows.isEmpty() ? -1 : TowIndexOfRow(rows.first());
    if (tow < 0 || tow >= d->forcedMask.GetNumTows() || tow >= d->forcedRates.size())
        return;
    d->ui.checkBoxTowForceFeed->setChecked(d->forcedMask.IsEnabled(tow));
    d->ui.doubleSpinBoxTowForceFeedRate->setValue(d->forcedRates[tow] * 100.0);
}

void ZYLTPEditCourseLayingPointsWidget::OnChangeForceFeedCheckChanged() {
    if (ZYLEditValueContext::IsInEditContext())
        return;
    const bool individual = Manager() && Manager()->CanFeedTowsIndividually();
    const bool on = d->ui.checkBoxTowForceFeed->isChecked();
    const QList<bool> selected = SelectedRowFlags(d->ui.tableWidgetTows);
    bool changed = false;
    for (int row = 0; row < selected.size(); ++row) {
        const int tow = TowIndexOfRow(row);
        if ((individual && !selected[row]) || tow < 0 || tow >= d->forcedMask.GetNumTows())
            continue;
        on ? d->forcedMask.Enable(tow) : d->forcedMask.Disable(tow);
        changed = true;
    }
    if (changed)
        ApplyPinchState();
}

void ZYLTPEditCourseLayingPointsWidget::OnForceFeedRateChanged() {
    const bool perTow = Manager() && Manager()->CanFeedTowsIndividually() && Manager()->CanFeedTowsAtSeparateRates();
    const double rate = d->ui.doubleSpinBoxTowForceFeedRate->value() / 100.0;
    const QList<bool> selected = SelectedRowFlags(d->ui.tableWidgetTows);
    bool changed = false;
    for (int row = 0; row < selected.size(); ++row) {
        const int tow = TowIndexOfRow(row);
        if ((perTow && !selected[row]) || tow < 0 || tow >= d->forcedMask.GetNumTows() || tow >= d->forcedRates.size())
            continue;
        d->forcedRates[tow] = rate;
        changed = true;
    }
    if (changed)
        ApplyPinchState();
}

void ZYLTPEditCourseLayingPointsWidget::ApplyPinchState() {
    if (!d->course)
        return;
    // The rows' ranges as points; a range open at the end of the list ends at the roll-out
    // point, which is the last row.
    QList<const ZYLTPPoint *> starts, ends;
    const auto [startRows, endRows] = SelectedRanges();
    for (int row : startRows)
        starts.append(d->points.value(row));
    for (int row : endRows)
        ends.append(row == d->points.size() - 1 ? d->course->GetRollOutPoint() : d->points.value(row));

    RunEdit([&] {
        if (starts.size() != ends.size())
            throw ZYLSysException(tr("The length of start and end range are not equal"));
        const auto *trajectory =
            starts.isEmpty() || !starts.first() ? nullptr : qobject_cast<const ZYLTPTowTrajectory *>(starts.first()->GetTrajectory());
        auto *course = trajectory ? const_cast<ZYLTPTowCourse *>(qobject_cast<const ZYLTPTowCourse *>(trajectory->GetCourse()))
                                  : nullptr;
        if (!course)
            return;
        // Every range is located before the first write.
        QList<int> startIndexes, endIndexes;
        for (int i = 0, k = 0; i < course->GetNumPoints() && k < starts.size(); ++i) {
            const ZYLTPPoint *point = course->GetPoint(i);
            if (point == starts[k])
                startIndexes.append(i);
            if (point == ends[k]) {
                endIndexes.append(i);
                ++k;
            }
        }
        if (startIndexes.size() != starts.size() || endIndexes.size() != starts.size())
            return;
        const double feedRate = trajectory->GetFeedRate();
        for (int k = starts.size() - 1; k >= 0; --k) {
            if (!course->GetPoint(startIndexes[k]) || !course->GetPoint(endIndexes[k]))
                continue;
            course->SetRangeFeedRate(course->GetPoint(startIndexes[k]), course->GetPoint(endIndexes[k]), feedRate);
            const auto *start = qobject_cast<const ZYLTPTowPoint *>(course->GetPoint(startIndexes[k]));
            const auto *end = qobject_cast<const ZYLTPTowPoint *>(course->GetPoint(endIndexes[k]));
            if (start && end)
                course->SetPinchState(start, end, d->forcedMask, d->forcedRates);
        }
    });
    ZYLEditValueContext context;
    ReloadPoints();
    FillPointList(true);
    LoadTowState();
    FillTowTable(true);
    // After a refused edit too, the controls show what the model holds.
    ShowFirstSelectedTow();
    RefreshGraphs();
}

// --- Tilt graphs --------------------------------------------------------------------------

void ZYLTPEditCourseLayingPointsWidget::SetupGraphs() {
    const double length = d->course->GetLength();
    const std::tuple<QGraphicsScene *, ZYLTPTiltGraphView *, bool> graphs[] = {
        {&d->forwardScene, d->ui.forwardTiltView, true}, {&d->sideScene, d->ui.sideTiltView, false}};
    for (const auto &[scene, view, forward] : graphs) {
        scene->clear();
        scene->setSceneRect(0.0, -length / 2.0, length, length);
        view->SetCourse(d->course);
        auto *axis = new ZYLTPTiltGraphVerticalAxis(d->course, view);
        axis->setZValue(0.5);
        scene->addItem(axis);
        auto *points = new ZYLTPTiltGraphPoints(d->course, view, forward);
        points->setZValue(1.0);
        points->SetColor(forward ? QColor(255, 0, 0, 255) : QColor(0, 0, 255, 255));
        // The curve changes far less often than the hover line over it.
        points->setCacheMode(QGraphicsItem::DeviceCoordinateCache);
        scene->addItem(points);
        (forward ? d->forwardAxis : d->sideAxis) = axis;
        (forward ? d->forwardPoints : d->sidePoints) = points;
    }
}

void ZYLTPEditCourseLayingPointsWidget::RefreshGraphs() {
    if (!d->forwardPoints)
        return;
    const int yScale = d->ui.spinBoxYScale->value();
    const auto [starts, ends] = SelectedRanges();
    for (QGraphicsScene *scene : {&d->forwardScene, &d->sideScene}) {
        for (QGraphicsItem *item : scene->items()) {
            if (auto *graphItem = dynamic_cast<ZYLTPTiltGraphBaseItem *>(item)) {
                graphItem->SetYScale(yScale);
                graphItem->UpdateLength();
            }
        }
    }
    for (ZYLTPTiltGraphPoints *points : {d->forwardPoints, d->sidePoints}) {
        points->SetShowCollisions(d->ui.checkBoxShowPointCollsionDetction->isChecked());
        points->SetCollisionFlags(d->collisionFlags);
    }
    d->ui.forwardTiltView->SetRanges(starts, ends);
    d->ui.sideTiltView->SetRanges(starts, ends);
    d->forwardScene.invalidate();
    d->sideScene.invalidate();
}

void ZYLTPEditCourseLayingPointsWidget::ForBothGraphs(const std::function<void(ZYLTPTiltGraphView *)> &action) {
    for (ZYLTPTiltGraphView *view : {d->ui.forwardTiltView, d->ui.sideTiltView})
        action(view);
    d->forwardScene.update();
    d->sideScene.update();
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltGraphMouseMoveEvent(QMouseEvent *event) {
    ForBothGraphs([event](ZYLTPTiltGraphView *view) { view->HandleMouseMove(event); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltGraphMousePressEvent(QMouseEvent *event) {
    ForBothGraphs([event](ZYLTPTiltGraphView *view) { view->HandleMousePress(event); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltGraphMouseReleaseEvent(QMouseEvent *event) {
    ForBothGraphs([event](ZYLTPTiltGraphView *view) { view->HandleMouseRelease(event); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltGraphMouseDoubleClickEvent(QMouseEvent *event) {
    // The slot's signature is fixed, so the view comes from the sender.
    const auto *view = qobject_cast<ZYLTPTiltGraphView *>(sender());
    if (view != d->ui.forwardTiltView && view != d->ui.sideTiltView)
        return;
    const int index = view->PointIndexAt(event);
    if (index >= 0 && index < d->points.size())
        d->ui.doubleSpinBoxHeadPosition->setValue(index + 1);
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltPreviewSelectionChanged(int start, int end) {
    const int lo = std::min(start, end);
    const int hi = std::max(start, end);
    const auto [starts, ends] = SelectedRanges();
    if (starts.size() == 1 && starts.first() == lo && ends.first() == hi + 1)
        return;
    SelectPointRows(lo, hi);
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltZoomIn() {
    ForBothGraphs([](ZYLTPTiltGraphView *view) { view->ZoomIn(); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltZoomOut() {
    ForBothGraphs([](ZYLTPTiltGraphView *view) { view->ZoomOut(); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTitlZoomAll() {
    ForBothGraphs([](ZYLTPTiltGraphView *view) { view->ZoomAll(); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltShiftLeft() {
    ForBothGraphs([](ZYLTPTiltGraphView *view) { view->ShiftLeft(); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltShiftRight() {
    ForBothGraphs([](ZYLTPTiltGraphView *view) { view->ShiftRight(); });
}

void ZYLTPEditCourseLayingPointsWidget::OnTiltYScaleChanged(int) {
    RefreshGraphs();
}

// --- Collisions and head ------------------------------------------------------------------

void ZYLTPEditCourseLayingPointsWidget::DetectCollisions() {
    d->collisionFlags.clear();
    const ZYLGeoSurface *surface = Manager() ? Manager()->GetUpdatedSurface() : nullptr;
    if (!d->ui.checkBoxShowPointCollsionDetction->isChecked() || d->collisionPoints.isEmpty() || !surface)
        return;
    const bool direction = !Manager()->GetLayupDirection();
    const double tolerance = d->ui.doubleSpinBoxCollisionDetectionTol->value();
    d->collisionFlags.reserve(d->points.size());
    for (const ZYLTPPoint *point : d->points) {
        const auto *onPart = qobject_cast<const ZYLTPOnPartPoint *>(point);
        bool collides = false;
        try {
            collides = onPart && onPart->DetectCollision(surface, direction, tolerance, d->collisionPoints);
        } catch (const ZYLSysException &) {
            // A point the check fails on is shown as not colliding; the others still count.
        }
        d->collisionFlags.append(collides);
    }
}

void ZYLTPEditCourseLayingPointsWidget::OnShowCollisionButtonClicked() {
    const bool show = d->ui.checkBoxShowPointCollsionDetction->isChecked();
    if (show)
        DetectCollisions();
    d->ui.doubleSpinBoxCollisionDetectionTol->setEnabled(show);
    RefreshGraphs();
}

void ZYLTPEditCourseLayingPointsWidget::OnUpdateCollisonToleranceValueChanged() {
    DetectCollisions();
    RefreshGraphs();
}

void ZYLTPEditCourseLayingPointsWidget::OnUpdateCollisionClicked() {
    if (!d->course)
        return;
    const auto [starts, ends] = SelectedRanges();
    const ZYLGeoSurface *surface = Manager() ? Manager()->GetUpdatedSurface() : nullptr;
    if (starts.isEmpty() || d->collisionPoints.isEmpty() || !surface)
        return;
    auto *course = const_cast<ZYLTPCourse *>(d->course);
    QWidget *parent = ZYLCmdController::GetController()->GetDialogHandler()->GetWidget();
    try {
        if (starts.size() != ends.size())
            throw ZYLSysException(tr("The length of start and end range are not equal"));
        ZYLFeatEnvironment *environment = ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
        ZYLFeatTransactionContext transaction(environment ? environment->GetContainer() : nullptr,
                                              tr("Execute Collision"), false,
                                              ZYLFeatTransactionContext::UpdateDisplayAtEnd);
        ZYLSysMessageQueue queue;
        const bool direction = !Manager()->GetLayupDirection();
        const double distance = d->ui.doubleSpinBoxCollisionAvoidance->value();
        for (int k = 0; k < starts.size(); ++k) {
            const ZYLTPOnPartPoint *start = course->GetPoint(starts[k]);
            const ZYLTPOnPartPoint *end = course->GetPoint(ends[k]);
            if (start && end)
                course->AvoidCollisions(surface, direction, distance, d->collisionPoints, start, end);
        }
        const auto messages = queue.GetMessages();
        const bool failed = std::any_of(messages.begin(), messages.end(), [](const auto &m) { return m.second == 2; });
        if (failed)
            QMessageBox::critical(parent, tr("Laying Points"), tr("Update collision failed."), QMessageBox::Ok);
        else
            transaction.FlagComplete();
    } catch (const ZYLSysException &exception) {
        QMessageBox::critical(parent, tr("Laying Points"), exception.GetMessage());
    }
    ShowEditedPoints();
}

void ZYLTPEditCourseLayingPointsWidget::UpdateHead() {
    ZYLEditTPGraphicsMgr *manager = Manager();
    if (!d->environment || !manager || !d->forwardAxis)
        return;
    ZYLVisEnvironmentBatchContext batch(d->environment);
    const int p = d->ui.doubleSpinBoxHeadPosition->value() - 1;
    const bool show = d->ui.checkBoxShowHead->isChecked();
    if (d->ui.checkBoxCenterOnHeadPosition->isChecked()) {
        d->ui.forwardTiltView->CenterOn(p);
        d->ui.sideTiltView->CenterOn(p);
    }
    d->forwardAxis->SetHeadIndex(p);
    d->sideAxis->SetHeadIndex(p);
    d->forwardScene.update();
    d->sideScene.update();
    manager->SetMachineHeadVisibility(show);
    const ZYLTPPoint *point = d->points.value(p);
    const auto rollers = manager->GetRollersVirtualNodes();
    if (!rollers.isEmpty() && point) {
        const auto *roller = qobject_cast<const ZYLTPRoller *>(d->course->GetMachineConfiguration().GetTool());
        const int rollerId = roller && roller->GetId() < rollers.size() ? rollers[roller->GetId()].first : -1;
        manager->SetRollersVisibility(show, rollerId);
    }
    ZYLVisVirtualObject *head = d->objects[HeadObject].get();
    if (!head)
        return;
    if (!show) {
        head->SetRep(nullptr);
        return;
    }
    manager->SetVirtualObjectPositionByTpPoint(manager->GetMachineHeadVirtualNode(), point);
    for (const auto &[id, node] : rollers)
        manager->SetVirtualObjectPositionByTpPoint(node, point);
    if (!head->GetRep()) {
        if (d->collisionPoints.isEmpty())
            return;
        QList<ZYLVisRep *> reps;
        for (const auto &[centre, radius] : d->collisionPoints)
            reps.append(ZYLTPVisRepFactory::CreateCollisionPointRep(centre, radius, 8));
        head->SetRep(new ZYLVisRepSet(reps));
    }
    if (point) {
        const ZYLMathAxis frame = point->GetAxis(true);
        head->SetPosition(&frame);
    }
}

void ZYLTPEditCourseLayingPointsWidget::OnCenterOnHeadPosition() {
    const bool centred = d->ui.checkBoxCenterOnHeadPosition->isChecked();
    d->ui.pushButtonShiftLeft->setEnabled(!centred);
    d->ui.pushButtonShiftRight->setEnabled(!centred);
    UpdateHead();
}

void ZYLTPEditCourseLayingPointsWidget::OnShowHeadButtonChecked() {
    UpdateHead();
}

void ZYLTPEditCourseLayingPointsWidget::OnHeadPositionValueChanged() {
    UpdateHead();
}
