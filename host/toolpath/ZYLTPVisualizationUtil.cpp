// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPVisualizationUtil.h"

#include "ZYLTPPoint.h"
#include "ZYLTPVisPrimitives.h"

void ZYLTPVisualizationUtil::CreateVectorPrimitives(const QList<const ZYLTPPoint *> &points,
                                                    ZYLTPVisualizationOptions::VectorsToDisplay vectors,
                                                    const ZYLTPVisualizationOptions &options,
                                                    QList<ZYLVisPrimitive *> &primitives,
                                                    QList<ZYLVisOptions> &primitiveOptions)
{
    std::vector<ZYLMathPoint> tips;
    tips.reserve(size_t(points.size()));
    ZYLTPVisVectorSegments segments(vectors, options.GetVectorLength(), false);
    segments.Reserve(int(points.size()));
    for (const ZYLTPPoint *point : points) {
        if (!point)
            continue;
        const ZYLMathAxis frame = point->GetAxis(true);
        tips.push_back(point->GetTipPoint());
        segments.Add(frame);
    }
    ZYLTPVisPrimitiveList list;
    list.AddPoints(std::move(tips), options.GetTipPointGraphicAttributes());
    segments.AddTo(options, list);
    // Both output lists grow together only once every primitive has been built, so that a
    // failure leaves the caller's lists as they were.
    primitives.append(list.GetPrimitives());
    primitiveOptions.append(list.GetOptions());
    list.Release();
}
