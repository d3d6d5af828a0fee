// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include "ZYLMathBoundingBox.h"

#include <vector>

/// Base of the drawable pieces of a ZYLVisRepGraphics: points, a polyline, loose segments or
/// triangles. A primitive is immutable once built. It keeps its vertices twice: in double
/// precision for exact picking, and as a flat float array (x, y, z per vertex) that a renderer
/// uploads as it is.
///
/// How the vertices are drawn and picked depends on the kind:
/// - Points: every vertex is a dot (an element per vertex).
/// - Polyline: the vertices are joined in order (an element per segment between neighbours).
/// - Segments: vertices 2i and 2i+1 form segment i.
/// - Triangles: see ZYLVisTrianglePrimitive (an element per triangle).
///
/// A representation takes ownership of the primitives it is built from; a primitive belongs
/// to one representation only.
class ZYLVISUALIZATION_EXPORT ZYLVisPrimitive {
public:
    enum class Kind { Points, Polyline, Segments, Triangles };

    virtual ~ZYLVisPrimitive();
    ZYLVisPrimitive(const ZYLVisPrimitive &) = delete;
    ZYLVisPrimitive &operator=(const ZYLVisPrimitive &) = delete;

    Kind GetKind() const { return m_kind; }

    int GetNumVertices() const { return int(m_vertices.size()); }
    const ZYLMathPoint &GetVertex(int i) const { return m_vertices[size_t(i)]; }
    /// Returns the vertices in double precision.
    const std::vector<ZYLMathPoint> &GetVertices() const { return m_vertices; }
    /// Returns the vertices as 3 floats each, ready for a vertex buffer.
    const std::vector<float> &GetVertexArray() const { return m_vertexArray; }

    /// Returns the number of pickable elements (dots, polyline segments, segments or triangles).
    virtual int GetNumElements() const = 0;

    const ZYLMathBoundingBox &GetBoundingBox() const { return m_box; }

    /// Returns whether a representation owns this primitive.
    bool IsOwned() const { return m_owned; }

protected:
    /// Takes the vertices; throws ZYLSysException when a coordinate is not finite.
    ZYLVisPrimitive(Kind kind, std::vector<ZYLMathPoint> vertices);

private:
    friend class ZYLVisRep;
    Kind m_kind;
    std::vector<ZYLMathPoint> m_vertices;
    std::vector<float> m_vertexArray;
    ZYLMathBoundingBox m_box;
    bool m_owned = false;
};
