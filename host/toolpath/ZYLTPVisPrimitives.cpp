// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPVisPrimitives.h"

#include "ZYLVisPointPrimitive.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisSegmentPrimitive.h"

#include <algorithm>

namespace {

// Arrow heads a fifth of the vector: visible at any zoom where the vector itself is, and
// short enough not to hide the neighbouring points' vectors.
constexpr double ArrowHeadRatio = 0.2;

} // namespace

void ZYLTPVisPrimitiveList::Add(std::unique_ptr<ZYLVisPrimitive> primitive, const ZYLVisOptions &options)
{
    if (!primitive)
        return;
    m_primitives.push_back(std::move(primitive));
    m_options.append(options);
}

void ZYLTPVisPrimitiveList::AddPoints(std::vector<ZYLMathPoint> points, const ZYLVisOptions &options)
{
    if (!points.empty())
        Add(std::make_unique<ZYLVisPointPrimitive>(std::move(points)), options);
}

void ZYLTPVisPrimitiveList::AddSegments(std::vector<ZYLMathPoint> endPoints, const ZYLVisOptions &options)
{
    if (!endPoints.empty())
        Add(std::make_unique<ZYLVisSegmentPrimitive>(std::move(endPoints)), options);
}

void ZYLTPVisPrimitiveList::AddPolyline(std::vector<ZYLMathPoint> points, const ZYLVisOptions &options)
{
    if (!points.empty())
        Add(std::make_unique<ZYLVisPolylinePrimitive>(std::move(points)), options);
}

QList<ZYLVisPrimitive *> ZYLTPVisPrimitiveList::GetPrimitives() const
{
    QList<ZYLVisPrimitive *> primitives;
    primitives.reserve(qsizetype(m_primitives.size()));
    for (const auto &primitive : m_primitives)
        primitives.append(primitive.get());
    return primitives;
}

void ZYLTPVisPrimitiveList::Release()
{
    for (auto &primitive : m_primitives)
        (void)primitive.release();
    m_primitives.clear();
    m_options.clear();
}

ZYLTPVisVectorSegments::ZYLTPVisVectorSegments(ZYLTPVisualizationOptions::VectorsToDisplay vectors, double length,
                                               bool arrows)
    : m_length(length)
    , m_arrows(arrows)
{
    using Options = ZYLTPVisualizationOptions;
    // The bit order is the order of the frame's directions: laying, side, tool axis.
    const Options::VectorsToDisplay bits[] = {Options::LayingDirection, Options::SideDirection, Options::ToolAxis};
    for (int direction = 0; direction < 3; ++direction) {
        if (vectors & bits[direction])
            m_kinds.push_back({bits[direction], direction, {}});
    }
}

void ZYLTPVisVectorSegments::Reserve(int numFrames)
{
    // An arrow is its shaft and four head strokes.
    const size_t perFrame = m_arrows ? 10 : 2;
    for (Kind &kind : m_kinds)
        kind.endPoints.reserve(kind.endPoints.size() + perFrame * size_t(std::max(numFrames, 0)));
}

void ZYLTPVisVectorSegments::Add(const ZYLMathAxis &frame)
{
    const ZYLMathPoint &origin = frame.GetOrigin();
    for (Kind &kind : m_kinds) {
        const ZYLMathPoint tip = origin + frame.GetDirection(kind.direction) * m_length;
        if (m_arrows) {
            ZYLVisSegmentPrimitive::AppendArrow(kind.endPoints, origin, tip, ArrowHeadRatio * m_length);
        } else {
            kind.endPoints.push_back(origin);
            kind.endPoints.push_back(tip);
        }
    }
}

void ZYLTPVisVectorSegments::AddTo(const ZYLTPVisualizationOptions &options, ZYLTPVisPrimitiveList &out)
{
    for (Kind &kind : m_kinds) {
        const ZYLVisOptions &attributes =
            options.GetGraphicAttributes(ZYLTPVisualizationOptions::GetVectorElement(kind.bit));
        out.AddSegments(std::move(kind.endPoints), attributes);
        kind.endPoints.clear();
    }
}
