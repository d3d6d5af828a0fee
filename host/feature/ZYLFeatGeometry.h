// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatObject.h"

class ZYLGeoBody;

/// A feature that is a piece of geometry: it holds a counted reference on its body (the
/// surfaces, curves and points drawn for it).
class ZYLFEATURE_EXPORT ZYLFeatGeometry : public ZYLFeatObject {
    Q_OBJECT
public:
    /// Creates the feature with `body` (may be null: nothing to draw).
    explicit ZYLFeatGeometry(const ZYLGeoBody *body = nullptr, const QString &name = QString());
    ~ZYLFeatGeometry() override;

    const ZYLGeoBody *GetBody() const { return m_body; }
    /// Replaces the body, recorded in the current transaction (throws outside one); the old
    /// body lives on while the change is in the history.
    void SetBody(const ZYLGeoBody *body);

private:
    const ZYLGeoBody *m_body = nullptr;
};
