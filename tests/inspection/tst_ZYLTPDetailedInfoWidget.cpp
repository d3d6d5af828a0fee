// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The detailed info panel run through the session: three straight courses (feed 600, 2500 and
// 1000 mm/min; tows 1 then 1 and 4, tows 1 and 4, tow 1) linked approach to retract.
#include "ZYLTPPanelTestHost.h"
#include "ZYLTPTestProgram.h"

#include "ZYLCmnUISettings.h"
#include "ZYLSysValue.h"
#include "ZYLTPProgramFile.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

const QByteArray Action = "ZYLTPDetailedInfoCmd.View";
constexpr int LabelRole = Qt::UserRole + 10;

// Answers the next modal dialog: a file dialog with `fileName`, a message box by closing it;
// returns the message box's text. A dialog is answered once it has been seen a few times, so
// that its own event loop runs (an answer given while it is being shown is lost).
QString AnswerNextDialog(const std::function<void()> &open, const QString &fileName = {})
{
    QString text;
    QTimer timer;
    int seen = 0;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || ++seen < 3)
            return;
        seen = 0;
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            text = box->text();
            box->accept();
        } else if (auto *dialog = qobject_cast<QFileDialog *>(modal)) {
            // What the user types; selectFile leaves a focused name field alone.
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(fileName);
            static_cast<QDialog *>(dialog)->accept();
        }
    });
    timer.start(10);
    open();
    return text;
}

// The name the panel and zyltp save under.
QString Completed(const QString &name)
{
    return name.endsWith(QLatin1String(".CSV")) ? name : name + QLatin1String(".csv");
}

QByteArray Read(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

} // namespace

class tst_ZYLTPDetailedInfoWidget : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void tablesOfThreeCourses();
    void visibilityIsKeptAcrossReopening();
    void filter_data();
    void filter();
    void csv_data();
    void csv();
    void unwritableFileWritesNothing();

private:
    QWidget *Panel() const { return m_host.GetPanel(); }
    template<class T> T *Child(const char *name) const { return Panel()->findChild<T *>(QLatin1String(name)); }
    QTableView *View(int table) const;
    QString Cell(int table, int row, int column) const { return View(table)->model()->index(row, column).data().toString(); }
    QString ApplyFilter(int table, const QString &label, int condition, const QString &value);

    QTemporaryDir m_dir;
    QString m_file;
    QByteArray m_saved;
    ZYLTPPanelTestHost m_host;
};

QTableView *tst_ZYLTPDetailedInfoWidget::View(int table) const
{
    static const char *const names[] = {"tableView_operation", "tableView_course", "tableView_layingPoint",
                                        "tableView_linkingMotion"};
    return Child<QTableView>(names[table]);
}

void tst_ZYLTPDetailedInfoWidget::initTestCase()
{
    ZYLTPProgramBuilder builder;
    const ZYLTPRoller *roller = builder.AddRoller(QStringLiteral("Roller 1"), 50.0, 60.0);
    ZYLTPRollLayupProcedure *procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply 1"), {});
    const ZYLTPMachineConfiguration *configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    const QList<const ZYLTPCourse *> courses{
        builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(0.0, 10.0, {{6, 0x1}, {5, 0x9}}, 600.0)),
        builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(50.0, 10.0, {{11, 0x9}}, 2500.0)),
        builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(100.0, 10.0, {{11, 0x1}}, 1000.0))};
    for (qsizetype i = 0; i <= courses.size(); ++i)
        builder.AddLink(procedure, courses.value(i - 1), courses.value(i), ZYLTPCourseLink::Linear);
    m_file = m_dir.filePath(QStringLiteral("three.zyltp.json"));
    QVERIFY(ZYLTPProgramFile::Save(*builder.GetProgram(), m_file).isEmpty());
    QVERIFY2(m_host.Start(this) && m_host.Open(m_file), qPrintable(m_host.GetError()));
    m_saved = m_host.Serialize();
}

void tst_ZYLTPDetailedInfoWidget::init()
{
    QVERIFY(m_host.Trigger(Action));
    QVERIFY(Panel());
}

void tst_ZYLTPDetailedInfoWidget::cleanup()
{
    QVERIFY(m_host.Press(QDialogButtonBox::Close));
    QCOMPARE(m_host.Serialize(), m_saved); // the panel only reads
}

void tst_ZYLTPDetailedInfoWidget::tablesOfThreeCourses()
{
    const QAbstractItemModel *operation = View(0)->model();
    QCOMPARE(operation->rowCount(), 11 + 4);
    QStringList names;
    for (int row = 0; row < operation->rowCount(); ++row)
        names << operation->headerData(row, Qt::Vertical).toString();
    QCOMPARE(names, QStringList({"Approach time", "Comment", "Laying time", "Linking time", "Name",
                                 "Overall course length", "Retract time", "Rollers", "Total course number",
                                 "Total machine time", "Total tow length", "Tow 1 length", "Tow 2 length",
                                 "Tow 3 length", "Tow 4 length"}));
    QCOMPARE(Cell(0, 4, 0), QStringLiteral("Ply 1"));
    QVERIFY(Cell(0, 11, 0).endsWith(QLatin1String(" mm")));
    QVERIFY(Cell(0, 12, 0).isEmpty()); // no course lays tows 2 and 3

    const QAbstractItemModel *courses = View(1)->model();
    QCOMPARE(courses->rowCount(), 3);
    QCOMPARE(courses->columnCount(), 15 + 32);
    QCOMPARE(courses->headerData(2, Qt::Vertical).toString(), QStringLiteral("Course 3"));
    QCOMPARE(courses->headerData(13, Qt::Horizontal, LabelRole).toString(), QStringLiteral("Used tows"));
    QCOMPARE(courses->headerData(46, Qt::Horizontal, LabelRole).toString(), QStringLiteral("Tow 32 length"));
    QCOMPARE(Cell(1, 0, 13), QStringLiteral("1,4"));

    Child<QComboBox>("comboBox_objectType")->setCurrentIndex(2); // first property: an integer
    QCOMPARE(Child<QComboBox>("comboBox_condition")->itemText(0), QStringLiteral("is equal to"));
    const QAbstractItemModel *points = View(2)->model();
    QCOMPARE(points->rowCount(), 3 * 13);
    QCOMPARE(Cell(2, 0, 0) + Cell(2, 13, 0) + Cell(2, 38, 0) + "|" + Cell(2, 38, 1), QStringLiteral("012|12"));
    QCOMPARE(Cell(2, 14, 2), QStringLiteral("2500.0 mm/min"));

    const QAbstractItemModel *links = View(3)->model();
    QCOMPARE(links->rowCount(), 4);
    QCOMPARE(links->headerData(0, Qt::Vertical).toString() + links->headerData(3, Qt::Vertical).toString(),
             QStringLiteral("Link 1Link 4"));
    QCOMPARE(Cell(3, 0, 1) + "/" + Cell(3, 0, 2) + " " + Cell(3, 1, 1) + "/" + Cell(3, 1, 2) + " " + Cell(3, 3, 1)
                 + "/" + Cell(3, 3, 2),
             QStringLiteral("/0 0/1 2/"));
    QCOMPARE(Cell(3, 1, 0), QStringLiteral("LinearModel"));
}

void tst_ZYLTPDetailedInfoWidget::visibilityIsKeptAcrossReopening()
{
    Child<QComboBox>("comboBox_objectType")->setCurrentIndex(1);
    QTableView *view = View(1);
    QTimer::singleShot(50, view, [] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction *action : menu->actions()) {
            if (action->data().toString() == QLatin1String("Used tows"))
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        }
    });
    emit view->customContextMenuRequested(QPoint(5, 5));
    QVERIFY(view->isColumnHidden(13));
    QCOMPARE(ZYLCmnUISettings::GetInstance()->GetValue(Panel(), "CourseTable_Used tows", true), QVariant(false));
    QVERIFY(m_host.Press(QDialogButtonBox::Close));
    QVERIFY(m_host.Trigger(Action));
    QVERIFY(View(1)->isColumnHidden(13));
    QVERIFY(!View(1)->isColumnHidden(12));
    ZYLCmnUISettings::GetInstance()->SetValue(Panel(), "CourseTable_Used tows", true);
}

QString tst_ZYLTPDetailedInfoWidget::ApplyFilter(int table, const QString &label, int condition, const QString &value)
{
    Child<QComboBox>("comboBox_objectType")->setCurrentIndex(table);
    auto *property = Child<QComboBox>("comboBox_property");
    property->setCurrentIndex(property->findData(label, LabelRole));
    auto *conditions = Child<QComboBox>("comboBox_condition");
    conditions->setCurrentIndex(conditions->findData(condition));
    Child<QLineEdit>("lineEdit_value")->setText(value);
    return AnswerNextDialog([this] { Child<QPushButton>("pushButton_applyFilter")->click(); });
}

void tst_ZYLTPDetailedInfoWidget::filter_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("condition");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("feedUnit");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("rows");
    const int mm = ZYLSysValue::MillimeterPerMinute;
    QTest::newRow("no property") << 2 << "" << 4 << "1" << mm << "Please select a property." << 39;
    QTest::newRow("separator") << 2 << "Enabled tows" << -1 << "1" << mm << "Please select a condition." << 39;
    QTest::newRow("no value") << 2 << "Point number" << 4 << "" << mm << "Please input value." << 39;
    QTest::newRow("no number") << 2 << "Point number" << 4 << "abc" << mm << "Please input number value." << 39;
    QTest::newRow("bad quantity") << 2 << "Feed rate" << 6 << "fast" << mm << "Invalid value:Cannot read" << 39;
    QTest::newRow("bad tows") << 2 << "Enabled tows" << 2 << "3-1" << mm << "Invalid value:" << 39;
    QTest::newRow("x12") << 2 << "Point number" << 4 << "x12" << mm << "" << 3;
    QTest::newRow("feed > 2000 mm/min") << 2 << "Feed rate" << 6 << "2000" << mm << "" << 13;
    QTest::newRow("feed > 90 in/min") << 2 << "Feed rate" << 6 << "90" << int(ZYLSysValue::InchPerMinute) << "" << 13;
    QTest::newRow("feed > 90 mm/min") << 2 << "Feed rate" << 6 << "90" << mm << "" << 39;
    QTest::newRow("contains 0") << 2 << "Enabled tows" << 2 << "0" << mm << "" << 6;
    QTest::newRow("not contains 0") << 2 << "Enabled tows" << 3 << "0" << mm << "" << 33;
    QTest::newRow("contains 4") << 2 << "Enabled tows" << 2 << "4" << mm << "" << 16;
    QTest::newRow("equal 1,4") << 1 << "Used tows" << 4 << "1,4" << mm << "" << 2;
    QTest::newRow("text") << 3 << "Off-part motion model" << 2 << "linear" << mm << "" << 2;
    QTest::newRow("tow length") << 1 << "Tow 4 length" << 6 << "60" << mm << "" << 1;
}

void tst_ZYLTPDetailedInfoWidget::filter()
{
    QFETCH(int, table);
    QFETCH(QString, label);
    QFETCH(int, condition);
    QFETCH(QString, value);
    QFETCH(int, feedUnit);
    QFETCH(QString, message);
    QFETCH(int, rows);
    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::FeedRate, ZYLSysValue::Unit(feedUnit));
    const QString shown = ApplyFilter(table, label, condition, value);
    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::FeedRate, ZYLSysValue::MillimeterPerMinute);
    QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.startsWith(message), qPrintable(shown));
    QCOMPARE(View(table)->model()->rowCount(), rows);
    Child<QPushButton>("pushButton_clearFilter")->click();
    const int all[] = {15, 3, 39, 4};
    QCOMPARE(View(table)->model()->rowCount(), all[table]);
}

void tst_ZYLTPDetailedInfoWidget::csv_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<QStringList>("filter");
    QTest::addColumn<int>("sortColumn");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<int>("lines");
    QTest::newRow("operation") << 0 << QStringList() << -1 << "op" << QByteArray("\xEF\xBB\xBF, Value\nApproach time, ") << 16;
    QTest::newRow("course") << 1 << QStringList() << -1 << "c.CSV" << QByteArray("\xEF\xBB\xBF, Roller, ") << 4;
    QTest::newRow("points sorted") << 2 << QStringList() << 2 << "p" << QByteArray("\xEF\xBB\xBF" "Course number, Point number, Feed rate, Enabled tows, Forced tows, Front/Back tilt, Side tilt, Post-processor instructions, Process parameters\n0, 0, 600.0 mm/min, , , 0.000°") << 40;
    QTest::newRow("points filtered") << 2 << QStringList{"Feed rate", "6", "2000"} << -1 << "f" << QByteArray("\xEF\xBB\xBF" "Course number, Point number, Feed rate, Enabled tows, Forced tows, Front/Back tilt, Side tilt, Post-processor instructions, Process parameters\n1, 0, 2500.0 mm/min") << 14;
    QTest::newRow("links") << 3 << QStringList() << -1 << "l" << QByteArray("\xEF\xBB\xBF, Off-part motion model, From course, To course, Length, Linking time\nLink 1, ProcedureLinkModel, , 0, ") << 5;
}

// The panel's file and zyltp's for the same table and filter are the same bytes.
void tst_ZYLTPDetailedInfoWidget::csv()
{
    QFETCH(int, table);
    QFETCH(QStringList, filter);
    QFETCH(int, sortColumn);
    QFETCH(QString, name);
    QFETCH(QByteArray, head);
    QFETCH(int, lines);
    Child<QComboBox>("comboBox_objectType")->setCurrentIndex(table);
    if (!filter.isEmpty())
        QVERIFY(ApplyFilter(table, filter[0], filter[1].toInt(), filter[2]).isEmpty());
    QHeaderView *header = View(table)->horizontalHeader();
    const QPoint onHeader(header->sectionViewportPosition(sortColumn) + header->sectionSize(sortColumn) / 2, 3);
    if (sortColumn >= 0)
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
    QVERIFY(AnswerNextDialog([this] { Child<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Save)->click(); },
                             m_dir.filePath(name)).isEmpty());
    const QByteArray bytes = Read(Completed(m_dir.filePath(name)));
    QVERIFY2(bytes.startsWith(head), bytes.left(300).constData());
    QCOMPARE(bytes.count('\n'), lines);
    if (sortColumn >= 0) {
        QCOMPARE(Cell(table, 13, 0), QStringLiteral("2")); // 600, then 1000, then 2500 mm/min
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, onHeader);
        QVERIFY(!View(table)->selectionModel()->hasSelection()); // sorting selects nothing
        QCOMPARE(Cell(table, 13, 0) + Cell(table, 13, 1), QStringLiteral("10")); // program order again
        return;
    }
    static const char *const tables[] = {"operation", "course", "points", "links"};
    QStringList arguments{"tables", m_file, "--table", tables[table], "-o", m_dir.filePath("cli-" + name)};
    if (!filter.isEmpty())
        arguments << "--filter" << filter;
    QProcess zyltp;
    zyltp.start(QStringLiteral(ZYLTP_EXECUTABLE), arguments);
    QVERIFY(zyltp.waitForFinished(60000));
    QCOMPARE(zyltp.exitCode(), 0);
    QCOMPARE(Read(Completed(m_dir.filePath("cli-" + name))), bytes);
}

void tst_ZYLTPDetailedInfoWidget::unwritableFileWritesNothing()
{
    // Root may write anywhere but here.
    const QString name = QStringLiteral("/proc/report.csv");
    QCOMPARE(AnswerNextDialog([this] { Child<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Save)->click(); },
                              name),
             QStringLiteral("Unable to save to ") + name);
    QVERIFY(!QFile::exists(name));
}

QTEST_MAIN(tst_ZYLTPDetailedInfoWidget)
#include "tst_ZYLTPDetailedInfoWidget.moc"
