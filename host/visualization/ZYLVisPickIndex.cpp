// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisPickIndex.h"

#include "ZYLVisOptions.h"
#include "ZYLVisPrimitive.h"
#include "ZYLVisRep.h"
#include "ZYLVisTrianglePrimitive.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double infinity = std::numeric_limits<double>::infinity();
// Small leaves keep the exact double tests few; deeper trees cost little at this size.
constexpr std::uint32_t leafSize = 8;

struct ElementHit {
    ZYLMathPoint point;
    double depth = 0.0;
    double distance = 0.0;
};

// A vertex hits when it lies in front of the origin within the pick radius at its depth.
bool hitPoint(const ZYLVisPickRay &ray, const ZYLMathPoint &p, ElementHit &hit)
{
    const ZYLMathVector v = p - ray.GetOrigin();
    const double t = v.Dot(ray.GetDirection());
    if (t < 0.0)
        return false;
    // The perpendicular itself, not |v|² − t², which cancels badly far along the ray.
    const double d2 = (v - ray.GetDirection() * t).GetSquaredLength();
    const double r = ray.GetRadiusAt(t);
    if (d2 > r * r)
        return false;
    hit = {p, t, std::sqrt(d2)};
    return true;
}

// Nearest points of the ray (t >= 0) and the segment a-b; a hit when they are within the
// radius at that depth. The reported point lies on the segment.
bool hitSegment(const ZYLVisPickRay &ray, const ZYLMathPoint &a, const ZYLMathPoint &b, ElementHit &hit)
{
    const ZYLMathVector u = b - a;
    const double c = u.GetSquaredLength();
    if (c <= 0.0)
        return hitPoint(ray, a, hit);
    const ZYLMathVector &dir = ray.GetDirection();
    const ZYLMathVector w = ray.GetOrigin() - a;
    const double bb = dir.Dot(u);
    const double dd = dir.Dot(w);
    const double e = u.Dot(w);
    const double denom = c - bb * bb; // >= 0 since dir is a unit vector
    // Minimise |w + t·dir − s·u|²: the unconstrained optimum, then clamp s, then t, then s
    // again, which lands on the constrained optimum of this convex problem.
    double s = denom > 1e-12 * c ? (e - bb * dd) / denom : 0.0;
    s = std::clamp(s, 0.0, 1.0);
    double t = s * bb - dd;
    if (t < 0.0) {
        t = 0.0;
        s = std::clamp(e / c, 0.0, 1.0);
    }
    const ZYLMathPoint p = a + u * s;
    const ZYLMathPoint q = ray.GetPointAt(t);
    const double d2 = p.GetSquaredDistanceTo(q);
    const double r = ray.GetRadiusAt(t);
    if (d2 > r * r)
        return false;
    hit = {p, t, std::sqrt(d2)};
    return true;
}

// Möller–Trumbore; both sides hit. The barycentric bounds are widened by a hair so that a
// ray through a shared edge is not lost between two triangles to rounding.
bool hitTriangle(const ZYLVisPickRay &ray, const ZYLMathPoint &a, const ZYLMathPoint &b, const ZYLMathPoint &c,
                 ElementHit &hit)
{
    constexpr double slack = 1e-12;
    const ZYLMathVector e1 = b - a;
    const ZYLMathVector e2 = c - a;
    const ZYLMathVector p = ray.GetDirection().Cross(e2);
    const double det = e1.Dot(p);
    if (std::abs(det) <= 1e-14 * std::sqrt(e1.GetSquaredLength() * e2.GetSquaredLength()) || det == 0.0)
        return false;
    const double inv = 1.0 / det;
    const ZYLMathVector tv = ray.GetOrigin() - a;
    const double u = tv.Dot(p) * inv;
    if (u < -slack || u > 1.0 + slack)
        return false;
    const ZYLMathVector q = tv.Cross(e1);
    const double v = ray.GetDirection().Dot(q) * inv;
    if (v < -slack || u + v > 1.0 + slack)
        return false;
    const double t = e2.Dot(q) * inv;
    if (t < 0.0)
        return false;
    hit = {ray.GetPointAt(t), t, 0.0};
    return true;
}

// The vertices of element i of a primitive; returns how many (1 to 3).
int elementVertices(const ZYLVisPrimitive &primitive, std::uint32_t i, const ZYLMathPoint *out[3])
{
    switch (primitive.GetKind()) {
    case ZYLVisPrimitive::Kind::Points:
        out[0] = &primitive.GetVertex(int(i));
        return 1;
    case ZYLVisPrimitive::Kind::Polyline:
        out[0] = &primitive.GetVertex(int(i));
        out[1] = &primitive.GetVertex(int(i) + 1);
        return 2;
    case ZYLVisPrimitive::Kind::Segments:
        out[0] = &primitive.GetVertex(int(2 * i));
        out[1] = &primitive.GetVertex(int(2 * i + 1));
        return 2;
    case ZYLVisPrimitive::Kind::Triangles: {
        const auto &triangles = static_cast<const ZYLVisTrianglePrimitive &>(primitive);
        for (int k = 0; k < 3; ++k)
            out[k] = &triangles.GetTriangleVertex(int(i), k);
        return 3;
    }
    }
    return 0;
}

bool hitElement(const ZYLVisPickRay &ray, const ZYLVisPrimitive &primitive, std::uint32_t i, ElementHit &hit)
{
    const ZYLMathPoint *v[3];
    switch (elementVertices(primitive, i, v)) {
    case 1:
        return hitPoint(ray, *v[0], hit);
    case 2:
        return hitSegment(ray, *v[0], *v[1], hit);
    case 3:
        return hitTriangle(ray, *v[0], *v[1], *v[2], hit);
    }
    return false;
}

// Which snap types apply to a kind: vertex bit and midpoint bit.
std::pair<int, int> snapBits(ZYLVisPrimitive::Kind kind)
{
    switch (kind) {
    case ZYLVisPrimitive::Kind::Points:
        return {1, 0};
    case ZYLVisPrimitive::Kind::Polyline:
        return {2, 16};
    case ZYLVisPrimitive::Kind::Segments:
        return {4, 32};
    case ZYLVisPrimitive::Kind::Triangles:
        return {8, 64};
    }
    return {0, 0};
}

// Float boxes are rounded from doubles; growing them by far more than a rounding step keeps
// them conservative for the exact tests.
float padDown(float v)
{
    return v - (std::abs(v) + 1.0f) * 1e-6f;
}
float padUp(float v)
{
    return v + (std::abs(v) + 1.0f) * 1e-6f;
}
}

ZYLVisPickCollector::ZYLVisPickCollector(const ZYLVisPickRay &worldRay)
    : m_ray(worldRay), m_cutoff{infinity, infinity}
{
}

double ZYLVisPickCollector::GetBand(double depth) const
{
    return 2.0 * m_ray.GetRadiusAt(depth) + 1e-9 * (1.0 + std::abs(depth));
}

void ZYLVisPickCollector::Add(const ZYLVisPickCandidate &candidate)
{
    m_candidates.push_back(candidate);
    double &cutoff = m_cutoff[candidate.overlay ? 0 : 1];
    cutoff = std::min(cutoff, candidate.depth + GetBand(candidate.depth));
    if (candidate.overlay) {
        // Anything drawn on top beats everything drawn with the depth test.
        m_hasOverlay = true;
        m_cutoff[1] = -infinity;
    }
}

ZYLVisPickCandidate ZYLVisPickCollector::GetBest() const
{
    double nearest = infinity;
    for (const ZYLVisPickCandidate &c : m_candidates) {
        if (c.overlay == m_hasOverlay)
            nearest = std::min(nearest, c.depth);
    }
    if (nearest == infinity)
        return {};
    const double limit = nearest + GetBand(nearest);
    const ZYLVisPickCandidate *best = nullptr;
    for (const ZYLVisPickCandidate &c : m_candidates) {
        if (c.overlay != m_hasOverlay || c.depth > limit)
            continue;
        if (!best || c.priority > best->priority
            || (c.priority == best->priority
                && (c.distance < best->distance || (c.distance == best->distance && c.depth < best->depth))))
            best = &c;
    }
    return *best;
}

ZYLVisPickIndex::ZYLVisPickIndex(const ZYLVisRep &rep)
{
    for (const ZYLVisRep::Item &item : rep.GetAllPrimitives()) {
        if (item.primitive->GetNumElements() == 0)
            continue;
        PrimitiveIndex index;
        index.primitive = item.primitive;
        index.priority = item.options->GetPriority();
        index.overlay = !item.options->IsDepthEnabled();
        Build(index);
        (index.overlay ? m_hasOverlay : m_hasDepthTested) = true;
        m_primitives.push_back(std::move(index));
    }
}

ZYLVisPickIndex::~ZYLVisPickIndex() = default;

void ZYLVisPickIndex::Build(PrimitiveIndex &index)
{
    const ZYLVisPrimitive &primitive = *index.primitive;
    const std::uint32_t n = std::uint32_t(primitive.GetNumElements());
    std::vector<float> boxes(size_t(n) * 6);
    for (std::uint32_t i = 0; i < n; ++i) {
        const ZYLMathPoint *v[3];
        const int count = elementVertices(primitive, i, v);
        float *box = &boxes[size_t(i) * 6];
        for (int k = 0; k < 3; ++k) {
            double lo = (*v[0])[k], hi = lo;
            for (int j = 1; j < count; ++j) {
                lo = std::min(lo, (*v[j])[k]);
                hi = std::max(hi, (*v[j])[k]);
            }
            box[k] = float(lo);
            box[3 + k] = float(hi);
        }
    }
    index.order.resize(n);
    for (std::uint32_t i = 0; i < n; ++i)
        index.order[i] = i;
    index.nodes.reserve(size_t(n / leafSize + 1) * 2);

    // Top-down median split on the longest axis of the element centres. Recursion depth is
    // about log2(n / leafSize), so an explicit stack is not needed.
    auto build = [&](auto &&self, std::uint32_t start, std::uint32_t count) -> void {
        const std::uint32_t nodeIndex = std::uint32_t(index.nodes.size());
        index.nodes.push_back({});
        float lo[3] = {INFINITY, INFINITY, INFINITY}, hi[3] = {-INFINITY, -INFINITY, -INFINITY};
        float clo[3] = {INFINITY, INFINITY, INFINITY}, chi[3] = {-INFINITY, -INFINITY, -INFINITY};
        for (std::uint32_t i = start; i < start + count; ++i) {
            const float *box = &boxes[size_t(index.order[i]) * 6];
            for (int k = 0; k < 3; ++k) {
                lo[k] = std::min(lo[k], box[k]);
                hi[k] = std::max(hi[k], box[3 + k]);
                const float centre = 0.5f * (box[k] + box[3 + k]);
                clo[k] = std::min(clo[k], centre);
                chi[k] = std::max(chi[k], centre);
            }
        }
        Node &node = index.nodes[nodeIndex];
        for (int k = 0; k < 3; ++k) {
            node.min[k] = padDown(lo[k]);
            node.max[k] = padUp(hi[k]);
        }
        if (count <= leafSize) {
            node.start = start;
            node.count = count;
            return;
        }
        int axis = 0;
        for (int k = 1; k < 3; ++k) {
            if (chi[k] - clo[k] > chi[axis] - clo[axis])
                axis = k;
        }
        const std::uint32_t half = count / 2;
        auto first = index.order.begin() + start;
        std::nth_element(first, first + half, first + count, [&](std::uint32_t a, std::uint32_t b) {
            return boxes[size_t(a) * 6 + size_t(axis)] + boxes[size_t(a) * 6 + 3 + size_t(axis)]
                   < boxes[size_t(b) * 6 + size_t(axis)] + boxes[size_t(b) * 6 + 3 + size_t(axis)];
        });
        self(self, start, half);
        const std::uint32_t right = std::uint32_t(index.nodes.size());
        self(self, start + half, count - half);
        index.nodes[nodeIndex].start = right; // the vector may have grown: index again
        index.nodes[nodeIndex].count = 0;
    };
    build(build, 0, n);
}

bool ZYLVisPickIndex::HitsBox(const ZYLVisPickRay &ray, const double min[3], const double max[3], double cutoff,
                              double *enter)
{
    const ZYLMathPoint &o = ray.GetOrigin();
    const ZYLMathVector &dir = ray.GetDirection();
    // The radius can be no larger than at the farthest depth of any point of the box; growing
    // the box by it makes the slab test conservative for the cone around the ray.
    double toCentre = 0.0, halfDiagonal2 = 0.0;
    for (int k = 0; k < 3; ++k) {
        toCentre += (0.5 * (min[k] + max[k]) - o[k]) * dir[k];
        const double h = 0.5 * (max[k] - min[k]);
        halfDiagonal2 += h * h;
    }
    const double farthest = toCentre + std::sqrt(halfDiagonal2);
    if (farthest < 0.0)
        return false;
    const double grow = ray.GetRadiusAt(farthest);
    double tEnter = 0.0, tExit = infinity;
    for (int k = 0; k < 3; ++k) {
        const double lo = min[k] - grow, hi = max[k] + grow;
        if (dir[k] == 0.0) {
            if (o[k] < lo || o[k] > hi)
                return false;
            continue;
        }
        const double inv = 1.0 / dir[k];
        double t1 = (lo - o[k]) * inv, t2 = (hi - o[k]) * inv;
        if (t1 > t2)
            std::swap(t1, t2);
        tEnter = std::max(tEnter, t1);
        tExit = std::min(tExit, t2);
        if (tEnter > tExit)
            return false;
    }
    if (tEnter > cutoff)
        return false;
    *enter = tEnter;
    return true;
}

template <typename LeafVisitor>
void ZYLVisPickIndex::Traverse(const PrimitiveIndex &index, const ZYLVisPickRay &ray, double cutoff,
                               LeafVisitor &&visit)
{
    std::uint32_t stack[64];
    int top = 0;
    stack[top++] = 0;
    while (top > 0) {
        const Node &node = index.nodes[stack[--top]];
        const double lo[3] = {node.min[0], node.min[1], node.min[2]};
        const double hi[3] = {node.max[0], node.max[1], node.max[2]};
        double enter = 0.0;
        // `visit` may lower the cutoff as it finds hits; it returns the current one.
        if (!HitsBox(ray, lo, hi, cutoff, &enter))
            continue;
        if (node.count > 0) {
            cutoff = visit(node.start, node.count);
            continue;
        }
        const std::uint32_t self = std::uint32_t(&node - index.nodes.data());
        stack[top++] = node.start;
        stack[top++] = self + 1;
    }
}

void ZYLVisPickIndex::Pick(const ZYLVisPickRay &localRay, ZYLVisObject *object, ZYLVisPickCollector &collector) const
{
    for (const PrimitiveIndex &index : m_primitives) {
        Traverse(index, localRay, collector.GetCutoff(index.overlay), [&](std::uint32_t start, std::uint32_t count) {
            ElementHit hit;
            for (std::uint32_t i = start; i < start + count; ++i) {
                const std::uint32_t element = index.order[i];
                if (hitElement(localRay, *index.primitive, element, hit))
                    collector.Add({object, index.primitive, int(element), hit.point, hit.depth, hit.distance,
                                   index.priority, index.overlay});
            }
            return collector.GetCutoff(index.overlay);
        });
    }
}

void ZYLVisPickIndex::Snap(const ZYLVisPickRay &localRay, int snapTypes, ZYLVisObject *object,
                           ZYLVisPickCollector &collector) const
{
    for (const PrimitiveIndex &index : m_primitives) {
        const auto [vertexBit, midpointBit] = snapBits(index.primitive->GetKind());
        const bool vertices = snapTypes & vertexBit;
        const bool midpoints = snapTypes & midpointBit;
        if (!vertices && !midpoints)
            continue;
        Traverse(index, localRay, collector.GetCutoff(false), [&](std::uint32_t start, std::uint32_t count) {
            ElementHit hit;
            auto consider = [&](const ZYLMathPoint &p, std::uint32_t element) {
                if (hitPoint(localRay, p, hit))
                    collector.Add({object, index.primitive, int(element), hit.point, hit.depth, hit.distance, 0, false});
            };
            for (std::uint32_t i = start; i < start + count; ++i) {
                const std::uint32_t element = index.order[i];
                const ZYLMathPoint *v[3];
                const int n = elementVertices(*index.primitive, element, v);
                for (int k = 0; k < n && vertices; ++k)
                    consider(*v[k], element);
                if (midpoints && n > 1) {
                    for (int k = 0; k < (n == 3 ? 3 : 1); ++k)
                        consider(ZYLMathPoint::Interpolate(*v[k], *v[(k + 1) % n], 0.5), element);
                }
            }
            return collector.GetCutoff(false);
        });
    }
}
