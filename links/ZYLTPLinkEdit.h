// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPVisualizationOptions.h"

#include <QObject>

#include <functional>

class QIcon;
class QStandardItem;
class QString;
class QVariant;

/// What the two link commands and their panels share: the links display, groups of model
/// edits run as one, and the rows of their selection lists.
class ZYLTPLinkEdit {
public:
    ZYLTPLinkEdit() = delete;

    /// Rebuilds the tool path nodes with the current options narrowed to the links (their
    /// lines, no linking points, no laying detail, no approach and retract), the link end
    /// points showing `endPointVectors`, and makes the course link nodes selectable.
    static void ShowLinks(ZYLTPVisualizationOptions::VectorsToDisplay endPointVectors);
    /// Returns the options `ShowLinks` draws with.
    static ZYLTPVisualizationOptions GetLinksOptions(ZYLTPVisualizationOptions::VectorsToDisplay endPointVectors);
    /// Rebuilds the tool path nodes with the current options.
    static void RestoreGraphics();

    /// Runs `edits` as one: in a transaction named `name` nested in the command's (on the
    /// current feature environment's container), kept when the edits return and rolled back
    /// when one of them throws (the exception then goes on to the caller), so that a failure
    /// half way changes nothing. Without a container the edits run as they are.
    static void Run(const QString &name, const std::function<void()> &edits);

    /// Returns the icon of the rows of the panels' selection lists.
    static QIcon GetRowIcon();
    /// Returns a new read-only row of a selection list that shows `text` (also as its tool tip)
    /// with `icon` and carries `value` under `Qt::UserRole`.
    static QStandardItem *NewRow(const QIcon &icon, const QString &text, const QVariant &value);

    /// Replaces `connection` by one of `sender`'s `signal` to `receiver`'s `slot` (none for a
    /// null sender), so that a handler that stopped half way never leaves two behind.
    template<class Sender, class Signal, class Receiver, class Slot>
    static void Reconnect(QMetaObject::Connection &connection, Sender *sender, Signal signal, Receiver *receiver,
                          Slot slot) {
        QObject::disconnect(connection);
        if (sender)
            connection = QObject::connect(sender, signal, receiver, slot);
    }
};
