// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLEditTPGraphicsMgr.h"

/// The studio's graphics manager: the tool path edit graphics of the module, with the
/// program's ply surface as the surface that collisions of laying points are checked against.
class ZYLStudioGraphicsMgr final : public ZYLEditTPGraphicsMgr {
    Q_OBJECT
public:
    ZYLStudioGraphicsMgr();
    ~ZYLStudioGraphicsMgr() override;

    /// Returns the ply surface of the program being edited, or null without program or
    /// surface.
    const ZYLGeoSurface *GetUpdatedSurface() const override;
};
