// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPTool.h"

/// The compaction roller of a fibre placement head: a tool with a width and a diameter (mm,
/// both > 0). Its id is its position in the program's roller (tool) list, from 0.
class ZYLTOOLPATH_EXPORT ZYLTPRoller : public ZYLTPTool {
    Q_OBJECT
public:
    ~ZYLTPRoller() override;

    double GetWidth() const { return m_width; }
    double GetDiameter() const { return m_diameter; }

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPRoller(ZYLTPProgram *program, int id, const QString &name, double width, double diameter);
    double m_width;
    double m_diameter;
};
