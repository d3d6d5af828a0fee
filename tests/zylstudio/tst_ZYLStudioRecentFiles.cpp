// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The recent program files: order, limit, removal and what is read back from the settings file.
#include "ZYLStudioRecentFiles.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class tst_ZYLStudioRecentFiles : public QObject {
    Q_OBJECT
private slots:
    void init();

    void keepsAtMostEightAndRemoves();

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

QTEST_GUILESS_MAIN(tst_ZYLStudioRecentFiles)
#include "tst_ZYLStudioRecentFiles.moc"
