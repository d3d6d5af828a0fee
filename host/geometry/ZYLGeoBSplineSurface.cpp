// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoBSplineSurface.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int maxDegree = 3;
constexpr int panelSpans = 4;

// Basis functions of one span and their derivatives: n[k][a] is the k-th derivative of the
// basis function of control index span − degree + a.
struct Basis {
    int span = 0;
    double n[maxDegree + 1][maxDegree + 1] = {};
};

// Returns the span [knots[s], knots[s + 1]) holding t, the last non-empty one at the end.
int FindSpan(const std::vector<double> &knots, int count, int degree, double t)
{
    if (t >= knots[size_t(count)])
        return count - 1;
    const auto it = std::upper_bound(knots.begin() + degree + 1, knots.begin() + count, t);
    return int(it - knots.begin()) - 1;
}

// The basis functions and derivatives up to `order` by the triangular scheme of de Boor and
// Cox with the derivative recurrence on the same table.
Basis Evaluate(const std::vector<double> &knots, int count, int degree, double t, int order)
{
    Basis basis;
    basis.span = FindSpan(knots, count, degree, t);
    const int p = degree;
    const size_t span = size_t(basis.span);
    double ndu[maxDegree + 1][maxDegree + 1];
    double left[maxDegree + 1], right[maxDegree + 1];
    ndu[0][0] = 1.0;
    for (int j = 1; j <= p; ++j) {
        left[j] = t - knots[span + 1 - size_t(j)];
        right[j] = knots[span + size_t(j)] - t;
        double saved = 0.0;
        for (int r = 0; r < j; ++r) {
            ndu[j][r] = right[r + 1] + left[j - r]; // knot differences, positive in a non-empty span
            const double temp = ndu[r][j - 1] / ndu[j][r];
            ndu[r][j] = saved + right[r + 1] * temp;
            saved = left[j - r] * temp;
        }
        ndu[j][j] = saved;
    }
    for (int j = 0; j <= p; ++j)
        basis.n[0][j] = ndu[j][p];
    const int n = std::min(order, p);
    double a[2][maxDegree + 1];
    for (int r = 0; r <= p; ++r) {
        int s1 = 0, s2 = 1;
        a[0][0] = 1.0;
        for (int k = 1; k <= n; ++k) {
            double value = 0.0;
            const int rk = r - k, pk = p - k;
            if (r >= k) {
                a[s2][0] = a[s1][0] / ndu[pk + 1][rk];
                value = a[s2][0] * ndu[rk][pk];
            }
            const int j1 = rk >= -1 ? 1 : -rk;
            const int j2 = r - 1 <= pk ? k - 1 : p - r;
            for (int j = j1; j <= j2; ++j) {
                a[s2][j] = (a[s1][j] - a[s1][j - 1]) / ndu[pk + 1][rk + j];
                value += a[s2][j] * ndu[rk + j][pk];
            }
            if (r <= pk) {
                a[s2][k] = -a[s1][k - 1] / ndu[pk + 1][r];
                value += a[s2][k] * ndu[r][pk];
            }
            basis.n[k][r] = value;
            std::swap(s1, s2);
        }
    }
    double factor = p;
    for (int k = 1; k <= n; ++k) {
        for (int j = 0; j <= p; ++j)
            basis.n[k][j] *= factor;
        factor *= p - k;
    }
    return basis;
}

std::vector<double> UniformKnots(int count, int degree, double a, double b)
{
    std::vector<double> knots(size_t(degree + 1), a);
    const int spans = count - degree;
    for (int i = 1; i < spans; ++i)
        knots.push_back(a + (b - a) * i / spans);
    knots.insert(knots.end(), size_t(degree + 1), b);
    return knots;
}

QString CheckKnots(const std::vector<double> &knots, int count, int degree, const char *name)
{
    const size_t expected = size_t(count + degree + 1);
    if (knots.size() != expected)
        return QStringLiteral("The %1 knot vector has %2 knots; %3 expected.").arg(name).arg(knots.size()).arg(expected);
    for (size_t i = 0; i < knots.size(); ++i) {
        if (!std::isfinite(knots[i]))
            return QStringLiteral("Knot %1 of the %2 knot vector is not finite.").arg(i).arg(name);
        if (i > 0 && knots[i] < knots[i - 1])
            return QStringLiteral("The %1 knot vector decreases at knot %2.").arg(name).arg(i);
    }
    const size_t p = size_t(degree), n = size_t(count);
    if (knots[0] != knots[p] || knots[n] != knots[n + p])
        return QStringLiteral("The %1 knot vector is not clamped: its first and last %2 knots must be equal.")
            .arg(name)
            .arg(degree + 1);
    if (!(knots[p] < knots[p + 1]) || !(knots[n - 1] < knots[n]))
        return QStringLiteral("The %1 knot vector repeats an end knot more than %2 times.").arg(name).arg(degree + 1);
    for (size_t i = p + 1; i + p < n; ++i) {
        if (knots[i] == knots[i + p])
            return QStringLiteral("Knot %1 of the %2 knot vector is repeated more than %3 times.")
                .arg(i)
                .arg(name)
                .arg(degree);
    }
    return {};
}

// Interior knots repeated `degree` times: the surface is only continuous there.
std::vector<double> Creases(const std::vector<double> &knots, int count, int degree)
{
    std::vector<double> creases;
    for (size_t i = size_t(degree) + 1; i < size_t(count);) {
        size_t end = i;
        while (end < size_t(count) && knots[end] == knots[i])
            ++end;
        if (int(end - i) >= degree)
            creases.push_back(knots[i]);
        i = end;
    }
    return creases;
}

// Returns the first and last span that a parameter interval overlaps.
std::pair<int, int> Spans(const std::vector<double> &knots, int count, int degree, double lo, double hi)
{
    const double a = knots[size_t(degree)], b = knots[size_t(count)];
    lo = std::clamp(lo, a, b);
    hi = std::clamp(hi, lo, b);
    const int first = FindSpan(knots, count, degree, lo);
    int last = FindSpan(knots, count, degree, hi);
    // An interval ending on a knot only touches the span that starts there.
    if (last > first && knots[size_t(last)] >= hi)
        --last;
    return {first, last};
}

} // namespace

struct ZYLGeoBSplineSurface::Data {
    int degreeU = 1, degreeV = 1;
    int countU = 2, countV = 2;
    std::vector<double> knotsU, knotsV;
    std::vector<ZYLMathPoint> points; // (i, j) at i * countV + j
    // Control points of the second-derivative surfaces, (i, j) at i * (their countV) + j.
    std::vector<ZYLMathVector> pointsUU, pointsUV, pointsVV;
    // Each non-empty knot span [start, start + 1 / scale) with the Taylor coefficients, in
    // the local parameter (u − start) · scale, of its degree + 1 basis functions:
    // taylor[k][a] multiplies s^a in basis function k.
    struct Span {
        double start = 0.0;
        double scale = 1.0;
        double taylor[maxDegree + 1][maxDegree + 1] = {};
    };
    std::vector<Span> spansU, spansV;
    // Per pair of spans, the 4 × 4 power-basis coefficients of the patch, (a, b) at a * 4 + b
    // for s^a t^b: evaluation then needs no knot arithmetic.
    std::vector<ZYLMathVector> patches;

    void BuildDerivativeNets();
    void BuildPatches();
    static std::vector<Span> TaylorSpans(const std::vector<double> &knots, int count, int degree);
};

void ZYLGeoBSplineSurface::Data::BuildDerivativeNets()
{
    // Differences of control points divided by knot spans give the control points of the
    // derivative (a B-spline of one degree less). A 0/0 only arises for a basis function that
    // vanishes everywhere, so its point is set to zero.
    const auto quotient = [](const ZYLMathVector &diff, double factor, double span) {
        return span > 0.0 ? diff * (factor / span) : ZYLMathVector();
    };
    const int nu = countU, nv = countV, p = degreeU, q = degreeV;
    std::vector<ZYLMathVector> du(size_t((nu - 1) * nv)), dv(size_t(nu * (nv - 1)));
    for (int i = 0; i + 1 < nu; ++i) {
        for (int j = 0; j < nv; ++j) {
            du[size_t(i * nv + j)] = quotient(points[size_t((i + 1) * nv + j)] - points[size_t(i * nv + j)], p,
                                              knotsU[size_t(i + p + 1)] - knotsU[size_t(i + 1)]);
        }
    }
    for (int i = 0; i < nu; ++i) {
        for (int j = 0; j + 1 < nv; ++j) {
            dv[size_t(i * (nv - 1) + j)] = quotient(points[size_t(i * nv + j + 1)] - points[size_t(i * nv + j)], q,
                                                    knotsV[size_t(j + q + 1)] - knotsV[size_t(j + 1)]);
        }
    }
    pointsUU.clear();
    pointsVV.clear();
    pointsUV.clear();
    for (int i = 0; p >= 2 && i + 2 < nu; ++i) {
        for (int j = 0; j < nv; ++j) {
            pointsUU.push_back(quotient(du[size_t((i + 1) * nv + j)] - du[size_t(i * nv + j)], p - 1,
                                        knotsU[size_t(i + p + 1)] - knotsU[size_t(i + 2)]));
        }
    }
    for (int i = 0; i + 1 < nu; ++i) {
        for (int j = 0; j + 1 < nv; ++j) {
            pointsUV.push_back(quotient(du[size_t(i * nv + j + 1)] - du[size_t(i * nv + j)], q,
                                        knotsV[size_t(j + q + 1)] - knotsV[size_t(j + 1)]));
        }
    }
    for (int i = 0; i < nu; ++i) {
        for (int j = 0; q >= 2 && j + 2 < nv; ++j) {
            pointsVV.push_back(quotient(dv[size_t(i * (nv - 1) + j + 1)] - dv[size_t(i * (nv - 1) + j)], q - 1,
                                        knotsV[size_t(j + q + 1)] - knotsV[size_t(j + 2)]));
        }
    }
}

std::vector<ZYLGeoBSplineSurface::Data::Span> ZYLGeoBSplineSurface::Data::TaylorSpans(const std::vector<double> &knots,
                                                                                      int count, int degree)
{
    std::vector<Span> spans;
    for (int k = degree; k < count; ++k) {
        Span span;
        span.start = knots[size_t(k)];
        const double length = knots[size_t(k + 1)] - span.start;
        span.scale = length > 0.0 ? 1.0 / length : 0.0;
        if (length > 0.0) {
            // Derivatives at the span's start give the Taylor coefficients f^(a)(start)·hᵃ/a!.
            const Basis basis = ::Evaluate(knots, count, degree, span.start, degree);
            double power = 1.0, factorial = 1.0;
            for (int a = 0; a <= degree; ++a) {
                for (int b = 0; b <= degree; ++b)
                    span.taylor[b][a] = basis.n[a][b] * power / factorial;
                power *= length;
                factorial *= a + 1;
            }
        }
        spans.push_back(span);
    }
    return spans;
}

void ZYLGeoBSplineSurface::Data::BuildPatches()
{
    spansU = TaylorSpans(knotsU, countU, degreeU);
    spansV = TaylorSpans(knotsV, countV, degreeV);
    patches.assign(spansU.size() * spansV.size() * 16, ZYLMathVector());
    for (size_t i = 0; i < spansU.size(); ++i) {
        for (size_t j = 0; j < spansV.size(); ++j) {
            ZYLMathVector *patch = &patches[(i * spansV.size() + j) * 16];
            for (int ku = 0; ku <= degreeU; ++ku) {
                for (int kv = 0; kv <= degreeV; ++kv) {
                    const ZYLMathVector c = points[(i + size_t(ku)) * size_t(countV) + j + size_t(kv)].ToVector();
                    for (int a = 0; a <= degreeU; ++a) {
                        for (int b = 0; b <= degreeV; ++b)
                            patch[a * 4 + b] += c * (spansU[i].taylor[ku][a] * spansV[j].taylor[kv][b]);
                    }
                }
            }
        }
    }
}

ZYLGeoRef<ZYLGeoBSplineSurface> ZYLGeoBSplineSurface::Create(int degreeU, int degreeV, int countU, int countV,
                                                             std::vector<ZYLMathPoint> controlPoints,
                                                             std::vector<double> knotsU, std::vector<double> knotsV,
                                                             QString *error)
{
    QString reason;
    if (degreeU < 1 || degreeU > maxDegree || degreeV < 1 || degreeV > maxDegree) {
        reason = QStringLiteral("B-spline degrees must be 1 to 3; %1 and %2 given.").arg(degreeU).arg(degreeV);
    } else if (countU <= degreeU || countV <= degreeV) {
        reason = QStringLiteral("A B-spline of degrees %1 × %2 needs at least %3 × %4 control points; %5 × %6 given.")
                     .arg(degreeU)
                     .arg(degreeV)
                     .arg(degreeU + 1)
                     .arg(degreeV + 1)
                     .arg(countU)
                     .arg(countV);
    } else if (controlPoints.size() != size_t(countU) * size_t(countV)) {
        reason = QStringLiteral("%1 control points given for a grid of %2 × %3.")
                     .arg(controlPoints.size())
                     .arg(countU)
                     .arg(countV);
    } else {
        for (size_t k = 0; k < controlPoints.size(); ++k) {
            if (!controlPoints[k].IsFinite()) {
                reason = QStringLiteral("Control point (%1, %2) is not finite.").arg(k / size_t(countV)).arg(k % size_t(countV));
                break;
            }
        }
    }
    if (reason.isEmpty()) {
        if (knotsU.empty())
            knotsU = UniformKnots(countU, degreeU, 0.0, 1.0);
        if (knotsV.empty())
            knotsV = UniformKnots(countV, degreeV, 0.0, 1.0);
        reason = CheckKnots(knotsU, countU, degreeU, "u");
        if (reason.isEmpty())
            reason = CheckKnots(knotsV, countV, degreeV, "v");
    }
    if (!reason.isEmpty()) {
        if (error)
            *error = reason;
        return {};
    }
    auto data = std::make_unique<Data>();
    data->degreeU = degreeU;
    data->degreeV = degreeV;
    data->countU = countU;
    data->countV = countV;
    data->knotsU = std::move(knotsU);
    data->knotsV = std::move(knotsV);
    data->points = std::move(controlPoints);
    data->BuildDerivativeNets();
    data->BuildPatches();
    return ZYLGeoRef<ZYLGeoBSplineSurface>(new ZYLGeoBSplineSurface(std::move(data)));
}

ZYLGeoRef<ZYLGeoBSplineSurface> ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(const ZYLMathAxis &frame, double length,
                                                                              double width, double curvatureLength,
                                                                              double curvatureWidth, QString *error)
{
    QString reason;
    if (!(length > 0.0) || !std::isfinite(length) || !(width > 0.0) || !std::isfinite(width))
        reason = QStringLiteral("A panel needs a positive finite length and width; %1 × %2 given.").arg(length).arg(width);
    else if (!std::isfinite(curvatureLength) || !std::isfinite(curvatureWidth))
        reason = QStringLiteral("The curvatures of a panel must be finite.");
    else if (!frame.GetOrigin().IsFinite())
        reason = QStringLiteral("The origin of a panel must be finite.");
    if (!reason.isEmpty()) {
        if (error)
            *error = reason;
        return {};
    }
    constexpr int degree = 3;
    constexpr int count = panelSpans + degree;
    const std::vector<double> knotsU = UniformKnots(count, degree, 0.0, length);
    const std::vector<double> knotsV = UniformKnots(count, degree, 0.0, width);
    // A cubic B-spline reproduces a polynomial of degree three or less when each control
    // value is the polynomial's blossom at the three knots after the control index: the mean
    // for x, the mean of pairwise products for x².
    const auto blossoms = [](const std::vector<double> &knots, double offset) {
        std::vector<std::pair<double, double>> values;
        for (size_t i = 0; i < size_t(count); ++i) {
            const double a = knots[i + 1] - offset, b = knots[i + 2] - offset, c = knots[i + 3] - offset;
            values.emplace_back((a + b + c) / 3.0, (a * b + a * c + b * c) / 3.0);
        }
        return values;
    };
    const auto xs = blossoms(knotsU, 0.5 * length);
    const auto ys = blossoms(knotsV, 0.5 * width);
    std::vector<ZYLMathPoint> points;
    points.reserve(size_t(count * count));
    for (const auto &[x, xx] : xs) {
        for (const auto &[y, yy] : ys)
            points.push_back(frame.ToGlobal(ZYLMathPoint(x, y, 0.5 * (curvatureLength * xx + curvatureWidth * yy))));
    }
    return Create(degree, degree, count, count, std::move(points), knotsU, knotsV, error);
}

ZYLGeoBSplineSurface::ZYLGeoBSplineSurface(std::unique_ptr<Data> data) : d(std::move(data)) {}

ZYLGeoBSplineSurface::~ZYLGeoBSplineSurface() = default;

int ZYLGeoBSplineSurface::GetDegreeU() const
{
    return d->degreeU;
}

int ZYLGeoBSplineSurface::GetDegreeV() const
{
    return d->degreeV;
}

int ZYLGeoBSplineSurface::GetNumControlPointsU() const
{
    return d->countU;
}

int ZYLGeoBSplineSurface::GetNumControlPointsV() const
{
    return d->countV;
}

const ZYLMathPoint &ZYLGeoBSplineSurface::GetControlPoint(int i, int j) const
{
    return d->points[size_t(i * d->countV + j)];
}

const std::vector<double> &ZYLGeoBSplineSurface::GetKnotsU() const
{
    return d->knotsU;
}

const std::vector<double> &ZYLGeoBSplineSurface::GetKnotsV() const
{
    return d->knotsV;
}

ZYLGeoSurface::Domain ZYLGeoBSplineSurface::GetDomain() const
{
    return {d->knotsU[size_t(d->degreeU)], d->knotsU[size_t(d->countU)], d->knotsV[size_t(d->degreeV)],
            d->knotsV[size_t(d->countV)]};
}

ZYLGeoSurface::SecondDerivatives ZYLGeoBSplineSurface::Sum(double u, double v, int order) const
{
    const Domain domain = GetDomain();
    u = std::isnan(u) ? domain.uMin : std::clamp(u, domain.uMin, domain.uMax);
    v = std::isnan(v) ? domain.vMin : std::clamp(v, domain.vMin, domain.vMax);
    const int su = FindSpan(d->knotsU, d->countU, d->degreeU, u);
    const int sv = FindSpan(d->knotsV, d->countV, d->degreeV, v);
    const Data::Span &spanU = d->spansU[size_t(su - d->degreeU)];
    const Data::Span &spanV = d->spansV[size_t(sv - d->degreeV)];
    const double s = (u - spanU.start) * spanU.scale;
    const double t = (v - spanV.start) * spanV.scale;
    // Powers of the local parameters and their first and second derivatives.
    const double ps[3][4] = {{1.0, s, s * s, s * s * s}, {0.0, 1.0, 2.0 * s, 3.0 * s * s}, {0.0, 0.0, 2.0, 6.0 * s}};
    const double pt[3][4] = {{1.0, t, t * t, t * t * t}, {0.0, 1.0, 2.0 * t, 3.0 * t * t}, {0.0, 0.0, 2.0, 6.0 * t}};
    const ZYLMathVector *patch = &d->patches[size_t(((su - d->degreeU) * int(d->spansV.size()) + sv - d->degreeV) * 16)];
    ZYLMathVector point, du, dv, duu, duv, dvv;
    for (int a = 0; a <= maxDegree; ++a) {
        ZYLMathVector r0, r1, r2; // row a summed with the powers of t and their derivatives
        for (int b = 0; b <= maxDegree; ++b) {
            const ZYLMathVector &c = patch[a * 4 + b];
            r0 += c * pt[0][b];
            if (order >= 1)
                r1 += c * pt[1][b];
            if (order >= 2)
                r2 += c * pt[2][b];
        }
        point += r0 * ps[0][a];
        if (order >= 1) {
            du += r0 * ps[1][a];
            dv += r1 * ps[0][a];
        }
        if (order >= 2) {
            duu += r0 * ps[2][a];
            duv += r1 * ps[1][a];
            dvv += r2 * ps[0][a];
        }
    }
    // Back from the local parameters of the spans to u and v.
    const double ku = spanU.scale, kv = spanV.scale;
    return {ZYLMathPoint() + point, du * ku, dv * kv, duu * (ku * ku), duv * (ku * kv), dvv * (kv * kv)};
}

ZYLMathPoint ZYLGeoBSplineSurface::Evaluate(double u, double v) const
{
    return Sum(u, v, 0).point;
}

void ZYLGeoBSplineSurface::EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                                               ZYLMathVector *dv) const
{
    const SecondDerivatives s = Sum(u, v, 1);
    if (point)
        *point = s.point;
    if (du)
        *du = s.du;
    if (dv)
        *dv = s.dv;
}

ZYLGeoSurface::SecondDerivatives ZYLGeoBSplineSurface::EvaluateSecondDerivatives(double u, double v) const
{
    return Sum(u, v, 2);
}

ZYLGeoSurface::SecondDerivativeBounds ZYLGeoBSplineSurface::GetSecondDerivativeBounds(const Domain &region) const
{
    // On span k of u the derivative of order r uses the control points k − p .. k − r of its
    // net (likewise in v); a B-spline lies in the convex hull of those points, so their
    // largest length bounds it.
    const int p = d->degreeU, q = d->degreeV;
    const auto [ku0, ku1] = Spans(d->knotsU, d->countU, p, region.uMin, region.uMax);
    const auto [kv0, kv1] = Spans(d->knotsV, d->countV, q, region.vMin, region.vMax);
    const auto largest = [](const std::vector<ZYLMathVector> &net, int columns, int i0, int i1, int j0, int j1) {
        double bound = 0.0;
        for (int i = std::max(i0, 0); i <= i1; ++i) {
            for (int j = std::max(j0, 0); j <= j1; ++j)
                bound = std::max(bound, net[size_t(i * columns + j)].GetLength());
        }
        return bound;
    };
    SecondDerivativeBounds bounds;
    if (p >= 2)
        bounds.uu = largest(d->pointsUU, d->countV, ku0 - p, ku1 - 2, kv0 - q, kv1);
    bounds.uv = largest(d->pointsUV, d->countV - 1, ku0 - p, ku1 - 1, kv0 - q, kv1 - 1);
    if (q >= 2)
        bounds.vv = largest(d->pointsVV, d->countV - 2, ku0 - p, ku1, kv0 - q, kv1 - 2);
    return bounds;
}

std::vector<double> ZYLGeoBSplineSurface::GetUKinks() const
{
    return Creases(d->knotsU, d->countU, d->degreeU);
}

std::vector<double> ZYLGeoBSplineSurface::GetVKinks() const
{
    return Creases(d->knotsV, d->countV, d->degreeV);
}
