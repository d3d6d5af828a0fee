// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <QVariant>

#include <memory>

/// A test of one value (a table cell) against a base value, for table filters.
///
/// A default-constructed filter accepts everything. Otherwise `Accepts(cell)` compares the cell
/// with the base by the comparison type:
/// - Text filters (FilterType Text) compare the texts of cell and base without regard to case:
///   begins with, ends with, contains, does not contain, equal, not equal, and for the order
///   comparisons the case-insensitive text order.
/// - Other filters compare numbers when both sides are numeric, with the tolerance: equal is
///   |cell - base| <= tolerance, greater is cell > base + tolerance, greater or equal is
///   cell >= base - tolerance, and so on. Numeric are numbers, text that reads as a number (in
///   the user's locale or the C locale), `ZYLSysValue`s and text with a unit suffix
///   ("12.5 mm"). Two values with units are compared in system units and must have the same
///   magnitude; a plain number beside a value with a unit is taken in that magnitude's
///   current display unit (the unit the user sees and types).
///   When the base is numeric and the cell is not (empty, text), only "not equal" accepts it.
///   When the base is not numeric, the texts are compared as for text filters; the
///   substring comparisons (begins with ... does not contain) always compare texts.
/// The tolerance applies to numeric comparisons only.
class ZYLSYSTEM_EXPORT ZYLSysVariantFilter {
public:
    enum ComparisonType {
        BeginsWith = 0,
        EndsWith = 1,
        Contains = 2,
        DoesNotContain = 3,
        Equal = 4,
        NotEqual = 5,
        Greater = 6,
        GreaterOrEqual = 7,
        Less = 8,
        LessOrEqual = 9
    };
    enum FilterType { Text = 0, Other = 1 };

    /// Creates a filter that accepts every value.
    ZYLSysVariantFilter();
    /// Creates a filter. Throws ZYLSysException for a comparison type outside 0..9, an unknown
    /// filter type or a negative (or NaN) tolerance.
    ZYLSysVariantFilter(const QVariant &base, ComparisonType comparison, double tolerance, FilterType type);
    ZYLSysVariantFilter(const ZYLSysVariantFilter &other);
    ZYLSysVariantFilter &operator=(const ZYLSysVariantFilter &other);
    ~ZYLSysVariantFilter();

    /// Same as the constructor, with the arguments in another order.
    static ZYLSysVariantFilter CreateFilter(const QVariant &base, FilterType type, ComparisonType comparison,
                                            double tolerance);

    /// Returns whether this filter accepts every value (default-constructed).
    bool IsAcceptAll() const;
    QVariant GetBaseValue() const;
    /// Returns the comparison type (Contains for a filter that accepts all).
    ComparisonType GetComparisonType() const;
    double GetTolerance() const;
    FilterType GetFilterType() const;

    /// Returns whether the value passes the filter.
    bool Accepts(const QVariant &value) const;

    /// Returns whether this filter compares numbers (a numeric base, a comparison from "equal"
    /// on, not a text filter), so that `AcceptsNumber` may stand in for `Accepts`.
    bool ComparesNumbers() const;
    /// For a filter that compares numbers, returns what `Accepts` returns for a cell holding
    /// `number`; a non-finite number stands for a cell holding no number (empty), which
    /// only "not equal" accepts.
    bool AcceptsNumber(double number) const;

private:
    struct Data;
    std::shared_ptr<const Data> d;
};
