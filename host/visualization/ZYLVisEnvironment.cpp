// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisEnvironment.h"

#include "ZYLVisGizmo.h"
#include "ZYLVisPickIndex.h"
#include "ZYLVisRep.h"
#include "ZYLVisSelectionFilter.h"
#include "ZYLVisVirtualObject.h"

#include "ZYLSysException.h"

#include <QPointer>

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace {
enum class PickPurpose { User, Snap };
}

struct ZYLVisEnvironment::Data {
    explicit Data(ZYLVisEnvironment *owner) : q(owner) {}

    ZYLVisEnvironment *q;
    // Scene objects in the order they were added; removal leaves a hole (null) that a later
    // compaction closes, so that removing one of many objects does not shift them all.
    std::vector<ZYLVisObject *> table;
    qsizetype live = 0;
    // Every object made for this environment, in the scene or not, so that they can be told
    // when the environment goes away.
    QSet<ZYLVisObject *> registered;
    QSet<ZYLVisObject *> selection;
    QSet<ZYLVisObject *> preselection;
    std::unique_ptr<ZYLVisSelectionFilter> filter;
    MouseInteractionFlags mouseFlags;
    SnapGeometryTypes snapTypes;
    int batchDepth = 0;
    bool changePending = false;
    QList<ZYLVisGizmo *> gizmos;
    QPointer<ZYLVisObject> hovered;
    ZYLVisMouseContext lastContext;

    // Picking indices by representation, with the number of scene objects showing it; an
    // index is built on the first pick that needs it and dropped with its last user.
    struct RepEntry {
        int users = 0;
        quint64 id = 0;
        std::unique_ptr<const ZYLVisPickIndex> index;
    };
    mutable std::unordered_map<const ZYLVisRep *, RepEntry> reps;

    bool IsMember(ZYLVisObject *object) const
    {
        return object && object->GetEnvironment() == q && object->GetSceneIndex() >= 0;
    }

    void Use(const ZYLVisRep *rep)
    {
        if (rep)
            ++reps[rep].users;
    }

    // Never dereferences `rep`: it may be in the middle of its destruction.
    void Release(const ZYLVisRep *rep)
    {
        const auto it = rep ? reps.find(rep) : reps.end();
        if (it != reps.end() && --it->second.users <= 0)
            reps.erase(it);
    }

    const ZYLVisPickIndex &IndexOf(const ZYLVisRep *rep) const
    {
        RepEntry &entry = reps[rep];
        if (!entry.index || entry.id != rep->GetId()) {
            entry.index = std::make_unique<ZYLVisPickIndex>(*rep);
            entry.id = rep->GetId();
        }
        return *entry.index;
    }

    void CompactIfSparse()
    {
        if (table.size() < 64 || live * 2 > qsizetype(table.size()))
            return;
        std::vector<ZYLVisObject *> compact;
        compact.reserve(size_t(live));
        for (ZYLVisObject *object : table) {
            if (object) {
                object->SetSceneIndex(qsizetype(compact.size()));
                compact.push_back(object);
            }
        }
        table.swap(compact);
    }

    // The sets are taken by value: a caller may pass the selection itself as `removed`.
    void ChangeSelection(QSet<ZYLVisObject *> added, QSet<ZYLVisObject *> removed)
    {
        if (added.isEmpty() && removed.isEmpty())
            return;
        selection.unite(added);
        selection.subtract(removed);
        emit q->VisualizationSelectionChanged(added, removed);
        q->NotifyChanged();
    }

    void ChangePreselection(QSet<ZYLVisObject *> added, QSet<ZYLVisObject *> removed)
    {
        if (added.isEmpty() && removed.isEmpty())
            return;
        preselection.unite(added);
        preselection.subtract(removed);
        emit q->VisualizationPreselectionChanged(added, removed);
        q->NotifyChanged();
    }

    // Target sets are reduced to scene members first, so that a refused object is not
    // reported as added.
    static void Replace(const QSet<ZYLVisObject *> &current, const QSet<ZYLVisObject *> &members,
                        QSet<ZYLVisObject *> *added, QSet<ZYLVisObject *> *removed)
    {
        *added = members - current;
        *removed = current - members;
    }

    QSet<ZYLVisObject *> Members(const QSet<ZYLVisObject *> &objects) const
    {
        QSet<ZYLVisObject *> members;
        for (ZYLVisObject *object : objects) {
            if (IsMember(object))
                members.insert(object);
        }
        return members;
    }

    void ReplaceSelection(const QSet<ZYLVisObject *> &objects)
    {
        QSet<ZYLVisObject *> added, removed;
        Replace(selection, Members(objects), &added, &removed);
        ChangeSelection(added, removed);
    }

    void ReplacePreselection(const QSet<ZYLVisObject *> &objects)
    {
        QSet<ZYLVisObject *> added, removed;
        Replace(preselection, Members(objects), &added, &removed);
        ChangePreselection(added, removed);
    }

    // Groups the redraw notifications of one compound operation into one Changed.
    struct Batch {
        explicit Batch(ZYLVisEnvironment *environment) : q(environment) { q->BeginBatch(); }
        ~Batch() { q->EndBatch(); }
        Batch(const Batch &) = delete;
        Batch &operator=(const Batch &) = delete;
        ZYLVisEnvironment *q;
    };

    ZYLVisPickCandidate Run(const ZYLVisPickRay &ray, PickPurpose purpose) const;
    ZYLVisMouseContext MakeContext(const ZYLVisPickRay &ray, const ZYLVisPickCandidate &hit) const;
};

ZYLVisPickCandidate ZYLVisEnvironment::Data::Run(const ZYLVisPickRay &ray, PickPurpose purpose) const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const bool user = purpose == PickPurpose::User;
    struct Entry {
        double enter;
        ZYLVisObject *object;
    };
    std::vector<Entry> entries;
    for (ZYLVisObject *object : table) {
        if (!object || !object->IsVisible() || !object->GetRep() || (user && !object->IsSelectable()))
            continue;
        const ZYLMathBoundingBox box = object->GetBoundingBox(true);
        if (box.IsEmpty())
            continue;
        const double lo[3] = {box.GetMin().X(), box.GetMin().Y(), box.GetMin().Z()};
        const double hi[3] = {box.GetMax().X(), box.GetMax().Y(), box.GetMax().Z()};
        double enter = 0.0;
        if (!ZYLVisPickIndex::HitsBox(ray, lo, hi, infinity, &enter))
            continue;
        if (user && filter && !filter->IsSelectable(object))
            continue;
        entries.push_back({enter, object});
    }
    // Nearest boxes first: their hits lower the cutoff, and boxes entered beyond it are
    // skipped without building or walking their indices.
    std::sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) { return a.enter < b.enter; });

    ZYLVisPickCollector collector(ray);
    for (const Entry &entry : entries) {
        const ZYLVisPickIndex &index = IndexOf(entry.object->GetRep());
        const bool reachable = user ? (index.HasDepthTested() && entry.enter <= collector.GetCutoff(false))
                                          || (index.HasOverlay() && entry.enter <= collector.GetCutoff(true))
                                    : entry.enter <= collector.GetCutoff(false);
        if (!reachable)
            continue;
        const ZYLVisPickRay local = entry.object->HasPosition() ? ray.ToLocal(entry.object->GetPosition()) : ray;
        if (user)
            index.Pick(local, entry.object, collector);
        else
            index.Snap(local, int(snapTypes), entry.object, collector);
    }
    ZYLVisPickCandidate best = collector.GetBest();
    if (best.object && best.object->HasPosition())
        best.point = best.object->GetPosition().ToGlobal(best.point);
    return best;
}

ZYLVisMouseContext ZYLVisEnvironment::Data::MakeContext(const ZYLVisPickRay &ray, const ZYLVisPickCandidate &hit) const
{
    if (mouseFlags.testFlag(SnapMousePoint) && snapTypes) {
        const ZYLVisPickCandidate snap = Run(ray, PickPurpose::Snap);
        if (snap.object)
            return {ray, snap.point, hit.object, true};
    }
    if (hit.object)
        return {ray, hit.point, hit.object, false};
    // Over empty space the point of the ray nearest the middle of the scene is a sensible
    // depth for whatever the listener does with it (a line origin, a drop point).
    const ZYLMathBoundingBox box = q->GetBoundingBox();
    const double t = box.IsEmpty() ? 0.0 : std::max(0.0, ray.GetParameterOf(box.GetCenter()));
    return {ray, ray.GetPointAt(t), nullptr, false};
}

ZYLVisEnvironment::ZYLVisEnvironment(QObject *parent) : QObject(parent), d(std::make_unique<Data>(this))
{
    // Listeners name the set type of the selection signals in queued connections and
    // variants; registering here makes the name known before anyone connects.
    qRegisterMetaType<QSet<ZYLVisObject *>>("QSet<ZYLVisObject*>");
    qRegisterMetaType<ZYLVisMouseEvent>("ZYLVisMouseEvent");
}

ZYLVisEnvironment::~ZYLVisEnvironment()
{
    for (ZYLVisObject *object : std::as_const(d->registered))
        object->ForgetEnvironment();
    for (ZYLVisGizmo *gizmo : std::as_const(d->gizmos))
        gizmo->ForgetEnvironment();
}

void ZYLVisEnvironment::AddVirtualObject(ZYLVisVirtualObject *object)
{
    if (!object)
        return;
    if (object->GetEnvironment() != this)
        throw ZYLSysException(QStringLiteral("The object \"%1\" was made for another 3-D scene.").arg(object->GetLabel()));
    if (object->GetSceneIndex() >= 0)
        return;
    d->table.push_back(object);
    object->SetSceneIndex(qsizetype(d->table.size()) - 1);
    ++d->live;
    d->Use(object->GetRep());
    NotifyChanged();
}

void ZYLVisEnvironment::RemoveVirtualObject(ZYLVisVirtualObject *object)
{
    if (d->IsMember(object))
        RemoveFromScene(object);
}

void ZYLVisEnvironment::RemoveFromScene(ZYLVisObject *object)
{
    const qsizetype index = object->GetSceneIndex();
    if (index < 0)
        return;
    // The scene is brought to its final state before any signal, so that listeners see it
    // without the object.
    d->table[size_t(index)] = nullptr;
    object->SetSceneIndex(-1);
    --d->live;
    d->Release(object->GetRep());
    if (d->hovered == object)
        d->hovered = nullptr;
    d->CompactIfSparse();

    const Data::Batch batch(this);
    if (d->selection.contains(object))
        d->ChangeSelection({}, {object});
    if (d->preselection.contains(object))
        d->ChangePreselection({}, {object});
    NotifyChanged();
}

void ZYLVisEnvironment::RemoveAllVirtualObjects()
{
    if (d->live == 0)
        return;
    for (ZYLVisObject *object : d->table) {
        if (object)
            object->SetSceneIndex(-1);
    }
    d->table.clear();
    d->live = 0;
    d->reps.clear();
    d->hovered = nullptr;

    const Data::Batch batch(this);
    d->ChangeSelection({}, d->selection);
    d->ChangePreselection({}, d->preselection);
    NotifyChanged();
}

QList<ZYLVisVirtualObject *> ZYLVisEnvironment::GetVirtualObjects() const
{
    QList<ZYLVisVirtualObject *> objects;
    objects.reserve(d->live);
    for (ZYLVisObject *object : d->table) {
        if (object)
            objects.append(static_cast<ZYLVisVirtualObject *>(object));
    }
    return objects;
}

QSet<ZYLVisObject *> ZYLVisEnvironment::GetVisualizationSelection() const
{
    return d->selection;
}

QSet<ZYLVisObject *> ZYLVisEnvironment::GetPreSelectedObjects() const
{
    return d->preselection;
}

bool ZYLVisEnvironment::AddToSelection(ZYLVisObject *object)
{
    if (!d->IsMember(object) || d->selection.contains(object))
        return false;
    d->ChangeSelection({object}, {});
    return true;
}

void ZYLVisEnvironment::RemoveFromSelection(ZYLVisObject *object)
{
    if (object && d->selection.contains(object))
        d->ChangeSelection({}, {object});
}

void ZYLVisEnvironment::SelectObject(ZYLVisObject *object)
{
    AddToSelection(object);
}

void ZYLVisEnvironment::SetVisualizationSelection(const QSet<ZYLVisObject *> &objects)
{
    d->ReplaceSelection(objects);
}

void ZYLVisEnvironment::SetPreSelectedObjects(const QSet<ZYLVisObject *> &objects)
{
    d->ReplacePreselection(objects);
}

void ZYLVisEnvironment::SetSelectionFilter(ZYLVisSelectionFilter *filter)
{
    if (filter != d->filter.get())
        d->filter.reset(filter);
}

const ZYLVisSelectionFilter *ZYLVisEnvironment::GetSelectionFilter() const
{
    return d->filter.get();
}

void ZYLVisEnvironment::SetMouseInteraction(MouseInteractionFlags flags)
{
    SetMouseInteraction(int(flags.toInt()));
}

void ZYLVisEnvironment::SetMouseInteraction(int flags)
{
    constexpr int known = DeliverClicks | DeliverMoves | SnapMousePoint;
    if (flags & ~known)
        throw ZYLSysException(
            QStringLiteral("Invalid mouse interaction flags %1 (1 clicks, 2 moves, 16 snapping).").arg(flags));
    d->mouseFlags = MouseInteractionFlags::fromInt(flags);
}

ZYLVisEnvironment::MouseInteractionFlags ZYLVisEnvironment::GetMouseInteraction() const
{
    return d->mouseFlags;
}

void ZYLVisEnvironment::SetMouseSnapGeometryTypes(SnapGeometryTypes types)
{
    SetMouseSnapGeometryTypes(int(types.toInt()));
}

void ZYLVisEnvironment::SetMouseSnapGeometryTypes(int types)
{
    if (types & ~SnapAll)
        throw ZYLSysException(QStringLiteral("Invalid snap geometry types %1 (expected 0 to 127).").arg(types));
    d->snapTypes = SnapGeometryTypes::fromInt(types);
}

ZYLVisEnvironment::SnapGeometryTypes ZYLVisEnvironment::GetMouseSnapGeometryTypes() const
{
    return d->snapTypes;
}

ZYLVisPickResult ZYLVisEnvironment::Pick(const ZYLVisPickRay &ray) const
{
    const ZYLVisPickCandidate hit = d->Run(ray, PickPurpose::User);
    ZYLVisPickResult result;
    result.object = hit.object;
    result.primitive = hit.primitive;
    result.element = hit.element;
    result.point = hit.point;
    result.depth = hit.depth;
    result.distanceToRay = hit.distance;
    return result;
}

void ZYLVisEnvironment::MouseMove(const ZYLVisPickRay &ray)
{
    const ZYLVisPickCandidate hit = d->Run(ray, PickPurpose::User);
    // Listeners may delete objects from their table; guarded pointers tell which survive.
    const QPointer<ZYLVisObject> entered = hit.object;
    const QPointer<ZYLVisObject> left = d->hovered.data();
    d->hovered = hit.object;

    const Data::Batch batch(this);
    d->ReplacePreselection(hit.object ? QSet<ZYLVisObject *>{hit.object} : QSet<ZYLVisObject *>());
    if (d->mouseFlags.testFlag(DeliverMoves)) {
        const ZYLVisMouseContext context = d->MakeContext(ray, hit);
        d->lastContext = context;
        if (left != entered) {
            if (left)
                emit MouseEvent(ZYLVisMouseEvent(ZYLVisMouseEvent::Left,
                                                 {ray, context.GetMousePoint(), left, context.IsSnapped()}));
            if (entered)
                emit MouseEvent(ZYLVisMouseEvent(ZYLVisMouseEvent::Entered, context));
        }
        emit MouseEvent(ZYLVisMouseEvent(ZYLVisMouseEvent::Moved,
                                         {ray, context.GetMousePoint(), entered, context.IsSnapped()}));
    }
}

void ZYLVisEnvironment::MouseClick(const ZYLVisPickRay &ray, Qt::KeyboardModifiers modifiers)
{
    const ZYLVisPickCandidate hit = d->Run(ray, PickPurpose::User);
    const QPointer<ZYLVisObject> picked = hit.object;
    const bool multiple = d->filter && d->filter->IsMultiple();

    const Data::Batch batch(this);
    if (modifiers.testFlag(Qt::ControlModifier)) {
        if (hit.object && d->selection.contains(hit.object))
            d->ChangeSelection({}, {hit.object});
        else if (hit.object)
            d->ChangeSelection({hit.object}, {});
    } else if (hit.object) {
        if (multiple)
            AddToSelection(hit.object);
        else
            d->ReplaceSelection({hit.object});
    } else if (!multiple) {
        d->ReplaceSelection({});
    }
    if (d->mouseFlags.testFlag(DeliverClicks)) {
        const ZYLVisMouseContext context = d->MakeContext(ray, hit);
        emit MouseEvent(ZYLVisMouseEvent(ZYLVisMouseEvent::Clicked,
                                         {ray, context.GetMousePoint(), picked, context.IsSnapped()}, modifiers));
    }
}

void ZYLVisEnvironment::MouseLeave()
{
    const QPointer<ZYLVisObject> left = d->hovered.data();
    d->hovered = nullptr;
    const Data::Batch batch(this);
    d->ReplacePreselection({});
    if (d->mouseFlags.testFlag(DeliverMoves)) {
        const ZYLVisMouseContext &last = d->lastContext;
        emit MouseEvent(
            ZYLVisMouseEvent(ZYLVisMouseEvent::Left, {last.GetRay(), last.GetMousePoint(), left, last.IsSnapped()}));
    }
}

ZYLMathBoundingBox ZYLVisEnvironment::GetBoundingBox() const
{
    ZYLMathBoundingBox box;
    for (ZYLVisObject *object : d->table) {
        if (object && object->IsVisible())
            box.Add(object->GetBoundingBox(true));
    }
    return box;
}

QList<ZYLVisGizmo *> ZYLVisEnvironment::GetGizmos() const
{
    return d->gizmos;
}

bool ZYLVisEnvironment::IsInBatch() const
{
    return d->batchDepth > 0;
}

void ZYLVisEnvironment::RegisterObject(ZYLVisObject *object)
{
    d->registered.insert(object);
}

void ZYLVisEnvironment::UnregisterObject(ZYLVisObject *object)
{
    d->registered.remove(object);
}

void ZYLVisEnvironment::OnObjectChanged(ZYLVisObject *object, ObjectChange change, const ZYLVisRep *previousRep)
{
    const Data::Batch batch(this);
    switch (change) {
    case ObjectChange::Rep:
        if (previousRep != object->GetRep()) {
            d->Release(previousRep);
            d->Use(object->GetRep());
        }
        NotifyChanged();
        break;
    case ObjectChange::Position:
        NotifyChanged();
        break;
    case ObjectChange::Visibility:
        if (!object->IsVisible() && d->preselection.contains(object))
            d->ChangePreselection({}, {object});
        NotifyChanged();
        break;
    case ObjectChange::Selectability:
        if (!object->IsSelectable() && d->preselection.contains(object))
            d->ChangePreselection({}, {object});
        break;
    }
}

void ZYLVisEnvironment::RegisterGizmo(ZYLVisGizmo *gizmo)
{
    d->gizmos.append(gizmo);
    NotifyChanged();
}

void ZYLVisEnvironment::UnregisterGizmo(ZYLVisGizmo *gizmo)
{
    if (d->gizmos.removeAll(gizmo) > 0)
        NotifyChanged();
}

void ZYLVisEnvironment::NotifyChanged()
{
    if (d->batchDepth > 0)
        d->changePending = true;
    else
        emit Changed();
}

void ZYLVisEnvironment::BeginBatch()
{
    ++d->batchDepth;
}

void ZYLVisEnvironment::EndBatch()
{
    if (d->batchDepth == 0)
        return;
    if (--d->batchDepth == 0 && d->changePending) {
        d->changePending = false;
        emit Changed();
    }
}
