// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPPanelTestHost.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLStudioSession.h"

#include "ZYLTPProgram.h"
#include "ZYLTPProgramFile.h"

#include "ZYLCmdController.h"
#include "ZYLCmdDialogCommand.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatContainer.h"
#include "ZYLMathPoint.h"
#include "ZYLMathVector.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisPickRay.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <algorithm>

struct ZYLTPPanelTestHost::Data {
    ZYLStudioSession *session = nullptr;
    QTemporaryDir folder;
    QString error;
    int files = 0;

    bool Entered() {
        if (!session->GetProgram()) {
            error = QStringLiteral("no program open");
            return false;
        }
        if (!session->IsInEditEnvironment() && !session->EnterEditEnvironment(session->GetProgram())) {
            error = QStringLiteral("the edit environment could not be entered");
            return false;
        }
        return true;
    }
};

ZYLTPPanelTestHost::ZYLTPPanelTestHost() : d(std::make_unique<Data>()) {}

ZYLTPPanelTestHost::~ZYLTPPanelTestHost() = default;

bool ZYLTPPanelTestHost::Start(QObject *parent) {
    d->session = new ZYLStudioSession(parent);
    if (!d->session->Start()) {
        d->error = d->session->GetErrorString();
        return false;
    }
    QObject::connect(d->session, &ZYLStudioSession::ErrorOccurred, d->session,
                     [this](const QString &message) { d->error = message; });
    return true;
}

bool ZYLTPPanelTestHost::OpenDemo() {
    return d->session->OpenDemo() && d->Entered();
}

bool ZYLTPPanelTestHost::Open(const QString &fileName) {
    return d->session->OpenProgram(fileName) && d->Entered();
}

bool ZYLTPPanelTestHost::Open(const ZYLTPProgram &program) {
    const QString fileName = d->folder.filePath(QStringLiteral("program%1.zyltp.json").arg(d->files++));
    d->error = ZYLTPProgramFile::Save(program, fileName);
    return d->error.isEmpty() && Open(fileName);
}

QString ZYLTPPanelTestHost::GetError() const {
    return d->error;
}

ZYLStudioSession *ZYLTPPanelTestHost::GetSession() const {
    return d->session;
}

ZYLTPProgram *ZYLTPPanelTestHost::GetProgram() const {
    return d->session->GetProgram();
}

ZYLFeatContainer *ZYLTPPanelTestHost::GetContainer() const {
    return d->session->GetContainer();
}

ZYLEditTPGraphicsMgr *ZYLTPPanelTestHost::GetManager() const {
    return qobject_cast<ZYLEditTPGraphicsMgr *>(d->session->GetGraphicsManager());
}

ZYLVisEnvironment *ZYLTPPanelTestHost::GetScene() const {
    return d->session->GetEditEnvironment();
}

ZYLCmdDialogCommand *ZYLTPPanelTestHost::Trigger(const QByteArray &key) {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    if (!controller->Trigger(key))
        return nullptr;
    return qobject_cast<ZYLCmdDialogCommand *>(controller->GetCurrentCommand());
}

QWidget *ZYLTPPanelTestHost::GetPanel() const {
    const auto *command = qobject_cast<ZYLCmdDialogCommand *>(ZYLCmdController::GetController()->GetCurrentCommand());
    return command ? command->GetContentWidget() : nullptr;
}

QAbstractButton *ZYLTPPanelTestHost::GetButton(QDialogButtonBox::StandardButton button) const {
    ZYLCmdDialogHandler *handler = ZYLCmdController::GetController()->GetDialogHandler();
    if (!handler->IsPanelShown())
        return nullptr;
    const auto *box = handler->GetWidget()->findChild<QDialogButtonBox *>();
    return box ? box->button(button) : nullptr;
}

bool ZYLTPPanelTestHost::Press(QDialogButtonBox::StandardButton button) {
    QAbstractButton *press = GetButton(button);
    if (!press || !press->isEnabled())
        return false;
    press->click();
    return true;
}

namespace {

ZYLVisPickRay RayDownTo(const ZYLMathPoint &point, double radius) {
    return ZYLVisPickRay(point + ZYLMathVector(0.0, 0.0, 10000.0), ZYLMathVector(0.0, 0.0, -1.0), radius);
}

} // namespace

void ZYLTPPanelTestHost::MoveTo(const ZYLMathPoint &point, double radius) {
    GetScene()->MouseMove(RayDownTo(point, radius));
}

void ZYLTPPanelTestHost::ClickAt(const ZYLMathPoint &point, double radius, Qt::KeyboardModifiers modifiers) {
    GetScene()->MouseClick(RayDownTo(point, radius), modifiers);
}

QByteArray ZYLTPPanelTestHost::Serialize() const {
    return ZYLTPProgramFile::Serialize(*GetProgram());
}

QStringList ZYLTPPanelTestHost::AnswerMessageBoxes(const std::function<void()> &action) {
    // A box runs its own event loop, in which the timer answers it.
    QStringList texts;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&texts] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            texts.append(box->text());
            box->accept();
        }
    });
    answer.start(10);
    action();
    return texts;
}

QList<int> ZYLTPPanelTestHost::SelectedRows(const QAbstractItemView *view) {
    QList<int> rows;
    for (const QModelIndex &index : view->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ZYLTPPanelTestHost::Select(QAbstractItemView *view, const QList<int> &rows,
                                QItemSelectionModel::SelectionFlags flags) {
    view->clearSelection();
    for (int row : rows)
        view->selectionModel()->select(view->model()->index(row, 0), flags);
}
