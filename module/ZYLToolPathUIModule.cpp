// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Everything the module does at load time, done by the static objects below, and everything
// it does at unload, done by their destructors in reverse order.
//
// They live in this one file because C++ orders static initialisation only within a
// translation unit, and the order is part of the module's contract with its host: the host
// receives the command classes and the actions in exactly this order. Do not move a
// definition out of this file, and keep the order when adding one.
#include "ZYLToolPathUI.h"

#include "ZYLTPCollisionInspectorCmd.h"
#include "ZYLTPContextualViewCmd.h"
#include "ZYLTPDetailedInfoCmd.h"
#include "ZYLTPEditCourseCmd.h"
#include "ZYLTPEditCourseLayingPointsCmd.h"
#include "ZYLTPEditLinkingPointsCmd.h"
#include "ZYLTPEditLinksCmd.h"
#include "ZYLToolPathViewCmd.h"

#include "ZYLCmdActionPublisher.h"
#include "ZYLCmdCommandPublisher.h"
#include "ZYLSysRegisterInit.h"

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QVariant>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

// Publishes one action of the catalogue: no selection filter, filter behaviour 0, and the
// property "mode" when `mode` is given. The label and the tooltip are translated with the
// command class as context (marked with QT_TRANSLATE_NOOP where they are written) by the
// translators that the host has installed when it loads the module.
ZYLCmdActionPublisher Publish(const char *commandClass, const char *actionName, const char *iconId, const char *label,
                              const char *tooltip, const char *mode) {
    QHash<QString, QVariant> properties;
    if (mode)
        properties.insert(QStringLiteral("mode"), QString::fromLatin1(mode));
    return ZYLCmdActionPublisher(
        actionName, commandClass, QString::fromLatin1(iconId), QCoreApplication::translate(commandClass, label),
        QCoreApplication::translate(commandClass, tooltip), nullptr, ZYLCmdAction::AnySelection, properties);
}

// The view actions carry their own name as their mode.
ZYLCmdActionPublisher PublishView(const char *mode, const char *iconId, const char *label, const char *tooltip) {
    return Publish("ZYLToolPathViewCmd", mode, iconId, label, tooltip, mode);
}

} // namespace

// 1. The collision inspector.
ZYLCmdCommandPublisher<ZYLTPCollisionInspectorCmd> ZYLTPCollisionInspectorCmd::_Publisher;
static ZYLCmdActionPublisher s_collisionInspectorView =
    Publish("ZYLTPCollisionInspectorCmd", "View", "collision-table",
            QT_TRANSLATE_NOOP("ZYLTPCollisionInspectorCmd", "Collision"),
            QT_TRANSLATE_NOOP("ZYLTPCollisionInspectorCmd", "View Collision Information"), nullptr);
const QByteArray ZYLTPCollisionInspectorCmd::LastUsedCollisionTolSettingKey =
    QByteArrayLiteral("LastUsedCollisionTolSettingKey");

// 2. The contextual view.
ZYLCmdCommandPublisher<ZYLTPContextualViewCmd> ZYLTPContextualViewCmd::_Publisher;
static ZYLCmdActionPublisher s_contextualView = Publish(
    "ZYLTPContextualViewCmd", "View", "tool-path-contextual", QT_TRANSLATE_NOOP("ZYLTPContextualViewCmd", "Contextual"),
    QT_TRANSLATE_NOOP("ZYLTPContextualViewCmd", "View Contextual Toolpath"), nullptr);

// 3. The detailed information view.
ZYLCmdCommandPublisher<ZYLTPDetailedInfoCmd> ZYLTPDetailedInfoCmd::_Publisher;
static ZYLCmdActionPublisher s_detailedInfoView =
    Publish("ZYLTPDetailedInfoCmd", "View", "info-detailed", QT_TRANSLATE_NOOP("ZYLTPDetailedInfoCmd", "Detailed"),
            QT_TRANSLATE_NOOP("ZYLTPDetailedInfoCmd", "View Detailed Info"), nullptr);
// The static tables of the detailed information panel (column names, table names and column
// index lists) are defined here, right after its publishers, when that panel is added.

// 4. The four edit commands.
ZYLCmdCommandPublisher<ZYLTPEditCourseCmd> ZYLTPEditCourseCmd::_Publisher;
static ZYLCmdActionPublisher s_editCourse =
    Publish("ZYLTPEditCourseCmd", "Edit", "courses-edit", QT_TRANSLATE_NOOP("ZYLTPEditCourseCmd", "Edit Course"),
            QT_TRANSLATE_NOOP("ZYLTPEditCourseCmd", "Edits course"), "edit");

ZYLCmdCommandPublisher<ZYLTPEditCourseLayingPointsCmd> ZYLTPEditCourseLayingPointsCmd::_Publisher;
static ZYLCmdActionPublisher s_editLayingPoints =
    Publish("ZYLTPEditCourseLayingPointsCmd", "Edit", "laying-points-edit",
            QT_TRANSLATE_NOOP("ZYLTPEditCourseLayingPointsCmd", "Laying Points"),
            QT_TRANSLATE_NOOP("ZYLTPEditCourseLayingPointsCmd", "Edits the laying points of a course"), "edit");

ZYLCmdCommandPublisher<ZYLTPEditLinkingPointsCmd> ZYLTPEditLinkingPointsCmd::_Publisher;
static ZYLCmdActionPublisher s_editLinkingPoints =
    Publish("ZYLTPEditLinkingPointsCmd", "Edit", "linking-points-edit",
            QT_TRANSLATE_NOOP("ZYLTPEditLinkingPointsCmd", "Linking Points"),
            QT_TRANSLATE_NOOP("ZYLTPEditLinkingPointsCmd", "Edit linking points"), "edit");

ZYLCmdCommandPublisher<ZYLTPEditLinksCmd> ZYLTPEditLinksCmd::_Publisher;
static ZYLCmdActionPublisher s_editLinks =
    Publish("ZYLTPEditLinksCmd", "Edit", "links-edit", QT_TRANSLATE_NOOP("ZYLTPEditLinksCmd", "Links"),
            QT_TRANSLATE_NOOP("ZYLTPEditLinksCmd", "Edit links"), "edit");

// The constructor checks of the exported commands: never called, they only have to compile.
void ZYLTPEditCourseLayingPointsCmd::_constructor_checker() {
    delete new ZYLTPEditCourseLayingPointsCmd(nullptr);
}

void ZYLTPEditLinkingPointsCmd::_constructor_checker() {
    delete new ZYLTPEditLinkingPointsCmd(nullptr);
}

void ZYLTPEditLinksCmd::_constructor_checker() {
    delete new ZYLTPEditLinksCmd(nullptr);
}

// 5. The loaded flag: the result of the registration until the host runs the callback. A host
// that is already initialised runs it inside the registration, so the flag is true either way
// once the host has initialised.
bool _ZYLToolPathUILoaded = ZYLSysRegisterInit([] { _ZYLToolPathUILoaded = true; });

// 6. The view command and its 21 actions: the view modes of courses, laying points, course
// links and linking points (each group ending with its hide mode), then the four toggles.
ZYLCmdCommandPublisher<ZYLToolPathViewCmd> ZYLToolPathViewCmd::_Publisher;
static ZYLCmdActionPublisher s_viewCourse =
    PublishView("ViewCourse", "display-tool-path-course", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Toolpath (Course)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View tool path course"));
static ZYLCmdActionPublisher s_viewCoursePolyline = PublishView(
    "ViewCoursePolyline", "tool-path-polyline-view", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Toolpath (Polyline)"),
    QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View tool path course polyline"));
static ZYLCmdActionPublisher s_viewCourseAndPolyline =
    PublishView("ViewCourseAndPolyline", "tool-path-course-and-polyline-view",
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Toolpath (Course And Polyline)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View tool path course and polyline"));
static ZYLCmdActionPublisher s_hideCourse =
    PublishView("HideCourse", "courses-hidden", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide Toolpath"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide toolpath"));
static ZYLCmdActionPublisher s_viewLayingPointsWithToolAxis =
    PublishView("ViewLayingPointsWithToolAxis", "laying-points-tool-axis",
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Laying Points (Tool Axis)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View laying points with tool axis"));
static ZYLCmdActionPublisher s_viewLayingPointsWithToolAndLayingAxes =
    PublishView("ViewLayingPointsWithToolAndLayingAxes", "laying-points-tool-laying-axes",
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Laying Points (Tool Axis + Laying Direction)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View laying points with tool and laying axes"));
static ZYLCmdActionPublisher s_viewLayingPointsWithAllAxes =
    PublishView("ViewLayingPointsWithAllAxes", "laying-points-all-axes",
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Laying Points (All Axes)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View tool path course and polyline"));
static ZYLCmdActionPublisher s_hideLayingPoints = PublishView(
    "HideLayingPoints", "laying-pints-hidden", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide Laying Points"),
    QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide laying points"));
static ZYLCmdActionPublisher s_viewCourseLinksWithPointsOnly = PublishView(
    "ViewCourseLinksWithPointsOnly", "links-points", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Links (Points Only)"),
    QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Show links with points only"));
static ZYLCmdActionPublisher s_viewCourseLinksWithRollerAxis = PublishView(
    "ViewCourseLinksWithRollerAxis", "links-tool-axis", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Links (Tool Axis)"),
    QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Show links with roller axis"));
static ZYLCmdActionPublisher s_viewCourseLinksWithAllAxes = PublishView(
    "ViewCourseLinksWithAllAxes", "links-all-axes", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Links (All Axes)"),
    QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Show links with all axes"));
static ZYLCmdActionPublisher s_hideCourseLinks =
    PublishView("HideCourseLinks", "links-hidden", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide Course Links"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide course links"));
static ZYLCmdActionPublisher s_viewLinkPointsOnly =
    PublishView("ViewLinkPointsOnly", "linking-points", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Linking Points Only"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View linking points only"));
static ZYLCmdActionPublisher s_viewLinkPointsWithToolAxis =
    PublishView("ViewLinkPointsWithToolAxis", "linking-points-tool-axes",
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Linking Points (Tool Axis)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View laying points with tool axis"));
static ZYLCmdActionPublisher s_viewLinkingPointsWithToolAndLayingAxes =
    PublishView("ViewLinkingPointsWithToolAndLayingAxes", "linking-points-tool-laying-axes",
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Linking Points (Tool Axis + Laying Direction)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View linking points with tool and laying axes"));
static ZYLCmdActionPublisher s_viewLinkingPointsWithAllAxes =
    PublishView("ViewLinkingPointsWithAllAxes", "linking-points-all-axes",
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Linking Points (All Axes)"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "View tool path course and polyline"));
static ZYLCmdActionPublisher s_hideLinkingPoints = PublishView(
    "HideLinkingPoints", "linking-points-hidden", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide Linking Points"),
    QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Hide linking points"));
static ZYLCmdActionPublisher s_viewSurface =
    PublishView("ViewSurface", "surface-hidden", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Surface"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Show/Hide surface"));
static ZYLCmdActionPublisher s_viewPlyBoundary = PublishView(
    "ViewPlyBoundary", "ply-boundary-in-edit-tool-path-off", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Ply Boundary"),
    QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Show/Hide ply boundary"));
static ZYLCmdActionPublisher s_viewHead =
    PublishView("ViewHead", "head-off", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Machine Head"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Show/Hide machine head"));
static ZYLCmdActionPublisher s_viewRoller =
    PublishView("ViewRoller", "roller-off", QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Roller"),
                QT_TRANSLATE_NOOP("ZYLToolPathViewCmd", "Show/Hide roller"));

#ifdef _WIN32
// The library's entry point does no work of the module: the static objects above do it all.
// Thread notifications are turned off because nothing here needs them.
BOOL APIENTRY DllMain(HMODULE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
#endif
