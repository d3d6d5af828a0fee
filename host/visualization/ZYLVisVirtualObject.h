// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisObject.h"

/// A scene object made by a client of the scene, who owns it and the representations it sets
/// on it. It enters the scene with ZYLVisEnvironment::AddVirtualObject; deleting it takes it
/// out of the scene, the selection and the pre-selection (with their signals).
class ZYLVISUALIZATION_EXPORT ZYLVisVirtualObject : public ZYLVisObject {
    Q_OBJECT

public:
    /// Throws ZYLSysException for a null environment.
    explicit ZYLVisVirtualObject(const ZYLVisEnvironment *environment, QObject *parent = nullptr);
    ~ZYLVisVirtualObject() override;

    using ZYLVisObject::SetLabel;
    using ZYLVisObject::SetPosition;
    using ZYLVisObject::SetRep;
    using ZYLVisObject::SetSelectability;
    using ZYLVisObject::SetVisibility;
};
