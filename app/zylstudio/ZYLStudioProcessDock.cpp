// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioProcessDock.h"

#include "ZYLStudioProcessChecks.h"

#include "ui_ZYLStudioProcessDock.h"

#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QSortFilterProxyModel>

#include <cmath>

namespace {

enum Column { KindColumn, CourseColumn, PointsColumn, TowsColumn, ValueColumn, LimitColumn, NumColumns };
// The number a column sorts by.
constexpr int SortRole = Qt::UserRole;

// The violations of one check, read straight from it.
class ViolationModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetCheck(std::shared_ptr<const ZYLTPProcessCheck> check)
    {
        beginResetModel();
        m_check = std::move(check);
        endResetModel();
    }
    const ZYLTPProcessCheck::Violation &GetViolation(int row) const { return m_check->GetViolations()[size_t(row)]; }
    // Lengths are shown in the display unit, which may change under the table.
    void RefreshUnits() { emit dataChanged(index(0, 0), index(rowCount() - 1, NumColumns - 1)); }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() || !m_check ? 0 : int(m_check->GetViolations().size());
    }
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : NumColumns; }

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid() || (role != Qt::DisplayRole && role != SortRole && role != Qt::TextAlignmentRole))
            return {};
        const ZYLTPProcessCheck::Violation &v = GetViolation(index.row());
        const int column = index.column();
        if (role == Qt::TextAlignmentRole)
            return column == KindColumn || column == TowsColumn ? QVariant() : QVariant(Qt::AlignRight | Qt::AlignVCenter);
        const bool sort = role == SortRole;
        switch (column) {
        case KindColumn:
            return sort ? QVariant(int(v.kind)) : ZYLTPProcessCheck::KindName(v.kind);
        case CourseColumn:
            return sort ? QVariant(qint64(v.procedure) << 32 | v.course)
                        : QVariant(v.procedure == 0 ? QString::number(v.course + 1)
                                                    : QStringLiteral("%1.%2").arg(v.procedure + 1).arg(v.course + 1));
        case PointsColumn:
            return sort ? QVariant(v.firstPoint) : QStringLiteral("%1–%2").arg(v.firstPoint + 1).arg(v.lastPoint + 1);
        case TowsColumn:
            return sort ? QVariant(v.tows.GetRawValue()) : v.tows.GetString();
        case ValueColumn:
            return sort ? QVariant(v.value) : ZYLSysValue(ZYLSysValue::Length, v.value).ToString();
        case LimitColumn:
            return sort ? QVariant(v.limit) : ZYLSysValue(ZYLSysValue::Length, v.limit).ToString();
        }
        return {};
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        switch (section) {
        case KindColumn:
            return ZYLStudioProcessDock::tr("Kind");
        case CourseColumn:
            return ZYLStudioProcessDock::tr("Course");
        case PointsColumn:
            return ZYLStudioProcessDock::tr("Points");
        case TowsColumn:
            return ZYLStudioProcessDock::tr("Tows");
        case ValueColumn:
            return ZYLStudioProcessDock::tr("Value");
        case LimitColumn:
            return ZYLStudioProcessDock::tr("Limit");
        }
        return {};
    }

private:
    std::shared_ptr<const ZYLTPProcessCheck> m_check;
};

} // namespace

struct ZYLStudioProcessDock::Data {
    Ui::ZYLStudioProcessDock ui;
    ZYLStudioProcessChecks *checks = nullptr;
    ViolationModel *model = nullptr;
    QSortFilterProxyModel *proxy = nullptr;
};

ZYLStudioProcessDock::ZYLStudioProcessDock(ZYLStudioProcessChecks *checks, QWidget *parent)
    : QDockWidget(tr("Process Checks"), parent), d(std::make_unique<Data>())
{
    d->checks = checks;
    auto *content = new QWidget(this);
    d->ui.setupUi(content);
    setWidget(content);
    d->ui.kindCombo->addItem(tr("All kinds"), -1);
    for (auto kind : {ZYLTPProcessCheck::SteeringRadius, ZYLTPProcessCheck::AddLength, ZYLTPProcessCheck::CutLength,
                      ZYLTPProcessCheck::CourseLength})
        d->ui.kindCombo->addItem(ZYLTPProcessCheck::KindName(kind), int(kind));
    d->model = new ViolationModel(this);
    d->proxy = new QSortFilterProxyModel(this);
    d->proxy->setSourceModel(d->model);
    d->proxy->setSortRole(SortRole);
    d->proxy->setFilterRole(SortRole);
    d->proxy->setFilterKeyColumn(KindColumn);
    d->ui.violationsView->setModel(d->proxy);
    d->ui.violationsView->sortByColumn(CourseColumn, Qt::AscendingOrder);
    d->ui.violationsView->horizontalHeader()->setStretchLastSection(false);
    d->model->SetCheck(checks->GetCheck());
    setupConnections();
    UpdateStatus();
}

ZYLStudioProcessDock::~ZYLStudioProcessDock() = default;

void ZYLStudioProcessDock::setupConnections()
{
    connect(d->checks, &ZYLStudioProcessChecks::CheckChanged, this, [this] {
        d->model->SetCheck(d->checks->GetCheck());
        d->ui.violationsView->resizeColumnsToContents();
        UpdateStatus();
    });
    connect(d->checks, &ZYLStudioProcessChecks::RunningChanged, this, &ZYLStudioProcessDock::UpdateStatus);
    connect(d->ui.cancelButton, &QPushButton::clicked, d->checks, &ZYLStudioProcessChecks::Cancel);
    connect(d->ui.kindCombo, &QComboBox::currentIndexChanged, this, [this] {
        const int kind = d->ui.kindCombo->currentData().toInt();
        d->proxy->setFilterRegularExpression(kind < 0 ? QString() : QStringLiteral("^%1$").arg(kind));
        UpdateStatus();
    });
    connect(d->ui.violationsView, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        emit ViolationActivated(d->model->GetViolation(d->proxy->mapToSource(index).row()));
    });
    connect(ZYLSysUnits::GetInstance(), &ZYLSysUnits::CurrentUnitChanged, this, [this] { d->model->RefreshUnits(); });
}

void ZYLStudioProcessDock::UpdateStatus()
{
    const bool running = d->checks->IsRunning();
    d->ui.cancelButton->setEnabled(running);
    const auto check = d->checks->GetCheck();
    QString text;
    if (running)
        text = tr("Checking…");
    else if (!check)
        text = tr("No program checked");
    else if (check->GetViolations().empty())
        text = tr("No violation in %n course(s)", nullptr, check->GetNumCourses());
    else
        text = tr("%n violation(s), %1 shown", nullptr, int(check->GetViolations().size())).arg(d->proxy->rowCount());
    d->ui.statusLabel->setText(text);
}
