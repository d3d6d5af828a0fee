// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditCourseWidget.h"
#include "ui_ZYLTPEditCourseWidget.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditGraphics.h"
#include "ZYLTPEditCourseCmd.h"
#include "ZYLTPMetaTypes.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCourse.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatObject.h"
#include "ZYLSysOutOfBoundsException.h"
#include "ZYLSysResourceManager.h"
#include "ZYLSysValue.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisVirtualObject.h"

#include <QMessageBox>
#include <QPointer>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include <algorithm>
#include <functional>

namespace {

enum CourseMode : qint32 { Select = 0, Reverse = 1, Break = 2, Delete = 3 };
enum LinkSubMode : qint32 { None = 0, Unlink = 1, Link = 2, ChainLink = 3 };

ZYLEditTPGraphicsMgr *Manager() {
    return ZYLEditTPGraphicsMgr::GetManager();
}

ZYLVisEnvironment *Scene() {
    return ZYLTPEditGraphics::GetEditEnvironment();
}

const ZYLTPProgram *Program() {
    ZYLEditTPGraphicsMgr *manager = Manager();
    return manager ? manager->GetToolPathProgram() : nullptr;
}

// The roll layup procedures of the program, in order; other kinds are left out.
QList<ZYLTPRollLayupProcedure *> RollLayupProcedures() {
    QList<ZYLTPRollLayupProcedure *> procedures;
    if (const ZYLTPProgram *program = Program()) {
        for (int p = 0; p < program->GetNumProcedures(); ++p) {
            if (auto procedure = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(p)))
                procedures.append(procedure);
        }
    }
    return procedures;
}

// Reads an object pointer stored under the user role, whether it was stored as pointer to
// const or not.
template <class T>
const T *ObjectOf(const QModelIndex &index) {
    const QVariant value = index.data(Qt::UserRole);
    if (value.metaType() == QMetaType::fromType<const T *>())
        return value.value<const T *>();
    if (value.metaType() == QMetaType::fromType<T *>())
        return value.value<T *>();
    return nullptr;
}

// The object of the first selected object met that is a node of the manager (through
// `get`), or null.
template <class T>
const T *PickedObject(const QSet<ZYLVisObject *> &selection,
                      const T *(ZYLEditTPGraphicsMgr::*get)(ZYLVisVirtualObject *) const) {
    if (selection.isEmpty())
        return nullptr;
    return (Manager()->*get)(qobject_cast<ZYLVisVirtualObject *>(*selection.begin()));
}

// Model values are edited in place through the const pointers the model hands out.
template <class T>
T *Editable(const T *object) {
    return const_cast<T *>(object);
}

// One approach/retract or feed-rate field: how it reads a course and writes to it.
struct CourseField {
    ZYLCmnUnitSpinBox *box;
    std::function<double(const ZYLTPCourse *)> read;
    std::function<void(ZYLTPCourse *, double)> write;
    // The button that puts back the procedure's own value, and that value; none for the
    // approach and retract fields.
    QPushButton *resetButton = nullptr;
    std::function<double(const ZYLTPRollLayupProcedure *)> reset;
};

} // namespace

struct ZYLTPEditCourseWidget::Data {
    Ui::ZYLTPEditCourseWidget ui;
    ZYLTPEditCourseWidget *q = nullptr;
    QStandardItemModel *coursesModel = nullptr;
    QStandardItemModel *breakRangesModel = nullptr;
    ZYLTPVisualizationOptions options;
    qint32 courseMode = Select;
    qint32 linkSubMode = None;
    bool linkMode = false;
    const ZYLTPCourse *firstPick = nullptr;
    const ZYLTPCourse *secondPick = nullptr;
    QWidget *parent = nullptr;
    QPointer<ZYLTPEditCourseCmd> command;

    // The environment the selection connection was made to, and the two connections that
    // are taken down while the other direction of the selection runs.
    QPointer<ZYLVisEnvironment> scene;
    QMetaObject::Connection sceneSelection;
    QMetaObject::Connection listSelection;
    QList<CourseField> fields;

    // --- Selection plumbing ---------------------------------------------------------------

    void ConnectScene() {
        if (scene && !sceneSelection)
            sceneSelection = connect(scene.data(), &ZYLVisEnvironment::VisualizationSelectionChanged, q,
                                     &ZYLTPEditCourseWidget::OnVisualizationSelectionChanged);
    }
    void ConnectList() {
        if (!listSelection)
            listSelection = connect(ui.listViewCourses->selectionModel(), &QItemSelectionModel::selectionChanged, q,
                                    &ZYLTPEditCourseWidget::OnCoursesListSelectionChanged);
    }

    // Takes both selection directions down for its lifetime and puts them back, the
    // environment's first and the list's second, when the outermost one ends.
    int unplugged = 0;
    struct Unplugged {
        Data *d;
        explicit Unplugged(Data *data) : d(data) {
            if (d->unplugged++ > 0)
                return;
            QObject::disconnect(std::exchange(d->listSelection, {}));
            QObject::disconnect(std::exchange(d->sceneSelection, {}));
        }
        ~Unplugged() {
            if (--d->unplugged > 0)
                return;
            d->ConnectScene();
            d->ConnectList();
        }
        Unplugged(const Unplugged &) = delete;
        Unplugged &operator=(const Unplugged &) = delete;
    };

    // --- Procedures, rows -----------------------------------------------------------------

    ZYLTPRollLayupProcedure *GetRollLayupProcedure() const {
        const ZYLTPProgram *program = Manager() ? Program() : nullptr;
        if (!program || program->GetNumProcedures() == 0)
            return nullptr;
        return qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    }

    QList<const ZYLTPCourse *> SelectedCourses() const {
        QList<const ZYLTPCourse *> courses;
        for (const QModelIndex &index : ui.listViewCourses->selectionModel()->selectedIndexes()) {
            if (const ZYLTPCourse *course = ObjectOf<ZYLTPCourse>(index))
                courses.append(course);
        }
        return courses;
    }

    void FillCoursesList() {
        coursesModel->clear();
        for (ZYLTPRollLayupProcedure *procedure : RollLayupProcedures()) {
            for (int index : procedure->GetLayingOrder()) {
                const ZYLTPCourse *course = procedure->GetCourseByIndex(index);
                const QString text = tr("Course.%1").arg(index + 1);
                auto *item = new QStandardItem(text);
                item->setToolTip(text);
                item->setData(QVariant::fromValue(course), Qt::UserRole);
                coursesModel->appendRow(item);
            }
        }
    }

    void FillBreakRangesList() {
        breakRangesModel->clear();
        for (ZYLTPRollLayupProcedure *procedure : RollLayupProcedures()) {
            for (int position = 0; position < procedure->GetNumCourses(); ++position) {
                const ZYLTPCourse *course = procedure->GetCourseByPosition(position);
                const int index = procedure->GetCourseIndex(course);
                for (int r = 0; r < course->GetNumBreakRanges(); ++r) {
                    const ZYLTPBreakRange *range = course->GetBreakRange(r);
                    ZYLSysValue length(ZYLSysValue::Length, 0.0);
                    length.SetValue(range->GetLength(), ZYLSysValue::System);
                    const QString text = tr("Course.%1|Range.%2 (%3)").arg(index).arg(r).arg(length.ToString());
                    auto *item = new QStandardItem(text);
                    item->setToolTip(text);
                    item->setData(QVariant::fromValue(range), Qt::UserRole);
                    breakRangesModel->appendRow(item);
                }
            }
        }
    }

    // Refills the list the current mode shows.
    void FillListForMode() {
        if (linkMode)
            return;
        if (courseMode == Select || courseMode == Delete)
            FillCoursesList();
        else if (courseMode == Break)
            FillBreakRangesList();
    }

    void SelectCourseInList(const ZYLTPCourse *course) {
        const QModelIndexList hits = coursesModel->match(coursesModel->index(0, 0), Qt::UserRole,
                                                         QVariant::fromValue(course), 1, Qt::MatchExactly);
        if (!hits.isEmpty() && !linkMode) {
            QItemSelectionModel *selection = ui.listViewCourses->selectionModel();
            if (courseMode == Select)
                selection->select(hits.first(), QItemSelectionModel::Select);
            else if (courseMode == Reverse)
                selection->setCurrentIndex(hits.first(), QItemSelectionModel::Select | QItemSelectionModel::Current);
        }
        if (courseMode == Select && !linkMode) {
            ShowCourseApproachRetract(course);
            ShowCourseFeedRates(course);
        }
    }

    // --- Graphics -------------------------------------------------------------------------

    ZYLTPVisualizationOptions DisplayOptions(bool breakRanges) const {
        ZYLTPVisualizationOptions options = ZYLTPEditGraphics::CourseEditOptions(*Manager(), false);
        options.SetLinkingTrajectoriesEnabled(true);
        options.SetLinkingPointsEnabled(false);
        options.SetBreakRangeEnabled(breakRanges);
        return options;
    }

    // Makes only the nodes of one kind selectable.
    void MakeSelectable(ZYLEditTPGraphicsMgr::VirtualNodeGraphicsType type) {
        ZYLVisEnvironmentBatchContext batch(Scene());
        Manager()->SetAllVirtualNodesSelectable(false);
        Manager()->SetVirtualNodesSelectable(true, Manager()->GetToolPathVirtualNodes(type));
    }

    void UpdateGraphics() {
        ZYLEditTPGraphicsMgr *manager = Manager();
        if (!manager || !Scene())
            return;
        {
            // Rebuilding drops the selected nodes from the 3-D selection; that is no choice
            // of the user, so the lists must not follow it.
            Unplugged unplugged(this);
            const bool breakMode = !linkMode && courseMode == Break;
            const auto kind = linkMode    ? ZYLEditTPGraphicsMgr::CourseLinkNodes
                              : breakMode ? ZYLEditTPGraphicsMgr::BreakRangeNodes
                                          : ZYLEditTPGraphicsMgr::CourseNodes;
            ZYLVisEnvironmentBatchContext batch(Scene());
            options = DisplayOptions(breakMode);
            // The full rebuild already gives every node of `kind` a representation made
            // with these options.
            manager->UpdateAllGraphics(options);
            if (!linkMode)
                MakeSelectable(kind);
            SelectListedCoursesInScene();
        }
        if (linkMode)
            UpdateLinkSelectables();
    }

    // Redraws only what a step on a few courses changed: their nodes and those of the links
    // that touch them get new representations (made with the options last applied), and
    // new links get nodes of their own. Nodes, selection and selectability stay, and so do
    // the scene's caches of every other node; a full rebuild of a large program would cost
    // more than the step itself.
    void UpdateNodes(const QList<const ZYLTPCourse *> &courses, const ZYLTPCourseLink *newLink = nullptr) {
        ZYLEditTPGraphicsMgr *manager = Manager();
        if (!manager || !Scene())
            return;
        Unplugged unplugged(this);
        ZYLVisEnvironmentBatchContext batch(Scene());
        for (const ZYLTPCourse *course : courses) {
            manager->UpdateVirtualNode(manager->GetCourseVirtualNode(course), options);
            for (const ZYLTPCourseLink *link : {course->GetApproachLink(), course->GetRetractLink()}) {
                if (link && link != newLink)
                    manager->UpdateVirtualNode(manager->GetCourseLinkVirtualNode(link), options);
            }
        }
        if (newLink)
            manager->AddCourseLinkVirtualNode(newLink, options);
    }

    // Gives the 3-D view the courses selected in the list again (their nodes may be new).
    void SelectListedCoursesInScene() {
        if (linkMode || courseMode != Select)
            return;
        for (const ZYLTPCourse *course : SelectedCourses())
            Scene()->AddToSelection(Manager()->GetCourseVirtualNode(course));
    }

    void InstallFilter(bool multiple) {
        if (ZYLVisEnvironment *environment = Scene())
            ZYLTPEditGraphics::SelectAnyObject(*environment, multiple);
    }
    void UpdateCourseSelectionFilter() { InstallFilter(courseMode == Select); }
    void UpdateLinkSelectionFilter() { InstallFilter(false); }

    // --- Panel ----------------------------------------------------------------------------

    void SetPanelVisible(bool visible) {
        const QList<QWidget *> panel{ui.scrollArea,       ui.ButtonOrder,     ui.Button_ApproachRetract, ui.Button_Feedrate,
                                    ui.frame_Order,      ui.frame_ApproachRetract, ui.frame_FeedRate, ui.groupBox_break,
                                    ui.groupBox_reverse, ui.groupBox_order,   ui.listViewCourses,        ui.listViewBreakRanges};
        for (QWidget *widget : panel)
            widget->setVisible(visible);
    }

    // A row of a visibility table: per course mode, 'S' shown, 'H' hidden, 'F' following
    // the flag given.
    struct Visibility {
        QWidget *widget;
        const char *byMode;
    };
    void ApplyVisibility(std::initializer_list<Visibility> table, bool flag) const {
        for (const Visibility &row : table) {
            const char rule = row.byMode[courseMode];
            row.widget->setVisible(rule == 'S' || (rule == 'F' && flag));
        }
    }

    // Lays the panel out again for the current mode, keeping a collapsed state the user
    // chose while detailed.
    void ReapplyPanel() {
        const bool expanded = ui.actionExpandCollapseALL->isChecked();
        q->MiniToolbarModeActionTriggered(ui.actionMini_toolbar_mode->isChecked());
        if (ui.actionMini_toolbar_mode->isChecked() && !expanded)
            ui.actionExpandCollapseALL->setChecked(false);
    }

    // Checking a course-mode action enters its mode; unchecking the action of the current
    // mode returns to `Select`.
    void CourseModeActionTriggered(qint32 mode, bool checked) {
        QAction *actions[] = {nullptr, ui.actionReverse, ui.actionBreak, ui.actionDelete};
        if (checked) {
            courseMode = mode;
            for (qint32 other : {Reverse, Break, Delete}) {
                if (other != mode)
                    actions[other]->setChecked(false);
            }
            UpdateGraphics();
            UpdateCourseSelectionFilter();
            if (mode == Break)
                FillBreakRangesList();
            ReapplyPanel();
            ui.listViewCourses->clearSelection();
            if (mode == Break)
                ui.listViewBreakRanges->clearSelection();
            ApplyListSelectionMode();
            return;
        }
        if (linkMode)
            return;
        if (mode == courseMode) {
            courseMode = Select;
            // Break ranges are drawn only in their own mode.
            if (mode == Break)
                UpdateGraphics();
            MakeSelectable(ZYLEditTPGraphicsMgr::CourseNodes);
            UpdateCourseSelectionFilter();
            if (mode != Break)
                ui.listViewCourses->clearSelection();
            ApplyListSelectionMode();
            q->EditModeActionTriggered(false);
        }
        if (mode == Break)
            FillListForMode();
    }

    // A pick acts on one course in `Reverse` and `Delete` mode, so the list takes one row.
    void ApplyListSelectionMode() {
        const bool single = !linkMode && (courseMode == Reverse || courseMode == Delete);
        ui.listViewCourses->setSelectionMode(single ? QAbstractItemView::SingleSelection
                                                    : QAbstractItemView::ExtendedSelection);
    }

    // --- Course operations ----------------------------------------------------------------

    bool MoveSelectedRows(bool up) {
        QModelIndexList rows = ui.listViewCourses->selectionModel()->selectedRows(0);
        if (rows.isEmpty())
            return false;
        QList<const ZYLTPCourse *> courses;
        for (const QModelIndex &row : rows)
            courses.append(ObjectOf<ZYLTPCourse>(row));
        // The order is moved only in programs made of roll layup procedures alone; the rows of
        // the last one close the list, and only they can move.
        const QList<ZYLTPRollLayupProcedure *> procedures = RollLayupProcedures();
        if (procedures.isEmpty() || procedures.size() != Program()->GetNumProcedures())
            return false;
        ZYLTPRollLayupProcedure *procedure = procedures.last();
        QList<int> order = procedure->GetLayingOrder();
        const int firstRow = coursesModel->rowCount() - int(order.size());
        QList<int> selected;
        for (const QModelIndex &row : rows)
            selected.append(row.row() - firstRow);
        std::sort(selected.begin(), selected.end());
        if (selected.first() < 0 || (up ? selected.first() == 0 : selected.last() == order.size() - 1))
            return false;
        if (!up)
            std::reverse(selected.begin(), selected.end());
        const int step = up ? -1 : 1;
        for (int row : selected)
            order.swapItemsAt(row, row + step);
        procedure->SetLayingOrder(order);
        for (int row : selected)
            coursesModel->insertRow(firstRow + row + step, coursesModel->takeRow(firstRow + row));
        for (const ZYLTPCourse *course : courses)
            SelectCourseInList(course);
        return true;
    }

    bool RunBulkOperation(QObject *button) {
        std::function<void(ZYLTPRollLayupProcedure *)> operation;
        if (button == ui.buttonReverseAllCoursesOrder)
            operation = [](ZYLTPRollLayupProcedure *procedure) { procedure->ReverseLayingOrder(); };
        else if (button == ui.buttonReverseOtherCourses)
            operation = [](ZYLTPRollLayupProcedure *procedure) { procedure->ReverseOddCourses(); };
        else if (button == ui.buttonReverseAllCourses)
            operation = [](ZYLTPRollLayupProcedure *procedure) { procedure->ReverseAllCourses(); };
        else if (button == ui.buttonBreakAllCourses)
            operation = [length = ui.doubleSpinBoxBreakLength->value()](ZYLTPRollLayupProcedure *procedure) {
                procedure->BreakAllCourses(length);
            };
        if (!operation)
            return false;
        const bool refill = button == ui.buttonReverseAllCoursesOrder || button == ui.buttonBreakAllCourses;
        bool changed = false;
        for (ZYLTPRollLayupProcedure *procedure : RollLayupProcedures()) {
            operation(procedure);
            changed = true;
            if (refill)
                FillListForMode();
        }
        return changed;
    }

    void PickCourseOperation(const QSet<ZYLVisObject *> &selection) {
        ZYLEditTPGraphicsMgr *manager = Manager();
        if (courseMode == Reverse) {
            const ZYLTPCourse *course = PickedObject(selection, &ZYLEditTPGraphicsMgr::GetCourseObject);
            if (!course)
                return;
            Editable(course)->Reverse(true);
            UpdateNodes({course});
            SelectCourseInList(course);
            Scene()->AddToSelection(manager->GetCourseVirtualNode(course));
        } else if (courseMode == Delete) {
            const ZYLTPCourse *course = PickedObject(selection, &ZYLEditTPGraphicsMgr::GetCourseObject);
            ZYLTPRollLayupProcedure *procedure = GetRollLayupProcedure();
            if (!course || !procedure || procedure->GetNumCourses() < 2)
                return;
            procedure->RemoveCourse(course);
            UpdateGraphics();
            FillListForMode();
        } else if (courseMode == Break) {
            const ZYLTPBreakRange *range = PickedObject(selection, &ZYLEditTPGraphicsMgr::GetBreakRangeObject);
            if (!range)
                return;
            const ZYLTPCourse *course = range->GetCourse();
            Editable(course)->Break(range);
            UpdateGraphics();
            FillBreakRangesList();
            SelectCourseInList(course);
        }
    }

    // --- Links ----------------------------------------------------------------------------

    void UpdateLinkSelectables() {
        ZYLEditTPGraphicsMgr *manager = Manager();
        if (!manager || !Scene())
            return;
        ZYLVisEnvironmentBatchContext batch(Scene());
        manager->SetAllVirtualNodesSelectable(false);
        ZYLTPRollLayupProcedure *procedure = GetRollLayupProcedure();
        if (!procedure)
            return;
        QList<ZYLVisVirtualObject *> nodes;
        if (linkSubMode == Link || linkSubMode == ChainLink) {
            if (firstPick) {
                for (const ZYLTPCourse *start : procedure->GetCoursesUnlinkedAtApproach()) {
                    if (start != firstPick && !procedure->IsLinkedInChain(start, firstPick))
                        nodes.append(manager->GetCourseVirtualNode(start));
                }
            } else {
                for (const ZYLTPCourse *end : procedure->GetCoursesUnlinkedAtRetract())
                    nodes.append(manager->GetCourseVirtualNode(end));
            }
        } else {
            nodes = manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseLinkNodes);
            const QList<ZYLVisVirtualObject *> ends = ProcedureLinkNodes();
            // The approach and retract links are not the user's to remove one by one.
            if (linkSubMode == Unlink) {
                for (ZYLVisVirtualObject *node : ends)
                    nodes.removeAll(node);
            }
            manager->SetVirtualNodesVisibility(linkSubMode != Unlink, ends);
        }
        nodes.removeAll(nullptr);
        manager->SetVirtualNodesSelectable(true, nodes);
    }

    // The nodes of the procedure's approach and retract links.
    QList<ZYLVisVirtualObject *> ProcedureLinkNodes() const {
        QList<ZYLVisVirtualObject *> nodes;
        if (ZYLTPRollLayupProcedure *procedure = GetRollLayupProcedure()) {
            for (const ZYLTPCourseLink *link : {static_cast<const ZYLTPCourseLink *>(procedure->GetApproachLink()),
                                                static_cast<const ZYLTPCourseLink *>(procedure->GetRetractLink())}) {
                if (ZYLVisVirtualObject *node = link ? Manager()->GetCourseLinkVirtualNode(link) : nullptr)
                    nodes.append(node);
            }
        }
        return nodes;
    }

    void UpdateLinkActions() {
        bool hasLinks = false;
        bool needsLinking = false;
        bool incomplete = false;
        for (ZYLTPRollLayupProcedure *procedure : RollLayupProcedures()) {
            const qsizetype starts = procedure->GetCoursesUnlinkedAtApproach().size();
            const qsizetype ends = procedure->GetCoursesUnlinkedAtRetract().size();
            hasLinks = hasLinks || procedure->GetNumLinks() > 0;
            needsLinking = needsLinking || starts >= 2 || ends >= 2 || (procedure->GetApproachLink() && starts == 1)
                           || (procedure->GetRetractLink() && ends == 1);
            incomplete = incomplete || starts > 0 || ends > 0;
        }
        ui.actionUnlink->setEnabled(hasLinks);
        if (!hasLinks)
            ui.actionUnlink->setChecked(false);
        ui.actionUnlinkAll->setEnabled(hasLinks);
        for (QAction *action : {ui.actionLink, ui.actionChainLink}) {
            action->setEnabled(needsLinking);
            if (!needsLinking)
                action->setChecked(false);
        }
        ui.actionAcceptLinks->setEnabled(!needsLinking);
        ui.actionEdit_mode->setEnabled(!incomplete);
        if (command)
            ZYLCmdController::GetController()->GetDialogHandler()->SetStandardButtonEnabled(command, QDialogButtonBox::Ok,
                                                                                          !incomplete);
    }

    // Enters (checked) or leaves one link sub-mode; the three actions act as one exclusive group.
    void LinkSubModeActionTriggered(qint32 subMode, bool checked) {
        if (subMode != Unlink)
            firstPick = secondPick = nullptr;
        if (!checked) {
            if (linkMode && linkSubMode == subMode) {
                linkSubMode = None;
                UpdateLinkSelectables();
            }
            return;
        }
        linkSubMode = subMode;
        for (QAction *action : {ui.actionUnlink, ui.actionLink, ui.actionChainLink}) {
            if (action != SubModeAction(subMode))
                action->setChecked(false);
        }
        UpdateLinkSelectables();
    }
    QAction *SubModeAction(qint32 subMode) const {
        return subMode == Unlink ? ui.actionUnlink : subMode == Link ? ui.actionLink : ui.actionChainLink;
    }

    void PickLinkOperation(const QSet<ZYLVisObject *> &selection) {
        ZYLTPRollLayupProcedure *procedure = GetRollLayupProcedure();
        if (!procedure)
            return;
        if (linkSubMode == Unlink) {
            const ZYLTPCourseLink *link = PickedObject(selection, &ZYLEditTPGraphicsMgr::GetCourseLinkObject);
            if (!link)
                return;
            procedure->RemoveLink(link);
            UpdateLinkActions();
            UpdateGraphics();
            return;
        }
        if (linkSubMode != Link && linkSubMode != ChainLink)
            return;
        const ZYLTPCourse *course = PickedObject(selection, &ZYLEditTPGraphicsMgr::GetCourseObject);
        if (!course)
            return;
        if (!firstPick) {
            firstPick = course;
        } else {
            secondPick = course;
            // The picks are cleared first so that a refused link leaves no half-made pick
            // behind; unchecking a sub-mode action in UpdateLinkActions clears them too.
            const ZYLTPCourse *from = std::exchange(firstPick, nullptr);
            const ZYLTPCourse *to = std::exchange(secondPick, nullptr);
            const ZYLTPCourseLink *link = procedure->LinkCourses(from, to, nullptr);
            UpdateLinkActions();
            if (linkSubMode == ChainLink && !to->GetRetractLink())
                firstPick = to;
            UpdateNodes({}, link);
            // The highlight shows the course a link will start from, when there is one.
            if (!firstPick)
                Scene()->SetVisualizationSelection({});
        }
        UpdateLinkSelectables();
    }

    void AcceptLinks() {
        bool created = false;
        for (ZYLTPRollLayupProcedure *procedure : RollLayupProcedures()) {
            const QList<const ZYLTPCourse *> starts = procedure->GetCoursesUnlinkedAtApproach();
            const QList<const ZYLTPCourse *> ends = procedure->GetCoursesUnlinkedAtRetract();
            if (starts.size() > 1) {
                QMessageBox::critical(q, tr("Error"), tr("WrongNumStarts"), QMessageBox::Ok);
                return;
            }
            if (starts.size() == 1 && !procedure->GetApproachLink()) {
                procedure->LinkCourses(nullptr, starts.first(), nullptr);
                created = true;
            }
            if (ends.size() > 1) {
                QMessageBox::critical(q, tr("Error"), tr("WrongNumEnds"), QMessageBox::Ok);
                return;
            }
            if (ends.size() == 1 && !procedure->GetRetractLink()) {
                procedure->LinkCourses(ends.first(), nullptr, nullptr);
                created = true;
            }
        }
        if (created) {
            UpdateGraphics();
            UpdateLinkActions();
        }
    }

    // --- Values ---------------------------------------------------------------------------

    void ShowFields(const ZYLTPCourse *course, int from, int to) {
        if (!course)
            return;
        for (int f = from; f < to; ++f) {
            const QSignalBlocker blocker(fields[f].box);
            fields[f].box->setValue(fields[f].read(course));
        }
    }
    void ShowCourseApproachRetract(const ZYLTPCourse *course) { ShowFields(course, 0, 6); }
    void ShowCourseFeedRates(const ZYLTPCourse *course) { ShowFields(course, 6, 9); }

    // The field a spin box or reset button belongs to, or null.
    const CourseField *FieldOf(const QObject *sender) const {
        for (const CourseField &field : fields) {
            if (sender && (field.box == sender || field.resetButton == sender))
                return &field;
        }
        return nullptr;
    }

    void ShowInternalError(const ZYLSysException &error) {
        QMessageBox::critical(q, tr("Error"),
                              tr("An internal error occurred. The message was: %1").arg(error.GetMessage(), 0, QLatin1Char(' ')),
                              QMessageBox::Ok);
    }

    // Writes the value to the selected courses in selection order and stops at the first
    // refusal: the courses before it keep the new value. Returns the courses written.
    QList<const ZYLTPCourse *> WriteField(const CourseField &field, double value) {
        QList<const ZYLTPCourse *> written;
        for (const ZYLTPCourse *course : SelectedCourses()) {
            try {
                field.write(Editable(course), value);
                written.append(course);
            } catch (const ZYLSysException &error) {
                ShowInternalError(error);
                break;
            }
        }
        return written;
    }

    void BuildFields() {
        const auto approach = [](const ZYLTPCourse *course) { return Editable(course->GetApproachTrajectory()); };
        const auto retract = [](const ZYLTPCourse *course) { return Editable(course->GetRetractTrajectory()); };
        fields = {
            {ui.doubleSpinBoxApproachAngle, [=](const ZYLTPCourse *c) { return approach(c)->GetAngle(); },
             [=](ZYLTPCourse *c, double v) { approach(c)->SetAngle(v); }, nullptr, {}},
            {ui.doubleSpinBoxApproachDistance, [=](const ZYLTPCourse *c) { return approach(c)->GetLength(); },
             [=](ZYLTPCourse *c, double v) { approach(c)->SetLength(v); }, nullptr, {}},
            {ui.doubleSpinBoxRollInDistance, [](const ZYLTPCourse *c) { return c->GetRollIn(); },
             [](ZYLTPCourse *c, double v) { c->SetRollIn(v); }, nullptr, {}},
            {ui.doubleSpinBoxRetractAngle, [=](const ZYLTPCourse *c) { return retract(c)->GetAngle(); },
             [=](ZYLTPCourse *c, double v) { retract(c)->SetAngle(v); }, nullptr, {}},
            {ui.doubleSpinBoxRetractDistance, [=](const ZYLTPCourse *c) { return retract(c)->GetLength(); },
             [=](ZYLTPCourse *c, double v) { retract(c)->SetLength(v); }, nullptr, {}},
            {ui.doubleSpinBoxRollOutDistance, [](const ZYLTPCourse *c) { return c->GetRollOut(); },
             [](ZYLTPCourse *c, double v) { c->SetRollOut(v); }, nullptr, {}},
            {ui.doubleSpinBoxLayingFeedRate, [](const ZYLTPCourse *c) { return c->GetLayingFeedRate(); },
             [](ZYLTPCourse *c, double v) { c->SetLayingFeedRate(v); }, ui.pushButton_ResetLayingFeedRate,
             [](const ZYLTPRollLayupProcedure *p) { return p->GetLayingFeedrate(); }},
            {ui.doubleSpinBoxAddingFeedRate, [](const ZYLTPCourse *c) { return c->GetAddFeedRate(); },
             [](ZYLTPCourse *c, double v) { c->SetAddFeedRate(v); }, ui.pushButton_ResetAddingFeedRate,
             [](const ZYLTPRollLayupProcedure *p) { return p->GetAddingFeedrate(); }},
            {ui.doubleSpinBoxCuttingFeedRate, [](const ZYLTPCourse *c) { return c->GetCutFeedRate(); },
             [](ZYLTPCourse *c, double v) { c->SetCutFeedRate(v); }, ui.pushButton_ResetCuttingFeedRate,
             [](const ZYLTPRollLayupProcedure *p) { return p->GetCuttingFeedrate(); }},
        };
    }
};

ZYLTPEditCourseWidget::ZYLTPEditCourseWidget(QWidget *parent, ZYLTPEditCourseCmd *command)
    : QMainWindow(parent), d(QSharedPointer<Data>::create()) {
    ZYLTPMetaTypes::RegisterCourseTypes();
    d->ui.setupUi(this);
    // A main window is a window of its own unless told otherwise; this one lives in the
    // command frame.
    setWindowFlags(Qt::Widget);
    d->q = this;
    d->parent = parent;
    d->command = command;
    d->BuildFields();

    for (QPushButton *header : {d->ui.ButtonOrder, d->ui.Button_ApproachRetract, d->ui.Button_Feedrate, d->ui.Button_Process})
        ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(header);
    d->scene = Scene();
    if (d->scene) {
        ZYLVisEnvironmentBatchContext batch(d->scene);
        Manager()->SetAllVirtualNodesSelectable(false);
        d->options = d->DisplayOptions(false);
        Manager()->UpdateAllGraphics(ZYLEditTPGraphicsMgr::CourseNodes, d->options);
        Manager()->SetVirtualNodesSelectable(true, Manager()->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes));
        d->UpdateCourseSelectionFilter();
    }
    d->coursesModel = new QStandardItemModel(this);
    d->ui.listViewCourses->setModel(d->coursesModel);
    d->breakRangesModel = new QStandardItemModel(this);
    d->ui.listViewBreakRanges->setModel(d->breakRangesModel);
    d->ui.Button_Process->hide();
    d->ui.frame_Process->hide();
    d->ui.scrollArea->setWidget(d->ui.scrollAreaWidgetContents);
    for (QWidget *widget : QList<QWidget *>{d->ui.groupBox_reverse, d->ui.groupBox_break, d->ui.listViewBreakRanges})
        widget->hide();
    d->ui.actionResetlink->setVisible(false);

    d->InstallFilter(true);
    d->FillListForMode();
    setupConnections();
    if (d->coursesModel->rowCount() > 0)
        d->ui.listViewCourses->setCurrentIndex(d->coursesModel->index(0, 0));
}

ZYLTPEditCourseWidget::~ZYLTPEditCourseWidget() {
    // The lists and the scene must not reach the slots while the children go down after `d`.
    QObject::disconnect(d->listSelection);
    QObject::disconnect(d->sceneSelection);
    d->ui.listViewCourses->selectionModel()->disconnect(this);
    d->ui.listViewBreakRanges->selectionModel()->disconnect(this);
    d.reset();
}

void ZYLTPEditCourseWidget::setupConnections() {
    const Ui::ZYLTPEditCourseWidget &ui = d->ui;
    connect(ui.actionReverse, &QAction::toggled, this, &ZYLTPEditCourseWidget::ReverseActionTriggered);
    connect(ui.actionBreak, &QAction::toggled, this, &ZYLTPEditCourseWidget::BreakActionTriggered);
    connect(ui.actionMini_toolbar_mode, &QAction::toggled, this, &ZYLTPEditCourseWidget::MiniToolbarModeActionTriggered);
    connect(ui.actionExpandCollapseALL, &QAction::toggled, this, &ZYLTPEditCourseWidget::ExpandCollapseAllActionTriggered);
    connect(ui.actionDelete, &QAction::toggled, this, &ZYLTPEditCourseWidget::DeleteActionTriggered);
    connect(ui.actionEdit_mode, &QAction::toggled, this, &ZYLTPEditCourseWidget::EditModeActionTriggered);
    connect(ui.actionEdit_mode, &QAction::toggled, ui.toolbar_CourseMode, &QWidget::setDisabled);
    connect(ui.actionEdit_mode, &QAction::toggled, ui.toolbar_LinkMode, &QWidget::setEnabled);
    connect(ui.actionUnlink, &QAction::toggled, this, &ZYLTPEditCourseWidget::UnlinkActionTriggered);
    connect(ui.actionUnlinkAll, &QAction::triggered, this, &ZYLTPEditCourseWidget::UnlinkAllActionTriggered);
    connect(ui.actionLink, &QAction::toggled, this, &ZYLTPEditCourseWidget::LinkActionTriggered);
    connect(ui.actionChainLink, &QAction::toggled, this, &ZYLTPEditCourseWidget::ChainLinkActionTriggered);
    connect(ui.actionAcceptLinks, &QAction::triggered, this, &ZYLTPEditCourseWidget::AcceptLinksActionTriggered);

    connect(ui.ButtonOrder, &QPushButton::clicked, this, &ZYLTPEditCourseWidget::OnButtonOrderClicked);
    connect(ui.Button_ApproachRetract, &QPushButton::toggled, ui.frame_ApproachRetract, &QWidget::setVisible);
    connect(ui.Button_Feedrate, &QPushButton::toggled, ui.frame_FeedRate, &QWidget::setVisible);
    connect(ui.Button_Process, &QPushButton::toggled, ui.frame_Process, &QWidget::setVisible);

    for (const CourseField &field : d->fields) {
        connect(field.box, &QDoubleSpinBox::valueChanged, this, &ZYLTPEditCourseWidget::OnDoubleSpinBoxValueChanged);
        if (field.resetButton)
            connect(field.resetButton, &QPushButton::clicked, this, &ZYLTPEditCourseWidget::OnResetButtonClicked);
    }
    for (QPushButton *button : {ui.buttonReverseAllCoursesOrder, ui.buttonReverseOtherCourses, ui.buttonReverseAllCourses,
                                ui.buttonBreakAllCourses})
        connect(button, &QPushButton::clicked, this, &ZYLTPEditCourseWidget::OnCoursesOperationButtonClicked);
    connect(ui.buttonUp, &QPushButton::clicked, this, &ZYLTPEditCourseWidget::OnUpDownButtonClicked);
    connect(ui.buttonDown, &QPushButton::clicked, this, &ZYLTPEditCourseWidget::OnUpDownButtonClicked);

    d->ConnectList();
    connect(ui.listViewBreakRanges->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZYLTPEditCourseWidget::OnBreakRangesListSelectionChanged);
    connect(ui.listViewCourses->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ZYLTPEditCourseWidget::OnCoursesListCurrentChanged);
    d->ConnectScene();
}

void ZYLTPEditCourseWidget::UpdateSelectionMode(bool) {}

void ZYLTPEditCourseWidget::OnFeatureSelectionChanged(QSet<ZYLFeatObject *>, QSet<ZYLFeatObject *>) {}

void ZYLTPEditCourseWidget::ReverseActionTriggered(bool bCheck) {
    d->CourseModeActionTriggered(Reverse, bCheck);
}

void ZYLTPEditCourseWidget::BreakActionTriggered(bool checked) {
    d->CourseModeActionTriggered(Break, checked);
}

void ZYLTPEditCourseWidget::MiniToolbarModeActionTriggered(bool detailed) {
    QAction *expand = d->ui.actionExpandCollapseALL;
    if (detailed) {
        expand->setEnabled(true);
        expand->setChecked(true);
        ExpandCollapseAllActionTriggered(true);
    } else {
        expand->setChecked(false);
        ExpandCollapseAllActionTriggered(false);
        expand->setEnabled(false);
    }
    if (d->linkMode || !detailed) {
        d->SetPanelVisible(false);
        return;
    }
    d->ui.scrollArea->show();
    d->ui.ButtonOrder->show();
    d->ui.Button_ApproachRetract->setVisible(d->courseMode == Select);
    d->ui.Button_Feedrate->setVisible(d->courseMode == Select);
}

void ZYLTPEditCourseWidget::ExpandCollapseAllActionTriggered(bool expand) {
    if (d->linkMode) {
        d->SetPanelVisible(false);
        return;
    }
    const Ui::ZYLTPEditCourseWidget &ui = d->ui;
    ui.scrollArea->show();
    for (QPushButton *header : {ui.ButtonOrder, ui.Button_ApproachRetract, ui.Button_Feedrate})
        header->setChecked(expand);
    d->ApplyVisibility({{ui.ButtonOrder, "SSSS"},
                        {ui.Button_ApproachRetract, "SHHH"},
                        {ui.Button_Feedrate, "SHHH"},
                        {ui.frame_Order, "FFFS"},
                        {ui.frame_ApproachRetract, "FHHH"},
                        {ui.frame_FeedRate, "FHHH"},
                        {ui.groupBox_order, "FHHH"},
                        {ui.groupBox_reverse, "HFHH"},
                        {ui.groupBox_break, "HHFH"},
                        {ui.listViewBreakRanges, "HHFH"},
                        {ui.listViewCourses, "FFHF"}},
                       expand);
}

void ZYLTPEditCourseWidget::DeleteActionTriggered(bool checked) {
    d->CourseModeActionTriggered(Delete, checked);
}

void ZYLTPEditCourseWidget::OnVisualizationSelectionChanged(QSet<ZYLVisObject *> added, QSet<ZYLVisObject *>) {
    ZYLVisEnvironment *scene = Scene();
    if (!scene || !Manager())
        return;
    QSet<ZYLVisObject *> selection = scene->GetVisualizationSelection();
    if (selection.isEmpty())
        return;
    // A pick acts on the object just picked, once: the rest of the selection is older, and
    // an object leaving the selection (a row deselected in the list) is no pick at all.
    const bool picking = d->linkMode || d->courseMode != Select;
    if (picking) {
        const auto picked = std::find_if(added.cbegin(), added.cend(),
                                         [&selection](ZYLVisObject *object) { return selection.contains(object); });
        if (picked == added.cend())
            return;
        selection = {*picked};
    }
    Data::Unplugged unplugged(d.data());
    try {
        if (d->linkMode) {
            d->PickLinkOperation(selection);
        } else if (picking) {
            d->PickCourseOperation(selection);
        } else {
            d->ui.listViewCourses->clearSelection();
            for (ZYLVisObject *object : scene->GetVisualizationSelection()) {
                if (const ZYLTPCourse *course = Manager()->GetCourseObject(qobject_cast<ZYLVisVirtualObject *>(object)))
                    d->SelectCourseInList(course);
            }
        }
    } catch (const ZYLSysException &) {
        qDebug("Exception fired in OnVisualizationSelectionChanged.");
    }
}

void ZYLTPEditCourseWidget::OnCoursesListSelectionChanged(const QItemSelection &selected, const QItemSelection &deselected) {
    ZYLVisEnvironment *scene = Scene();
    if (!scene || !Manager())
        return;
    // In Select mode the list follows the 3-D selection once all rows have reached it, not
    // after each row: selecting hundreds of rows would otherwise rebuild the list as often.
    const bool follow = !d->linkMode && d->courseMode == Select;
    if (follow)
        QObject::disconnect(std::exchange(d->sceneSelection, {}));
    for (const QModelIndex &index : selected.indexes())
        scene->AddToSelection(Manager()->GetCourseVirtualNode(ObjectOf<ZYLTPCourse>(index)));
    for (const QModelIndex &index : deselected.indexes())
        scene->RemoveFromSelection(Manager()->GetCourseVirtualNode(ObjectOf<ZYLTPCourse>(index)));
    if (follow) {
        d->ConnectScene();
        OnVisualizationSelectionChanged({}, {});
    }
}

void ZYLTPEditCourseWidget::OnBreakRangesListSelectionChanged(const QItemSelection &selected,
                                                              const QItemSelection &deselected) {
    ZYLVisEnvironment *scene = Scene();
    if (!scene || !Manager())
        return;
    for (const QModelIndex &index : selected.indexes())
        scene->AddToSelection(Manager()->GetBreakRangeVirtualNode(ObjectOf<ZYLTPBreakRange>(index)));
    for (const QModelIndex &index : deselected.indexes())
        scene->RemoveFromSelection(Manager()->GetBreakRangeVirtualNode(ObjectOf<ZYLTPBreakRange>(index)));
}

void ZYLTPEditCourseWidget::OnCoursesListCurrentChanged(const QModelIndex &current, const QModelIndex &) {
    const ZYLTPCourse *course = ObjectOf<ZYLTPCourse>(current);
    d->ShowCourseApproachRetract(course);
    d->ShowCourseFeedRates(course);
}

void ZYLTPEditCourseWidget::EditModeActionTriggered(bool on) {
    const Ui::ZYLTPEditCourseWidget &ui = d->ui;
    d->linkMode = on;
    d->courseMode = Select;
    d->linkSubMode = None;
    if (on) {
        for (QAction *action : {ui.actionReverse, ui.actionDelete, ui.actionBreak})
            action->setChecked(false);
        d->ReapplyPanel();
        ui.listViewCourses->clearSelection();
        ui.listViewBreakRanges->clearSelection();
        d->UpdateGraphics();
        d->UpdateLinkSelectionFilter();
        ui.actionUnlink->setChecked(true);
        return;
    }
    d->FillCoursesList();
    for (QAction *action : {ui.actionUnlink, ui.actionLink, ui.actionChainLink})
        action->setChecked(false);
    d->ReapplyPanel();
    d->ApplyListSelectionMode();
    if (!Scene())
        return;
    ZYLVisEnvironmentBatchContext batch(Scene());
    // Link mode hides the approach and retract links while unlinking; they belong back.
    Manager()->SetVirtualNodesVisibility(true, d->ProcedureLinkNodes());
    d->MakeSelectable(ZYLEditTPGraphicsMgr::CourseNodes);
    d->UpdateCourseSelectionFilter();
}

void ZYLTPEditCourseWidget::UnlinkActionTriggered(bool checked) {
    d->LinkSubModeActionTriggered(Unlink, checked);
}

void ZYLTPEditCourseWidget::UnlinkAllActionTriggered() {
    ZYLTPRollLayupProcedure *procedure = d->GetRollLayupProcedure();
    if (procedure)
        procedure->RemoveAllLinks();
    d->UpdateLinkActions();
    if (procedure)
        d->UpdateGraphics();
}

void ZYLTPEditCourseWidget::LinkActionTriggered(bool checked) {
    d->LinkSubModeActionTriggered(Link, checked);
}

void ZYLTPEditCourseWidget::ChainLinkActionTriggered(bool checked) {
    d->LinkSubModeActionTriggered(ChainLink, checked);
}

void ZYLTPEditCourseWidget::AcceptLinksActionTriggered() {
    d->AcceptLinks();
}

void ZYLTPEditCourseWidget::OnResetButtonClicked() {
    const CourseField *field = d->FieldOf(sender());
    const QModelIndexList selected = d->ui.listViewCourses->selectionModel()->selectedIndexes();
    if (!field || !field->reset || selected.isEmpty())
        return;
    const ZYLTPCourse *course = ObjectOf<ZYLTPCourse>(selected.first());
    if (course && course->GetProcedure())
        field->box->setValue(field->reset(course->GetProcedure()));
}

void ZYLTPEditCourseWidget::OnDoubleSpinBoxValueChanged(double value) {
    const CourseField *field = d->FieldOf(sender());
    if (!field)
        return;
    d->UpdateNodes(d->WriteField(*field, value));
}

void ZYLTPEditCourseWidget::OnCoursesOperationButtonClicked() {
    bool changed = false;
    try {
        changed = d->RunBulkOperation(sender());
    } catch (const ZYLSysException &error) {
        d->ShowInternalError(error);
    }
    if (changed)
        d->UpdateGraphics();
}

void ZYLTPEditCourseWidget::OnUpDownButtonClicked() {
    if (d->MoveSelectedRows(sender() == d->ui.buttonUp))
        d->UpdateGraphics();
}

void ZYLTPEditCourseWidget::OnButtonOrderClicked(bool checked) {
    if (d->linkMode)
        return;
    const Ui::ZYLTPEditCourseWidget &ui = d->ui;
    d->ApplyVisibility({{ui.frame_Order, "FFFF"},
                        {ui.listViewBreakRanges, "HHFH"},
                        {ui.listViewCourses, "FFHF"},
                        {ui.groupBox_order, "FHHH"},
                        {ui.groupBox_reverse, "HFHH"},
                        {ui.groupBox_break, "HHFH"}},
                       checked);
}

// The slots carry sets of pointers to host classes the header only declares; the meta-object
// code needs them complete, as they are here.
#include "moc_ZYLTPEditCourseWidget.cpp"
