// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioGraphicsMgr.h"

#include "ZYLTPProgram.h"

ZYLStudioGraphicsMgr::ZYLStudioGraphicsMgr() = default;

ZYLStudioGraphicsMgr::~ZYLStudioGraphicsMgr() = default;

const ZYLGeoSurface *ZYLStudioGraphicsMgr::GetUpdatedSurface() const {
    // The program getter is not const (the module's interface has it so); reading the program
    // changes nothing.
    const ZYLTPProgram *program = const_cast<ZYLStudioGraphicsMgr *>(this)->GetToolPathProgram();
    return program ? program->GetPlySurface() : nullptr;
}
