// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioWheelGuard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace {

bool IsField(const QObject *object)
{
    return qobject_cast<const QAbstractSpinBox *>(object) || qobject_cast<const QComboBox *>(object);
}

} // namespace

ZYLStudioWheelGuard::ZYLStudioWheelGuard(QObject *parent) : QObject(parent) {}

bool ZYLStudioWheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Polish:
        // A field would take the focus from the wheel before anyone could ask whether it had it.
        if (auto *field = qobject_cast<QWidget *>(watched); field && IsField(field) && field->focusPolicy() == Qt::WheelFocus)
            field->setFocusPolicy(Qt::StrongFocus);
        return false;
    case QEvent::Wheel:
        if (auto *field = qobject_cast<QWidget *>(watched); field && IsField(field) && !field->hasFocus()) {
            // Kept from the field but left unaccepted: the application hands a wheel event that
            // no one accepted on to the parents, up to the scroll area.
            event->ignore();
            return true;
        }
        return false;
    default:
        return false;
    }
}
