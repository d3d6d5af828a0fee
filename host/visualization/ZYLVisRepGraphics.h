// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisRep.h"

#include "ZYLVisOptions.h"

/// A representation made of primitives, each drawn with its display options. It owns the
/// primitives and deletes them with itself.
class ZYLVISUALIZATION_EXPORT ZYLVisRepGraphics : public ZYLVisRep {
    Q_OBJECT

public:
    /// Takes the primitives, all drawn with the same options. Nulls are skipped. Throws
    /// ZYLSysException, taking nothing, when a primitive appears twice or already belongs to a
    /// representation.
    ZYLVisRepGraphics(const QList<ZYLVisPrimitive *> &primitives, const ZYLVisOptions &options,
                      QObject *parent = nullptr);
    /// Takes the primitives with one options entry each, in the same order. Throws
    /// ZYLSysException, taking nothing, also when the two lists differ in length.
    ZYLVisRepGraphics(const QList<ZYLVisPrimitive *> &primitives, const QList<ZYLVisOptions> &options,
                      QObject *parent = nullptr);
    ~ZYLVisRepGraphics() override;
};
