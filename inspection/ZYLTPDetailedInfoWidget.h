// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QMainWindow>

#include <memory>

class QPoint;

/// The panel of "View detailed info": the operation, course, laying points and linking
/// motion tables of the program being edited, one shown at a time.
///
/// The tables are read from the program when the panel is made and do not follow later
/// edits. The course, laying points and linking motion tables can be filtered on one column
/// (property, condition, value), and every table can be sorted by a click on a column header
/// (a second click restores the program's order) and saved as a CSV file of the rows and
/// columns shown, in the order shown. Columns (for the operation table: rows) are hidden and
/// shown from the context menu; the choice is kept per user.
class ZYLTPDetailedInfoWidget : public QMainWindow {
    Q_OBJECT
public:
    /// Builds the panel and its tables from the graphics manager's program.
    explicit ZYLTPDetailedInfoWidget(QWidget *parent = nullptr);
    ~ZYLTPDetailedInfoWidget() override;

public slots:
    void OnComboBoxObjectTypeCurrentIndexChanged(int index);
    void OnComboBoxPropertyCurrentIndexChanged(int index);
    void OnButtonBoxSave(bool bCheck);
    void OnPushButtonClearFilterSave(bool bCheck);
    void OnPushButtonApplyFilterSave(bool bCheck);
    void OnTableViewCourseCustomContextMenuRequested(const QPoint &pos);
    void OnTableViewOperationCustomContextMenuRequested(const QPoint &pos);
    void OnTableViewLayingPointCustomContextMenuRequested(const QPoint &pos);
    void OnTableViewLinkingMotionCustomContextMenuRequested(const QPoint &pos);

private:
    void setupConnections();
    void RefillProperties(int table);
    void ApplySavedVisibility(int table);
    void ShowSectionMenu(int table, const QPoint &pos);
    void OnHeaderClicked(int table, int column);
    void ShowError(const QString &message);

    struct Data;
    std::unique_ptr<Data> d;
};
