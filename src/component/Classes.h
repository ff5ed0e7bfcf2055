#pragma once

#include "component/Holder.h"

#include <QMetaObject>

#include <span>

namespace zan::component {

/// A new object of a class, and the widget behind it where it has one.
struct Created
{
    Ref<Object> object;
    std::shared_ptr<Holder> holder;
};

/// A class that callers in C can create: one row.
struct ClassRow
{
    const char* name; ///< as its member table has it
    ZanId id;
    Created (*create)();
};
std::span<const ClassRow> classes();

/// The signals that are a class's events, by the name of its member table; null for a class without events.
const QMetaObject* eventSourceOf(QStringView className);

bool sameId(const ZanId& a, const ZanId& b) noexcept;
/// "b575fc18-727e-4eba-992e-b349ce86f0a0".
QString textOf(const ZanId& id);

/// Raises for an id that no class has.
const ClassRow& classOf(const ZanId& id);

} // namespace zan::component
