// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathPoint.h"

#include <QList>
#include <QObject>
#include <QString>

#include <utility>

class ZYLTPProgram;

/// A machine resource of a tool path program (a head or a tool): an id, a name and its
/// collision points. Resources are owned by their program and made by the program builder.
///
/// Ids: a head's id is its position in the program's list of heads, a tool's id its position
/// in the program's list of tools, both from 0. Rollers and plain tools share the tool list,
/// so a roller's id is its position among all tools; the host hands rollers to the display
/// under these ids and skips the plain tools.
///
/// Collision points are spheres given as (centre in the resource's tool frame, radius mm).
class ZYLTOOLPATH_EXPORT ZYLTPResource : public QObject {
    Q_OBJECT
public:
    ~ZYLTPResource() override;

    int GetId() const { return m_id; }
    const QString &GetName() const { return m_name; }
    /// Returns the program that owns the resource.
    const ZYLTPProgram *GetProgram() const { return m_program; }
    const QList<std::pair<ZYLMathPoint, double>> &GetCollisionPoints() const { return m_collisionPoints; }

protected:
    ZYLTPResource(ZYLTPProgram *program, int id, const QString &name);

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPProgram *m_program;
    int m_id;
    QString m_name;
    QList<std::pair<ZYLMathPoint, double>> m_collisionPoints;
};
