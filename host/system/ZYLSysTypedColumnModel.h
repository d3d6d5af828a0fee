// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <QtGlobal>

#include <vector>

/// What an item model offers besides `data()`: a whole column read in one call as plain
/// numbers or bit sets, for views and proxies that compare every row (filters over a million
/// rows), with none of the per-cell cost of an index, a `QVariant` and a text.
///
/// A model implements it next to `QAbstractItemModel` (multiple inheritance); a reader finds
/// it with `dynamic_cast`. Both reads cover the top-level rows in the model's row order and
/// either give every row or refuse the whole column, so the reader falls back to `data()`.
class ZYLSYSTEM_EXPORT ZYLSysTypedColumnModel {
public:
    virtual ~ZYLSysTypedColumnModel();

    /// Fills `numbers` with one entry per row: the number `data(index, role)` holds, or NaN
    /// where it holds nothing (an invalid `QVariant`). Returns false, leaving `numbers` in
    /// any state, when some cell under that role holds anything else (a text, a value with
    /// a unit), which a number cannot stand for.
    virtual bool ReadNumbers(int column, int role, std::vector<double> &numbers) const = 0;

    /// Fills `bits` with one entry per row: the bit set the cell's text under `role` stands
    /// for (0 for an empty cell). Returns false, leaving `bits` in any state, when the column
    /// does not hold bit sets under that role.
    virtual bool ReadBits(int column, int role, std::vector<quint64> &bits) const = 0;

protected:
    ZYLSysTypedColumnModel() = default;
    ZYLSysTypedColumnModel(const ZYLSysTypedColumnModel &) = default;
    ZYLSysTypedColumnModel &operator=(const ZYLSysTypedColumnModel &) = default;
};
