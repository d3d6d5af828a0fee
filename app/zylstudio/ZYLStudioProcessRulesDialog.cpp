// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioProcessRulesDialog.h"

#include "ui_ZYLStudioProcessRulesDialog.h"

#include "ZYLTPProcessRules.h"
#include "ZYLTPProgram.h"

#include "ZYLFeatContainer.h"
#include "ZYLSysException.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

struct ZYLStudioProcessRulesDialog::Data {
    Ui::ZYLStudioProcessRulesDialog ui;
    ZYLTPProgram *program = nullptr;
    ZYLFeatContainer *container = nullptr;

    // Each box with the rule it edits.
    std::pair<ZYLCmnUnitSpinBox *, double ZYLTPProcessRules::*> fields[5];

    void Show(const ZYLTPProcessRules &rules)
    {
        for (const auto &[box, member] : fields)
            box->setValue(rules.*member);
    }
    ZYLTPProcessRules Read() const
    {
        ZYLTPProcessRules rules;
        for (const auto &[box, member] : fields)
            rules.*member = box->value();
        return rules;
    }
};

ZYLStudioProcessRulesDialog::ZYLStudioProcessRulesDialog(ZYLTPProgram *program, ZYLFeatContainer *container,
                                                         QWidget *parent)
    : QDialog(parent), d(std::make_unique<Data>())
{
    d->ui.setupUi(this);
    d->program = program;
    d->container = container;
    d->fields[0] = {d->ui.towWidthSpin, &ZYLTPProcessRules::towWidth};
    d->fields[1] = {d->ui.minRadiusSpin, &ZYLTPProcessRules::minSteeringRadius};
    d->fields[2] = {d->ui.minCutSpin, &ZYLTPProcessRules::minCutLength};
    d->fields[3] = {d->ui.minAddSpin, &ZYLTPProcessRules::minAddLength};
    d->fields[4] = {d->ui.minCourseSpin, &ZYLTPProcessRules::minCourseLength};
    // The boxes take any number the model might refuse, so that its message says why.
    for (const auto &[box, member] : d->fields)
        box->setRange(-1e7, 1e7);
    d->Show(program->GetProcessRules());
    setupConnections();
}

ZYLStudioProcessRulesDialog::~ZYLStudioProcessRulesDialog() = default;

void ZYLStudioProcessRulesDialog::setupConnections()
{
    connect(d->ui.buttonBox, &QDialogButtonBox::accepted, this, &ZYLStudioProcessRulesDialog::accept);
    connect(d->ui.buttonBox, &QDialogButtonBox::rejected, this, &ZYLStudioProcessRulesDialog::reject);
    connect(d->ui.buttonBox->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            [this] { d->Show(ZYLTPProcessRules()); });
}

void ZYLStudioProcessRulesDialog::accept()
{
    const ZYLTPProcessRules rules = d->Read();
    if (rules == d->program->GetProcessRules()) {
        QDialog::accept();
        return;
    }
    // Each rule on its own first, so that the message can name the box.
    for (const auto &[box, member] : d->fields) {
        ZYLTPProcessRules probe;
        probe.*member = box->value();
        try {
            ZYLTPProcessRules::Check(probe);
        } catch (const ZYLSysException &e) {
            const QLabel *label = qobject_cast<QLabel *>(d->ui.rulesLayout->labelForField(box));
            QMessageBox::warning(this, windowTitle(),
                                 QStringLiteral("%1 %2").arg(label ? label->text() : QString(), e.GetMessage()));
            box->setFocus();
            return;
        }
    }
    try {
        d->container->OpenTransaction(tr("Process Rules"));
        d->program->SetProcessRules(rules);
        d->container->CommitTransaction();
    } catch (const ZYLSysException &e) {
        if (d->container->HasOpenTransaction())
            d->container->AbortTransaction();
        QMessageBox::warning(this, windowTitle(), e.GetMessage());
        return;
    }
    QDialog::accept();
}
