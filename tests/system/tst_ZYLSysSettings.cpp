// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysException.h"
#include "ZYLSysSettings.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A settings object as modules write them: properties named like the keys, setters persist.
class TestSettings : public ZYLSysSettings {
    Q_OBJECT
    Q_PROPERTY(bool flag READ IsFlag WRITE SetFlag)
    Q_PROPERTY(QString mode READ GetMode WRITE SetMode)
    Q_PROPERTY(int count READ GetCount WRITE SetCount)
    Q_PROPERTY(double ratio READ GetRatio WRITE SetRatio)
    Q_PROPERTY(Shape shape READ GetShape WRITE SetShape)
public:
    enum Shape { Round, Square };
    Q_ENUM(Shape)

    explicit TestSettings(const QByteArray &group = "TestGroup") : ZYLSysSettings(group) {}

    bool IsFlag() const { return m_flag; }
    void SetFlag(bool value) { m_flag = value; Changed("flag", value); }
    QString GetMode() const { return m_mode; }
    void SetMode(const QString &value) { m_mode = value; Changed("mode", value); }
    int GetCount() const { return m_count; }
    void SetCount(int value) { m_count = value; Changed("count", value); }
    double GetRatio() const { return m_ratio; }
    void SetRatio(double value) { m_ratio = value; Changed("ratio", value); }
    Shape GetShape() const { return m_shape; }
    void SetShape(Shape value) { m_shape = value; Changed("shape", int(value)); }

    void RevertToDefaults() override
    {
        SetFlag(false);
        SetMode(QStringLiteral("ViewCourse"));
        SetCount(1);
        SetRatio(0.5);
        SetShape(Round);
        ZYLSysSettings::RevertToDefaults();
    }

    QStringList setterCalls;

private:
    void Changed(const QByteArray &key, const QVariant &value)
    {
        setterCalls.append(QString::fromLatin1(key));
        UpdateSetting(key, value);
    }

    bool m_flag = false;
    QString m_mode = QStringLiteral("ViewCourse");
    int m_count = 1;
    double m_ratio = 0.5;
    Shape m_shape = Round;
};

} // namespace

class tst_ZYLSysSettings : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> m_folder;

    void WriteFile(const QByteArray &content)
    {
        QFile file(ZYLSysSettings::GetSettingsFilePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("ZYL_SETTINGS_DIR", m_folder->path().toUtf8());
    }

    void roundTripThroughSecondInstance()
    {
        {
            TestSettings first;
            first.SetFlag(true);
            first.SetMode(QStringLiteral("HideCourse"));
            first.SetCount(7);
            first.SetRatio(0.25);
            first.SetShape(TestSettings::Square);
        }
        QFile file(m_folder->filePath("zyl.ini"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        QVERIFY(content.contains("[TestGroup]") && content.contains("count=7"));
        TestSettings second;
        // Restoring is queued by the base constructor: it happens once the event loop runs.
        QTRY_VERIFY(second.IsRestored());
        QCOMPARE(second.IsFlag(), true);
        QCOMPARE(second.GetMode(), QStringLiteral("HideCourse"));
        QCOMPARE(second.GetCount(), 7);
        QCOMPARE(second.GetRatio(), 0.25);
        QCOMPARE(second.GetShape(), TestSettings::Square);
    }

    void restoreConvertsText_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("expected"); // invalid: refused, the default stays
        const QVariant refused;
        QTest::newRow("bool upper case") << QByteArray("flag=TRUE") << QByteArray("flag") << QVariant(true);
        QTest::newRow("int fraction") << QByteArray("count=2.5") << QByteArray("count") << refused;
        QTest::newRow("enum key") << QByteArray("shape=Triangle") << QByteArray("shape") << refused;
        QTest::newRow("enum value") << QByteArray("shape=7") << QByteArray("shape") << refused;
    }

    void restoreConvertsText()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, property);
        QFETCH(QVariant, expected);
        WriteFile("[TestGroup]\n" + line + "\nmode=Kept\n");
        TestSettings settings;
        const QVariant before = settings.property(property.constData());
        settings.Restore();
        QCOMPARE(settings.property(property.constData()), expected.isValid() ? expected : before);
        QCOMPARE(settings.setterCalls.contains(QString::fromLatin1(property)), expected.isValid());
        // A bad value does not stop the good ones.
        QCOMPARE(settings.GetMode(), QStringLiteral("Kept"));
    }

    void corruptedFileFallsBack()
    {
        WriteFile(QByteArray("\x00\xff\xfe[[[TestGroup\nflag=\x01\x02\n[TestGroup\n=\n\xc3\x28", 36));
        TestSettings settings;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("damaged"));
        settings.Restore();
        QCOMPARE(settings.IsFlag(), false);
        QCOMPARE(settings.GetCount(), 1);
        // Writing replaces the damaged content with a readable file.
        settings.SetCount(5);
        TestSettings again;
        again.Restore();
        QCOMPARE(again.GetCount(), 5);
    }

    void unreadableFileNeverThrows()
    {
        // A folder where the file should be: nothing can be read or written.
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("zyl.ini")));
        TestSettings settings;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Cannot write"));
        settings.SetCount(8);
        settings.Restore();
        QCOMPARE(settings.GetValue("count", 42).toInt(), 42);
    }

    void updateSettingRefusesNamesAndRemovesKeys()
    {
        TestSettings settings;
        settings.SetCount(3);
        settings.UpdateSetting("count", QVariant());
        QVERIFY(!settings.GetValue("count").isValid());
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, settings.UpdateSetting(QByteArray(), 1));
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, TestSettings{QByteArray()});
    }
};

QTEST_GUILESS_MAIN(tst_ZYLSysSettings)
#include "tst_ZYLSysSettings.moc"
