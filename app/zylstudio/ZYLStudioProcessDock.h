// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPProcessCheck.h"

#include <QDockWidget>

#include <memory>

class ZYLStudioProcessChecks;

/// The "Process Checks" dock: the violations of the newest process check
/// (`ZYLStudioProcessChecks`) in a table (`violationsView`: kind, course, points, tows,
/// value, limit; sortable by any column, numbers by value), a filter by kind (`kindCombo`,
/// "All kinds" first), a status line (`statusLabel`: "Checking…" while a check runs, else the
/// number of violations and of those shown) and a button that cancels the running check
/// (`cancelButton`, enabled while one runs). Lengths show in the user's display unit, course
/// and point numbers from 1 in laying order as zyltp prints them.
///
/// Clicking a row emits `ViolationActivated` with its violation.
class ZYLStudioProcessDock : public QDockWidget {
    Q_OBJECT
public:
    /// Shows the checks of `checks` (borrowed; it must outlive the dock).
    explicit ZYLStudioProcessDock(ZYLStudioProcessChecks *checks, QWidget *parent = nullptr);
    ~ZYLStudioProcessDock() override;

signals:
    void ViolationActivated(const ZYLTPProcessCheck::Violation &violation);

private:
    void setupConnections();
    void UpdateStatus();

    struct Data;
    std::unique_ptr<Data> d;
};
