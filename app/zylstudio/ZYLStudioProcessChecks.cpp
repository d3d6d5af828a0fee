// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioProcessChecks.h"

#include "ZYLStudioSession.h"

#include "ZYLTPCourseVisRep.h"
#include "ZYLTPProcessCheck.h"
#include "ZYLTPProcessColoring.h"
#include "ZYLTPProgram.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisVirtualObject.h"
#include "ZYLSysSettings.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QSettings>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <optional>

namespace {

// Edits in quick succession (a drag, a script) make one check.
constexpr int ScheduleDelayMs = 50;

// The studio's group of the host's settings file.
class StudioSettings : public QSettings {
public:
    StudioSettings() : QSettings(ZYLSysSettings::GetSettingsFilePath(), QSettings::IniFormat)
    {
        beginGroup(QStringLiteral("ZYLStudio"));
    }
};

const QString ColoringKey = QStringLiteral("colorBySteeringRadius");

} // namespace

struct ZYLStudioProcessChecks::Data {
    ZYLStudioSession *session = nullptr;
    QTimer scheduleTimer;
    std::shared_ptr<const ZYLTPProcessCheck> check;
    // The running worker and its stop flag; `run` numbers the runs so that the outcome of a
    // superseded one is dropped.
    QThread *worker = nullptr;
    std::shared_ptr<std::atomic_bool> cancel;
    quint64 run = 0;
    bool coloring = false;
};

ZYLStudioProcessChecks::ZYLStudioProcessChecks(ZYLStudioSession *session, QObject *parent)
    : QObject(parent), d(std::make_unique<Data>())
{
    d->session = session;
    d->coloring = StudioSettings().value(ColoringKey, false).toBool();
    d->scheduleTimer.setSingleShot(true);
    d->scheduleTimer.setInterval(ScheduleDelayMs);
    connect(&d->scheduleTimer, &QTimer::timeout, this, &ZYLStudioProcessChecks::Start);
    connect(session, &ZYLStudioSession::ProgramChanged, this, &ZYLStudioProcessChecks::Schedule);
    connect(session, &ZYLStudioSession::HistoryChanged, this, &ZYLStudioProcessChecks::Schedule);
    Schedule();
}

ZYLStudioProcessChecks::~ZYLStudioProcessChecks()
{
    // Whoever listens may be going too.
    blockSignals(true);
    Cancel();
    if (d->coloring)
        ZYLTPProcessColoring::SetCheck(nullptr);
}

std::shared_ptr<const ZYLTPProcessCheck> ZYLStudioProcessChecks::GetCheck() const
{
    return d->check;
}

bool ZYLStudioProcessChecks::IsRunning() const
{
    return d->worker || d->scheduleTimer.isActive();
}

bool ZYLStudioProcessChecks::IsColoringEnabled() const
{
    return d->coloring;
}

void ZYLStudioProcessChecks::SetColoringEnabled(bool enabled)
{
    if (enabled == d->coloring)
        return;
    d->coloring = enabled;
    StudioSettings settings;
    if (enabled)
        settings.setValue(ColoringKey, true);
    else
        settings.remove(ColoringKey);
    PublishColoring();
    emit ColoringEnabledChanged(enabled);
}

void ZYLStudioProcessChecks::Schedule()
{
    const bool wasRunning = IsRunning();
    d->scheduleTimer.start();
    if (!wasRunning)
        emit RunningChanged(true);
}

void ZYLStudioProcessChecks::Cancel()
{
    const bool wasRunning = IsRunning();
    d->scheduleTimer.stop();
    ++d->run;
    if (d->worker) {
        d->cancel->store(true);
        // The worker only reads its own copy and stops at the next course: a short wait.
        d->worker->wait();
        delete d->worker;
        d->worker = nullptr;
    }
    if (wasRunning)
        emit RunningChanged(false);
}

bool ZYLStudioProcessChecks::WaitForIdle(int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    while (IsRunning()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(1);
    }
    return true;
}

void ZYLStudioProcessChecks::Start()
{
    // A run still going belongs to a program state that is no longer there.
    if (d->worker) {
        d->cancel->store(true);
        d->worker->wait();
        delete d->worker;
        d->worker = nullptr;
    }
    const quint64 run = ++d->run;
    const ZYLTPProgram *program = d->session->GetProgram();
    if (!program) {
        Finish(run, nullptr);
        return;
    }
    auto input = std::make_shared<ZYLTPProcessCheck::Input>(ZYLTPProcessCheck::Capture(*program, program->GetProcessRules()));
    d->cancel = std::make_shared<std::atomic_bool>(false);
    QPointer<ZYLStudioProcessChecks> self(this);
    d->worker = QThread::create([input, cancel = d->cancel, self, run] {
        auto check = std::make_shared<const ZYLTPProcessCheck>(ZYLTPProcessCheck::Run(*input, cancel.get()));
        if (check->IsCancelled())
            return;
        // Queued to the GUI thread; dropped there when the object has gone meanwhile.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, run, check] {
                if (self)
                    self->Finish(run, check);
            },
            Qt::QueuedConnection);
    });
    d->worker->start();
}

void ZYLStudioProcessChecks::Finish(quint64 run, std::shared_ptr<const ZYLTPProcessCheck> check)
{
    if (run != d->run)
        return;
    if (d->worker) {
        d->worker->wait();
        delete d->worker;
        d->worker = nullptr;
    }
    d->check = std::move(check);
    if (d->coloring)
        PublishColoring();
    emit CheckChanged();
    if (!IsRunning())
        emit RunningChanged(false);
}

void ZYLStudioProcessChecks::PublishColoring()
{
    const std::shared_ptr<const ZYLTPProcessCheck> previous = ZYLTPProcessColoring::GetCheck();
    const std::shared_ptr<const ZYLTPProcessCheck> next = d->coloring ? d->check : nullptr;
    ZYLTPProcessColoring::SetCheck(next);
    // Only the courses whose colours changed are built again, as the graphics manager builds
    // them (same options), in one batch: after an edit that is the edited course alone.
    ZYLVisEnvironment *scene = d->session->GetEditEnvironment();
    if (!scene)
        return;
    // Made at the first change only: an empty batch would still repaint the view.
    std::optional<ZYLVisEnvironmentBatchContext> batch;
    for (ZYLVisVirtualObject *object : scene->GetVirtualObjects()) {
        const auto *rep = qobject_cast<const ZYLTPCourseVisRep *>(object->GetRep());
        if (!rep || !rep->GetCourse())
            continue;
        const ZYLTPProcessCheck::Colours *before = previous ? previous->FindColours(rep->GetCourse()) : nullptr;
        const ZYLTPProcessCheck::Colours *after = next ? next->FindColours(rep->GetCourse()) : nullptr;
        if (before == after || (before && after && before->perPoint == after->perPoint))
            continue;
        if (!batch)
            batch.emplace(scene);
        QList<ZYLVisOptions> unused;
        object->SetRep(
            new ZYLTPCourseVisRep(rep->GetCourse(), rep->GetCourseIndex(), rep->GetVisualizationOptions(), unused));
    }
}
