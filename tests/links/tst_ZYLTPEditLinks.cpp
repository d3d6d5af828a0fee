// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The links panel on the demo ply: its list, the motion model, the rapid distances and the
// point detail, with OK, Cancel and Undo.
#include "ZYLTPLinkPanelTest.h"

#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPSafetyPlaneCourseLink.h"

#include "ZYLFeatContainer.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QListView>
#include <QtTest>

class tst_ZYLTPEditLinks : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void listsCourseLinksInLayingOrder();
    void motionModelReplacesSelectedLinks_data();
    void motionModelReplacesSelectedLinks();
    void blankModelFollowsCustomLinks();
    void refusesRapidDistanceOfZero();
    void pointDetailOnlyOnOk_data();
    void pointDetailOnlyOnOk();

private:
    QListView *List() const { return m_host->GetPanel()->findChild<QListView *>(QStringLiteral("listView_Sel")); }
    QComboBox *Combo(const char *name) const { return m_host->GetPanel()->findChild<QComboBox *>(QLatin1String(name)); }
    const ZYLTPCourseLink *RowLink(int row) const {
        return List()->model()->index(row, 0).data(Qt::UserRole).value<const ZYLTPCourseLink *>();
    }
    void Select(const QList<std::pair<int, ZYLTPCourseLink *>> &rows) {
        for (const auto &[row, link] : rows)
            List()->selectionModel()->select(List()->model()->index(row, 0), QItemSelectionModel::Select);
    }
    std::unique_ptr<ZYLTPPanelTestHost> m_host;
    QByteArray m_saved;
};

void tst_ZYLTPEditLinks::initTestCase() {
    m_host = std::make_unique<ZYLTPPanelTestHost>();
    QVERIFY2(m_host->Start(this), qPrintable(m_host->GetError()));
}

void tst_ZYLTPEditLinks::init() {
    QVERIFY2(m_host->OpenDemo(), qPrintable(m_host->GetError()));
    m_saved = m_host->Serialize();
    QVERIFY(m_host->Trigger("ZYLTPEditLinksCmd.Edit"));
    QVERIFY(List());
}

void tst_ZYLTPEditLinks::cleanup() {
    m_host->Press(QDialogButtonBox::Cancel);
}

void tst_ZYLTPEditLinks::listsCourseLinksInLayingOrder() {
    const auto links = CourseLinks(*m_host, [](ZYLTPCourseLink *) { return true; });
    QVERIFY(links.size() > 2);
    QCOMPARE(List()->model()->rowCount(), links.size());
    for (const auto &[row, link] : links) {
        QCOMPARE(List()->model()->index(row, 0).data().toString(), QStringLiteral("Link.%1").arg(row + 1));
        QCOMPARE(RowLink(row), link);
    }
    // Picking a link in the 3-D view selects its row.
    const ZYLTPCourseLink *picked = links.at(1).second;
    m_host->ClickAt(picked->GetPoint(picked->GetNumPoints() / 2)->GetTipPoint(), 0.5);
    const QModelIndexList rows = List()->selectionModel()->selectedRows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().row(), 1);
}

void tst_ZYLTPEditLinks::motionModelReplacesSelectedLinks_data() {
    QTest::addColumn<int>("strategy");
    QTest::addColumn<int>("replaced");
    QTest::newRow("safety plane over straight links") << int(ZYLTPCourseLink::SafetyPlane) << 2;
    QTest::newRow("custom over straight links") << int(ZYLTPCourseLink::Custom) << 2;
}

void tst_ZYLTPEditLinks::motionModelReplacesSelectedLinks() {
    QFETCH(int, strategy);
    QFETCH(int, replaced);
    const auto straight = CourseLinks(*m_host, [](ZYLTPCourseLink *link) {
                              return qobject_cast<ZYLTPLinearCourseLink *>(link) != nullptr;
                          }).mid(0, 2);
    QCOMPARE(straight.size(), 2);
    Select(straight);
    QComboBox *model = Combo("comboBox_OffPartMotionModel");
    model->setCurrentIndex(model->findData(strategy));

    for (const auto &[row, old] : straight) {
        const ZYLTPCourseLink *now = RowLink(row);
        QCOMPARE(List()->model()->index(row, 0).data().toString(), QStringLiteral("Link.%1").arg(row + 1));
        QCOMPARE(now != old, replaced > 0);
        QCOMPARE(int(now->GetStrategy()), strategy);
        QCOMPARE(now->GetFromCourse(), old->GetFromCourse());
        QVERIFY(List()->selectionModel()->isRowSelected(row));
    }
    // New custom links follow no model: the blank entry shows.
    QCOMPARE(model->currentIndex(),
             strategy == ZYLTPCourseLink::Custom ? model->findText(QString()) : model->findData(strategy));
    QVERIFY(m_host->Press(QDialogButtonBox::Ok));
    QCOMPARE(m_host->Serialize() == m_saved, replaced == 0);
    if (replaced) {
        m_host->GetContainer()->Undo();
        QCOMPARE(m_host->Serialize(), m_saved);
    }
}

void tst_ZYLTPEditLinks::blankModelFollowsCustomLinks() {
    const auto custom = CourseLinks(*m_host, [](ZYLTPCourseLink *link) {
        return qobject_cast<ZYLTPCustomCourseLink *>(link) != nullptr;
    });
    const auto straight = CourseLinks(*m_host, [](ZYLTPCourseLink *link) {
        return qobject_cast<ZYLTPLinearCourseLink *>(link) != nullptr;
    });
    QVERIFY(!custom.isEmpty() && !straight.isEmpty());
    QComboBox *model = Combo("comboBox_OffPartMotionModel");
    const int models = model->count();
    Select(custom.mid(0, 1));
    QCOMPARE(model->count(), models + 1);
    QCOMPARE(model->currentText(), QString());
    List()->selectionModel()->clearSelection();
    Select(straight.mid(0, 1));
    QCOMPARE(model->count(), models);
    QCOMPARE(model->currentData().toInt(), int(ZYLTPCourseLink::Linear));

    // A new model for a custom link warns that its shape goes, and replaces it.
    List()->selectionModel()->clearSelection();
    Select(custom.mid(0, 1));
    QString warning;
    CloseNextMessageBox(&warning);
    model->setCurrentIndex(model->findData(int(ZYLTPCourseLink::SafetyPlane)));
    QCOMPARE(warning, QStringLiteral("The changes on the custom links will be discard."));
    QVERIFY(qobject_cast<const ZYLTPSafetyPlaneCourseLink *>(RowLink(custom.first().first)));
    QCOMPARE(model->count(), models);
    // Cancel gives every link back, and nothing reads the links the rollback deleted.
    QVERIFY(m_host->Press(QDialogButtonBox::Cancel));
    QCOMPARE(m_host->Serialize(), m_saved);
}

void tst_ZYLTPEditLinks::refusesRapidDistanceOfZero() {
    const auto straight = CourseLinks(*m_host, [](ZYLTPCourseLink *link) {
                              return qobject_cast<ZYLTPLinearCourseLink *>(link) != nullptr;
                          }).mid(0, 2);
    Select(straight);
    auto *approach = m_host->GetPanel()->findChild<QDoubleSpinBox *>(QStringLiteral("doubleSpinBox_RapidApproachDis"));
    auto *retract = m_host->GetPanel()->findChild<QDoubleSpinBox *>(QStringLiteral("doubleSpinBox_RapidRetractDis"));
    const auto *last = static_cast<const ZYLTPLinearCourseLink *>(straight.last().second);
    const double before = last->GetRapidApproach();
    QCOMPARE(approach->value(), before);

    QString warning;
    CloseNextMessageBox(&warning);
    approach->setValue(0.0);
    emit approach->editingFinished();
    QVERIFY2(warning.startsWith(QStringLiteral("Value ")) && warning.contains(QStringLiteral("is restored")),
             qPrintable(warning));
    QCOMPARE(approach->value(), before);
    QCOMPARE(last->GetRapidApproach(), before);

    // A valid distance goes to every selected straight link.
    retract->setValue(42.0);
    emit retract->editingFinished();
    for (const auto &[row, link] : straight) {
        QCOMPARE(static_cast<const ZYLTPLinearCourseLink *>(link)->GetRapidRetract(), 42.0);
        QCOMPARE(static_cast<const ZYLTPLinearCourseLink *>(link)->GetRapidApproach(), before);
    }
}

void tst_ZYLTPEditLinks::pointDetailOnlyOnOk_data() {
    QTest::addColumn<int>("button");
    QTest::newRow("cancel") << int(QDialogButtonBox::Cancel);
    QTest::newRow("ok") << int(QDialogButtonBox::Ok);
}

void tst_ZYLTPEditLinks::pointDetailOnlyOnOk() {
    QFETCH(int, button);
    const auto links = CourseLinks(*m_host, [](ZYLTPCourseLink *link) {
                           return link->GetPointsDetail() != ZYLTPCourseLink::Fine;
                       }).mid(0, 3);
    Select(links.mid(0, 2));
    QComboBox *detail = Combo("comboBox_OffPartPtsDetails");
    detail->setCurrentIndex(detail->findData(int(ZYLTPCourseLink::Fine)));
    QVERIFY(links.at(0).second->GetPointsDetail() != ZYLTPCourseLink::Fine);
    QVERIFY(m_host->Press(QDialogButtonBox::StandardButton(button)));
    const bool ok = button == QDialogButtonBox::Ok;
    QCOMPARE(links.at(0).second->GetPointsDetail() == ZYLTPCourseLink::Fine, ok);
    QCOMPARE(links.at(1).second->GetPointsDetail() == ZYLTPCourseLink::Fine, ok);
    QVERIFY(links.at(2).second->GetPointsDetail() != ZYLTPCourseLink::Fine);
    if (ok)
        m_host->GetContainer()->Undo();
    QCOMPARE(m_host->Serialize(), m_saved);
}

QTEST_MAIN(tst_ZYLTPEditLinks)
#include "tst_ZYLTPEditLinks.moc"
