// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <QByteArray>
#include <QObject>
#include <QVariant>

#include <memory>

/// Base of persisted settings objects: one group of values in the user's settings file.
///
/// Storage: an INI file "zyl.ini" in the folder named by the environment variable
/// ZYL_SETTINGS_DIR, or else in "ZYL" under the user's generic configuration folder. Every
/// call opens the file afresh, so a change of ZYL_SETTINGS_DIR takes effect at once. A file
/// that cannot be read or written never throws: reads fall back to defaults, failed writes are
/// logged as warnings.
///
/// A subclass declares its values as Qt properties whose names are the settings keys; its
/// setters call `UpdateSetting`. Reading back (`Restore`) writes each persisted key of the
/// group into the property of the same name through the meta-object, so the subclass's setter
/// runs. A persisted value that does not convert cleanly to the property's type (a bool that
/// is not true/false/1/0, a number that is not a number, an enumerator that does not exist)
/// is skipped and the property keeps its current value (the default).
///
/// When restoring happens: the base constructor cannot see the subclass's properties, so it
/// queues one `Restore` on the event loop (skipped if the object was restored before it runs).
/// A subclass that needs its values at once calls `Restore()` at the end of its own
/// constructor. The host calls `RestoreAll()` at initialisation (`ZYLSysRunInitCallbacks` does
/// it before running the callbacks). While a restore runs, `UpdateSetting` called from the
/// setters does not write the file back (the values came from it) but still emits
/// `SettingChanged`.
class ZYLSYSTEM_EXPORT ZYLSysSettings : public QObject {
    Q_OBJECT
public:
    ~ZYLSysSettings() override;

    /// Returns the settings group.
    const QByteArray &GetGroup() const;

    /// Persists one value under the group and emits `SettingChanged`. An invalid QVariant
    /// removes the key. Throws ZYLSysException for an empty key.
    void UpdateSetting(const QByteArray &key, const QVariant &value);

    /// Returns the persisted value of the key converted to the type of the default, or the
    /// default when the key is missing or its value does not convert cleanly. With an invalid
    /// default, returns the stored value as read (an invalid QVariant when missing).
    QVariant GetValue(const QByteArray &key, const QVariant &defaultValue = QVariant()) const;

    /// Removes the persisted values of the group and emits `SettingsReverted`. A subclass sets
    /// its defaults first and calls this last.
    virtual void RevertToDefaults();

    /// Writes the persisted values of the group into the subclass's properties (see the class
    /// description). Never throws.
    void Restore();
    /// Returns whether `Restore` has run for this object.
    bool IsRestored() const;

    /// Restores every live settings object.
    static void RestoreAll();
    /// Returns the live settings object of the class `className` (its meta-object's class
    /// name), or null. Lets a host reach the settings of a library it loads at run time
    /// without linking it.
    static ZYLSysSettings *Find(const char *className);
    /// Returns the path of the settings file in use.
    static QString GetSettingsFilePath();

signals:
    /// Emitted by `UpdateSetting`.
    void SettingChanged(const QByteArray &key, const QVariant &value);
    /// Emitted by the base `RevertToDefaults`.
    void SettingsReverted();

protected:
    /// Creates the settings object of a group. Throws ZYLSysException for an empty group (it
    /// would make a revert wipe the whole file).
    explicit ZYLSysSettings(const QByteArray &group, QObject *parent = nullptr);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
