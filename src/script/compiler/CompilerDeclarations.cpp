#include "script/compiler/Compiler.h"

namespace zan::script {

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

} // namespace zan::script
