// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdAction.h"
#include "ZYLCommandExport.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>

class ZYLVisSelectionFilter;

/// Publishes one action for as long as it lives, typically as a static object of a library:
/// the constructor appends the action to the controller's actions (`ActionsChanged`), the
/// destructor withdraws it from the controller (`ActionsChanged`) and deletes it. Safe for
/// libraries loaded and unloaded at run time, and during static initialisation.
///
/// A `QAction` can only exist with a QGuiApplication, so the `ZYLCmdAction` is made on first
/// demand (`GetAction()`, or the controller's `GetAction`, `GetActions`, `Trigger`) once one
/// exists; until then those return null (or leave the action out) and the publication only
/// holds its place in the publication order.
///
/// A key that is already published is refused with a warning: this publisher's action then
/// stays out of the controller (`IsPublished()` is false) and the first one keeps the key.
class ZYLCOMMAND_EXPORT ZYLCmdActionPublisher {
public:
    /// See `ZYLCmdAction` for the arguments; takes ownership of `filter` (handed on to the
    /// action when it is made).
    ZYLCmdActionPublisher(const QByteArray &actionName, const QByteArray &commandClass, const QString &iconId,
                          const QString &label, const QString &tooltip, ZYLVisSelectionFilter *filter,
                          ZYLCmdAction::FilterBehavior filterBehavior, const QHash<QString, QVariant> &properties);
    ~ZYLCmdActionPublisher();
    ZYLCmdActionPublisher(const ZYLCmdActionPublisher &) = delete;
    ZYLCmdActionPublisher &operator=(const ZYLCmdActionPublisher &) = delete;

    /// Returns the key: command class name, a full stop, action name.
    const QByteArray &GetKey() const;
    /// Returns the action, made now if need be; null while there is no QGuiApplication.
    ZYLCmdAction *GetAction();
    /// Returns whether the controller lists the action.
    bool IsPublished() const;

private:
    friend class ZYLCmdController;
    // Returns whether the action has been made already.
    bool HasAction() const;
    ZYLCmdAction *MakeAction();

    struct Data;
    std::unique_ptr<Data> d;
};
