// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The recent program files: order, limit, removal and what is read back from the settings file.
#include "ZYLStudioRecentFiles.h"

#include "ZYLSysSettings.h"

#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class tst_ZYLStudioRecentFiles : public QObject {
    Q_OBJECT
private slots:
    void init();

    void newestFirstWithoutDuplicates();
    void keepsAtMostEightAndRemoves();
    void storedValue_data();
    void storedValue();

private:
    QString Path(const QString &name) const { return QDir::cleanPath(m_dir->filePath(name)); }
    std::unique_ptr<QTemporaryDir> m_dir;
};

void tst_ZYLStudioRecentFiles::init() {
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    // Every test gets a settings file of its own.
    qputenv("ZYL_SETTINGS_DIR", m_dir->filePath(QStringLiteral("settings")).toLocal8Bit());
}

void tst_ZYLStudioRecentFiles::newestFirstWithoutDuplicates() {
    ZYLStudioRecentFiles recent;
    QSignalSpy changed(&recent, &ZYLStudioRecentFiles::Changed);
    recent.Add(Path("a.zyltp.json"));
    recent.Add(Path("b.zyltp.json"));
    // The same file by another spelling of its path moves up instead of appearing twice.
    recent.Add(m_dir->path() + QStringLiteral("/sub/../a.zyltp.json"));
    recent.Add(QString());
    QCOMPARE(recent.GetFiles(), (QStringList{Path("a.zyltp.json"), Path("b.zyltp.json")}));
    QCOMPARE(changed.count(), 3);
    // Another studio reads the same list from the settings file that ZYL_SETTINGS_DIR names.
    QCOMPARE(ZYLStudioRecentFiles().GetFiles(), recent.GetFiles());
    QVERIFY(ZYLSysSettings::GetSettingsFilePath().startsWith(m_dir->path()));
}

void tst_ZYLStudioRecentFiles::keepsAtMostEightAndRemoves() {
    ZYLStudioRecentFiles recent;
    for (int i = 0; i < 11; ++i)
        recent.Add(Path(QStringLiteral("%1.zyltp.json").arg(i)));
    QStringList files = recent.GetFiles();
    QCOMPARE(files.size(), ZYLStudioRecentFiles::MaxCount);
    QCOMPARE(files.first(), Path("10.zyltp.json"));
    QCOMPARE(files.last(), Path("3.zyltp.json"));

    QSignalSpy changed(&recent, &ZYLStudioRecentFiles::Changed);
    recent.Remove(Path("unknown.zyltp.json"));
    recent.Remove(Path("10.zyltp.json"));
    files.removeFirst();
    QCOMPARE(recent.GetFiles(), files);
    recent.Clear();
    recent.Clear();
    QVERIFY(recent.GetFiles().isEmpty());
    QCOMPARE(changed.count(), 2);
}

void tst_ZYLStudioRecentFiles::storedValue_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("one name") << QVariant(QStringLiteral("/p/one.zyltp.json"))
                              << QStringList{QStringLiteral("/p/one.zyltp.json")};
    QTest::newRow("empty and repeated names dropped")
        << QVariant(QStringList{"/p/a.zyltp.json", "", "/p/a.zyltp.json", "/p/b.zyltp.json"})
        << QStringList{"/p/a.zyltp.json", "/p/b.zyltp.json"};
    QTest::newRow("a number is no list") << QVariant(42) << QStringList{};
}

void tst_ZYLStudioRecentFiles::storedValue() {
    QFETCH(QVariant, stored);
    QFETCH(QStringList, expected);
    {
        QSettings settings(ZYLSysSettings::GetSettingsFilePath(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("ZYLStudio/recentFiles"), stored);
    }
    ZYLStudioRecentFiles recent;
    QCOMPARE(recent.GetFiles(), expected);
}

QTEST_GUILESS_MAIN(tst_ZYLStudioRecentFiles)
#include "tst_ZYLStudioRecentFiles.moc"
