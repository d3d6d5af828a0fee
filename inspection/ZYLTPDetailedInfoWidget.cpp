// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDetailedInfoWidget.h"

#include "ui_ZYLTPDetailedInfoWidget.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPDetailedTableCsvWriter.h"
#include "ZYLTPDetailedTableFilter.h"
#include "ZYLTPDetailedTableModel.h"

#include "ZYLCmnFilterProxyModel.h"
#include "ZYLCmnUISettings.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalBlocker>

#include <array>

namespace {

using Model = ZYLTPDetailedTableModel;

// Column widths follow this many rows of a table besides those on screen.
constexpr int RowsMeasured = 200;

// Rows of a table without word wrap hold one line of text each, so they take the height of
// the first row rather than being measured one by one (a million of them).
void ResizeToContents(QTableView *view)
{
    view->resizeColumnsToContents();
    if (view->wordWrap()) {
        view->resizeRowsToContents();
    } else if (view->model()->rowCount() > 0) {
        view->resizeRowToContents(0);
        // Setting the height visits every row, even when it does not change.
        if (view->rowHeight(0) != view->verticalHeader()->defaultSectionSize())
            view->verticalHeader()->setDefaultSectionSize(view->rowHeight(0));
    }
}

// The sections of a view a table's visibility applies to: rows of the operation table,
// columns of the others.
Qt::Orientation SectionOrientation(int table)
{
    return table == Model::Operation ? Qt::Vertical : Qt::Horizontal;
}

// Keeps the wait cursor up while a long step runs.
struct WaitCursor {
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

} // namespace

struct ZYLTPDetailedInfoWidget::Data {
    Ui::ZYLTPDetailedInfoWidget ui;
    std::array<Model *, 4> models{};
    // The filter proxies of the course, laying points and linking motion tables (none for
    // the operation table, which is shown directly).
    std::array<ZYLCmnFilterProxyModel *, 4> proxies{};

    QTableView *View(int table) const
    {
        const std::array<QTableView *, 4> views{ui.tableView_operation, ui.tableView_course, ui.tableView_layingPoint,
                                                ui.tableView_linkingMotion};
        return views[size_t(table)];
    }
    int CurrentTable() const { return ui.comboBox_objectType->currentIndex(); }
    bool IsSectionHidden(int table, int section) const
    {
        return table == Model::Operation ? View(table)->isRowHidden(section) : View(table)->isColumnHidden(section);
    }
    void SetSectionHidden(int table, int section, bool hidden) const
    {
        if (table == Model::Operation)
            View(table)->setRowHidden(section, hidden);
        else
            View(table)->setColumnHidden(section, hidden);
    }
    int SectionCount(int table) const
    {
        const QAbstractItemModel *model = View(table)->model();
        return table == Model::Operation ? model->rowCount() : model->columnCount();
    }
    QString SectionLabel(int table, int section) const
    {
        return View(table)->model()->headerData(section, SectionOrientation(table), Model::LabelRole).toString();
    }
};

ZYLTPDetailedInfoWidget::ZYLTPDetailedInfoWidget(QWidget *parent)
    // A main window is a window of its own unless told otherwise; this one lives in the
    // command's frame.
    : QMainWindow(parent, Qt::Widget)
    , d(std::make_unique<Data>())
{
    setWindowFlags(Qt::Widget);
    d->ui.setupUi(this);
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    const ZYLTPProgram *program = manager ? manager->GetToolPathProgram() : nullptr;
    for (int table = Model::Operation; table <= Model::LinkingMotion; ++table) {
        auto *model = new Model(Model::Table(table), program, this);
        d->models[size_t(table)] = model;
        QTableView *view = d->View(table);
        if (table == Model::Operation) {
            view->setModel(model);
        } else {
            auto *proxy = new ZYLCmnFilterProxyModel(this);
            proxy->setSourceModel(model);
            d->proxies[size_t(table)] = proxy;
            view->setModel(proxy);
            // A click on a column header sorts, as in a view with sorting on: it does not
            // select the column (a million cells that a sort would have to carry along).
            QHeaderView *header = view->horizontalHeader();
            header->setSectionsClickable(true);
            header->setResizeContentsPrecision(RowsMeasured);
            disconnect(header, SIGNAL(sectionPressed(int)), view, SLOT(selectColumn(int)));
            disconnect(header, SIGNAL(sectionEntered(int)), view, SLOT(_q_selectColumn(int)));
        }
    }
    d->ui.groupBox_Filter->setEnabled(false);
    for (int table = Model::Operation; table <= Model::LinkingMotion; ++table) {
        d->View(table)->setVisible(table == Model::Operation);
        ResizeToContents(d->View(table));
        ApplySavedVisibility(table);
    }
    setupConnections();
}

ZYLTPDetailedInfoWidget::~ZYLTPDetailedInfoWidget() = default;

void ZYLTPDetailedInfoWidget::setupConnections()
{
    Ui::ZYLTPDetailedInfoWidget &ui = d->ui;
    connect(ui.comboBox_objectType, &QComboBox::currentIndexChanged, this,
            &ZYLTPDetailedInfoWidget::OnComboBoxObjectTypeCurrentIndexChanged);
    connect(ui.comboBox_property, &QComboBox::currentIndexChanged, this,
            &ZYLTPDetailedInfoWidget::OnComboBoxPropertyCurrentIndexChanged);
    connect(ui.buttonBox->button(QDialogButtonBox::Save), &QPushButton::clicked, this,
            &ZYLTPDetailedInfoWidget::OnButtonBoxSave);
    connect(ui.pushButton_clearFilter, &QPushButton::clicked, this,
            &ZYLTPDetailedInfoWidget::OnPushButtonClearFilterSave);
    connect(ui.pushButton_applyFilter, &QPushButton::clicked, this,
            &ZYLTPDetailedInfoWidget::OnPushButtonApplyFilterSave);
    connect(ui.tableView_course, &QWidget::customContextMenuRequested, this,
            &ZYLTPDetailedInfoWidget::OnTableViewCourseCustomContextMenuRequested);
    connect(ui.tableView_operation, &QWidget::customContextMenuRequested, this,
            &ZYLTPDetailedInfoWidget::OnTableViewOperationCustomContextMenuRequested);
    connect(ui.tableView_layingPoint, &QWidget::customContextMenuRequested, this,
            &ZYLTPDetailedInfoWidget::OnTableViewLayingPointCustomContextMenuRequested);
    connect(ui.tableView_linkingMotion, &QWidget::customContextMenuRequested, this,
            &ZYLTPDetailedInfoWidget::OnTableViewLinkingMotionCustomContextMenuRequested);
    for (int table = Model::Course; table <= Model::LinkingMotion; ++table) {
        connect(d->View(table)->horizontalHeader(), &QHeaderView::sectionClicked, this,
                [this, table](int column) { OnHeaderClicked(table, column); });
    }
}

void ZYLTPDetailedInfoWidget::OnComboBoxObjectTypeCurrentIndexChanged(int index)
{
    if (index < Model::Operation || index > Model::LinkingMotion)
        return;
    d->ui.groupBox_Filter->setEnabled(index != Model::Operation);
    if (index != Model::Operation)
        RefillProperties(index);
    for (int table = Model::Operation; table <= Model::LinkingMotion; ++table)
        d->View(table)->setVisible(table == index);
}

void ZYLTPDetailedInfoWidget::RefillProperties(int table)
{
    QComboBox *combo = d->ui.comboBox_property;
    // The conditions follow the item chosen once every item has its type.
    const QSignalBlocker blocker(combo);
    combo->clear();
    const auto add = [combo](const QString &text, int type, const QString &label) {
        combo->addItem(text);
        combo->setItemData(combo->count() - 1, type, Qt::UserRole);
        combo->setItemData(combo->count() - 1, label, Model::LabelRole);
    };
    for (const Model::Column &column : Model::GetColumns(Model::Table(table)))
        add(Model::Translate(column.name.toUtf8().constData()), column.type, column.label);
    if (table == Model::Course) {
        for (int tow = 1; tow <= Model::NumTowLengthColumns; ++tow)
            add(Model::GetTowLengthText(tow), Model::PhysicalValue, Model::GetTowLengthLabel(tow));
    }
    OnComboBoxPropertyCurrentIndexChanged(combo->currentIndex());
}

void ZYLTPDetailedInfoWidget::OnComboBoxPropertyCurrentIndexChanged(int index)
{
    if (index < 0)
        return;
    QComboBox *conditions = d->ui.comboBox_condition;
    conditions->clear();
    const int type = d->ui.comboBox_property->itemData(index, Qt::UserRole).toInt();
    for (int code : ZYLTPDetailedTableFilter::GetConditions(type)) {
        conditions->addItem(Model::Translate(ZYLTPDetailedTableFilter::GetConditionLabel(code).toUtf8().constData()),
                            code);
    }
}

void ZYLTPDetailedInfoWidget::ShowError(const QString &message)
{
    QMessageBox::critical(this, tr("Error"), message, QMessageBox::Ok);
}

void ZYLTPDetailedInfoWidget::OnPushButtonApplyFilterSave(bool)
{
    const int table = d->CurrentTable();
    if (table < Model::Course || table > Model::LinkingMotion)
        return;
    const Ui::ZYLTPDetailedInfoWidget &ui = d->ui;
    std::optional<QString> label;
    if (ui.comboBox_property->currentIndex() >= 0)
        label = ui.comboBox_property->currentData(Model::LabelRole).toString();
    std::optional<int> condition;
    if (ui.comboBox_condition->currentIndex() >= 0)
        condition = ui.comboBox_condition->currentData().toInt();
    const ZYLTPDetailedTableFilter filter =
        ZYLTPDetailedTableFilter::Create(*d->models[size_t(table)], label, condition, ui.lineEdit_value->text());
    switch (filter.GetError()) {
    case ZYLTPDetailedTableFilter::NoError: break;
    case ZYLTPDetailedTableFilter::NoProperty: return ShowError(tr("Please select a property."));
    case ZYLTPDetailedTableFilter::NoCondition: return ShowError(tr("Please select a condition."));
    case ZYLTPDetailedTableFilter::NoValue: return ShowError(tr("Please input value."));
    case ZYLTPDetailedTableFilter::NoNumber: return ShowError(tr("Please input number value."));
    case ZYLTPDetailedTableFilter::InvalidValue: return ShowError(tr("Invalid value:") + filter.GetMessage());
    }
    const WaitCursor wait;
    d->proxies[size_t(table)]->SetFilter(filter.GetFunction() ? filter.GetFunction()
                                                              : &ZYLCmnFilterProxyModel::DefaultVariantFilterFunction,
                                         filter.GetBitsFunction(), filter.GetKeyColumn(), filter.GetRole(),
                                         filter.GetVariantFilter());
    ResizeToContents(d->View(table));
}

void ZYLTPDetailedInfoWidget::OnPushButtonClearFilterSave(bool)
{
    const int table = d->CurrentTable();
    if (table < Model::Course || table > Model::LinkingMotion)
        return;
    ZYLCmnFilterProxyModel *proxy = d->proxies[size_t(table)];
    proxy->SetFilter({}, {}, proxy->filterKeyColumn(), proxy->filterRole(), ZYLSysVariantFilter());
    ResizeToContents(d->View(table));
}

void ZYLTPDetailedInfoWidget::OnHeaderClicked(int table, int column)
{
    Model *model = d->models[size_t(table)];
    QHeaderView *header = d->View(table)->horizontalHeader();
    const WaitCursor wait;
    if (model->GetSortColumn() == column) {
        model->sort(-1);
        header->setSortIndicatorShown(false);
    } else {
        model->sort(column, Qt::AscendingOrder);
        header->setSortIndicator(column, Qt::AscendingOrder);
        header->setSortIndicatorShown(true);
    }
}

void ZYLTPDetailedInfoWidget::OnButtonBoxSave(bool)
{
    const int table = d->CurrentTable();
    if (table < Model::Operation || table > Model::LinkingMotion)
        return;
    QString fileName = QFileDialog::getSaveFileName(this, tr("Save File"), QString(), QStringLiteral("*.csv"));
    if (fileName.isEmpty())
        return;
    fileName = ZYLTPDetailedTableCsvWriter::CompleteFileName(fileName);

    QTableView *view = d->View(table);
    const QAbstractItemModel *shown = view->model();
    const ZYLCmnFilterProxyModel *proxy = d->proxies[size_t(table)];
    // The proxy filters but never sorts (the model does): with every row passing and none
    // hidden, the rows are the model's, in its order, and need no mapping one by one.
    std::vector<int> rows;
    rows.reserve(size_t(shown->rowCount()));
    const bool allRows = view->verticalHeader()->hiddenSectionCount() == 0
                         && shown->rowCount() == d->models[size_t(table)]->rowCount();
    for (int row = 0; row < shown->rowCount(); ++row) {
        if (allRows)
            rows.push_back(row);
        else if (!view->isRowHidden(row))
            rows.push_back(proxy ? proxy->mapToSource(proxy->index(row, 0)).row() : row);
    }
    QList<int> columns;
    for (int column = 0; column < shown->columnCount(); ++column) {
        if (!view->isColumnHidden(column))
            columns.append(column);
    }
    ZYLTPDetailedTableCsvWriter writer(*d->models[size_t(table)], std::move(rows), columns);
    writer.SetHeadersShown(!view->horizontalHeader()->isHidden(), !view->verticalHeader()->isHidden());
    // Shown only when a save takes long; cancelling leaves no file.
    QProgressDialog progress(tr("Saving %1").arg(fileName), tr("Cancel"), 0, 100, this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    writer.SetProgress([&progress](qint64 done, qint64 total) {
        progress.setValue(total > 0 ? int(done * 100 / total) : 100);
        return !progress.wasCanceled();
    });
    const auto written = [&writer, &fileName] {
        const WaitCursor wait;
        return writer.Write(fileName);
    }();
    if (written == ZYLTPDetailedTableCsvWriter::Failed)
        ShowError(tr("Unable to save to ") + fileName);
}

void ZYLTPDetailedInfoWidget::ApplySavedVisibility(int table)
{
    QStringList labels;
    for (const Model::Column &column : Model::GetColumns(Model::Table(table)))
        labels.append(column.label);
    if (table == Model::Operation || table == Model::Course) {
        for (int tow = 1; tow <= Model::NumTowLengthColumns; ++tow)
            labels.append(Model::GetTowLengthLabel(tow));
    }
    const QString prefix = Model::GetSettingsName(Model::Table(table)) + QLatin1Char('_');
    ZYLCmnUISettings *settings = ZYLCmnUISettings::GetInstance();
    for (const QString &label : labels) {
        if (settings->GetValue(this, (prefix + label).toUtf8(), true).toBool())
            continue;
        // Every section of the label: the operation table repeats its rows per procedure.
        for (int section = 0; section < d->SectionCount(table); ++section) {
            if (d->SectionLabel(table, section) == label)
                d->SetSectionHidden(table, section, true);
        }
    }
}

void ZYLTPDetailedInfoWidget::ShowSectionMenu(int table, const QPoint &pos)
{
    QTableView *view = d->View(table);
    const Qt::Orientation orientation = SectionOrientation(table);
    QMenu menu(this);
    for (int section = 0; section < d->SectionCount(table); ++section) {
        QAction *action = menu.addAction(view->model()->headerData(section, orientation).toString());
        action->setCheckable(true);
        action->setChecked(!d->IsSectionHidden(table, section));
        action->setData(d->SectionLabel(table, section));
    }
    const QAction *chosen = menu.exec(view->viewport()->mapToGlobal(pos));
    if (!chosen)
        return;
    const QString label = chosen->data().toString();
    for (int section = 0; section < d->SectionCount(table); ++section) {
        if (d->SectionLabel(table, section) == label)
            d->SetSectionHidden(table, section, !chosen->isChecked());
    }
    const QString prefix = Model::GetSettingsName(Model::Table(table)) + QLatin1Char('_');
    ZYLCmnUISettings *settings = ZYLCmnUISettings::GetInstance();
    for (int section = 0; section < d->SectionCount(table); ++section) {
        settings->SetValue(this, (prefix + d->SectionLabel(table, section)).toUtf8(),
                           !d->IsSectionHidden(table, section));
    }
}

void ZYLTPDetailedInfoWidget::OnTableViewCourseCustomContextMenuRequested(const QPoint &pos)
{
    ShowSectionMenu(Model::Course, pos);
}

void ZYLTPDetailedInfoWidget::OnTableViewOperationCustomContextMenuRequested(const QPoint &pos)
{
    ShowSectionMenu(Model::Operation, pos);
}

void ZYLTPDetailedInfoWidget::OnTableViewLayingPointCustomContextMenuRequested(const QPoint &pos)
{
    ShowSectionMenu(Model::LayingPoints, pos);
}

void ZYLTPDetailedInfoWidget::OnTableViewLinkingMotionCustomContextMenuRequested(const QPoint &pos)
{
    ShowSectionMenu(Model::LinkingMotion, pos);
}
