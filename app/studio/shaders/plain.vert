#version 330 core
// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Points and lines: nothing to light, so nothing is passed on but the position (a software
// renderer pays for every output of every vertex).
layout(location = 0) in vec3 aPosition;
uniform mat4 uModelView;
uniform mat4 uProjection;
uniform float uPointSize;
void main()
{
    gl_PointSize = uPointSize;
    gl_Position = uProjection * (uModelView * vec4(aPosition, 1.0));
}
