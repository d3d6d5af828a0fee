// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPProcedure.h"

#include "ZYLMathPoint.h"

#include <vector>

class ZYLTPTool;

/// An inspection pass: a scanner (a tool) moved along a polyline over the part at a scan
/// feed rate (> 0 mm/min). Its time estimate is the path length at the scan feed rate. The
/// tool path display skips it.
class ZYLTOOLPATH_EXPORT ZYLTPInspectionProcedure : public ZYLTPProcedure {
    Q_OBJECT
public:
    ~ZYLTPInspectionProcedure() override;

    const std::vector<ZYLMathPoint> &GetPath() const { return m_path; }
    double GetPathLength() const;
    double GetScanFeedRate() const { return m_scanFeedRate; }
    /// Sets the scan feed rate (> 0 mm/min); records; throws `ZYLSysOutOfBoundsException`.
    void SetScanFeedRate(double feedRate);
    QList<const ZYLTPResource *> GetTools() const override;
    double GetTotalTimeEstimate() const override;

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPInspectionProcedure(ZYLTPProgram *program, const QString &name, const QString &description,
                             const ZYLTPTool *scanner, std::vector<ZYLMathPoint> path, double scanFeedRate);
    const ZYLTPTool *m_scanner;
    std::vector<ZYLMathPoint> m_path;
    double m_scanFeedRate;
};
