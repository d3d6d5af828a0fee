// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeometryExport.h"

/// Base of shared geometry (curves, surfaces, bodies, tool path programs): a counted
/// reference. A new object has no reference; its creator either deletes it or hands it to
/// holders that `AddReference` and later `RemoveReference`; the release of the last reference
/// deletes the object. Both are callable on const objects because sharing does not change
/// the geometry.
class ZYLGEOMETRY_EXPORT ZYLGeoGeometry {
public:
    virtual ~ZYLGeoGeometry();
    ZYLGeoGeometry(const ZYLGeoGeometry &) = delete;
    ZYLGeoGeometry &operator=(const ZYLGeoGeometry &) = delete;

    void AddReference() const;
    /// Releases one reference and deletes the object when it was the last one. A release
    /// without a reference is a programming error: it is logged and ignored.
    void RemoveReference() const;
    int GetReferenceCount() const { return m_references; }

protected:
    ZYLGeoGeometry() = default;

private:
    mutable int m_references = 0;
};
