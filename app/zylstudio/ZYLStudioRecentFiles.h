// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QObject>
#include <QStringList>

/// The program files opened or saved last, newest first, at most `MaxCount` of them.
///
/// The list is kept with `QSettings` in the host's settings file
/// (`ZYLSysSettings::GetSettingsFilePath()`, so ZYL_SETTINGS_DIR moves it too), group
/// "ZYLStudio", key "recentFiles", and read afresh on every call, so that several studios share
/// it. Entries are absolute, cleaned paths; a stored value that is not a list of names, empty
/// or relative names, duplicates and entries beyond `MaxCount` are dropped when read.
class ZYLStudioRecentFiles : public QObject {
    Q_OBJECT
public:
    static constexpr int MaxCount = 8;

    explicit ZYLStudioRecentFiles(QObject *parent = nullptr);
    ~ZYLStudioRecentFiles() override;

    /// Returns the files, newest first.
    QStringList GetFiles() const;
    /// Puts `fileName` first (moving it up when listed), dropping the oldest entry beyond
    /// `MaxCount`; emits `Changed`. Does nothing for an empty name.
    void Add(const QString &fileName);
    /// Takes `fileName` out of the list; emits `Changed` when it was listed.
    void Remove(const QString &fileName);
    /// Empties the list; emits `Changed` when it was not empty.
    void Clear();

signals:
    void Changed();

private:
    void Store(const QStringList &files);
};
