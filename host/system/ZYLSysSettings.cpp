// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysSettings.h"

#include "ZYLSysException.h"
#include "ZYLSysLogging.h"
#include "ZYLSysSettingsValue.h"

#include <QDir>
#include <QMetaProperty>
#include <QScopedValueRollback>
#include <QSettings>
#include <QStandardPaths>

struct ZYLSysSettings::Data {
    QByteArray group;
    bool restored = false;
    bool restoring = false;
};

namespace {

QList<ZYLSysSettings *> &LiveSettings()
{
    static QList<ZYLSysSettings *> live;
    return live;
}

QString SettingsFolder()
{
    const QString overridden = qEnvironmentVariable("ZYL_SETTINGS_DIR");
    if (!overridden.isEmpty())
        return overridden;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/ZYL");
}

// One QSettings per operation: Qt shares the parsed file between instances and re-reads it
// when it changed on disk, so this is cheap and always follows ZYL_SETTINGS_DIR.
std::unique_ptr<QSettings> OpenSettings(const QByteArray &group)
{
    auto settings = std::make_unique<QSettings>(ZYLSysSettings::GetSettingsFilePath(),
                                                QSettings::IniFormat);
    if (settings->status() == QSettings::FormatError)
        qCWarning(lcZYLSystem) << "Settings file" << settings->fileName()
                               << "is damaged; values that cannot be read keep their defaults";
    settings->beginGroup(QString::fromUtf8(group));
    return settings;
}

void Sync(QSettings &settings)
{
    settings.sync();
    if (settings.status() == QSettings::AccessError)
        qCWarning(lcZYLSystem) << "Cannot write the settings file" << settings.fileName();
}

} // namespace

ZYLSysSettings::ZYLSysSettings(const QByteArray &group, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Data>())
{
    if (group.isEmpty())
        throw ZYLSysException(tr("A settings group needs a name."));
    d->group = group;
    LiveSettings().append(this);
    // The subclass's properties exist only once its constructor has finished; restoring
    // from the event loop is the earliest moment the base class can do it by itself.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!d->restored)
                Restore();
        },
        Qt::QueuedConnection);
}

ZYLSysSettings::~ZYLSysSettings()
{
    LiveSettings().removeOne(this);
}

const QByteArray &ZYLSysSettings::GetGroup() const
{
    return d->group;
}

void ZYLSysSettings::UpdateSetting(const QByteArray &key, const QVariant &value)
{
    if (key.isEmpty())
        throw ZYLSysException(tr("A setting of group \"%1\" needs a key.").arg(QString::fromUtf8(d->group)));
    if (!d->restoring) {
        QDir().mkpath(SettingsFolder());
        const std::unique_ptr<QSettings> settings = OpenSettings(d->group);
        if (value.isValid())
            settings->setValue(QString::fromUtf8(key), value);
        else
            settings->remove(QString::fromUtf8(key));
        Sync(*settings);
    }
    emit SettingChanged(key, value);
}

QVariant ZYLSysSettings::GetValue(const QByteArray &key, const QVariant &defaultValue) const
{
    const std::unique_ptr<QSettings> settings = OpenSettings(d->group);
    const QVariant stored = settings->value(QString::fromUtf8(key));
    if (!stored.isValid() || !defaultValue.isValid())
        return stored.isValid() ? stored : defaultValue;
    QVariant converted;
    if (ZYLSysSettingsValue::Convert(stored, defaultValue.metaType(), QMetaEnum(), &converted))
        return converted;
    qCDebug(lcZYLSystem) << "Setting" << d->group + '/' + key << "holds" << stored
                         << "which is not a" << defaultValue.metaType().name() << "; default used";
    return defaultValue;
}

void ZYLSysSettings::RevertToDefaults()
{
    const std::unique_ptr<QSettings> settings = OpenSettings(d->group);
    // remove("") inside a group removes the whole group.
    settings->remove(QString());
    Sync(*settings);
    emit SettingsReverted();
}

void ZYLSysSettings::Restore()
{
    d->restored = true;
    const std::unique_ptr<QSettings> settings = OpenSettings(d->group);
    const QScopedValueRollback<bool> restoring(d->restoring, true);
    const QMetaObject *meta = metaObject();
    // Only properties declared by subclasses are settings; QObject's objectName is not.
    for (int index = staticMetaObject.propertyCount(); index < meta->propertyCount(); ++index) {
        const QMetaProperty property = meta->property(index);
        const QString key = QString::fromLatin1(property.name());
        if (!property.isWritable() || !settings->contains(key))
            continue;
        const QVariant stored = settings->value(key);
        QVariant converted;
        if (!ZYLSysSettingsValue::Convert(stored, property.metaType(), property.enumerator(),
                                          &converted)) {
            qCDebug(lcZYLSystem) << "Setting" << d->group + '/' + property.name() << "holds"
                                 << stored << "which does not fit the property; default kept";
            continue;
        }
        // A setter that throws must not stop the others, nor escape a restore that the event
        // loop or the host's initialisation started.
        try {
            if (!property.write(this, converted))
                qCDebug(lcZYLSystem) << "Property" << property.name() << "refused" << converted;
        } catch (const std::exception &error) {
            qCWarning(lcZYLSystem) << "Restoring" << property.name() << "failed:" << error.what();
        } catch (...) {
            qCWarning(lcZYLSystem) << "Restoring" << property.name() << "failed";
        }
    }
}

bool ZYLSysSettings::IsRestored() const
{
    return d->restored;
}

void ZYLSysSettings::RestoreAll()
{
    // A restore may create or destroy settings objects through the setters it calls.
    const QList<ZYLSysSettings *> live = LiveSettings();
    for (ZYLSysSettings *settings : live) {
        if (LiveSettings().contains(settings))
            settings->Restore();
    }
}

ZYLSysSettings *ZYLSysSettings::Find(const char *className)
{
    for (ZYLSysSettings *settings : LiveSettings()) {
        if (qstrcmp(settings->metaObject()->className(), className) == 0)
            return settings;
    }
    return nullptr;
}

QString ZYLSysSettings::GetSettingsFilePath()
{
    return SettingsFolder() + QStringLiteral("/zyl.ini");
}
