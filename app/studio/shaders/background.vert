#version 330 core
// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// One triangle that covers the whole viewport; no vertex buffer needed.
out float vHeight;
void main()
{
    vec2 corner = vec2(float((gl_VertexID << 1) & 2), float(gl_VertexID & 2));
    vec2 ndc = corner * 2.0 - 1.0;
    vHeight = corner.y;
    gl_Position = vec4(ndc, 0.0, 1.0);
}
