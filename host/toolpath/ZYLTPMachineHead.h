// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPResource.h"

/// The placement head of a machine (a resource; see `ZYLTPResource` for ids).
class ZYLTOOLPATH_EXPORT ZYLTPMachineHead : public ZYLTPResource {
    Q_OBJECT
public:
    ~ZYLTPMachineHead() override;

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPMachineHead(ZYLTPProgram *program, int id, const QString &name);
};
