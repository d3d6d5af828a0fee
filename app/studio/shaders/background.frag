#version 330 core
// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
uniform vec3 uTop;
uniform vec3 uBottom;
in float vHeight;
out vec4 fragColor;
void main()
{
    fragColor = vec4(mix(uBottom, uTop, clamp(vHeight, 0.0, 1.0)), 1.0);
}
