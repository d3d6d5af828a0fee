// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLTPProcessRules.h"

#include "ZYLGeoGeometry.h"
#include "ZYLMathBoundingBox.h"

#include <QList>
#include <QObject>

#include <memory>
#include <vector>

class ZYLGeoAssembledCurveOnSurface;
class ZYLGeoSurface;
class ZYLTPMachineHead;
class ZYLTPProcedure;
class ZYLTPTool;

/// The tool path of one feature: a list of procedures, the machine resources they use
/// (heads and tools; see `ZYLTPResource` for ids), the ply's surface (`GetPlySurface()`, the
/// surface collisions are checked against) and ply boundaries.
///
/// A program is shared geometry: a counted reference (`ZYLGeoGeometry`; a new program has
/// no reference, the release of the last one deletes it) and a `QObject`, so holders may
/// also keep a `QPointer` to learn when it is gone. The program holds one reference on its
/// surface and on each boundary. Programs are made with `ZYLTPProgramBuilder`.
class ZYLTOOLPATH_EXPORT ZYLTPProgram : public QObject, public ZYLGeoGeometry {
    Q_OBJECT
public:
    ~ZYLTPProgram() override;

    int GetNumProcedures() const { return int(m_procedures.size()); }
    ZYLTPProcedure *GetProcedure(int i) const;

    const ZYLGeoSurface *GetPlySurface() const { return m_surface; }
    const QList<ZYLGeoAssembledCurveOnSurface *> &GetPlyBoundaries() const { return m_boundaries; }

    int GetNumMachineHeads() const { return int(m_heads.size()); }
    const ZYLTPMachineHead *GetMachineHead(int id) const;
    /// Tools by id; roller ids are their positions in this list.
    int GetNumTools() const { return int(m_tools.size()); }
    const ZYLTPTool *GetTool(int id) const;

    /// Returns the bounding box of the part: the ply surface's, or, without a surface, that
    /// of every laying point of the program.
    ZYLMathBoundingBox GetPartBoundingBox() const;

    /// Returns the process rules the program's plies are checked against (see
    /// `ZYLTPProcessCheck`).
    const ZYLTPProcessRules &GetProcessRules() const { return m_rules; }
    /// Sets the process rules; recorded in the open transaction. Throws
    /// `ZYLSysOutOfBoundsException` for a rule out of its range (`ZYLTPProcessRules::Check`)
    /// and `ZYLSysException` outside a transaction, changing nothing.
    void SetProcessRules(const ZYLTPProcessRules &rules);

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPProgram();
    std::vector<std::unique_ptr<ZYLTPProcedure>> m_procedures;
    std::vector<std::unique_ptr<ZYLTPMachineHead>> m_heads;
    std::vector<std::unique_ptr<ZYLTPTool>> m_tools;
    const ZYLGeoSurface *m_surface = nullptr;
    QList<ZYLGeoAssembledCurveOnSurface *> m_boundaries;
    ZYLTPProcessRules m_rules;
    mutable quint64 m_boxRevision = 0;
    mutable ZYLMathBoundingBox m_box;
};
