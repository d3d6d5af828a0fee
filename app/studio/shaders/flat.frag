#version 330 core
// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
uniform vec4 uColor;
out vec4 fragColor;
void main()
{
    fragColor = uColor;
}
