// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Extreme programs and fuzzer findings opened through the session: an accepted one draws its
// first frame in seconds with a finite scene; a refused one says where and loses nothing.
#include "ZYLTPPanelTestHost.h"

#include "ZYLStudioViewer.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProgramFile.h"
#include "ZYLVisEnvironment.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

class tst_ZYLTPHostileFiles : public QObject {
    Q_OBJECT
    ZYLTPPanelTestHost m_host;
    QTemporaryDir m_dir;
private slots:
    void initTestCase() { QVERIFY2(m_host.Start(this) && m_host.OpenDemo(), qPrintable(m_host.GetError())); }
    void open_data();
    void open();
};

void tst_ZYLTPHostileFiles::open_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("error"); // the located refusal; empty when accepted
    const auto row = [](const char *name, const char *file, const char *error = "") {
        QTest::newRow(name) << QFINDTESTDATA(QStringLiteral("data/") + QLatin1String(file)) << QString::fromUtf8(error);
    };
    row("huge coordinates", "huge.zyltp.json");
    row("tiny coordinates", "tiny.zyltp.json");
    row("course of one place", "one-place.zyltp.json");
    row("course of one point", "one-point.zyltp.json", "procedures[0].courses[0]: A course needs at least two");
    row("nearly flat surface", "flat.zyltp.json");
    row("folded surface", "folded.zyltp.json");
    row("control point at 1e300", "far.zyltp.json", "surface.control_points[4]: Value 1e+300");
    // Found by the scene fuzzer: a control point 70 m out makes the tessellation fine everywhere.
    row("spiked surface", "spike.zyltp.json");
    // Found by the file fuzzer: a crash while a member search wrapped around a broken object.
    row("bracket closing another kind", "mismatched-brackets.zyltp.json", "document: brackets that do not match");
    const ZYLTPDemoGenerator::Parameters parameters{.courses = 1, .pointsPerCourse = 100000};
    const QString course = m_dir.filePath(QStringLiteral("long.zyltp.json"));
    QCOMPARE(ZYLTPProgramFile::Save(*ZYLTPDemoGenerator::Create(parameters), course), QString());
    QTest::newRow("100,000-point course") << course << QString();
}

void tst_ZYLTPHostileFiles::open()
{
    QFETCH(QString, file);
    QFETCH(QString, error);
    const QByteArray before = m_host.Serialize();
    QElapsedTimer timer;
    timer.start();
    if (!error.isEmpty()) {
        QVERIFY(!m_host.Open(file));
        QVERIFY2(m_host.GetError().contains(error), qPrintable(m_host.GetError()));
        QCOMPARE(m_host.Serialize(), before);
        return;
    }
    QVERIFY2(m_host.Open(file), qPrintable(m_host.GetError()));
    ZYLStudioViewer viewer;
    viewer.SetEnvironment(m_host.GetScene());
    viewer.FitAll();
    QVERIFY(!viewer.RenderToImage(QSize(400, 300)).isNull());
    QVERIFY2(timer.elapsed() < 20000, qPrintable(QStringLiteral("%1 ms").arg(timer.elapsed())));
    const ZYLMathBoundingBox box = m_host.GetScene()->GetBoundingBox();
    QVERIFY(!box.IsEmpty() && box.GetMin().IsFinite() && std::isfinite(box.GetDiagonal().GetLength()));
}

QTEST_MAIN(tst_ZYLTPHostileFiles)
#include "tst_ZYLTPHostileFiles.moc"
