// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QObject>

/// Keeps the mouse wheel from changing a value by accident. Over a spin box or a combo box
/// that does not have the keyboard focus, the wheel scrolls what holds the field (a panel's
/// scroll area) instead of turning it; once the field has the focus (a click into it), the
/// wheel turns it as usual; the wheel alone no longer gives it the focus. Installed on the
/// application, it guards every field shown for the first time afterwards, the module's
/// panels included.
class ZYLStudioWheelGuard : public QObject {
    Q_OBJECT
public:
    explicit ZYLStudioWheelGuard(QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
