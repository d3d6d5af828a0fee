// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCollisionInspectorWidget.h"

#include "ui_ZYLTPCollisionInspectorWidget.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditGraphics.h"
#include "ZYLTPCollisionInspectorCmd.h"
#include "ZYLTPRayPicker.h"

#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLCmnUISettings.h"
#include "ZYLEditValueContext.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLSysException.h"
#include "ZYLSysMessageQueue.h"
#include "ZYLSysValue.h"
#include "ZYLTPCourse.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPVisRepFactory.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisMouseEvent.h"
#include "ZYLVisRepSet.h"
#include "ZYLVisVirtualObject.h"

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QIcon>
#include <QMessageBox>
#include <QProgressDialog>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using CollisionPoints = QList<ZYLEditTPGraphicsMgr::CollisionPoint>;

// Tolerance changes up to this much (mm) do not make the list stale.
constexpr double ToleranceEpsilon = 0.001;
constexpr double DefaultTolerance = 10.0;
// A search that has run this long shows its progress (ms).
constexpr int ProgressDelay = 500;
constexpr qint64 ProgressInterval = 50;
constexpr int CollisionPointSegments = 8;
constexpr int RowPriority = 1;
constexpr int HoverPriority = 10;
constexpr auto AllVectors = ZYLTPVisualizationOptions::AllAxes;

// One colliding laying point: a row of the table.
struct Row {
    const ZYLTPOnPartPoint *point = nullptr;
    // The point no longer collided after the last avoidance that included it.
    bool avoided = false;
    int index = -1;
    ZYLTPCourse *course = nullptr;
};
using Rows = std::vector<Row>;

CollisionPoints GetCourseCollisionPoints(const ZYLEditTPGraphicsMgr *manager, const ZYLTPCourse *course) {
    CollisionPoints points;
    if (manager && course)
        manager->GetCollisionPoints(course->GetMachineConfiguration(), points);
    return points;
}

const ZYLTPOnPartTrajectory *OnPartTrajectory(const ZYLTPOnPartPoint *point) {
    return point ? qobject_cast<const ZYLTPOnPartTrajectory *>(point->GetTrajectory()) : nullptr;
}

// The tilt (system unit) as the user reads it: through the text of the system unit, so that
// the value system's own parsing and display unit decide the text.
QString AngleText(double radians) {
    const ZYLSysValue::Unit systemUnit = ZYLSysValue::GetMagnitudeSystemUnit(ZYLSysValue::Angle);
    ZYLSysValue value(ZYLSysValue::Angle, 0.0);
    value.FromString(QString::number(radians, 'f', 10) + ZYLSysValue::GetUnitSuffix(systemUnit));
    return value.ToString();
}

// The inspector's display of laying points: trajectory, tips and every axis, without
// approach, retract or tow details.
ZYLTPVisualizationOptions InspectorOptions(const ZYLEditTPGraphicsMgr *manager) {
    ZYLTPVisualizationOptions options = manager->GetCurrentOptions();
    options.SetApproachRetractEnabled(false);
    options.SetRollInOutEnabled(true);
    options.SetTowEdgeDisplay(ZYLTPVisualizationOptions::NoTowEdges);
    options.SetShortTowDisplay(ZYLTPVisualizationOptions::NoTowFill);
    options.SetLayingTrajectoryEnabled(true);
    options.SetTipPointEnabled(true);
    options.SetLayingVectorsToDisplay(AllVectors);
    return options;
}

// The inspector's options with every axis in `colour`, or in `alternative` when the user's
// tool axes already have that colour and the highlight would not show.
ZYLTPVisualizationOptions ColouredOptions(const ZYLEditTPGraphicsMgr *manager, const QColor &colour,
                                          const QColor &alternative) {
    ZYLTPVisualizationOptions options = InspectorOptions(manager);
    const QColor used = options.GetToolAxisGraphicAttributes().GetColor() == colour ? alternative : colour;
    for (const auto element : {ZYLTPVisualizationOptions::ToolAxisElement, ZYLTPVisualizationOptions::TangentVectorElement,
                               ZYLTPVisualizationOptions::RollerAxisElement}) {
        ZYLVisOptions attributes = options.GetGraphicAttributes(element);
        attributes.SetColor(used);
        options.SetGraphicAttributes(element, attributes);
    }
    return options;
}

ZYLTPVisualizationOptions SelectedOptions(const ZYLEditTPGraphicsMgr *manager) {
    return ColouredOptions(manager, QColor(255, 128, 0), QColor(128, 128, 255));
}

ZYLTPVisualizationOptions HoverOptions(const ZYLEditTPGraphicsMgr *manager) {
    return ColouredOptions(manager, QColor(0, 128, 255), QColor(128, 128, 0));
}

// The rows as a lazy table: cells are formatted when the view asks, so that a list of a
// million points costs nothing to show.
class RowModel final : public QAbstractTableModel {
public:
    RowModel(const Rows *rows, QObject *parent)
        : QAbstractTableModel(parent), m_rows(rows), m_avoided(QIcon::fromTheme(QStringLiteral("status-ok"))),
          m_colliding(QIcon::fromTheme(QStringLiteral("remove-all"))) {}

    void Reset() {
        beginResetModel();
        endResetModel();
    }

    int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : int(m_rows->size());
    }
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : 4; }

    QVariant data(const QModelIndex &index, int role) const override {
        if (role != Qt::DisplayRole || !index.isValid() || index.row() >= rowCount())
            return {};
        const Row &row = (*m_rows)[index.row()];
        switch (index.column()) {
        case 0:
            return QString::number(row.course->GetProcedure()->GetCoursePosition(row.course) + 1);
        case 1:
            return QString::number(row.index + 1);
        default:
            if (const ZYLTPOnPartTrajectory *trajectory = OnPartTrajectory(row.point))
                return AngleText(index.column() == 2 ? trajectory->GetForwardTilt() : trajectory->GetSideTilt());
            return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Vertical) {
            if (role == Qt::DecorationRole && section >= 0 && section < rowCount())
                return (*m_rows)[section].avoided ? m_avoided : m_colliding;
            return {};
        }
        if (role != Qt::DisplayRole || section < 0 || section > 3)
            return {};
        static const char *const titles[] = {QT_TRANSLATE_NOOP("ZYLTPCollisionInspectorWidget", "Course"),
                                             QT_TRANSLATE_NOOP("ZYLTPCollisionInspectorWidget", "Point"),
                                             QT_TRANSLATE_NOOP("ZYLTPCollisionInspectorWidget", "ZX Tilt"),
                                             QT_TRANSLATE_NOOP("ZYLTPCollisionInspectorWidget", "YZ Tilt")};
        return QCoreApplication::translate("ZYLTPCollisionInspectorWidget", titles[section]);
    }

private:
    const Rows *m_rows;
    QIcon m_avoided;
    QIcon m_colliding;
};

} // namespace

struct ZYLTPCollisionInspectorWidget::Data {
    Ui::ZYLTPCollisionInspectorWidget ui;
    RowModel *model = nullptr;
    const ZYLTPProgram *program = nullptr;
    bool stale = true;
    double lastTolerance = 0.0;
    Rows rows;
    // Tip points of the rows as found by the last search (avoidance does not move them).
    ZYLTPRayPicker pickSet;
    // The row selected last, which the head follows; -1 when none is selected.
    int lastSelectedRow = -1;
    int lastShownRow = -1;
    bool searching = false;
    std::unique_ptr<ZYLVisVirtualObject> selectedNode;
    std::unique_ptr<ZYLVisVirtualObject> unselectedNode;
    std::unique_ptr<ZYLVisVirtualObject> hoverNode;
    std::unique_ptr<ZYLVisVirtualObject> collisionPointsNode;

    static ZYLEditTPGraphicsMgr *Manager() { return ZYLEditTPGraphicsMgr::GetManager(); }
    static ZYLVisEnvironment *Environment() { return ZYLTPEditGraphics::GetEditEnvironment(); }

    QItemSelectionModel *Selection() const { return ui.tableWidget->selectionModel(); }
    bool IsRowSelected(int row) const { return Selection()->isRowSelected(row, {}); }

    // One flag per row: whether the row is selected.
    std::vector<char> SelectedFlags() const {
        std::vector<char> flags(rows.size(), 0);
        // A row is selected when its first cell is.
        for (const QItemSelectionRange &range : Selection()->selection())
            if (range.left() == 0)
                for (int row = std::max(range.top(), 0); row <= range.bottom() && row < int(rows.size()); ++row)
                    flags[row] = 1;
        return flags;
    }

    QList<int> SelectedRows() const {
        QList<int> selected;
        const std::vector<char> flags = SelectedFlags();
        for (int row = 0; row < int(flags.size()); ++row)
            if (flags[row])
                selected.append(row);
        return selected;
    }

    void SelectRows(const QList<int> &selected) {
        QItemSelection selection;
        const QAbstractItemModel *m = Selection()->model();
        for (int row : selected)
            selection.select(m->index(row, 0), m->index(row, m->columnCount() - 1));
        Selection()->select(selection, QItemSelectionModel::Select);
    }

    std::unique_ptr<ZYLVisVirtualObject> CreateNode(ZYLVisEnvironment *environment) {
        auto node = std::make_unique<ZYLVisVirtualObject>(environment);
        node->SetSelectability(false);
        environment->AddVirtualObject(node.get());
        return node;
    }

    QList<ZYLVisVirtualObject *> Nodes() const {
        return {selectedNode.get(), unselectedNode.get(), hoverNode.get(), collisionPointsNode.get()};
    }
};

ZYLTPCollisionInspectorWidget::ZYLTPCollisionInspectorWidget(QWidget *parent)
    : QMainWindow(parent), d(std::make_unique<Data>()) {
    // A main window is a window of its own by default; this one sits in the command's frame.
    setWindowFlags(Qt::Widget);
    d->ui.setupUi(this);
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    d->program = manager ? manager->GetToolPathProgram() : nullptr;
    d->model = new RowModel(&d->rows, this);
    d->ui.tableWidget->setModel(d->model);
    setupConnections();

    double tolerance = ZYLCmnUISettings::GetInstance()
                           ->GetValue(this, ZYLTPCollisionInspectorCmd::LastUsedCollisionTolSettingKey, DefaultTolerance)
                           .toDouble();
    if (tolerance < 0.0)
        tolerance = DefaultTolerance;
    {
        ZYLEditValueContext context;
        d->ui.doubleSpinBoxCollisionDetectionTol->setValue(tolerance);
    }
    d->ui.pushButtonShowPointCollsionDetction->setEnabled(true);
    UpdateButtons();

    if (ZYLVisEnvironment *environment = Data::Environment()) {
        ZYLVisEnvironmentBatchContext batch(environment);
        d->selectedNode = d->CreateNode(environment);
        d->unselectedNode = d->CreateNode(environment);
        d->hoverNode = d->CreateNode(environment);
        d->collisionPointsNode = d->CreateNode(environment);
        const bool showHead = d->ui.checkBoxShowHead->isChecked();
        manager->SetMachineHeadVisibility(showHead);
        const auto rollers = manager->GetRollersVirtualNodes();
        manager->SetRollersVisibility(showHead, rollers.isEmpty() ? -1 : rollers.first().first);
    }
}

ZYLTPCollisionInspectorWidget::~ZYLTPCollisionInspectorWidget() = default;

void ZYLTPCollisionInspectorWidget::setupConnections() {
    connect(d->ui.doubleSpinBoxCollisionDetectionTol, &QDoubleSpinBox::valueChanged, this,
            &ZYLTPCollisionInspectorWidget::OnUpdateCollisonToleranceValueChanged);
    connect(d->ui.pushButtonShowPointCollsionDetction, &QPushButton::clicked, this,
            &ZYLTPCollisionInspectorWidget::OnShowCollisionButtonClicked);
    connect(d->ui.checkBoxShowHead, &QCheckBox::stateChanged, this,
            &ZYLTPCollisionInspectorWidget::OnShowHeadButtonChecked);
    connect(d->ui.pushButtonUpdateCollisionAvoidance, &QPushButton::clicked, this,
            &ZYLTPCollisionInspectorWidget::OnAvoidCollisionClicked);
    connect(d->Selection(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection &selected, const QItemSelection &) {
                // The head follows the row the user picked last: the current row of a click
                // or range, or the last row a programmatic selection added.
                const int current = d->ui.tableWidget->currentIndex().row();
                if (!selected.isEmpty())
                    d->lastSelectedRow = selected.contains(d->model->index(current, 0)) ? current
                                                                                         : selected.last().bottom();
                if (d->lastSelectedRow >= 0 && !d->IsRowSelected(d->lastSelectedRow)) {
                    const QList<int> remaining = d->SelectedRows();
                    d->lastSelectedRow = remaining.isEmpty() ? -1 : remaining.last();
                }
                OnPointSelectionChanged();
            });
}

void ZYLTPCollisionInspectorWidget::HandleMouseEvent(const ZYLVisMouseEvent &event) {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    if (!manager || !d->hoverNode)
        return;
    switch (event.GetActionType()) {
    case ZYLVisMouseEvent::Moved: {
        const int row = d->pickSet.Pick(event);
        const bool show = row >= 0 && row < int(d->rows.size()) && !d->IsRowSelected(row) && d->rows[row].point;
        if (show) {
            const ZYLTPVisualizationOptions options = HoverOptions(manager);
            d->hoverNode->SetRep(manager->CreatePointsSelectionVisRep({d->rows[row].point},
                                                                      options.GetLayingVectorsToDisplay(), options,
                                                                      HoverPriority));
        } else {
            d->hoverNode->SetRep(nullptr);
        }
        break;
    }
    case ZYLVisMouseEvent::Clicked: {
        const int row = d->pickSet.Pick(event);
        if (row >= 0 && row < int(d->rows.size()))
            ToggleRow(row);
        break;
    }
    case ZYLVisMouseEvent::Left:
        d->hoverNode->SetRep(nullptr);
        break;
    default:
        break;
    }
}

void ZYLTPCollisionInspectorWidget::Release() {
    ZYLCmnUISettings::GetInstance()->SetValue(this, ZYLTPCollisionInspectorCmd::LastUsedCollisionTolSettingKey,
                                              d->ui.doubleSpinBoxCollisionDetectionTol->value());
    if (ZYLVisEnvironment *environment = Data::Environment()) {
        ZYLVisEnvironmentBatchContext batch(environment);
        for (ZYLVisVirtualObject *node : d->Nodes())
            if (node)
                environment->RemoveVirtualObject(node);
    }
}

void ZYLTPCollisionInspectorWidget::ToggleRow(int row) {
    {
        ZYLEditValueContext context;
        const QModelIndex first = d->model->index(row, 0);
        d->Selection()->select(first, (d->IsRowSelected(row) ? QItemSelectionModel::Deselect
                                                              : QItemSelectionModel::Select)
                                          | QItemSelectionModel::Rows);
    }
    UpdateButtons();
    RedrawPoints();
}

bool ZYLTPCollisionInspectorWidget::Search(double tolerance) {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    QList<ZYLTPRollLayupProcedure *> procedures;
    int courses = 0;
    for (int p = 0; d->program && p < d->program->GetNumProcedures(); ++p)
        if (auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(d->program->GetProcedure(p))) {
            procedures.append(procedure);
            courses += procedure->GetNumCourses();
        }

    // The search runs on the GUI thread; the dialog keeps the studio responsive and offers a
    // way out of a long one (it appears only once the search has taken half a second).
    QProgressDialog progress(tr("Searching for collisions..."), tr("Cancel"), 0, std::max(courses, 1), this);
    progress.setWindowTitle(windowTitle());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(ProgressDelay);
    progress.setAutoReset(false);
    // Starts the dialog's clock: it shows itself once the search has run, or promises to run,
    // longer than the delay.
    progress.setValue(0);
    QElapsedTimer clock;
    clock.start();
    qint64 lastProgress = 0;

    const bool direction = manager && !manager->GetLayupDirection();
    Rows rows;
    int searched = 0;
    for (ZYLTPRollLayupProcedure *procedure : procedures) {
        for (int position = 0; position < procedure->GetNumCourses(); ++position, ++searched) {
            // The dialog is told every few tens of milliseconds only: each time it handles the
            // pending events and repaints.
            if (clock.elapsed() - lastProgress >= ProgressInterval) {
                lastProgress = clock.elapsed();
                progress.setValue(searched);
                if (progress.wasCanceled())
                    return false;
            }
            ZYLTPCourse *course = procedure->GetCourseByPosition(position);
            const CollisionPoints collisionPoints = GetCourseCollisionPoints(manager, course);
            if (collisionPoints.isEmpty())
                continue;
            const ZYLGeoSurface *surface = manager->GetUpdatedSurface();
            if (!surface)
                continue;
            const int count = course->GetNumPoints();
            for (int i = 0; i < count; ++i) {
                const ZYLTPOnPartPoint *point = course->GetPoint(i);
                if (!point)
                    continue;
                try {
                    if (point->DetectCollision(surface, direction, tolerance, collisionPoints))
                        rows.push_back({point, false, i, course});
                } catch (const ZYLSysException &) {
                    // A point the host cannot test is left out; the others still count.
                }
            }
        }
    }
    progress.setValue(std::max(courses, 1));

    std::vector<ZYLMathPoint> tips;
    tips.reserve(rows.size());
    for (const Row &row : rows)
        tips.push_back(row.point->GetTipPoint());
    d->rows = std::move(rows);
    d->pickSet.SetPoints(std::move(tips));
    return true;
}

void ZYLTPCollisionInspectorWidget::OnShowCollisionButtonClicked() {
    const double tolerance = d->ui.doubleSpinBoxCollisionDetectionTol->value();
    if (d->searching || (!d->stale && std::abs(d->lastTolerance - tolerance) <= ToleranceEpsilon))
        return;
    d->searching = true;
    const bool found = Search(tolerance);
    d->searching = false;
    if (!found)
        return;
    d->stale = false;
    d->lastTolerance = tolerance;
    ShowRows(false);
}

void ZYLTPCollisionInspectorWidget::OnUpdateCollisonToleranceValueChanged(double val) {
    d->ui.pushButtonShowPointCollsionDetction->setEnabled(d->stale
                                                          || std::abs(d->lastTolerance - val) > ToleranceEpsilon);
}

void ZYLTPCollisionInspectorWidget::FillTable(bool restoreSelection) {
    const QList<int> remembered = restoreSelection ? d->SelectedRows() : QList<int>();
    const int lastSelected = d->lastSelectedRow;
    // A reset clears the selection without a signal.
    d->model->Reset();
    d->lastSelectedRow = -1;
    d->ui.tableWidget->resizeColumnsToContents();
    d->ui.tableWidget->clearSelection();
    if (!restoreSelection)
        return;
    ZYLEditValueContext context;
    QList<int> kept;
    for (int row : remembered) {
        if (row >= int(d->rows.size()))
            break;
        kept.append(row);
    }
    d->SelectRows(kept);
    if (kept.contains(lastSelected))
        d->lastSelectedRow = lastSelected;
}

void ZYLTPCollisionInspectorWidget::OnPointSelectionChanged() {
    if (ZYLEditValueContext::IsInEditContext())
        return;
    UpdateButtons();
    RedrawPoints();
}

void ZYLTPCollisionInspectorWidget::UpdateButtons() {
    if (ZYLEditValueContext::IsInEditContext())
        return;
    const std::vector<char> selected = d->SelectedFlags();
    bool any = false;
    for (size_t row = 0; row < selected.size() && !any; ++row)
        any = selected[row] && d->rows[row].point;
    d->ui.pushButtonUpdateCollisionAvoidance->setEnabled(any);
    d->ui.checkBoxShowHead->setEnabled(any);
    UpdateHeadDisplay();
}

void ZYLTPCollisionInspectorWidget::OnShowHeadButtonChecked() {
    UpdateHeadDisplay();
}

void ZYLTPCollisionInspectorWidget::UpdateHeadDisplay() {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    ZYLVisEnvironment *environment = Data::Environment();
    if (!d->collisionPointsNode || !manager || !environment)
        return;
    ZYLVisEnvironmentBatchContext batch(environment);
    const int last = d->lastSelectedRow;
    const bool showHead = d->ui.checkBoxShowHead->isChecked();
    const int rowCount = int(d->rows.size());
    manager->SetMachineHeadVisibility(showHead);
    const auto rollers = manager->GetRollersVirtualNodes();
    if (!rollers.isEmpty() && last != -1) {
        int rollerId = -1;
        if (last < rowCount && d->rows[last].point) {
            const auto *roller = qobject_cast<const ZYLTPRoller *>(
                d->rows[last].course->GetMachineConfiguration().GetTool());
            if (roller && roller->GetId() >= 0 && roller->GetId() < rollers.size())
                rollerId = rollers.at(roller->GetId()).first;
        }
        manager->SetRollersVisibility(showHead, rollerId);
    }
    if (!showHead || last == -1) {
        d->collisionPointsNode->SetRep(nullptr);
        return;
    }
    const Row &row = d->rows[last];
    if (!row.point)
        return;
    const bool reuse = d->collisionPointsNode->GetRep()
                       && (d->lastShownRow == -1
                           || (d->lastShownRow < rowCount && d->rows[d->lastShownRow].course == row.course));
    if (!reuse) {
        QList<ZYLVisRep *> reps;
        for (const auto &[centre, radius] : GetCourseCollisionPoints(manager, row.course))
            reps.append(ZYLTPVisRepFactory::CreateCollisionPointRep(centre, radius, CollisionPointSegments));
        d->collisionPointsNode->SetRep(new ZYLVisRepSet(reps));
    }
    manager->SetVirtualObjectPositionByTpPoint(d->collisionPointsNode.get(), row.point);
    d->lastShownRow = last;
    manager->SetVirtualObjectPositionByTpPoint(manager->GetMachineHeadVirtualNode(), row.point);
    for (const auto &roller : rollers)
        manager->SetVirtualObjectPositionByTpPoint(roller.second, row.point);
}

void ZYLTPCollisionInspectorWidget::ShowRows(bool restoreSelection) {
    // A new list (or new states) is computed: "Update" waits for a change of tolerance.
    d->ui.pushButtonShowPointCollsionDetction->setEnabled(false);
    {
        ZYLEditValueContext context;
        FillTable(restoreSelection);
        UpdateHeadDisplay();
    }
    RedrawPoints();
}

void ZYLTPCollisionInspectorWidget::RedrawPoints() {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    ZYLVisEnvironment *environment = Data::Environment();
    if (!manager || !environment || !d->selectedNode)
        return;
    ZYLVisEnvironmentBatchContext batch(environment);
    const std::vector<char> flags = d->SelectedFlags();
    QList<const ZYLTPPoint *> selected;
    QList<const ZYLTPPoint *> unselected;
    for (size_t row = 0; row < flags.size(); ++row)
        if (const ZYLTPOnPartPoint *point = d->rows[row].point)
            (flags[row] ? selected : unselected).append(point);
    d->unselectedNode->SetRep(
        manager->CreatePointsSelectionVisRep(unselected, AllVectors, InspectorOptions(manager), RowPriority));
    d->hoverNode->SetRep(nullptr);
    d->selectedNode->SetRep(
        manager->CreatePointsSelectionVisRep(selected, AllVectors, SelectedOptions(manager), RowPriority));
}

void ZYLTPCollisionInspectorWidget::OnAvoidCollisionClicked() {
    ZYLEditTPGraphicsMgr *manager = Data::Manager();
    const ZYLGeoSurface *surface = manager ? manager->GetUpdatedSurface() : nullptr;
    ZYLFeatEnvironment *featureEnvironment = ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!surface || !featureEnvironment)
        return;
    const std::vector<char> selected = d->SelectedFlags();
    const double tolerance = d->ui.doubleSpinBoxCollisionDetectionTol->value();
    const bool direction = !manager->GetLayupDirection();
    const int rowCount = int(d->rows.size());
    try {
        ZYLFeatTransactionContext transaction(featureEnvironment->GetContainer(), tr("Execute Collision"), false,
                                              ZYLFeatTransactionContext::UpdateDisplayAtEnd);
        ZYLSysMessageQueue queue;
        bool failed = false;
        try {
            // A run is a block of consecutive selected rows of one course; avoidance covers
            // its points up to the one after its last.
            for (int first = 0; first < rowCount; ++first) {
                if (!selected[first])
                    continue;
                int last = first;
                while (last + 1 < rowCount && selected[last + 1] && d->rows[last + 1].course == d->rows[first].course)
                    ++last;
                ZYLTPCourse *course = d->rows[first].course;
                const CollisionPoints collisionPoints = GetCourseCollisionPoints(manager, course);
                if (!collisionPoints.isEmpty())
                    course->AvoidCollisions(surface, direction, tolerance, collisionPoints,
                                            course->GetPoint(d->rows[first].index),
                                            course->GetPoint(d->rows[last].index + 1));
                first = last;
            }
        } catch (const ZYLSysException &) {
            failed = true;
        }
        for (const ZYLSysMessageQueue::Message &message : queue.GetMessages())
            if (message.second == 2) {
                failed = true;
                break;
            }
        if (failed) {
            QWidget *parent = ZYLCmdController::GetController()
                                  ? ZYLCmdController::GetController()->GetDialogHandler()->GetWidget()
                                  : this;
            QMessageBox::critical(parent, windowTitle(), tr("Avoid collision failed."), QMessageBox::Ok);
        } else {
            transaction.FlagComplete();
        }
    } catch (const ZYLSysException &exception) {
        qDebug("Exception fired in OnAvoidCollisionClicked: %s", exception.what());
    }

    // The avoidance may have given the courses new point views.
    const ZYLTPCourse *testedCourse = nullptr;
    CollisionPoints collisionPoints;
    for (int r = 0; r < rowCount; ++r) {
        Row &row = d->rows[r];
        row.point = row.course->GetPoint(row.index);
        if (!selected[r] || !row.point)
            continue;
        if (row.course != testedCourse) {
            testedCourse = row.course;
            collisionPoints = GetCourseCollisionPoints(manager, row.course);
        }
        if (collisionPoints.isEmpty())
            continue;
        try {
            row.avoided = !row.point->DetectCollision(surface, direction, tolerance, collisionPoints);
        } catch (const ZYLSysException &) {
        }
    }
    d->stale = true;
    ShowRows(true);
}
