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

using Link = const ZYLTPCourseLink *;

class tst_ZYLTPEditLinks : public ZYLTPLinkPanelTest {
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY2(Start(), qPrintable(m_host->GetError())); }
    void init() { QVERIFY(Run("ZYLTPEditLinksCmd.Edit")); }
    void cleanup() { QVERIFY(CancelGivesProgramBack()); }

    void listsCourseLinksInLayingOrder() {
        const auto links = Links([](ZYLTPCourseLink *) { return true; });
        QVERIFY(links.size() > 2);
        QCOMPARE(List()->model()->rowCount(), links.size());
        for (const auto &[row, link] : links) {
            QCOMPARE(List()->model()->index(row, 0).data().toString(), QStringLiteral("Link.%1").arg(row + 1));
            QCOMPARE(Row<Link>(row), link);
        }
        // Picking a link in the 3-D view selects its row.
        m_host->ClickAt(links[1].second->GetPoint(3)->GetTipPoint(), 0.5);
        QCOMPARE(List()->selectionModel()->selectedRows(), QModelIndexList{List()->model()->index(1, 0)});
    }

    void motionModelReplacesSelectedLinks_data() {
        QTest::addColumn<int>("strategy");
        QTest::newRow("safety plane") << int(ZYLTPCourseLink::SafetyPlane);
        QTest::newRow("custom") << int(ZYLTPCourseLink::Custom);
    }
    void motionModelReplacesSelectedLinks() {
        QFETCH(int, strategy);
        const auto straight = LinksOf<ZYLTPLinearCourseLink>().mid(0, 2);
        Select({straight[0].first, straight[1].first});
        auto *model = m_host->Find<QComboBox>("comboBox_OffPartMotionModel");
        model->setCurrentIndex(model->findData(strategy));
        for (const auto &[row, old] : straight) {
            QCOMPARE(List()->model()->index(row, 0).data().toString(), QStringLiteral("Link.%1").arg(row + 1));
            QCOMPARE(int(Row<Link>(row)->GetStrategy()), strategy);
            QCOMPARE(Row<Link>(row)->GetFromCourse(), old->GetFromCourse());
            QVERIFY(List()->selectionModel()->isRowSelected(row));
        }
        // New custom links follow no model: the blank entry shows.
        QCOMPARE(model->currentIndex(),
                 strategy == ZYLTPCourseLink::Custom ? model->findText(QString()) : model->findData(strategy));
        QVERIFY(m_host->Press(QDialogButtonBox::Ok));
        QVERIFY(m_host->Serialize() != m_saved);
        m_host->GetContainer()->Undo();
    }

    void blankModelFollowsCustomLinks() {
        const auto custom = LinksOf<ZYLTPCustomCourseLink>();
        auto *model = m_host->Find<QComboBox>("comboBox_OffPartMotionModel");
        const int models = model->count();
        Select({custom[0].first});
        QCOMPARE(model->count(), models + 1);
        QCOMPARE(model->currentText(), QString());
        Select({LinksOf<ZYLTPLinearCourseLink>()[0].first});
        QCOMPARE(model->count(), models);
        QCOMPARE(model->currentData().toInt(), int(ZYLTPCourseLink::Linear));

        // A new model for a custom link warns that its shape goes, and replaces it; Cancel
        // (in cleanup) must not read the new link that the rollback deletes.
        Select({custom[0].first});
        QCOMPARE(ZYLTPPanelTestHost::AnswerMessageBoxes(
                     [model] { model->setCurrentIndex(model->findData(int(ZYLTPCourseLink::SafetyPlane))); }),
                 QStringList{"The changes on the custom links will be discard."});
        QVERIFY(qobject_cast<const ZYLTPSafetyPlaneCourseLink *>(Row<Link>(custom[0].first)));
        QCOMPARE(model->count(), models);
    }

    void refusesRapidDistanceOfZero() {
        const auto straight = LinksOf<ZYLTPLinearCourseLink>().mid(0, 2);
        Select({straight[0].first, straight[1].first});
        auto *approach = m_host->Find<QDoubleSpinBox>("doubleSpinBox_RapidApproachDis");
        auto *retract = m_host->Find<QDoubleSpinBox>("doubleSpinBox_RapidRetractDis");
        const auto *last = static_cast<const ZYLTPLinearCourseLink *>(straight[1].second);
        const double before = last->GetRapidApproach();
        QCOMPARE(approach->value(), before);
        approach->setValue(0.0);
        const QString warning =
            ZYLTPPanelTestHost::AnswerMessageBoxes([approach] { emit approach->editingFinished(); }).join('\n');
        QVERIFY2(warning.contains(QStringLiteral("is restored")), qPrintable(warning));
        QCOMPARE(approach->value(), before);
        // A valid distance goes to every selected straight link, the other one stays.
        retract->setValue(42.0);
        emit retract->editingFinished();
        for (const auto &[row, link] : straight) {
            QCOMPARE(static_cast<const ZYLTPLinearCourseLink *>(link)->GetRapidRetract(), 42.0);
            QCOMPARE(static_cast<const ZYLTPLinearCourseLink *>(link)->GetRapidApproach(), before);
        }
    }

    void pointDetailOnlyOnOk_data() {
        QTest::addColumn<bool>("ok");
        QTest::newRow("cancel") << false;
        QTest::newRow("ok") << true;
    }
    void pointDetailOnlyOnOk() {
        QFETCH(bool, ok);
        const auto links =
            Links([](ZYLTPCourseLink *link) { return link->GetPointsDetail() != ZYLTPCourseLink::Fine; });
        Select({links[0].first, links[1].first});
        auto *detail = m_host->Find<QComboBox>("comboBox_OffPartPtsDetails");
        detail->setCurrentIndex(detail->findData(int(ZYLTPCourseLink::Fine)));
        QVERIFY(links[0].second->GetPointsDetail() != ZYLTPCourseLink::Fine);
        QVERIFY(m_host->Press(ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
        for (int i = 0; i < 3; ++i)
            QCOMPARE(links[i].second->GetPointsDetail() == ZYLTPCourseLink::Fine, ok && i < 2);
        if (ok)
            m_host->GetContainer()->Undo();
    }
};

QTEST_MAIN(tst_ZYLTPEditLinks)
#include "tst_ZYLTPEditLinks.moc"
