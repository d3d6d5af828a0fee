// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditCourseCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditCourseWidget.h"
#include "ZYLTPEditGraphics.h"

#include "ZYLVisEnvironment.h"

ZYLTPEditCourseCmd::ZYLTPEditCourseCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPEditCourseCmd::~ZYLTPEditCourseCmd() = default;

QWidget *ZYLTPEditCourseCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPEditCourseWidget(parent, this);
}

void ZYLTPEditCourseCmd::Commit() {
    RestoreGraphics();
    ZYLCmdDialogCommand::Commit();
}

bool ZYLTPEditCourseCmd::Cleanup() {
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

void ZYLTPEditCourseCmd::RestoreGraphics() {
    ZYLTPEditGraphics::Rebuild([](ZYLEditTPGraphicsMgr &manager, ZYLVisEnvironment &environment) {
        manager.SetAllVirtualNodesSelectable(false);
        environment.SetSelectionFilter(nullptr);
    });
}
