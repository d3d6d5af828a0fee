// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisPrimitive.h"

#include "ZYLSysException.h"

ZYLVisPrimitive::ZYLVisPrimitive(Kind kind, std::vector<ZYLMathPoint> vertices)
    : m_kind(kind), m_vertices(std::move(vertices))
{
    // A single NaN would poison the bounding boxes of the picking index and the renderer's
    // camera fit, so such input is refused here, once, for every kind.
    for (size_t i = 0; i < m_vertices.size(); ++i) {
        if (!m_vertices[i].IsFinite())
            throw ZYLSysException(QStringLiteral("Primitive vertex %1 has a coordinate that is not finite.").arg(i));
    }
    m_vertexArray.resize(m_vertices.size() * 3);
    float *out = m_vertexArray.data();
    for (const ZYLMathPoint &p : m_vertices) {
        *out++ = float(p.X());
        *out++ = float(p.Y());
        *out++ = float(p.Z());
        m_box.Add(p);
    }
}

ZYLVisPrimitive::~ZYLVisPrimitive() = default;
