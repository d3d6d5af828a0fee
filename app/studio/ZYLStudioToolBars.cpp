// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioToolBars.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"
#include "ZYLSysSettings.h"

#include <QActionGroup>
#include <QHash>
#include <QLoggingCategory>
#include <QMainWindow>
#include <QMenu>
#include <QMetaProperty>
#include <QPointer>
#include <QToolBar>

#include <algorithm>

namespace {

Q_LOGGING_CATEGORY(lcStudioToolBars, "zyl.studio.toolbars")

const QString ModeKey = QStringLiteral("mode");
const QString EditMode = QStringLiteral("edit");
const QString HidePrefix = QStringLiteral("Hide");
const QString ViewPrefix = QStringLiteral("View");

QString ModeOf(const ZYLCmdAction *action) {
    return action->GetProperties().value(ModeKey).toString();
}

// The actions sorted into tool bars and groups, each list in publication order.
struct Layout {
    QList<ZYLCmdAction *> edit;
    QList<ZYLCmdAction *> inspection;
    QList<QList<ZYLCmdAction *>> modeGroups;
    QList<ZYLCmdAction *> toggles;
};

Layout Classify(const QList<ZYLCmdAction *> &actions) {
    Layout layout;
    // Modes of each command class still waiting for the "Hide" mode that closes their group;
    // kept per class so that the modes of two modules never mix.
    QList<std::pair<QByteArray, QList<ZYLCmdAction *>>> pending;
    auto pendingOf = [&pending](const QByteArray &commandClass) -> QList<ZYLCmdAction *> & {
        for (auto &[name, modes] : pending) {
            if (name == commandClass)
                return modes;
        }
        pending.append({commandClass, {}});
        return pending.back().second;
    };
    for (ZYLCmdAction *action : actions) {
        if (!action->GetProperties().contains(ModeKey)) {
            layout.inspection.append(action);
            continue;
        }
        const QString mode = ModeOf(action);
        if (mode == EditMode) {
            layout.edit.append(action);
            continue;
        }
        QList<ZYLCmdAction *> &modes = pendingOf(action->GetCommandClass());
        modes.append(action);
        if (mode.startsWith(HidePrefix)) {
            layout.modeGroups.append(modes);
            modes.clear();
        }
    }
    for (const auto &entry : std::as_const(pending))
        layout.toggles.append(entry.second);
    std::stable_sort(layout.toggles.begin(), layout.toggles.end(),
                     [&actions](ZYLCmdAction *a, ZYLCmdAction *b) { return actions.indexOf(a) < actions.indexOf(b); });
    return layout;
}

QList<QByteArray> OwnProperties(const ZYLSysSettings *settings, QMetaType::Type type) {
    QList<QByteArray> names;
    const QMetaObject *meta = settings->metaObject();
    for (int index = ZYLSysSettings::staticMetaObject.propertyCount(); index < meta->propertyCount(); ++index) {
        const QMetaProperty property = meta->property(index);
        if (property.metaType().id() == type && property.isWritable())
            names.append(property.name());
    }
    return names;
}

// Pairs each of `count` items with one of `properties`: first where `matches(item, property)`,
// then the items left over with the properties left over, in order. Unpaired items get an
// empty name.
template <class Matches>
QList<QByteArray> Pair(int count, QList<QByteArray> properties, Matches matches) {
    QList<QByteArray> paired(count);
    for (int item = 0; item < count; ++item) {
        for (int index = 0; index < properties.size(); ++index) {
            if (matches(item, properties[index])) {
                paired[item] = properties.takeAt(index);
                break;
            }
        }
    }
    for (int item = 0; item < count && !properties.isEmpty(); ++item) {
        if (paired[item].isEmpty())
            paired[item] = properties.takeFirst();
    }
    return paired;
}

} // namespace

struct ZYLStudioToolBars::Data {
    struct ModeGroup {
        QList<QPointer<ZYLCmdAction>> actions;
        QByteArray property;
    };
    struct Toggle {
        QPointer<ZYLCmdAction> action;
        QByteArray property;
    };
    struct MenuSection {
        QPointer<QMenu> menu;
        // The section is inserted before this separator, which the menu owns.
        QPointer<QAction> end;
    };

    QPointer<QToolBar> edit;
    QPointer<QToolBar> inspection;
    QPointer<QToolBar> view;
    QList<MenuSection> menus;

    // Owner of everything one layout made (action groups, separators) and context of its
    // connections; replaced as a whole by each rebuild.
    std::unique_ptr<QObject> generation;
    // The view section in order, separators included.
    QList<QPointer<QAction>> viewSection;
    QList<ModeGroup> modeGroups;
    QList<Toggle> toggles;
    QByteArray viewCommandClass;

    QPointer<ZYLSysSettings> settings;
    bool rebuildPending = false;
    bool reportedMissingSettings = false;
};

ZYLStudioToolBars::ZYLStudioToolBars(QMainWindow *window) : QObject(window), d(std::make_unique<Data>()) {
    auto makeToolBar = [window](const QString &title, const QString &objectName) {
        auto *toolBar = new QToolBar(title, window);
        toolBar->setObjectName(objectName);
        window->addToolBar(toolBar);
        return toolBar;
    };
    d->edit = makeToolBar(tr("Edit"), QStringLiteral("ZYLStudioEditToolBar"));
    d->inspection = makeToolBar(tr("Inspection"), QStringLiteral("ZYLStudioInspectionToolBar"));
    d->view = makeToolBar(tr("View"), QStringLiteral("ZYLStudioViewToolBar"));

    connect(ZYLCmdController::GetController(), &ZYLCmdController::ActionsChanged, this,
            &ZYLStudioToolBars::ScheduleRebuild);
    Rebuild();
}

ZYLStudioToolBars::~ZYLStudioToolBars() {
    ClearPlacement();
    for (const Data::MenuSection &section : std::as_const(d->menus)) {
        if (section.menu)
            delete section.end;
    }
}

void ZYLStudioToolBars::ClearPlacement() {
    // The published actions belong to their modules and stay; only this object's placement
    // of them goes.
    for (QToolBar *toolBar : GetToolBars())
        toolBar->clear();
    for (const Data::MenuSection &section : std::as_const(d->menus)) {
        if (!section.menu)
            continue;
        for (const QPointer<QAction> &action : std::as_const(d->viewSection)) {
            if (action)
                section.menu->removeAction(action);
        }
    }
}

void ZYLStudioToolBars::AddViewMenuSection(QMenu *menu) {
    if (!menu)
        return;
    for (const Data::MenuSection &section : std::as_const(d->menus)) {
        if (section.menu == menu)
            return;
    }
    auto *end = new QAction(menu);
    end->setSeparator(true);
    menu->addAction(end);
    d->menus.append(Data::MenuSection{menu, end});
    FillMenu(int(d->menus.size()) - 1);
}

QList<QToolBar *> ZYLStudioToolBars::GetToolBars() const {
    QList<QToolBar *> toolBars;
    for (QToolBar *toolBar : {d->edit.data(), d->inspection.data(), d->view.data()}) {
        if (toolBar)
            toolBars.append(toolBar);
    }
    return toolBars;
}

void ZYLStudioToolBars::ScheduleRebuild() {
    // A module publishes or withdraws its actions one at a time, from its static objects
    // while it loads or unloads: one rebuild afterwards does for all of them.
    if (d->rebuildPending)
        return;
    d->rebuildPending = true;
    QMetaObject::invokeMethod(this, &ZYLStudioToolBars::Rebuild, Qt::QueuedConnection);
}

void ZYLStudioToolBars::Rebuild() {
    d->rebuildPending = false;
    ClearPlacement();
    d->menus.removeIf([](const Data::MenuSection &section) { return !section.menu; });
    d->viewSection.clear();
    d->modeGroups.clear();
    d->toggles.clear();
    d->viewCommandClass.clear();
    d->generation = std::make_unique<QObject>();
    QObject *generation = d->generation.get();

    const Layout layout = Classify(ZYLCmdController::GetController()->GetActions());
    if (d->edit)
        d->edit->addActions({layout.edit.cbegin(), layout.edit.cend()});
    if (d->inspection)
        d->inspection->addActions({layout.inspection.cbegin(), layout.inspection.cend()});

    auto addSeparator = [this, generation] {
        auto *separator = new QAction(generation);
        separator->setSeparator(true);
        d->viewSection.append(separator);
    };
    auto addViewAction = [this, generation](ZYLCmdAction *action) {
        action->setCheckable(true);
        d->viewSection.append(action);
        if (d->viewCommandClass.isEmpty())
            d->viewCommandClass = action->GetCommandClass();
        // Runs after the controller's own connection, so after the command: the state shown
        // is then what the command stored, or what was stored before if it did not run.
        connect(action, &QAction::triggered, generation, [this] { SyncFromSettings(); });
    };
    for (const QList<ZYLCmdAction *> &modes : layout.modeGroups) {
        addSeparator();
        auto *group = new QActionGroup(generation);
        group->setExclusionPolicy(QActionGroup::ExclusionPolicy::Exclusive);
        Data::ModeGroup modeGroup;
        for (ZYLCmdAction *action : modes) {
            addViewAction(action);
            group->addAction(action);
            modeGroup.actions.append(action);
        }
        d->modeGroups.append(modeGroup);
    }
    if (!layout.toggles.isEmpty())
        addSeparator();
    for (ZYLCmdAction *action : layout.toggles) {
        addViewAction(action);
        d->toggles.append(Data::Toggle{action, {}});
    }

    if (d->view) {
        // The tool bar needs no separator before its first group.
        for (int index = 0; index < d->viewSection.size(); ++index) {
            if (index > 0 || !d->viewSection[index]->isSeparator())
                d->view->addAction(d->viewSection[index]);
        }
    }
    for (int index = 0; index < d->menus.size(); ++index)
        FillMenu(index);

    BindSettings();
    SyncFromSettings();
}

void ZYLStudioToolBars::FillMenu(int index) {
    const Data::MenuSection &section = d->menus[index];
    if (!section.menu || !section.end)
        return;
    for (const QPointer<QAction> &action : std::as_const(d->viewSection)) {
        if (action)
            section.menu->insertAction(section.end, action);
    }
}

void ZYLStudioToolBars::BindSettings() {
    ZYLSysSettings *settings = nullptr;
    if (!d->viewCommandClass.isEmpty()) {
        // The module keeps its view settings in a singleton of its own, which the host reaches
        // by class name: it does not link the module it loads at run time.
        settings = ZYLSysSettings::Find("ZYLTPEditUISettings");
        if (!settings && !d->reportedMissingSettings) {
            d->reportedMissingSettings = true;
            qCWarning(lcStudioToolBars) << "No view settings found for" << d->viewCommandClass
                                        << "- view actions keep their own checked state";
        }
    }
    if (settings != d->settings) {
        if (d->settings)
            disconnect(d->settings, nullptr, this, nullptr);
        d->settings = settings;
        if (settings) {
            d->reportedMissingSettings = false;
            connect(settings, &ZYLSysSettings::SettingChanged, this, &ZYLStudioToolBars::SyncFromSettings);
            connect(settings, &ZYLSysSettings::SettingsReverted, this, &ZYLStudioToolBars::SyncFromSettings);
        }
    }
    if (!settings)
        return;

    const QList<QByteArray> modeProperties = OwnProperties(settings, QMetaType::QString);
    const QList<QByteArray> modePairs =
        Pair(int(d->modeGroups.size()), modeProperties, [this, settings](int group, const QByteArray &property) {
            const QString value = settings->property(property.constData()).toString();
            const auto &actions = d->modeGroups[group].actions;
            return std::any_of(actions.cbegin(), actions.cend(),
                               [&value](const QPointer<ZYLCmdAction> &action) { return action && ModeOf(action) == value; });
        });
    for (int group = 0; group < d->modeGroups.size(); ++group)
        d->modeGroups[group].property = modePairs[group];

    const QList<QByteArray> switchProperties = OwnProperties(settings, QMetaType::Bool);
    const QList<QByteArray> switchPairs =
        Pair(int(d->toggles.size()), switchProperties, [this](int toggle, const QByteArray &property) {
            const ZYLCmdAction *action = d->toggles[toggle].action;
            if (!action)
                return false;
            QString subject = ModeOf(action);
            if (subject.startsWith(ViewPrefix))
                subject.remove(0, ViewPrefix.size());
            return !subject.isEmpty() && QString::fromLatin1(property).endsWith(subject, Qt::CaseInsensitive);
        });
    for (int toggle = 0; toggle < d->toggles.size(); ++toggle)
        d->toggles[toggle].property = switchPairs[toggle];
}

void ZYLStudioToolBars::SyncFromSettings() {
    const ZYLSysSettings *settings = d->settings;
    if (!settings)
        return;
    for (const Data::ModeGroup &group : std::as_const(d->modeGroups)) {
        if (group.property.isEmpty())
            continue;
        const QString value = settings->property(group.property.constData()).toString();
        // Unchecking first lets an unknown stored mode leave the whole group unchecked.
        for (ZYLCmdAction *action : group.actions) {
            if (action && ModeOf(action) != value)
                action->setChecked(false);
        }
        for (ZYLCmdAction *action : group.actions) {
            if (action && ModeOf(action) == value)
                action->setChecked(true);
        }
    }
    for (const Data::Toggle &toggle : std::as_const(d->toggles)) {
        if (toggle.action && !toggle.property.isEmpty())
            toggle.action->setChecked(settings->property(toggle.property.constData()).toBool());
    }
}
