// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLEditValueContext.h"

namespace {
// A count rather than a flag so that nested contexts leave the outer one in force.
int s_openContexts = 0;
} // namespace

ZYLEditValueContext::ZYLEditValueContext()
{
    ++s_openContexts;
}

ZYLEditValueContext::~ZYLEditValueContext()
{
    --s_openContexts;
}

bool ZYLEditValueContext::IsInEditContext()
{
    return s_openContexts > 0;
}
