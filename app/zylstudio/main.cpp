// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// zylstudio: the host application of the tool path edit module. Starts the host services,
// loads the module, shows the main window on a program file or the demo ply, and optionally
// renders one screenshot and quits.
#include "ZYLStudioCommandLine.h"
#include "ZYLStudioMainWindow.h"
#include "ZYLStudioProcessChecks.h"
#include "ZYLStudioTranslations.h"

#include "ZYLStudioSession.h"
#include "ZYLStudioViewer.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPixmap>
#include <QWindow>

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

QString Tr(const char *text) { return QCoreApplication::translate("zylstudio", text); }

void Print(FILE *stream, const QString &text) {
    std::fputs(qPrintable(text), stream);
    if (!text.endsWith(QLatin1Char('\n')))
        std::fputc('\n', stream);
    std::fflush(stream);
}

// Asking for help or the version must work without a display, so those runs make no GUI
// application (which would need one).
bool NeedsGui(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        for (const char *option : {"-h", "--help", "-?", "--help-all", "-v", "--version"}) {
            if (std::strcmp(argv[i], option) == 0)
                return false;
        }
    }
    return true;
}

// A failure the user must see: on the standard error stream always, in a message box too
// when someone is there to read it.
void Fail(QWidget *parent, const QString &title, const QString &message, bool messageBox) {
    Print(stderr, QStringLiteral("zylstudio: %1").arg(message));
    if (messageBox)
        QMessageBox::critical(parent, title, message);
}

// Lets the window system show the window, which creates the view's OpenGL context. Returns
// once the window is exposed and its events are handled, or after `timeoutMs`.
void WaitUntilExposed(ZYLStudioMainWindow &window, int timeoutMs) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < timeoutMs) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        if (window.windowHandle() && window.windowHandle()->isExposed() && window.GetViewer()->context())
            break;
    }
    QCoreApplication::processEvents();
}

// Waits until the view has drawn a frame after now; false after `timeoutMs`.
bool WaitForFrame(ZYLStudioViewer &viewer, int timeoutMs) {
    const quint64 before = viewer.GetFrameCount();
    viewer.update();
    QElapsedTimer timer;
    timer.start();
    while (viewer.GetFrameCount() == before) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    // Tool bars and the status bar update on later passes of the event loop.
    QCoreApplication::processEvents();
    return true;
}

int TakeScreenshot(ZYLStudioMainWindow &window, const QString &fileName) {
    if (!WaitForFrame(*window.GetViewer(), 120000)) {
        Print(stderr, Tr("zylstudio: the 3-D view drew no frame; no screenshot written."));
        return ZYLStudioCommandLine::Failure;
    }
    const QPixmap picture = window.grab();
    if (picture.isNull() || !picture.save(fileName)) {
        Print(stderr, Tr("zylstudio: the screenshot could not be written to %1.").arg(fileName));
        return ZYLStudioCommandLine::Failure;
    }
    return ZYLStudioCommandLine::Ok;
}

// The keys of the module's view actions: this prefix and the mode.
constexpr char viewActionPrefix[] = "ZYLToolPathViewCmd.";

// Triggers the named view actions of the module in order. Returns the first name that no
// published view action has, or an empty string.
QString TriggerViewActions(const QStringList &modes) {
    for (const QString &mode : modes) {
        ZYLCmdAction *action = ZYLCmdController::GetController()->GetAction(viewActionPrefix + mode.toUtf8());
        if (!action)
            return mode;
        action->trigger();
    }
    return {};
}

QString ViewModeNames() {
    QStringList names;
    for (const ZYLCmdAction *action : ZYLCmdController::GetController()->GetActions()) {
        if (action->GetKey().startsWith(viewActionPrefix))
            names << QString::fromUtf8(action->GetKey().mid(qsizetype(std::strlen(viewActionPrefix))));
    }
    return names.join(QStringLiteral(", "));
}

} // namespace

int main(int argc, char *argv[]) {
    std::unique_ptr<QCoreApplication> application;
    if (NeedsGui(argc, argv))
        application = std::make_unique<QApplication>(argc, argv);
    else
        application = std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zylstudio"));
    QCoreApplication::setApplicationVersion(ZYLStudioMainWindow::GetVersion());
    QCoreApplication::setOrganizationName(QStringLiteral("ZYL"));

    const ZYLStudioCommandLine commandLine =
        ZYLStudioCommandLine::Parse(QCoreApplication::arguments(), ZYLStudioMainWindow::GetVersion());
    switch (commandLine.GetAction()) {
    case ZYLStudioCommandLine::Action::ShowHelp:
        Print(stdout, commandLine.GetHelpText());
        return ZYLStudioCommandLine::Ok;
    case ZYLStudioCommandLine::Action::ShowVersion:
        Print(stdout, commandLine.GetVersionText());
        return ZYLStudioCommandLine::Ok;
    case ZYLStudioCommandLine::Action::Error:
        Print(stderr, QStringLiteral("zylstudio: %1\n").arg(commandLine.GetErrorText()));
        Print(stderr, commandLine.GetHelpText());
        return ZYLStudioCommandLine::UsageError;
    case ZYLStudioCommandLine::Action::Run:
        break;
    }
    if (!qobject_cast<QApplication *>(application.get())) {
        // Only help and version requests run without a display, and they ended above.
        Print(stderr, Tr("zylstudio: the command line asks for help or the version but could not be read."));
        return ZYLStudioCommandLine::UsageError;
    }

    const QString screenshot = commandLine.GetScreenshotFileName();
    const bool interactive = screenshot.isEmpty();

    // Before the module loads: it translates its catalogue labels as it publishes them.
    ZYLStudioTranslations translations;
    translations.Install();
    // Declared before the window so that it outlives it: the window borrows the session.
    ZYLStudioSession session;
    if (!session.Start()) {
        Fail(nullptr, Tr("zylstudio"), session.GetErrorString(), interactive);
        return ZYLStudioCommandLine::Failure;
    }

    ZYLStudioMainWindow window(&session);
    window.SetMessageBoxesEnabled(interactive);
    window.show();
    WaitUntilExposed(window, 10000);
    const QString openGLError = window.GetOpenGLError();
    if (!openGLError.isEmpty()) {
        Fail(&window, Tr("OpenGL"), openGLError, interactive);
        return ZYLStudioCommandLine::Failure;
    }

    // A file that cannot be opened leaves the studio running on an empty session; the window
    // has reported the located message.
    const bool opened = commandLine.GetFileName().isEmpty() ? window.OpenDemo()
                                                            : window.OpenProgramFile(commandLine.GetFileName());
    if (const QString unknown = TriggerViewActions(commandLine.GetViewModes()); !unknown.isEmpty()) {
        Print(stderr, Tr("zylstudio: there is no view mode %1; the modes are: %2").arg(unknown, ViewModeNames()));
        return ZYLStudioCommandLine::UsageError;
    }
    if (!interactive) {
        // The picture shows the process checks of the program as opened.
        window.GetProcessChecks()->WaitForIdle(30000);
        const int result = TakeScreenshot(window, screenshot);
        return opened ? result : int(ZYLStudioCommandLine::Failure);
    }
    return application->exec();
}
