#pragma once

#include "script/compiler/Bytecode.h"
#include "script/compiler/SlotArena.h"
#include "script/machine/Budget.h"
#include "script/machine/ScriptHost.h"

#include "binding/Object.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <unordered_map>

namespace zan::script {

/// What was known to a program when a text was compiled, as a number: equal for programs to which the same things were
/// told in the same order.
using Knowledge = std::uint64_t;

/// One thing told to a program, as far as it decides how a text compiles.
struct Lesson
{
    enum class Kind : std::uint8_t { Item, GlobalItem, Name, Unit, Symbols };
    Kind kind;
    const void* about = nullptr; ///< identity of a name or of a table of members
    std::uint64_t number = 0;
    friend bool operator==(const Lesson&, const Lesson&) = default;
};

/// Compiled texts by text and by what was known when they were compiled.
class UnitCache
{
public:
    struct Key
    {
        Knowledge knowledge;
        QString text;
        RunMode mode;
        bool dynamicScope;
        friend bool operator==(const Key&, const Key&) = default;
    };
    std::shared_ptr<const Unit> find(const Key& key) const;
    void insert(const Key& key, std::shared_ptr<const Unit> unit);
    std::size_t size() const noexcept { return m_units.size(); }
    /// What is known after one thing more.
    Knowledge after(Knowledge before, const Lesson& lesson);

private:
    struct Step
    {
        Knowledge before;
        Lesson lesson;
        friend bool operator==(const Step&, const Step&) = default;
    };
    struct Hash
    {
        std::size_t operator()(const Key& key) const noexcept;
        std::size_t operator()(const Step& step) const noexcept;
    };
    static constexpr qsizetype MostCharacters = 8 * 1024 * 1024;
    static constexpr std::size_t MostSteps = 100000;
    std::unordered_map<Key, std::shared_ptr<const Unit>, Hash> m_units;
    qsizetype m_characters = 0;
    std::unordered_map<Step, Knowledge, Hash> m_steps;
    Knowledge m_last = 0; ///< numbers are never used twice
};

/// What survives Reset: the host and its rules.
struct EngineSettings
{
    ScriptHost* host = nullptr; ///< null: boxes are answered with OK and Cancel
    ScriptLimits limits;
    /// Monotonic time; a test puts its own here.
    std::function<std::chrono::nanoseconds()> clock;
    /// Bytes of heap in use; a test puts its own here.
    std::function<std::size_t()> memoryInUse;
    using Factory = std::function<binding::Ref<binding::Object>()>;
    /// What CreateObject can make, by folded name.
    std::unordered_map<values::Name, Factory> classes;
    UnitCache cache;
    ArenaPool& arenas = ArenaPool::ofThread();
    Budget budget{*this};
};

/// Bytes of heap in use by the process, as far as the platform tells; else 0.
std::size_t heapInUse() noexcept;

} // namespace zan::script
