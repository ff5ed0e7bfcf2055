#include "script/compiler/Compiler.h"

#include "script/compiler/Builtins.h"

#include <atomic>

namespace zan::script {

namespace {

constexpr std::uint32_t MostTemporaries = 60000;

std::uint64_t nextSerial() noexcept
{
    static std::atomic<std::uint64_t> serial = 0;
    return ++serial;
}

} // namespace

Compiler::Compiler(const SyntaxTree& tree, CompileContext context)
    : m_tree(tree)
    , m_context(std::move(context))
    , m_unit(std::make_shared<Unit>())
    , m_symbolsBefore(m_context.symbols.count())
{
    m_unit->serial = nextSerial();
}

std::shared_ptr<const Unit> Compiler::compile()
{
    // 1. Every global name of the text is known before any code is made: procedures and classes may be used
    //    before the line that declares them.
    declareGlobals();
    // 2. Classes first, so that procedures find their members.
    std::vector<std::pair<const ProcedureNode*, Procedure*>> procedures;
    for (const ProcedureNode* node : m_tree.procedures) {
        m_unit->procedures.push_back(newProcedure(*node, nullptr));
        Procedure* added = m_unit->procedures.back().get();
        procedures.emplace_back(node, added);
        addDeclaration(Declaration::Kind::Procedure, node->name, {.value = {}, .procedure = added});
    }
    for (const ClassNode* node : m_tree.classes) {
        m_unit->classes.push_back(std::make_unique<ClassInfo>());
        ClassInfo* info = m_unit->classes.back().get();
        info->serial = nextSerial();
        declareClass(*node, *info);
        addDeclaration(Declaration::Kind::Class, node->name, {.value = {}, .classInfo = info});
    }
    // 3. Code.
    for (std::size_t place = 0; place < m_tree.classes.size(); ++place)
        compileClass(*m_tree.classes[place], *m_unit->classes[place]);
    for (const auto& [node, procedure] : procedures)
        compileProcedure(*node, *procedure, nullptr);
    compileMain();
    for (auto& [name, declaration] : m_declared)
        m_unit->declarations.push_back(declaration);
    for (std::uint32_t number = m_symbolsBefore; number < m_context.symbols.count(); ++number)
        m_unit->newSymbols.push_back(m_context.symbols.at(number).name);
    return m_unit;
}

void Compiler::addDeclaration(Declaration::Kind kind, values::Name name, Declaration declaration)
{
    declaration.kind = kind;
    declaration.symbol = m_context.symbols.intern(name);
    m_declared[name.folded()] = declaration; // of two procedures of one name the last counts
}

void Compiler::declareGlobals()
{
    if (m_context.dynamicScope)
        return;
    declareBlockGlobals(m_tree.statements);
    if (m_tree.optionExplicit)
        return;
    // A name that the text assigns outside its procedures is a global variable without a Dim.
    std::vector<values::Name> assigned;
    collectAssigned(m_tree.statements, assigned);
    for (const values::Name name : assigned) {
        const bool isProcedure =
            std::any_of(m_tree.procedures.begin(), m_tree.procedures.end(),
                        [name](const ProcedureNode* node) { return node->name.equalsIgnoringCase(name); }) ||
            std::any_of(m_tree.classes.begin(), m_tree.classes.end(),
                        [name](const ClassNode* node) { return node->name.equalsIgnoringCase(name); });
        if (!isProcedure && resolveGlobal(name).where == Where::Unknown)
            addDeclaration(Declaration::Kind::Variable, name, {});
    }
}

void Compiler::declareBlockGlobals(const Block& statements)
{
    for (const Statement* node : statements) {
        if (node->kind == StatementKind::Dim) {
            for (const Declarator& item : node->declarators) {
                const Symbol* old = m_context.symbols.find(item.name);
                if (old && old->kind == Symbol::Kind::Constant)
                    throw CompileError(SyntaxError::NameRedefined, item.position);
                if (old && old->kind == Symbol::Kind::Variable && item.isArray)
                    m_redeclaredArrays.insert(m_context.symbols.numberOf(*old));
                addDeclaration(Declaration::Kind::Variable, item.name, {});
            }
        } else if (node->kind == StatementKind::Const) {
            const Symbol* old = m_context.symbols.find(node->name);
            if (old && old->kind == Symbol::Kind::Variable)
                throw CompileError(SyntaxError::NameRedefined, node->position);
            addDeclaration(Declaration::Kind::Constant, node->name, {.value = node->value->value});
        } else if (node->kind == StatementKind::ReDim) {
            for (const Expression* item : node->items) {
                if (item->left->kind == ExpressionKind::Name &&
                    resolveGlobal(item->left->name).where == Where::Unknown)
                    addDeclaration(Declaration::Kind::Variable, item->left->name, {});
            }
        }
        declareBlockGlobals(node->body);
        for (const Branch& branch : node->branches)
            declareBlockGlobals(branch.body);
    }
}

std::unique_ptr<Procedure> Compiler::newProcedure(const ProcedureNode& node, const ClassInfo* owner)
{
    auto procedure = std::make_unique<Procedure>();
    procedure->name = node.name;
    procedure->kind = node.kind;
    procedure->isPublic = node.isPublic;
    procedure->owner = owner;
    procedure->optionExplicit = m_tree.optionExplicit;
    procedure->parameterCount = std::uint32_t(node.parameters.size());
    return procedure;
}

void Compiler::declareClass(const ClassNode& node, ClassInfo& info)
{
    info.name = node.name;
    const auto member = [&info](values::Name name) -> ClassMember& {
        ClassMember& entry = info.members[name.folded()];
        entry.name = name;
        return entry;
    };
    for (const Declarator& field : node.fields) {
        ClassMember& entry = member(field.name);
        entry.field = std::int32_t(info.fields.size());
        entry.fieldIsPublic = field.isPublic;
        info.fields.push_back({field.name, field.isArray, field.upperBounds});
    }
    for (const ConstantNode& item : node.constants) {
        ClassMember& entry = member(item.name);
        entry.isConstant = true;
        entry.constant = item.value;
        entry.fieldIsPublic = item.isPublic;
    }
    for (const ProcedureNode* item : node.procedures) {
        m_unit->procedures.push_back(newProcedure(*item, &info));
        const Procedure* added = m_unit->procedures.back().get();
        ClassMember& entry = member(item->name);
        if (item->kind == ProcedureKind::PropertyLet)
            entry.let = added;
        else if (item->kind == ProcedureKind::PropertySet)
            entry.set = added;
        else
            entry.get = added;
        if (item->isDefault)
            info.defaultMember = &entry; // nodes of the table stay where they are
        if (item->name.folded() == values::Name("class_initialize"))
            info.initialize = added;
        if (item->name.folded() == values::Name("class_terminate"))
            info.terminate = added;
    }
}

void Compiler::compileClass(const ClassNode& node, ClassInfo& info)
{
    m_class = &info;
    for (const ProcedureNode* item : node.procedures) {
        const ClassMember& entry = info.members.at(item->name.folded());
        const Procedure* procedure = item->kind == ProcedureKind::PropertyLet   ? entry.let
                                     : item->kind == ProcedureKind::PropertySet ? entry.set
                                                                                : entry.get;
        compileProcedure(*item, const_cast<Procedure&>(*procedure), &info);
    }
    m_class = nullptr;
}

void Compiler::compileProcedure(const ProcedureNode& node, Procedure& procedure, const ClassInfo*)
{
    Body body;
    body.procedure = &procedure;
    m_body = &body;
    for (const Parameter& parameter : node.parameters)
        addLocal(parameter.name, !parameter.byValue);
    if (node.kind == ProcedureKind::Function || node.kind == ProcedureKind::PropertyGet)
        procedure.resultSlot = std::int32_t(addLocal(node.name, false));
    std::vector<const Statement*> arrays;
    collectLocals(node.body, arrays);
    for (std::uint32_t slot = 0; slot < node.parameters.size(); ++slot) {
        if (node.parameters[slot].byValue)
            emit(Op::ByValue, operand(Bank::Local, slot));
    }
    bindAssigned(node.body);
    body.temporaries = procedure.frameSize = procedure.localCount;
    mark(node.position);
    emitArrays(arrays);
    block(node.body);
    mark(node.endPosition);
    finishBody();
}

void Compiler::compileMain()
{
    auto procedure = std::make_unique<Procedure>();
    procedure->isMain = true;
    procedure->dynamicScope = m_context.dynamicScope;
    procedure->optionExplicit = m_tree.optionExplicit;
    m_unit->main = procedure.get();
    Body body;
    body.procedure = procedure.get();
    m_body = &body;
    m_unit->procedures.push_back(std::move(procedure));
    if (m_tree.expression) {
        body.procedure->resultSlot = 0;
        body.procedure->localCount = body.procedure->frameSize = body.temporaries = 1;
        const std::size_t number = mark(m_tree.expression->position);
        valueInto(*m_tree.expression, operand(Bank::Local, 0));
        setResume(number, here());
        finishBody();
        return;
    }
    std::vector<const Statement*> arrays;
    collectLocals(m_tree.statements, arrays);
    if (m_context.dynamicScope)
        bindAssigned(m_tree.statements);
    body.temporaries = body.procedure->frameSize = body.procedure->localCount;
    emitArrays(arrays);
    block(m_tree.statements);
    finishBody();
}

void Compiler::finishBody()
{
    patchAll(m_body->returns, here());
    emit(Op::Return);
    for (const auto& [name, local] : m_body->locals) {
        if (!local.isConstant)
            m_body->procedure->locals.emplace_back(name, local.slot);
    }
    m_body = nullptr;
}

std::uint32_t Compiler::addLocal(values::Name name, bool maybeReference)
{
    const std::uint32_t slot = m_body->procedure->localCount++;
    m_body->locals[name.folded()] = {.slot = slot, .maybeReference = maybeReference, .value = {}};
    return slot;
}

/// Names declared anywhere in a procedure belong to it from its first line on.
void Compiler::collectLocals(const Block& statements, std::vector<const Statement*>& arrays)
{
    const bool isGlobalText = m_body->procedure->isMain && !m_context.dynamicScope;
    for (const Statement* node : statements) {
        if (node->kind == StatementKind::Dim) {
            bool hasArray = false;
            for (const Declarator& item : node->declarators) {
                hasArray = hasArray || item.isArray;
                if (!isGlobalText && !m_body->locals.contains(item.name.folded())) {
                    const std::uint32_t slot = addLocal(item.name, m_context.dynamicScope);
                    if (m_context.dynamicScope)
                        emit(Op::BindName, operand(Bank::Local, slot), 0, nameNumber(item.name), 1);
                }
            }
            if (hasArray)
                arrays.push_back(node);
        } else if (node->kind == StatementKind::Const && !isGlobalText) {
            m_body->locals[node->name.folded()] = {.isConstant = true, .value = node->value->value};
        } else if (node->kind == StatementKind::ReDim && !isGlobalText) {
            for (const Expression* item : node->items) {
                if (item->left->kind == ExpressionKind::Name && resolve(item->left->name).where == Where::Unknown) {
                    const std::uint32_t slot = addLocal(item->left->name, m_context.dynamicScope);
                    if (m_context.dynamicScope)
                        emit(Op::BindName, operand(Bank::Local, slot), 0, nameNumber(item->left->name), 1);
                }
            }
        }
        collectLocals(node->body, arrays);
        for (const Branch& branch : node->branches)
            collectLocals(branch.body, arrays);
    }
}

void Compiler::collectAssignedName(const Expression* target, std::vector<values::Name>& names)
{
    if (target && target->kind == ExpressionKind::Name)
        names.push_back(target->name);
}

void Compiler::collectAssigned(const Block& statements, std::vector<values::Name>& names) const
{
    for (const Statement* node : statements) {
        switch (node->kind) {
        case StatementKind::Assign:
        case StatementKind::SetAssign:
        case StatementKind::For:
        case StatementKind::ForEach:
            collectAssignedName(node->target, names);
            break;
        default:
            break;
        }
        collectAssigned(node->body, names);
        for (const Branch& branch : node->branches)
            collectAssigned(branch.body, names);
    }
}

/// A name that is assigned but declared nowhere is a local variable, unless a global variable of that name exists
/// when the procedure starts: its slot then refers to that one.
void Compiler::bindAssigned(const Block& statements)
{
    if (m_tree.optionExplicit)
        return;
    std::vector<values::Name> assigned;
    collectAssigned(statements, assigned);
    for (const values::Name name : assigned) {
        if (resolve(name).where != Where::Unknown)
            continue;
        const std::uint32_t slot = addLocal(name, true);
        emit(Op::BindName, operand(Bank::Local, slot), 0, nameNumber(name), m_context.dynamicScope ? 1 : 0);
    }
}

void Compiler::emitArrays(const std::vector<const Statement*>& arrays)
{
    for (const Statement* node : arrays) {
        for (const Declarator& item : node->declarators) {
            if (!item.isArray)
                continue;
            const Resolved place = resolve(item.name);
            if (place.where == Where::Global && m_redeclaredArrays.contains(place.number))
                continue;
            m_body->procedure->bounds.push_back(item.upperBounds);
            emit(Op::DimArray, place.place, 0, std::uint32_t(m_body->procedure->bounds.size() - 1));
        }
    }
}

bool Compiler::isOwnName(values::Name name) const
{
    const Procedure& procedure = *m_body->procedure;
    return procedure.resultSlot >= 0 && !procedure.isMain && procedure.name.equalsIgnoringCase(name);
}

Compiler::Resolved Compiler::resolve(values::Name name) const
{
    if (m_body) {
        if (const auto found = m_body->locals.find(name.folded()); found != m_body->locals.end()) {
            const Local& local = found->second;
            if (local.isConstant)
                return {.where = Where::Constant, .place = const_cast<Compiler*>(this)->constant(local.value)};
            return {.where = Where::Local,
                    .place = operand(Bank::Local, local.slot),
                    .maybeReference = local.maybeReference};
        }
    }
    if (m_class && m_body) {
        if (const ClassMember* member = m_class->find(name)) {
            if (member->isConstant)
                return {.where = Where::Constant, .place = const_cast<Compiler*>(this)->constant(member->constant)};
            if (member->field >= 0)
                return {.where = Where::Field, .place = operand(Bank::Field, std::uint32_t(member->field))};
            return {.where = Where::ClassMember, .member = member};
        }
    }
    if (m_context.dynamicScope)
        return {};
    return resolveGlobal(name);
}

Compiler::Resolved Compiler::resolveGlobal(values::Name name) const
{
    const auto at = [](Where where, std::uint32_t number) {
        return Resolved{.where = where, .place = operand(Bank::Global, number), .number = number};
    };
    if (const auto found = m_declared.find(name.folded()); found != m_declared.end()) {
        constexpr Where Kinds[] = {Where::Global, Where::GlobalConstant, Where::Procedure, Where::Class};
        return at(Kinds[int(found->second.kind)], found->second.symbol);
    }
    if (const Symbol* symbol = m_context.symbols.find(name)) {
        constexpr Where Kinds[] = {Where::Unknown,   Where::Global, Where::GlobalConstant,
                                   Where::Procedure, Where::Class,  Where::HostItem};
        if (symbol->kind != Symbol::Kind::Undefined)
            return at(Kinds[int(symbol->kind)], m_context.symbols.numberOf(*symbol));
    }
    if (const std::optional<RunMode> mode = runModeOf(name))
        return {.where = Where::RunText, .number = std::uint32_t(*mode)};
    if (const int number = findBuiltin(name); number >= 0)
        return {.where = Where::Builtin, .number = std::uint32_t(number)};
    if (const Variant* found = findConstant(name)) {
        const Operand place = m_body ? const_cast<Compiler*>(this)->constant(*found) : NoOperand;
        return {.where = Where::BuiltinConstant, .place = place};
    }
    if (const int item = m_context.hostItemWith(name); item >= 0)
        return at(Where::HostMember, std::uint32_t(item));
    return {};
}

std::size_t Compiler::emit(Op op, Operand a, Operand b, Operand c, std::size_t n)
{
    m_body->procedure->code.push_back({op, std::uint16_t(n), a, b, c});
    return m_body->procedure->code.size() - 1;
}

/// Fills in a jump's target, wherever the operation has it.
void Compiler::patch(std::size_t instruction, std::uint32_t target)
{
    Instruction& code = m_body->procedure->code[instruction];
    switch (code.op) {
    case Op::Jump:
    case Op::Loop:
        code.a = target;
        break;
    case Op::JumpIf:
    case Op::JumpUnless:
        code.b = target;
        break;
    default:
        code.c = target;
        break;
    }
}

void Compiler::patchAll(const Jumps& jumps, std::uint32_t target)
{
    for (const std::size_t jump : jumps)
        patch(jump, target);
}

std::size_t Compiler::mark(Position position)
{
    m_body->procedure->marks.push_back({here(), here(), m_body->temporaries, position});
    return m_body->procedure->marks.size() - 1;
}

void Compiler::setResume(std::size_t markNumber, std::uint32_t target)
{
    m_body->procedure->marks[markNumber].resume = target;
}

Operand Compiler::newTemporaries(std::uint32_t count)
{
    const std::uint32_t first = m_body->temporaries;
    m_body->temporaries += count;
    if (m_body->temporaries > MostTemporaries)
        throw CompileError(SyntaxError::OutOfMemory, m_body->procedure->marks.empty()
                                                         ? Position{1, 0}
                                                         : m_body->procedure->marks.back().position);
    Procedure& procedure = *m_body->procedure;
    procedure.frameSize = std::max(procedure.frameSize, m_body->temporaries);
    return operand(Bank::Local, first);
}

Operand Compiler::newTemporary()
{
    return newTemporaries(1);
}

bool Compiler::isTemporary(Operand op) const noexcept
{
    return op != NoOperand && bankOf(op) == Bank::Local && placeOf(op) >= m_body->procedure->localCount;
}

Operand Compiler::constant(const values::Variant& value)
{
    auto& constants = m_body->procedure->constants;
    if (value.is(values::Kind::Integer)) { // small numbers are shared; others seldom repeat
        for (std::size_t place = 0; place < std::min<std::size_t>(constants.size(), 64); ++place) {
            if (constants[place].is(values::Kind::Integer) && constants[place].value().integer() == value.integer())
                return operand(Bank::Constant, std::uint32_t(place));
        }
    }
    constants.emplace_back(value);
    return operand(Bank::Constant, std::uint32_t(constants.size() - 1));
}

std::uint32_t Compiler::nameNumber(values::Name name)
{
    m_body->procedure->names.push_back(name);
    return std::uint32_t(m_body->procedure->names.size() - 1);
}

std::uint32_t Compiler::site(values::Name name)
{
    m_body->procedure->sites.push_back({.name = name});
    return std::uint32_t(m_body->procedure->sites.size() - 1);
}

std::uint32_t Compiler::callee(const Procedure* procedure)
{
    m_body->procedure->callees.push_back(procedure);
    return std::uint32_t(m_body->procedure->callees.size() - 1);
}

void Compiler::clearTemporary(Operand op)
{
    if (isTemporary(op))
        emit(Op::Clear, op, 0, 0, 1);
}

} // namespace zan::script
