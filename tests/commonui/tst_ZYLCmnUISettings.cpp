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
    void wrongTypeGivesDefault_data();
    void wrongTypeGivesDefault();
    void refusesBadArguments();
};

void tst_ZYLCmnUISettings::init()
{
    ZYLCmnUISettings::GetInstance()->RevertToDefaults();
}

void tst_ZYLCmnUISettings::wrongTypeGivesDefault_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("defaultValue");
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
