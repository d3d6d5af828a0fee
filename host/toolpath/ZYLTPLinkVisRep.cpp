// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPLinkVisRep.h"

#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPVisPrimitives.h"

#include <algorithm>

struct ZYLTPLinkVisRep::Data {
    const ZYLTPCourseLink *link = nullptr;
};

namespace {

void BuildLink(const ZYLTPCourseLink &link, const ZYLTPVisualizationOptions &options, ZYLTPVisPrimitiveList &out)
{
    // Reading the points once: each read may recompute a link whose courses have changed.
    std::vector<ZYLMathAxis> frames;
    frames.reserve(size_t(std::max(link.GetNumPoints(), 0)));
    for (int i = 0; i < link.GetNumPoints(); ++i) {
        if (const ZYLTPOffPartPoint *point = link.GetPoint(i))
            frames.push_back(point->GetAxis(true));
    }
    std::vector<ZYLMathPoint> tips;
    tips.reserve(frames.size());
    for (const ZYLMathAxis &frame : frames)
        tips.push_back(frame.GetOrigin());

    if (options.GetLinkingTrajectoriesEnabled() && tips.size() >= 2)
        out.AddPolyline(tips, options.GetLinkLineGraphicAttributes());

    if (options.IsLinkingPointsEnabled()) {
        out.AddPoints(tips, options.GetLinkingPointGraphicAttributes());
        ZYLTPVisVectorSegments vectors(options.GetLinkingVectorsToDisplay(), options.GetVectorLength(), false);
        vectors.Reserve(int(frames.size()));
        for (const ZYLMathAxis &frame : frames)
            vectors.Add(frame);
        vectors.AddTo(options, out);
    }

    if (!frames.empty()) {
        ZYLTPVisVectorSegments ends(options.GetLinkEndPointsVectorsToDisplay(), options.GetVectorLength(), true);
        ends.Add(frames.front());
        if (frames.size() > 1)
            ends.Add(frames.back());
        ends.AddTo(options, out);
    }
}

} // namespace

ZYLTPLinkVisRep::ZYLTPLinkVisRep(const ZYLTPCourseLink *link, const ZYLTPVisualizationOptions &options,
                                 QList<ZYLVisOptions> &out)
    : d(std::make_unique<Data>())
{
    d->link = link;
    if (!link)
        return;
    ZYLTPVisPrimitiveList list;
    BuildLink(*link, options, list);
    AddPrimitives(list.GetPrimitives(), list.GetOptions());
    out.append(list.GetOptions());
    list.Release();
}

ZYLTPLinkVisRep::~ZYLTPLinkVisRep() = default;

const ZYLTPCourseLink *ZYLTPLinkVisRep::GetCourseLink() const
{
    return d->link;
}
