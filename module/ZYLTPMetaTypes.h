// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

/// The meta-type ids of the types that the module's panels carry in Qt variants and through
/// queued signal connections. Each type is registered on first use, never at load, under
/// its normalized name, and its id is kept for later calls.
///
/// "QSet<ZYLVisObject*>" is the argument type of the visualization environment's selection
/// signals; the course and break-range pointer types ("ZYLTPCourse*", "const ZYLTPCourse*",
/// "ZYLTPBreakRange*", "const ZYLTPBreakRange*") are carried by the course panel's lists.
/// A type this module registered first is withdrawn when the module is unloaded, so that the
/// registry keeps no description inside an unmapped library.
class ZYLTPMetaTypes {
public:
    ZYLTPMetaTypes() = delete;

    /// Returns the id of "QSet<ZYLVisObject*>".
    static int GetVisObjectSetType();
    /// Registers the four course and break-range pointer types (once).
    static void RegisterCourseTypes();
};
