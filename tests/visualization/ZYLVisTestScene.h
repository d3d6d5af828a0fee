// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Small scenes and geometry shared by the visualization tests.

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisFunctionFilter.h"
#include "ZYLVisPickRay.h"
#include "ZYLVisPointPrimitive.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisSegmentPrimitive.h"
#include "ZYLVisTrianglePrimitive.h"
#include "ZYLVisVirtualObject.h"

#include "ZYLSysException.h"

#include <QSet>

#include <memory>
#include <vector>

using ObjectSet = QSet<ZYLVisObject *>;

/// Display options with a priority and depth test.
inline ZYLVisOptions testOptions(int priority = 0, bool depth = true)
{
    ZYLVisOptions options;
    options.SetPriority(priority);
    options.SetDepthEnabled(depth);
    return options;
}

/// One primitive as a representation.
inline ZYLVisRep *testRep(ZYLVisPrimitive *primitive, int priority = 0, bool depth = true)
{
    return new ZYLVisRepGraphics({primitive}, testOptions(priority, depth));
}

inline ZYLVisRep *pointRep(std::vector<ZYLMathPoint> points, int priority = 0, bool depth = true)
{
    return testRep(new ZYLVisPointPrimitive(std::move(points)), priority, depth);
}

/// A unit square in the plane z = `z`, [x0, x0+1] × [y0, y0+1], as two triangles.
inline ZYLVisRep *squareRep(double x0, double y0, double z, int priority = 0)
{
    return testRep(new ZYLVisTrianglePrimitive({x0, y0, z, x0 + 1, y0, z, x0 + 1, y0 + 1, z, x0, y0 + 1, z},
                                               {0, 1, 2, 0, 2, 3}),
                   priority);
}

/// A ray looking down the z axis at (x, y) from z = 100.
inline ZYLVisPickRay rayDown(double x, double y, double radius = 0.1, double slope = 0.0)
{
    return ZYLVisPickRay(ZYLMathPoint(x, y, 100.0), ZYLMathVector(0.0, 0.0, -1.0), radius, slope);
}

/// An environment with objects it adds and owns for the test, and their representations.
/// Objects go before representations, representations before the environment.
class TestScene {
public:
    ZYLVisEnvironment env;

    ZYLVisVirtualObject *Add(ZYLVisRep *rep, const QString &label = {})
    {
        ZYLVisVirtualObject *object = Make(rep, label);
        env.AddVirtualObject(object);
        return object;
    }

    /// Builds an object for the environment without adding it.
    ZYLVisVirtualObject *Make(ZYLVisRep *rep, const QString &label = {})
    {
        m_objects.push_back(std::make_unique<ZYLVisVirtualObject>(&env));
        ZYLVisVirtualObject *object = m_objects.back().get();
        object->SetRep(rep);
        object->SetLabel(label);
        return object;
    }

private:
    std::vector<std::unique_ptr<ZYLVisVirtualObject>> m_objects;
};
