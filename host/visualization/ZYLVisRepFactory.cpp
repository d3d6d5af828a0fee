// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisRepFactory.h"

#include "ZYLVisPointPrimitive.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisTrianglePrimitive.h"

#include "ZYLGeoBody.h"
#include "ZYLGeoCurve.h"
#include "ZYLGeoSurface.h"
#include "ZYLSysException.h"

ZYLVisRep *ZYLVisRepFactory::CreateRep(const ZYLGeoBody *body, const ZYLVisOptions &pointOptions,
                                       const ZYLVisOptions &curveOptions, const ZYLVisOptions &surfaceOptions,
                                       int visibleGeometryFlags)
{
    if (visibleGeometryFlags & ~VisibleAll)
        throw ZYLSysException(
            QStringLiteral("Invalid visible geometry flags %1 (1 points, 2 curves, 4 surfaces).").arg(visibleGeometryFlags));
    if (!body)
        return nullptr;

    // One tolerance for the whole body keeps neighbouring surfaces and their boundary curves
    // equally fine, so that curves do not sink into a coarser surface next to them.
    const double tolerance = ZYLVisPolylinePrimitive::GetAutomaticTolerance(body->GetBoundingBox().GetDiagonal().GetLength());

    QList<ZYLVisPrimitive *> primitives;
    QList<ZYLVisOptions> options;
    try {
        if (visibleGeometryFlags & VisibleSurfaces) {
            for (int i = 0; i < body->GetNumSurfaces(); ++i) {
                if (const ZYLGeoSurface *surface = body->GetSurface(i)) {
                    primitives.append(new ZYLVisTrianglePrimitive(surface->Tessellate(tolerance)));
                    options.append(surfaceOptions);
                }
            }
        }
        if (visibleGeometryFlags & VisibleCurves) {
            for (int i = 0; i < body->GetNumCurves(); ++i) {
                if (const ZYLGeoCurve *curve = body->GetCurve(i)) {
                    primitives.append(new ZYLVisPolylinePrimitive(curve, {}, tolerance));
                    options.append(curveOptions);
                }
            }
        }
        if ((visibleGeometryFlags & VisiblePoints) && body->GetPoints().GetNumPoints() > 0) {
            primitives.append(new ZYLVisPointPrimitive(body->GetPoints()));
            options.append(pointOptions);
        }
        return new ZYLVisRepGraphics(primitives, options);
    } catch (...) {
        qDeleteAll(primitives);
        throw;
    }
}
