// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The machine classes are plain holders; their out-of-line members live together here.
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPRoller.h"

ZYLTPResource::ZYLTPResource(ZYLTPProgram *program, int id, const QString &name)
    : m_program(program), m_id(id), m_name(name)
{
}
ZYLTPResource::~ZYLTPResource() = default;

ZYLTPMachineHead::ZYLTPMachineHead(ZYLTPProgram *program, int id, const QString &name, int numTows)
    : ZYLTPResource(program, id, name), m_numTows(numTows)
{
}
ZYLTPMachineHead::~ZYLTPMachineHead() = default;

ZYLTPTool::ZYLTPTool(ZYLTPProgram *program, int id, const QString &name) : ZYLTPResource(program, id, name) {}
ZYLTPTool::~ZYLTPTool() = default;

ZYLTPRoller::ZYLTPRoller(ZYLTPProgram *program, int id, const QString &name, double width, double diameter)
    : ZYLTPTool(program, id, name), m_width(width), m_diameter(diameter)
{
}
ZYLTPRoller::~ZYLTPRoller() = default;

ZYLTPMachineConfiguration::ZYLTPMachineConfiguration(const ZYLTPMachineHead *head, const ZYLTPTool *tool)
    : m_head(head), m_tool(tool)
{
}
ZYLTPMachineConfiguration::~ZYLTPMachineConfiguration() = default;
