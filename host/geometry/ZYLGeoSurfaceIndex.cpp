// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoSurfaceIndex.h"

#include "ZYLGeoPartition.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using Domain = ZYLGeoSurface::Domain;

constexpr double inf = std::numeric_limits<double>::infinity();
// Leaves along the longer side of the surface: small enough that a leaf's box is thin, few
// enough that building the index stays in the milliseconds.
constexpr int targetLeaves = 32;
constexpr int maxLeaves = 128;
constexpr int subdivisions = 4; // sample cells per leaf and direction
constexpr int blockLevels = 3;  // blocks of 3², 5² and 7² leaves
constexpr int maxIterations = 60;
constexpr int maxHalvings = 30;
// Feet are accurate to this fraction of the surface's size.
constexpr double relativeTolerance = 1e-9;

double Clamp(double x, double lo, double hi)
{
    return std::isnan(x) ? 0.5 * (lo + hi) : std::clamp(x, lo, hi);
}

// A box in a frame of its own, so that the box of a tilted, gently curved patch is thin.
struct OrientedBox {
    ZYLMathPoint origin;
    std::array<ZYLMathVector, 3> axes;
    std::array<double, 3> lo{inf, inf, inf};
    std::array<double, 3> hi{-inf, -inf, -inf};

    OrientedBox() = default;
    // The frame follows du and du × dv at the patch centre.
    OrientedBox(const ZYLMathPoint &centre, const ZYLMathVector &du, const ZYLMathVector &dv) : origin(centre)
    {
        const ZYLMathVector first = du.Normalized().value_or(dv.Normalized().value_or(ZYLMathVector(1, 0, 0)));
        std::optional<ZYLMathVector> normal = du.Cross(dv).Normalized();
        if (!normal) {
            normal = first.Cross(ZYLMathVector(1, 0, 0)).Normalized();
            if (!normal)
                normal = first.Cross(ZYLMathVector(0, 1, 0)).Normalized();
        }
        axes = {first, normal->Cross(first), *normal};
    }

    void Add(const ZYLMathPoint &p)
    {
        const ZYLMathVector w = p - origin;
        for (int k = 0; k < 3; ++k) {
            const double c = w.Dot(axes[size_t(k)]);
            lo[size_t(k)] = std::min(lo[size_t(k)], c);
            hi[size_t(k)] = std::max(hi[size_t(k)], c);
        }
    }
    void Inflate(double e)
    {
        for (size_t k = 0; k < 3; ++k) {
            lo[k] -= e;
            hi[k] += e;
        }
    }
    double SquaredDistance(const ZYLMathPoint &q) const
    {
        const ZYLMathVector w = q - origin;
        double sum = 0.0;
        for (size_t k = 0; k < 3; ++k) {
            const double c = w.Dot(axes[k]);
            const double excess = c < lo[k] ? lo[k] - c : (c > hi[k] ? c - hi[k] : 0.0);
            sum += excess * excess;
        }
        return sum;
    }
    ZYLMathPoint GetCenter() const
    {
        ZYLMathPoint c = origin;
        for (size_t k = 0; k < 3; ++k)
            c += axes[k] * (0.5 * (lo[k] + hi[k]));
        return c;
    }
    double GetHalfDiagonal() const
    {
        const ZYLMathVector size(hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]);
        return 0.5 * size.GetLength();
    }
    void AddCornersTo(ZYLMathBoundingBox *box) const
    {
        for (int corner = 0; corner < 8; ++corner) {
            ZYLMathPoint p = origin;
            for (size_t k = 0; k < 3; ++k)
                p += axes[k] * ((corner >> k) & 1 ? hi[k] : lo[k]);
            box->Add(p);
        }
    }
};

// What decides whether ½|S − q|² is convex over a set of leaves: its Hessian is
// JᵀJ + Σ (S − q)ₖ ∇²Sₖ, positive definite when the smallest eigenvalue of JᵀJ exceeds
// |S − q| times the bound of the second-derivative operator, and |S − q| is at most the
// distance to the set's bounding sphere centre plus its radius.
struct Bounds {
    ZYLMathPoint centre;
    double radius = 0.0;
    double sigma2 = inf;    // lower bound of the smallest eigenvalue of JᵀJ
    double curvature = 0.0; // bound of |a²duu + 2ab duv + b²dvv| for unit (a, b); infinite across kinks

    bool IsConvexFor(const ZYLMathPoint &q) const
    {
        return curvature * (q.GetDistanceTo(centre) + radius) < sigma2;
    }
};

struct LeafRange {
    int i0 = 0, i1 = 0, j0 = 0, j1 = 0;
    bool Contains(const LeafRange &o) const { return o.i0 >= i0 && o.i1 <= i1 && o.j0 >= j0 && o.j1 <= j1; }
};

struct Node {
    LeafRange range;
    Domain rect;
    OrientedBox box;
    Bounds bounds;
    std::array<int, 2> children{-1, -1};
    int leaf = -1;
};

struct Leaf {
    double uc = 0.0, vc = 0.0; // parameters of the centre
    ZYLMathPoint point;        // centre point and derivatives: the linear model for seeds
    ZYLMathVector du, dv;
    double inv00 = 0.0, inv01 = 0.0, inv11 = 0.0; // (JᵀJ)⁻¹ at the centre, zero when singular
    double margin = 0.0; // how far the patch may stray from its sample grid's cells
    double cover = 0.0;  // every patch point lies this close to a sample
    Bounds bounds;
    int node = -1;
};

struct Block {
    LeafRange range;
    Bounds bounds;
    double separation = inf; // lower bound of the distance from the leaf to the surface outside
};

struct Candidate {
    double u = 0.0, v = 0.0;
    ZYLMathPoint point;
    ZYLMathVector du, dv;
    double dist2 = inf;
};

// Solves the symmetric 2 × 2 system [a b; b c] s = −g when the matrix is positive definite.
bool SolvePositive(double a, double b, double c, double gu, double gv, double *su, double *sv)
{
    const double det = a * c - b * b;
    if (!(a > 0.0 && c > 0.0 && det > 1e-12 * a * c))
        return false;
    *su = -(c * gu - b * gv) / det;
    *sv = -(a * gv - b * gu) / det;
    return true;
}

double SmallestEigenvalue(const ZYLMathVector &du, const ZYLMathVector &dv)
{
    const double a = du.Dot(du), b = du.Dot(dv), c = dv.Dot(dv);
    const double h = 0.5 * (a - c);
    return 0.5 * (a + c) - std::sqrt(h * h + b * b);
}

} // namespace

struct ZYLGeoSurfaceIndex::Data {
    explicit Data(const ZYLGeoSurface &s);

    // Building
    void BuildLeafGrid();
    void Sample();
    void BuildLeaves();
    int BuildNode(const LeafRange &range);
    void BuildBlocks();
    Bounds Aggregate(const LeafRange &range) const;
    bool HasKinkInside(const LeafRange &range) const;
    double SeparationBound(const Leaf &leaf, int leafIndex, const Leaf &other) const;
    size_t SampleIndex(int iu, int iv) const { return size_t(iu) * sampleV.size() + size_t(iv); }

    // Querying
    Candidate Solve(const ZYLMathPoint &q, const Domain &rect, double u, double v) const;
    bool IsStationary(const ZYLMathPoint &q, const Candidate &c, const Domain &rect) const;
    void Seed(const ZYLMathPoint &q, double *u, double *v) const;
    void SeedInLeaf(const Leaf &leaf, const Domain &rect, const ZYLMathPoint &q, double *u, double *v) const;
    int LeafOf(double u, double v) const;
    bool Certify(const ZYLMathPoint &q, const Candidate &best, LeafRange *explained) const;
    void Search(const ZYLMathPoint &q, Candidate *best, const LeafRange &explained) const;
    void SolveLeaf(const ZYLMathPoint &q, const Node &node, Candidate *best) const;
    ZYLGeoSurfaceFoot MakeFoot(const ZYLMathPoint &q, const Candidate &c) const;

    const ZYLGeoSurface &surface;
    Domain domain;
    int nu = 1, nv = 1; // leaves per direction
    std::vector<double> leafU, leafV;
    std::vector<char> kinkU, kinkV; // per leaf border: a kink lies on it
    std::vector<double> sampleU, sampleV;
    std::vector<ZYLMathPoint> samplePoint;
    std::vector<ZYLMathVector> sampleDu, sampleDv;
    std::vector<Leaf> leaves; // leaf (i, j) at i * nv + j
    std::vector<Node> nodes;  // the root first
    std::vector<std::array<Block, blockLevels>> blocks;
    double tolerance = 0.0;
    double scale = 0.0; // radius of the whole surface's bounding sphere
    ZYLMathBoundingBox box;
};

ZYLGeoSurfaceIndex::Data::Data(const ZYLGeoSurface &s) : surface(s), domain(s.GetDomain())
{
    BuildLeafGrid();
    Sample();
    BuildLeaves();
    nodes.reserve(size_t(2 * nu * nv));
    BuildNode({0, nu, 0, nv});
    BuildBlocks();
    scale = std::max(nodes.front().bounds.radius, 1e-3);
    tolerance = relativeTolerance * scale;
    for (const Leaf &leaf : leaves)
        nodes[size_t(leaf.node)].box.AddCornersTo(&box);
}

void ZYLGeoSurfaceIndex::Data::BuildLeafGrid()
{
    // Leaves should be roughly square in space, so count them from the lengths of the
    // iso-parameter lines of a coarse grid.
    constexpr int coarse = 16;
    std::vector<ZYLMathPoint> grid;
    grid.reserve((coarse + 1) * (coarse + 1));
    for (int i = 0; i <= coarse; ++i) {
        for (int j = 0; j <= coarse; ++j) {
            grid.push_back(surface.Evaluate(domain.uMin + (domain.uMax - domain.uMin) * i / coarse,
                                            domain.vMin + (domain.vMax - domain.vMin) * j / coarse));
        }
    }
    double lengthU = 0.0, lengthV = 0.0;
    for (int k = 0; k <= coarse; ++k) {
        double alongU = 0.0, alongV = 0.0;
        for (int m = 0; m < coarse; ++m) {
            alongU += grid[size_t((m + 1) * (coarse + 1) + k)].GetDistanceTo(grid[size_t(m * (coarse + 1) + k)]);
            alongV += grid[size_t(k * (coarse + 1) + m + 1)].GetDistanceTo(grid[size_t(k * (coarse + 1) + m)]);
        }
        lengthU = std::max(lengthU, alongU);
        lengthV = std::max(lengthV, alongV);
    }
    const double size = std::max(lengthU, lengthV);
    int countU = targetLeaves, countV = targetLeaves;
    if (size > 0.0 && std::isfinite(size)) {
        countU = std::clamp(int(std::ceil(targetLeaves * lengthU / size)), 1, maxLeaves);
        countV = std::clamp(int(std::ceil(targetLeaves * lengthV / size)), 1, maxLeaves);
    }
    leafU = ZYLGeoPartition(domain.uMin, domain.uMax, surface.GetUKinks(), countU, &kinkU);
    leafV = ZYLGeoPartition(domain.vMin, domain.vMax, surface.GetVKinks(), countV, &kinkV);
    nu = int(leafU.size()) - 1;
    nv = int(leafV.size()) - 1;
}

void ZYLGeoSurfaceIndex::Data::Sample()
{
    const auto refine = [](const std::vector<double> &borders) {
        std::vector<double> samples;
        for (size_t i = 0; i + 1 < borders.size(); ++i) {
            for (int s = 0; s < subdivisions; ++s)
                samples.push_back(borders[i] + (borders[i + 1] - borders[i]) * s / subdivisions);
        }
        samples.push_back(borders.back());
        return samples;
    };
    sampleU = refine(leafU);
    sampleV = refine(leafV);
    const size_t count = sampleU.size() * sampleV.size();
    samplePoint.resize(count);
    sampleDu.resize(count);
    sampleDv.resize(count);
    for (size_t iu = 0; iu < sampleU.size(); ++iu) {
        for (size_t iv = 0; iv < sampleV.size(); ++iv) {
            const size_t k = SampleIndex(int(iu), int(iv));
            surface.EvaluateDerivatives(sampleU[iu], sampleV[iv], &samplePoint[k], &sampleDu[k], &sampleDv[k]);
        }
    }
}

void ZYLGeoSurfaceIndex::Data::BuildLeaves()
{
    leaves.resize(size_t(nu * nv));
    for (int i = 0; i < nu; ++i) {
        for (int j = 0; j < nv; ++j) {
            Leaf &leaf = leaves[size_t(i * nv + j)];
            const Domain rect{leafU[size_t(i)], leafU[size_t(i + 1)], leafV[size_t(j)], leafV[size_t(j + 1)]};
            ZYLGeoSurface::SecondDerivativeBounds m = surface.GetSecondDerivativeBounds(rect);
            // A NaN bound is no bound at all.
            for (double *b : {&m.uu, &m.uv, &m.vv}) {
                if (!(*b >= 0.0))
                    *b = inf;
            }
            const double hu = (rect.uMax - rect.uMin) / subdivisions;
            const double hv = (rect.vMax - rect.vMin) / subdivisions;
            // Bilinear interpolation of a sample cell is off by at most h²·|S''|/8 per
            // direction, and it stays inside the samples' box.
            leaf.margin = (hu * hu * m.uu + hv * hv * m.vv) / 8.0;
            const double growU = 0.5 * (m.uu * hu + m.uv * hv); // change of du within half a cell
            const double growV = 0.5 * (m.uv * hu + m.vv * hv);
            double maxDu = 0.0, maxDv = 0.0, minEigen = inf;
            for (int iu = subdivisions * i; iu <= subdivisions * (i + 1); ++iu) {
                for (int iv = subdivisions * j; iv <= subdivisions * (j + 1); ++iv) {
                    const size_t k = SampleIndex(iu, iv);
                    maxDu = std::max(maxDu, sampleDu[k].GetLength());
                    maxDv = std::max(maxDv, sampleDv[k].GetLength());
                    minEigen = std::min(minEigen, SmallestEigenvalue(sampleDu[k], sampleDv[k]));
                }
            }
            maxDu += growU;
            maxDv += growV;
            leaf.cover = 0.5 * (hu * maxDu + hv * maxDv);
            // Every point is within half a cell of a sample, where the entries of JᵀJ differ
            // by at most these amounts; the eigenvalue moves by at most their Frobenius norm.
            const double da = 2.0 * maxDu * growU;
            const double dc = 2.0 * maxDv * growV;
            const double db = maxDu * growV + maxDv * growU;
            leaf.bounds.sigma2 = minEigen - std::sqrt(da * da + 2.0 * db * db + dc * dc);
            leaf.bounds.curvature = std::max(m.uu, m.vv) + m.uv;
            if (std::isnan(leaf.bounds.sigma2))
                leaf.bounds.sigma2 = -inf;

            leaf.uc = 0.5 * (rect.uMin + rect.uMax);
            leaf.vc = 0.5 * (rect.vMin + rect.vMax);
            surface.EvaluateDerivatives(leaf.uc, leaf.vc, &leaf.point, &leaf.du, &leaf.dv);
            const double a = leaf.du.Dot(leaf.du), b = leaf.du.Dot(leaf.dv), c = leaf.dv.Dot(leaf.dv);
            const double det = a * c - b * b;
            if (det > 1e-12 * a * c && det > 0.0) {
                leaf.inv00 = c / det;
                leaf.inv01 = -b / det;
                leaf.inv11 = a / det;
            }
        }
    }
}

bool ZYLGeoSurfaceIndex::Data::HasKinkInside(const LeafRange &range) const
{
    for (int i = range.i0 + 1; i < range.i1; ++i) {
        if (kinkU[size_t(i)])
            return true;
    }
    for (int j = range.j0 + 1; j < range.j1; ++j) {
        if (kinkV[size_t(j)])
            return true;
    }
    return false;
}

Bounds ZYLGeoSurfaceIndex::Data::Aggregate(const LeafRange &range) const
{
    Bounds bounds;
    for (int i = range.i0; i < range.i1; ++i) {
        for (int j = range.j0; j < range.j1; ++j) {
            const Bounds &leaf = leaves[size_t(i * nv + j)].bounds;
            bounds.sigma2 = std::min(bounds.sigma2, leaf.sigma2);
            bounds.curvature = std::max(bounds.curvature, leaf.curvature);
        }
    }
    // Across a crease the distance function has no Hessian: no convexity claim there.
    if (HasKinkInside(range))
        bounds.curvature = inf;
    return bounds;
}

int ZYLGeoSurfaceIndex::Data::BuildNode(const LeafRange &range)
{
    const int index = int(nodes.size());
    nodes.emplace_back();
    Node node;
    node.range = range;
    node.rect = {leafU[size_t(range.i0)], leafU[size_t(range.i1)], leafV[size_t(range.j0)], leafV[size_t(range.j1)]};
    ZYLMathPoint centre;
    ZYLMathVector du, dv;
    surface.EvaluateDerivatives(0.5 * (node.rect.uMin + node.rect.uMax), 0.5 * (node.rect.vMin + node.rect.vMax),
                                &centre, &du, &dv);
    node.box = OrientedBox(centre, du, dv);
    double margin = 0.0;
    for (int iu = subdivisions * range.i0; iu <= subdivisions * range.i1; ++iu) {
        for (int iv = subdivisions * range.j0; iv <= subdivisions * range.j1; ++iv)
            node.box.Add(samplePoint[SampleIndex(iu, iv)]);
    }
    for (int i = range.i0; i < range.i1; ++i) {
        for (int j = range.j0; j < range.j1; ++j)
            margin = std::max(margin, leaves[size_t(i * nv + j)].margin);
    }
    node.box.Inflate(margin);
    node.bounds = Aggregate(range);
    node.bounds.centre = node.box.GetCenter();
    node.bounds.radius = node.box.GetHalfDiagonal();

    if (range.i1 - range.i0 == 1 && range.j1 - range.j0 == 1) {
        node.leaf = range.i0 * nv + range.j0;
        Leaf &leaf = leaves[size_t(node.leaf)];
        leaf.node = index;
        leaf.bounds.centre = node.bounds.centre;
        leaf.bounds.radius = node.bounds.radius;
    } else if (range.i1 - range.i0 >= range.j1 - range.j0) {
        const int mid = (range.i0 + range.i1) / 2;
        node.children = {BuildNode({range.i0, mid, range.j0, range.j1}), BuildNode({mid, range.i1, range.j0, range.j1})};
    } else {
        const int mid = (range.j0 + range.j1) / 2;
        node.children = {BuildNode({range.i0, range.i1, range.j0, mid}), BuildNode({range.i0, range.i1, mid, range.j1})};
    }
    nodes[size_t(index)] = node;
    return index;
}

double ZYLGeoSurfaceIndex::Data::SeparationBound(const Leaf &leaf, int leafIndex, const Leaf &other) const
{
    // Every point of the leaf's patch is within `cover` of one of its samples and every
    // point of the other patch lies in its box.
    const int i = leafIndex / nv, j = leafIndex % nv;
    const OrientedBox &otherBox = nodes[size_t(other.node)].box;
    double nearest = inf;
    for (int iu = subdivisions * i; iu <= subdivisions * (i + 1); ++iu) {
        for (int iv = subdivisions * j; iv <= subdivisions * (j + 1); ++iv)
            nearest = std::min(nearest, otherBox.SquaredDistance(samplePoint[SampleIndex(iu, iv)]));
    }
    return std::sqrt(nearest) - leaf.cover;
}

void ZYLGeoSurfaceIndex::Data::BuildBlocks()
{
    blocks.resize(leaves.size());
    for (int i = 0; i < nu; ++i) {
        for (int j = 0; j < nv; ++j) {
            const int index = i * nv + j;
            for (int k = 1; k <= blockLevels; ++k) {
                Block &block = blocks[size_t(index)][size_t(k - 1)];
                block.range = {std::max(0, i - k), std::min(nu, i + k + 1), std::max(0, j - k), std::min(nv, j + k + 1)};
                block.bounds = Aggregate(block.range);
                ZYLMathVector sum;
                int count = 0;
                for (int a = block.range.i0; a < block.range.i1; ++a) {
                    for (int b = block.range.j0; b < block.range.j1; ++b, ++count)
                        sum += leaves[size_t(a * nv + b)].bounds.centre.ToVector();
                }
                block.bounds.centre = ZYLMathPoint() + sum / double(count);
                double radius = 0.0;
                for (int a = block.range.i0; a < block.range.i1; ++a) {
                    for (int b = block.range.j0; b < block.range.j1; ++b) {
                        const Bounds &leaf = leaves[size_t(a * nv + b)].bounds;
                        radius = std::max(radius, block.bounds.centre.GetDistanceTo(leaf.centre) + leaf.radius);
                    }
                }
                block.bounds.radius = radius;
            }
            // Separation of the leaf from everything outside each block: a leaf at Chebyshev
            // distance r (in leaves) lies outside the blocks of k < r.
            const Leaf &leaf = leaves[size_t(index)];
            std::array<Block, blockLevels> &own = blocks[size_t(index)];
            for (int a = 0; a < nu; ++a) {
                for (int b = 0; b < nv; ++b) {
                    const int r = std::max(std::abs(a - i), std::abs(b - j));
                    if (r < 2)
                        continue;
                    const int levels = std::min(r - 1, blockLevels);
                    const Leaf &other = leaves[size_t(a * nv + b)];
                    const double sphere = leaf.bounds.centre.GetDistanceTo(other.bounds.centre) - leaf.bounds.radius
                                          - other.bounds.radius;
                    bool matters = false;
                    for (int k = 0; k < levels; ++k)
                        matters = matters || sphere < own[size_t(k)].separation;
                    if (!matters)
                        continue;
                    const double bound = std::max(sphere, SeparationBound(leaf, index, other));
                    for (int k = 0; k < levels; ++k)
                        own[size_t(k)].separation = std::min(own[size_t(k)].separation, std::max(bound, 0.0));
                }
            }
        }
    }
}

Candidate ZYLGeoSurfaceIndex::Data::Solve(const ZYLMathPoint &q, const Domain &rect, double u, double v) const
{
    Candidate c;
    c.u = Clamp(u, rect.uMin, rect.uMax);
    c.v = Clamp(v, rect.vMin, rect.vMax);
    ZYLGeoSurface::SecondDerivatives s = surface.EvaluateSecondDerivatives(c.u, c.v);
    ZYLMathVector r = s.point - q;
    double f = r.GetSquaredLength();
    // Rounding in |S − q|² (coordinates far from the origin) must not stop a good step.
    const double noise = 1e-15 * (std::abs(q.X()) + std::abs(q.Y()) + std::abs(q.Z()) + scale);

    const auto tryStep = [&](double su, double sv, bool *tiny) {
        *tiny = false;
        for (int h = 0; h < maxHalvings; ++h, su *= 0.5, sv *= 0.5) {
            const double nextU = Clamp(c.u + su, rect.uMin, rect.uMax);
            const double nextV = Clamp(c.v + sv, rect.vMin, rect.vMax);
            if ((s.du * (nextU - c.u) + s.dv * (nextV - c.v)).GetSquaredLength() <= 0.25 * tolerance * tolerance) {
                *tiny = true;
                return false;
            }
            const ZYLGeoSurface::SecondDerivatives t = surface.EvaluateSecondDerivatives(nextU, nextV);
            const ZYLMathVector rn = t.point - q;
            const double fn = rn.GetSquaredLength();
            if (fn <= f + 2.0 * std::sqrt(f) * noise + noise * noise) {
                *tiny = h == 0 && (t.point - s.point).GetSquaredLength() <= tolerance * tolerance;
                c.u = nextU;
                c.v = nextV;
                s = t;
                r = rn;
                f = fn;
                return true;
            }
        }
        return false;
    };

    for (int it = 0; it < maxIterations; ++it) {
        const double gu = r.Dot(s.du), gv = r.Dot(s.dv);
        const double a = s.du.Dot(s.du), b = s.du.Dot(s.dv), cc = s.dv.Dot(s.dv);
        // A variable on a bound that the gradient pushes outward stays there.
        const bool fixU = (c.u <= rect.uMin && gu > 0.0) || (c.u >= rect.uMax && gu < 0.0);
        const bool fixV = (c.v <= rect.vMin && gv > 0.0) || (c.v >= rect.vMax && gv < 0.0);
        const double pgu = fixU ? 0.0 : gu, pgv = fixV ? 0.0 : gv;
        // The residual's tangential length along the free directions (squared).
        const double tangential2 = (a > 0.0 ? pgu * pgu / a : 0.0) + (cc > 0.0 ? pgv * pgv / cc : 0.0);
        if (tangential2 <= tolerance * tolerance)
            break;

        // Newton on the free variables; Gauss-Newton where the Hessian is not positive
        // definite (far on the concave side).
        const double huu = a + r.Dot(s.duu), huv = b + r.Dot(s.duv), hvv = cc + r.Dot(s.dvv);
        double su = 0.0, sv = 0.0;
        bool newton = true;
        if (!fixU && !fixV) {
            if (!SolvePositive(huu, huv, hvv, gu, gv, &su, &sv)) {
                newton = false;
                const double damping = 1e-9 * (a + cc) + 1e-300;
                if (!SolvePositive(a + damping, b, cc + damping, gu, gv, &su, &sv)) {
                    su = a > 0.0 ? -gu / a : 0.0;
                    sv = cc > 0.0 ? -gv / cc : 0.0;
                }
            }
        } else if (!fixU) {
            newton = huu > 0.0;
            su = -gu / (newton ? huu : (a > 0.0 ? a : 1.0));
        } else {
            newton = hvv > 0.0;
            sv = -gv / (newton ? hvv : (cc > 0.0 ? cc : 1.0));
        }
        // Close to the answer the second-order Taylor model of S is exact to well below the
        // tolerance, so the last Newton step needs no evaluation of its own.
        if (newton && c.u + su >= rect.uMin && c.u + su <= rect.uMax && c.v + sv >= rect.vMin
            && c.v + sv <= rect.vMax) {
            const ZYLMathVector linear = s.du * su + s.dv * sv;
            const ZYLMathVector quadratic = (s.duu * (su * su) + s.duv * (2.0 * su * sv) + s.dvv * (sv * sv)) * 0.5;
            if (quadratic.GetSquaredLength() <= tolerance * tolerance && linear.GetSquaredLength() <= tolerance * scale) {
                c.u += su;
                c.v += sv;
                s.point += linear + quadratic;
                s.du += s.duu * su + s.duv * sv;
                s.dv += s.duv * su + s.dvv * sv;
                r = s.point - q;
                f = r.GetSquaredLength();
                break;
            }
        }
        bool tiny = false;
        if (tryStep(su, sv, &tiny)) {
            // A full Newton step this short leaves an error far below the tolerance.
            if (tiny && newton)
                break;
            continue;
        }
        // The projected Newton direction may not descend when a bound cuts it: fall back to
        // the scaled gradient. When that cannot descend either, the point is a minimum to
        // working accuracy.
        if (!tryStep(a > 0.0 ? -pgu / a : 0.0, cc > 0.0 ? -pgv / cc : 0.0, &tiny) || tiny)
            break;
    }
    c.point = s.point;
    c.du = s.du;
    c.dv = s.dv;
    c.dist2 = f;
    return c;
}

bool ZYLGeoSurfaceIndex::Data::IsStationary(const ZYLMathPoint &q, const Candidate &c, const Domain &rect) const
{
    const ZYLMathVector r = c.point - q;
    const double gu = r.Dot(c.du), gv = r.Dot(c.dv);
    const double a = c.du.Dot(c.du), cc = c.dv.Dot(c.dv);
    const bool fixU = (c.u <= rect.uMin && gu > 0.0) || (c.u >= rect.uMax && gu < 0.0);
    const bool fixV = (c.v <= rect.vMin && gv > 0.0) || (c.v >= rect.vMax && gv < 0.0);
    const double pgu = fixU ? 0.0 : gu, pgv = fixV ? 0.0 : gv;
    const double tangential2 = (a > 0.0 ? pgu * pgu / a : 0.0) + (cc > 0.0 ? pgv * pgv / cc : 0.0);
    return tangential2 <= 16.0 * tolerance * tolerance;
}

int ZYLGeoSurfaceIndex::Data::LeafOf(double u, double v) const
{
    const auto find = [](const std::vector<double> &borders, double x) {
        const auto it = std::upper_bound(borders.begin() + 1, borders.end() - 1, x);
        return int(it - (borders.begin() + 1));
    };
    return find(leafU, u) * nv + find(leafV, v);
}

void ZYLGeoSurfaceIndex::Data::SeedInLeaf(const Leaf &leaf, const Domain &rect, const ZYLMathPoint &q, double *u,
                                          double *v) const
{
    // Least squares on the centre's tangent plane: the foot of the linear model.
    const ZYLMathVector w = q - leaf.point;
    const double bu = w.Dot(leaf.du), bv = w.Dot(leaf.dv);
    *u = Clamp(leaf.uc + leaf.inv00 * bu + leaf.inv01 * bv, rect.uMin, rect.uMax);
    *v = Clamp(leaf.vc + leaf.inv01 * bu + leaf.inv11 * bv, rect.vMin, rect.vMax);
}

void ZYLGeoSurfaceIndex::Data::Seed(const ZYLMathPoint &q, double *u, double *v) const
{
    // Greedy descent to the leaf whose box is nearest; near the surface several boxes hold q,
    // and then the nearer box centre decides.
    const Node *node = &nodes.front();
    while (node->leaf < 0) {
        const Node &first = nodes[size_t(node->children[0])];
        const Node &second = nodes[size_t(node->children[1])];
        const double d0 = first.box.SquaredDistance(q), d1 = second.box.SquaredDistance(q);
        const bool takeFirst = d0 != d1 ? d0 < d1
                                        : q.GetSquaredDistanceTo(first.bounds.centre)
                                              <= q.GetSquaredDistanceTo(second.bounds.centre);
        node = takeFirst ? &first : &second;
    }
    SeedInLeaf(leaves[size_t(node->leaf)], node->rect, q, u, v);
}

bool ZYLGeoSurfaceIndex::Data::Certify(const ZYLMathPoint &q, const Candidate &best, LeafRange *explained) const
{
    *explained = {};
    if (!IsStationary(q, best, domain))
        return false;
    const std::array<Block, blockLevels> &own = blocks[size_t(LeafOf(best.u, best.v))];
    // The largest block on which the distance is convex holds no better point than the
    // stationary one; outside it nothing is nearer if q is close enough to the leaf.
    for (int k = blockLevels - 1; k >= 0; --k) {
        const Block &block = own[size_t(k)];
        if (block.bounds.IsConvexFor(q)) {
            *explained = block.range;
            return 4.0 * best.dist2 <= block.separation * block.separation;
        }
    }
    return false;
}

void ZYLGeoSurfaceIndex::Data::SolveLeaf(const ZYLMathPoint &q, const Node &node, Candidate *best) const
{
    const Leaf &leaf = leaves[size_t(node.leaf)];
    double u = 0.0, v = 0.0;
    SeedInLeaf(leaf, node.rect, q, &u, &v);
    Candidate c = Solve(q, node.rect, u, v);
    if (!leaf.bounds.IsConvexFor(q)) {
        // Several local minima are possible (q near a centre of curvature, or a crease):
        // start from the centre and the four quarter points too. Such minima lie at nearly
        // the same distance, which is what matters here.
        const Domain &r = node.rect;
        const double du = r.uMax - r.uMin, dv = r.vMax - r.vMin;
        constexpr std::array<std::array<double, 2>, 5> starts{{{0.5, 0.5}, {0.25, 0.25}, {0.75, 0.25}, {0.25, 0.75}, {0.75, 0.75}}};
        for (const std::array<double, 2> &f : starts) {
            const Candidate other = Solve(q, r, r.uMin + f[0] * du, r.vMin + f[1] * dv);
            if (other.dist2 < c.dist2)
                c = other;
        }
    }
    if (c.dist2 < best->dist2)
        *best = c;
}

void ZYLGeoSurfaceIndex::Data::Search(const ZYLMathPoint &q, Candidate *best, const LeafRange &explained) const
{
    struct Entry {
        int node;
        double lowerBound;
    };
    std::vector<Entry> stack;
    stack.reserve(64);
    stack.push_back({0, nodes.front().box.SquaredDistance(q)});
    bool stationary = IsStationary(q, *best, domain);
    while (!stack.empty()) {
        const Entry entry = stack.back();
        stack.pop_back();
        const Node &node = nodes[size_t(entry.node)];
        if (entry.lowerBound >= best->dist2 || explained.Contains(node.range))
            continue;
        if (node.leaf >= 0) {
            const double before = best->dist2;
            SolveLeaf(q, node, best);
            if (best->dist2 < before)
                stationary = IsStationary(q, *best, domain);
            continue;
        }
        // A convex node holding a stationary point of the whole problem has no better point.
        const Domain &r = node.rect;
        if (stationary && best->u >= r.uMin && best->u <= r.uMax && best->v >= r.vMin && best->v <= r.vMax
            && node.bounds.IsConvexFor(q)) {
            continue;
        }
        Entry children[2];
        for (int k = 0; k < 2; ++k) {
            const int child = node.children[size_t(k)];
            children[k] = {child, nodes[size_t(child)].box.SquaredDistance(q)};
        }
        // The nearer child is searched first, so the best distance shrinks early.
        if (children[0].lowerBound < children[1].lowerBound)
            std::swap(children[0], children[1]);
        for (const Entry &child : children) {
            if (child.lowerBound < best->dist2)
                stack.push_back(child);
        }
    }
}

ZYLGeoSurfaceFoot ZYLGeoSurfaceIndex::Data::MakeFoot(const ZYLMathPoint &q, const Candidate &c) const
{
    ZYLGeoSurfaceFoot foot;
    foot.u = c.u;
    foot.v = c.v;
    foot.point = c.point;
    const std::optional<ZYLMathVector> normal = c.du.Cross(c.dv).Normalized();
    foot.normal = normal ? *normal : surface.GetNormal(c.u, c.v);
    const double distance = std::sqrt(c.dist2);
    foot.signedDistance = (q - c.point).Dot(foot.normal) < 0.0 ? -distance : distance;
    return foot;
}

ZYLGeoSurfaceIndex::ZYLGeoSurfaceIndex(const ZYLGeoSurface &surface) : d(std::make_unique<Data>(surface)) {}

ZYLGeoSurfaceIndex::~ZYLGeoSurfaceIndex() = default;

const ZYLMathBoundingBox &ZYLGeoSurfaceIndex::GetBoundingBox() const
{
    return d->box;
}

ZYLGeoSurfaceFoot ZYLGeoSurfaceIndex::FindClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *hint) const
{
    double u = 0.0, v = 0.0;
    if (hint && std::isfinite(hint->u) && std::isfinite(hint->v)) {
        u = hint->u;
        v = hint->v;
    } else {
        d->Seed(q, &u, &v);
    }
    Candidate best = d->Solve(q, d->domain, u, v);
    LeafRange explained;
    if (!d->Certify(q, best, &explained))
        d->Search(q, &best, explained);
    return d->MakeFoot(q, best);
}
