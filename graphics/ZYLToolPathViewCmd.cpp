// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLToolPathViewCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditUISettings.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"

#include <QStringList>

namespace {

using ModeSetter = void (ZYLTPEditUISettings::*)(const QString &);

struct ModeGroup {
    QStringList modes;
    ModeSetter setter;
};

// The view modes by the setting they are stored in, in the order they are tried.
const QList<ModeGroup> &ModeGroups() {
    static const QList<ModeGroup> groups{
        {{QStringLiteral("ViewCourse"), QStringLiteral("ViewCoursePolyline"), QStringLiteral("ViewCourseAndPolyline"),
          QStringLiteral("HideCourse")},
         &ZYLTPEditUISettings::SetViewCourseMode},
        {{QStringLiteral("ViewLayingPointsWithToolAxis"), QStringLiteral("ViewLayingPointsWithToolAndLayingAxes"),
          QStringLiteral("ViewLayingPointsWithAllAxes"), QStringLiteral("HideLayingPoints")},
         &ZYLTPEditUISettings::SetViewLayingPointsMode},
        {{QStringLiteral("ViewCourseLinksWithPointsOnly"), QStringLiteral("ViewCourseLinksWithRollerAxis"),
          QStringLiteral("ViewCourseLinksWithAllAxes"), QStringLiteral("HideCourseLinks")},
         &ZYLTPEditUISettings::SetViewCourseLinksMode},
        {{QStringLiteral("ViewLinkPointsOnly"), QStringLiteral("ViewLinkPointsWithToolAxis"),
          QStringLiteral("ViewLinkingPointsWithToolAndLayingAxes"), QStringLiteral("ViewLinkingPointsWithAllAxes"),
          QStringLiteral("HideLinkingPoints")},
         &ZYLTPEditUISettings::SetViewLinkPointsMode},
    };
    return groups;
}

} // namespace

ZYLToolPathViewCmd::ZYLToolPathViewCmd(QObject *parent)
    : ZYLCmdCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLToolPathViewCmd::~ZYLToolPathViewCmd() = default;

void ZYLToolPathViewCmd::GainFocus() {
    ZYLCmdCommand::GainFocus();
    const QString mode = property("mode").toString();
    ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    for (const ModeGroup &group : ModeGroups()) {
        if (group.modes.contains(mode)) {
            (settings->*group.setter)(mode);
            break;
        }
    }

    // Every action redraws the tool path, a toggle too: the nodes then follow the stored
    // modes even if something else changed them since the last build.
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    if (manager)
        manager->UpdateAllGraphics(manager->GetCurrentOptions());

    static const QStringList toggles{QStringLiteral("ViewSurface"), QStringLiteral("ViewPlyBoundary"),
                                     QStringLiteral("ViewHead"), QStringLiteral("ViewRoller")};
    if (!toggles.contains(mode))
        return;
    // The toggle's new state is the checked state of its action, which the host keeps.
    const QAction *action =
        ZYLCmdController::GetController()->GetAction(QByteArrayLiteral("ZYLToolPathViewCmd.") + mode.toLatin1());
    if (!action)
        return;
    const bool checked = action->isChecked();
    if (mode == QLatin1String("ViewSurface")) {
        settings->SetViewSurface(checked);
        if (manager)
            manager->SetSurfacesVisibility(checked);
    } else if (mode == QLatin1String("ViewPlyBoundary")) {
        settings->SetViewPlyBoundary(checked);
        if (manager)
            manager->SetPlyBoundariesVisibility(checked);
    } else if (mode == QLatin1String("ViewHead")) {
        settings->SetViewMachineHead(checked);
        if (manager)
            manager->SetMachineHeadVisibility(checked);
    } else {
        settings->SetViewRoller(checked);
        if (manager)
            manager->SetRollersVisibility(checked, 0);
    }
}
