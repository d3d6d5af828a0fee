// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QString>
#include <QStringList>

/// The command line of the studio, read with `QCommandLineParser`:
///
///     zylstudio [--view MODE]... [--screenshot OUT.png] [FILE]
///     zylstudio --help | --version
///
/// FILE is a tool path program (`*.zyltp.json`) to open; without it the studio opens the
/// embedded demo ply. `--screenshot` renders the window once the program is shown, writes the
/// picture and quits; the picture's format follows the suffix of its name and must be one
/// that Qt can write. `--view MODE` (repeatable) triggers the tool path view action MODE
/// ("ViewCourseAndPolyline", "HideLayingPoints", "ViewSurface", ...) once the program is shown,
/// in the order given; the names are checked then, against the actions the module publishes.
/// A FILE that does not exist or cannot be read is not an error here: the
/// studio reports it when it tries to open it.
///
/// Exit codes of the studio: `Ok` (0), `Failure` (1: the program or the module could not be
/// loaded, OpenGL 3.3 is missing, the picture could not be written), `UsageError` (2: a bad
/// command line; `GetErrorText()` says why and `GetHelpText()` shows the usage).
class ZYLStudioCommandLine {
public:
    enum class Action {
        /// Start the studio.
        Run,
        /// Print `GetHelpText()` and quit with `Ok`.
        ShowHelp,
        /// Print `GetVersionText()` and quit with `Ok`.
        ShowVersion,
        /// Print `GetErrorText()` and the usage, quit with `UsageError`.
        Error,
    };
    enum ExitCode { Ok = 0, Failure = 1, UsageError = 2 };

    /// Reads `arguments`, the program name first (as `QCoreApplication::arguments()` gives
    /// them, with Qt's own options already taken out). The version shown is `version`.
    static ZYLStudioCommandLine Parse(const QStringList &arguments, const QString &version);

    Action GetAction() const { return m_action; }
    /// Returns the program file to open, as given; empty for the demo ply.
    const QString &GetFileName() const { return m_fileName; }
    /// Returns the file the screenshot goes to, or an empty string.
    const QString &GetScreenshotFileName() const { return m_screenshotFileName; }
    /// Returns the view actions to trigger, in order.
    const QStringList &GetViewModes() const { return m_viewModes; }
    /// Returns why the command line was refused (one line), or an empty string.
    const QString &GetErrorText() const { return m_errorText; }
    /// Returns the usage text with every option.
    const QString &GetHelpText() const { return m_helpText; }
    /// Returns "zylstudio <version>".
    QString GetVersionText() const;

private:
    Action m_action = Action::Run;
    QString m_fileName;
    QString m_screenshotFileName;
    QStringList m_viewModes;
    QString m_errorText;
    QString m_helpText;
    QString m_version;
};
