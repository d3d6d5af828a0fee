// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommonUIExport.h"
#include "ZYLSysSettings.h"

#include <QByteArray>
#include <QVariant>

#include <memory>

class QWidget;

/// Per-user values that panels keep per widget, persisted across sessions.
///
/// A value is stored under a key of its widget. The widget is identified by the class name
/// of its window (`QWidget::window()`) and the path of object names from the window down
/// to the widget itself, both ends included: for a panel "CourseView" inside a dialog
/// "EditDialog" of class ZYLTPEditDialog the key "Button_Graph" is stored as
/// "ZYLTPEditDialog/EditDialog/CourseView/Button_Graph". An object without a name counts by
/// its class name, and '/' or '\' in a name become '_'. So a new instance of the same panel,
/// placed the same way, finds the values of the one before, while a widget on another path
/// does not. Two unnamed siblings of one class share their values.
///
/// A widget's identity is worked out at its first use and kept until the widget is
/// destroyed. Values written from a destructor, when the window around the widget may be
/// partly torn down already, therefore land where the values read at start came from.
///
/// Values go to the host's settings file through `ZYLSysSettings`, group "ZYLCommonUI"
/// (`RevertToDefaults` forgets all of them). Reading converts the stored value to the type
/// of the default; a value that does not convert cleanly (text that is not a number for a
/// numeric default, text other than true/false/1/0 for a boolean) gives the default. An
/// invalid default returns the stored value as it is. GUI thread only.
class ZYLCOMMONUI_EXPORT ZYLCmnUISettings : public ZYLSysSettings {
    Q_OBJECT
public:
    /// Returns the process-wide instance.
    static ZYLCmnUISettings *GetInstance();
    ~ZYLCmnUISettings() override;

    /// Returns the value stored for `widget` under `key`, converted to the type of
    /// `defaultValue`, or `defaultValue` when none is stored or it has the wrong type.
    /// Throws ZYLSysException for a null widget or an empty key.
    QVariant GetValue(const QWidget *widget, const QByteArray &key, const QVariant &defaultValue);
    /// Stores `value` for `widget` under `key`; an invalid value removes the key. Throws
    /// ZYLSysException for a null widget or an empty key, storing nothing.
    void SetValue(const QWidget *widget, const QByteArray &key, const QVariant &value);

private:
    ZYLCmnUISettings();

    QByteArray GetWidgetKey(const QWidget *widget, const QByteArray &key);

    struct Data;
    std::unique_ptr<Data> d;
};
