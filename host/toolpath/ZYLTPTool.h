// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPResource.h"

/// A tool mounted on a machine head (a resource; see `ZYLTPResource` for ids). Rollers are
/// the tools of roll layup (`ZYLTPRoller`); a tool of this class itself is a plain tool,
/// such as a scanner or a cutter: a name and collision points, nothing else, made by
/// `ZYLTPProgramBuilder::AddTool`. Kinds are told apart by `qobject_cast`.
class ZYLTOOLPATH_EXPORT ZYLTPTool : public ZYLTPResource {
    Q_OBJECT
public:
    ~ZYLTPTool() override;

protected:
    friend class ZYLTPProgramBuilder;
    ZYLTPTool(ZYLTPProgram *program, int id, const QString &name);
};
