// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLGeoRef.h"
#include "ZYLTPProgram.h"

#include <QtGlobal>

/// Makes demonstration tool path programs, deterministically for a seed: a doubly curved
/// mould panel (a bicubic B-spline) with a ply boundary on it (a rounded polygon in the
/// panel's (u, v), a closed polyline), and a roll layup procedure whose courses of tows are
/// laid side by side in plies of alternating fibre directions (0°, 45°, 90°, −45°) over the
/// boundary.
///
/// Each course has a tow point every few millimetres on the surface, with the tool axis the
/// surface normal and the laying direction along the course; each tow is added where its
/// centreline enters the boundary and cut where it leaves, so the tow masks change along the
/// course. Some courses have break ranges; consecutive courses are linked (mostly straight
/// links, safety plane links between plies, a few custom links) with approach and retract
/// links at the ends. The machine configuration is a head and two rollers with collision
/// spheres in the tool frame (roller fork spheres beside the roller ends at axle height, head
/// body spheres higher up and behind), all clear of the panel by more than 10 mm with the
/// tool upright. A few stretches (in every eleventh course, about a fortieth of its points)
/// carry a side tilt of 0.45 rad on purpose, so that the roller's fork comes within 10 mm of
/// the part or into it: collision checking at the usual tolerance has a few points to find,
/// and tilting back clears every one of them. An inspection
/// procedure scanning along the panel's centre line follows when asked for.
///
/// A program of 500 courses × 2000 points builds in a few seconds.
class ZYLTOOLPATH_EXPORT ZYLTPDemoGenerator {
public:
    struct Parameters {
        /// Number of courses (at least 1).
        int courses = 24;
        /// Tow points per course; 0 spaces them `pointSpacing` apart instead.
        int pointsPerCourse = 0;
        /// Distance between tow points when `pointsPerCourse` is 0 (mm, > 0).
        double pointSpacing = 5.0;
        /// Tows per course, 8 to 16.
        int tows = 8;
        /// Width of one tow (mm).
        double towWidth = 6.35;
        /// Seed of the random variations (panel curvature, boundary shape, course offsets).
        quint64 seed = 1;
        /// Adds an inspection procedure after the roll layup procedure.
        bool inspection = true;
        /// Adds the deliberately colliding tilted stretches.
        bool collisions = true;
        /// Breaks the process rules on purpose (see `ZYLTPProcessRules`): an S-bend of about
        /// 750 mm radius in every eleventh course (from the eighth), a cut of 60 mm in tows
        /// 1 and 2 and a tow fed for 40 mm in every eleventh course (from the ninth), and a
        /// sixth course laid over 120 mm only. Other courses stay as without it.
        bool processFaults = false;
    };

    ZYLTPDemoGenerator() = delete;

    /// Returns a new program (one reference held by the result); throws `ZYLSysException`
    /// for parameters outside their ranges.
    static ZYLGeoRef<ZYLTPProgram> Create(const Parameters &parameters);
    /// Returns the program the studio opens without a file: one roll layup procedure of a few
    /// dozen courses (no inspection), quick to build; with `processFaults`, the same courses with the faults of that parameter.
    static ZYLGeoRef<ZYLTPProgram> CreateDefaultProgram(bool processFaults = false);

    /// Dimensions of the demo panel (mm): u runs along its length, v across its width.
    static constexpr double PanelLength = 2400.0;
    static constexpr double PanelWidth = 1400.0;
};
