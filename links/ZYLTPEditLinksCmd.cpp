// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditLinksCmd.h"

#include "ZYLTPEditLinksWidget.h"
#include "ZYLTPLinkEdit.h"

ZYLTPEditLinksCmd::ZYLTPEditLinksCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPEditLinksCmd::~ZYLTPEditLinksCmd() = default;

void ZYLTPEditLinksCmd::GainFocus() {
    ShowLinksGraphics();
    ZYLCmdDialogCommand::GainFocus();
}

void ZYLTPEditLinksCmd::Commit() {
    if (auto *widget = qobject_cast<ZYLTPEditLinksWidget *>(GetContentWidget()))
        widget->ApplyPointsDetail();
    ZYLCmdDialogCommand::Commit();
}

bool ZYLTPEditLinksCmd::Cleanup() {
    // After a cancel the rows may hold links that the rollback has deleted; the rebuild below
    // changes the 3-D selection, which the panel must no longer mirror.
    if (auto *widget = qobject_cast<ZYLTPEditLinksWidget *>(GetContentWidget()))
        widget->Detach();
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

QWidget *ZYLTPEditLinksCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPEditLinksWidget(parent);
}

void ZYLTPEditLinksCmd::ShowLinksGraphics() {
    ZYLTPLinkEdit::ShowLinks(ZYLTPVisualizationOptions::NoVectors);
}

void ZYLTPEditLinksCmd::RestoreGraphics() {
    ZYLTPLinkEdit::RestoreGraphics();
}
