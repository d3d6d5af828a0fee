// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <functional>

class ZYLEditTPGraphicsMgr;
class ZYLTPVisualizationOptions;
class ZYLVisEnvironment;

/// What the module's commands and panels share about the 3-D view of the edit environment.
class ZYLTPEditGraphics {
public:
    ZYLTPEditGraphics() = delete;

    /// Returns the graphics manager's edit environment, or null when there is no manager or
    /// no edit environment.
    static ZYLVisEnvironment *GetEditEnvironment();
    /// Inside one batch on the edit environment, runs `prepare` and then rebuilds every tool
    /// path node with the manager's current options, so that the view redraws once. Does
    /// nothing without an edit environment.
    static void Rebuild(const std::function<void(ZYLEditTPGraphicsMgr &, ZYLVisEnvironment &)> &prepare);
    /// Installs on `environment` a selection filter that accepts every object; with `multiple`
    /// a click adds the picked object to the selection, without it the pick replaces it.
    static void SelectAnyObject(ZYLVisEnvironment &environment, bool multiple);
    /// Returns the manager's current options set to show courses as the course editors do:
    /// approach, retract, roll-in and roll-out, tow edges, head profiles at adds and cuts,
    /// short tows highlighted and the laying trajectory, no vectors, tip points as asked.
    static ZYLTPVisualizationOptions CourseEditOptions(const ZYLEditTPGraphicsMgr &manager, bool tipPoints);
};
