// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

/// The meta-type ids of the types that the module's panels carry in Qt variants and through
/// queued signal connections. Each type is registered on first use, never at load, under
/// its normalized name, and its id is kept for later calls.
///
/// So far: "QSet<ZYLVisObject*>", the argument type of the visualization environment's
/// selection signals. The course and break-range pointer types ("ZYLTPCourse*",
/// "const ZYLTPCourse*", "ZYLTPBreakRange*", "const ZYLTPBreakRange*") join here together with
/// the course panel that carries them, as the module does not build on the tool path model
/// library yet.
class ZYLTPMetaTypes {
public:
    ZYLTPMetaTypes() = delete;

    /// Returns the id of "QSet<ZYLVisObject*>".
    static int GetVisObjectSetType();
};
