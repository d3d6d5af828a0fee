// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include <QObject>

class ZYLTPMachineHead;
class ZYLTPTool;

/// The machine set-up a course is laid with: a head (may be null) and a tool (never null).
/// Configurations are owned by their roll layup procedure and shared by its courses; every
/// course refers to one. The head's tow count, when it knows one, is the width of every tow
/// course laid with the configuration (see `ZYLTPTowCourse::GetNumTows`).
class ZYLTOOLPATH_EXPORT ZYLTPMachineConfiguration : public QObject {
    Q_OBJECT
public:
    ~ZYLTPMachineConfiguration() override;

    const ZYLTPMachineHead *GetHead() const { return m_head; }
    const ZYLTPTool *GetTool() const { return m_tool; }

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPMachineConfiguration(const ZYLTPMachineHead *head, const ZYLTPTool *tool);
    const ZYLTPMachineHead *m_head;
    const ZYLTPTool *m_tool;
};
