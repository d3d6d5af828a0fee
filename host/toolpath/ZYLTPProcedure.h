// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include <QList>
#include <QObject>
#include <QString>

class ZYLTPProgram;
class ZYLTPResource;

/// A procedure of a tool path program: a named operation of the machine. The kinds are told
/// apart by cast: `ZYLTPRollLayupProcedure` (laying courses) and `ZYLTPInspectionProcedure`
/// (a scan pass). Procedures are owned by their program.
class ZYLTOOLPATH_EXPORT ZYLTPProcedure : public QObject {
    Q_OBJECT
public:
    ~ZYLTPProcedure() override;

    const ZYLTPProgram *GetProgram() const { return m_program; }
    const QString &GetName() const { return m_name; }
    /// Sets the name (any text); records.
    void SetName(const QString &name);
    const QString &GetDescription() const { return m_description; }
    /// Sets the description (any text); records.
    void SetDescription(const QString &description);
    /// Returns the tools the procedure uses, each once, in order of first use.
    virtual QList<const ZYLTPResource *> GetTools() const = 0;
    /// Returns the estimated time of the whole procedure (s).
    virtual double GetTotalTimeEstimate() const = 0;

protected:
    ZYLTPProcedure(ZYLTPProgram *program, const QString &name, const QString &description);

private:
    ZYLTPProgram *m_program;
    QString m_name;
    QString m_description;
};
