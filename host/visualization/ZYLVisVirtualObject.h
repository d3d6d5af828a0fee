// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisObject.h"

/// A scene object made by a client of the scene, who owns it. It enters the scene with
/// ZYLVisEnvironment::AddVirtualObject; deleting it takes it out of the scene, the selection
/// and the pre-selection (with their signals).
///
/// A representation handed over with SetRep belongs to the object from then on: it is
/// deleted when another one (or null) is set and when the object is deleted, so a client
/// builds a rep, hands it over and keeps no pointer to it. Setting the current rep again only
/// asks for a redraw. A rep that already has a QObject parent stays with that parent.
class ZYLVISUALIZATION_EXPORT ZYLVisVirtualObject : public ZYLVisObject {
    Q_OBJECT

public:
    /// Throws ZYLSysException for a null environment.
    explicit ZYLVisVirtualObject(const ZYLVisEnvironment *environment, QObject *parent = nullptr);
    ~ZYLVisVirtualObject() override;

    using ZYLVisObject::SetLabel;
    using ZYLVisObject::SetPosition;
    /// Sets the representation and takes ownership of it (see the class comment).
    void SetRep(const ZYLVisRep *rep);
    using ZYLVisObject::SetSelectability;
    using ZYLVisObject::SetVisibility;
};
