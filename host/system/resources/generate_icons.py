#!/usr/bin/env python3
# SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
"""Writes the system library's 24x24 SVG images, the icon theme index and the Qt resource file.

The images are composed from a few shared parts (course bands, laying points, axis arrows,
link arcs, overlays for edit/hidden/delete) so that they read as one family. Run it after a
change here and commit its output: python3 generate_icons.py
"""
import math
import pathlib

HERE = pathlib.Path(__file__).resolve().parent
IMAGES = HERE / "images"

INK = "#37474F"
BAND_FILL = "#BBDEFB"
BAND_EDGE = "#1E88E5"
POINT = "#1565C0"
TOOL_AXIS = "#1E88E5"
LAYING_AXIS = "#E53935"
SIDE_AXIS = "#43A047"
LINK = "#FB8C00"
RED = "#E53935"
GREEN = "#43A047"
PENCIL = "#FFB300"
SURFACE = "#C8E6C9"
PLY = "#8E24AA"


def svg(*parts):
    body = "\n".join("  " + p for p in parts)
    return ('<!-- SPDX-License-Identifier: LicenseRef-ZYL-Proprietary -->\n'
            '<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" viewBox="0 0 24 24">\n'
            f"{body}\n</svg>\n")


def faded(*parts):
    return '<g opacity="0.4">' + "".join(parts) + "</g>"


# --- shared parts -------------------------------------------------------------------------

def band(x1, y1, x2, y2, width=4.0):
    return (f'<line x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}" stroke="{BAND_EDGE}" '
            f'stroke-width="{width + 1.6:g}"/>'
            f'<line x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}" stroke="{BAND_FILL}" stroke-width="{width:g}"/>')


def courses():
    return "".join(band(3, y, 21, y) for y in (6, 12, 18))


def dot(x, y, r=1.7, color=POINT):
    return f'<circle cx="{x:g}" cy="{y:g}" r="{r:g}" fill="{color}"/>'


def diamond(x, y, r=2.0, color=LINK):
    return (f'<path d="M{x:g} {y - r:g}L{x + r:g} {y:g}L{x:g} {y + r:g}L{x - r:g} {y:g}Z" '
            f'fill="{color}" stroke="{INK}" stroke-width="0.6"/>')


def arrow(x1, y1, x2, y2, color, width=1.4, head=2.4):
    angle = math.atan2(y2 - y1, x2 - x1)
    left = (x2 - head * math.cos(angle - 0.5), y2 - head * math.sin(angle - 0.5))
    right = (x2 - head * math.cos(angle + 0.5), y2 - head * math.sin(angle + 0.5))
    return (f'<line x1="{x1:g}" y1="{y1:g}" x2="{x2:g}" y2="{y2:g}" stroke="{color}" '
            f'stroke-width="{width:g}" stroke-linecap="round"/>'
            f'<path d="M{x2:g} {y2:g}L{left[0]:.2f} {left[1]:.2f}L{right[0]:.2f} {right[1]:.2f}Z" '
            f'fill="{color}"/>')


def axes(points, count, tool_length=7.0):
    """Axis arrows at each point: 0 none, 1 tool axis, 2 tool and laying axes, 3 all axes."""
    if count <= 0:
        return ""
    parts = []
    for x, y in points:
        if count >= 3:
            parts.append(arrow(x, y, x - 2.8, y + 3.6, SIDE_AXIS, 1.1, 1.9))
        if count >= 2:
            parts.append(arrow(x, y, x + 4.2, y, LAYING_AXIS, 1.1, 1.9))
        parts.append(arrow(x, y, x, y - tool_length, TOOL_AXIS, 1.2, 2.1))
    return "".join(parts)


LAYING_POINTS = [(5, 17), (12, 17), (19, 17)]


def laying_points(axis_count=0):
    row = f'<line x1="2" y1="17" x2="22" y2="17" stroke="{BAND_FILL}" stroke-width="4"/>'
    return row + axes(LAYING_POINTS, axis_count) + "".join(dot(x, y) for x, y in LAYING_POINTS)


def bezier(p0, p1, p2, p3, t):
    u = 1 - t
    return tuple(u ** 3 * a + 3 * u * u * t * b + 3 * u * t * t * c + t ** 3 * d
                 for a, b, c, d in zip(p0, p1, p2, p3))


LINK_CURVE = ((7, 19), (7, 7), (17, 7), (17, 19))
LINK_POINTS = [bezier(*LINK_CURVE, t) for t in (0.2, 0.5, 0.8)]


def course_link(axis_count=-1):
    """Two course ends joined by a link arc; axis_count -1 draws no points."""
    (x0, y0), (x1, y1), (x2, y2), (x3, y3) = LINK_CURVE
    parts = [band(1, 19, 7, 19), band(17, 19, 23, 19),
             f'<path d="M{x0} {y0}C{x1} {y1} {x2} {y2} {x3} {y3}" fill="none" stroke="{LINK}" '
             f'stroke-width="2" stroke-linecap="round"/>']
    if axis_count >= 0:
        parts.append(axes(LINK_POINTS, axis_count, 5.0))
        parts.extend(dot(x, y, 1.5, INK) for x, y in LINK_POINTS)
    return "".join(parts)


LINKING_CURVE = ((4, 20), (4, 6), (20, 6), (20, 20))
LINKING_POINTS = [bezier(*LINKING_CURVE, t) for t in (0.0, 0.25, 0.5, 0.75, 1.0)]


def linking_points(axis_count=0):
    (x0, y0), (x1, y1), (x2, y2), (x3, y3) = LINKING_CURVE
    parts = [f'<path d="M{x0} {y0}C{x1} {y1} {x2} {y2} {x3} {y3}" fill="none" stroke="{INK}" '
             f'stroke-width="1" stroke-dasharray="1.5 1.5"/>']
    if axis_count:
        parts.append(axes(LINKING_POINTS[1:4], axis_count, 5.0))
    parts.extend(diamond(x, y) for x, y in LINKING_POINTS)
    return "".join(parts)


def polyline():
    pts = [(3, 18), (8, 8), (13, 15), (18, 6), (21, 10)]
    path = " ".join(f"{x},{y}" for x, y in pts)
    return (f'<polyline points="{path}" fill="none" stroke="{INK}" stroke-width="1.6" '
            f'stroke-linejoin="round"/>' + "".join(dot(x, y, 1.5) for x, y in pts))


def pencil():
    body = "M13 22L14 18L20.5 11.5L23.5 14.5L17 21Z"
    return (f'<path d="{body}" fill="#FFFFFF" stroke="#FFFFFF" stroke-width="2.4" stroke-linejoin="round"/>'
            f'<path d="{body}" fill="{PENCIL}" stroke="{INK}" stroke-width="1" stroke-linejoin="round"/>'
            f'<path d="M13 22L14 18L17 21Z" fill="{INK}"/>')


def crossed_eye():
    eye = "M11.5 18.5Q17 13 22.5 18.5Q17 24 11.5 18.5Z"
    return (f'<rect x="10.5" y="13.5" width="13" height="10" rx="2.5" fill="#FFFFFF" opacity="0.9"/>'
            f'<path d="{eye}" fill="#FFFFFF" stroke="{INK}" stroke-width="1.2"/>'
            f'<circle cx="17" cy="18.5" r="1.8" fill="{INK}"/>'
            f'<line x1="12" y1="23" x2="22" y2="14" stroke="{RED}" stroke-width="1.8" stroke-linecap="round"/>')


def badge(color, mark):
    return (f'<circle cx="18" cy="18" r="5.5" fill="{color}" stroke="#FFFFFF" stroke-width="1.2"/>' + mark)


def red_cross_badge():
    return badge(RED, '<path d="M15.6 15.6L20.4 20.4M20.4 15.6L15.6 20.4" stroke="#FFFFFF" '
                      'stroke-width="1.8" stroke-linecap="round"/>')


def check_badge():
    return badge(GREEN, '<path d="M15.2 18.2L17.3 20.2L20.9 15.9" fill="none" stroke="#FFFFFF" '
                        'stroke-width="1.8" stroke-linecap="round" stroke-linejoin="round"/>')


def exclamation_badge():
    return badge(LINK, '<path d="M18 15V18.8" stroke="#FFFFFF" stroke-width="2" stroke-linecap="round"/>'
                       '<circle cx="18" cy="21" r="1.1" fill="#FFFFFF"/>')


def hidden(*glyph):
    return svg(faded(*glyph), crossed_eye())


def edited(*glyph):
    return svg(*glyph, pencil())


def table():
    return (f'<rect x="2.5" y="3.5" width="19" height="16" rx="1.5" fill="#FFFFFF" stroke="{INK}" stroke-width="1.2"/>'
            f'<rect x="2.5" y="3.5" width="19" height="4" fill="{BAND_FILL}" stroke="{INK}" stroke-width="1.2"/>'
            f'<path d="M2.5 11.5H21.5M2.5 15.5H21.5M9 3.5V19.5" stroke="{INK}" stroke-width="1"/>')


def surface():
    return (f'<path d="M2 9Q12 3 22 9V18Q12 12 2 18Z" fill="{SURFACE}" stroke="{GREEN}" stroke-width="1.2"/>'
            f'<path d="M7 6.4V15.2M12 5.5V14.5M17 6.4V15.2M2 13.5Q12 7.5 22 13.5" fill="none" '
            f'stroke="{GREEN}" stroke-width="0.7"/>')


def ply_boundary():
    return (f'<path d="M3 7L10 3L21 6L20 17L12 21L3 16Z" fill="none" stroke="{PLY}" stroke-width="1.6" '
            f'stroke-dasharray="2.5 1.5" stroke-linejoin="round"/>')


def roller(cx=12, cy=12):
    return (f'<rect x="{cx - 7}" y="{cy - 3.5}" width="14" height="7" fill="#90A4AE" stroke="{INK}" stroke-width="1.1"/>'
            f'<ellipse cx="{cx + 7}" cy="{cy}" rx="1.6" ry="3.5" fill="#CFD8DC" stroke="{INK}" stroke-width="1.1"/>'
            f'<line x1="{cx - 10}" y1="{cy}" x2="{cx - 7}" y2="{cy}" stroke="{INK}" stroke-width="1.4"/>')


def head():
    return (f'<path d="M6 2H18V10L15 13H9L6 10Z" fill="#B0BEC5" stroke="{INK}" stroke-width="1.1" '
            f'stroke-linejoin="round"/>' + roller(12, 16.5))


def chain_link(cx, cy, angle, color=INK):
    return (f'<rect x="{cx - 5}" y="{cy - 2.5}" width="10" height="5" rx="2.5" fill="none" stroke="{color}" '
            f'stroke-width="1.8" transform="rotate({angle} {cx} {cy})"/>')


def magnifier():
    return (f'<circle cx="17" cy="16.5" r="4" fill="#FFFFFF" stroke="{INK}" stroke-width="1.6"/>'
            f'<line x1="19.8" y1="19.3" x2="22.5" y2="22" stroke="{INK}" stroke-width="2" stroke-linecap="round"/>')


def context_menu():
    return (f'<rect x="12.5" y="11.5" width="10" height="11" rx="1" fill="#FFFFFF" stroke="{INK}" stroke-width="1"/>'
            f'<path d="M14.5 14.5H20.5M14.5 17H20.5M14.5 19.5H18.5" stroke="{INK}" stroke-width="1"/>')


def two_bands():
    return band(3, 7, 16, 7) + band(3, 17, 16, 17)


def link_arc(x, y1, y2, right=True):
    reach = 6 if right else -6
    return (f'<path d="M{x} {y1}C{x + reach} {y1} {x + reach} {y2} {x} {y2}" fill="none" stroke="{LINK}" '
            f'stroke-width="2" stroke-linecap="round"/>')


# --- the images ---------------------------------------------------------------------------

IMAGES_BY_NAME = {
    # catalogue of the published actions
    "collision-table": svg(table(), exclamation_badge()),
    "tool-path-contextual": svg(band(2, 18, 18, 4), context_menu()),
    "info-detailed": svg(f'<circle cx="12" cy="12" r="9.5" fill="{BAND_FILL}" stroke="{BAND_EDGE}" stroke-width="1.6"/>',
                         f'<circle cx="12" cy="7.2" r="1.5" fill="{INK}"/>',
                         f'<path d="M10 10.5H12.5V17M10 17H15" fill="none" stroke="{INK}" stroke-width="1.8" '
                         f'stroke-linecap="round" stroke-linejoin="round"/>'),
    "courses-edit": edited(courses()),
    "laying-points-edit": edited(laying_points(1)),
    "linking-points-edit": edited(linking_points()),
    "links-edit": edited(course_link()),
    "display-tool-path-course": svg(courses()),
    "tool-path-polyline-view": svg(polyline()),
    "tool-path-course-and-polyline-view": svg(band(3, 7, 21, 7, 5), band(3, 17, 21, 17, 5),
                                              f'<polyline points="3,7 21,7" stroke="{INK}" stroke-width="1.2"/>',
                                              f'<polyline points="3,17 21,17" stroke="{INK}" stroke-width="1.2"/>',
                                              dot(3, 7, 1.4), dot(12, 7, 1.4), dot(21, 7, 1.4),
                                              dot(3, 17, 1.4), dot(12, 17, 1.4), dot(21, 17, 1.4)),
    "courses-hidden": hidden(courses()),
    "laying-points-tool-axis": svg(laying_points(1)),
    "laying-points-tool-laying-axes": svg(laying_points(2)),
    "laying-points-all-axes": svg(laying_points(3)),
    "laying-pints-hidden": hidden(laying_points(1)),
    "links-points": svg(course_link(0)),
    "links-tool-axis": svg(course_link(1)),
    "links-all-axes": svg(course_link(3)),
    "links-hidden": hidden(course_link()),
    "linking-points": svg(linking_points()),
    "linking-points-tool-axes": svg(linking_points(1)),
    "linking-points-tool-laying-axes": svg(linking_points(2)),
    "linking-points-all-axes": svg(linking_points(3)),
    "linking-points-hidden": hidden(linking_points()),
    "surface-hidden": hidden(surface()),
    "ply-boundary-in-edit-tool-path-off": hidden(ply_boundary()),
    "head-off": hidden(head()),
    "roller-off": hidden(roller()),
    # panel images
    "button-collapse-right": svg(f'<path d="M9 6L16 12L9 18Z" fill="{INK}"/>'),
    "button-collapse-left": svg(f'<path d="M15 6L8 12L15 18Z" fill="{INK}"/>'),
    "selection-non-empty": svg(f'<rect x="3.5" y="3.5" width="17" height="17" fill="none" stroke="{INK}" '
                               f'stroke-width="1.2" stroke-dasharray="2.5 1.5"/>',
                               dot(9, 10, 2.2), dot(15, 14, 2.2)),
    "select": svg(f'<path d="M6 3L6 19L10 15L13 21.5L15.5 20.3L12.6 14H18Z" fill="#FFFFFF" stroke="{INK}" '
                  f'stroke-width="1.3" stroke-linejoin="round"/>'),
    # theme icons of the panels
    "courses-reverse": svg(band(3, 12, 21, 12), arrow(4, 5, 20, 5, INK, 1.6, 4.2), arrow(20, 19, 4, 19, INK, 1.6, 4.2)),
    "courses-delete": svg(courses(), red_cross_badge()),
    "courses-break": svg(band(2, 12, 10, 12, 6), band(14, 12, 22, 12, 6),
                         f'<path d="M12 3V7M12 10V14M12 17V21" stroke="{RED}" stroke-width="1.6" '
                         f'stroke-linecap="round"/>'),
    "all-expand-collapse": svg(f'<path d="M6 10L12 4L18 10M6 14L12 20L18 14" fill="none" stroke="{INK}" '
                               f'stroke-width="2" stroke-linecap="round" stroke-linejoin="round"/>'),
    "nesting-unlink": svg(chain_link(7, 12, -30), chain_link(17, 12, -30),
                          f'<path d="M11 5L13 8M12 16L13.5 19" stroke="{RED}" stroke-width="1.6" '
                          f'stroke-linecap="round"/>'),
    "courses-link": svg(two_bands(), link_arc(16, 7, 17)),
    "courses-chain-link": svg(band(3, 5, 16, 5, 3), band(8, 12, 21, 12, 3), band(3, 19, 16, 19, 3),
                              link_arc(16, 5, 12), link_arc(8, 12, 19, right=False)),
    "courses-unlink-all": svg(two_bands(), f'<path d="M16 7C20 7 21.5 9 21.5 10.5M21.5 13.5C21.5 15 20 17 16 17" '
                                           f'fill="none" stroke="{LINK}" stroke-width="2" stroke-linecap="round"/>',
                              red_cross_badge()),
    "course-ok": svg(band(3, 8, 21, 8, 6), check_badge()),
    "course-details": svg(band(3, 8, 21, 8, 6), magnifier()),
    "nesting-link": svg(chain_link(8.5, 12, -30, LINK), chain_link(15.5, 12, -30)),
    "nesting-undo": svg(f'<path d="M9 5L4 9.5L9 14" fill="none" stroke="{INK}" stroke-width="2" '
                        f'stroke-linecap="round" stroke-linejoin="round"/>',
                        f'<path d="M4.5 9.5H14.5A5 5 0 0 1 14.5 19.5H10" fill="none" stroke="{INK}" stroke-width="2" '
                        f'stroke-linecap="round"/>'),
    "status-ok": svg(f'<circle cx="12" cy="12" r="9.5" fill="{GREEN}"/>',
                     '<path d="M7.5 12.5L10.8 15.6L16.8 8.8" fill="none" stroke="#FFFFFF" stroke-width="2.4" '
                     'stroke-linecap="round" stroke-linejoin="round"/>'),
    "remove-all": svg(f'<circle cx="12" cy="12" r="9.5" fill="{RED}"/>',
                      '<path d="M8 8L16 16M16 8L8 16" stroke="#FFFFFF" stroke-width="2.4" stroke-linecap="round"/>'),
    # shown for a name without an image
    "zyl-placeholder": svg('<rect x="1" y="1" width="22" height="22" fill="#FF00FF" stroke="#000000" stroke-width="1"/>',
                           '<path d="M8.5 9A3.5 3.5 0 1 1 13.6 12.1C12.5 12.7 12 13.4 12 15" fill="none" '
                           'stroke="#000000" stroke-width="2.2" stroke-linecap="round"/>',
                           '<circle cx="12" cy="18.6" r="1.4" fill="#000000"/>'),
}

# Names the forms ask the icon theme for.
THEME_ICONS = [
    "courses-edit", "courses-reverse", "courses-delete", "courses-break", "all-expand-collapse",
    "nesting-unlink", "courses-link", "courses-chain-link", "courses-unlink-all", "course-ok",
    "course-details", "nesting-link", "nesting-undo", "laying-points-edit", "linking-points-edit",
    "status-ok", "remove-all",
]


def main():
    IMAGES.mkdir(exist_ok=True)
    for old in IMAGES.glob("*.svg"):
        old.unlink()
    for name, text in IMAGES_BY_NAME.items():
        (IMAGES / f"{name}.svg").write_text(text)
    (HERE / "index.theme").write_text(
        "# SPDX-License-Identifier: LicenseRef-ZYL-Proprietary\n"
        "[Icon Theme]\nName=zyl\nComment=Icons of the ZYL host and its modules\nDirectories=scalable\n\n"
        "[scalable]\nSize=24\nMinSize=8\nMaxSize=512\nType=Scalable\n")
    lines = ['<!-- SPDX-License-Identifier: LicenseRef-ZYL-Proprietary -->', "<RCC>",
             '  <qresource prefix="/zyl/images">']
    lines += [f'    <file alias="{name}.svg">images/{name}.svg</file>' for name in sorted(IMAGES_BY_NAME)]
    lines += ["  </qresource>", '  <qresource prefix="/icons/zyl">',
              '    <file alias="index.theme">index.theme</file>']
    lines += [f'    <file alias="scalable/{name}.svg">images/{name}.svg</file>' for name in sorted(THEME_ICONS)]
    lines += ["  </qresource>", "</RCC>"]
    (HERE / "ZYLSystem.qrc").write_text("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
