// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProcedure.h"

#include "ZYLTPCheck.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPTool.h"

#include "ZYLFeatRecorder.h"

ZYLTPProcedure::ZYLTPProcedure(ZYLTPProgram *program, const QString &name, const QString &description)
    : m_program(program), m_name(name), m_description(description)
{
}

ZYLTPProcedure::~ZYLTPProcedure() = default;

void ZYLTPProcedure::SetName(const QString &name)
{
    ZYLFeatRecorder::SetValue(m_name, name);
}

void ZYLTPProcedure::SetDescription(const QString &description)
{
    ZYLFeatRecorder::SetValue(m_description, description);
}

ZYLTPInspectionProcedure::ZYLTPInspectionProcedure(ZYLTPProgram *program, const QString &name,
                                                   const QString &description, const ZYLTPTool *scanner,
                                                   std::vector<ZYLMathPoint> path, double scanFeedRate)
    : ZYLTPProcedure(program, name, description),
      m_scanner(scanner),
      m_path(std::move(path)),
      m_scanFeedRate(scanFeedRate)
{
}

ZYLTPInspectionProcedure::~ZYLTPInspectionProcedure() = default;

double ZYLTPInspectionProcedure::GetPathLength() const
{
    double length = 0.0;
    for (size_t i = 1; i < m_path.size(); ++i)
        length += m_path[i].GetDistanceTo(m_path[i - 1]);
    return length;
}

void ZYLTPInspectionProcedure::SetScanFeedRate(double feedRate)
{
    ZYLTPCheck::FeedRate(feedRate);
    if (feedRate == m_scanFeedRate)
        return;
    ZYLFeatRecorder::SetValue(m_scanFeedRate, feedRate);
    ZYLTPModelRevision::Record();
}

QList<const ZYLTPResource *> ZYLTPInspectionProcedure::GetTools() const
{
    return m_scanner ? QList<const ZYLTPResource *>{m_scanner} : QList<const ZYLTPResource *>{};
}

double ZYLTPInspectionProcedure::GetTotalTimeEstimate() const
{
    return GetPathLength() / m_scanFeedRate * 60.0;
}
