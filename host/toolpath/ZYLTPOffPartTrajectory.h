// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPTrajectory.h"

#include "ZYLMathAxis.h"

#include <memory>
#include <vector>

class ZYLTPOffPartPoint;

/// The base of the approach and retract trajectories of a course: a straight motion of
/// `GetLength()` mm (>= 0) that meets the surface at `GetAngle()` rad (within (0, pi/2],
/// measured from the surface towards the normal) at the course's roll-in or roll-out point.
/// Its two points (far end and the roll-in/roll-out point) are derived from these parameters
/// and the course's end frame each time the model has changed; they keep their addresses.
/// The motion runs at the procedure's rapid feed rate.
class ZYLTOOLPATH_EXPORT ZYLTPOffPartTrajectory : public ZYLTPTrajectory {
    Q_OBJECT
public:
    ~ZYLTPOffPartTrajectory() override;

    double GetAngle() const { return m_angle; }
    /// Sets the angle, within (0, pi/2] rad; records the change; throws
    /// `ZYLSysOutOfBoundsException` outside the range and changes nothing.
    void SetAngle(double angle);
    /// Sets the length, >= 0 mm; records; throws `ZYLSysOutOfBoundsException` below 0.
    void SetLength(double length);
    double GetLength() const override { return m_length; }
    double GetFeedRate() const override;
    int GetNumPoints() const override { return 2; }
    const ZYLTPPoint *GetPoint(int i) const override;
    /// Returns the frame of the far end of the motion (where the approach starts or the
    /// retract ends).
    ZYLMathAxis GetFarFrame() const;

protected:
    ZYLTPOffPartTrajectory(const ZYLTPCourse *course, double angle, double length);
    /// Returns the course frame the motion meets the part at.
    virtual ZYLMathAxis GetPartFrame() const = 0;
    /// Returns +1 when the motion leaves the part forwards (retract), -1 when it arrives.
    virtual double GetSense() const = 0;
    /// Returns whether point 0 is the far end (approach) or the part end (retract).
    virtual bool FarEndFirst() const = 0;

private:
    friend class ZYLTPProgramBuilder;
    // Reversing a course swaps the approach and retract parameters.
    friend class ZYLTPCourse;
    double m_angle;
    double m_length;
    mutable quint64 m_revision = 0;
    mutable std::unique_ptr<ZYLTPOffPartPoint> m_points[2];
};
