// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLGeoRef.h"
#include "ZYLTPProgram.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <functional>

/// Reads and writes tool path program files (`*.zyltp.json`): versioned JSON holding the
/// whole program: machine resources with their collision points (tools of kind "roller",
/// with width and diameter, or "plain"; a tool without a kind is a roller, as in files
/// written before plain tools existed), the ply surface (plane or
/// B-spline) and ply boundaries (polylines in the surface's (u, v)), and the procedures with
/// their parameters, machine configurations, courses (tow points, tow runs, roll-in and
/// roll-out, feed rates, approach and retract, break ranges, instructions), laying order and
/// links. Derived data (roll-in and roll-out points, lengths, link motion other than custom
/// frames) is not stored.
///
/// The top object carries `"format": "zyltp-program"` and `"version": 1`; files of a newer
/// version are refused. Plain tools came without a new version: they add a kind that older
/// readers refuse by name ("tools[2].kind: unknown tool kind"), while every file without
/// one stays byte for byte what it was. The process rules came the same way: an optional
/// top-level "process_rules" object, written only when the rules differ from the defaults,
/// so that a file without it loads with the defaults and saves as it was.
///
/// Loading validates everything and refuses a bad file with a message naming the JSON path
/// of the fault, e.g. `procedures[0].courses[12].points[40].tool_axis: not a unit vector`;
/// a value out of range gets the message of the model's setter for it. Values must also be
/// those of a real program, not only finite numbers:
///  - coordinates (tips, frame origins, collision point centres, inspection paths, control
///    points, a plane's domain) and knots: within ±1e6 mm;
///  - lengths, distances and radii: 0 to 1e6 mm (roller width and diameter above 0);
///  - feed rates: above 0, up to 1e6 mm/min; forces: 0 to 1e6 N;
///  - tilts within ±1.55 rad, approach and retract angles in (0, π/2], rates in [0, 1];
///  - surfaces of degree 1 to 3 with 2 to 100,000 control points a side, clamped knot
///    vectors that never decrease and repeat no knot more than the degree inside;
///  - at most 64 tows a head and course; every other count is that of what the file lists,
///    so no count can ask for more memory than the file's size warrants.
/// So `surface.control_points[7]` at z = 1e300 is refused with "Value 1e+300 mm is out of
/// range [-1000000 mm, 1000000 mm]". A file in which a bracket closes another kind than the
/// one open is refused before it is read ("document: brackets that do not match"). It builds the
/// program through `ZYLTPProgramBuilder` alone (frames as stored, parameters through the
/// builder, no transaction) and hands it out only once the whole file has been read, so a
/// refused (or cancelled) load creates nothing. Loading never throws. A file is mapped into
/// memory rather than read, where the system allows.
///
/// Saving streams the program into a byte buffer written to the file in large chunks,
/// through a temporary file renamed over the target at the end, so a failed save leaves the
/// previous file as it was. The output is deterministic: numbers are written in their
/// shortest round-trip form and save, load, save gives the same bytes.
class ZYLTOOLPATH_EXPORT ZYLTPProgramFile {
    Q_DECLARE_TR_FUNCTIONS(ZYLTPProgramFile)
public:
    ZYLTPProgramFile() = delete;

    /// The value of the top-level "format" member.
    static constexpr const char *FormatName = "zyltp-program";
    /// The newest version this build reads and the one it writes.
    static constexpr int Version = 1;

    /// Called now and then while loading with the fraction read so far (0 to 1); returning
    /// false cancels the load.
    using Progress = std::function<bool(double fraction)>;

    /// The outcome of a load: the program (with one reference held by the result), or null
    /// with the reason in `error`; `cancelled` is set when the progress callback stopped it.
    struct LoadResult {
        ZYLGeoRef<ZYLTPProgram> program;
        QString error;
        bool cancelled = false;
    };

    /// Loads the file `fileName`.
    static LoadResult Load(const QString &fileName, const Progress &progress = {});
    /// Loads a program from the bytes of a file.
    static LoadResult Parse(const QByteArray &bytes, const Progress &progress = {});

    /// Saves `program` to `fileName`; returns an empty string on success or the reason of
    /// the failure (the previous file, if any, is then untouched).
    static QString Save(const ZYLTPProgram &program, const QString &fileName);
    /// Returns the bytes `Save` writes; on failure an empty array with the reason in `error`.
    static QByteArray Serialize(const ZYLTPProgram &program, QString *error = nullptr);
};
