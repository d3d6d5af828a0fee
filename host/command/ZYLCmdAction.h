// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommandExport.h"

#include <QAction>
#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QVariant>

#include <memory>

class ZYLVisObject;
class ZYLVisSelectionFilter;

/// A published action: the `QAction` a host puts in menus and tool bars, and what the
/// controller needs to run its command. Triggering it (`trigger()` or
/// `ZYLCmdController::Trigger` with its key) starts a new instance of its command class.
///
/// Made by `ZYLCmdActionPublisher`, which owns it; like every `QAction` it needs a
/// QGuiApplication. Its text is the label, its tool tip the tooltip, its object name the key,
/// and its icon the image of its icon id from `ZYLSysResourceManager::GetImage` (none for an
/// empty id).
class ZYLCOMMAND_EXPORT ZYLCmdAction : public QAction {
    Q_OBJECT
public:
    /// How the action's selection filter takes part in starting its command.
    enum FilterBehavior {
        /// The command starts whatever is selected; the filter, if any, is only there for
        /// the command to read (`GetSelectionFilter`).
        AnySelection = 0,
        /// The command starts only when the current environment's selection is not empty
        /// and the filter accepts every selected object (a null filter accepts all).
        RequireFilteredSelection = 1,
    };
    Q_ENUM(FilterBehavior)

    /// Makes the action `commandClass + "." + actionName`. Takes ownership of `filter` (may
    /// be null).
    ZYLCmdAction(const QByteArray &actionName, const QByteArray &commandClass, const QString &iconId,
                 const QString &label, const QString &tooltip, ZYLVisSelectionFilter *filter,
                 FilterBehavior filterBehavior, const QHash<QString, QVariant> &properties,
                 QObject *parent = nullptr);
    ~ZYLCmdAction() override;

    /// Returns the key: command class name, a full stop, action name.
    const QByteArray &GetKey() const;
    const QByteArray &GetName() const;
    const QByteArray &GetCommandClass() const;
    const QString &GetIconId() const;
    const QString &GetLabel() const;
    const QString &GetTooltip() const;
    /// Returns the properties set on each command the action starts.
    const QHash<QString, QVariant> &GetProperties() const;
    /// Returns the owned selection filter, or null.
    ZYLVisSelectionFilter *GetSelectionFilter() const;
    FilterBehavior GetFilterBehavior() const;

    /// Returns whether the command may start with `selection` as the current selection.
    bool AcceptsSelection(const QSet<ZYLVisObject *> &selection) const;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
