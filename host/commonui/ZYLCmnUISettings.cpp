// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnUISettings.h"

#include "ZYLSysException.h"

#include <QHash>
#include <QWidget>

struct ZYLCmnUISettings::Data {
    // Identity of each widget used so far, dropped when the widget is destroyed.
    QHash<const QWidget *, QByteArray> widgetPaths;
};

namespace {

QByteArray PathElement(const QObject *object)
{
    QByteArray name = object->objectName().toUtf8();
    if (name.isEmpty())
        name = object->metaObject()->className();
    // Slashes and backslashes would open sub-groups in the settings file.
    name.replace('/', '_');
    name.replace('\\', '_');
    return name;
}

QByteArray WidgetPath(const QWidget *widget)
{
    const QWidget *window = widget->window();
    QByteArrayList elements;
    for (const QWidget *step = widget; step; step = step->parentWidget()) {
        elements.prepend(PathElement(step));
        if (step == window)
            break;
    }
    elements.prepend(window->metaObject()->className());
    return elements.join('/');
}

} // namespace

ZYLCmnUISettings::ZYLCmnUISettings()
    : ZYLSysSettings("ZYLCommonUI")
    , d(std::make_unique<Data>())
{
}

ZYLCmnUISettings::~ZYLCmnUISettings() = default;

ZYLCmnUISettings *ZYLCmnUISettings::GetInstance()
{
    static ZYLCmnUISettings instance;
    return &instance;
}

QByteArray ZYLCmnUISettings::GetWidgetKey(const QWidget *widget, const QByteArray &key)
{
    if (!widget)
        throw ZYLSysException(tr("A per-widget setting needs a widget."));
    if (key.isEmpty())
        throw ZYLSysException(tr("A setting of widget \"%1\" needs a key.").arg(widget->objectName()));
    auto found = d->widgetPaths.constFind(widget);
    if (found == d->widgetPaths.constEnd()) {
        found = d->widgetPaths.insert(widget, WidgetPath(widget));
        connect(widget, &QObject::destroyed, this, [this, widget] { d->widgetPaths.remove(widget); });
    }
    return *found + '/' + key;
}

QVariant ZYLCmnUISettings::GetValue(const QWidget *widget, const QByteArray &key, const QVariant &defaultValue)
{
    return ZYLSysSettings::GetValue(GetWidgetKey(widget, key), defaultValue);
}

void ZYLCmnUISettings::SetValue(const QWidget *widget, const QByteArray &key, const QVariant &value)
{
    UpdateSetting(GetWidgetKey(widget, key), value);
}
