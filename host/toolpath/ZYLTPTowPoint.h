// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPOnPartPoint.h"

/// A laying point of a tow course (`ZYLTPTowCourse`): every point of a tow course's point
/// list is one, including its roll-in and roll-out points.
class ZYLTOOLPATH_EXPORT ZYLTPTowPoint : public ZYLTPOnPartPoint {
    Q_OBJECT
public:
    ~ZYLTPTowPoint() override;

private:
    friend class ZYLTPCourse;
    ZYLTPTowPoint(const ZYLTPCourse *course, const ZYLTPCoursePoints *data, int index)
        : ZYLTPOnPartPoint(course, data, index)
    {
    }
};
