// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathAxis.h"
#include "ZYLMathPoint.h"

#include <QObject>

class ZYLTPTrajectory;

/// A point of a tool path: a tip point and a frame. Points are thin views: on-part points
/// (`ZYLTPOnPartPoint`) read their course's point arrays, off-part points
/// (`ZYLTPOffPartPoint`) hold the frame of derived or stored motion. The model creates them
/// and keeps them at the same address as long as it does not replace them.
class ZYLTOOLPATH_EXPORT ZYLTPPoint : public QObject {
    Q_OBJECT
public:
    ~ZYLTPPoint() override;

    /// Returns the tool tip (mm).
    virtual ZYLMathPoint GetTipPoint() const = 0;
    /// Returns the point's frame with the tip as origin: first direction the laying (motion)
    /// direction, second the side direction, third the tool axis. With `toolFrame` true the
    /// frame is the tool's, turned by the tilts where the point has them; with false it is
    /// the untilted frame (third direction the surface normal).
    virtual ZYLMathAxis GetAxis(bool toolFrame = true) const = 0;
    /// Returns the trajectory the point belongs to, or null for a point of a link.
    virtual const ZYLTPTrajectory *GetTrajectory() const = 0;

protected:
    ZYLTPPoint() = default;
};
