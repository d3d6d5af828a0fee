// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoCurve.h"
#include "ZYLGeoRef.h"

#include <QString>

#include <functional>

/// A curve given by a function of its parameter over an interval, e.g. a helix or an arc.
/// Evaluation clamps the parameter to the interval before calling the function. Without a
/// derivative function the derivative is a central difference; lengths, arc-length
/// parameters and tessellation use the numeric defaults.
class ZYLGEOMETRY_EXPORT ZYLGeoParametricCurve final : public ZYLGeoCurve {
public:
    using Function = std::function<ZYLMathPoint(double)>;
    using DerivativeFunction = std::function<ZYLMathVector(double)>;

    /// Returns the curve t ↦ function(t) on [start, end], or null (with the reason in `error`
    /// when given) for an empty function, an interval that is not finite or not increasing,
    /// or a function that is not finite at the ends or the middle of the interval.
    static ZYLGeoRef<ZYLGeoParametricCurve> Create(Function function, double start, double end,
                                                   DerivativeFunction derivative = {}, QString *error = nullptr);
    ~ZYLGeoParametricCurve() override;

    double GetStartParameter() const override { return m_start; }
    double GetEndParameter() const override { return m_end; }
    ZYLMathPoint Evaluate(double t) const override;
    ZYLMathVector EvaluateDerivative(double t) const override;

private:
    ZYLGeoParametricCurve(Function function, double start, double end, DerivativeFunction derivative);
    double Clamp(double t) const;

    Function m_function;
    DerivativeFunction m_derivative;
    double m_start;
    double m_end;
};
