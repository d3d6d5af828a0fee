// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The course panel on the demo ply, driven through the module loaded by the session: actions
// and buttons by object name, picks through the scene's mouse entry points, OK and Cancel.
#include "ZYLTPPanelTestHost.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPCourse.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLFeatContainer.h"

#include <QAbstractButton>
#include <QAction>
#include <QDoubleSpinBox>
#include <QListView>
#include <QTest>

#include <functional>

class tst_ZYLTPEditCourse : public QObject {
    Q_OBJECT

    ZYLTPPanelTestHost m_host;
    QWidget *m_panel = nullptr;

    ZYLTPRollLayupProcedure *Procedure() const {
        return qobject_cast<ZYLTPRollLayupProcedure *>(m_host.GetProgram()->GetProcedure(0));
    }
    QListView *List() const { return m_host.Find<QListView>("listViewCourses"); }
    // Clicks the middle laying point of the course straight from above.
    void Pick(const ZYLTPCourse *course) {
        m_host.ClickAt(course->GetPoint(course->GetNumPoints() / 2)->GetTipPoint());
    }

private slots:
    void initTestCase() {
        QVERIFY2(m_host.Start(this) && m_host.OpenDemo(), qPrintable(m_host.GetError()));
    }
    void init() {
        QVERIFY(m_host.Trigger("ZYLTPEditCourseCmd.Edit"));
        m_panel = m_host.GetPanel();
        QVERIFY(m_panel);
    }
    void cleanup() {
        if (m_host.GetPanel())
            QVERIFY(m_host.Press(QDialogButtonBox::Cancel));
    }

    void upDown_data() {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QList<int>>("fromPositions"); // the former positions, in new order
        QTest::addColumn<QList<int>>("selectedAfter");
        QTest::newRow("block up") << QList<int>{1, 2} << true << QList<int>{1, 2, 0, 3, 4} << QList<int>{0, 1};
        QTest::newRow("top blocks") << QList<int>{0, 3} << true << QList<int>{0, 1, 2, 3, 4} << QList<int>{0, 3};
        QTest::newRow("apart down") << QList<int>{0, 2} << false << QList<int>{1, 0, 3, 2, 4} << QList<int>{1, 3};
        QTest::newRow("bottom blocks") << QList<int>{35} << false << QList<int>{0, 1, 2, 3, 4} << QList<int>{35};
    }
    void upDown() {
        QFETCH(QList<int>, rows);
        QFETCH(bool, up);
        QFETCH(QList<int>, fromPositions);
        QFETCH(QList<int>, selectedAfter);
        const QList<int> before = Procedure()->GetLayingOrder();
        QCOMPARE(before.size(), 36);
        m_host.Select(List(), rows);
        m_host.Find<QAbstractButton>(up ? "buttonUp" : "buttonDown")->click();
        const QList<int> after = Procedure()->GetLayingOrder();
        for (int p = 0; p < fromPositions.size(); ++p)
            QCOMPARE(after[p], before[fromPositions[p]]);
        QCOMPARE(after.mid(5), before.mid(5));
        for (int p = 0; p < after.size(); ++p)
            QCOMPARE(List()->model()->index(p, 0).data().toString(), QStringLiteral("Course.%1").arg(after[p] + 1));
        QCOMPARE(m_host.SelectedRows(List()), selectedAfter);
    }

    void sections_data() {
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("detailed");
        QTest::addColumn<bool>("expanded");
        QTest::addColumn<QStringList>("shown");
        const QStringList select{"Button_ApproachRetract", "Button_Feedrate", "ButtonOrder", "frame_ApproachRetract",
                                 "frame_FeedRate", "frame_Order", "groupBox_order", "listViewCourses", "scrollArea"};
        QTest::newRow("select") << QString() << true << true << select;
        QTest::newRow("select collapsed") << QString() << true << false
                                          << QStringList{"Button_ApproachRetract", "Button_Feedrate", "ButtonOrder", "scrollArea"};
        QTest::newRow("reverse") << "actionReverse" << true << true
                                 << QStringList{"ButtonOrder", "frame_Order", "groupBox_reverse", "listViewCourses", "scrollArea"};
        QTest::newRow("break") << "actionBreak" << true << true
                               << QStringList{"ButtonOrder", "frame_Order", "groupBox_break", "listViewBreakRanges", "scrollArea"};
        QTest::newRow("delete collapsed") << "actionDelete" << true << false
                                          << QStringList{"ButtonOrder", "frame_Order", "scrollArea"};
        QTest::newRow("link mode") << "actionEdit_mode" << true << true << QStringList{};
        QTest::newRow("mini toolbar") << "actionReverse" << false << true << QStringList{};
    }
    void sections() {
        QFETCH(QString, action);
        QFETCH(bool, detailed);
        QFETCH(bool, expanded);
        QFETCH(QStringList, shown);
        if (!action.isEmpty())
            m_host.Find<QAction>(qPrintable(action))->setChecked(true);
        m_host.Find<QAction>("actionMini_toolbar_mode")->setChecked(detailed);
        if (detailed)
            m_host.Find<QAction>("actionExpandCollapseALL")->setChecked(expanded);
        QStringList visible;
        for (const char *name : {"Button_ApproachRetract", "Button_Feedrate", "Button_Process", "ButtonOrder",
                                 "frame_ApproachRetract", "frame_FeedRate", "frame_Order", "frame_Process", "groupBox_break",
                                 "groupBox_order", "groupBox_reverse", "listViewBreakRanges", "listViewCourses", "scrollArea"})
            if (m_host.Find(name)->isVisibleTo(m_panel))
                visible << QLatin1String(name);
        QCOMPARE(visible, shown);
    }

    // Unlink all, relink every course in laying order with ChainLink, accept: the action and
    // OK states follow, and OK then Undo gives the saved bytes back.
    void relinkChain() {
        const QByteArray saved = m_host.Serialize();
        const QList<int> order = Procedure()->GetLayingOrder();
        m_host.Find<QAction>("actionEdit_mode")->setChecked(true);
        QVERIFY(m_host.Find<QAction>("actionUnlink")->isChecked());
        m_host.Find<QAction>("actionUnlinkAll")->trigger();
        QCOMPARE(Procedure()->GetNumLinks(), 0);
        const auto states = [this] {
            QList<bool> enabled;
            for (const char *name : {"actionLink", "actionChainLink", "actionAcceptLinks", "actionEdit_mode"})
                enabled << m_host.Find<QAction>(name)->isEnabled();
            return enabled << m_host.GetButton(QDialogButtonBox::Ok)->isEnabled();
        };
        QCOMPARE(states(), (QList<bool>{true, true, false, false, false}));
        m_host.Find<QAction>("actionChainLink")->setChecked(true);
        for (int index : order)
            Pick(Procedure()->GetCourseByIndex(index));
        QCOMPARE(Procedure()->GetCoursesUnlinkedAtApproach().size(), 1);
        QCOMPARE(Procedure()->GetCoursesUnlinkedAtRetract().size(), 1);
        QCOMPARE(Procedure()->GetLayingOrder(), order);
        m_host.Find<QAction>("actionAcceptLinks")->trigger();
        QVERIFY(Procedure()->GetApproachLink() && Procedure()->GetRetractLink());
        QCOMPARE(states(), (QList<bool>{false, false, true, true, true}));
        QVERIFY(m_host.Press(QDialogButtonBox::Ok));
        QVERIFY(m_host.Serialize() != saved);
        m_host.GetContainer()->Undo();
        QCOMPARE(m_host.Serialize(), saved);
    }

    // Accepting while several courses have no link in refuses with a message and links nothing.
    void acceptRefusesOpenChains() {
        m_host.Find<QAction>("actionEdit_mode")->setChecked(true);
        m_host.Find<QAction>("actionUnlinkAll")->trigger();
        m_host.Find<QAction>("actionAcceptLinks")->setEnabled(true);
        const QStringList shown =
            ZYLTPPanelTestHost::AnswerMessageBoxes([this] { m_host.Find<QAction>("actionAcceptLinks")->trigger(); });
        QCOMPARE(shown.size(), 1);
        QCOMPARE(Procedure()->GetNumLinks(), 0);
        QVERIFY(!m_host.GetButton(QDialogButtonBox::Ok)->isEnabled());
    }

    void fieldWrites_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("reset");
        QTest::addColumn<int>("messages");
        QTest::newRow("laying rate") << "doubleSpinBoxLayingFeedRate" << 4321.0 << QString() << 0;
        QTest::newRow("adding rate reset") << "doubleSpinBoxAddingFeedRate" << 1234.0 << "pushButton_ResetAddingFeedRate" << 0;
        QTest::newRow("refused angle") << "doubleSpinBoxApproachAngle" << 2.0 << QString() << 1;
    }
    void fieldWrites() {
        QFETCH(QString, field);
        QFETCH(double, value);
        QFETCH(QString, reset);
        QFETCH(int, messages);
        const QHash<QString, std::function<double(const ZYLTPCourse *)>> read{
            {"doubleSpinBoxLayingFeedRate", [](const ZYLTPCourse *c) { return c->GetLayingFeedRate(); }},
            {"doubleSpinBoxAddingFeedRate", [](const ZYLTPCourse *c) { return c->GetAddFeedRate(); }},
            {"doubleSpinBoxApproachAngle", [](const ZYLTPCourse *c) { return c->GetApproachTrajectory()->GetAngle(); }}};
        const auto values = [&] {
            QList<double> list;
            for (int p = 0; p < 5; ++p)
                list << read[field](Procedure()->GetCourseByPosition(p));
            return list;
        };
        QList<double> expected = values();
        m_host.Select(List(), {1, 2, 3});
        const QStringList shown = ZYLTPPanelTestHost::AnswerMessageBoxes([&] {
            m_host.Find<QDoubleSpinBox>(qPrintable(field))->setValue(value);
            if (!reset.isEmpty()) {
                m_host.Find<QAbstractButton>(qPrintable(reset))->click();
                value = Procedure()->GetAddingFeedrate();
            }
        });
        QCOMPARE(shown.size(), messages);
        if (!messages)
            expected[1] = expected[2] = expected[3] = value;
        QCOMPARE(values(), expected);
    }

    void pickInMode_data() {
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("removed");
        QTest::addColumn<bool>("reversed");
        QTest::addColumn<bool>("viaList"); // row 2, then row 3 chosen in the list
        QTest::addColumn<QList<int>>("selectedAfter");
        QTest::newRow("select adds") << QString() << 0 << false << false << QList<int>{0, 3};
        QTest::newRow("reverse") << "actionReverse" << 0 << true << false << QList<int>{3};
        QTest::newRow("reverse from list") << "actionReverse" << 0 << true << true << QList<int>{3};
        QTest::newRow("delete") << "actionDelete" << 1 << false << false << QList<int>{};
    }
    void pickInMode() {
        QFETCH(QString, action);
        QFETCH(int, removed);
        QFETCH(bool, reversed);
        QFETCH(bool, viaList);
        QFETCH(QList<int>, selectedAfter);
        const ZYLTPCourse *course = Procedure()->GetCourseByPosition(3);
        const ZYLMathPoint first = course->GetPoint(0)->GetTipPoint();
        const ZYLMathPoint last = course->GetPoint(course->GetNumPoints() - 1)->GetTipPoint();
        const int courses = Procedure()->GetNumCourses();
        if (!action.isEmpty())
            m_host.Find<QAction>(qPrintable(action))->setChecked(true);
        if (viaList)
            m_host.Select(List(), {2, 3}, QItemSelectionModel::ClearAndSelect);
        else
            Pick(course);
        QCOMPARE(Procedure()->GetNumCourses(), courses - removed);
        QCOMPARE(List()->model()->rowCount(), courses - removed);
        if (!removed)
            QVERIFY((course->GetPoint(0)->GetTipPoint() - (reversed ? last : first)).GetLength() < 1e-6);
        QCOMPARE(m_host.SelectedRows(List()), selectedAfter);
    }

    // Break all makes ranges, listed at once; choosing one breaks its course there.
    void breakRanges() {
        m_host.Find<QAction>("actionBreak")->setChecked(true);
        m_host.Find<QDoubleSpinBox>("doubleSpinBoxBreakLength")->setValue(500.0);
        m_host.Find<QAbstractButton>("buttonBreakAllCourses")->click();
        int ranges = 0;
        for (int c = 0; c < Procedure()->GetNumCourses(); ++c)
            ranges += Procedure()->GetCourseByIndex(c)->GetNumBreakRanges();
        auto *list = m_host.Find<QListView>("listViewBreakRanges");
        QVERIFY(ranges > 0);
        QCOMPARE(list->model()->rowCount(), ranges);
        const int courses = Procedure()->GetNumCourses();
        list->selectionModel()->select(list->model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
        QCOMPARE(Procedure()->GetNumCourses(), courses + 1);
        QCOMPARE(list->model()->rowCount(), ranges - 1);
    }

    void endings_data() {
        QTest::addColumn<bool>("accept");
        QTest::newRow("cancel") << false;
        QTest::newRow("ok then undo") << true;
    }
    void endings() {
        QFETCH(bool, accept);
        const QByteArray saved = m_host.Serialize();
        m_host.Find<QAbstractButton>("buttonReverseAllCoursesOrder")->click();
        m_host.Select(List(), {4});
        m_host.Find<QDoubleSpinBox>("doubleSpinBoxRollOutDistance")->setValue(33.0);
        QVERIFY(m_host.Serialize() != saved);
        QVERIFY(m_host.Press(accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
        if (accept)
            m_host.GetContainer()->Undo();
        QCOMPARE(m_host.Serialize(), saved);
    }

    // Last, as it leaves another program open: the panel works on a ply of one course (which
    // it never deletes), on a program without procedures, and does not reorder a program that
    // holds a procedure of another kind.
    void degeneratePrograms_data() {
        QTest::addColumn<int>("courses"); // of a demo ply; -1: a program without procedures
        QTest::addColumn<bool>("inspection");
        QTest::newRow("one course") << 1 << false;
        QTest::newRow("no procedure") << -1 << false;
        QTest::newRow("with an inspection") << 3 << true;
    }
    void degeneratePrograms() {
        QFETCH(int, courses);
        QFETCH(bool, inspection);
        QVERIFY(m_host.Press(QDialogButtonBox::Cancel));
        ZYLTPDemoGenerator::Parameters parameters;
        parameters.courses = std::max(courses, 1);
        parameters.inspection = inspection;
        ZYLTPProgramBuilder builder;
        const ZYLGeoRef<ZYLTPProgram> program(courses > 0 ? ZYLTPDemoGenerator::Create(parameters)
                                                          : ZYLGeoRef<ZYLTPProgram>(builder.TakeProgram()));
        QVERIFY2(m_host.Open(*program), qPrintable(m_host.GetError()));
        init();
        const QByteArray saved = m_host.Serialize();
        QCOMPARE(List()->model()->rowCount(), std::max(courses, 0));
        m_host.Find<QAction>("actionDelete")->setChecked(true);
        if (courses == 1)
            Pick(Procedure()->GetCourseByIndex(0));
        m_host.Find<QAction>("actionDelete")->setChecked(false);
        m_host.Select(List(), {std::max(courses, 1) - 1});
        m_host.Find<QAbstractButton>("buttonUp")->click();
        m_host.Find<QAction>("actionEdit_mode")->setChecked(true);
        m_host.Find<QAction>("actionAcceptLinks")->trigger();
        QCOMPARE(m_host.Serialize(), saved);
    }
};

QTEST_MAIN(tst_ZYLTPEditCourse)
#include "tst_ZYLTPEditCourse.moc"
