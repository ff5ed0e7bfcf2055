#include "script/compiler/Compiler.h"

#include <atomic>

namespace zan::script {

namespace {

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

} // namespace zan::script
