// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisEnvironmentBatchContext.h"

#include "ZYLVisEnvironment.h"

ZYLVisEnvironmentBatchContext::ZYLVisEnvironmentBatchContext(ZYLVisEnvironment *environment)
    : m_environment(environment)
{
    if (m_environment)
        m_environment->BeginBatch();
}

ZYLVisEnvironmentBatchContext::~ZYLVisEnvironmentBatchContext()
{
    if (m_environment)
        m_environment->EndBatch();
}
