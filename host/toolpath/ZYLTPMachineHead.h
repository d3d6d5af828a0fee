// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPResource.h"

/// The placement head of a machine (a resource; see `ZYLTPResource` for ids).
///
/// Tow count: a head feeds a fixed number of tows side by side, from 1 to `MaxNumTows`, tow 0
/// on the side of minus the side direction and the tip point in the middle of the band. A
/// course laid with a head that knows its count is that many tows wide, whichever tows it
/// uses (see `ZYLTPTowCourse::GetNumTows`). 0 means the count is not known (heads of older
/// programs); courses then take their width from their tow masks.
class ZYLTOOLPATH_EXPORT ZYLTPMachineHead : public ZYLTPResource {
    Q_OBJECT
public:
    /// The most tows a head can feed (a tow mask holds 64 tows).
    static constexpr int MaxNumTows = 64;

    ~ZYLTPMachineHead() override;

    /// Returns the number of tows the head feeds (1 to `MaxNumTows`), or 0 when not known.
    int GetNumTows() const { return m_numTows; }

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPMachineHead(ZYLTPProgram *program, int id, const QString &name, int numTows);
    int m_numTows;
};
