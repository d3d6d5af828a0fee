// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The contextual view on the demo ply, driven through the module loaded by the session: the
// rows shown for the object under the mouse, per object type, against the model.
#include "ZYLTPPanelTestHost.h"

#include "ZYLSysValue.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTrajectory.h"
#include "ZYLVisEnvironment.h"

#include <QComboBox>
#include <QRegularExpression>
#include <QTableView>
#include <QTest>

class tst_ZYLTPContextualViewWidget : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void rowsOfTheObjectUnderTheMouse_data();
    void rowsOfTheObjectUnderTheMouse();

private:
    // The table as "label=value" lines.
    QStringList Rows() const {
        const QAbstractItemModel *model = m_host.Find<QTableView>("tableView")->model();
        QStringList rows;
        for (int r = 0; r < model->rowCount(); ++r)
            rows << model->index(r, 0).data().toString() + u'=' + model->index(r, 1).data().toString();
        return rows;
    }

    ZYLTPPanelTestHost m_host;
};

void tst_ZYLTPContextualViewWidget::initTestCase() {
    QVERIFY2(m_host.Start(this), qPrintable(m_host.GetError()));
    QVERIFY2(m_host.OpenDemo(), qPrintable(m_host.GetError()));
}

void tst_ZYLTPContextualViewWidget::rowsOfTheObjectUnderTheMouse_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("course") << 0
                            << QStringList{"Course number", "Roller", "Approach angle", "Roll-in distance",
                                           "Roll-out distance", "Retract distance", "Retract angle", "Laying feedrate",
                                           "Add feedrate", "Cut feedrate", "PP instruction", "Length",
                                           "Layup time estimate", "Used tows"};
    QTest::newRow("laying point") << 1
                                  << QStringList{"Course number", "Point number", "Feed rate", "Enabled tows",
                                                 "Forced tows", "Compaction force", "Front/back rotation",
                                                 "Side/side rotation", "PP instruction", "Process parameters"};
    QTest::newRow("course link") << 2
                                 << QStringList{"Off-part motion", "Course linked from", "Course linked to",
                                                "Length", "Link time estimate"};
}

void tst_ZYLTPContextualViewWidget::rowsOfTheObjectUnderTheMouse() {
    QFETCH(int, type);
    QFETCH(QStringList, labels);
    QVERIFY(m_host.Trigger("ZYLTPContextualViewCmd.View"));
    m_host.Find<QComboBox>("comboBox_ObjectType")->setCurrentIndex(type);
    const QStringList empty = Rows();

    const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(m_host.GetProgram()->GetProcedure(0));
    const ZYLTPCourse *course = layup->GetCourseByIndex(2);
    const ZYLTPOnPartPoint *point = course->GetPoint(course->GetNumPoints() / 2);
    const ZYLTPCourseLink *link = course->GetRetractLink();
    QVERIFY(link && link->GetToCourse());
    QStringList expected;
    if (type == 0) {
        m_host.MoveTo(point->GetTipPoint());
        expected << "Course number=3" << "Length=" + ZYLSysValue(ZYLSysValue::Length, course->GetLength()).ToString();
    } else if (type == 1) {
        m_host.MoveTo(point->GetTipPoint());
        expected << "Course number=3"
                 << QStringLiteral("Point number=%1").arg(point->GetTrajectory()->GetPointIndex(point) + 1);
    } else {
        m_host.MoveTo(link->GetPoint(link->GetNumPoints() / 2)->GetTipPoint());
        expected << "Course linked from=course.2"
                 << QStringLiteral("Course linked to=course.%1").arg(layup->GetCourseIndex(link->GetToCourse()));
    }
    const QStringList shown = Rows();
    QCOMPARE(QStringList(shown).replaceInStrings(QRegularExpression("=.*"), QString()), labels);
    for (const QString &row : expected)
        QVERIFY2(shown.contains(row), qPrintable(row + " not in " + shown.join(u'|')));
    // Before anything was under the mouse, the labels stood alone; leaving keeps the values.
    QVERIFY(empty.filter(QRegularExpression("=.+")).isEmpty());
    m_host.GetScene()->MouseLeave();
    QCOMPARE(Rows(), shown);

    QVERIFY(m_host.Press(QDialogButtonBox::Close));
    QVERIFY(!m_host.GetScene()->GetSelectionFilter());
    QCOMPARE(int(m_host.GetScene()->GetMouseInteraction()), 0);
}

QTEST_MAIN(tst_ZYLTPContextualViewWidget)
#include "tst_ZYLTPContextualViewWidget.moc"
