// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QDialog>

#include <memory>

class ZYLFeatContainer;
class ZYLTPProgram;

/// Tools > Process Rules…: the program's process rules (`ZYLTPProcessRules`), one length box
/// each in the user's display unit (`towWidthSpin`, `minRadiusSpin`, `minCutSpin`,
/// `minAddSpin`, `minCourseSpin`), opening on the program's rules.
///
/// OK sets the rules in one transaction "Process Rules" of the container, so that Undo takes
/// them back; rules the model refuses are reported with its message, change nothing and
/// keep the dialog open. Unchanged rules make no transaction. "Restore Defaults" puts the
/// default rules in the boxes, for OK to apply. Cancel changes nothing.
class ZYLStudioProcessRulesDialog : public QDialog {
    Q_OBJECT
public:
    /// Edits the rules of `program` in transactions of `container` (both borrowed).
    ZYLStudioProcessRulesDialog(ZYLTPProgram *program, ZYLFeatContainer *container, QWidget *parent = nullptr);
    ~ZYLStudioProcessRulesDialog() override;

    void accept() override;

private:
    void setupConnections();

    struct Data;
    std::unique_ptr<Data> d;
};
