#pragma once

#include "binding/Object.h"
#include "component/ZanBenchComponent.h"

#include <cstdint>
#include <memory>
#include <unordered_map>

namespace zan::component {

using binding::Object;
using values::Ref;

class Holder;

/// The objects that callers in C know, by the numbers that stand for them. A number is given once and never again, so
/// that one that is kept too long names nothing instead of something else. User-interface thread.
class Handles
{
public:
    struct Entry
    {
        Ref<Object> object;
        std::shared_ptr<Holder> holder; ///< the widget behind a created control; null for all else
        std::uint32_t references = 0;
    };

    /// The handle of an object, with one more reference; 0 for Nothing. An object has one handle for as long as
    /// somebody holds it.
    ZanHandle give(const Ref<Object>& object, std::shared_ptr<Holder> holder = {});
    /// What a handle stands for. Raises when no living object has it.
    Entry& at(ZanHandle handle);
    void retain(ZanHandle handle);
    void release(ZanHandle handle);
    bool isEmpty() const noexcept { return m_entries.empty(); }
    /// Lets everything go: the application object ends.
    void clear();

private:
    std::unordered_map<ZanHandle, Entry> m_entries;
    std::unordered_map<const Object*, ZanHandle> m_byObject;
    ZanHandle m_last = 0;
};

} // namespace zan::component
