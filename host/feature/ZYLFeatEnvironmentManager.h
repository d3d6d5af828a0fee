// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include <QObject>

#include <memory>

class ZYLFeatEnvironment;

/// The process-wide holder of the current feature environment: the document scene the user
/// works in, whose container receives the commands' transactions. The host sets it; it is
/// cleared automatically when that environment is destroyed. GUI thread only.
class ZYLFEATURE_EXPORT ZYLFeatEnvironmentManager : public QObject {
    Q_OBJECT
public:
    /// Returns the manager (created on first use; null only during program exit).
    static ZYLFeatEnvironmentManager *GetManager();

    ZYLFeatEnvironmentManager();
    ~ZYLFeatEnvironmentManager() override;

    /// Returns the current environment, or null.
    ZYLFeatEnvironment *GetCurrentEnvironment() const;
    /// Makes `environment` (borrowed; may be null) the current one; emits
    /// `CurrentEnvironmentChanged` when it differs.
    void SetCurrentEnvironment(ZYLFeatEnvironment *environment);

signals:
    void CurrentEnvironmentChanged(ZYLFeatEnvironment *environment);

private:
    friend class ZYLFeatEnvironment;
    // Called by a dying environment, while it is still whole.
    void ForgetEnvironment(ZYLFeatEnvironment *environment);

    struct Data;
    std::unique_ptr<Data> d;
};
