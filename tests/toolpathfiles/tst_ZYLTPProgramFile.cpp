// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProgramFileTestUtil.h"

#include "ZYLTPProgramFile.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowPoint.h"

#include "ZYLSysException.h"

#include "ZYLFeatContainer.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class tst_ZYLTPProgramFile : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void roundTrip_data();
    void roundTrip();
    void saveKeepsPreviousFileOnFailure();
    void damagedFileIsRefusedAtItsPlace_data();
    void damagedFileIsRefusedAtItsPlace();
    void truncatedFilesAreRefused();
    void structuralFlipsAreRefused();
    void randomFlipsNeverCrash();
    void cancelledLoadCreatesNothing();
    void everyParameterRoundTrip();
    void outOfRangeParameterGetsTheSettersMessage_data();
    void outOfRangeParameterGetsTheSettersMessage();
    void olderFileWithoutHeadTowCount();
    void toolKinds_data();
    void toolKinds();

private:
    QByteArray m_small;
};

namespace {

ZYLGeoRef<ZYLTPProgram> SmallDemo()
{
    ZYLTPDemoGenerator::Parameters p;
    p.courses = 5;
    p.pointSpacing = 60.0;
    p.seed = 3;
    return ZYLTPDemoGenerator::Create(p);
}

// Replaces the first match of `pattern` (which must match) with `replacement`.
QByteArray ReplaceFirst(const QByteArray &text, const QString &pattern, const QString &replacement)
{
    QString s = QString::fromUtf8(text);
    const QRegularExpression re(pattern);
    const QRegularExpressionMatch m = re.match(s);
    if (!m.hasMatch())
        return {};
    QString replaced = replacement;
    for (int i = 1; i <= m.lastCapturedIndex(); ++i)
        replaced.replace(QStringLiteral("\\%1").arg(i), m.captured(i));
    s.replace(m.capturedStart(), m.capturedLength(), replaced);
    return s.toUtf8();
}

// A located message: "<json path>: <reason>".
bool IsLocated(const QString &message)
{
    static const QRegularExpression re(QStringLiteral("^(document|[a-z_]+(\\[\\d+\\])*(\\.[a-z_]+(\\[\\d+\\])*)*): \\S"));
    return re.match(message).hasMatch();
}

// The message a model setter gives for a value out of range, from the setter itself.
QString SetterMessage(ZYLTPProgram &program, const std::function<void(ZYLTPRollLayupProcedure *)> &edit)
{
    ZYLFeatContainer container;
    container.OpenTransaction(QStringLiteral("probe"));
    QString message;
    try {
        edit(qobject_cast<ZYLTPRollLayupProcedure *>(program.GetProcedure(0)));
    } catch (const ZYLSysException &e) {
        message = e.GetMessage();
    }
    container.AbortTransaction();
    return message;
}

// The place of the first linear link between two courses of the first procedure.
int FirstLinearLink(const ZYLTPProgram &program)
{
    const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(0));
    for (int i = 0; i < procedure->GetNumLinks(); ++i)
        if (qobject_cast<const ZYLTPLinearCourseLink *>(procedure->GetLinkByIndex(i)))
            return i;
    return -1;
}

} // namespace

void tst_ZYLTPProgramFile::initTestCase()
{
    QString error;
    m_small = ZYLTPProgramFile::Serialize(*SmallDemo(), &error);
    QVERIFY2(!m_small.isEmpty(), qPrintable(error));
}

void tst_ZYLTPProgramFile::roundTrip_data()
{
    QTest::addColumn<int>("courses");
    QTest::addColumn<int>("tows");
    QTest::addColumn<bool>("inspection");
    QTest::addColumn<bool>("edited");
    QTest::newRow("small demo") << 5 << 8 << true << false;
    QTest::newRow("16 tows, layup only") << 30 << 16 << false << false;
    QTest::newRow("edited parameters and pinch states") << 12 << 12 << true << true;
}

void tst_ZYLTPProgramFile::roundTrip()
{
    QFETCH(int, courses);
    QFETCH(int, tows);
    QFETCH(bool, inspection);
    QFETCH(bool, edited);
    ZYLTPDemoGenerator::Parameters p;
    p.courses = courses;
    p.tows = tows;
    p.inspection = inspection;
    p.pointSpacing = 25.0;
    ZYLGeoRef<ZYLTPProgram> original = ZYLTPDemoGenerator::Create(p);
    if (edited) {
        // Values the builder does not set, and range edits that split runs, must survive.
        auto *layup = qobject_cast<ZYLTPRollLayupProcedure *>(original->GetProcedure(0));
        ZYLFeatContainer container;
        container.OpenTransaction(QStringLiteral("edit"));
        layup->SetRapidFeedRate(12345.5);
        layup->SetSafetyClearance(77.25);
        layup->SetHomeFrame(ZYLMathAxis(ZYLMathPoint(10, 20, 900), ZYLMathVector(0, 1, 0), ZYLMathVector(-1, 0, 0)));
        layup->GetLinkByIndex(1)->SetPointsDetail(ZYLTPCourseLink::Fine);
        for (int i = 0; i < layup->GetNumLinks(); ++i)
            if (auto *linear = qobject_cast<ZYLTPLinearCourseLink *>(layup->GetLinkByIndex(i))) {
                linear->SetRapidApproach(33.0);
                break;
            }
        auto *course = qobject_cast<ZYLTPTowCourse *>(layup->GetCourseByIndex(2));
        course->SetRangeFeedRate(course->GetPoint(3), course->GetPoint(6), 4321.0);
        course->SetPinchState(static_cast<const ZYLTPTowPoint *>(course->GetPoint(3)),
                              static_cast<const ZYLTPTowPoint *>(course->GetPoint(6)), ZYLCompTowMask(0b101),
                              {0.5, 1.0, 0.25});
        course->SetRollIn(17.5);
        course->SetPrefixInstructions({QStringLiteral("M100 \"quoted\" \\ back"), QStringLiteral("tab\there")});
        container.CommitTransaction();
    }

    QString error;
    const QByteArray first = ZYLTPProgramFile::Serialize(*original, &error);
    QVERIFY2(!first.isEmpty(), qPrintable(error));
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Parse(first);
    QVERIFY2(loaded.program, qPrintable(loaded.error));
    ZYLTPProgramFileTestUtil::CompareProgram(*original, *loaded.program);
    if (QTest::currentTestFailed())
        return;
    const QByteArray second = ZYLTPProgramFile::Serialize(*loaded.program, &error);
    QCOMPARE(second.size(), first.size());
    QVERIFY(second == first);

    // Through a file as well.
    QTemporaryDir dir;
    const QString fileName = dir.filePath(QStringLiteral("p.zyltp.json"));
    QCOMPARE(ZYLTPProgramFile::Save(*loaded.program, fileName), QString());
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll() == first);
    const ZYLTPProgramFile::LoadResult fromFile = ZYLTPProgramFile::Load(fileName);
    QVERIFY2(fromFile.program, qPrintable(fromFile.error));
    ZYLTPProgramFileTestUtil::CompareProgram(*original, *fromFile.program);
}

void tst_ZYLTPProgramFile::olderFileWithoutHeadTowCount()
{
    // A head without a tow count is how files were written before heads had one: such a
    // file loads, its courses keep the width the file gives them, and it saves to the same bytes.
    const QByteArray older = ReplaceFirst(m_small, QStringLiteral("(\"heads\":\\[\\{\"name\":\"[^\"]*\"),\"tows\":8"),
                                          QStringLiteral("\\1"));
    QVERIFY(!older.isEmpty());
    QVERIFY(older.size() < m_small.size());
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Parse(older);
    QVERIFY2(loaded.program, qPrintable(loaded.error));
    QCOMPARE(loaded.program->GetMachineHead(0)->GetNumTows(), 0);
    const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(loaded.program->GetProcedure(0));
    QVERIFY(layup->GetNumCourses() > 0);
    for (int i = 0; i < layup->GetNumCourses(); ++i)
        QCOMPARE(qobject_cast<const ZYLTPTowCourse *>(layup->GetCourseByIndex(i))->GetNumTows(), 8);
    QVERIFY(ZYLTPProgramFile::Serialize(*loaded.program) == older);
    // And the program as written today carries the head's count.
    const ZYLTPProgramFile::LoadResult current = ZYLTPProgramFile::Parse(m_small);
    QVERIFY2(current.program, qPrintable(current.error));
    QCOMPARE(current.program->GetMachineHead(0)->GetNumTows(), 8);
}

void tst_ZYLTPProgramFile::saveKeepsPreviousFileOnFailure()
{
    QTemporaryDir dir;
    const QString fileName = dir.filePath(QStringLiteral("keep.zyltp.json"));
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("previous");
    file.close();
    // The target's folder is made read-only, so the temporary file cannot be created.
    QVERIFY(QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    const QString error = ZYLTPProgramFile::Save(*SmallDemo(), fileName);
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    if (error.isEmpty())
        QSKIP("the file system lets this user write into a read-only folder");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("previous"));
    QVERIFY(!ZYLTPProgramFile::Save(*SmallDemo(), dir.filePath(QStringLiteral("missing/x.zyltp.json"))).isEmpty());
}

void tst_ZYLTPProgramFile::damagedFileIsRefusedAtItsPlace_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("message");
    const QString number = QStringLiteral("-?[0-9][0-9.e+-]*");
    QTest::newRow("not a unit tool axis") << QStringLiteral("\"tool_axis\":\\[(%1),").arg(number)
                                          << QStringLiteral("\"tool_axis\":[3,")
                                          << QStringLiteral("procedures[0].courses[0].points[0].tool_axis: not a unit vector");
    QTest::newRow("NaN") << QStringLiteral("\"roll_out\":%1").arg(number) << QStringLiteral("\"roll_out\":NaN")
                         << QStringLiteral("procedures[0].courses[0].roll_out:");
    QTest::newRow("huge number") << QStringLiteral("\"roll_out\":%1").arg(number) << QStringLiteral("\"roll_out\":1e999")
                                 << QStringLiteral("procedures[0].courses[0].roll_out:");
    QTest::newRow("retyped number") << QStringLiteral("\"roll_in\":(%1)").arg(number)
                                    << QStringLiteral("\"roll_in\":\"\\1\"")
                                    << QStringLiteral("procedures[0].courses[0].roll_in: expected a number");
    QTest::newRow("retyped array") << QStringLiteral("\"points\":\\[") << QStringLiteral("\"points\":{\"a\":1},\"x\":[")
                                   << QStringLiteral("procedures[0].courses[0].points: expected an array");
    QTest::newRow("removed field") << QStringLiteral("\"tip\":\\[[^\\]]*\\],") << QString()
                                   << QStringLiteral("procedures[0].courses[0].points[0].tip: missing");
    QTest::newRow("removed top field") << QStringLiteral("\"boundaries\":\\[.*?\\]\\]\\}\\]\\}\\],") << QString()
                                       << QStringLiteral("boundaries: missing");
    QTest::newRow("format not first") << QStringLiteral("\"format\":\"zyltp-program\",") << QString()
                                      << QStringLiteral("format: missing before \"surface\"");
    QTest::newRow("configuration out of range")
        << QStringLiteral("\"configuration\":0") << QStringLiteral("\"configuration\":7")
        << QStringLiteral("procedures[0].courses[0].configuration: 7 is out of range [0, 1]");
    QTest::newRow("negative tool index") << QStringLiteral("\"tool\":0") << QStringLiteral("\"tool\":-1")
                                         << QStringLiteral("procedures[0].configurations[0].tool: -1 is out of range");
    QTest::newRow("link course out of range") << QStringLiteral("\"from\":0,") << QStringLiteral("\"from\":99,")
                                              << QStringLiteral("procedures[0].links[1].from: 99 is out of range");
    QTest::newRow("laying order not a permutation")
        << QStringLiteral("\"laying_order\":\\[0,1") << QStringLiteral("\"laying_order\":[0,0")
        << QStringLiteral("procedures[0].laying_order: ");
    QTest::newRow("too wide mask") << QStringLiteral("\"tow_mask\":\"[^\"]*\"") << QStringLiteral("\"tow_mask\":\"1-9\"")
                                   << QStringLiteral("procedures[0].courses[0].runs[0].tow_mask: tow 9 is beyond the course's 8 tows");
    QTest::newRow("unreadable mask") << QStringLiteral("\"forced_mask\":\"\"") << QStringLiteral("\"forced_mask\":\"a-b\"")
                                     << QStringLiteral("procedures[0].courses[0].runs[0].forced_mask: \"a-b\" is not a list of tows");
    QTest::newRow("runs miss points") << QStringLiteral("\"runs\":\\[\\s*\\{\"points\":(\\d+)")
                                      << QStringLiteral("\"runs\":[{\"points\":1\\1")
                                      << QStringLiteral("procedures[0].courses[0].runs");
    QTest::newRow("newer version") << QStringLiteral("\"version\":1") << QStringLiteral("\"version\":2")
                                   << QStringLiteral("version: version 2 is newer than this program reads (1)");
    QTest::newRow("other format") << QStringLiteral("\"zyltp-program\"") << QStringLiteral("\"other\"")
                                  << QStringLiteral("format: not a tool path program file");
    QTest::newRow("bad knots") << QStringLiteral("\"knots_u\":\\[0,") << QStringLiteral("\"knots_u\":[5,")
                               << QStringLiteral("surface: ");
    QTest::newRow("negative radius") << QStringLiteral("\"collision_points\":\\[\\[([^\\]]*),(%1)\\]").arg(number)
                                     << QStringLiteral("\"collision_points\":[[\\1,-4]")
                                     << QStringLiteral("heads[0].collision_points[0]: negative radius");
    QTest::newRow("break range outside") << QStringLiteral("\"break_ranges\":\\[\\[") << QStringLiteral("\"break_ranges\":[[-50,-40],[")
                                         << QStringLiteral("procedures[0].courses[");
    QTest::newRow("negative procedure feed rate")
        << QStringLiteral("\"laying_feed_rate\":(%1),\"adding").arg(number) << QStringLiteral("\"laying_feed_rate\":-5,\"adding")
        << QStringLiteral("procedures[0].parameters.laying_feed_rate: ");
    QTest::newRow("negative course feed rate")
        << QStringLiteral("\"laying_feed_rate\":(%1),\"add_feed").arg(number) << QStringLiteral("\"laying_feed_rate\":-5,\"add_feed")
        << QStringLiteral("procedures[0].courses[0]: ");
    QTest::newRow("parameter out of range") << QStringLiteral("\"safety_clearance\":(%1)").arg(number)
                                            << QStringLiteral("\"safety_clearance\":-3")
                                            << QStringLiteral("procedures[0].parameters.safety_clearance: ");
    QTest::newRow("trailing content") << QStringLiteral("\\}\\s*$") << QStringLiteral("}}")
                                      << QStringLiteral("document: unexpected content");
    QTest::newRow("unknown link strategy") << QStringLiteral("\"strategy\":\"linear\"") << QStringLiteral("\"strategy\":\"zigzag\"")
                                           << QStringLiteral("procedures[0].links[1].strategy: unknown link strategy");
    QTest::newRow("head of no tows") << QStringLiteral("\"tows\":8,\"collision") << QStringLiteral("\"tows\":0,\"collision")
                                     << QStringLiteral("heads[0].tows: 0 is out of range [1, 64]");
    QTest::newRow("head of 65 tows") << QStringLiteral("\"tows\":8,\"collision") << QStringLiteral("\"tows\":65,\"collision")
                                     << QStringLiteral("heads[0].tows: 65 is out of range [1, 64]");
    QTest::newRow("head tow count retyped") << QStringLiteral("\"tows\":8,\"collision") << QStringLiteral("\"tows\":\"8\",\"collision")
                                            << QStringLiteral("heads[0].tows: expected an integer");
    QTest::newRow("course wider than its head") << QStringLiteral("\"tows\":8,\"roll_in\"") << QStringLiteral("\"tows\":9,\"roll_in\"")
                                                << QStringLiteral("procedures[0].courses[0].tows: the course's 9 tows are more than its head's 8");
    QTest::newRow("direction not perpendicular") << QStringLiteral("\"direction\":\\[[^\\]]*\\]")
                                                 << QStringLiteral("\"direction\":[0,0,1]")
                                                 << QStringLiteral("procedures[0].courses[0].points[0].direction:");
    QTest::newRow("far tip") << QStringLiteral("\"tip\":\\[(%1),").arg(number) << QStringLiteral("\"tip\":[-2e6,")
                             << QStringLiteral("procedures[0].courses[0].points[0].tip: Value -2000000 mm is out of range");
    QTest::newRow("far control point") << QStringLiteral("\"control_points\":\\[\\[(%1),").arg(number)
                                       << QStringLiteral("\"control_points\":[[1e300,")
                                       << QStringLiteral("surface.control_points[0]: Value 1e+300 mm is out of range");
    QTest::newRow("far knot") << QStringLiteral("\"knots_v\":\\[(%1),").arg(number) << QStringLiteral("\"knots_v\":[-1e7,")
                              << QStringLiteral("surface.knots_v[0]: Value -10000000 mm is out of range");
    QTest::newRow("huge collision radius") << QStringLiteral("\"collision_points\":\\[\\[([^\\]]*),(%1)\\]").arg(number)
                                           << QStringLiteral("\"collision_points\":[[\\1,3e6]")
                                           << QStringLiteral("heads[0].collision_points[0]: Value 3000000 mm is out of range");
    QTest::newRow("huge roller") << QStringLiteral("\"width\":(%1)").arg(number) << QStringLiteral("\"width\":5e6")
                                 << QStringLiteral("tools[0]: Value 5000000 mm is out of range");
    QTest::newRow("far home") << QStringLiteral("\"home_frame\":\\[(%1),").arg(number) << QStringLiteral("\"home_frame\":[1e7,")
                              << QStringLiteral("procedures[0].parameters.home_frame: Value 10000000 mm");
}

void tst_ZYLTPProgramFile::damagedFileIsRefusedAtItsPlace()
{
    QFETCH(QString, pattern);
    QFETCH(QString, replacement);
    QFETCH(QString, message);
    const QByteArray damaged = ReplaceFirst(m_small, pattern, replacement);
    QVERIFY2(!damaged.isEmpty(), "the pattern must occur in the demo file");
    const ZYLTPProgramFile::LoadResult result = ZYLTPProgramFile::Parse(damaged);
    QVERIFY(!result.program);
    QVERIFY2(result.error.startsWith(message), qPrintable(result.error));
    QVERIFY2(IsLocated(result.error), qPrintable(result.error));
}

void tst_ZYLTPProgramFile::truncatedFilesAreRefused()
{
    const qsizetype end = m_small.lastIndexOf('}');
    QVERIFY(end > 0);
    // Every cut before the closing brace, at a prime stride so that every kind of token is hit.
    for (qsizetype cut = 0; cut < end; cut += 97) {
        const ZYLTPProgramFile::LoadResult result = ZYLTPProgramFile::Parse(m_small.left(cut));
        QVERIFY2(!result.program, qPrintable(QStringLiteral("cut at %1 was accepted").arg(cut)));
        QVERIFY2(IsLocated(result.error), qPrintable(QStringLiteral("cut at %1: %2").arg(cut).arg(result.error)));
    }
}

void tst_ZYLTPProgramFile::structuralFlipsAreRefused()
{
    // Replacing a bracket, brace, colon or quote by another byte always breaks the file.
    int flips = 0;
    for (qsizetype i = 0; i < m_small.size(); i += 13) {
        const char c = m_small.at(i);
        if (!QByteArray("{}[]:\"").contains(c))
            continue;
        QByteArray damaged = m_small;
        damaged[i] = c == ':' ? ';' : '#';
        const ZYLTPProgramFile::LoadResult result = ZYLTPProgramFile::Parse(damaged);
        QVERIFY2(!result.program, qPrintable(QStringLiteral("flip at %1 was accepted: %2").arg(i).arg(QString::fromUtf8(damaged.mid(i - 30, 60)))));
        QVERIFY2(IsLocated(result.error), qPrintable(QStringLiteral("flip at %1: %2").arg(i).arg(result.error)));
        ++flips;
    }
    QVERIFY(flips > 100);
}

void tst_ZYLTPProgramFile::randomFlipsNeverCrash()
{
    // A flipped digit may still make a valid file; whatever the outcome, the load ends in a
    // program or a located message.
    quint64 state = 12345;
    int refused = 0;
    for (int k = 0; k < 300; ++k) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        QByteArray damaged = m_small;
        const qsizetype at = qsizetype((state >> 33) % quint64(damaged.size()));
        damaged[at] = char(damaged.at(at) ^ (1 << ((state >> 20) % 7)));
        const ZYLTPProgramFile::LoadResult result = ZYLTPProgramFile::Parse(damaged);
        QCOMPARE(!result.program, !result.error.isEmpty());
        if (!result.program) {
            QVERIFY2(IsLocated(result.error), qPrintable(result.error));
            ++refused;
        }
    }
    QVERIFY(refused > 0);
}

void tst_ZYLTPProgramFile::cancelledLoadCreatesNothing()
{
    QList<double> fractions;
    const ZYLTPProgramFile::LoadResult all = ZYLTPProgramFile::Parse(m_small, [&](double f) {
        fractions.append(f);
        return true;
    });
    QVERIFY(all.program);
    QVERIFY(fractions.size() > 3);
    QVERIFY(std::is_sorted(fractions.begin(), fractions.end()));
    QCOMPARE(fractions.back(), 1.0);

    int calls = 0;
    const ZYLTPProgramFile::LoadResult cancelled = ZYLTPProgramFile::Parse(m_small, [&](double) { return ++calls < 3; });
    QVERIFY(!cancelled.program);
    QVERIFY(cancelled.cancelled);
    QCOMPARE(calls, 3);
}

void tst_ZYLTPProgramFile::everyParameterRoundTrip()
{
    const ZYLGeoRef<ZYLTPProgram> original = ZYLTPProgramFileTestUtil::EveryParameterProgram();
    QString error;
    const QByteArray first = ZYLTPProgramFile::Serialize(*original, &error);
    QVERIFY2(!first.isEmpty(), qPrintable(error));
    QVERIFY(first.contains(R"({"kind":"plain","name":"Scanner")"));
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Parse(first);
    QVERIFY2(loaded.program, qPrintable(loaded.error));
    ZYLTPProgramFileTestUtil::CompareProgram(*original, *loaded.program);
    if (QTest::currentTestFailed())
        return;
    // The normals a little off unit length come back bit for bit.
    const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(loaded.program->GetProcedure(0));
    const auto *source = qobject_cast<const ZYLTPRollLayupProcedure *>(original->GetProcedure(0));
    for (int c = 0; c < procedure->GetNumCourses(); ++c) {
        const ZYLTPCoursePoints &a = source->GetCourseByIndex(c)->GetPointData();
        const ZYLTPCoursePoints &b = procedure->GetCourseByIndex(c)->GetPointData();
        QVERIFY(a.normals == b.normals);
        QVERIFY(a.directions == b.directions);
        QVERIFY(a.tips == b.tips);
    }
    QCOMPARE(ZYLTPProgramFile::Serialize(*loaded.program), first);
}

void tst_ZYLTPProgramFile::outOfRangeParameterGetsTheSettersMessage_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("link");
    QTest::newRow("rapid feed rate 0") << QStringLiteral("rapid_feed_rate") << 0.0 << false;
    QTest::newRow("cutting feed rate below 0") << QStringLiteral("cutting_feed_rate") << -1.5 << false;
    QTest::newRow("rapid approach below 0") << QStringLiteral("rapid_approach") << -2.0 << false;
    QTest::newRow("add/cut distance below 0") << QStringLiteral("add_cut_distance") << -0.25 << false;
    QTest::newRow("link rapid approach below 0") << QStringLiteral("rapid_approach") << -3.0 << true;
    QTest::newRow("link rapid retract below 0") << QStringLiteral("rapid_retract") << -4.0 << true;
}

void tst_ZYLTPProgramFile::outOfRangeParameterGetsTheSettersMessage()
{
    QFETCH(QString, key);
    QFETCH(double, value);
    QFETCH(bool, link);
    ZYLGeoRef<ZYLTPProgram> program = ZYLTPProgramFile::Parse(m_small).program;
    QVERIFY(program);
    using P = ZYLTPRollLayupProcedure;
    using L = ZYLTPLinearCourseLink;
    QString place;
    QString message;
    const int linkIndex = FirstLinearLink(*program);
    QVERIFY(linkIndex > 0);
    if (link) {
        place = QStringLiteral("procedures[0].links[%1].%2: ").arg(linkIndex).arg(key);
        message = SetterMessage(*program, [&](P *p) {
            auto *linear = qobject_cast<L *>(p->GetLinkByIndex(linkIndex));
            (key == QLatin1String("rapid_approach") ? linear->SetRapidApproach(value) : linear->SetRapidRetract(value));
        });
    } else {
        place = QStringLiteral("procedures[0].parameters.%1: ").arg(key);
        const QHash<QString, void (P::*)(double)> setters{{QStringLiteral("rapid_feed_rate"), &P::SetRapidFeedRate},
                                                          {QStringLiteral("cutting_feed_rate"), &P::SetCuttingFeedrate},
                                                          {QStringLiteral("rapid_approach"), &P::SetRapidApproach},
                                                          {QStringLiteral("add_cut_distance"), &P::SetAddCutDistance}};
        message = SetterMessage(*program, [&](P *p) { (p->*setters.value(key))(value); });
    }
    QVERIFY(!message.isEmpty());

    // In the link's object (after its "detail") or in the parameters object.
    const QString pattern = link ? QStringLiteral("(\"strategy\":\"linear\".*?\"%1\":)[^,}]*").arg(key)
                                 : QStringLiteral("(\"parameters\":\\{.*?\"%1\":)[^,}]*").arg(key);
    const QByteArray damaged = ReplaceFirst(m_small, pattern, QStringLiteral("\\1%1").arg(value));
    QVERIFY2(!damaged.isEmpty(), "the pattern must occur in the demo file");
    const ZYLTPProgramFile::LoadResult result = ZYLTPProgramFile::Parse(damaged);
    QVERIFY(!result.program);
    QCOMPARE(result.error, place + message);
}

void tst_ZYLTPProgramFile::toolKinds_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("message");
    // Files written before plain tools had no kind: their tools are rollers.
    QTest::newRow("no kinds") << QStringLiteral("\"kind\":\"roller\",") << QString() << QString();
    QTest::newRow("plain tool") << QStringLiteral("\\{\"kind\":\"roller\",(\"name\":\"[^\"]*\"),[^\\[]*")
                                << QStringLiteral("{\"kind\":\"plain\",\\1,\"collision_points\":")
                                << QString();
    QTest::newRow("unknown kind") << QStringLiteral("\"kind\":\"roller\"") << QStringLiteral("\"kind\":\"drill\"")
                                  << QStringLiteral("tools[0].kind: unknown tool kind \"drill\"");
    QTest::newRow("kind not a string") << QStringLiteral("\"kind\":\"roller\"") << QStringLiteral("\"kind\":3")
                                       << QStringLiteral("tools[0].kind: expected a string");
    QTest::newRow("roller without width") << QStringLiteral("\"width\":[^,]*,") << QString()
                                          << QStringLiteral("tools[0].width: missing");
}

void tst_ZYLTPProgramFile::toolKinds()
{
    QFETCH(QString, pattern);
    QFETCH(QString, replacement);
    QFETCH(QString, message);
    QByteArray changed = m_small;
    // Rows without a replacement text remove every match; the others change the first.
    if (replacement.isEmpty() && message.isEmpty())
        changed = QString::fromUtf8(m_small).remove(QRegularExpression(pattern)).toUtf8();
    else
        changed = ReplaceFirst(m_small, pattern, replacement);
    QVERIFY(!changed.isEmpty() && changed != m_small);
    const ZYLTPProgramFile::LoadResult result = ZYLTPProgramFile::Parse(changed);
    if (!message.isEmpty()) {
        QVERIFY(!result.program);
        QCOMPARE(result.error, message);
        return;
    }
    QVERIFY2(result.program, qPrintable(result.error));
    const ZYLGeoRef<ZYLTPProgram> original = ZYLTPProgramFile::Parse(m_small).program;
    QCOMPARE(result.program->GetNumTools(), original->GetNumTools());
    const bool plain = QTest::currentDataTag() == QLatin1String("plain tool");
    const ZYLTPTool *first = result.program->GetTool(0);
    QCOMPARE(bool(qobject_cast<const ZYLTPRoller *>(first)), !plain);
    QCOMPARE(first->GetName(), original->GetTool(0)->GetName());
    QCOMPARE(first->GetCollisionPoints().size(), original->GetTool(0)->GetCollisionPoints().size());
    QVERIFY(qobject_cast<const ZYLTPRoller *>(result.program->GetTool(1)));
    // Saved again, the tools carry their kinds (the demo's scanner is a plain tool already).
    const QByteArray saved = ZYLTPProgramFile::Serialize(*result.program);
    QCOMPARE(saved.count(R"({"kind":"roller")"), plain ? 1 : 2);
    QCOMPARE(saved.count(R"({"kind":"plain")"), plain ? 2 : 1);
}

QTEST_GUILESS_MAIN(tst_ZYLTPProgramFile)
#include "tst_ZYLTPProgramFile.moc"
