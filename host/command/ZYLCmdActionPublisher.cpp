// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdActionPublisher.h"

#include "ZYLCmdController.h"
#include "ZYLVisSelectionFilter.h"

#include <QGuiApplication>

struct ZYLCmdActionPublisher::Data {
    QByteArray actionName;
    QByteArray commandClass;
    QByteArray key;
    QString iconId;
    QString label;
    QString tooltip;
    std::unique_ptr<ZYLVisSelectionFilter> filter;
    ZYLCmdAction::FilterBehavior filterBehavior = ZYLCmdAction::AnySelection;
    QHash<QString, QVariant> properties;
    std::unique_ptr<ZYLCmdAction> action;
    bool published = false;
};

ZYLCmdActionPublisher::ZYLCmdActionPublisher(const QByteArray &actionName, const QByteArray &commandClass,
                                             const QString &iconId, const QString &label, const QString &tooltip,
                                             ZYLVisSelectionFilter *filter,
                                             ZYLCmdAction::FilterBehavior filterBehavior,
                                             const QHash<QString, QVariant> &properties)
    : d(std::make_unique<Data>()) {
    d->actionName = actionName;
    d->commandClass = commandClass;
    d->key = commandClass + '.' + actionName;
    d->iconId = iconId;
    d->label = label;
    d->tooltip = tooltip;
    d->filter.reset(filter);
    d->filterBehavior = filterBehavior;
    d->properties = properties;
    if (ZYLCmdController *controller = ZYLCmdController::GetController())
        d->published = controller->PublishAction(this);
}

ZYLCmdActionPublisher::~ZYLCmdActionPublisher() {
    // After the controller is gone (process exit) there is nothing to withdraw from.
    if (d->published) {
        if (ZYLCmdController *controller = ZYLCmdController::GetController())
            controller->WithdrawAction(this);
    }
}

const QByteArray &ZYLCmdActionPublisher::GetKey() const {
    return d->key;
}

ZYLCmdAction *ZYLCmdActionPublisher::GetAction() {
    return MakeAction();
}

bool ZYLCmdActionPublisher::IsPublished() const {
    return d->published;
}

bool ZYLCmdActionPublisher::HasAction() const {
    return d->action != nullptr;
}

ZYLCmdAction *ZYLCmdActionPublisher::MakeAction() {
    if (d->action || !qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return d->action.get();
    d->action = std::make_unique<ZYLCmdAction>(d->actionName, d->commandClass, d->iconId, d->label, d->tooltip,
                                               d->filter.release(), d->filterBehavior, d->properties);
    // A published action starts its command when triggered; a refused one does nothing. Asked
    // of the controller, not of `published`: a listener of ActionsChanged may get here while
    // the constructor still waits for PublishAction to return.
    ZYLCmdController *controller = ZYLCmdController::GetController();
    if (controller && controller->IsPublished(this)) {
        ZYLCmdAction *action = d->action.get();
        QObject::connect(action, &QAction::triggered, controller, [controller, action] { controller->Start(action); });
    }
    return d->action.get();
}
