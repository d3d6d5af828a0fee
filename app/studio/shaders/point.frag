#version 330 core
// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Round point sprites: the square sprite loses its corners.
uniform vec4 uColor;
out vec4 fragColor;
void main()
{
    vec2 offset = gl_PointCoord - vec2(0.5);
    if (dot(offset, offset) > 0.25)
        discard;
    fragColor = uColor;
}
