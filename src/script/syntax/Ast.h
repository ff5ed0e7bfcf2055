#pragma once

#include "script/syntax/CompileError.h"
#include "values/Name.h"
#include "values/Variant.h"

#include <deque>
#include <vector>

namespace zan::script {

// The tree of one script text. All nodes lie in the SyntaxTree and point at each other freely, so that freeing a
// tree never recurses however deep the text nests.

enum class Operator : std::uint8_t {
    Imp,
    Eqv,
    Xor,
    Or,
    And,
    Not,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    Is,
    Concatenate,
    Add,
    Subtract,
    Modulo,
    IntegerDivide,
    Multiply,
    Divide,
    Power,
    Negate,
    Plus,
};

enum class ExpressionKind : std::uint8_t {
    Literal,
    Name,       ///< name
    Member,     ///< left.name
    WithMember, ///< .name
    Index,      ///< left(arguments): an index or a call
    Me,
    New, ///< New name
    Unary,
    Binary,
    Parenthesised, ///< (left): passed by value
    Missing,       ///< an argument left out
};

enum class LiteralKind : std::uint8_t { None, Text, Number };

struct Expression
{
    ExpressionKind kind = ExpressionKind::Literal;
    Operator op = Operator::Add;
    LiteralKind literal = LiteralKind::None;
    std::uint16_t depth = 1; ///< how deep a walk over the node recurses; the left side of an operator is no level
    Position position;
    values::Name name;
    values::Variant value;
    Expression* left = nullptr;
    Expression* right = nullptr;
    std::vector<Expression*> arguments;
};

enum class StatementKind : std::uint8_t {
    Dim,
    ReDim,
    Erase,
    Const,
    Assign,
    SetAssign,
    Call,
    If,
    Select,
    For,
    ForEach,
    Do,
    With,
    Exit,
    OnErrorResumeNext,
    OnErrorGoToZero,
    Nothing,
};

enum class ExitKind : std::uint8_t { Do, For, Sub, Function, Property };

/// One variable of a Dim or a field declaration.
struct Declarator
{
    values::Name name;
    Position position;
    bool isArray = false;
    bool isPublic = true;
    std::vector<std::int32_t> upperBounds; ///< empty for `a()`
};

struct Statement;
using Block = std::vector<Statement*>;

/// One arm of an If or a Select Case.
struct Branch
{
    Position position;
    Expression* condition = nullptr;     ///< of an If arm
    std::vector<Expression*> conditions; ///< of a Case arm
    Block body;
};

struct Statement
{
    StatementKind kind = StatementKind::Nothing;
    bool flag = false;    ///< ReDim: Preserve; Do: condition after the body; Call: was written with the word Call
    bool negated = false; ///< Do: Until
    ExitKind exit = ExitKind::Do;
    Position position;
    Position endPosition;         ///< of Next, Loop, Wend
    values::Name name;            ///< Const
    Expression* target = nullptr; ///< assigned variable, call, loop variable, With object, Select value
    Expression* value = nullptr;  ///< assigned value, loop start, collection, loop condition
    Expression* limit = nullptr;
    Expression* step = nullptr;
    std::vector<Expression*> items; ///< ReDim: Index expressions; Erase: names
    std::vector<Declarator> declarators;
    std::vector<Branch> branches;
    Block body; ///< loop body; Else arm
    bool hasElse = false;
};

enum class ProcedureKind : std::uint8_t { Sub, Function, PropertyGet, PropertyLet, PropertySet };

struct Parameter
{
    values::Name name;
    Position position;
    bool byValue = false;
};

struct ProcedureNode
{
    ProcedureKind kind = ProcedureKind::Sub;
    bool isPublic = true;
    bool isDefault = false;
    values::Name name;
    Position position;
    Position endPosition;
    std::vector<Parameter> parameters;
    Block body;
};

/// A named constant.
struct ConstantNode
{
    values::Name name;
    values::Variant value;
    bool isPublic = true;
};

struct ClassNode
{
    values::Name name;
    Position position;
    std::vector<Declarator> fields;
    std::vector<ConstantNode> constants;
    std::vector<ProcedureNode*> procedures;
};

struct SyntaxTree
{
    bool optionExplicit = false;
    Block statements;
    std::vector<ProcedureNode*> procedures;
    std::vector<ClassNode*> classes;
    Expression* expression = nullptr; ///< of a text that is one expression

    std::deque<Expression> expressionNodes;
    std::deque<Statement> statementNodes;
    std::deque<ProcedureNode> procedureNodes;
    std::deque<ClassNode> classNodes;
};

} // namespace zan::script
