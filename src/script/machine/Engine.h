#pragma once

#include "script/compiler/Bytecode.h"
#include "script/compiler/Symbols.h"
#include "script/machine/EngineSettings.h"
#include "script/machine/ErrObject.h"
#include "script/machine/Vm.h"

#include "binding/Object.h"

#include <QString>

#include <memory>
#include <unordered_set>
#include <vector>

namespace zan::script {

class Tracked;

/// One script program with its variables: everything that Reset forgets. Its public calls may raise RuntimeError
/// and CompileError; ScriptControl is where they stop.
class Engine
{
public:
    explicit Engine(std::shared_ptr<EngineSettings> settings);
    /// Ends the program: every object of a script's class that still lives hears Class_Terminate.
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// False when there is no object or an item of that name.
    bool addObject(values::Name name, const binding::Ref<binding::Object>& object, bool addMembers);
    /// Compiles a text and runs its statements.
    void addCode(const QString& text);
    /// Calls a procedure; raises 438 when there is none of that name.
    values::Variant run(values::Name procedure, binding::Arguments arguments);
    values::Variant evaluate(const QString& text);

    /// The compiled form of a text, from the cache where it is known.
    std::shared_ptr<const Unit> compile(const QString& text, RunMode mode, bool dynamicScope);
    /// Makes the unit's declarations the program's.
    void load(const std::shared_ptr<const Unit>& unit);

    Symbols& symbols() noexcept { return m_symbols; }
    Vm& vm() noexcept { return m_vm; }
    EngineSettings& settings() noexcept { return *m_settings; }
    ErrObject& err() noexcept { return *m_err; }
    values::Ref<ErrObject> errRef() const { return m_err; }
    /// The named item with global members that has this one, or -1.
    int hostItemWith(values::Name name) const;

    /// A name began to mean something while a script ran: texts compile differently from now on.
    void noteChange(values::Name name);

    /// State of Rnd.
    std::uint32_t randomSeed = 0x50000;
    int locale = 1033;

    /// Everything that could be part of a cycle is kept in a list, so that the end of the program can break it.
    void track(Tracked& object) noexcept;
    void untrack(Tracked& object) noexcept;
    /// True before anything was added or run.
    bool isFresh() const noexcept { return m_isFresh; }
    bool isClosing() const noexcept { return m_closing; }

private:
    void spendOnText(qsizetype characters);
    void learn(const Lesson& lesson) { m_knowledge = m_settings->cache.after(m_knowledge, lesson); }

    std::shared_ptr<EngineSettings> m_settings;
    std::unique_ptr<SlotArena> m_globals;
    std::unique_ptr<SlotArena> m_stack;
    Symbols m_symbols;
    Knowledge m_knowledge = 0; ///< what was added so far, as far as it decides how a text compiles
    std::unordered_set<std::shared_ptr<const Unit>> m_units; ///< those whose procedures and classes are known
    std::vector<std::uint32_t> m_globalItems;
    values::Ref<ErrObject> m_err;
    Vm m_vm;
    Tracked* m_tracked = nullptr;
    bool m_isFresh = true;
    bool m_closing = false;
};

} // namespace zan::script
