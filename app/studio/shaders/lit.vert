#version 330 core
// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Triangles. The model-view matrix is composed in double precision on the CPU and is rigid,
// so its upper 3x3 also turns normals.
layout(location = 0) in vec3 aPosition;
layout(location = 1) in vec3 aNormal;
uniform mat4 uModelView;
uniform mat4 uProjection;
out vec3 vEyePosition;
out vec3 vNormal;
void main()
{
    vec4 eye = uModelView * vec4(aPosition, 1.0);
    vEyePosition = eye.xyz;
    vNormal = mat3(uModelView) * aNormal;
    gl_Position = uProjection * eye;
}
