// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditLinkingPointsWidget.h"
#include "ui_ZYLTPEditLinkingPointsWidget.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditGraphics.h"
#include "ZYLTPLinkEdit.h"
#include "ZYLTPMetaTypes.h"

#include "ZYLTPCourseLink.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLMathVector.h"
#include "ZYLSysException.h"
#include "ZYLSysResourceManager.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisGizmo.h"
#include "ZYLVisVirtualObject.h"

#include <QDebug>
#include <QHash>
#include <QMessageBox>
#include <QPointer>
#include <QStandardItemModel>
#include <QTimer>

#include <algorithm>
#include <map>
#include <utility>

namespace {

ZYLEditTPGraphicsMgr *Manager() {
    return ZYLEditTPGraphicsMgr::GetManager();
}

const ZYLTPOffPartPoint *PointOf(const QModelIndex &index) {
    return index.data(Qt::UserRole).value<const ZYLTPOffPartPoint *>();
}

// The points between the two ends of a link, in index order, each once.
QList<const ZYLTPOffPartPoint *> GetLinkInteriorPoints(const ZYLTPCourseLink *link) {
    QList<const ZYLTPOffPartPoint *> points;
    QSet<const ZYLTPOffPartPoint *> seen;
    for (int i = 1; link && i < link->GetNumPoints() - 1; ++i) {
        const ZYLTPOffPartPoint *point = link->GetPoint(i);
        if (point && !seen.contains(point)) {
            seen.insert(point);
            points.append(point);
        }
    }
    return points;
}

ZYLMathPoint WithCoordinate(ZYLMathPoint point, int coordinate, double value) {
    if (coordinate == 0)
        point.SetX(value);
    else if (coordinate == 1)
        point.SetY(value);
    else
        point.SetZ(value);
    return point;
}

} // namespace

struct ZYLTPEditLinkingPointsWidget::Data {
    explicit Data(ZYLTPEditLinkingPointsWidget *widget) : q(widget) {}

    // A point's marker and the frame it was drawn for; the object is null while the gizmo
    // takes the place of a marker the user picked.
    struct Marker {
        ZYLVisVirtualObject *object = nullptr;
        ZYLMathAxis frame;
    };

    ZYLTPEditLinkingPointsWidget *q;
    Ui::ZYLTPEditLinkingPointsWidget ui;
    QStandardItemModel *points = nullptr;
    const ZYLTPCourseLink *courseLink = nullptr;
    ZYLTPCustomCourseLink *customLink = nullptr;
    std::map<const ZYLTPOffPartPoint *, Marker> markers;
    // Markers taken off points that the gizmo stands on, deleted once the selection signal that
    // retired them has reached every receiver (or with the panel).
    std::vector<ZYLVisVirtualObject *> retiredMarkers;
    std::unique_ptr<ZYLVisGizmo> gizmo;
    const ZYLTPOffPartPoint *gizmoPoint = nullptr;
    QPointer<ZYLVisEnvironment> environment;
    QMetaObject::Connection sceneConnection;
    QMetaObject::Connection listConnection;

    const ZYLTPCourseLink *EditedLink() const {
        return customLink ? customLink : courseLink;
    }
    QModelIndexList SelectedRows() const {
        return ui.listView_Sel->selectionModel()->selectedRows();
    }
    void ConnectScene() {
        ZYLTPLinkEdit::Reconnect(sceneConnection, environment.data(), &ZYLVisEnvironment::VisualizationSelectionChanged,
                                 q, &ZYLTPEditLinkingPointsWidget::OnVisualizationSelectionChanged);
    }
    void ConnectList() {
        ZYLTPLinkEdit::Reconnect(listConnection, ui.listView_Sel->selectionModel(), &QItemSelectionModel::selectionChanged,
                                 q, &ZYLTPEditLinkingPointsWidget::OnLinkingPtListSelectionChanged);
    }

    // The look of a marker: all axes of the point's frame, as a secondary highlight.
    static ZYLVisRep *MarkerRep(const ZYLTPOffPartPoint *point) {
        ZYLEditTPGraphicsMgr *manager = Manager();
        return manager->CreatePointsSelectionVisRep({point}, ZYLTPVisualizationOptions::AllAxes,
                                                    manager->GetCurrentOptions(), 1);
    }
    ZYLVisVirtualObject *CreatePointMarker(const ZYLTPOffPartPoint *point) const;
    void RemovePointMarkers();
    void DropRetiredMarkers();
    void RefreshLinkGraphics();
    void FillPointList();
    void UpdatePointSelectionState();
    void ShowOffsets(const ZYLMathPoint &point, const ZYLMathPoint &reference);
    QList<const ZYLTPOffPartPoint *> GetSelectedPointsForEdit();
    void Insert(bool before);
    // Runs a group of edits of the custom link as one and reports a refusal of the model.
    void Edit(const QString &name, const std::function<void()> &edits);
};

ZYLVisVirtualObject *ZYLTPEditLinkingPointsWidget::Data::CreatePointMarker(const ZYLTPOffPartPoint *point) const {
    ZYLEditTPGraphicsMgr *manager = Manager();
    if (!environment || !manager)
        return nullptr;
    auto *marker = new ZYLVisVirtualObject(environment);
    marker->SetRep(MarkerRep(point));
    marker->SetSelectability(true);
    environment->AddVirtualObject(marker);
    return marker;
}

void ZYLTPEditLinkingPointsWidget::Data::RemovePointMarkers() {
    for (auto &[point, marker] : markers)
        retiredMarkers.push_back(marker.object);
    markers.clear();
    DropRetiredMarkers();
}

void ZYLTPEditLinkingPointsWidget::Data::DropRetiredMarkers() {
    for (ZYLVisVirtualObject *marker : std::exchange(retiredMarkers, {})) {
        if (marker && environment)
            environment->RemoveVirtualObject(marker);
        delete marker;
    }
}

void ZYLTPEditLinkingPointsWidget::Data::RefreshLinkGraphics() {
    const ZYLVisEnvironmentBatchContext batch(environment);
    const ZYLTPCourseLink *link = EditedLink();
    ZYLEditTPGraphicsMgr *manager = Manager();
    if (!link || !manager) {
        RemovePointMarkers();
        return;
    }
    ZYLVisVirtualObject *node = manager->GetCourseLinkVirtualNode(link);
    QList<ZYLVisVirtualObject *> others = manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseLinkNodes);
    others.removeAll(node);
    manager->SetVirtualNodesVisibility(false, others);
    if (customLink && !node) {
        node = manager->AddCourseLinkVirtualNode(customLink, manager->GetCurrentOptions());
        if (node && environment)
            environment->AddToSelection(node);
    }
    if (node) {
        node->SetSelectability(false);
        manager->UpdateVirtualNode(node, ZYLTPVisualizationOptions());
    }

    // Only markers of points that left the link or whose frame changed are rebuilt: a drag
    // step moves one point of a link that may have a thousand.
    const QList<const ZYLTPOffPartPoint *> interior = GetLinkInteriorPoints(link);
    const QSet<const ZYLTPOffPartPoint *> present(interior.begin(), interior.end());
    for (auto it = markers.begin(); it != markers.end();) {
        if (present.contains(it->first)) {
            ++it;
            continue;
        }
        if (it->second.object && environment)
            environment->RemoveVirtualObject(it->second.object);
        delete it->second.object;
        it = markers.erase(it);
    }
    for (const ZYLTPOffPartPoint *point : interior) {
        Marker &marker = markers[point];
        const ZYLMathAxis frame = point->GetAxis();
        if (!marker.object) {
            marker.object = CreatePointMarker(point);
            if (marker.object && point == gizmoPoint)
                marker.object->SetVisibility(false);
        } else if (marker.frame != frame) {
            marker.object->SetRep(MarkerRep(point));
        }
        marker.frame = frame;
    }
}

void ZYLTPEditLinkingPointsWidget::Data::FillPointList() {
    points->clear();
    const QIcon icon = ZYLTPLinkEdit::GetRowIcon();
    QList<QStandardItem *> rows;
    for (const ZYLTPOffPartPoint *point : GetLinkInteriorPoints(EditedLink()))
        rows.append(ZYLTPLinkEdit::NewRow(icon, tr("Point.%1").arg(rows.size() + 1), QVariant::fromValue(point)));
    // One insertion for all rows: a link may have thousands of points.
    points->insertColumn(0, rows);
}

void ZYLTPEditLinkingPointsWidget::Data::UpdatePointSelectionState() {
    const QModelIndexList rows = SelectedRows();
    if (!rows.isEmpty() && gizmoPoint) {
        Marker &marker = markers[gizmoPoint];
        if (marker.object) {
            marker.object->SetVisibility(true);
            if (environment) {
                environment->RemoveVirtualObject(marker.object);
                environment->AddVirtualObject(marker.object);
            }
        } else {
            marker.object = CreatePointMarker(gizmoPoint);
            marker.frame = gizmoPoint->GetAxis();
        }
    }
    if (rows.size() == 1) {
        gizmoPoint = PointOf(rows.first());
        auto it = markers.find(gizmoPoint);
        if (it != markers.end() && it->second.object)
            it->second.object->SetVisibility(false);
        if (gizmoPoint) {
            gizmo->SetPosition(gizmoPoint->GetAxis());
            ui.checkBox_Relative->setEnabled(true);
            ShowOffsets(gizmoPoint->GetTipPoint(), gizmoPoint->GetTipPoint());
            return;
        }
    }
    gizmoPoint = nullptr;
    gizmo->Show(false);
    {
        const QSignalBlocker block(ui.checkBox_Relative);
        ui.checkBox_Relative->setChecked(true);
    }
    ui.checkBox_Relative->setEnabled(false);
    ShowOffsets(ZYLMathPoint(), ZYLMathPoint());
}

void ZYLTPEditLinkingPointsWidget::Data::ShowOffsets(const ZYLMathPoint &point, const ZYLMathPoint &reference) {
    const bool relative = ui.checkBox_Relative->isChecked();
    const QList<QDoubleSpinBox *> boxes{ui.doubleSpinBox_Xoffset, ui.doubleSpinBox_Yoffset, ui.doubleSpinBox_Zoffset};
    for (int c = 0; c < 3; ++c) {
        const QSignalBlocker block(boxes[c]);
        boxes[c]->setValue(relative ? point[c] - reference[c] : point[c]);
    }
}

QList<const ZYLTPOffPartPoint *> ZYLTPEditLinkingPointsWidget::Data::GetSelectedPointsForEdit() {
    QList<const ZYLTPOffPartPoint *> selected;
    const QModelIndexList rows = SelectedRows();
    if (customLink) {
        for (const QModelIndex &row : rows)
            if (const ZYLTPOffPartPoint *point = PointOf(row))
                selected.append(point);
        return selected;
    }
    if (!courseLink)
        return selected;
    QList<int> indices;
    for (const QModelIndex &row : rows)
        if (const ZYLTPOffPartPoint *point = PointOf(row))
            indices.append(courseLink->GetPointIndex(point));
    if (indices.isEmpty())
        return selected;
    customLink = courseLink->GetProcedure()->ConvertLinkToCustom(const_cast<ZYLTPCourseLink *>(courseLink));
    for (int index : indices)
        selected.append(customLink->GetPoint(index));
    return selected;
}

void ZYLTPEditLinkingPointsWidget::Data::Edit(const QString &name, const std::function<void()> &edits) {
    try {
        ZYLTPLinkEdit::Run(name, edits);
    } catch (const ZYLSysException &error) {
        QMessageBox::critical(q, tr("Error"), error.GetMessage());
    }
}

void ZYLTPEditLinkingPointsWidget::Data::Insert(bool before) {
    const QList<const ZYLTPOffPartPoint *> selected = GetSelectedPointsForEdit();
    if (!customLink || selected.isEmpty())
        return;
    const auto kind = ZYLTPCustomCourseLink::VectorInterpolation(ui.comboBox_VecInterpolation->currentData().toInt());
    const int count = ui.spinBox_NumOfPts->value();
    Edit(before ? tr("Insert linking points before") : tr("Insert linking points after"), [&] {
        for (const ZYLTPOffPartPoint *point : selected) {
            if (before)
                customLink->InsertPointsBefore(point, count, kind);
            else
                customLink->InsertPointsAfter(point, count, kind);
        }
    });
    RefreshLinkGraphics();
    FillPointList();
}

ZYLTPEditLinkingPointsWidget::ZYLTPEditLinkingPointsWidget(QWidget *parent)
    : QMainWindow(parent), d(std::make_unique<Data>(this)) {
    qRegisterMetaType<const ZYLTPOffPartPoint *>("const ZYLTPOffPartPoint*");
    qRegisterMetaType<ZYLTPOffPartPoint *>("ZYLTPOffPartPoint*");
    qRegisterMetaType<ZYLMathAxis>("ZYLMathAxis");
    ZYLTPMetaTypes::GetVisObjectSetType();
    d->ui.setupUi(this);
    // The panel sits in the host's frame, not in a window of its own.
    setWindowFlags(Qt::Widget);

    for (QPushButton *header :
         {d->ui.ButtonSelection, d->ui.ButtonSelection_Insertoptions, d->ui.ButtonSelection_interpolation})
        ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(header);
    for (QComboBox *combo : {d->ui.comboBox_VecInterpolation, d->ui.comboBox_VecInterpolation_2}) {
        combo->clear();
        for (ZYLTPCustomCourseLink::VectorInterpolation kind : ZYLTPCustomCourseLink::GetAllVectorInterpolation())
            combo->addItem(ZYLTPCustomCourseLink::GetVectorInterpolationString(kind), int(kind));
    }
    d->points = new QStandardItemModel(this);
    d->ui.listView_Sel->setModel(d->points);

    d->environment = ZYLTPEditGraphics::GetEditEnvironment();
    if (d->environment) {
        d->gizmo = std::make_unique<ZYLVisGizmo>(d->environment);
        d->gizmo->SetEnabledInteraction(ZYLVisGizmo::TranslateX | ZYLVisGizmo::TranslateY | ZYLVisGizmo::TranslateZ |
                                        ZYLVisGizmo::RotateX | ZYLVisGizmo::RotateY);
        // Nothing is selected yet: the gizmo waits hidden for a single point.
        d->gizmo->Show(false);
    }
    d->UpdatePointSelectionState();

    adjustSize();
    setMinimumSize(width(), 0);
    setupConnections();
}

ZYLTPEditLinkingPointsWidget::~ZYLTPEditLinkingPointsWidget() {
    d->RemovePointMarkers();
    if (d->environment) {
        d->environment->SetMouseInteraction(ZYLVisEnvironment::NoMouseInteraction);
        d->environment->SetMouseSnapGeometryTypes(ZYLVisEnvironment::SnapNothing);
    }
    d->gizmo.reset();
}

void ZYLTPEditLinkingPointsWidget::setupConnections() {
    const QList<std::pair<QPushButton *, QFrame *>> sections{
        {d->ui.ButtonSelection, d->ui.frame_selection},
        {d->ui.ButtonSelection_Insertoptions, d->ui.frame_insertoptions},
        {d->ui.ButtonSelection_interpolation, d->ui.frame_interpolation}};
    for (const auto &[header, frame] : sections)
        connect(header, &QPushButton::toggled, frame, &QWidget::setVisible);
    connect(d->ui.actionExpand_or_collapse_all, &QAction::toggled, this, [this, sections](bool expanded) {
        for (const auto &[header, frame] : sections) {
            header->setChecked(expanded);
            frame->setVisible(expanded);
        }
    });
    connect(d->ui.actionMini_toolbar, &QAction::toggled, this, [this, sections](bool shown) {
        for (const auto &[header, frame] : sections) {
            header->setVisible(shown);
            frame->setVisible(shown && header->isChecked());
        }
        d->ui.actionExpand_or_collapse_all->setEnabled(shown);
    });

    d->ConnectScene();
    d->ConnectList();
    for (QDoubleSpinBox *box : {d->ui.doubleSpinBox_Xoffset, d->ui.doubleSpinBox_Yoffset, d->ui.doubleSpinBox_Zoffset})
        connect(box, &QDoubleSpinBox::valueChanged, this, &ZYLTPEditLinkingPointsWidget::OnCoordinateChanged);
    connect(d->ui.checkBox_Relative, &QCheckBox::toggled, this, &ZYLTPEditLinkingPointsWidget::OnRelativeToggled);
    connect(d->ui.pushButton_InsertBefore, &QPushButton::clicked, this,
            &ZYLTPEditLinkingPointsWidget::OnInsertBeforeButtonClicked);
    connect(d->ui.pushButton_InsertAfter, &QPushButton::clicked, this,
            &ZYLTPEditLinkingPointsWidget::OnInsertAfterButtonClicked);
    connect(d->ui.pushButton_SelAll, &QPushButton::clicked, this,
            &ZYLTPEditLinkingPointsWidget::OnSelectAllButtonClicked);
    connect(d->ui.pushButton_DeselAll, &QPushButton::clicked, this,
            &ZYLTPEditLinkingPointsWidget::OnDeselectAllButtonClicked);
    connect(d->ui.pushButton_Delete, &QPushButton::clicked, this, &ZYLTPEditLinkingPointsWidget::OnDeleteButtonClicked);
    connect(d->ui.pushButton_Interpolate, &QPushButton::clicked, this,
            &ZYLTPEditLinkingPointsWidget::OnInterpolateButtonClicked);
    if (d->gizmo)
        connect(d->gizmo.get(), &ZYLVisGizmo::PositionChanged, this, &ZYLTPEditLinkingPointsWidget::OnPositionChanged);
}

void ZYLTPEditLinkingPointsWidget::SetCourseLink(const ZYLTPCourseLink *link) {
    d->courseLink = link;
    if (!link)
        return;
    d->customLink = qobject_cast<ZYLTPCustomCourseLink *>(const_cast<ZYLTPCourseLink *>(link));
    if (!d->customLink)
        d->customLink = link->GetProcedure()->ConvertLinkToCustom(const_cast<ZYLTPCourseLink *>(link));
    d->RefreshLinkGraphics();
    d->FillPointList();
}

void ZYLTPEditLinkingPointsWidget::Detach() {
    disconnect(d->sceneConnection);
    disconnect(d->listConnection);
    if (d->gizmo) {
        disconnect(d->gizmo.get(), nullptr, this, nullptr);
        d->gizmo->Show(false);
    }
    d->RemovePointMarkers();
}

void ZYLTPEditLinkingPointsWidget::OnCoordinateChanged() {
    const QList<QDoubleSpinBox *> boxes{d->ui.doubleSpinBox_Xoffset, d->ui.doubleSpinBox_Yoffset,
                                        d->ui.doubleSpinBox_Zoffset};
    auto *box = qobject_cast<QDoubleSpinBox *>(sender());
    const int coordinate = boxes.indexOf(box);
    if (coordinate < 0)
        return;
    const bool relative = d->ui.checkBox_Relative->isChecked();
    const QModelIndexList rows = d->SelectedRows();
    // Several points cannot all take one coordinate: only a common displacement applies.
    if (rows.size() > 1 && !relative)
        return;
    if (d->customLink) {
        d->Edit(tr("Move linking points"), [&] {
            for (const QModelIndex &row : rows) {
                const ZYLTPOffPartPoint *point = PointOf(row);
                if (!point)
                    continue;
                const ZYLMathPoint tip = point->GetTipPoint();
                const ZYLMathPoint moved =
                    WithCoordinate(tip, coordinate, relative ? tip[coordinate] + box->value() : box->value());
                d->customLink->TranslateRange(point, point, moved - tip);
            }
        });
    }
    if (rows.size() == 1 && d->gizmo) {
        if (const ZYLTPOffPartPoint *point = PointOf(rows.first())) {
            ZYLMathAxis position = d->gizmo->GetPosition();
            position.SetOrigin(point->GetTipPoint());
            d->gizmo->SetPosition(position);
        }
    }
    d->RefreshLinkGraphics();
}

void ZYLTPEditLinkingPointsWidget::OnRelativeToggled() {
    if (d->gizmoPoint)
        d->ShowOffsets(d->gizmoPoint->GetTipPoint(), d->gizmoPoint->GetTipPoint());
}

void ZYLTPEditLinkingPointsWidget::OnInsertBeforeButtonClicked() {
    d->Insert(true);
}

void ZYLTPEditLinkingPointsWidget::OnInsertAfterButtonClicked() {
    d->Insert(false);
}

void ZYLTPEditLinkingPointsWidget::OnSelectAllButtonClicked() {
    d->ui.listView_Sel->selectAll();
}

void ZYLTPEditLinkingPointsWidget::OnDeselectAllButtonClicked() {
    d->ui.listView_Sel->clearSelection();
}

void ZYLTPEditLinkingPointsWidget::OnDeleteButtonClicked() {
    const QList<const ZYLTPOffPartPoint *> selected = d->GetSelectedPointsForEdit();
    if (d->customLink && !selected.isEmpty())
        d->Edit(tr("Delete linking points"), [&] {
            for (const ZYLTPOffPartPoint *point : selected)
                d->customLink->RemovePoint(point);
        });
    d->RefreshLinkGraphics();
    d->FillPointList();
    d->UpdatePointSelectionState();
}

void ZYLTPEditLinkingPointsWidget::OnInterpolateButtonClicked() {
    const QList<const ZYLTPOffPartPoint *> selected = d->GetSelectedPointsForEdit();
    if (d->customLink && selected.size() >= 2) {
        const auto kind =
            ZYLTPCustomCourseLink::VectorInterpolation(d->ui.comboBox_VecInterpolation_2->currentData().toInt());
        d->Edit(tr("Interpolate linking points"), [&] {
            for (int i = 0; i + 1 < selected.size(); ++i) {
                // The model takes a range in the link's order; the user may have picked
                // the later point first.
                const ZYLTPOffPartPoint *from = selected[i];
                const ZYLTPOffPartPoint *to = selected[i + 1];
                if (d->customLink->GetPointIndex(to) < d->customLink->GetPointIndex(from))
                    std::swap(from, to);
                d->customLink->InterpolateRange(from, to, kind);
            }
        });
    }
    d->RefreshLinkGraphics();
    d->FillPointList();
}

void ZYLTPEditLinkingPointsWidget::OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &selected,
                                                                   const QSet<ZYLVisObject *> &deselected) {
    if ((selected.isEmpty() && deselected.isEmpty()) || !d->environment)
        return;
    try {
        QHash<const ZYLVisObject *, const ZYLTPOffPartPoint *> pointOfMarker;
        for (const auto &[point, marker] : d->markers)
            if (marker.object)
                pointOfMarker.insert(marker.object, point);
        QList<const ZYLTPOffPartPoint *> picked;
        for (ZYLVisObject *object : d->environment->GetVisualizationSelection())
            if (const ZYLTPOffPartPoint *point = pointOfMarker.value(object))
                picked.append(point);
        if (picked.isEmpty())
            return;
        disconnect(d->listConnection);
        QItemSelectionModel *selection = d->ui.listView_Sel->selectionModel();
        selection->clearSelection();
        for (const ZYLTPOffPartPoint *point : picked) {
            const QModelIndexList rows = d->points->match(d->points->index(0, 0), Qt::UserRole,
                                                          QVariant::fromValue(point), 1, Qt::MatchExactly);
            if (!rows.isEmpty())
                selection->select(rows.first(), QItemSelectionModel::Select);
        }
        if (picked.size() == 1) {
            // The gizmo takes the place of the picked marker, once the selection signal has
            // reached every receiver.
            if (ZYLVisVirtualObject *marker = std::exchange(d->markers[picked.first()].object, nullptr)) {
                d->retiredMarkers.push_back(marker);
                QTimer::singleShot(1, this, [this] { d->DropRetiredMarkers(); });
            }
        }
        d->UpdatePointSelectionState();
    } catch (...) {
        qDebug() << "Exception fired in OnVisualizationSelectionChanged.";
    }
    d->ConnectList();
}

void ZYLTPEditLinkingPointsWidget::OnLinkingPtListSelectionChanged(const QItemSelection &, const QItemSelection &) {
    disconnect(d->sceneConnection);
    try {
        if (d->environment) {
            d->environment->SetVisualizationSelection({});
            d->environment->SetPreSelectedObjects({});
            const QModelIndexList rows = d->SelectedRows();
            if (rows.size() > 1) {
                const ZYLVisEnvironmentBatchContext batch(d->environment);
                for (const QModelIndex &row : rows) {
                    const auto it = d->markers.find(PointOf(row));
                    if (it != d->markers.end() && it->second.object)
                        d->environment->SelectObject(it->second.object);
                }
            }
        }
        d->UpdatePointSelectionState();
    } catch (...) {
        qDebug() << "Exception fired in OnLinkingPtListSelectionChanged.";
    }
    d->ConnectScene();
}

void ZYLTPEditLinkingPointsWidget::OnPositionChanged(const ZYLMathAxis &position) {
    const ZYLTPOffPartPoint *point = d->gizmoPoint;
    if (!point)
        return;
    d->ShowOffsets(position.GetOrigin(), point->GetTipPoint());
    if (d->customLink) {
        try {
            ZYLTPLinkEdit::Run(tr("Move linking point"), [&] {
                d->customLink->TranslateRange(point, point, position.GetOrigin() - point->GetTipPoint());
                for (int axis = ZYLTPOffPartPoint::FirstAxis; axis <= ZYLTPOffPartPoint::ThirdAxis; ++axis)
                    d->customLink->AlignRange(point, point, ZYLTPOffPartPoint::Axis(axis), position.GetDirection(axis));
            });
        } catch (const ZYLSysException &error) {
            // A drag goes on; a message box in the middle of it would only get in the way.
            qDebug() << "The linking point does not follow the gizmo:" << error.GetMessage();
        }
    }
    d->RefreshLinkGraphics();
}
