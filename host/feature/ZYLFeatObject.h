// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include "ZYLGeoGeometry.h"

#include <QObject>
#include <QString>

#include <memory>

class ZYLFeatChange;
class ZYLFeatContainer;

/// A feature: a named object of a container's document. Its lifetime is counted
/// (`ZYLGeoGeometry`): the container holds a reference while it lists the feature, history
/// changes hold one while they can bring it back, and the last release deletes it. A feature
/// therefore has no QObject parent, and deleting one directly while it is referenced is a
/// programming error. Holders that may see it go use a `QPointer` as well.
class ZYLFEATURE_EXPORT ZYLFeatObject : public QObject, public ZYLGeoGeometry {
    Q_OBJECT
public:
    explicit ZYLFeatObject(const QString &name = QString());
    ~ZYLFeatObject() override;

    const QString &GetName() const { return m_name; }
    /// Renames the feature, recorded in the current transaction (throws outside one).
    void SetName(const QString &name);

    /// Returns the container that lists the feature, or null.
    ZYLFeatContainer *GetContainer() const { return m_container; }

protected:
    /// Records and makes an edit of the feature's own content in the current transaction
    /// (throws outside one, changing nothing), like `ZYLFeatRecorder::Record`, and has the
    /// container that lists the feature announce `FeaturesChanged` after it and after each
    /// undo and redo of it, so that displays of the container follow. Subclasses route the
    /// edits that change what is drawn through here.
    void RecordEdit(std::unique_ptr<ZYLFeatChange> change);

private:
    friend class ZYLFeatContainer;
    class EditChange;

    QString m_name;
    ZYLFeatContainer *m_container = nullptr;
};
