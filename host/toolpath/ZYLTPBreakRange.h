// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include <QObject>

class ZYLTPCourse;

/// A stretch of a course where the course may be broken in two: from `GetStart()` to
/// `GetEnd()`, arc lengths from the course's roll-in point (mm). Owned by its course.
///
/// Reversing a course maps a range [start, end] to [L - end, L - start] (L the course
/// length). In floating point L - (L - x) need not give x back to the last bit, so a range
/// remembers what it was mapped from and the course length the mapping produced: turned back
/// while the course still has that length, it gets its former values exactly.
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
    friend class ZYLTPCourse;
    // The values a reversal mapped the range from, and the course length right after it.
    struct Mirror {
        double start = 0.0;
        double end = 0.0;
        double courseLength = -1.0;
        bool operator==(const Mirror &) const = default;
    };
    const ZYLTPCourse *m_course;
    double m_start;
    double m_end;
    Mirror m_mirror;
};
