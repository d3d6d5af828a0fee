// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisRep.h"

/// A representation made of several representations, drawn together.
///
/// The set owns its members and deletes them with itself: callers build the members only to
/// hand them over (a set of one representation per surface, of one marker per collision
/// point) and keep no pointer to them. A member must not be deleted on its own, nor put in a
/// second set.
class ZYLVISUALIZATION_EXPORT ZYLVisRepSet : public ZYLVisRep {
    Q_OBJECT

public:
    /// Takes ownership of the representations; nulls are skipped. Throws ZYLSysException,
    /// taking none of them, when one appears twice or already belongs to another set.
    explicit ZYLVisRepSet(const QList<ZYLVisRep *> &reps, QObject *parent = nullptr);
    ~ZYLVisRepSet() override;
};
