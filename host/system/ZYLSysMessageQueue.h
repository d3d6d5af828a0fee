// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <QList>
#include <QPair>
#include <QString>

#include <memory>

/// Collects the messages that operations post while it lives (a scope object).
///
/// Operations report with the static `Post(text, type)`. While at least one queue is open on
/// the posting thread, the message goes to the innermost (most recently opened) queue only;
/// an outer queue does not see what an inner one collected. With no queue open, the message
/// goes to Qt's message logger: qInfo for information, qWarning for warnings, qCritical for
/// errors and for unknown types. Queues belong to the thread that opened them.
///
/// Messages are (text, type) pairs, so that callers read `.first` and `.second`.
class ZYLSYSTEM_EXPORT ZYLSysMessageQueue {
public:
    /// Message types; other numbers are kept as given and count as neither.
    enum MessageType { Information = 0, Warning = 1, Error = 2 };
    using Message = QPair<QString, int>;

    ZYLSysMessageQueue();
    ~ZYLSysMessageQueue();
    ZYLSysMessageQueue(const ZYLSysMessageQueue &) = delete;
    ZYLSysMessageQueue &operator=(const ZYLSysMessageQueue &) = delete;

    /// Posts a message to the innermost open queue, or to the message logger when none is open.
    static void Post(const QString &text, int type);
    /// Returns whether a queue is open on the calling thread.
    static bool IsAnyOpen();

    /// Returns the collected messages in posting order.
    QList<Message> GetMessages() const;
    /// Returns whether an error (type 2) was collected.
    bool HasErrors() const;
    /// Forgets the collected messages; the queue stays open.
    void Clear();

private:
    struct Data;
    std::unique_ptr<Data> d;
};
