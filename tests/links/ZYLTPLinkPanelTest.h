// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once
// What the tests of the two link panels share: the demo's links by kind, and the text of the
// next message box, which is closed as soon as it shows.

#include "ZYLTPPanelTestHost.h"

#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <functional>

inline ZYLTPRollLayupProcedure *FirstLayup(const ZYLTPPanelTestHost &host) {
    ZYLTPProgram *program = host.GetProgram();
    for (int p = 0; program && p < program->GetNumProcedures(); ++p)
        if (auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(p)))
            return procedure;
    return nullptr;
}

/// Returns the course-to-course links of the first roll layup procedure that `accept`
/// takes, in laying order, with their positions among the course-to-course links.
inline QList<std::pair<int, ZYLTPCourseLink *>> CourseLinks(const ZYLTPPanelTestHost &host,
                                                           const std::function<bool(ZYLTPCourseLink *)> &accept) {
    QList<std::pair<int, ZYLTPCourseLink *>> found;
    ZYLTPRollLayupProcedure *procedure = FirstLayup(host);
    int row = 0;
    for (int p = 0; procedure && p < procedure->GetNumLinks(); ++p) {
        ZYLTPCourseLink *link = procedure->GetLinkByPosition(p);
        if (!link->GetFromCourse() || !link->GetToCourse())
            continue;
        if (accept(link))
            found.append({row, link});
        ++row;
    }
    return found;
}

/// Closes the next message box that shows with Ok and keeps its text in `text`.
inline void CloseNextMessageBox(QString *text) {
    QTimer::singleShot(0, qApp, [text] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            *text = box->text();
            box->accept();
        }
    });
}
