// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditCourseLayingPointsCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditCourseLayingPointsWidget.h"
#include "ZYLTPEditGraphics.h"

#include "ZYLTPCourse.h"
#include "ZYLTPProcedure.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisMouseContext.h"
#include "ZYLVisMouseEvent.h"
#include "ZYLVisObject.h"
#include "ZYLVisVirtualObject.h"

#include <QPointer>
#include <QTimer>

namespace {

ZYLTPEditCourseLayingPointsWidget *Panel(const ZYLCmdDialogCommand *command) {
    return qobject_cast<ZYLTPEditCourseLayingPointsWidget *>(command->GetContentWidget());
}

} // namespace

ZYLTPEditCourseLayingPointsCmd::ZYLTPEditCourseLayingPointsCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {
    SetDialogShowDelay(NeverShow);
}

ZYLTPEditCourseLayingPointsCmd::~ZYLTPEditCourseLayingPointsCmd() = default;

QWidget *ZYLTPEditCourseLayingPointsCmd::CreateContentWidget(QWidget *parent) {
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPEditCourseLayingPointsWidget(GetVisEnvironment(), parent);
}

ZYLVisEnvironment *ZYLTPEditCourseLayingPointsCmd::GetVisEnvironment() {
    return ZYLTPEditGraphics::GetEditEnvironment();
}

void ZYLTPEditCourseLayingPointsCmd::GainFocus() {
    if (ZYLVisEnvironment *environment = GetVisEnvironment()) {
        connect(environment, &ZYLVisEnvironment::VisualizationSelectionChanged, this,
                &ZYLTPEditCourseLayingPointsCmd::OnVisualizationSelectionChanged);
        connect(environment, &ZYLVisEnvironment::MouseEvent, this, &ZYLTPEditCourseLayingPointsCmd::OnMouseEvent);
    }
    PrepareGraphics();
    ZYLCmdDialogCommand::GainFocus();
}

void ZYLTPEditCourseLayingPointsCmd::PrepareGraphics() {
    ZYLVisEnvironment *environment = GetVisEnvironment();
    if (!environment)
        return;
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    ZYLVisEnvironmentBatchContext batch(environment);
    manager->UpdateAllGraphics(ZYLEditTPGraphicsMgr::CourseNodes, ZYLTPEditGraphics::CourseEditOptions(*manager, true));
    const QList<ZYLVisVirtualObject *> courses = manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes);
    manager->SetVirtualNodesVisibility(true, courses);
    manager->SetVirtualNodesSelectable(true, courses);
    manager->SetVirtualNodesVisibility(false, manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseLinkNodes));
}

const ZYLTPCourse *ZYLTPEditCourseLayingPointsCmd::GetCourseObjectFromVisualizationSelection() {
    ZYLVisEnvironment *environment = GetVisEnvironment();
    if (!environment)
        return nullptr;
    const QSet<ZYLVisObject *> selection = environment->GetVisualizationSelection();
    if (selection.size() != 1)
        return nullptr;
    return ZYLEditTPGraphicsMgr::GetManager()->GetCourseObject(qobject_cast<ZYLVisVirtualObject *>(*selection.begin()));
}

void ZYLTPEditCourseLayingPointsCmd::OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &,
                                                                     const QSet<ZYLVisObject *> &) {
    const ZYLTPCourse *course = GetCourseObjectFromVisualizationSelection();
    if (!course || !course->GetProcedure() ||
        course->GetProcedure()->GetProgram() != ZYLEditTPGraphicsMgr::GetManager()->GetToolPathProgram())
        return;
    ZYLVisEnvironment *environment = GetVisEnvironment();
    if (!environment)
        return;
    // Only the first valid pick is taken.
    disconnect(environment, &ZYLVisEnvironment::VisualizationSelectionChanged, this,
               &ZYLTPEditCourseLayingPointsCmd::OnVisualizationSelectionChanged);
    // The panel is set up once every receiver of this selection change has run.
    QTimer::singleShot(1, this, [this, environment = QPointer<ZYLVisEnvironment>(environment), course] {
        if (!environment)
            return;
        ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
        ZYLVisEnvironmentBatchContext batch(environment);
        manager->SetVirtualNodesVisibility(false, manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes));
        environment->SetMouseInteraction(ZYLVisEnvironment::DeliverClicks | ZYLVisEnvironment::DeliverMoves);
        environment->SetVisualizationSelection({});
        environment->SetPreSelectedObjects({});
        if (ZYLTPEditCourseLayingPointsWidget *panel = Panel(this)) {
            panel->SetCourse(course);
            ShowDialog();
        }
    });
}

void ZYLTPEditCourseLayingPointsCmd::OnMouseEvent(const ZYLVisMouseEvent &event) {
    switch (event.GetActionType()) {
    case ZYLVisMouseEvent::Clicked:
        MouseClicked(event.GetContext());
        break;
    case ZYLVisMouseEvent::Moved:
        MouseMoved(event.GetContext());
        break;
    case ZYLVisMouseEvent::Entered:
        MouseEntered(event.GetContext().GetVisObject());
        break;
    case ZYLVisMouseEvent::Left:
        MouseExited(event.GetContext().GetVisObject());
        break;
    }
}

void ZYLTPEditCourseLayingPointsCmd::MouseClicked(const ZYLVisMouseContext &context) {
    ZYLTPEditCourseLayingPointsWidget *panel = Panel(this);
    if (!panel)
        return;
    const int index = panel->PickPointIndex(context.GetMousePoint(), context.GetViewDirection());
    if (index != -1)
        panel->TogglePointSelection(index, true);
}

void ZYLTPEditCourseLayingPointsCmd::MouseMoved(const ZYLVisMouseContext &context) {
    ZYLTPEditCourseLayingPointsWidget *panel = Panel(this);
    if (!panel)
        return;
    const int index = panel->PickPointIndex(context.GetMousePoint(), context.GetViewDirection());
    if (index != -1)
        panel->PreviewPoint(index);
    else
        panel->ClearPointPreview();
}

void ZYLTPEditCourseLayingPointsCmd::MouseEntered(const ZYLVisObject *) {}

void ZYLTPEditCourseLayingPointsCmd::MouseExited(const ZYLVisObject *) {
    if (ZYLTPEditCourseLayingPointsWidget *panel = Panel(this))
        panel->ClearPointPreview();
}

void ZYLTPEditCourseLayingPointsCmd::Commit() {
    if (ZYLTPEditCourseLayingPointsWidget *panel = Panel(this))
        panel->Finish(true);
    ZYLCmdDialogCommand::Commit();
}

bool ZYLTPEditCourseLayingPointsCmd::Cleanup() {
    if (ZYLTPEditCourseLayingPointsWidget *panel = Panel(this))
        panel->RemoveEditGraphics();
    if (ZYLVisEnvironment *environment = GetVisEnvironment()) {
        environment->SetMouseInteraction(ZYLVisEnvironment::NoMouseInteraction);
        disconnect(environment, nullptr, this, nullptr);
    }
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

void ZYLTPEditCourseLayingPointsCmd::RestoreGraphics() {
    ZYLTPEditGraphics::Rebuild([](ZYLEditTPGraphicsMgr &manager, ZYLVisEnvironment &) {
        manager.SetAllVirtualNodesSelectable(false);
        manager.UpdateUISettingGraphics();
    });
}
