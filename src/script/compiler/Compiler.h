#pragma once

#include "script/compiler/Bytecode.h"
#include "script/compiler/Symbols.h"
#include "script/syntax/Ast.h"

#include <functional>
#include <memory>
#include <set>

namespace zan::script {

/// What the compiler asks its engine.
struct CompileContext
{
    Symbols& symbols;
    /// Number of the named item whose members are global and that has a member of this name, or -1.
    std::function<int(values::Name)> hostItemWith;
    /// The text runs inside a procedure, and its names mean what they mean there.
    bool dynamicScope = false;
};

/// Turns a tree into bytecode. Names are resolved here where they can be; the others at run time.
class Compiler
{
public:
    Compiler(const SyntaxTree& tree, CompileContext context);
    /// Raises CompileError for a text beyond the engine's limits.
    std::shared_ptr<const Unit> compile();

private:
    struct Local
    {
        std::uint32_t slot = 0;
        bool maybeReference = false;
        bool isConstant = false;
        values::Variant value;
    };
    enum class Where : std::uint8_t {
        Local,
        Constant,
        Global,
        GlobalConstant,
        HostItem,
        Procedure,
        Class,
        Field,
        ClassMember,
        Builtin,
        BuiltinConstant,
        RunText,
        HostMember,
        Unknown,
    };
    struct Resolved
    {
        Where where = Where::Unknown;
        Operand place = NoOperand; ///< operand of a variable or constant
        bool maybeReference = false;
        std::uint32_t number = 0; ///< symbol, built-in, run mode
        const ClassMember* member = nullptr;
        bool isVariable() const noexcept
        {
            return where == Where::Local || where == Where::Global || where == Where::Field;
        }
    };
    /// Jumps whose target is not known yet.
    using Jumps = std::vector<std::size_t>;
    struct LoopScope
    {
        ExitKind kind;
        std::uint32_t temporaries;
        Jumps exits;
    };
    /// State of the procedure being compiled.
    struct Body
    {
        Procedure* procedure = nullptr;
        std::unordered_map<values::Name, Local> locals;
        std::uint32_t temporaries = 0; ///< next free temporary
        std::vector<LoopScope> loops;
        std::vector<Operand> withObjects;
        Jumps returns;
        bool pathsUsed = false;
    };

    // Procedures (Compiler.cpp)
    void compileClass(const ClassNode& node, ClassInfo& info);
    std::unique_ptr<Procedure> newProcedure(const ProcedureNode& node, const ClassInfo* owner);
    void compileProcedure(const ProcedureNode& node, Procedure& procedure, const ClassInfo* owner);
    void compileMain();
    void finishBody();

    // What a text declares for all (CompilerDeclarations.cpp)
    void declareGlobals();
    void declareBlockGlobals(const Block& block);
    void addDeclaration(Declaration::Kind kind, values::Name name, Declaration declaration);
    void declareClass(const ClassNode& node, ClassInfo& info);

    // What a name stands for in a procedure (CompilerNames.cpp)
    void collectLocals(const Block& block, std::vector<const Statement*>& arrays);
    void collectAssigned(const Block& block, std::vector<values::Name>& names) const;
    static void collectAssignedName(const Expression* target, std::vector<values::Name>& names);
    void bindAssigned(const Block& block);
    void emitArrays(const std::vector<const Statement*>& arrays);
    std::uint32_t addLocal(values::Name name, bool maybeReference);
    Resolved resolve(values::Name name) const;
    Resolved resolveGlobal(values::Name name) const;
    bool isOwnName(values::Name name) const;

    // Instructions and their operands (CompilerCode.cpp)
    std::size_t emit(Op op, Operand a = 0, Operand b = 0, Operand c = 0, std::size_t n = 0);
    std::uint32_t here() const noexcept { return std::uint32_t(m_body->procedure->code.size()); }
    void patch(std::size_t instruction, std::uint32_t target);
    void patchAll(const Jumps& jumps, std::uint32_t target);
    std::size_t mark(Position position);
    void setResume(std::size_t markNumber, std::uint32_t target);
    Operand newTemporary();
    Operand newTemporaries(std::uint32_t count);
    void release(std::uint32_t mark) noexcept { m_body->temporaries = mark; }
    bool isTemporary(Operand op) const noexcept;
    Operand constant(const values::Variant& value);
    std::uint32_t nameNumber(values::Name name);
    std::uint32_t site(values::Name name);
    std::uint32_t callee(const Procedure* procedure);
    void clearTemporary(Operand op);

    // Expressions (CompilerExpressions.cpp)
    Operand value(const Expression& node, Operand wanted = NoOperand);
    void valueInto(const Expression& node, Operand temporary);
    Operand binaryValue(const Expression& node, Operand wanted);
    Operand binaryStep(const Expression& node, Operand left, Operand wanted, std::uint32_t mark);
    Operand concatValue(const Expression& node, Operand wanted);
    static const Expression* concatOperands(const Expression& node, std::vector<const Expression*>& operands);
    Operand unaryValue(const Expression& node, Operand wanted);
    Operand nameValue(const Expression& node, Operand wanted);
    bool isImpure(const Expression& node) const;
    static bool givesPlainValue(const Expression& node) noexcept;
    Operand destination(Operand wanted, std::uint32_t mark);
    Operand stable(const Expression& node, const Expression& later);
    std::uint16_t literalFlags(Operator op, const Expression& left, const Expression& right) const;
    std::size_t jumpUnless(const Expression& condition);
    std::size_t jumpIf(const Expression& condition);
    Operand withObject() const;

    // Calls (CompilerCalls.cpp)
    Operand indexValue(const Expression& node, Operand wanted, bool statement);
    Operand callName(const Expression& node, const Resolved& target, Operand wanted, bool statement);
    Operand callBuiltin(const Expression& node, const Resolved& target, Operand wanted);
    Operand memberValue(const Expression& node, Operand wanted, bool statement);
    Operand callMember(const Expression& object, values::Name name, const std::vector<Expression*>& arguments,
                       Operand wanted, bool statement);
    Operand callOwn(const ClassMember& member, const std::vector<Expression*>& arguments, Operand wanted);
    Operand indexVariable(Operand variable, const std::vector<Expression*>& arguments, Operand wanted);
    Operand callArguments(const std::vector<Expression*>& arguments, bool byReference);
    void argument(const Expression& node, Operand slot, bool byReference);
    void elementArgument(const Expression& node, Operand variable, Operand slot);
    Operand resultOperand(Operand wanted, std::uint32_t mark, bool discard);
    Operand reference(const Expression& node);
    void callStatement(const Statement& node);

    // Assignments (CompilerAssignments.cpp)
    void assign(const Statement& node);
    void assignName(const Expression& target, const Expression& source, bool set);
    bool appendTo(const Expression& target, const Resolved& place, const Expression& source);
    void assignMember(const Expression& target, const Expression& source, bool set);
    void assignIndex(const Expression& target, const Expression& source, bool set);
    void assignOwnMember(const ClassMember& member, const std::vector<Expression*>& arguments,
                         const Expression& source, bool set);
    void putMember(Operand object, values::Name name, const Expression& source, bool set);
    void putMemberIndexed(const Expression& object, values::Name name, const std::vector<Expression*>& arguments,
                          const Expression& source, bool set);
    void putIndex(Operand variable, const std::vector<Expression*>& arguments, const Expression& source, bool set);
    void store(const Resolved& place, values::Name name, Operand source, bool set);
    void raiseError(int number, values::Name name);
    const ClassMember* ownMember(const Expression& target) const;

    // Statements (CompilerStatements.cpp)
    void block(const Block& statements);
    void statement(const Statement& node);
    void ifStatement(const Statement& node, std::size_t markNumber);
    void selectStatement(const Statement& node, std::size_t markNumber);
    void forStatement(const Statement& node, std::size_t markNumber);
    void forEachStatement(const Statement& node, std::size_t markNumber);
    void doStatement(const Statement& node, std::size_t markNumber);
    void withStatement(const Statement& node);
    void exitStatement(const Statement& node);
    void dimStatement(const Statement& node);
    void redimStatement(const Statement& node);
    void eraseStatement(const Statement& node);
    Operand loopVariable(const Expression& target);

    const SyntaxTree& m_tree;
    CompileContext m_context;
    std::shared_ptr<Unit> m_unit;
    std::unordered_map<values::Name, Declaration> m_declared; ///< by folded name
    std::set<std::uint32_t> m_redeclaredArrays;
    ClassInfo* m_class = nullptr;
    Body* m_body = nullptr;
    std::uint32_t m_symbolsBefore = 0;
};

} // namespace zan::script
