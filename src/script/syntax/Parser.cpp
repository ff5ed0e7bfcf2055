#include "script/syntax/Parser.h"

#include <algorithm>
#include <utility>

namespace zan::script {

Parser::Nesting::Nesting(Parser& parser)
    : m_parser(parser)
{
    if (++m_parser.m_depth > MaximumDepth) {
        --m_parser.m_depth; // the destructor does not run when the constructor raises
        parser.fail(SyntaxError::OutOfMemory);
    }
}

SyntaxTree Parser::parseProgram()
{
    while (true) {
        skipLineEnds();
        if (at(TokenKind::EndOfText))
            break;
        if (declarationStatement()) {
            expectStatementEnd();
            m_anyStatement = true;
            continue;
        }
        statement(m_tree.statements, Enclosing::Program);
        afterStatement(Enclosing::Program);
        m_anyStatement = true;
    }
    return std::move(m_tree);
}

SyntaxTree Parser::parseExpressionText()
{
    skipLineEnds();
    m_tree.expression = expression();
    skipLineEnds();
    if (!at(TokenKind::EndOfText))
        fail(SyntaxError::ExpectedEndOfStatement);
    return std::move(m_tree);
}

const Token& Parser::peek(std::size_t ahead) const noexcept
{
    return m_tokens[std::min(m_place + ahead, m_tokens.size() - 1)];
}

bool Parser::atWord(const char* lowerCase) const
{
    return at(TokenKind::Identifier) && token().name.folded().text() == QLatin1String(lowerCase);
}

bool Parser::accept(TokenKind kind)
{
    if (!at(kind))
        return false;
    advance();
    return true;
}

void Parser::expect(TokenKind kind, SyntaxError otherwise)
{
    if (!accept(kind))
        fail(otherwise);
}

void Parser::fail(SyntaxError error) const
{
    // A piece of text that is no token at all is the better explanation.
    throw CompileError(at(TokenKind::Bad) ? token().error : error, token().position);
}

void Parser::fail(SyntaxError error, Position position) const
{
    throw CompileError(error, position);
}

bool Parser::atLineEnd() const noexcept
{
    return at(TokenKind::EndOfLine) || at(TokenKind::EndOfText);
}

bool Parser::atStatementEnd() const noexcept
{
    return atLineEnd() || at(TokenKind::Colon);
}

void Parser::skipLineEnds()
{
    while (at(TokenKind::EndOfLine) || at(TokenKind::Colon))
        advance();
}

values::Name Parser::identifier()
{
    if (!at(TokenKind::Identifier))
        fail(SyntaxError::ExpectedIdentifier);
    const values::Name name = token().name;
    advance();
    return name;
}

void Parser::expectStatementEnd(SyntaxError otherwise)
{
    if (!atStatementEnd())
        fail(otherwise);
}

} // namespace zan::script
