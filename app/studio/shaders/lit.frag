#version 330 core
// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// A headlight at the eye with two-sided lighting: the back of a surface is lit as its front.
uniform vec4 uColor;
uniform bool uPerspective;
in vec3 vEyePosition;
in vec3 vNormal;
out vec4 fragColor;
void main()
{
    vec3 toEye = uPerspective ? normalize(-vEyePosition) : vec3(0.0, 0.0, 1.0);
    float lengthOfNormal = length(vNormal);
    float diffuse = lengthOfNormal > 0.0 ? abs(dot(vNormal / lengthOfNormal, toEye)) : 1.0;
    fragColor = vec4(uColor.rgb * (0.25 + 0.75 * diffuse), uColor.a);
}
