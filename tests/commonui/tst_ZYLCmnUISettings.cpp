// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnUISettings.h"

#include "ZYLSysException.h"

#include <QSettings>
#include <QTest>
#include <QWidget>

#include <memory>

namespace {

// Two panel classes, built the same way, to tell windows apart by class.
class CoursePanel : public QWidget {
    Q_OBJECT
};
class PointsPanel : public QWidget {
    Q_OBJECT
};

// A child that, like the panels, reads its state at start and stores it from its destructor,
// which runs while the window around it is already being torn down.
class HeaderBar : public QWidget {
    Q_OBJECT
public:
    explicit HeaderBar(QWidget *parent)
        : QWidget(parent)
    {
        setObjectName(QStringLiteral("header"));
        checked = ZYLCmnUISettings::GetInstance()->GetValue(this, "Button_Graph", false).toBool();
    }
    ~HeaderBar() override { ZYLCmnUISettings::GetInstance()->SetValue(this, "Button_Graph", checked); }
    bool checked = false;
};

// Builds window "panel" > unnamed frame > "CourseTable" (returned).
template <typename Panel>
QWidget *BuildPanel(std::unique_ptr<QWidget> &window, const QString &tableName = QStringLiteral("CourseTable"))
{
    window = std::make_unique<Panel>();
    window->setObjectName(QStringLiteral("panel"));
    auto *frame = new QWidget(window.get());
    auto *table = new QWidget(frame);
    table->setObjectName(tableName);
    return table;
}

} // namespace

class tst_ZYLCmnUISettings : public QObject {
    Q_OBJECT
private slots:
    void init();
    void survivesNewInstance_data();
    void survivesNewInstance();
    void otherPathsDoNotSeeIt_data();
    void otherPathsDoNotSeeIt();
    void wrongTypeGivesDefault_data();
    void wrongTypeGivesDefault();
    void storedFromDestructor();
    void persistedToFile();
    void refusesBadArguments();
};

void tst_ZYLCmnUISettings::init()
{
    ZYLCmnUISettings::GetInstance()->RevertToDefaults();
}

void tst_ZYLCmnUISettings::survivesNewInstance_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("defaultValue");
    QTest::newRow("bool") << QByteArray("Button_Select") << QVariant(false) << QVariant(true);
    QTest::newRow("double") << QByteArray("LastUsedCollisionTolSettingKey") << QVariant(2.5) << QVariant(10.0);
    QTest::newRow("key with space") << QByteArray("CourseTable_Used tows") << QVariant(false) << QVariant(true);
    QTest::newRow("text") << QByteArray("mode") << QVariant(QStringLiteral("a, b/c")) << QVariant(QString());
}

void tst_ZYLCmnUISettings::survivesNewInstance()
{
    QFETCH(QByteArray, key);
    QFETCH(QVariant, value);
    QFETCH(QVariant, defaultValue);
    ZYLCmnUISettings *settings = ZYLCmnUISettings::GetInstance();
    std::unique_ptr<QWidget> first;
    QWidget *table = BuildPanel<CoursePanel>(first);
    QCOMPARE(settings->GetValue(table, key, defaultValue), defaultValue);
    settings->SetValue(table, key, value);
    first.reset();

    std::unique_ptr<QWidget> second;
    table = BuildPanel<CoursePanel>(second);
    const QVariant read = settings->GetValue(table, key, defaultValue);
    QCOMPARE(read.metaType(), defaultValue.metaType());
    QCOMPARE(read, value);
}

void tst_ZYLCmnUISettings::otherPathsDoNotSeeIt_data()
{
    QTest::addColumn<bool>("otherClass");
    QTest::addColumn<QString>("tableName");
    QTest::newRow("other object name") << false << QStringLiteral("LinkTable");
    QTest::newRow("other window class") << true << QStringLiteral("CourseTable");
}

void tst_ZYLCmnUISettings::otherPathsDoNotSeeIt()
{
    QFETCH(bool, otherClass);
    QFETCH(QString, tableName);
    ZYLCmnUISettings *settings = ZYLCmnUISettings::GetInstance();
    std::unique_ptr<QWidget> first;
    settings->SetValue(BuildPanel<CoursePanel>(first), "Button_Graph", false);

    std::unique_ptr<QWidget> other;
    QWidget *table = otherClass ? BuildPanel<PointsPanel>(other, tableName) : BuildPanel<CoursePanel>(other, tableName);
    QCOMPARE(settings->GetValue(table, "Button_Graph", true), QVariant(true));
    // The window itself is another widget on the path.
    QCOMPARE(settings->GetValue(first.get(), "Button_Graph", true), QVariant(true));
}

void tst_ZYLCmnUISettings::wrongTypeGivesDefault_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("defaultValue");
    QTest::newRow("text for double") << QVariant("abc") << QVariant(10.0);
    QTest::newRow("text for bool") << QVariant("abc") << QVariant(false);
    QTest::newRow("fraction for int") << QVariant(2.5) << QVariant(3);
    QTest::newRow("bool for double") << QVariant(true) << QVariant(10.0);
}

void tst_ZYLCmnUISettings::wrongTypeGivesDefault()
{
    QFETCH(QVariant, stored);
    QFETCH(QVariant, defaultValue);
    std::unique_ptr<QWidget> window;
    QWidget *table = BuildPanel<CoursePanel>(window);
    ZYLCmnUISettings::GetInstance()->SetValue(table, "value", stored);
    QCOMPARE(ZYLCmnUISettings::GetInstance()->GetValue(table, "value", defaultValue), defaultValue);
}

void tst_ZYLCmnUISettings::storedFromDestructor()
{
    auto window = std::make_unique<CoursePanel>();
    window->setObjectName(QStringLiteral("panel"));
    auto *header = new HeaderBar(window.get());
    QVERIFY(!header->checked);
    header->checked = true;
    window.reset();

    window = std::make_unique<CoursePanel>();
    window->setObjectName(QStringLiteral("panel"));
    header = new HeaderBar(window.get());
    QVERIFY(header->checked);
}

void tst_ZYLCmnUISettings::persistedToFile()
{
    std::unique_ptr<QWidget> window;
    ZYLCmnUISettings::GetInstance()->SetValue(BuildPanel<CoursePanel>(window), "Button_Collision", true);
    QSettings file(ZYLSysSettings::GetSettingsFilePath(), QSettings::IniFormat);
    file.beginGroup(QStringLiteral("ZYLCommonUI"));
    const QStringList keys = file.allKeys();
    QCOMPARE(keys.size(), 1);
    QVERIFY2(keys.first().endsWith(QStringLiteral("/CourseTable/Button_Collision")), qPrintable(keys.first()));
    QCOMPARE(file.value(keys.first()).toBool(), true);
}

void tst_ZYLCmnUISettings::refusesBadArguments()
{
    ZYLCmnUISettings *settings = ZYLCmnUISettings::GetInstance();
    std::unique_ptr<QWidget> window;
    QWidget *table = BuildPanel<CoursePanel>(window);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, settings->SetValue(nullptr, "key", 1));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, settings->SetValue(table, QByteArray(), 1));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, settings->GetValue(nullptr, "key", 1));
    QSettings file(ZYLSysSettings::GetSettingsFilePath(), QSettings::IniFormat);
    file.beginGroup(QStringLiteral("ZYLCommonUI"));
    QVERIFY(file.allKeys().isEmpty());
}

QTEST_MAIN(tst_ZYLCmnUISettings)
#include "tst_ZYLCmnUISettings.moc"
