// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoGeometry.h"

#include <type_traits>
#include <utility>

/// A counted reference to shared geometry: holds one reference (`AddReference`) on the object
/// for as long as it points to it, and releases it (`RemoveReference`) when it is destroyed,
/// reset or reassigned, so that the last holder deletes the object. Copies add a reference,
/// moves hand it over. The factories of concrete curves and surfaces return their new object
/// in one of these, so a caller that drops the result neither leaks nor double-deletes, and a
/// caller that hands the raw pointer to other holders (which add their own references) may
/// drop its handle whenever it likes.
template <typename T>
class ZYLGeoRef {
    static_assert(std::is_base_of_v<ZYLGeoGeometry, T>, "ZYLGeoRef holds geometry only");

public:
    ZYLGeoRef() = default;
    /// Takes a reference on `object` (which may be null).
    explicit ZYLGeoRef(T *object) : m_object(object)
    {
        if (m_object)
            m_object->AddReference();
    }
    ZYLGeoRef(const ZYLGeoRef &other) : ZYLGeoRef(other.m_object) {}
    ZYLGeoRef(ZYLGeoRef &&other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    /// Converts a reference to a derived class (or to a const object).
    template <typename U, typename = std::enable_if_t<std::is_convertible_v<U *, T *>>>
    ZYLGeoRef(const ZYLGeoRef<U> &other) : ZYLGeoRef(other.get())
    {
    }
    ~ZYLGeoRef() { reset(); }

    ZYLGeoRef &operator=(ZYLGeoRef other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    /// Releases the reference (deleting the object when it was the last one) and becomes null.
    void reset()
    {
        if (T *object = std::exchange(m_object, nullptr))
            object->RemoveReference();
    }

    T *get() const { return m_object; }
    T *operator->() const { return m_object; }
    T &operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    T *m_object = nullptr;
};
