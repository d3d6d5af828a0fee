// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include <cstddef>
#include <typeinfo>

/// One recorded edit of a transaction: it knows how to take the edit back (`Undo`) and how
/// to make it again (`Redo`), and it owns whatever the model no longer holds while the
/// change is in the history (a removed object, the old buffer of a replaced array).
///
/// A change is constructed in the *undone* state and applied by its first `Redo`, which the
/// transaction calls when the change is recorded. After that, `Undo` and `Redo` alternate,
/// always in the reverse (undo) or recorded (redo) order of the transaction's changes, so a
/// change may rely on the model being exactly as it left it.
///
/// Rules for writers of custom changes:
/// - `Redo` must either apply the whole edit or throw and leave the model untouched; the
///   same holds for `Undo`. Swapping state in and out (`std::swap`) satisfies both and
///   costs nothing.
/// - The destructor must not touch the model: it only releases what the change owns. A
///   change is destroyed when its transaction leaves the history, in either state.
class ZYLFEATURE_EXPORT ZYLFeatChange {
public:
    virtual ~ZYLFeatChange();
    ZYLFeatChange(const ZYLFeatChange &) = delete;
    ZYLFeatChange &operator=(const ZYLFeatChange &) = delete;

    /// Takes the edit back.
    virtual void Undo() = 0;
    /// Makes the edit (again).
    virtual void Redo() = 0;

    /// The field a plain value change sets: its address, size and type.
    struct ValueField {
        const void *address = nullptr;
        std::size_t size = 0;
        const std::type_info *type = nullptr;
    };
    /// Returns the field when this is a plain value change (which touches nothing but the
    /// field's own bytes), else a null address. The recorder uses it to merge repeated sets
    /// of one field into one change; other changes keep the default.
    virtual ValueField GetValueField() const;

protected:
    ZYLFeatChange() = default;
};
