// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once
// What the tests of the two link panels share: one host for the whole run, the demo opened
// and a command started before each test, Cancel after it (which must give back the program
// as it was), the panel's controls and list rows, and the demo's links by kind.

#include "ZYLTPPanelTestHost.h"

#include "ZYLTPCourseLink.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include <QListView>
#include <QtTest>

#include <functional>

class ZYLTPLinkPanelTest : public QObject {
protected:
    bool Start() {
        m_host = std::make_unique<ZYLTPPanelTestHost>();
        return m_host->Start(this);
    }
    bool Run(const QByteArray &action) {
        if (!m_host->OpenDemo())
            return false;
        m_saved = m_host->Serialize();
        return m_host->Trigger(action);
    }
    bool CancelGivesProgramBack() {
        m_host->Press(QDialogButtonBox::Cancel);
        return m_host->Serialize() == m_saved;
    }
    QListView *List() const { return m_host->Find<QListView>("listView_Sel"); }
    template<class T> T Row(int row) const { return List()->model()->index(row, 0).data(Qt::UserRole).value<T>(); }
    void Select(const QList<int> &rows) const { m_host->Select(List(), rows); }
    // The course-to-course links of the demo that `accept` takes, in laying order, with their
    // list rows.
    QList<std::pair<int, ZYLTPCourseLink *>> Links(const std::function<bool(ZYLTPCourseLink *)> &accept) const {
        QList<std::pair<int, ZYLTPCourseLink *>> found;
        const auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(m_host->GetProgram()->GetProcedure(0));
        for (int p = 0, row = 0; procedure && p < procedure->GetNumLinks(); ++p) {
            ZYLTPCourseLink *link = procedure->GetLinkByPosition(p);
            if (!link->GetFromCourse() || !link->GetToCourse())
                continue;
            if (accept(link))
                found.append({row, link});
            ++row;
        }
        return found;
    }
    template<class Kind> QList<std::pair<int, ZYLTPCourseLink *>> LinksOf() const {
        return Links([](ZYLTPCourseLink *link) { return qobject_cast<Kind *>(link) != nullptr; });
    }

    std::unique_ptr<ZYLTPPanelTestHost> m_host;
    QByteArray m_saved;
};
