// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisTrianglePrimitive.h"

#include "ZYLGeoMesh.h"
#include "ZYLSysException.h"

namespace {
std::vector<std::uint32_t> checkedIndices(const int *begin, size_t count, size_t numVertices)
{
    if (count % 3 != 0)
        throw ZYLSysException(QStringLiteral("Triangle indices come in threes; got %1.").arg(count));
    std::vector<std::uint32_t> indices(count);
    for (size_t i = 0; i < count; ++i) {
        if (begin[i] < 0 || size_t(begin[i]) >= numVertices)
            throw ZYLSysException(QStringLiteral("Triangle %1 refers to vertex %2 of %3.")
                                      .arg(i / 3)
                                      .arg(begin[i])
                                      .arg(numVertices));
        indices[i] = std::uint32_t(begin[i]);
    }
    return indices;
}

std::vector<ZYLMathPoint> pointsOf(const std::vector<double> &xyz)
{
    if (xyz.size() % 3 != 0)
        throw ZYLSysException(QStringLiteral("Vertex coordinates come in threes; got %1.").arg(xyz.size()));
    std::vector<ZYLMathPoint> points(xyz.size() / 3);
    for (size_t i = 0; i < points.size(); ++i)
        points[i] = {xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]};
    return points;
}

std::vector<ZYLMathVector> vectorsOf(const std::vector<double> &xyz, size_t numVertices)
{
    if (xyz.empty())
        return {};
    if (xyz.size() != 3 * numVertices)
        throw ZYLSysException(
            QStringLiteral("Expected %1 normal coordinates (3 per vertex); got %2.").arg(3 * numVertices).arg(xyz.size()));
    std::vector<ZYLMathVector> vectors(numVertices);
    for (size_t i = 0; i < numVertices; ++i)
        vectors[i] = {xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]};
    return vectors;
}

std::vector<std::uint32_t> meshIndices(const ZYLGeoMesh &mesh)
{
    static_assert(sizeof(std::array<int, 3>) == 3 * sizeof(int));
    return checkedIndices(mesh.triangles.empty() ? nullptr : mesh.triangles.front().data(), mesh.triangles.size() * 3,
                          mesh.vertices.size());
}
}

ZYLVisTrianglePrimitive::ZYLVisTrianglePrimitive(const ZYLGeoMesh &mesh)
    : ZYLVisTrianglePrimitive(mesh.vertices, meshIndices(mesh),
                              mesh.normals.size() == mesh.vertices.size() ? mesh.normals : std::vector<ZYLMathVector>())
{
}

ZYLVisTrianglePrimitive::ZYLVisTrianglePrimitive(const std::vector<double> &xyz, const std::vector<int> &indices,
                                                 const std::vector<double> &normals)
    : ZYLVisTrianglePrimitive(pointsOf(xyz), checkedIndices(indices.data(), indices.size(), xyz.size() / 3),
                              vectorsOf(normals, xyz.size() / 3))
{
}

ZYLVisTrianglePrimitive::ZYLVisTrianglePrimitive(std::vector<ZYLMathPoint> vertices, std::vector<std::uint32_t> indices,
                                                 std::vector<ZYLMathVector> normals)
    : ZYLVisPrimitive(Kind::Triangles, std::move(vertices)), m_indices(std::move(indices))
{
    const std::vector<ZYLMathPoint> &points = GetVertices();
    if (normals.empty()) {
        // Area-weighted vertex normals: the unnormalised cross product of each triangle is
        // twice its area, so large triangles dominate their shared vertices, which is what a
        // smooth-shaded surface needs.
        normals.assign(points.size(), ZYLMathVector());
        for (size_t t = 0; t + 2 < m_indices.size(); t += 3) {
            const ZYLMathPoint &a = points[m_indices[t]];
            const ZYLMathVector n = (points[m_indices[t + 1]] - a).Cross(points[m_indices[t + 2]] - a);
            for (int k = 0; k < 3; ++k)
                normals[m_indices[t + size_t(k)]] += n;
        }
    }
    m_normalArray.resize(points.size() * 3);
    for (size_t i = 0; i < points.size(); ++i) {
        const ZYLMathVector n = normals[i].Normalized().value_or(ZYLMathVector(0.0, 0.0, 1.0));
        m_normalArray[3 * i] = float(n.X());
        m_normalArray[3 * i + 1] = float(n.Y());
        m_normalArray[3 * i + 2] = float(n.Z());
    }
}

ZYLVisTrianglePrimitive::~ZYLVisTrianglePrimitive() = default;
