// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Opens the detailed info panel on a demo program (500 courses x 2000 points by default) in a
// session started as the studio starts it, then times what a user does with the laying points
// table: filters, sorts, scrolls and saves it as CSV. Prints each time and the memory the
// open panel takes.
// Usage: bench_detailed_info [courses] [points-per-course]   (QT_QPA_PLATFORM=offscreen)
#include "ZYLBenchSupport.h"
#include "ZYLTPPanelTestHost.h"

#include "ZYLTPProgramFile.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int LabelRole = Qt::UserRole + 10;

double Seconds(const QElapsedTimer &timer) { return timer.nsecsElapsed() / 1e9; }

template<class T> T *Child(QWidget *panel, const char *name) { return panel->findChild<T *>(QLatin1String(name)); }

// Applies a filter and prints its time and the rows left; then clears it unless told to keep
// it, so that the next filter replaces it.
void TimeFilter(QWidget *panel, QTableView *view, const char *label, int condition, const char *value,
                bool clear = true)
{
    auto *property = Child<QComboBox>(panel, "comboBox_property");
    property->setCurrentIndex(property->findData(QString::fromLatin1(label), LabelRole));
    auto *conditions = Child<QComboBox>(panel, "comboBox_condition");
    conditions->setCurrentIndex(conditions->findData(condition));
    Child<QLineEdit>(panel, "lineEdit_value")->setText(QString::fromLatin1(value));
    QElapsedTimer timer;
    timer.start();
    Child<QPushButton>(panel, "pushButton_applyFilter")->click();
    const int rows = view->model()->rowCount();
    std::printf("filter   %8.3f s   %s %d %s: %d rows\n", Seconds(timer), label, condition, value, rows);
    if (!clear)
        return;
    timer.restart();
    Child<QPushButton>(panel, "pushButton_clearFilter")->click();
    std::printf("clear    %8.3f s   %d rows\n", Seconds(timer), view->model()->rowCount());
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    QTemporaryDir dir;
    const QString fileName = dir.filePath(QStringLiteral("bench.zyltp.json"));
    if (!ZYLTPProgramFile::Save(*ZYLTPDemoGenerator::Create(parameters), fileName).isEmpty())
        return 1;
    ZYLTPPanelTestHost host;
    if (!host.Start() || !host.Open(fileName)) {
        std::fprintf(stderr, "%s\n", qPrintable(host.GetError()));
        return 1;
    }

    const double before = ZYLBenchReadMemory().resident;
    QElapsedTimer timer;
    timer.start();
    if (!host.Trigger("ZYLTPDetailedInfoCmd.View"))
        return 1;
    QWidget *panel = host.GetPanel();
    panel->resize(1000, 800);
    std::printf("open     %8.3f s   %d courses x %d points   +%.0f MB\n", Seconds(timer), parameters.courses,
                parameters.pointsPerCourse, ZYLBenchReadMemory().resident - before);

    timer.restart();
    Child<QComboBox>(panel, "comboBox_objectType")->setCurrentIndex(2);
    auto *view = Child<QTableView>(panel, "tableView_layingPoint");
    std::printf("show     %8.3f s   laying points: %d rows\n", Seconds(timer), view->model()->rowCount());

    // The floor of any filter: the proxy passing every row to the view once, nothing compared.
    if (auto *proxy = qobject_cast<QSortFilterProxyModel *>(view->model())) {
        timer.restart();
        proxy->invalidate();
        std::printf("floor    %8.3f s   the proxy's pass over every row, for comparison\n", Seconds(timer));
    }
    TimeFilter(panel, view, "Feed rate", 6, "2000");
    TimeFilter(panel, view, "Enabled tows", 2, "5");
    TimeFilter(panel, view, "Point number", 4, "x12");
    TimeFilter(panel, view, "Enabled tows", 3, "0");
    TimeFilter(panel, view, "Post-processor instructions", 3, "pre");
    TimeFilter(panel, view, "Enabled tows", 2, "5", false);
    TimeFilter(panel, view, "Feed rate", 6, "2000");

    for (const int column : {2, 3}) {
        timer.restart();
        emit view->horizontalHeader()->sectionClicked(column);
        std::printf("sort     %8.3f s   column %d, first row course %s\n", Seconds(timer), column,
                    qPrintable(view->model()->index(0, 0).data().toString()));
        timer.restart();
        emit view->horizontalHeader()->sectionClicked(column);
        std::printf("restore  %8.3f s\n", Seconds(timer));
    }

    // A page at the middle and at the end of the table, drawn as the screen would draw it.
    for (const double at : {0.5, 1.0}) {
        QScrollBar *bar = view->verticalScrollBar();
        timer.restart();
        bar->setValue(int(bar->maximum() * at));
        view->viewport()->grab();
        std::printf("scroll   %8.3f s   to %.0f%% and draw\n", Seconds(timer), at * 100);
    }

    // The save dialog is answered as a user would; the time runs from the answer.
    const QString csv = dir.filePath(QStringLiteral("points.csv"));
    QElapsedTimer write;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
        if (auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget()); dialog && dialog->isVisible()) {
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(csv);
            write.start();
            static_cast<QDialog *>(dialog)->accept();
        }
    });
    answer.start(20);
    Child<QDialogButtonBox>(panel, "buttonBox")->button(QDialogButtonBox::Save)->click();
    answer.stop();
    std::printf("csv      %8.3f s   %.1f MB\n", Seconds(write), QFileInfo(csv).size() / 1048576.0);

    timer.restart();
    host.Press(QDialogButtonBox::Close);
    std::printf("close    %8.3f s   peak %.0f MB\n", Seconds(timer), ZYLBenchReadMemory().peak);
    return 0;
}
