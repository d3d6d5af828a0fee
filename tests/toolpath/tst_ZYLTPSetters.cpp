// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Post-processor instructions and names are recorded like every other model value: undo gives
// the old ones back.
#include "ZYLTPTestProgram.h"

#include <QTest>

class tst_ZYLTPSetters : public QObject {
    Q_OBJECT
private slots:
    void instructionsUndo();
};

void tst_ZYLTPSetters::instructionsUndo()
{
    ZYLTPTestProgram t(1);
    t.Open();
    t.courses[0]->SetPrefixInstructions({"M101", "G04 P1"});
    t.courses[0]->SetSuffixInstructions({"M102"});
    t.procedure->SetName(QStringLiteral("Renamed"));
    t.Commit();
    QCOMPARE(t.courses[0]->GetPrefixInstructions(), (QStringList{"M101", "G04 P1"}));
    t.container.Undo();
    QVERIFY(t.courses[0]->GetPrefixInstructions().isEmpty());
    QVERIFY(t.courses[0]->GetSuffixInstructions().isEmpty());
    QCOMPARE(t.procedure->GetName(), QStringLiteral("Ply 1"));
}

QTEST_GUILESS_MAIN(tst_ZYLTPSetters)
#include "tst_ZYLTPSetters.moc"
