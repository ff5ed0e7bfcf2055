#pragma once

#include "script/compiler/Bytecode.h"
#include "script/machine/ScriptHost.h"

#include "binding/Object.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <unordered_map>

namespace zan::script {

/// Compiled texts by text and by what was known when they were compiled.
class UnitCache
{
public:
    std::shared_ptr<const Unit> find(const QString& key) const;
    void insert(const QString& key, std::shared_ptr<const Unit> unit);
    std::size_t size() const noexcept { return m_units.size(); }

private:
    static constexpr qsizetype MostCharacters = 8 * 1024 * 1024;
    std::unordered_map<QString, std::shared_ptr<const Unit>> m_units;
    qsizetype m_characters = 0;
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
};

/// Bytes of heap in use by the process, as far as the platform tells; else 0.
std::size_t heapInUse() noexcept;

} // namespace zan::script
