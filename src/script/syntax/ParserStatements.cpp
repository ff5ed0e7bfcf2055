#include "script/syntax/Parser.h"

#include <algorithm>

namespace zan::script {

Statement* Parser::newStatement(StatementKind kind)
{
    Statement& node = m_tree.statementNodes.emplace_back();
    node.kind = kind;
    node.position = token().position;
    return &node;
}

/// Statements up to the word that ends the block, or the end of the text; who asked looks at which it was. On the
/// open line, that of an ElseIf, the block's `End If` may follow a statement.
void Parser::statements(Block& block, Enclosing enclosing, int openLine)
{
    while (true) {
        skipLineEnds();
        if (at(TokenKind::EndOfText) || endsBlock(enclosing))
            return;
        statement(block, enclosing);
        afterStatement(enclosing, openLine);
    }
}

bool Parser::endsBlock(Enclosing enclosing) const
{
    switch (enclosing) {
    case Enclosing::Procedure:
    case Enclosing::With:
    case Enclosing::Else:
        return at(TokenKind::End);
    case Enclosing::If:
        return at(TokenKind::End) || at(TokenKind::Else) || at(TokenKind::ElseIf);
    case Enclosing::Select:
        return at(TokenKind::End) || at(TokenKind::Case);
    case Enclosing::For:
        return at(TokenKind::Next);
    case Enclosing::Do:
        return at(TokenKind::Loop);
    case Enclosing::While:
        return at(TokenKind::Wend);
    default:
        return false;
    }
}

// COMPAT: `End` needs no separator before it ("Sub f() x = 1 End Sub"), but `End If` after the statements of a Then
// part, and `End Select`, must stand first on their line. `ElseIf c Then x = 1 End If` is legal again.
void Parser::afterStatement(Enclosing enclosing, int openLine)
{
    if (atStatementEnd())
        return;
    if (!at(TokenKind::End))
        fail(SyntaxError::ExpectedEndOfStatement);
    if (enclosing == Enclosing::Select || (enclosing == Enclosing::If && token().position.line != openLine))
        fail(SyntaxError::MustBeFirst);
}

void Parser::statement(Block& block, Enclosing enclosing)
{
    const Nesting nesting(*this);
    if (keywordStatement(block, enclosing) || blockStatement(block, enclosing) || procedureInBlock(enclosing))
        return;
    switch (token().kind) {
    case TokenKind::Identifier:
    case TokenKind::Me:
    case TokenKind::Dot:
        return expressionStatement(block);
    case TokenKind::Loop:
        fail(SyntaxError::LoopWithoutDo);
    case TokenKind::Next:
        fail(SyntaxError::UnexpectedNext);
    case TokenKind::End:
    case TokenKind::Else:
    case TokenKind::ElseIf:
    case TokenKind::Case:
    case TokenKind::Wend:
        fail(SyntaxError::ExpectedStatement);
    default:
        fail(SyntaxError::Syntax);
    }
}

bool Parser::keywordStatement(Block& block, Enclosing)
{
    switch (token().kind) {
    case TokenKind::Dim:
        return dimStatement(block), true;
    case TokenKind::Const:
        return constStatement(block, nullptr, true), true;
    case TokenKind::ReDim:
        return redimStatement(block), true;
    case TokenKind::Erase:
        return eraseStatement(block), true;
    case TokenKind::Call:
        return callStatement(block), true;
    case TokenKind::Set:
        return setStatement(block), true;
    case TokenKind::Exit:
        return exitStatement(block), true;
    case TokenKind::On:
        return onErrorStatement(block), true;
    case TokenKind::Option:
        return optionStatement(), true;
    case TokenKind::Stop: // there is no debugger to stop in
        advance();
        return true;
    default:
        return false;
    }
}

bool Parser::blockStatement(Block& block, Enclosing enclosing)
{
    switch (token().kind) {
    case TokenKind::If:
        return ifStatement(block, enclosing), true;
    case TokenKind::Select:
        return selectStatement(block), true;
    case TokenKind::For:
        return forStatement(block), true;
    case TokenKind::Do:
        return doStatement(block), true;
    case TokenKind::While:
        return whileStatement(block), true;
    case TokenKind::With:
        return withStatement(block), true;
    default:
        return false;
    }
}

/// A procedure may stand inside a block of the statements outside procedures, where it is declared as anywhere else.
bool Parser::procedureInBlock(Enclosing enclosing)
{
    const bool hasAccess = at(TokenKind::Public) || at(TokenKind::Private);
    const TokenKind kind = hasAccess ? peek().kind : token().kind;
    if ((kind != TokenKind::Sub && kind != TokenKind::Function) || m_procedure || enclosing == Enclosing::InlineIf)
        return false;
    if (hasAccess)
        advance();
    m_tree.procedures.push_back(procedure(true, false, false));
    return true;
}

/// An assignment, or a call written without the word Call.
void Parser::expressionStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Call);
    Expression* target = at(TokenKind::Dot) ? word(nullptr) : primary();
    while (true) {
        // Inside With, a blank before the dot starts an argument: `Show .Name`.
        if (at(TokenKind::Dot) && !(m_withDepth > 0 && token().spaceBefore)) {
            target = word(target);
            continue;
        }
        if (!at(TokenKind::OpenParenthesis))
            break;
        const std::size_t parenthesis = m_place;
        Expression* index = newNode(ExpressionKind::Index);
        index->position = target->position;
        index->left = target;
        index->arguments = parenthesisedArguments();
        if (at(TokenKind::Equal) || at(TokenKind::OpenParenthesis) ||
            (at(TokenKind::Dot) && !(m_withDepth > 0 && token().spaceBefore))) {
            target = finish(index);
            continue;
        }
        if (atStatementEnd() || at(TokenKind::End) || at(TokenKind::Else)) {
            if (index->arguments.size() > 1)
                fail(SyntaxError::CannotUseParentheses);
            if (index->arguments.size() == 1)
                index->arguments[0] = parenthesise(index->arguments[0]);
            node->target = finish(index);
            block.push_back(node);
            return;
        }
        // The parenthesis opens the first argument: S (2) * 8, 7
        m_place = parenthesis;
        break;
    }
    if (at(TokenKind::Equal)) {
        if (target->kind == ExpressionKind::Me)
            fail(SyntaxError::InvalidMe);
        advance();
        node->kind = StatementKind::Assign;
        node->target = target;
        node->value = expression();
        block.push_back(node);
        return;
    }
    if (!atStatementEnd() && !at(TokenKind::End) && !at(TokenKind::Else)) {
        Expression* call = newNode(ExpressionKind::Index);
        call->position = target->position;
        call->left = target;
        call->arguments = argumentList();
        target = finish(call);
    }
    node->target = target;
    block.push_back(node);
}

Expression* Parser::parenthesise(Expression* inner)
{
    Expression* node = newNode(ExpressionKind::Parenthesised);
    node->left = inner;
    return finish(node);
}

void Parser::callStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Call);
    advance();
    if (!at(TokenKind::Identifier) && !at(TokenKind::Me) && !at(TokenKind::Dot) && !at(TokenKind::OpenParenthesis))
        fail(SyntaxError::ExpectedIdentifier);
    node->flag = true;
    node->target = postfix(primary());
    block.push_back(node);
}

Expression* Parser::assignable(SyntaxError otherwise)
{
    if (!at(TokenKind::Identifier) && !at(TokenKind::Me) && !at(TokenKind::Dot))
        fail(otherwise);
    Expression* target = postfix(primary());
    if (target->kind == ExpressionKind::Me)
        fail(SyntaxError::InvalidMe);
    return target;
}

void Parser::setStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::SetAssign);
    advance();
    node->target = assignable(SyntaxError::ExpectedIdentifier);
    expect(TokenKind::Equal, SyntaxError::ExpectedEquals);
    node->value = expression();
    block.push_back(node);
}

void Parser::dimStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Dim);
    advance();
    do {
        node->declarators.push_back(declarator());
        const Declarator& added = node->declarators.back();
        declare(added.name, added.position, Declared::Variable);
    } while (accept(TokenKind::Comma));
    block.push_back(node);
}

/// One or several constants; those of a class go to the list given, all others are statements.
void Parser::constStatement(Block& block, std::vector<ConstantNode>* constants, bool isPublic)
{
    advance();
    do {
        Statement* node = newStatement(StatementKind::Const);
        const Position position = token().position;
        node->name = identifier();
        declare(node->name, position, Declared::Constant);
        expect(TokenKind::Equal, SyntaxError::ExpectedEquals);
        Expression* value = newNode(ExpressionKind::Literal);
        value->value = constantExpression();
        node->value = value;
        if (constants)
            constants->push_back({node->name, value->value, isPublic});
        else
            block.push_back(node);
    } while (accept(TokenKind::Comma));
}

void Parser::redimStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::ReDim);
    advance();
    node->flag = accept(TokenKind::Preserve);
    do {
        Expression* item = assignable(SyntaxError::ExpectedIdentifier);
        if (item->kind != ExpressionKind::Index || item->arguments.empty())
            fail(SyntaxError::ExpectedOpenParenthesis);
        node->items.push_back(item);
    } while (accept(TokenKind::Comma));
    block.push_back(node);
}

void Parser::eraseStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Erase);
    advance();
    do {
        node->items.push_back(assignable(SyntaxError::ExpectedIdentifier));
    } while (accept(TokenKind::Comma));
    block.push_back(node);
}

void Parser::exitStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Exit);
    advance();
    const auto inside = [this](std::initializer_list<ProcedureKind> kinds) {
        return m_procedure && std::find(kinds.begin(), kinds.end(), m_procedure->kind) != kinds.end();
    };
    bool valid = false;
    if (at(TokenKind::Do)) {
        node->exit = ExitKind::Do;
        valid = m_doDepth > 0;
    } else if (at(TokenKind::For)) {
        node->exit = ExitKind::For;
        valid = m_forDepth > 0;
    } else if (at(TokenKind::Sub)) {
        node->exit = ExitKind::Sub;
        valid = inside({ProcedureKind::Sub});
    } else if (at(TokenKind::Function)) {
        node->exit = ExitKind::Function;
        valid = inside({ProcedureKind::Function});
    } else if (atWord("property")) {
        node->exit = ExitKind::Property;
        valid = inside({ProcedureKind::PropertyGet, ProcedureKind::PropertyLet, ProcedureKind::PropertySet});
    }
    if (!valid)
        fail(SyntaxError::InvalidExit);
    advance();
    block.push_back(node);
}

void Parser::onErrorStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::OnErrorResumeNext);
    advance();
    if (!atWord("error"))
        fail(SyntaxError::Syntax);
    advance();
    if (accept(TokenKind::Resume)) {
        expect(TokenKind::Next, SyntaxError::ExpectedNext);
    } else if (accept(TokenKind::GoTo)) {
        node->kind = StatementKind::OnErrorGoToZero;
        if (!at(TokenKind::Number) || !token().value.is(values::Kind::Integer) || token().value.integer() != 0)
            fail(SyntaxError::Syntax);
        advance();
    } else {
        fail(SyntaxError::Syntax);
    }
    block.push_back(node);
}

void Parser::optionStatement()
{
    if (m_anyStatement || m_depth > 1 || m_procedure)
        fail(SyntaxError::Syntax);
    advance();
    if (!atWord("explicit"))
        fail(SyntaxError::Syntax);
    advance();
    m_tree.optionExplicit = true;
}

} // namespace zan::script
