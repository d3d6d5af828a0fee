// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The persisted view settings of the tool path edit environment.
#include "ZYLTPEditUISettings.h"

#include "ZYLStudioSession.h"

#include <QMetaProperty>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace {

// Set in the environment of the program's own child process, which checks what a new
// settings object reads back.
constexpr char ChildMarker[] = "ZYLTP_SETTINGS_READ_BACK";

struct Setting {
    const char *key;
    QVariant defaultValue;
    QVariant otherValue;
    std::function<QVariant(const ZYLTPEditUISettings &)> get;
    std::function<void(ZYLTPEditUISettings &, const QVariant &)> set;
};

const QList<Setting> &Settings() {
    using S = ZYLTPEditUISettings;
    static const QList<Setting> settings{
        {"viewSurface", false, true, &S::IsViewSurface, [](S &s, const QVariant &v) { s.SetViewSurface(v.toBool()); }},
        {"viewPlyBoundary", false, true, &S::IsViewPlyBoundary,
         [](S &s, const QVariant &v) { s.SetViewPlyBoundary(v.toBool()); }},
        {"viewMachineHead", false, true, &S::IsViewMachineHead,
         [](S &s, const QVariant &v) { s.SetViewMachineHead(v.toBool()); }},
        {"viewRoller", false, true, &S::IsViewRoller, [](S &s, const QVariant &v) { s.SetViewRoller(v.toBool()); }},
        {"viewCourseMode", QStringLiteral("ViewCourse"), QStringLiteral("HideCourse"), &S::GetViewCourseMode,
         [](S &s, const QVariant &v) { s.SetViewCourseMode(v.toString()); }},
        {"viewLayingPointsMode", QStringLiteral("ViewLayingPointsWithToolAxis"),
         QStringLiteral("ViewLayingPointsWithAllAxes"), &S::GetViewLayingPointsMode,
         [](S &s, const QVariant &v) { s.SetViewLayingPointsMode(v.toString()); }},
        {"viewCourseLinksMode", QStringLiteral("ViewCourseLinksWithPointsOnly"), QStringLiteral("HideCourseLinks"),
         &S::GetViewCourseLinksMode, [](S &s, const QVariant &v) { s.SetViewCourseLinksMode(v.toString()); }},
        {"viewLinkPointsMode", QStringLiteral("ViewLinkPointsOnly"), QStringLiteral("ViewLinkingPointsWithAllAxes"),
         &S::GetViewLinkPointsMode, [](S &s, const QVariant &v) { s.SetViewLinkPointsMode(v.toString()); }},
    };
    return settings;
}

// One row per setting, carrying its index in Settings().
void AddSettingRows() {
    QTest::addColumn<int>("index");
    for (int i = 0; i < Settings().size(); ++i)
        QTest::newRow(Settings().at(i).key) << i;
}

bool IsChild() {
    return qEnvironmentVariableIsSet(ChildMarker);
}

} // namespace

class tst_ZYLTPEditUISettings : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void freshObjectHasDefaultsInDeclaredProperties_data();
    void freshObjectHasDefaultsInDeclaredProperties();
    void everyWritePersists_data();
    void everyWritePersists();
    void revertRestoresDefaultsBeforeTheBaseReverts();
    void newInstanceReadsPersistedValuesBack();

private:
    QTemporaryDir m_settingsDir;
    ZYLStudioSession m_session;
};

void tst_ZYLTPEditUISettings::initTestCase() {
    // A folder of its own, so that values left by an earlier run cannot leak in; the child
    // process inherits it.
    if (!IsChild()) {
        QVERIFY(m_settingsDir.isValid());
        qputenv("ZYL_SETTINGS_DIR", QFile::encodeName(m_settingsDir.path()));
    }
    // The host loads the module and runs its initialisation. Not in the child: the host's
    // graphics manager resets the view modes when it is made, and the child checks what the
    // settings object itself reads back.
    if (!IsChild())
        QVERIFY2(m_session.Start(), qPrintable(m_session.GetErrorString()));
}

void tst_ZYLTPEditUISettings::cleanup() {
    if (!IsChild())
        ZYLTPEditUISettings::GetInstance()->RevertToDefaults();
}

void tst_ZYLTPEditUISettings::freshObjectHasDefaultsInDeclaredProperties_data() {
    AddSettingRows();
}

// Runs first, while the object and the settings file are fresh.
void tst_ZYLTPEditUISettings::freshObjectHasDefaultsInDeclaredProperties() {
    QFETCH(int, index);
    const Setting &setting = Settings().at(index);
    const ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    QCOMPARE(setting.get(*settings), setting.defaultValue);
    QCOMPARE(settings->GetGroup(), QByteArray("ZYLToolPathUI"));

    // Declared in this order, of the value's type, without notify signals, slots or signals.
    const QMetaObject &meta = ZYLTPEditUISettings::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), Settings().size());
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    const QMetaProperty property = meta.property(meta.propertyOffset() + index);
    QCOMPARE(property.name(), setting.key);
    QCOMPARE(property.metaType(), setting.defaultValue.metaType());
    QCOMPARE(property.read(settings), setting.defaultValue);
    QVERIFY(property.isWritable());
    QVERIFY(!property.hasNotifySignal());
}

void tst_ZYLTPEditUISettings::everyWritePersists_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QVariant>("value");
    for (int i = 0; i < Settings().size(); ++i) {
        const Setting &setting = Settings().at(i);
        QTest::newRow(setting.key) << i << setting.otherValue;
        // Modes are stored as given: a mode this build does not know may come from a newer one.
        if (setting.defaultValue.typeId() == QMetaType::QString)
            QTest::addRow("%s unknown", setting.key) << i << QVariant(QStringLiteral("NoSuchViewMode"));
    }
}

// The setter and a property write both store and announce the value, even when it is the
// current one.
void tst_ZYLTPEditUISettings::everyWritePersists() {
    QFETCH(int, index);
    QFETCH(QVariant, value);
    const Setting &setting = Settings().at(index);
    ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    QSignalSpy changed(settings, &ZYLSysSettings::SettingChanged);

    setting.set(*settings, setting.defaultValue);
    QVERIFY(settings->setProperty(setting.key, value));
    QCOMPARE(settings->GetValue(setting.key), value);
    setting.set(*settings, value);

    const QList<QVariant> expected{setting.defaultValue, value, value};
    QCOMPARE(changed.count(), expected.size());
    for (int i = 0; i < changed.count(); ++i) {
        QCOMPARE(changed.at(i).at(0).toByteArray(), QByteArray(setting.key));
        QCOMPARE(changed.at(i).at(1), expected.at(i));
    }
    QCOMPARE(setting.get(*settings), value);
}

void tst_ZYLTPEditUISettings::revertRestoresDefaultsBeforeTheBaseReverts() {
    ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    for (const Setting &setting : Settings())
        setting.set(*settings, setting.otherValue);

    // What a receiver of the base's announcement reads.
    QList<QVariant> seenByReceivers;
    connect(settings, &ZYLSysSettings::SettingsReverted, this, [&seenByReceivers, settings] {
        for (const Setting &setting : Settings())
            seenByReceivers.append(setting.get(*settings));
    });
    QSignalSpy changed(settings, &ZYLSysSettings::SettingChanged);
    QSignalSpy reverted(settings, &ZYLSysSettings::SettingsReverted);

    settings->RevertToDefaults();
    disconnect(settings, &ZYLSysSettings::SettingsReverted, this, nullptr);

    QCOMPARE(reverted.count(), 1);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(seenByReceivers.size(), Settings().size());
    for (int i = 0; i < Settings().size(); ++i) {
        const Setting &setting = Settings().at(i);
        QCOMPARE(seenByReceivers.at(i), setting.defaultValue);
        QCOMPARE(setting.get(*settings), setting.defaultValue);
        // The base removed the persisted value.
        QVERIFY2(!settings->GetValue(setting.key).isValid(), setting.key);
    }
}

// The object is one per process, so a new one is made by a child run of this program, which
// checks the values in this same test function (see IsChild).
void tst_ZYLTPEditUISettings::newInstanceReadsPersistedValuesBack() {
    if (IsChild()) {
        const ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
        for (const Setting &setting : Settings()) {
            QCOMPARE(settings->property(setting.key), setting.otherValue);
            QCOMPARE(setting.get(*settings), setting.otherValue);
        }
        return;
    }
    ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    for (const Setting &setting : Settings())
        setting.set(*settings, setting.otherValue);

    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(ChildMarker), QStringLiteral("1"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("newInstanceReadsPersistedValuesBack")});
    QVERIFY(child.waitForFinished(60000));
    const QByteArray output = child.readAll();
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, output.constData());
}

QTEST_MAIN(tst_ZYLTPEditUISettings)
#include "tst_ZYLTPEditUISettings.moc"
