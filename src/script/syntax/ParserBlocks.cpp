#include "script/syntax/Parser.h"

#include <utility>

namespace zan::script {

void Parser::ifStatement(Block& block, Enclosing)
{
    Statement* node = newStatement(StatementKind::If);
    block.push_back(node);
    Branch& first = node->branches.emplace_back();
    first.position = token().position;
    advance();
    first.condition = expression();
    expect(TokenKind::Then, SyntaxError::ExpectedThen);
    // Anything but a comment after Then makes it an If of one line, even a colon with nothing behind it.
    if (atLineEnd())
        blockIf(*node);
    else
        inlineIf(*node);
}

void Parser::blockIf(Statement& node)
{
    statements(node.branches.back().body, Enclosing::If);
    while (at(TokenKind::ElseIf)) {
        Branch& branch = node.branches.emplace_back();
        branch.position = token().position;
        advance();
        branch.condition = expression();
        const int line = token().position.line;
        expect(TokenKind::Then, SyntaxError::ExpectedThen);
        statements(node.branches.back().body, Enclosing::If, line);
    }
    if (accept(TokenKind::Else)) {
        node.hasElse = true;
        if (at(TokenKind::End))
            fail(SyntaxError::ExpectedStatement);
        statements(node.body, Enclosing::Else);
    }
    expect(TokenKind::End, SyntaxError::ExpectedEnd);
    expect(TokenKind::If, SyntaxError::ExpectedIf);
}

/// `If c Then a : b Else d`, all on one line, with or without an `End If`.
void Parser::inlineIf(Statement& node)
{
    inlineBody(node.branches.back().body);
    while (at(TokenKind::ElseIf)) {
        Branch& branch = node.branches.emplace_back();
        branch.position = token().position;
        advance();
        branch.condition = expression();
        expect(TokenKind::Then, SyntaxError::ExpectedThen);
        inlineBody(node.branches.back().body);
    }
    if (accept(TokenKind::Else)) {
        node.hasElse = true;
        inlineBody(node.body);
    }
    if (at(TokenKind::End) && peek().kind == TokenKind::If) {
        advance();
        advance();
    }
}

void Parser::inlineBody(Block& block)
{
    while (true) {
        while (at(TokenKind::Colon))
            advance();
        if (atLineEnd() || at(TokenKind::Else) || at(TokenKind::ElseIf) || at(TokenKind::End))
            return;
        statement(block, Enclosing::InlineIf);
        if (at(TokenKind::Else) || at(TokenKind::ElseIf))
            return;
        if (!atStatementEnd() && !at(TokenKind::End))
            fail(SyntaxError::ExpectedEndOfStatement);
    }
}

void Parser::selectStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Select);
    block.push_back(node);
    advance();
    expect(TokenKind::Case, SyntaxError::ExpectedCase);
    node->target = expression();
    expectStatementEnd();
    skipLineEnds();
    while (at(TokenKind::Case)) {
        const Position position = token().position;
        advance();
        if (accept(TokenKind::Else)) {
            node->hasElse = true;
            statements(node->body, Enclosing::Select);
            break; // nothing may follow Case Else
        }
        Branch& branch = node->branches.emplace_back();
        branch.position = position;
        do {
            if (atStatementEnd())
                fail(SyntaxError::ExpectedExpression);
            branch.conditions.push_back(expression());
        } while (accept(TokenKind::Comma));
        statements(node->branches.back().body, Enclosing::Select);
    }
    expect(TokenKind::End, SyntaxError::ExpectedEnd);
    expect(TokenKind::Select, SyntaxError::ExpectedSelect);
}

void Parser::forStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::For);
    block.push_back(node);
    advance();
    if (accept(TokenKind::Each)) {
        forEachStatement(block, *node);
        return;
    }
    node->target = assignable(SyntaxError::ExpectedIdentifier);
    if (node->target->kind != ExpressionKind::Name)
        fail(SyntaxError::InvalidForVariable);
    expect(TokenKind::Equal, SyntaxError::ExpectedEquals);
    node->value = expression();
    expect(TokenKind::To, SyntaxError::ExpectedTo);
    node->limit = expression();
    if (atWord("step")) {
        advance();
        node->step = expression();
    }
    closeFor(*node);
}

void Parser::forEachStatement(Block&, Statement& node)
{
    node.kind = StatementKind::ForEach;
    node.target = assignable(SyntaxError::ExpectedIdentifier);
    if (node.target->kind != ExpressionKind::Name)
        fail(SyntaxError::InvalidForVariable);
    expect(TokenKind::In, SyntaxError::ExpectedIn);
    node.value = expression();
    closeFor(node);
}

void Parser::closeFor(Statement& node)
{
    expectStatementEnd();
    ++m_forDepth;
    statements(node.body, Enclosing::For);
    --m_forDepth;
    node.endPosition = token().position;
    expect(TokenKind::Next, SyntaxError::ExpectedNext);
}

void Parser::loopCondition(Statement& node)
{
    node.negated = at(TokenKind::Until);
    advance();
    node.value = expression();
}

void Parser::doStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Do);
    block.push_back(node);
    advance();
    if (at(TokenKind::While) || at(TokenKind::Until)) {
        loopCondition(*node);
        expectStatementEnd();
    } else {
        expectStatementEnd(SyntaxError::ExpectedWhileUntilOrEnd);
    }
    ++m_doDepth;
    statements(node->body, Enclosing::Do);
    --m_doDepth;
    node->endPosition = token().position;
    expect(TokenKind::Loop, SyntaxError::ExpectedLoop);
    if (at(TokenKind::While) || at(TokenKind::Until)) {
        if (node->value)
            fail(SyntaxError::ExpectedEndOfStatement);
        node->flag = true;
        loopCondition(*node);
    } else if (!atStatementEnd() && !at(TokenKind::End) && !at(TokenKind::Else)) {
        fail(SyntaxError::ExpectedWhileOrUntil);
    }
}

void Parser::whileStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::Do);
    block.push_back(node);
    loopCondition(*node);
    expectStatementEnd();
    // COMPAT: While is no loop for Exit Do.
    statements(node->body, Enclosing::While);
    node->endPosition = token().position;
    expect(TokenKind::Wend, SyntaxError::ExpectedWend);
}

void Parser::withStatement(Block& block)
{
    Statement* node = newStatement(StatementKind::With);
    block.push_back(node);
    advance();
    node->target = expression();
    expectStatementEnd();
    ++m_withDepth;
    statements(node->body, Enclosing::With);
    --m_withDepth;
    expect(TokenKind::End, SyntaxError::ExpectedEnd);
    expect(TokenKind::With, SyntaxError::ExpectedWith);
}

} // namespace zan::script
