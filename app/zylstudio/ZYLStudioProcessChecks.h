// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QObject>

#include <memory>

class ZYLStudioSession;
class ZYLTPProcessCheck;

/// Keeps the process check of the session's program current, off the GUI thread.
///
/// After the session opens a program and after every commit, undo and redo of its
/// container, a new check is scheduled (changes in quick succession make one run): the
/// program is copied on the GUI thread (`ZYLTPProcessCheck::Capture`, milliseconds for a
/// million points) and checked on a worker thread, so input never waits for it. A run still
/// going when the next one starts is cancelled and its outcome dropped; `Cancel()` stops the
/// current one. The newest outcome is `GetCheck()`.
///
/// Colouring by steering radius (`SetColoringEnabled`, persisted with `QSettings` in the
/// host's settings file, group "ZYLStudio", key "colorBySteeringRadius"): while on, every new
/// check is published to `ZYLTPProcessColoring` and the representations of the courses whose
/// colours changed are built again, so the course bands show the radii of the program as it
/// is.
class ZYLStudioProcessChecks : public QObject {
    Q_OBJECT
public:
    /// Follows `session` (borrowed; it must outlive this object).
    explicit ZYLStudioProcessChecks(ZYLStudioSession *session, QObject *parent = nullptr);
    ~ZYLStudioProcessChecks() override;

    /// Returns the newest complete check, or null before the first one ends or while no
    /// program is open.
    std::shared_ptr<const ZYLTPProcessCheck> GetCheck() const;
    /// Returns whether a check is scheduled or running.
    bool IsRunning() const;

    bool IsColoringEnabled() const;
    void SetColoringEnabled(bool enabled);

    /// Schedules a new check of the session's program.
    void Schedule();
    /// Stops the running check and drops what it would have found.
    void Cancel();
    /// Waits (processing events) until no check is scheduled or running; for scripts and
    /// tests. Returns false after `timeoutMs` without an end.
    bool WaitForIdle(int timeoutMs);

signals:
    /// Emitted when a check starts and when it ends or is cancelled.
    void RunningChanged(bool running);
    /// Emitted when `GetCheck()` has a new outcome (null too, when the program closed).
    void CheckChanged();
    void ColoringEnabledChanged(bool enabled);

private:
    void Start();
    void Finish(quint64 run, std::shared_ptr<const ZYLTPProcessCheck> check);
    void PublishColoring();

    struct Data;
    std::unique_ptr<Data> d;
};
