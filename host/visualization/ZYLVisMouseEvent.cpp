// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisMouseEvent.h"

ZYLVisMouseEvent::ZYLVisMouseEvent(ActionType type, const ZYLVisMouseContext &context, Qt::KeyboardModifiers modifiers)
    : m_type(type), m_context(context), m_modifiers(modifiers)
{
}
