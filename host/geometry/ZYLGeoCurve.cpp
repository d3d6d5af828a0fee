// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoCurve.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Five-point Gauss-Legendre rule on [-1, 1]: exact for polynomials up to degree 9, which
// makes the halving test below converge fast on the smooth speed of a curve piece.
constexpr std::array<double, 5> glNodes{0.0, -0.5384693101056831, 0.5384693101056831, -0.9061798459386640,
                                        0.9061798459386640};
constexpr std::array<double, 5> glWeights{0.5688888888888889, 0.4786286704993665, 0.4786286704993665,
                                          0.2369268850561891, 0.2369268850561891};

// Relative accuracy asked of the length; numeric derivatives are good to about 1e-10 too.
constexpr double lengthTolerance = 1e-10;
constexpr int maxQuadratureDepth = 40;
// Pieces start as this many intervals, so that the first halving test cannot be fooled by
// an oscillation that a single five-point rule happens to average away.
constexpr int initialIntervals = 4;
constexpr int initialSegments = 8;
constexpr int maxTessellationDepth = 30;
constexpr double minRelativeTolerance = 1e-6;

struct Piece {
    double t0 = 0.0;
    double t1 = 0.0;
    double length = 0.0;
};

double GaussLegendre(const ZYLGeoCurve &curve, double a, double b)
{
    const double half = 0.5 * (b - a);
    const double mid = 0.5 * (a + b);
    double sum = 0.0;
    for (size_t i = 0; i < glNodes.size(); ++i)
        sum += glWeights[i] * curve.EvaluateDerivative(mid + half * glNodes[i]).GetLength();
    return sum * half;
}

// Splits [a, b] at the curve's kinks inside it.
std::vector<double> Breaks(const ZYLGeoCurve &curve, double a, double b)
{
    std::vector<double> breaks{a};
    for (double k : curve.GetKinks()) {
        if (k > a && k < b)
            breaks.push_back(k);
    }
    breaks.push_back(b);
    return breaks;
}

class LengthIntegrator {
public:
    explicit LengthIntegrator(const ZYLGeoCurve &curve) : m_curve(curve) {}

    // Returns the accepted intervals of [a, b] in order, each with its length.
    std::vector<Piece> Integrate(double a, double b)
    {
        m_pieces.clear();
        if (!(b > a))
            return m_pieces;
        const std::vector<double> breaks = Breaks(m_curve, a, b);
        std::vector<Piece> start;
        double estimate = 0.0;
        for (size_t k = 0; k + 1 < breaks.size(); ++k) {
            const double step = (breaks[k + 1] - breaks[k]) / initialIntervals;
            for (int i = 0; i < initialIntervals; ++i) {
                const double t0 = breaks[k] + i * step;
                const double t1 = i + 1 == initialIntervals ? breaks[k + 1] : t0 + step;
                const double length = GaussLegendre(m_curve, t0, t1);
                start.push_back({t0, t1, length});
                estimate += length;
            }
        }
        m_span = b - a;
        m_tolerance = lengthTolerance * std::max(estimate, 1e-300);
        for (const Piece &p : start)
            Refine(p, 0);
        return m_pieces;
    }

private:
    void Refine(const Piece &p, int depth)
    {
        const double mid = 0.5 * (p.t0 + p.t1);
        const Piece left{p.t0, mid, GaussLegendre(m_curve, p.t0, mid)};
        const Piece right{mid, p.t1, GaussLegendre(m_curve, mid, p.t1)};
        // Each interval may spend its share of the tolerance, so the sum meets it overall.
        const double allowed = m_tolerance * (p.t1 - p.t0) / m_span;
        if (depth >= maxQuadratureDepth || std::abs(left.length + right.length - p.length) <= allowed) {
            m_pieces.push_back(left);
            m_pieces.push_back(right);
            return;
        }
        Refine(left, depth + 1);
        Refine(right, depth + 1);
    }

    const ZYLGeoCurve &m_curve;
    std::vector<Piece> m_pieces;
    double m_span = 1.0;
    double m_tolerance = 0.0;
};

// Finds t in [p.t0, p.t1] with length(p.t0, t) = s by Newton steps on the length (whose
// derivative is the speed), kept inside a shrinking bracket so that standstills and
// inflections cannot throw it out.
double SolveInPiece(const ZYLGeoCurve &curve, const Piece &p, double s)
{
    double lo = p.t0;
    double hi = p.t1;
    double t = p.t0 + (p.t1 - p.t0) * (p.length > 0.0 ? s / p.length : 0.5);
    const double tolerance = lengthTolerance * std::max(p.length, 1e-300);
    for (int i = 0; i < 100 && hi - lo > 1e-15 * (std::abs(lo) + std::abs(hi) + 1e-300); ++i) {
        const double g = GaussLegendre(curve, p.t0, t) - s;
        if (std::abs(g) <= tolerance)
            return t;
        (g > 0.0 ? hi : lo) = t;
        const double speed = curve.EvaluateDerivative(t).GetLength();
        double next = speed > 0.0 ? t - g / speed : 0.5 * (lo + hi);
        if (!(next > lo && next < hi))
            next = 0.5 * (lo + hi);
        t = next;
    }
    return t;
}

double DistanceToSegment(const ZYLMathPoint &p, const ZYLMathPoint &a, const ZYLMathPoint &b)
{
    const ZYLMathVector ab = b - a;
    const double ll = ab.GetSquaredLength();
    const double t = ll > 0.0 ? std::clamp((p - a).Dot(ab) / ll, 0.0, 1.0) : 0.0;
    return p.GetDistanceTo(a + ab * t);
}

class CurveTessellator {
public:
    CurveTessellator(const ZYLGeoCurve &curve, double tolerance) : m_curve(curve), m_tolerance(tolerance) {}

    std::vector<ZYLMathPoint> Run(double a, double b)
    {
        const std::vector<double> breaks = Breaks(m_curve, a, b);
        m_points.push_back(m_curve.Evaluate(a));
        for (size_t k = 0; k + 1 < breaks.size(); ++k) {
            const double step = (breaks[k + 1] - breaks[k]) / initialSegments;
            for (int i = 0; i < initialSegments; ++i) {
                const double t1 = i + 1 == initialSegments ? breaks[k + 1] : breaks[k] + (i + 1) * step;
                const double t0 = breaks[k] + i * step;
                Subdivide(t0, t1, m_points.back(), m_curve.Evaluate(t1), 0);
            }
        }
        if (m_points.size() == 1)
            m_points.push_back(m_points.front());
        return std::move(m_points);
    }

private:
    // Appends the points after `p0` up to and including `p1`.
    void Subdivide(double t0, double t1, const ZYLMathPoint &p0, const ZYLMathPoint &p1, int depth)
    {
        const double tm = 0.5 * (t0 + t1);
        const ZYLMathPoint pm = m_curve.Evaluate(tm);
        bool within = DistanceToSegment(pm, p0, p1) <= m_tolerance;
        if (within) {
            const ZYLMathPoint q1 = m_curve.Evaluate(0.5 * (t0 + tm));
            const ZYLMathPoint q3 = m_curve.Evaluate(0.5 * (tm + t1));
            within = DistanceToSegment(q1, p0, p1) <= m_tolerance && DistanceToSegment(q3, p0, p1) <= m_tolerance;
        }
        if (within || depth >= maxTessellationDepth) {
            m_points.push_back(p1);
            return;
        }
        Subdivide(t0, tm, p0, pm, depth + 1);
        Subdivide(tm, t1, pm, p1, depth + 1);
    }

    const ZYLGeoCurve &m_curve;
    double m_tolerance;
    std::vector<ZYLMathPoint> m_points;
};

// The box of a few samples: a size scale for tolerances, not a bound.
ZYLMathBoundingBox SampleBox(const ZYLGeoCurve &curve, double a, double b)
{
    ZYLMathBoundingBox box;
    constexpr int samples = 32;
    for (int i = 0; i <= samples; ++i)
        box.Add(curve.Evaluate(a + (b - a) * i / samples));
    return box;
}

} // namespace

ZYLMathVector ZYLGeoCurve::EvaluateDerivative(double t) const
{
    const double a = GetStartParameter();
    const double b = GetEndParameter();
    const double span = b - a;
    if (!(span > 0.0))
        return {};
    t = std::clamp(t, a, b);
    // Fourth-order differences with a step of 1e-4 of the interval: truncation stays near
    // 1e-12 of the speed for curves that turn a few times over their interval, rounding
    // (about 1e-16 / 1e-4) below that, so the arc length can reach its tolerance.
    const double h = 1e-4 * span;
    const auto f = [&](double x) { return Evaluate(x).ToVector(); };
    if (t - 2 * h < a) {
        return (f(t) * -25.0 + f(t + h) * 48.0 - f(t + 2 * h) * 36.0 + f(t + 3 * h) * 16.0 - f(t + 4 * h) * 3.0)
               / (12.0 * h);
    }
    if (t + 2 * h > b) {
        return (f(t) * 25.0 - f(t - h) * 48.0 + f(t - 2 * h) * 36.0 - f(t - 3 * h) * 16.0 + f(t - 4 * h) * 3.0)
               / (12.0 * h);
    }
    return (f(t - 2 * h) - f(t - h) * 8.0 + f(t + h) * 8.0 - f(t + 2 * h)) / (12.0 * h);
}

std::optional<ZYLMathVector> ZYLGeoCurve::GetTangent(double t) const
{
    return EvaluateDerivative(t).Normalized();
}

std::vector<double> ZYLGeoCurve::GetKinks() const
{
    return {};
}

double ZYLGeoCurve::GetLength(const ZYLGeoRangeOfCurve &range) const
{
    double length = 0.0;
    for (const Piece &p : LengthIntegrator(*this).Integrate(range.GetStart(*this), range.GetEnd(*this)))
        length += p.length;
    return length;
}

double ZYLGeoCurve::GetParameterAtLength(double s, const ZYLGeoRangeOfCurve &range) const
{
    const double a = range.GetStart(*this);
    const double b = range.GetEnd(*this);
    if (!(s > 0.0))
        return a;
    double walked = 0.0;
    for (const Piece &p : LengthIntegrator(*this).Integrate(a, b)) {
        if (walked + p.length >= s)
            return SolveInPiece(*this, p, s - walked);
        walked += p.length;
    }
    return b;
}

std::vector<ZYLMathPoint> ZYLGeoCurve::Tessellate(double chordTolerance, const ZYLGeoRangeOfCurve &range) const
{
    if (!(chordTolerance > 0.0) || !std::isfinite(chordTolerance))
        return {};
    const double a = range.GetStart(*this);
    const double b = range.GetEnd(*this);
    const double size = SampleBox(*this, a, b).GetDiagonal().GetLength();
    return CurveTessellator(*this, std::max(chordTolerance, minRelativeTolerance * size)).Run(a, b);
}

ZYLMathBoundingBox ZYLGeoCurve::GetBoundingBox() const
{
    const double a = GetStartParameter();
    const double b = GetEndParameter();
    const double size = SampleBox(*this, a, b).GetDiagonal().GetLength();
    ZYLMathBoundingBox box;
    if (!(size > 0.0)) {
        box.Add(Evaluate(a));
        return box;
    }
    // Every curve point is within the tolerance of a chord, so the chords' box grown by the
    // tolerance holds the curve.
    const double tolerance = 1e-4 * size;
    for (const ZYLMathPoint &p : Tessellate(tolerance))
        box.Add(p);
    box.Inflate(tolerance);
    return box;
}

bool ZYLGeoCurve::IsClosed(double tolerance) const
{
    return Evaluate(GetStartParameter()).GetDistanceTo(Evaluate(GetEndParameter())) <= tolerance;
}
