// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditLinkingPointsCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditLinkingPointsWidget.h"
#include "ZYLTPEditGraphics.h"
#include "ZYLTPLinkEdit.h"

#include "ZYLSysException.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisVirtualObject.h"

#include <QMessageBox>
#include <QTimer>

ZYLTPEditLinkingPointsCmd::ZYLTPEditLinkingPointsCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {
    SetDialogShowDelay(NeverShow);
}

ZYLTPEditLinkingPointsCmd::~ZYLTPEditLinkingPointsCmd() = default;

void ZYLTPEditLinkingPointsCmd::GainFocus() {
    ShowLinksGraphics();
    if (ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment()) {
        connect(environment, &ZYLVisEnvironment::VisualizationSelectionChanged, this,
                &ZYLTPEditLinkingPointsCmd::OnVisualizationSelectionChanged, Qt::UniqueConnection);
        ZYLTPEditGraphics::SelectAnyObject(*environment, true);
        environment->SetVisualizationSelection({});
        environment->SetPreSelectedObjects({});
        environment->SetMouseInteraction(ZYLVisEnvironment::DeliverClicks | ZYLVisEnvironment::DeliverMoves |
                                         ZYLVisEnvironment::SnapMousePoint);
        environment->SetMouseSnapGeometryTypes(ZYLVisEnvironment::SnapAll);
    }
    ZYLCmdDialogCommand::GainFocus();
}

bool ZYLTPEditLinkingPointsCmd::Cleanup() {
    // After a cancel the edited link may be gone with the rollback; the rebuild below changes
    // the 3-D selection, which neither the command nor the panel may follow any more.
    if (ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment())
        disconnect(environment, nullptr, this, nullptr);
    if (auto *widget = qobject_cast<ZYLTPEditLinkingPointsWidget *>(GetContentWidget()))
        widget->Detach();
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

QWidget *ZYLTPEditLinkingPointsCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPEditLinkingPointsWidget(parent);
}

void ZYLTPEditLinkingPointsCmd::ShowLinksGraphics() {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    if (!manager)
        return;
    const ZYLVisEnvironmentBatchContext batch(manager->GetEditToolPathVisEnvironment());
    ZYLTPLinkEdit::ShowLinks(ZYLTPVisualizationOptions::ToolAxis);
    for (const ZYLTPCourseLink *link : manager->GetStartEndLinks())
        if (ZYLVisVirtualObject *node = manager->GetCourseLinkVirtualNode(link))
            node->SetVisibility(false);
}

void ZYLTPEditLinkingPointsCmd::RestoreGraphics() {
    ZYLTPLinkEdit::RestoreGraphics();
}

void ZYLTPEditLinkingPointsCmd::OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &,
                                                                const QSet<ZYLVisObject *> &) {
    ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment();
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    if (!environment || !manager)
        return;
    const QSet<ZYLVisObject *> selection = environment->GetVisualizationSelection();
    if (selection.size() != 1)
        return;
    const ZYLTPCourseLink *link = manager->GetCourseLinkObject(qobject_cast<ZYLVisVirtualObject *>(*selection.begin()));
    if (!link)
        return;
    disconnect(environment, &ZYLVisEnvironment::VisualizationSelectionChanged, this,
               &ZYLTPEditLinkingPointsCmd::OnVisualizationSelectionChanged);
    // The link is handed over once every receiver of this selection signal has run.
    QTimer::singleShot(1, this, [this, link] {
        auto *widget = qobject_cast<ZYLTPEditLinkingPointsWidget *>(GetContentWidget());
        if (!widget || !IsRunning())
            return;
        try {
            widget->SetCourseLink(link);
        } catch (const ZYLSysException &error) {
            QMessageBox::critical(widget, ZYLTPEditLinkingPointsWidget::tr("Error"), error.GetMessage());
            return;
        }
        ShowDialog();
    });
}
