// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatObject.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatRecorder.h"

#include "ZYLSysException.h"

// Wraps an edit of a feature so that the feature's container (looked up when the edit is
// undone or redone: the feature may have moved meanwhile) announces the change.
class ZYLFeatObject::EditChange final : public ZYLFeatChange {
public:
    EditChange(ZYLFeatObject *feature, std::unique_ptr<ZYLFeatChange> edit)
        : m_feature(feature), m_edit(std::move(edit))
    {
    }
    void Undo() override
    {
        m_edit->Undo();
        Notify();
    }
    void Redo() override
    {
        m_edit->Redo();
        Notify();
    }

private:
    void Notify()
    {
        if (ZYLFeatContainer *container = m_feature->GetContainer())
            container->NotifyFeaturesChanged();
    }

    ZYLFeatObject *m_feature;
    std::unique_ptr<ZYLFeatChange> m_edit;
};

ZYLFeatObject::ZYLFeatObject(const QString &name) : m_name(name)
{
}

ZYLFeatObject::~ZYLFeatObject()
{
    // A container or a history change still points here; there is no safe repair, so say
    // it loudly where the mistake was made.
    if (m_container)
        qCritical("ZYLFeatObject \"%s\" deleted while its container still lists it", qUtf8Printable(m_name));
}

void ZYLFeatObject::SetName(const QString &name)
{
    ZYLFeatRecorder::RequireTransaction(QT_TRANSLATE_NOOP("ZYLFeatRecorder", "Renaming a feature"));
    if (name != m_name)
        RecordEdit(std::make_unique<ZYLFeatValueChange<QString>>(m_name, name));
}

void ZYLFeatObject::RecordEdit(std::unique_ptr<ZYLFeatChange> change)
{
    ZYLFeatTransaction *transaction =
        ZYLFeatRecorder::RequireTransaction(QT_TRANSLATE_NOOP("ZYLFeatRecorder", "Editing a feature"));
    if (!change)
        throw ZYLSysException(tr("A null change cannot be recorded."));
    auto edit = std::make_unique<EditChange>(this, std::move(change));
    if (m_container)
        m_container->RecordFeatureChange(transaction, std::move(edit));
    else
        transaction->Record(std::move(edit));
}
