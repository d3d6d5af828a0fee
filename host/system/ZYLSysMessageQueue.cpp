// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysMessageQueue.h"

#include "ZYLSysLogging.h"

#include <algorithm>

struct ZYLSysMessageQueue::Data {
    QList<Message> messages;
};

namespace {

// Open queues of this thread, innermost last. A queue is a scope object of the thread that
// opened it, so a worker thread's posts never land in the GUI thread's queue.
QList<ZYLSysMessageQueue *> &OpenQueues()
{
    thread_local QList<ZYLSysMessageQueue *> queues;
    return queues;
}

} // namespace

ZYLSysMessageQueue::ZYLSysMessageQueue()
    : d(std::make_unique<Data>())
{
    OpenQueues().append(this);
}

ZYLSysMessageQueue::~ZYLSysMessageQueue()
{
    // Normally the last one; removing by identity keeps the stack sound if scopes were
    // closed out of order (queues held by pointer).
    OpenQueues().removeOne(this);
}

void ZYLSysMessageQueue::Post(const QString &text, int type)
{
    QList<ZYLSysMessageQueue *> &queues = OpenQueues();
    if (!queues.isEmpty()) {
        queues.last()->d->messages.append({text, type});
        return;
    }
    switch (type) {
    case Information:
        qCInfo(lcZYLSystem).noquote() << text;
        break;
    case Warning:
        qCWarning(lcZYLSystem).noquote() << text;
        break;
    default:
        qCCritical(lcZYLSystem).noquote() << text;
        break;
    }
}

bool ZYLSysMessageQueue::IsAnyOpen()
{
    return !OpenQueues().isEmpty();
}

QList<ZYLSysMessageQueue::Message> ZYLSysMessageQueue::GetMessages() const
{
    return d->messages;
}

bool ZYLSysMessageQueue::HasErrors() const
{
    return std::any_of(d->messages.cbegin(), d->messages.cend(),
                       [](const Message &message) { return message.second == Error; });
}

void ZYLSysMessageQueue::Clear()
{
    d->messages.clear();
}
