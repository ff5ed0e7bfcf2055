#include "script/machine/Engine.h"

#include "script/compiler/Compiler.h"
#include "script/machine/ErrObject.h"
#include "script/machine/Tracked.h"
#include "script/syntax/Lexer.h"
#include "script/syntax/Parser.h"

#include "binding/MemberTable.h"

namespace zan::script {

using values::ErrorNumber;
using values::Variant;

Engine::Engine(std::shared_ptr<EngineSettings> settings)
    : m_settings(std::move(settings))
    , m_globals(m_settings->arenas.take(Symbols::Maximum))
    , m_stack(m_settings->arenas.take(Vm::StackSlots))
    , m_symbols(*m_globals)
    , m_err(values::make<ErrObject>())
    , m_vm(*this, *m_stack)
{}

Engine::~Engine()
{
    // The last words of all its objects together are one run, or part of the run that is under way.
    const Budget::Scope scope(m_settings->budget);
    // 1. Variables go, and with them everything that is no cycle. The host's items stay for last words.
    for (std::uint32_t number = 0; number < m_symbols.count(); ++number) {
        if (m_symbols.at(number).kind != Symbol::Kind::HostItem)
            m_symbols.value(number) = Variant();
    }
    m_vm.clearStack();
    // 2. What is left refers to itself: first all of it says goodbye, while it is whole ...
    constexpr int MostRounds = 1000; // a goodbye may make new objects, but not for ever
    std::vector<Tracked*> left;
    const auto holdAll = [this, &left] {
        left.clear();
        for (Tracked* object = m_tracked; object; object = object->m_next) {
            object->hold();
            left.push_back(object);
        }
    };
    const auto dropAll = [&left] {
        for (const Tracked* object : left)
            object->drop();
    };
    for (int round = 0; round < MostRounds; ++round) {
        holdAll();
        const std::size_t before = left.size();
        for (Tracked* object : left)
            object->sayGoodbye();
        dropAll();
        holdAll();
        const bool settled = left.size() <= before;
        dropAll();
        if (settled)
            break;
    }
    // 3. ... then it is taken apart.
    m_closing = true;
    holdAll();
    for (Tracked* object : left)
        object->letGo();
    for (Tracked* object : left) {
        untrack(*object);
        object->m_engine = nullptr;
    }
    dropAll();
    for (std::uint32_t number = 0; number < m_symbols.count(); ++number)
        m_symbols.value(number) = Variant();
    m_vm.clearStack();
    m_settings->arenas.give(std::move(m_globals));
    m_settings->arenas.give(std::move(m_stack));
}

void Engine::track(Tracked& object) noexcept
{
    object.m_next = m_tracked;
    if (m_tracked)
        m_tracked->m_previous = &object;
    m_tracked = &object;
}

void Engine::untrack(Tracked& object) noexcept
{
    if (object.m_previous)
        object.m_previous->m_next = object.m_next;
    else if (m_tracked == &object)
        m_tracked = object.m_next;
    if (object.m_next)
        object.m_next->m_previous = object.m_previous;
    object.m_previous = object.m_next = nullptr;
}

bool Engine::addObject(values::Name name, const binding::Ref<binding::Object>& object, bool addMembers)
{
    if (!object || name.isEmpty())
        return false;
    m_isFresh = false;
    const std::uint32_t number = m_symbols.intern(name);
    Symbol& symbol = m_symbols.at(number);
    if (symbol.kind != Symbol::Kind::Undefined)
        return false;
    symbol.kind = Symbol::Kind::HostItem;
    m_symbols.value(number) = Variant(object);
    learn({Lesson::Kind::Item, name.id()});
    if (addMembers) {
        m_globalItems.push_back(number);
        learn({Lesson::Kind::GlobalItem, &object->members()});
    }
    return true;
}

int Engine::hostItemWith(values::Name name) const
{
    for (const std::uint32_t number : m_globalItems) {
        const Variant& item = const_cast<Symbols&>(m_symbols).value(number);
        if (item.isObject() && item.object() && binding::objectOf(item).members().find(name))
            return int(number);
    }
    return -1;
}

void Engine::noteChange(values::Name name)
{
    learn({Lesson::Kind::Name, name.id()});
}

/// Counts a third of the work of compiling so many characters, and looks at the limits.
void Engine::spendOnText(qsizetype characters)
{
    constexpr qsizetype PassesPerCharacter = 2;
    constexpr qsizetype Free = 256; // short texts are what a loop runs: looking costs more than they do
    m_vm.spend(std::size_t(characters * PassesPerCharacter));
    if (characters > Free)
        m_vm.look();
}

std::shared_ptr<const Unit> Engine::compile(const QString& text, RunMode mode, bool dynamicScope)
{
    m_isFresh = false;
    if (std::size_t(text.size()) > m_settings->limits.codeLength)
        throw CompileError(SyntaxError::OutOfMemory, {1, 0});
    if (mode == RunMode::ExecuteGlobal)
        mode = RunMode::Execute; // what differs is the scope
    if (std::shared_ptr<const Unit> known = m_settings->cache.find({m_knowledge, text, mode, dynamicScope}))
        return known;
    spendOnText(text.size());
    const std::vector<Token> tokens = Lexer(text).run();
    spendOnText(text.size());
    Parser parser(tokens);
    const SyntaxTree tree = mode == RunMode::Eval ? parser.parseExpressionText() : parser.parseProgram();
    spendOnText(text.size());
    const UnitCache::Key key{m_knowledge, text, mode,
                             dynamicScope}; // looking at the limits may run code that adds to it
    const std::uint32_t symbolsBefore = m_symbols.count();
    Compiler compiler(tree, {m_symbols, [this](values::Name name) { return hostItemWith(name); }, dynamicScope});
    try {
        std::shared_ptr<const Unit> unit = compiler.compile();
        m_settings->cache.insert(key, unit);
        return unit;
    } catch (...) {
        if (m_symbols.count() != symbolsBefore) // names stay numbered, so that later texts compile differently
            learn({Lesson::Kind::Symbols, nullptr, m_symbols.count()});
        throw;
    }
}

void Engine::load(const std::shared_ptr<const Unit>& unit)
{
    bool changed = !unit->newSymbols.empty();
    for (const values::Name name : unit->newSymbols)
        m_symbols.intern(name);
    for (const Declaration& declaration : unit->declarations) {
        Symbol& symbol = m_symbols.at(declaration.symbol);
        switch (declaration.kind) {
        case Declaration::Kind::Variable:
            changed = changed || symbol.kind != Symbol::Kind::Variable;
            symbol.kind = Symbol::Kind::Variable;
            break;
        case Declaration::Kind::Constant:
            changed = changed || symbol.kind != Symbol::Kind::Constant;
            symbol.kind = Symbol::Kind::Constant;
            m_symbols.value(declaration.symbol) = declaration.value;
            break;
        case Declaration::Kind::Procedure:
            changed = changed || symbol.procedure != declaration.procedure;
            symbol.kind = Symbol::Kind::Procedure;
            symbol.procedure = declaration.procedure;
            break;
        case Declaration::Kind::Class:
            changed = changed || symbol.classInfo != declaration.classInfo;
            symbol.kind = Symbol::Kind::Class;
            symbol.classInfo = declaration.classInfo;
            break;
        }
    }
    if (changed)
        learn({Lesson::Kind::Unit, nullptr, unit->serial});
    if (unit->procedures.size() > 1 || !unit->classes.empty())
        m_units.insert(unit);
}

void Engine::addCode(const QString& text)
{
    const std::shared_ptr<const Unit> unit = compile(text, RunMode::ExecuteGlobal, false);
    load(unit);
    m_vm.run(*unit->main, nullptr, {});
}

Variant Engine::evaluate(const QString& text)
{
    const std::shared_ptr<const Unit> unit = compile(text, RunMode::Eval, false);
    load(unit);
    return m_vm.run(*unit->main, nullptr, {});
}

Variant Engine::run(values::Name name, binding::Arguments arguments)
{
    const Symbol* symbol = m_symbols.find(name);
    if (!symbol || symbol->kind != Symbol::Kind::Procedure)
        throw NamedError(ErrorNumber::NoSuchMember, name);
    return m_vm.run(*symbol->procedure, nullptr, arguments);
}

} // namespace zan::script
