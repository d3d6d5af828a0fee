// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatChange.h"

#include <utility>

/// The change of one field of type `T`, made by `ZYLFeatRecorder::SetValue`. It keeps only
/// the address of the field and the value that is *not* in the field right now: the old
/// value while the change is applied, the new one while it is undone. Undo and redo swap
/// the two, so a change of a `double` takes 24 bytes and a change of a whole array keeps
/// the array's other buffer without copying it.
template<class T>
class ZYLFeatValueChange final : public ZYLFeatChange {
public:
    /// Creates the undone change that sets `field` to `newValue` when applied.
    ZYLFeatValueChange(T &field, T newValue) : m_field(&field), m_other(std::move(newValue)) {}

    void Undo() override { Swap(); }
    void Redo() override { Swap(); }

    ValueField GetValueField() const override { return {m_field, sizeof(T), &typeid(T)}; }

    /// Returns the value the field held before the change (valid while it is applied).
    const T &GetOldValue() const { return m_other; }
    /// Sets the applied field to a later value and keeps the first old value, so that
    /// repeated sets of one field within a transaction stay one change.
    void MergeLaterValue(T value) { *m_field = std::move(value); }
    /// Returns whether the applied change no longer changes anything.
    bool IsNoOp() const
    {
        if constexpr (std::equality_comparable<T>)
            return Same(*m_field, m_other);
        else
            return false;
    }
    /// Returns whether two values are equal. Qt 6.4 compares lists of basic types with
    /// memcmp even when one of two empty lists has no buffer, passing it a null pointer
    /// (undefined behaviour, even for zero bytes): empty containers are told apart first.
    static bool Same(const T &a, const T &b)
    {
        if constexpr (requires { a.isEmpty(); }) {
            if (a.isEmpty() || b.isEmpty())
                return a.isEmpty() == b.isEmpty();
        }
        return a == b;
    }

private:
    void Swap()
    {
        using std::swap;
        swap(*m_field, m_other);
    }

    T *m_field;
    T m_other;
};
