// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPPoint.h"

/// A point of off-part motion (approach, retract, linking): it holds its tool frame. Points
/// of derived motion are refreshed in place when the motion is recomputed (reading a point
/// brings its motion up to date first), so their addresses stay as long as the number of
/// points does; points of custom links are stored.
/// Off-part points carry no tilt: `GetAxis(false)` equals `GetAxis(true)`.
class ZYLTOOLPATH_EXPORT ZYLTPOffPartPoint : public ZYLTPPoint {
    Q_OBJECT
public:
    /// The three directions of the point's frame.
    enum Axis { FirstAxis = 0, SecondAxis = 1, ThirdAxis = 2 };
    Q_ENUM(Axis)

    /// Creates a point with `frame` belonging to `trajectory` (null for a link point).
    /// `owner`, when given, is the trajectory or link that derives the point: it is asked to
    /// bring its points up to date before the point answers.
    explicit ZYLTPOffPartPoint(const ZYLMathAxis &frame, const ZYLTPTrajectory *trajectory = nullptr,
                               const QObject *owner = nullptr)
        : m_frame(frame), m_trajectory(trajectory), m_owner(owner)
    {
    }
    ~ZYLTPOffPartPoint() override;

    ZYLMathPoint GetTipPoint() const override;
    ZYLMathAxis GetAxis(bool toolFrame = true) const override;
    const ZYLTPTrajectory *GetTrajectory() const override { return m_trajectory; }
    /// Sets the frame (used by the model when it refreshes derived motion).
    void SetFrame(const ZYLMathAxis &frame) { m_frame = frame; }

private:
    void RefreshOwner() const;
    ZYLMathAxis m_frame;
    const ZYLTPTrajectory *m_trajectory;
    const QObject *m_owner;
};
