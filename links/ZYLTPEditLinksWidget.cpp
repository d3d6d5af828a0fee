// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditLinksWidget.h"
#include "ui_ZYLTPEditLinksWidget.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditGraphics.h"
#include "ZYLTPLinkEdit.h"
#include "ZYLTPMetaTypes.h"

#include "ZYLTPCourseLink.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPSafetyPlaneCourseLink.h"

#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLSysResourceManager.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisVirtualObject.h"

#include <QDebug>
#include <QGroupBox>
#include <QIcon>
#include <QMessageBox>
#include <QStandardItemModel>

#include <algorithm>

namespace {

ZYLEditTPGraphicsMgr *Manager() {
    return ZYLEditTPGraphicsMgr::GetManager();
}


// The parent of the panel's message boxes: the frame the host shows the panel in.
QWidget *DialogWidget() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    return controller && controller->GetDialogHandler() ? controller->GetDialogHandler()->GetWidget() : nullptr;
}

// Rows carry their link as a pointer to const; a row filled by someone else may carry it
// without const.
const ZYLTPCourseLink *LinkOf(const QVariant &value) {
    if (value.metaType() == QMetaType::fromType<const ZYLTPCourseLink *>())
        return value.value<const ZYLTPCourseLink *>();
    if (value.metaType() == QMetaType::fromType<ZYLTPCourseLink *>())
        return value.value<ZYLTPCourseLink *>();
    return nullptr;
}

// The strategy a link follows as the motion model combo counts it: safety plane or straight.
int PresentStrategy(const ZYLTPCourseLink *link) {
    return qobject_cast<const ZYLTPSafetyPlaneCourseLink *>(link) ? ZYLTPCourseLink::SafetyPlane
                                                                   : ZYLTPCourseLink::Linear;
}

} // namespace

struct ZYLTPEditLinksWidget::Data {
    explicit Data(ZYLTPEditLinksWidget *widget) : q(widget) {}

    ZYLTPEditLinksWidget *q;
    Ui::ZYLTPEditLinksWidget ui;
    std::unique_ptr<QStandardItemModel> links;
    QMetaObject::Connection sceneConnection;
    QMetaObject::Connection listConnection;

    QList<const ZYLTPCourseLink *> GetAllLinks() const;
    void FillLinksList();
    QList<const ZYLTPCourseLink *> GetSelectedLinks() const;
    QModelIndex FindLinkRow(const ZYLTPCourseLink *link) const;
    void UpdateOffPartControls();
    bool ValidateInputValue(const ZYLTPCourseLink *link, QDoubleSpinBox *field);
    void ApplyOffPartMotionModel();
    void ApplyPointsDetail();
    void ApplyRapidDistances(QDoubleSpinBox *field);

    void ConnectScene() {
        ZYLTPLinkEdit::Reconnect(sceneConnection, ZYLTPEditGraphics::GetEditEnvironment(),
                                 &ZYLVisEnvironment::VisualizationSelectionChanged, q,
                                 &ZYLTPEditLinksWidget::OnVisualizationSelectionChanged);
    }
    void ConnectList() {
        ZYLTPLinkEdit::Reconnect(listConnection, ui.listView_Sel->selectionModel(), &QItemSelectionModel::selectionChanged,
                                 q, &ZYLTPEditLinksWidget::OnLinkListSelectionChanged);
    }
    void SetRapidFieldsEnabled(bool enabled) {
        ui.doubleSpinBox_RapidApproachDis->setEnabled(enabled);
        ui.doubleSpinBox_RapidRetractDis->setEnabled(enabled);
    }
    void RemoveBlankModel() {
        const int blank = ui.comboBox_OffPartMotionModel->findText(QString());
        if (blank >= 0)
            ui.comboBox_OffPartMotionModel->removeItem(blank);
    }
};

QList<const ZYLTPCourseLink *> ZYLTPEditLinksWidget::Data::GetAllLinks() const {
    QList<const ZYLTPCourseLink *> all;
    ZYLEditTPGraphicsMgr *manager = Manager();
    const ZYLTPProgram *program = manager ? manager->GetToolPathProgram() : nullptr;
    if (!program)
        return all;
    for (int p = 0; p < program->GetNumProcedures(); ++p) {
        const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(p));
        if (!procedure)
            continue;
        for (int position = 0; position < procedure->GetNumLinks(); ++position)
            all.append(procedure->GetLinkByPosition(position));
        all.removeAll(static_cast<const ZYLTPCourseLink *>(procedure->GetApproachLink()));
        all.removeAll(static_cast<const ZYLTPCourseLink *>(procedure->GetRetractLink()));
    }
    all.removeAll(nullptr);
    return all;
}

void ZYLTPEditLinksWidget::Data::FillLinksList() {
    const QIcon icon = ZYLTPLinkEdit::GetRowIcon();
    links->clear();
    int number = 0;
    for (const ZYLTPCourseLink *link : GetAllLinks())
        links->appendRow(ZYLTPLinkEdit::NewRow(icon, tr("Link.%1").arg(++number), QVariant::fromValue(link)));
}

QList<const ZYLTPCourseLink *> ZYLTPEditLinksWidget::Data::GetSelectedLinks() const {
    QList<const ZYLTPCourseLink *> selected;
    for (const QModelIndex &index : ui.listView_Sel->selectionModel()->selectedIndexes())
        if (const ZYLTPCourseLink *link = LinkOf(index.data(Qt::UserRole)))
            selected.append(link);
    return selected;
}

QModelIndex ZYLTPEditLinksWidget::Data::FindLinkRow(const ZYLTPCourseLink *link) const {
    for (int row = 0; row < links->rowCount(); ++row) {
        const QModelIndex index = links->index(row, 0);
        if (LinkOf(index.data(Qt::UserRole)) == link)
            return index;
    }
    return {};
}

void ZYLTPEditLinksWidget::Data::UpdateOffPartControls() {
    const QList<const ZYLTPCourseLink *> selected = GetSelectedLinks();
    if (selected.isEmpty())
        return;
    QComboBox *model = ui.comboBox_OffPartMotionModel;
    const QSignalBlocker blockApproach(ui.doubleSpinBox_RapidApproachDis);
    const QSignalBlocker blockRetract(ui.doubleSpinBox_RapidRetractDis);
    const QSignalBlocker blockModel(model);
    try {
        const ZYLTPCourseLink *link = selected.last();
        ui.comboBox_OffPartPtsDetails->setCurrentIndex(
            ui.comboBox_OffPartPtsDetails->findData(int(link->GetPointsDetail()), Qt::UserRole,
                                                    Qt::MatchExactly | Qt::MatchCaseSensitive));
        if (const auto *straight = qobject_cast<const ZYLTPLinearCourseLink *>(link)) {
            ui.doubleSpinBox_RapidApproachDis->setValue(straight->GetRapidApproach());
            ui.doubleSpinBox_RapidRetractDis->setValue(straight->GetRapidRetract());
            model->setCurrentIndex(model->findData(int(ZYLTPCourseLink::Linear)));
            RemoveBlankModel();
            SetRapidFieldsEnabled(true);
        } else if (qobject_cast<const ZYLTPSafetyPlaneCourseLink *>(link)) {
            model->setCurrentIndex(model->findData(int(ZYLTPCourseLink::SafetyPlane)));
            RemoveBlankModel();
            SetRapidFieldsEnabled(false);
        } else if (qobject_cast<const ZYLTPCustomCourseLink *>(link)) {
            // A hand-shaped link follows none of the models: the combo shows a blank entry.
            if (model->findText(QString()) < 0)
                model->addItem(QString());
            model->setCurrentText(QString());
            SetRapidFieldsEnabled(false);
        } else {
            SetRapidFieldsEnabled(false);
        }
    } catch (...) {
        qDebug() << "Exception fired in ZYLTPEditLinksWidget::Data::UpdateOffPartControls()";
    }
}

bool ZYLTPEditLinksWidget::Data::ValidateInputValue(const ZYLTPCourseLink *link, QDoubleSpinBox *field) {
    const auto *straight = qobject_cast<const ZYLTPLinearCourseLink *>(link);
    if (!straight)
        return true;
    const QSignalBlocker blockApproach(ui.doubleSpinBox_RapidApproachDis);
    const QSignalBlocker blockRetract(ui.doubleSpinBox_RapidRetractDis);
    bool valid = true;
    try {
        double restored = 0.0;
        if (field == ui.doubleSpinBox_RapidApproachDis && !(field->value() > 0.0)) {
            restored = straight->GetRapidApproach();
            valid = false;
        } else if (field == ui.doubleSpinBox_RapidRetractDis && !(field->value() > 0.0)) {
            restored = straight->GetRapidRetract();
            valid = false;
        }
        if (!valid) {
            QMessageBox::warning(DialogWidget(), tr("Warning"),
                                 tr("Value %1 out of range: Should be greater than 0mm.\nValue %2mm is restored.\n"
                                    "Try to edit range...")
                                     .arg(field->text())
                                     .arg(restored, 0, 'g', -1, QLatin1Char(' ')),
                                 QMessageBox::Ok);
            field->setValue(restored);
        }
    } catch (...) {
        qDebug() << "Exception fired in ZYLTPEditLinksWidget::Data::ValidateInputValue()";
    }
    return valid;
}

void ZYLTPEditLinksWidget::Data::ApplyRapidDistances(QDoubleSpinBox *field) {
    const QList<const ZYLTPCourseLink *> selected = GetSelectedLinks();
    if (selected.isEmpty() || !ValidateInputValue(selected.last(), field))
        return;
    ZYLEditTPGraphicsMgr *manager = Manager();
    const ZYLVisEnvironmentBatchContext batch(ZYLTPEditGraphics::GetEditEnvironment());
    const double approach = ui.doubleSpinBox_RapidApproachDis->value();
    const double retract = ui.doubleSpinBox_RapidRetractDis->value();
    QList<ZYLTPLinearCourseLink *> straights;
    for (const ZYLTPCourseLink *link : selected)
        if (const auto *straight = qobject_cast<const ZYLTPLinearCourseLink *>(link))
            straights.append(const_cast<ZYLTPLinearCourseLink *>(straight));
    // Other selected straight links may hold a value the last one did not: all or none.
    ZYLTPLinkEdit::Run(tr("Rapid distances"), [&] {
        for (ZYLTPLinearCourseLink *straight : straights) {
            straight->SetRapidApproach(approach);
            straight->SetRapidRetract(retract);
            straight->Update();
        }
    });
    const ZYLTPVisualizationOptions options = ZYLTPLinkEdit::GetLinksOptions(ZYLTPVisualizationOptions::NoVectors);
    for (ZYLTPLinearCourseLink *straight : straights)
        manager->UpdateVirtualNode(manager->GetCourseLinkVirtualNode(straight), options);
}

void ZYLTPEditLinksWidget::Data::ApplyOffPartMotionModel() {
    const QList<const ZYLTPCourseLink *> selected = GetSelectedLinks();
    if (selected.isEmpty())
        return;
    const bool anyCustom = std::any_of(selected.begin(), selected.end(), [](const ZYLTPCourseLink *link) {
        return qobject_cast<const ZYLTPCustomCourseLink *>(link) != nullptr;
    });
    // The text stays the same in every language, so it bypasses tr on purpose.
    if (anyCustom)
        QMessageBox::warning(DialogWidget(), tr("Warning"),
                             QStringLiteral("The changes on the custom links will be discard."), QMessageBox::Ok);
    ZYLTPRollLayupProcedure *procedure = selected.first()->GetProcedure();
    if (!procedure)
        return;
    const auto strategy =
        ZYLTPCourseLink::OffPartMotionStrategy(ui.comboBox_OffPartMotionModel->currentData(Qt::UserRole).toInt());
    SetRapidFieldsEnabled(strategy == ZYLTPCourseLink::Linear);

    ZYLEditTPGraphicsMgr *manager = Manager();
    ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment();
    const ZYLVisEnvironmentBatchContext batch(environment);
    struct Replacement {
        const ZYLTPCourseLink *old;
        QModelIndex row;
        ZYLTPCourseLink *made = nullptr;
    };
    QList<Replacement> replacements;
    for (const ZYLTPCourseLink *link : selected)
        if (PresentStrategy(link) != strategy)
            replacements.append({link, FindLinkRow(link)});
    // Every link is replaced, or none is.
    ZYLTPLinkEdit::Run(tr("Off-part motion model"), [&] {
        for (Replacement &replacement : replacements) {
            const ZYLTPCourse *from = replacement.old->GetFromCourse();
            const ZYLTPCourse *to = replacement.old->GetToCourse();
            procedure->RemoveLink(replacement.old);
            replacement.made = procedure->LinkCourses(from, to, &strategy);
        }
    });
    for (const Replacement &replacement : replacements) {
        if (ZYLVisVirtualObject *node = manager->GetCourseLinkVirtualNode(replacement.old))
            node->SetVisibility(false);
        if (replacement.row.isValid())
            links->setData(replacement.row, QVariant::fromValue<const ZYLTPCourseLink *>(replacement.made),
                           Qt::UserRole);
    }
    for (const Replacement &replacement : replacements) {
        // Drawn like the links around it: the current options would add their points.
        ZYLVisVirtualObject *node = manager->AddCourseLinkVirtualNode(
            replacement.made, ZYLTPLinkEdit::GetLinksOptions(ZYLTPVisualizationOptions::NoVectors));
        if (!node)
            continue;
        node->SetSelectability(true);
        if (environment)
            environment->AddToSelection(node);
    }
}

void ZYLTPEditLinksWidget::Data::ApplyPointsDetail() {
    const QList<const ZYLTPCourseLink *> selected = GetSelectedLinks();
    if (selected.isEmpty())
        return;
    const auto detail =
        ZYLTPCourseLink::OffPartMotionDetail(ui.comboBox_OffPartPtsDetails->currentData(Qt::UserRole).toInt());
    ZYLTPLinkEdit::Run(tr("Off-part points details"), [&] {
        for (const ZYLTPCourseLink *link : selected)
            const_cast<ZYLTPCourseLink *>(link)->SetPointsDetail(detail);
    });
}

ZYLTPEditLinksWidget::ZYLTPEditLinksWidget(QWidget *parent)
    : QWidget(parent), d(std::make_shared<Data>(this)) {
    qRegisterMetaType<const ZYLTPCourseLink *>("const ZYLTPCourseLink*");
    qRegisterMetaType<ZYLTPCourseLink *>("ZYLTPCourseLink*");
    ZYLTPMetaTypes::GetVisObjectSetType();
    d->ui.setupUi(this);

    ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(d->ui.ButtonSelection);
    ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(d->ui.ButtonOffpartmotion);
    for (QWidget *unused : {static_cast<QWidget *>(d->ui.checkBox_MimHeadRotation),
                            static_cast<QWidget *>(d->ui.label_OffPartAvoidance),
                            static_cast<QWidget *>(d->ui.comboBox_OffPartAvoidance),
                            static_cast<QWidget *>(d->ui.label_OffPartClearance),
                            static_cast<QWidget *>(d->ui.doubleSpinBox_OffPartClearance)})
        unused->hide();
    d->ui.listView_Sel->clearSelection();
    d->ui.comboBox_OffPartMotionModel->clear();
    d->ui.comboBox_OffPartPtsDetails->clear();
    for (ZYLTPCourseLink::OffPartMotionStrategy strategy : ZYLTPCourseLink::GetAllOffPartMotionStrategies())
        d->ui.comboBox_OffPartMotionModel->addItem(ZYLTPCourseLink::GetOffPartMotionStrategyLabel(strategy),
                                                   int(strategy));
    for (ZYLTPCourseLink::OffPartMotionDetail detail : ZYLTPCourseLink::GetAllOffPartMotionDetails())
        d->ui.comboBox_OffPartPtsDetails->addItem(ZYLTPCourseLink::GetOffPartMotionDetailLabel(detail), int(detail));
    d->links = std::make_unique<QStandardItemModel>();
    d->ui.listView_Sel->setModel(d->links.get());

    d->FillLinksList();

    if (ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment()) {
        ZYLTPEditGraphics::SelectAnyObject(*environment, true);
        environment->SetVisualizationSelection({});
        environment->SetPreSelectedObjects({});
    }
    setupConnections();
}

ZYLTPEditLinksWidget::~ZYLTPEditLinksWidget() {
    // The view must let go of the model before the model goes with Data.
    d->ui.listView_Sel->setModel(nullptr);
}

void ZYLTPEditLinksWidget::setupConnections() {
    for (QPushButton *header : {d->ui.ButtonSelection, d->ui.ButtonOffpartmotion}) {
        QWidget *frame = header == d->ui.ButtonSelection ? d->ui.frame_selection : d->ui.frame_offpartmotion;
        connect(header, &QPushButton::toggled, frame, &QWidget::setVisible);
    }
    connect(d->ui.groupBox_offpartmotionenable, &QGroupBox::toggled, d->ui.frame_offpartmotionenabled,
            &QWidget::setEnabled);
    connect(d->ui.pushButton_SelAll, &QPushButton::clicked, this, &ZYLTPEditLinksWidget::OnSelectAllButtonClicked);
    connect(d->ui.pushButton_DeselAll, &QPushButton::clicked, this, &ZYLTPEditLinksWidget::OnDeselectAllButtonClicked);
    d->ConnectScene();
    d->ConnectList();
    connect(d->ui.doubleSpinBox_RapidApproachDis, &QDoubleSpinBox::editingFinished, this,
            &ZYLTPEditLinksWidget::OnValueChanged);
    connect(d->ui.doubleSpinBox_RapidRetractDis, &QDoubleSpinBox::editingFinished, this,
            &ZYLTPEditLinksWidget::OnValueChanged);
    connect(d->ui.comboBox_OffPartMotionModel, &QComboBox::currentIndexChanged, this,
            &ZYLTPEditLinksWidget::OffPartMotionModelChanged);
}

void ZYLTPEditLinksWidget::ApplyPointsDetail() {
    d->ApplyPointsDetail();
}

void ZYLTPEditLinksWidget::Detach() {
    disconnect(d->sceneConnection);
    disconnect(d->listConnection);
    d->links->clear();
}

void ZYLTPEditLinksWidget::OnSelectAllButtonClicked() {
    d->ui.listView_Sel->selectAll();
}

void ZYLTPEditLinksWidget::OnDeselectAllButtonClicked() {
    d->ui.listView_Sel->clearSelection();
}

void ZYLTPEditLinksWidget::OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &selected,
                                                           const QSet<ZYLVisObject *> &deselected) {
    ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment();
    if ((selected.isEmpty() && deselected.isEmpty()) || !environment)
        return;
    const QSet<ZYLVisObject *> selection = environment->GetVisualizationSelection();
    disconnect(d->listConnection);
    QItemSelectionModel *model = d->ui.listView_Sel->selectionModel();
    model->clearSelection();
    try {
        ZYLEditTPGraphicsMgr *manager = Manager();
        for (ZYLVisObject *object : selection) {
            auto *node = qobject_cast<ZYLVisVirtualObject *>(object);
            const QModelIndex row = d->FindLinkRow(manager->GetCourseLinkObject(node));
            if (row.isValid())
                model->select(row, QItemSelectionModel::Select);
        }
    } catch (...) {
        qDebug() << "Exception fired in OnVisualizationSelectionChanged.";
    }
    d->ConnectList();
    d->UpdateOffPartControls();
}

void ZYLTPEditLinksWidget::OnLinkListSelectionChanged(const QItemSelection &, const QItemSelection &) {
    ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment();
    if (environment) {
        disconnect(d->sceneConnection);
        environment->SetVisualizationSelection({});
        environment->SetPreSelectedObjects({});
        ZYLEditTPGraphicsMgr *manager = Manager();
        for (const ZYLTPCourseLink *link : d->GetSelectedLinks())
            if (ZYLVisVirtualObject *node = manager->GetCourseLinkVirtualNode(link))
                environment->SelectObject(node);
        d->ConnectScene();
    }
    d->UpdateOffPartControls();
}

void ZYLTPEditLinksWidget::OnValueChanged() {
    auto *field = qobject_cast<QDoubleSpinBox *>(sender());
    if (field != d->ui.doubleSpinBox_RapidApproachDis && field != d->ui.doubleSpinBox_RapidRetractDis)
        return;
    try {
        d->ApplyRapidDistances(field);
    } catch (const std::exception &error) {
        qDebug() << "Exception fired in ZYLTPEditLinksWidget::OnValueChanged():" << error.what();
    }
}

void ZYLTPEditLinksWidget::OffPartMotionModelChanged() {
    // The selection made for the new links is mirrored into the list once, at the end: the
    // rows keep their place, so their selection stays as it was.
    disconnect(d->sceneConnection);
    try {
        d->ApplyOffPartMotionModel();
    } catch (...) {
        qDebug() << "Exception fired in ZYLTPEditLinksWidget::OffPartMotionModelChanged()";
    }
    d->ConnectScene();
    d->UpdateOffPartControls();
}
