// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The display options as a value, and the global settings that persist them.

#include "ZYLTPVisualizationOptions.h"
#include "ZYLTPVisualizationSettings.h"

#include "ZYLSysOutOfBoundsException.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>

using O = ZYLTPVisualizationOptions;

namespace {

struct Change {
    const char *name;
    std::function<void(O &)> apply;
};

ZYLVisOptions Recoloured(const ZYLVisOptions &options, const QColor &color)
{
    ZYLVisOptions changed = options;
    changed.SetColor(color);
    return changed;
}

// One change of every field of the options, each to a value other than its default.
const QList<Change> &Changes()
{
    static const QList<Change> changes{
        {"course", [](O &o) { o.SetCourseEnabled(false); }},
        {"approach/retract", [](O &o) { o.SetApproachRetractEnabled(false); }},
        {"roll-in/out", [](O &o) { o.SetRollInOutEnabled(false); }},
        {"tip points", [](O &o) { o.SetTipPointEnabled(false); }},
        {"laying trajectory", [](O &o) { o.SetLayingTrajectoryEnabled(false); }},
        {"linking trajectories", [](O &o) { o.SetLinkingTrajectoriesEnabled(false); }},
        {"linking points", [](O &o) { o.SetLinkingPointsEnabled(false); }},
        {"break ranges", [](O &o) { o.SetBreakRangeEnabled(true); }},
        {"laying vectors", [](O &o) { o.SetLayingVectorsToDisplay(O::AllAxes); }},
        {"linking vectors", [](O &o) { o.SetLinkingVectorsToDisplay(O::ToolAxisAndLayingDirection); }},
        {"link end vectors", [](O &o) { o.SetLinkEndPointsVectorsToDisplay(O::ToolAxis); }},
        {"head profiles", [](O &o) { o.SetTowHeadProfileDisplay(O::HeadProfilesAtCuts); }},
        {"tow edges", [](O &o) { o.SetTowEdgeDisplay(O::AllTowEdges); }},
        {"short tows", [](O &o) { o.SetShortTowDisplay(O::ShortTowsOnly); }},
        {"vector length", [](O &o) { o.SetVectorLength(12.25); }},
        {"tow width", [](O &o) { o.SetTowWidth(3.175); }},
        {"minimum tow length", [](O &o) { o.SetMinimumTowLength(0.0); }},
        {"tool axis colour", [](O &o) { o.SetToolAxisGraphicAttributes(Recoloured(o.GetToolAxisGraphicAttributes(), Qt::red)); }},
        {"tip point size",
         [](O &o) {
             ZYLVisOptions tips = o.GetTipPointGraphicAttributes();
             tips.SetPointSize(9.5);
             o.SetTipPointGraphicAttributes(tips);
         }},
        {"break range depth and priority",
         [](O &o) {
             ZYLVisOptions range = o.GetBreakRangeGraphicAttributes();
             range.SetDepthEnabled(false);
             range.SetPriority(10);
             range.SetTransparency(0.25);
             o.SetBreakRangeGraphicAttributes(range);
         }},
        {"link line thickness",
         [](O &o) {
             ZYLVisOptions line = o.GetLinkLineGraphicAttributes();
             line.SetLineThickness(3.5);
             o.SetLinkLineGraphicAttributes(line);
         }},
    };
    return changes;
}

std::unique_ptr<QSettings> File()
{
    auto settings = std::make_unique<QSettings>(ZYLSysSettings::GetSettingsFilePath(), QSettings::IniFormat);
    settings->beginGroup(QStringLiteral("ZYLToolPathDisplay"));
    return settings;
}

O Current()
{
    O options;
    options.SetCourseEnabled(false);  // overwritten: proves the getter fills every field
    ZYLTPVisualizationSettings::GetInstance()->GetVisualizationOptions(&options);
    return options;
}

} // namespace

class tst_ZYLTPVisualizationSettings : public QObject {
    Q_OBJECT

private slots:
    void init() { ZYLTPVisualizationSettings::GetInstance()->RevertToDefaults(); }

    void vectorBitsNameTheirAttributes()
    {
        O options;
        QCOMPARE(O::GetVectorElement(O::LayingDirection), O::TangentVectorElement);
        QCOMPARE(O::GetVectorElement(O::SideDirection), O::RollerAxisElement);
        QCOMPARE(O::GetVectorElement(O::ToolAxis), O::ToolAxisElement);
        QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, O::GetVectorElement(O::ToolAxisAndLayingDirection));
        // The three vectors are told apart by colour by default; none is the colour the
        // selection highlights compare against.
        const QColor colours[] = {options.GetLayingDirectionGraphicAttributes().GetColor(),
                                  options.GetSideDirectionGraphicAttributes().GetColor(),
                                  options.GetToolAxisGraphicAttributes().GetColor()};
        QVERIFY(colours[0] != colours[1] && colours[1] != colours[2] && colours[0] != colours[2]);
        QVERIFY(colours[2] != QColor(255, 0, 0) && colours[2] != QColor(255, 128, 0));
    }

    void persistedValuesReadBack()
    {
        ZYLTPVisualizationSettings *settings = ZYLTPVisualizationSettings::GetInstance();
        O chosen;
        for (const Change &change : Changes())
            change.apply(chosen);
        settings->SetVisualizationOptions(chosen);
        QCOMPARE(Current(), chosen);

        // What another session finds in the file: read it, start from the defaults, put the
        // file back and read it in.
        QVariantMap stored;
        {
            const auto file = File();
            for (const QString &key : file->allKeys())
                stored.insert(key, file->value(key));
        }
        QVERIFY(!stored.isEmpty());
        settings->RevertToDefaults();
        QCOMPARE(Current(), O());
        {
            const auto file = File();
            for (auto it = stored.cbegin(); it != stored.cend(); ++it)
                file->setValue(it.key(), it.value());
        }
        QSignalSpy changed(settings, &ZYLTPVisualizationSettings::OptionsChanged);
        settings->Reload();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(Current(), chosen);
    }

    void unreadableValuesKeepTheDefaults_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("text");
        QTest::newRow("vectors out of range") << "layingVectors" << "9";
        QTest::newRow("negative tow width") << "towWidth" << "-2";
        QTest::newRow("bad colour") << "attributes/toolAxis" << "#zzzzzz 1 5 0 0 1";
        QTest::newRow("transparency beyond 1") << "attributes/toolAxis" << "#ff0000 1 5 2 0 1";
        QTest::newRow("missing fields") << "attributes/tipPoint" << "#ff0000 1 5";
    }
    void unreadableValuesKeepTheDefaults()
    {
        QFETCH(QString, key);
        QFETCH(QString, text);
        File()->setValue(key, text);
        QSignalSpy changed(ZYLTPVisualizationSettings::GetInstance(), &ZYLTPVisualizationSettings::OptionsChanged);
        ZYLTPVisualizationSettings::GetInstance()->Reload();
        QCOMPARE(changed.count(), 0);
        QCOMPARE(Current(), O());
    }
};

QTEST_GUILESS_MAIN(tst_ZYLTPVisualizationSettings)
#include "tst_ZYLTPVisualizationSettings.moc"
