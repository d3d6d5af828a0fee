// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisPrimitive.h"

#include <cstdint>

struct ZYLGeoMesh;

/// Indexed triangles with a normal per vertex, e.g. a tessellated surface. Triangles are
/// counter-clockwise seen from the normal side; picking hits both sides.
class ZYLVISUALIZATION_EXPORT ZYLVisTrianglePrimitive final : public ZYLVisPrimitive {
public:
    /// Copies a mesh. Missing normals (none, or not one per vertex) are computed from the
    /// triangles. Throws ZYLSysException when a triangle indexes outside the vertices.
    explicit ZYLVisTrianglePrimitive(const ZYLGeoMesh &mesh);
    /// Builds from flat arrays: x, y, z per vertex; three vertex indices per triangle; optional
    /// normals, x, y, z per vertex (computed from the triangles when empty). Throws
    /// ZYLSysException when an array length is not a multiple of 3, the normals do not match
    /// the vertices, or an index is out of range.
    ZYLVisTrianglePrimitive(const std::vector<double> &xyz, const std::vector<int> &indices,
                            const std::vector<double> &normals = {});
    ~ZYLVisTrianglePrimitive() override;

    int GetNumElements() const override { return int(m_indices.size() / 3); }

    /// Returns the vertex indices, three per triangle, ready for an index buffer.
    const std::vector<std::uint32_t> &GetIndices() const { return m_indices; }
    /// Returns the unit normals as 3 floats per vertex.
    const std::vector<float> &GetNormalArray() const { return m_normalArray; }
    /// Returns vertex k (0, 1 or 2) of triangle i.
    const ZYLMathPoint &GetTriangleVertex(int i, int k) const { return GetVertex(int(m_indices[size_t(3 * i + k)])); }

private:
    ZYLVisTrianglePrimitive(std::vector<ZYLMathPoint> vertices, std::vector<std::uint32_t> indices,
                            std::vector<ZYLMathVector> normals);

    std::vector<std::uint32_t> m_indices;
    std::vector<float> m_normalArray;
};
