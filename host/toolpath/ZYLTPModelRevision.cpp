// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPModelRevision.h"

#include "ZYLFeatChange.h"
#include "ZYLFeatRecorder.h"

namespace {
quint64 g_revision = 1;

class RevisionChange final : public ZYLFeatChange {
public:
    void Undo() override { ZYLTPModelRevision::Bump(); }
    void Redo() override { ZYLTPModelRevision::Bump(); }
};
} // namespace

quint64 ZYLTPModelRevision::Get()
{
    return g_revision;
}

void ZYLTPModelRevision::Bump()
{
    ++g_revision;
}

void ZYLTPModelRevision::Record()
{
    ZYLFeatRecorder::Record(std::make_unique<RevisionChange>());
}
