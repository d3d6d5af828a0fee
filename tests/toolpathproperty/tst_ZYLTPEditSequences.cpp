// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Random sequences of the model's edits (order, links and custom links, reversing and
// breaking, range and course parameters, collision avoidance) on the demo program, in transactions: undoing them all
// gives back the saved bytes and the very objects of the start, redoing them all those of
// the end, and every refused edit leaves the program as it was.
#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowPoint.h"

#include "ZYLFeatContainer.h"
#include "ZYLGeoRef.h"
#include "ZYLSysException.h"

#include <QTest>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <vector>

namespace {

// Everything an edit may replace or keep, by address: what undo and redo must give back.
std::vector<const void *> Identities(const ZYLTPRollLayupProcedure &procedure) {
    std::vector<const void *> objects;
    for (int i = 0; i < procedure.GetNumCourses(); ++i) {
        const ZYLTPCourse *course = procedure.GetCourseByIndex(i);
        objects.push_back(course);
        for (int t = 0; t < course->GetNumTrajectories(); ++t)
            objects.push_back(course->GetTrajectory(t));
        for (int b = 0; b < course->GetNumBreakRanges(); ++b)
            objects.push_back(course->GetBreakRange(b));
        const int last = course->GetNumPoints() - 1;
        for (int p : {0, 1, last / 2, last})
            objects.push_back(course->GetPoint(p));
    }
    for (int i = 0; i < procedure.GetNumLinks(); ++i) {
        const ZYLTPCourseLink *link = procedure.GetLinkByIndex(i);
        objects.push_back(link);
        objects.push_back(link ? link->GetPoint(0) : nullptr);
    }
    return objects;
}

class Sequence {
public:
    Sequence(ZYLTPRollLayupProcedure *procedure, quint32 seed) : m_procedure(procedure), m_random(seed) {}

    int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }
    bool Chance(double p) { return std::bernoulli_distribution(p)(m_random); }

    ZYLTPCourse *AnyCourse() { return m_procedure->GetCourseByIndex(Pick(m_procedure->GetNumCourses())); }
    // A course or, now and then, null (the procedure's approach or retract side).
    const ZYLTPCourse *CourseOrNull() { return Chance(0.15) ? nullptr : AnyCourse(); }

    // A half-open range of points of `course`; now and then a reversed or foreign one, which
    // the model must refuse.
    std::pair<const ZYLTPOnPartPoint *, const ZYLTPOnPartPoint *> Range(const ZYLTPCourse *course) {
        const int count = course->GetNumPoints();
        int a = Pick(count - 1);
        int b = a + 1 + Pick(count - a - 1);
        if (Chance(0.05))
            std::swap(a, b);
        const ZYLTPCourse *endCourse = Chance(0.05) ? AnyCourse() : course;
        const ZYLTPOnPartPoint *end = b >= count - 1 && Chance(0.5) ? nullptr : endCourse->GetPoint(std::min(b, endCourse->GetNumPoints() - 1));
        return {course->GetPoint(a), end};
    }

    ZYLTPCustomCourseLink *AnyCustomLink() {
        QList<ZYLTPCustomCourseLink *> links;
        for (int i = 0; i < m_procedure->GetNumLinks(); ++i) {
            if (auto *link = qobject_cast<ZYLTPCustomCourseLink *>(m_procedure->GetLinkByIndex(i)))
                links << link;
        }
        return links.isEmpty() ? nullptr : links[Pick(int(links.size()))];
    }

    // Runs one random edit; out-of-range values are drawn now and then on purpose.
    void RunOne() {
        static const std::vector<std::function<void(Sequence &)>> edits{
            [](Sequence &s) {
                QList<int> order = s.m_procedure->GetLayingOrder();
                std::shuffle(order.begin(), order.end(), s.m_random);
                if (s.Chance(0.1))
                    order.removeLast();
                s.m_procedure->SetLayingOrder(order);
            },
            [](Sequence &s) { s.m_procedure->ReverseLayingOrder(); },
            [](Sequence &s) {
                if (s.m_procedure->GetNumCourses() > 4)
                    s.m_procedure->RemoveCourse(s.AnyCourse());
            },
            [](Sequence &s) {
                const auto strategy = ZYLTPCourseLink::OffPartMotionStrategy(s.Pick(2));
                s.m_procedure->LinkCourses(s.CourseOrNull(), s.CourseOrNull(), s.Chance(0.3) ? nullptr : &strategy);
            },
            [](Sequence &s) {
                if (s.m_procedure->GetNumLinks() > 0)
                    s.m_procedure->RemoveLink(s.m_procedure->GetLinkByIndex(s.Pick(s.m_procedure->GetNumLinks())));
            },
            [](Sequence &s) {
                if (s.Chance(0.2))
                    s.m_procedure->RemoveAllLinks();
            },
            [](Sequence &s) {
                ZYLTPCourse *course = s.AnyCourse();
                const auto [start, end] = s.Range(course);
                course->SetRangeTilt(start, end, s.Between(-1.7, 1.7), s.Between(-0.5, 0.5));
            },
            [](Sequence &s) {
                ZYLTPCourse *course = s.AnyCourse();
                const auto [start, end] = s.Range(course);
                course->SetRangeFeedRate(start, end, s.Between(-100.0, 5000.0));
            },
            [](Sequence &s) {
                auto *course = qobject_cast<ZYLTPTowCourse *>(s.AnyCourse());
                const auto [start, end] = s.Range(course);
                const quint64 forced = course->GetUsedMask().GetRawValue() & quint64(s.Pick(1 << 16));
                QList<double> rates;
                for (int i = 0, n = s.Pick(20); i < n; ++i)
                    rates << s.Between(-0.1, 1.0);
                course->SetPinchState(static_cast<const ZYLTPTowPoint *>(start),
                                      static_cast<const ZYLTPTowPoint *>(end), ZYLCompTowMask(forced), rates);
            },
            [](Sequence &s) {
                ZYLTPCourse *course = s.AnyCourse();
                s.Chance(0.5) ? course->SetRollIn(s.Between(-5.0, 80.0)) : course->SetRollOut(s.Between(-5.0, 80.0));
            },
            [](Sequence &s) {
                ZYLTPCourse *course = s.AnyCourse();
                switch (s.Pick(3)) {
                case 0: course->SetLayingFeedRate(s.Between(-10.0, 4000.0)); break;
                case 1: course->SetAddFeedRate(s.Between(-10.0, 4000.0)); break;
                default: course->SetCutFeedRate(s.Between(-10.0, 4000.0)); break;
                }
            },
            [](Sequence &s) {
                ZYLTPCourse *course = s.AnyCourse();
                auto *approach = const_cast<ZYLTPApproachTrajectory *>(course->GetApproachTrajectory());
                auto *retract = const_cast<ZYLTPRetractTrajectory *>(course->GetRetractTrajectory());
                ZYLTPOffPartTrajectory *trajectory = s.Chance(0.5) ? static_cast<ZYLTPOffPartTrajectory *>(approach) : retract;
                s.Chance(0.5) ? trajectory->SetAngle(s.Between(-0.5, 3.5)) : trajectory->SetLength(s.Between(-5.0, 100.0));
            },
            [](Sequence &s) {
                if (s.m_procedure->GetNumLinks() == 0)
                    return;
                ZYLTPCourseLink *link = s.m_procedure->GetLinkByIndex(s.Pick(s.m_procedure->GetNumLinks()));
                if (auto *linear = qobject_cast<ZYLTPLinearCourseLink *>(link))
                    s.Chance(0.5) ? linear->SetRapidApproach(s.Between(-5.0, 90.0)) : linear->SetRapidRetract(s.Between(-5.0, 90.0));
                else
                    link->SetPointsDetail(ZYLTPCourseLink::OffPartMotionDetail(s.Pick(4)));
            },
            [](Sequence &s) {
                if (!s.Chance(0.2))
                    return;
                ZYLTPCourse *course = s.AnyCourse();
                const auto [start, end] = s.Range(course);
                const ZYLTPProgram *program = course->GetProgram();
                course->AvoidCollisions(program->GetPlySurface(), true, s.Between(-1.0, 15.0),
                                        program->GetTool(0)->GetCollisionPoints(), start, end);
            },
            [](Sequence &s) { s.AnyCourse()->Reverse(s.Chance(0.8)); },
            [](Sequence &s) { s.Chance(0.5) ? s.m_procedure->ReverseOddCourses() : s.m_procedure->ReverseAllCourses(); },
            [](Sequence &s) {
                if (s.Chance(0.3))
                    s.m_procedure->BreakAllCourses(s.Between(-100.0, 3000.0));
            },
            [](Sequence &s) {
                ZYLTPCourse *course = s.AnyCourse();
                if (course->GetNumBreakRanges() > 0)
                    course->Break(s.Chance(0.9) ? course->GetBreakRange(s.Pick(course->GetNumBreakRanges()))
                                                : s.AnyCourse()->GetBreakRange(0));
            },
            [](Sequence &s) {
                if (s.m_procedure->GetNumLinks() > 0)
                    s.m_procedure->ConvertLinkToCustom(s.m_procedure->GetLinkByIndex(s.Pick(s.m_procedure->GetNumLinks())));
            },
            [](Sequence &s) {
                ZYLTPCustomCourseLink *link = s.AnyCustomLink();
                if (!link)
                    return;
                const ZYLTPOffPartPoint *point = link->GetPoint(s.Pick(link->GetNumPoints()));
                const auto interpolation = ZYLTPCustomCourseLink::VectorInterpolation(s.Pick(3));
                switch (s.Pick(6)) {
                case 0:
                    link->TranslateRange(point, point, ZYLMathVector(s.Between(-20, 20), s.Between(-20, 20), s.Between(0, 40)));
                    break;
                case 1:
                    link->AlignRange(point, point, ZYLTPOffPartPoint::Axis(s.Pick(3)),
                                     ZYLMathVector(s.Between(-1, 1), s.Between(-1, 1), s.Between(-1, 1)));
                    break;
                case 2: link->InsertPointsAfter(point, s.Pick(4) - 1, interpolation); break;
                case 3: link->InsertPointsBefore(point, s.Pick(4), interpolation); break;
                case 4: link->InterpolateRange(link->GetPoint(0), point, interpolation); break;
                default: link->RemovePoint(point); break;
                }
            },
        };
        edits[size_t(Pick(int(edits.size())))](*this);
    }

private:
    ZYLTPRollLayupProcedure *m_procedure;
    std::mt19937 m_random;
};

QByteArray Bytes(const ZYLTPProgram &program) {
    QString error;
    QByteArray bytes = ZYLTPProgramFile::Serialize(program, &error);
    if (bytes.isEmpty())
        qWarning("%s", qPrintable(error));
    return bytes;
}

} // namespace

class tst_ZYLTPEditSequences : public QObject {
    Q_OBJECT
private slots:
    void undoAndRedoRestoreBytesAndObjects_data();
    void undoAndRedoRestoreBytesAndObjects();
};

void tst_ZYLTPEditSequences::undoAndRedoRestoreBytesAndObjects_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed : {1u, 7u, 2026u})
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
}

void tst_ZYLTPEditSequences::undoAndRedoRestoreBytesAndObjects() {
    QFETCH(quint32, seed);
    ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::CreateDefaultProgram();
    auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    QVERIFY(procedure);
    ZYLFeatContainer container;
    container.SetHistoryLimit(1000);
    Sequence sequence(procedure, seed);

    const QByteArray start = Bytes(*program);
    const std::vector<const void *> startObjects = Identities(*procedure);
    QVERIFY(!start.isEmpty());

    int transactions = 0;
    int refused = 0;
    int refusalsChecked = 0;
    while (transactions < 150) {
        container.OpenTransaction(QStringLiteral("Edit %1").arg(transactions));
        for (int i = 0, n = 1 + sequence.Pick(3); i < n; ++i) {
            // A refused edit is checked byte for byte now and then: the checks are slow.
            const bool check = refusalsChecked < 12 && sequence.Chance(0.3);
            const QByteArray before = check ? Bytes(*program) : QByteArray();
            try {
                sequence.RunOne();
            } catch (const ZYLSysException &) {
                ++refused;
                if (check) {
                    ++refusalsChecked;
                    QCOMPARE(Bytes(*program), before);
                }
            }
        }
        container.CommitTransaction();
        transactions = container.GetUndoCount();
    }
    QVERIFY2(refused > 0, "the sequence should contain refused edits");

    const QByteArray end = Bytes(*program);
    const std::vector<const void *> endObjects = Identities(*procedure);
    QVERIFY(end != start);

    while (container.CanUndo())
        container.Undo();
    QCOMPARE(Bytes(*program), start);
    QVERIFY(Identities(*procedure) == startObjects);

    while (container.CanRedo())
        container.Redo();
    QCOMPARE(Bytes(*program), end);
    QVERIFY(Identities(*procedure) == endObjects);
}

QTEST_GUILESS_MAIN(tst_ZYLTPEditSequences)
#include "tst_ZYLTPEditSequences.moc"
