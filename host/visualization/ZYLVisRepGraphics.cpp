// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisRepGraphics.h"

ZYLVisRepGraphics::ZYLVisRepGraphics(const QList<ZYLVisPrimitive *> &primitives, const ZYLVisOptions &options,
                                     QObject *parent)
    : ZYLVisRep(parent)
{
    AddPrimitives(primitives, QList<ZYLVisOptions>(primitives.size(), options));
}

ZYLVisRepGraphics::ZYLVisRepGraphics(const QList<ZYLVisPrimitive *> &primitives, const QList<ZYLVisOptions> &options,
                                     QObject *parent)
    : ZYLVisRep(parent)
{
    AddPrimitives(primitives, options);
}

ZYLVisRepGraphics::~ZYLVisRepGraphics() = default;
