#include "script/syntax/Operators.h"
#include "script/syntax/Parser.h"

#include "values/RuntimeError.h"

namespace zan::script {

namespace {

struct BinaryOperator
{
    TokenKind token;
    Operator op;
    int precedence; ///< higher binds tighter
};

constexpr int ComparisonPrecedence = 7;

constexpr BinaryOperator BinaryOperators[] = {
    {TokenKind::Imp, Operator::Imp, 1},
    {TokenKind::Eqv, Operator::Eqv, 2},
    {TokenKind::Xor, Operator::Xor, 3},
    {TokenKind::Or, Operator::Or, 4},
    {TokenKind::And, Operator::And, 5},
    {TokenKind::Equal, Operator::Equal, ComparisonPrecedence},
    {TokenKind::NotEqual, Operator::NotEqual, ComparisonPrecedence},
    {TokenKind::Less, Operator::Less, ComparisonPrecedence},
    {TokenKind::Greater, Operator::Greater, ComparisonPrecedence},
    {TokenKind::LessEqual, Operator::LessEqual, ComparisonPrecedence},
    {TokenKind::GreaterEqual, Operator::GreaterEqual, ComparisonPrecedence},
    {TokenKind::Is, Operator::Is, ComparisonPrecedence},
    {TokenKind::Ampersand, Operator::Concatenate, 8},
    {TokenKind::Plus, Operator::Add, 9},
    {TokenKind::Minus, Operator::Subtract, 9},
    {TokenKind::Mod, Operator::Modulo, 10},
    {TokenKind::Backslash, Operator::IntegerDivide, 11},
    {TokenKind::Star, Operator::Multiply, 12},
    {TokenKind::Slash, Operator::Divide, 12},
    {TokenKind::Caret, Operator::Power, 13},
};

const BinaryOperator* binaryOperator(TokenKind kind) noexcept
{
    for (const BinaryOperator& entry : BinaryOperators) {
        if (entry.token == kind)
            return &entry;
    }
    return nullptr;
}

} // namespace

Expression* Parser::newNode(ExpressionKind kind)
{
    Expression& node = m_tree.expressionNodes.emplace_back();
    node.kind = kind;
    node.position = token().position;
    return &node;
}

/// Works out the depth of a node whose children are in place, and refuses what is too deep.
Expression* Parser::finish(Expression* node) const
{
    int depth = 1;
    if (node->left)
        depth = node->left->depth + (node->kind == ExpressionKind::Binary ? 0 : 1);
    if (node->right)
        depth = std::max(depth, node->right->depth + 1);
    for (const Expression* argument : node->arguments)
        depth = std::max(depth, argument->depth + 1);
    if (depth > MaximumDepth)
        fail(SyntaxError::OutOfMemory);
    node->depth = std::uint16_t(depth);
    return node;
}

Expression* Parser::binary(Operator op, Position position, Expression* left, Expression* right)
{
    Expression* node = newNode(ExpressionKind::Binary);
    node->op = op;
    node->position = position;
    node->left = left;
    node->right = right;
    return finish(node);
}

/// Operators of the same precedence group from the left, `^` included.
Expression* Parser::expression(int minimum)
{
    const Nesting nesting(*this);
    Expression* left = operand();
    while (const BinaryOperator* found = binaryOperator(token().kind)) {
        if (found->precedence < minimum)
            break;
        const Position position = token().position;
        advance();
        left = binary(found->op, position, left, expression(found->precedence + 1));
    }
    return left;
}

Expression* Parser::unary(Operator op)
{
    Expression* node = newNode(ExpressionKind::Unary);
    node->op = op;
    advance();
    node->left = op == Operator::Not ? expression(ComparisonPrecedence) : operand();
    return finish(node);
}

// COMPAT: a sign binds tighter than `^`: -3^2 is 9.
Expression* Parser::operand()
{
    const Nesting nesting(*this);
    switch (token().kind) {
    case TokenKind::Not:
        return unary(Operator::Not);
    case TokenKind::Minus:
        return unary(Operator::Negate);
    case TokenKind::Plus:
        return unary(Operator::Plus);
    default:
        return postfix(primary());
    }
}

Expression* Parser::literal(values::Variant value, LiteralKind kind)
{
    Expression* node = newNode(ExpressionKind::Literal);
    node->value = std::move(value);
    node->literal = kind;
    advance();
    return node;
}

Expression* Parser::keywordValue(values::Variant value)
{
    return literal(std::move(value), LiteralKind::None);
}

Expression* Parser::primary()
{
    Expression* node = nullptr;
    switch (token().kind) {
    case TokenKind::Number:
        return literal(token().value, LiteralKind::Number);
    case TokenKind::Text:
        return literal(token().value, LiteralKind::Text);
    case TokenKind::Date:
        return keywordValue(token().value);
    case TokenKind::True:
        return keywordValue(values::Variant(true));
    case TokenKind::False:
        return keywordValue(values::Variant(false));
    case TokenKind::Empty:
        return keywordValue(values::Variant());
    case TokenKind::Null:
        return keywordValue(values::Variant::null());
    case TokenKind::Nothing:
        return keywordValue(values::Variant::nothing());
    case TokenKind::Identifier:
        node = newNode(ExpressionKind::Name);
        node->name = token().name;
        advance();
        return node;
    case TokenKind::Me:
        node = newNode(ExpressionKind::Me);
        advance();
        return node;
    case TokenKind::New:
        node = newNode(ExpressionKind::New);
        advance();
        node->name = identifier();
        return node;
    case TokenKind::Dot:
        return word(nullptr);
    case TokenKind::OpenParenthesis:
        node = newNode(ExpressionKind::Parenthesised);
        advance();
        node->left = expression();
        expect(TokenKind::CloseParenthesis, SyntaxError::ExpectedCloseParenthesis);
        return finish(node);
    default:
        fail(SyntaxError::Syntax);
    }
}

/// `.name` after an object, or after nothing inside With. Any keyword is a name here.
Expression* Parser::word(Expression* left)
{
    Expression* node = newNode(left ? ExpressionKind::Member : ExpressionKind::WithMember);
    advance();
    if (!token().isWord())
        fail(SyntaxError::ExpectedIdentifier);
    node->name = token().name;
    node->left = left;
    advance();
    return finish(node);
}

Expression* Parser::postfix(Expression* left)
{
    while (true) {
        if (at(TokenKind::Dot)) {
            left = word(left);
        } else if (at(TokenKind::OpenParenthesis) && left->kind != ExpressionKind::Literal) {
            Expression* node = newNode(ExpressionKind::Index);
            node->position = left->position;
            node->left = left;
            node->arguments = parenthesisedArguments();
            left = finish(node);
        } else {
            return left;
        }
    }
}

std::vector<Expression*> Parser::parenthesisedArguments()
{
    const Nesting nesting(*this);
    advance();
    if (accept(TokenKind::CloseParenthesis))
        return {};
    std::vector<Expression*> arguments = argumentList();
    expect(TokenKind::CloseParenthesis, SyntaxError::ExpectedCloseParenthesis);
    return arguments;
}

std::vector<Expression*> Parser::argumentList()
{
    std::vector<Expression*> arguments;
    while (true) {
        if (at(TokenKind::Comma) || at(TokenKind::CloseParenthesis) || atStatementEnd())
            arguments.push_back(newNode(ExpressionKind::Missing));
        else
            arguments.push_back(expression());
        if (!accept(TokenKind::Comma))
            return arguments;
    }
}

/// The value of a literal with or without a sign, as a Const needs it: `1 + 1` is an expression and no literal.
values::Variant Parser::constantExpression()
{
    const Expression* node = expression();
    try {
        return constantValue(*node);
    } catch (const values::RuntimeError&) {
        fail(SyntaxError::ExpectedLiteral);
    }
}

values::Variant Parser::constantValue(const Expression& node) const
{
    switch (node.kind) {
    case ExpressionKind::Literal:
        return node.value;
    case ExpressionKind::Parenthesised:
        return constantValue(*node.left);
    case ExpressionKind::Unary:
        return applyUnary(node.op, constantValue(*node.left));
    default:
        fail(SyntaxError::ExpectedLiteral);
    }
}

} // namespace zan::script
