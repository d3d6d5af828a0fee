// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include "ZYLMathAxis.h"
#include "ZYLMathBoundingBox.h"

#include <QObject>
#include <QString>

#include <memory>

class ZYLVisEnvironment;
class ZYLVisRep;

/// Base of the objects of a 3-D scene (ZYLVisEnvironment): a representation placed by a
/// position frame, with visibility, selectability and a label. The object does not own its
/// representation; if the representation is deleted while set, the object drops it and has
/// nothing to draw.
///
/// Each change of what is drawn (representation, position, visibility) raises the object's
/// change count, so that a renderer can tell which objects to refresh.
class ZYLVISUALIZATION_EXPORT ZYLVisObject : public QObject {
    Q_OBJECT

public:
    ~ZYLVisObject() override;

    /// Returns the environment the object was made for, or null once that is destroyed.
    ZYLVisEnvironment *GetEnvironment() const;
    /// Returns whether the object is in its environment's scene.
    bool IsInScene() const;

    /// Returns the representation, or null when there is nothing to draw.
    const ZYLVisRep *GetRep() const;
    /// Returns the box of the representation, in the object's own coordinates or, with
    /// `inGlobalCoordinates`, around the representation placed at the position. Empty without
    /// a representation.
    ZYLMathBoundingBox GetBoundingBox(bool inGlobalCoordinates) const;
    /// Returns the frame that places the representation (the world frame unless set).
    ZYLMathAxis GetPosition() const;
    bool HasPosition() const;
    bool IsVisible() const;
    bool IsSelectable() const;
    QString GetLabel() const;
    /// Returns a number that grows with every change of representation, position or visibility.
    quint64 GetChangeCount() const;

protected:
    /// Builds an object for an environment (not yet in its scene). Throws ZYLSysException for
    /// a null environment.
    ZYLVisObject(const ZYLVisEnvironment *environment, QObject *parent);

    /// Sets the representation, which the object borrows. Setting the current one again tells
    /// the environment to redraw; null leaves nothing to draw or pick.
    void SetRep(const ZYLVisRep *rep);
    /// Places the representation's coordinates at a frame (copied); null places it at the
    /// world frame.
    void SetPosition(const ZYLMathAxis *position);
    /// Shows or hides the object; a hidden object is neither drawn nor picked and leaves the
    /// pre-selection.
    void SetVisibility(bool visible);
    /// Lets the user pick the object or not; an object that is made unselectable leaves the
    /// pre-selection but stays selected.
    void SetSelectability(bool selectable);
    void SetLabel(const QString &label);

    /// Takes the object out of its environment's scene (and selection) now. Subclasses call it
    /// first thing in their destructors so that selection slots still see the full object.
    void DetachFromEnvironment();

private:
    friend class ZYLVisEnvironment;
    // Bookkeeping kept by the environment: the object's slot in its object table (-1 when
    // out of the scene), and the end of the environment.
    void SetSceneIndex(qsizetype index);
    qsizetype GetSceneIndex() const;
    void ForgetEnvironment();

    struct Data;
    std::unique_ptr<Data> d;
};
