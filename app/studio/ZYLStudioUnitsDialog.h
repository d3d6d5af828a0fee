// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QDialog>

#include <memory>

/// Tools > Units…: the display unit of each physical quantity the host's unit settings know
/// (`ZYLSysUnits`: length, force, time, feed rate, angle), one drop-down list per quantity,
/// named "unitCombo_<Magnitude>" after the `ZYLSysValue::Magnitude` enumerator.
///
/// The lists open on the current units. Nothing changes until OK: it applies every choice
/// through `ZYLSysUnits` (persisted, `CurrentUnitChanged` for each unit that changed); when
/// all choices are the defaults it reverts the unit settings instead, so that no unit stays
/// stored. "Restore defaults" puts the default units in the lists, for OK to apply. Cancel
/// and closing change nothing.
class ZYLStudioUnitsDialog : public QDialog {
    Q_OBJECT
public:
    explicit ZYLStudioUnitsDialog(QWidget *parent = nullptr);
    ~ZYLStudioUnitsDialog() override;

    /// Applies the chosen units, then closes the dialog as accepted.
    void accept() override;

private:
    void setupConnections();
    void RestoreDefaults();

    struct Data;
    std::unique_ptr<Data> d;
};
