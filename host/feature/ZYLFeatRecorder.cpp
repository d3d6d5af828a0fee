// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatRecorder.h"

#include "ZYLSysException.h"

ZYLFeatTransaction *ZYLFeatRecorder::RequireTransaction(const char *what)
{
    ZYLFeatTransaction *transaction = ZYLFeatTransaction::GetCurrent();
    if (!transaction)
        throw ZYLSysException(tr("%1 outside a transaction").arg(tr(what)));
    transaction->CheckRecordable();
    return transaction;
}

void ZYLFeatRecorder::Record(std::unique_ptr<ZYLFeatChange> change)
{
    ZYLFeatTransaction *transaction = RequireTransaction(QT_TR_NOOP("Recording a change"));
    if (!change)
        throw ZYLSysException(tr("A null change cannot be recorded."));
    transaction->Record(std::move(change));
}

void ZYLFeatRecorder::CheckIndex(qsizetype index, qsizetype end)
{
    if (index < 0 || index >= end)
        throw ZYLSysException(tr("Index %1 is out of range 0 to %2.").arg(index).arg(end - 1));
}

void ZYLFeatRecorder::CheckRange(qsizetype first, qsizetype count, qsizetype size)
{
    if (first < 0 || first > size || count > size - first)
        throw ZYLSysException(
            tr("The range of %1 values from index %2 does not fit in %3 values.").arg(count).arg(first).arg(size));
}

void ZYLFeatRecorder::ThrowNullElement()
{
    throw ZYLSysException(tr("A null object cannot be put into a list."));
}
