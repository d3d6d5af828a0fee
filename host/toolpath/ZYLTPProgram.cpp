// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProgram.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPProcedure.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTool.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoSurface.h"

#include "ZYLFeatRecorder.h"

ZYLTPProgram::ZYLTPProgram() = default;

ZYLTPProgram::~ZYLTPProgram()
{
    // Procedures refer to the resources, so they go first.
    m_procedures.clear();
    m_tools.clear();
    m_heads.clear();
    if (m_surface)
        m_surface->RemoveReference();
    for (ZYLGeoAssembledCurveOnSurface *boundary : std::as_const(m_boundaries))
        boundary->RemoveReference();
}

ZYLTPProcedure *ZYLTPProgram::GetProcedure(int i) const
{
    return i >= 0 && i < GetNumProcedures() ? m_procedures[size_t(i)].get() : nullptr;
}

const ZYLTPMachineHead *ZYLTPProgram::GetMachineHead(int id) const
{
    return id >= 0 && id < GetNumMachineHeads() ? m_heads[size_t(id)].get() : nullptr;
}

const ZYLTPTool *ZYLTPProgram::GetTool(int id) const
{
    return id >= 0 && id < GetNumTools() ? m_tools[size_t(id)].get() : nullptr;
}

ZYLMathBoundingBox ZYLTPProgram::GetPartBoundingBox() const
{
    if (m_surface)
        return m_surface->GetBoundingBox();
    if (m_boxRevision != ZYLTPModelRevision::Get()) {
        m_box = ZYLMathBoundingBox();
        for (const auto &procedure : m_procedures) {
            auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(procedure.get());
            for (int i = 0; layup && i < layup->GetNumCourses(); ++i) {
                for (const ZYLMathPoint &tip : layup->GetCourseByIndex(i)->GetPointData().tips)
                    m_box.Add(tip);
            }
        }
        m_boxRevision = ZYLTPModelRevision::Get();
    }
    return m_box;
}

void ZYLTPProgram::SetProcessRules(const ZYLTPProcessRules &rules)
{
    ZYLTPProcessRules::Check(rules);
    ZYLFeatRecorder::RequireTransaction("Setting the process rules");
    if (rules == m_rules)
        return;
    ZYLFeatRecorder::SetValue(m_rules, rules);
    ZYLTPModelRevision::Record();
}
