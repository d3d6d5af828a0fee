// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisRep.h"

#include "ZYLVisOptions.h"
#include "ZYLVisPrimitive.h"

#include "ZYLSysException.h"

#include <QSet>

#include <atomic>

namespace {
std::atomic<quint64> nextRepId{1};
}

struct ZYLVisRep::Data {
    quint64 id = nextRepId.fetch_add(1);
    std::vector<std::unique_ptr<ZYLVisPrimitive>> primitives;
    std::vector<ZYLVisOptions> options;
    std::vector<std::unique_ptr<ZYLVisRep>> children;
    ZYLMathBoundingBox box;
    bool owned = false;
};

ZYLVisRep::ZYLVisRep(QObject *parent) : QObject(parent), d(std::make_unique<Data>()) {}

ZYLVisRep::~ZYLVisRep() = default;

quint64 ZYLVisRep::GetId() const
{
    return d->id;
}

ZYLMathBoundingBox ZYLVisRep::GetBoundingBox() const
{
    return d->box;
}

int ZYLVisRep::GetNumPrimitives() const
{
    return int(d->primitives.size());
}

const ZYLVisPrimitive *ZYLVisRep::GetPrimitive(int i) const
{
    return i >= 0 && i < GetNumPrimitives() ? d->primitives[size_t(i)].get() : nullptr;
}

const ZYLVisOptions &ZYLVisRep::GetOptions(int i) const
{
    static const ZYLVisOptions defaults;
    return i >= 0 && i < GetNumPrimitives() ? d->options[size_t(i)] : defaults;
}

int ZYLVisRep::GetNumChildren() const
{
    return int(d->children.size());
}

const ZYLVisRep *ZYLVisRep::GetChild(int i) const
{
    return i >= 0 && i < GetNumChildren() ? d->children[size_t(i)].get() : nullptr;
}

std::vector<ZYLVisRep::Item> ZYLVisRep::GetAllPrimitives() const
{
    std::vector<Item> items;
    // Iterative walk: a deep tree of nested sets must not exhaust the stack.
    std::vector<const ZYLVisRep *> stack{this};
    while (!stack.empty()) {
        const ZYLVisRep *rep = stack.back();
        stack.pop_back();
        for (size_t i = 0; i < rep->d->primitives.size(); ++i)
            items.push_back({rep->d->primitives[i].get(), &rep->d->options[i]});
        for (auto it = rep->d->children.rbegin(); it != rep->d->children.rend(); ++it)
            stack.push_back(it->get());
    }
    return items;
}

bool ZYLVisRep::IsOwned() const
{
    return d->owned;
}

void ZYLVisRep::AddPrimitives(const QList<ZYLVisPrimitive *> &primitives, const QList<ZYLVisOptions> &options)
{
    if (primitives.size() != options.size())
        throw ZYLSysException(QStringLiteral("%1 primitives were given with %2 display options; one per primitive is needed.")
                                  .arg(primitives.size())
                                  .arg(options.size()));
    // Check everything before taking anything, so that a refused list stays the caller's.
    QSet<const ZYLVisPrimitive *> seen;
    for (const ZYLVisPrimitive *primitive : primitives) {
        if (!primitive)
            continue;
        if (primitive->m_owned || seen.contains(primitive))
            throw ZYLSysException(QStringLiteral("A primitive can belong to one representation only."));
        seen.insert(primitive);
    }
    for (qsizetype i = 0; i < primitives.size(); ++i) {
        ZYLVisPrimitive *primitive = primitives[i];
        if (!primitive)
            continue;
        primitive->m_owned = true;
        d->box.Add(primitive->GetBoundingBox());
        d->primitives.emplace_back(primitive);
        d->options.push_back(options[i]);
    }
}

void ZYLVisRep::AddChildren(const QList<ZYLVisRep *> &children)
{
    QSet<const ZYLVisRep *> seen;
    for (const ZYLVisRep *child : children) {
        if (!child)
            continue;
        if (child == this || child->d->owned || seen.contains(child))
            throw ZYLSysException(QStringLiteral("A representation can be nested in one representation only."));
        seen.insert(child);
    }
    for (ZYLVisRep *child : children) {
        if (!child)
            continue;
        child->d->owned = true;
        d->box.Add(child->GetBoundingBox());
        d->children.emplace_back(child);
    }
}
