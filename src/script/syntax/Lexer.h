#pragma once

#include "script/syntax/Token.h"

#include <QStringView>

#include <vector>

namespace zan::script {

/// Splits a script's text into tokens. CR, LF and CR LF each end one line. Never fails: what is no token becomes a
/// Bad token, so that errors come out in the order of the text.
class Lexer
{
public:
    /// The text must stay alive while the lexer works.
    explicit Lexer(QStringView text)
        : m_text(text)
    {}

    /// All tokens, the last one EndOfText.
    std::vector<Token> run();

private:
    char16_t at(qsizetype place) const noexcept { return place < m_text.size() ? m_text[place].unicode() : u'\0'; }
    char16_t here() const noexcept { return at(m_place); }
    bool atEnd() const noexcept { return m_place >= m_text.size(); }
    Position positionAt(qsizetype place) const noexcept { return {m_line, int(place - m_lineStart)}; }

    void skipBlanks();
    bool skipContinuation();
    void skipComment();
    void takeLineBreak();
    void word();
    void bracketedName();
    void number();
    /// The start of a number that is not decimal: `&h`, `&o`, or `&` alone before octal digits.
    struct Prefix
    {
        int base = 0; ///< 0: there is no such number here
        int length = 0;
    };
    Prefix numberPrefix() const;
    bool afterOperand() const noexcept;
    void basedNumber(Prefix prefix);
    void text();
    void date();
    void punctuation();
    qsizetype offendingPlace() const noexcept;
    Token& push(TokenKind kind, qsizetype start);
    void bad(SyntaxError error, qsizetype place);
    void take(TokenKind kind, qsizetype length);

    QStringView m_text;
    qsizetype m_place = 0;
    qsizetype m_lineStart = 0;
    int m_line = 1;
    bool m_spaceBefore = false;
    std::vector<Token> m_tokens;
};

} // namespace zan::script
