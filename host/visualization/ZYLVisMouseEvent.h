// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisMouseContext.h"

#include <QMetaType>
#include <qnamespace.h>

/// A mouse action in the 3-D view, delivered by ZYLVisEnvironment::MouseEvent.
class ZYLVISUALIZATION_EXPORT ZYLVisMouseEvent {
public:
    enum ActionType : int { Moved = 1, Clicked = 2, Entered = 8, Left = 16 };

    ZYLVisMouseEvent() = default;
    ZYLVisMouseEvent(ActionType type, const ZYLVisMouseContext &context, Qt::KeyboardModifiers modifiers = {});

    ActionType GetActionType() const { return m_type; }
    const ZYLVisMouseContext &GetContext() const { return m_context; }
    Qt::KeyboardModifiers GetModifiers() const { return m_modifiers; }

private:
    ActionType m_type = Moved;
    ZYLVisMouseContext m_context;
    Qt::KeyboardModifiers m_modifiers;
};

Q_DECLARE_METATYPE(ZYLVisMouseEvent)
