// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include "ZYLMathBoundingBox.h"

#include <QList>
#include <QObject>

#include <memory>
#include <vector>

class ZYLVisOptions;
class ZYLVisPrimitive;

/// Base of all representations: what a scene object looks like, in the object's own
/// coordinates. A representation is a tree: its own primitives, each with its display
/// options, and nested representations (children) that it owns.
///
/// A representation is immutable once constructed, so renderers and the picking index cache
/// what they derive from it by identity. `GetId()` is unique for the life of the process, so
/// such caches never confuse a new representation with a deleted one at the same address.
/// To show something else, build a new representation and set it on the object.
///
/// Subclasses fill themselves in their constructors with AddPrimitives and AddChildren.
class ZYLVISUALIZATION_EXPORT ZYLVisRep : public QObject {
    Q_OBJECT

public:
    /// One primitive of the tree with the options it is drawn with.
    struct Item {
        const ZYLVisPrimitive *primitive = nullptr;
        const ZYLVisOptions *options = nullptr;
    };

    ~ZYLVisRep() override;

    /// Returns the process-wide unique number of this representation.
    quint64 GetId() const;

    /// Returns the box around all primitives, children included (empty for an empty tree).
    ZYLMathBoundingBox GetBoundingBox() const;

    int GetNumPrimitives() const;
    const ZYLVisPrimitive *GetPrimitive(int i) const;
    const ZYLVisOptions &GetOptions(int i) const;

    int GetNumChildren() const;
    const ZYLVisRep *GetChild(int i) const;

    /// Returns the primitives of the whole tree, depth first (own primitives before children).
    std::vector<Item> GetAllPrimitives() const;

    /// Returns whether this representation, or a nested one, is owned by another one.
    bool IsOwned() const;

protected:
    explicit ZYLVisRep(QObject *parent = nullptr);

    /// Takes ownership of primitives, one options entry each. Null primitives are skipped with
    /// their entry. Throws ZYLSysException, taking nothing, when the lists differ in length, a
    /// primitive appears twice or already belongs to a representation. Meant for constructors.
    void AddPrimitives(const QList<ZYLVisPrimitive *> &primitives, const QList<ZYLVisOptions> &options);
    /// Takes ownership of nested representations; nulls are skipped. Throws ZYLSysException,
    /// taking nothing, when one appears twice, is this one, or already belongs to another
    /// representation. Meant for constructors.
    void AddChildren(const QList<ZYLVisRep *> &children);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
