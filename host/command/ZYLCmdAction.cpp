// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdAction.h"

#include "ZYLSysResourceManager.h"
#include "ZYLVisSelectionFilter.h"

#include <QIcon>

namespace {

// Actions are usually made by static objects of a library that may be unloaded again. Texts
// built from literals point into that library's read-only data; own copies keep the action's
// texts (and the command properties copied from them) valid whatever is unloaded later.
QString OwnCopy(const QString &text) {
    QString copy = text;
    copy.detach();
    return copy;
}

QByteArray OwnCopy(const QByteArray &bytes) {
    QByteArray copy = bytes;
    copy.detach();
    return copy;
}

QVariant OwnCopy(const QVariant &value) {
    switch (value.typeId()) {
    case QMetaType::QString:
        return OwnCopy(value.toString());
    case QMetaType::QByteArray:
        return OwnCopy(value.toByteArray());
    default:
        return value;
    }
}

} // namespace

struct ZYLCmdAction::Data {
    QByteArray key;
    QByteArray name;
    QByteArray commandClass;
    QString iconId;
    QString label;
    QString tooltip;
    QHash<QString, QVariant> properties;
    std::unique_ptr<ZYLVisSelectionFilter> filter;
    FilterBehavior filterBehavior = AnySelection;
};

ZYLCmdAction::ZYLCmdAction(const QByteArray &actionName, const QByteArray &commandClass, const QString &iconId,
                           const QString &label, const QString &tooltip, ZYLVisSelectionFilter *filter,
                           FilterBehavior filterBehavior, const QHash<QString, QVariant> &properties,
                           QObject *parent)
    : QAction(parent), d(std::make_unique<Data>()) {
    d->name = OwnCopy(actionName);
    d->commandClass = OwnCopy(commandClass);
    d->key = d->commandClass + '.' + d->name;
    d->iconId = OwnCopy(iconId);
    d->label = OwnCopy(label);
    d->tooltip = OwnCopy(tooltip);
    for (auto it = properties.cbegin(); it != properties.cend(); ++it)
        d->properties.insert(OwnCopy(it.key()), OwnCopy(it.value()));
    d->filter.reset(filter);
    d->filterBehavior = filterBehavior;
    setObjectName(QString::fromLatin1(d->key));
    setText(d->label);
    setToolTip(d->tooltip);
    if (!d->iconId.isEmpty())
        setIcon(QIcon(ZYLSysResourceManager::GetImage(d->iconId)));
}

ZYLCmdAction::~ZYLCmdAction() = default;

const QByteArray &ZYLCmdAction::GetKey() const {
    return d->key;
}

const QByteArray &ZYLCmdAction::GetName() const {
    return d->name;
}

const QByteArray &ZYLCmdAction::GetCommandClass() const {
    return d->commandClass;
}

const QString &ZYLCmdAction::GetIconId() const {
    return d->iconId;
}

const QString &ZYLCmdAction::GetLabel() const {
    return d->label;
}

const QString &ZYLCmdAction::GetTooltip() const {
    return d->tooltip;
}

const QHash<QString, QVariant> &ZYLCmdAction::GetProperties() const {
    return d->properties;
}

ZYLVisSelectionFilter *ZYLCmdAction::GetSelectionFilter() const {
    return d->filter.get();
}

ZYLCmdAction::FilterBehavior ZYLCmdAction::GetFilterBehavior() const {
    return d->filterBehavior;
}

bool ZYLCmdAction::AcceptsSelection(const QSet<ZYLVisObject *> &selection) const {
    if (d->filterBehavior != RequireFilteredSelection)
        return true;
    if (selection.isEmpty())
        return false;
    if (!d->filter)
        return true;
    for (const ZYLVisObject *object : selection) {
        if (!d->filter->IsSelectable(object))
            return false;
    }
    return true;
}
