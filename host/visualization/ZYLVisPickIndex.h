// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Internal to the visualization library: the CPU picking structures behind
// ZYLVisEnvironment::Pick and mouse snapping. Not exported.

#include "ZYLVisPickRay.h"

#include <cstdint>
#include <vector>

class ZYLVisObject;
class ZYLVisPrimitive;
class ZYLVisRep;

/// One candidate of a pick, in the local coordinates of its object.
struct ZYLVisPickCandidate {
    ZYLVisObject *object = nullptr;
    const ZYLVisPrimitive *primitive = nullptr;
    int element = -1;
    ZYLMathPoint point;
    double depth = 0.0;
    double distance = 0.0;
    int priority = 0;
    bool overlay = false;
};

/// Gathers the candidates of one pick across objects and keeps, per layer (primitives drawn
/// without depth test, then the others), the depth beyond which no candidate can win, so that
/// the traversal can skip what lies behind.
class ZYLVisPickCollector {
public:
    explicit ZYLVisPickCollector(const ZYLVisPickRay &worldRay);

    /// Returns the depth beyond which a hit of the layer cannot win.
    double GetCutoff(bool overlay) const { return m_cutoff[overlay ? 0 : 1]; }
    void Add(const ZYLVisPickCandidate &candidate);
    /// Returns the winner, or a candidate without object when there is none.
    ZYLVisPickCandidate GetBest() const;
    /// Hits within this depth of the nearest one count as at the same depth.
    double GetBand(double depth) const;

private:
    ZYLVisPickRay m_ray;
    double m_cutoff[2];
    std::vector<ZYLVisPickCandidate> m_candidates;
    bool m_hasOverlay = false;
};

/// Bounding volume hierarchies over the elements (dots, segments, triangles) of every
/// primitive of a representation tree. Built once per representation; representations are
/// immutable, so it stays valid for the representation's life.
class ZYLVisPickIndex {
public:
    explicit ZYLVisPickIndex(const ZYLVisRep &rep);
    ~ZYLVisPickIndex();

    bool HasOverlay() const { return m_hasOverlay; }
    bool HasDepthTested() const { return m_hasDepthTested; }

    /// Adds the element hits of a local ray to the collector, tagged with the object.
    void Pick(const ZYLVisPickRay &localRay, ZYLVisObject *object, ZYLVisPickCollector &collector) const;
    /// Adds the snappable vertices of the given types within the pick radius of a local ray.
    void Snap(const ZYLVisPickRay &localRay, int snapTypes, ZYLVisObject *object, ZYLVisPickCollector &collector) const;

    /// Tests a ray against a box grown by the pick radius; on a hit, returns true with the
    /// depth where the ray enters it. Exposed for the object-level test of the environment.
    static bool HitsBox(const ZYLVisPickRay &ray, const double min[3], const double max[3], double cutoff,
                        double *enter);

private:
    struct Node {
        float min[3];
        float max[3];
        std::uint32_t start; // first entry of `order` for a leaf, right child for an inner node
        std::uint32_t count; // number of elements of a leaf, 0 for an inner node
    };
    struct PrimitiveIndex {
        const ZYLVisPrimitive *primitive = nullptr;
        int priority = 0;
        bool overlay = false;
        std::vector<Node> nodes;
        std::vector<std::uint32_t> order;
    };

    static void Build(PrimitiveIndex &index);
    template <typename LeafVisitor>
    static void Traverse(const PrimitiveIndex &index, const ZYLVisPickRay &ray, double cutoff, LeafVisitor &&visit);

    std::vector<PrimitiveIndex> m_primitives;
    bool m_hasOverlay = false;
    bool m_hasDepthTested = false;
};
