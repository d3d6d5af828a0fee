// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include <QPointer>

class ZYLVisEnvironment;

/// A scope that groups changes of a scene into one redraw: while contexts are open on an
/// environment, its Changed() signal is held back and emitted once when the outermost one
/// ends, if anything changed. Contexts nest. Selection signals are not held back. A null
/// environment, or one destroyed while the context lives, makes the context do nothing.
class ZYLVISUALIZATION_EXPORT ZYLVisEnvironmentBatchContext {
public:
    explicit ZYLVisEnvironmentBatchContext(ZYLVisEnvironment *environment);
    ~ZYLVisEnvironmentBatchContext();
    ZYLVisEnvironmentBatchContext(const ZYLVisEnvironmentBatchContext &) = delete;
    ZYLVisEnvironmentBatchContext &operator=(const ZYLVisEnvironmentBatchContext &) = delete;

private:
    QPointer<ZYLVisEnvironment> m_environment;
};
