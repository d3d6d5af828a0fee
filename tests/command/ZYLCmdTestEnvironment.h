// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QString>

#include <memory>

class ZYLFeatContainer;
class ZYLFeatEnvironment;
class ZYLFeatObject;

// A container with its feature environment, made the current environment while the fixture
// lives; afterwards there is no current environment.
class ZYLCmdTestEnvironment {
public:
    ZYLCmdTestEnvironment();
    ~ZYLCmdTestEnvironment();

    ZYLFeatContainer *GetContainer() const;
    ZYLFeatEnvironment *GetEnvironment() const;
    // Adds a feature outside the undo history (its transaction is committed, then the
    // history cleared) and returns it.
    ZYLFeatObject *AddFeature(const QString &name);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
