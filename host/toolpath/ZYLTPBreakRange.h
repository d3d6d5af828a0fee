// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include <QObject>

class ZYLTPCourse;

/// A stretch of a course where the course may be broken in two: from `GetStart()` to
/// `GetEnd()`, arc lengths from the course's roll-in point (mm). Owned by its course.
class ZYLTOOLPATH_EXPORT ZYLTPBreakRange : public QObject {
    Q_OBJECT
public:
    ZYLTPBreakRange(const ZYLTPCourse *course, double start, double end)
        : m_course(course), m_start(start), m_end(end)
    {
    }
    ~ZYLTPBreakRange() override;

    const ZYLTPCourse *GetCourse() const { return m_course; }
    double GetStart() const { return m_start; }
    double GetEnd() const { return m_end; }
    double GetLength() const { return m_end - m_start; }

private:
    const ZYLTPCourse *m_course;
    double m_start;
    double m_end;
};
