#include "script/syntax/Lexer.h"

#include "values/Convert.h"

#include <QLocale>

#include <cmath>
#include <limits>
#include <unordered_map>

namespace zan::script {

namespace {

constexpr qsizetype LongestIdentifier = 255;
constexpr qsizetype LongestKeyword = 8;

bool isLetter(char16_t c) noexcept
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isDigit(char16_t c) noexcept
{
    return c >= u'0' && c <= u'9';
}

bool isWordCharacter(char16_t c) noexcept
{
    return isLetter(c) || isDigit(c) || c == u'_';
}

bool isBlank(char16_t c) noexcept
{
    return c == u' ' || c == u'\t' || c == u'\v' || c == u'\f' || c == u'\u00a0';
}

bool isLineBreak(char16_t c) noexcept
{
    return c == u'\r' || c == u'\n';
}

int digitValue(char16_t c) noexcept
{
    if (isDigit(c))
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return 99;
}

using KeywordTable = std::unordered_map<values::Name, TokenKind>;

const KeywordTable& keywords()
{
    using enum TokenKind;
    static const KeywordTable table = [] {
        constexpr std::pair<const char*, TokenKind> Words[] = {
            {"and", And},
            {"byref", ByRef},
            {"byval", ByVal},
            {"call", Call},
            {"case", Case},
            {"class", Class},
            {"const", Const},
            {"dim", Dim},
            {"do", Do},
            {"each", Each},
            {"else", Else},
            {"elseif", ElseIf},
            {"empty", Empty},
            {"end", End},
            {"eqv", Eqv},
            {"erase", Erase},
            {"exit", Exit},
            {"false", False},
            {"for", For},
            {"function", Function},
            {"get", Get},
            {"goto", GoTo},
            {"if", If},
            {"imp", Imp},
            {"in", In},
            {"is", Is},
            {"let", Let},
            {"loop", Loop},
            {"me", Me},
            {"mod", Mod},
            {"new", New},
            {"next", Next},
            {"not", Not},
            {"nothing", Nothing},
            {"null", Null},
            {"on", On},
            {"option", Option},
            {"or", Or},
            {"preserve", Preserve},
            {"private", Private},
            {"public", Public},
            {"redim", ReDim},
            {"resume", Resume},
            {"select", Select},
            {"set", Set},
            {"stop", Stop},
            {"sub", Sub},
            {"then", Then},
            {"to", To},
            {"true", True},
            {"until", Until},
            {"wend", Wend},
            {"while", While},
            {"with", With},
            {"xor", Xor},
        };
        KeywordTable result;
        for (const auto& [word, kind] : Words)
            result.emplace(values::Name(word), kind);
        return result;
    }();
    return table;
}

/// A date literal holds a digit: a number or an empty text is none.
bool hasDateShape(QStringView text) noexcept
{
    bool digit = false;
    bool separator = false;
    for (const QChar c : text) {
        digit = digit || isDigit(c.unicode());
        separator = separator || c == u'/' || c == u'-' || c == u':' || isLetter(c.unicode());
    }
    return digit && separator;
}

} // namespace

std::vector<Token> Lexer::run()
{
    if (here() == u'\ufeff') // a byte order mark that a file brought along
        m_lineStart = ++m_place;
    while (true) {
        skipBlanks();
        const char16_t c = here();
        if (atEnd())
            break;
        if (isLineBreak(c))
            takeLineBreak();
        else if (c == u'\'')
            skipComment();
        else if (isLetter(c))
            word();
        else if (c == u'[')
            bracketedName();
        else if (isDigit(c) || (c == u'.' && isDigit(at(m_place + 1))))
            number();
        else if (const Prefix prefix = c == u'&' ? numberPrefix() : Prefix(); prefix.base != 0)
            basedNumber(prefix);
        else if (c == u'"')
            text();
        else if (c == u'#')
            date();
        else
            punctuation();
    }
    push(TokenKind::EndOfText, m_place);
    return std::move(m_tokens);
}

void Lexer::skipBlanks()
{
    const qsizetype start = m_place;
    while (isBlank(here()) || (here() == u'_' && skipContinuation()))
        ++m_place;
    m_spaceBefore = m_place > start;
}

/// A `_` as the last character of a line joins the next line to it. Leaves the place on the line's last character.
bool Lexer::skipContinuation()
{
    qsizetype end = m_place + 1;
    while (isBlank(at(end)))
        ++end;
    if (!isLineBreak(at(end)))
        return false;
    if (at(end) == u'\r' && at(end + 1) == u'\n')
        ++end;
    m_place = end;
    ++m_line;
    m_lineStart = end + 1;
    return true;
}

void Lexer::skipComment()
{
    while (!atEnd() && !isLineBreak(here()))
        ++m_place;
}

void Lexer::takeLineBreak()
{
    push(TokenKind::EndOfLine, m_place);
    m_place += here() == u'\r' && at(m_place + 1) == u'\n' ? 2 : 1;
    ++m_line;
    m_lineStart = m_place;
}

void Lexer::word()
{
    const qsizetype start = m_place;
    while (isWordCharacter(here()))
        ++m_place;
    const QStringView word = m_text.sliced(start, m_place - start);
    if (word.size() > LongestIdentifier) {
        bad(SyntaxError::IdentifierTooLong, m_place);
        return;
    }
    const bool afterDot = !m_tokens.empty() && m_tokens.back().kind == TokenKind::Dot;
    if (!afterDot && word.compare(QLatin1String("rem"), Qt::CaseInsensitive) == 0) {
        skipComment();
        return;
    }
    const values::Name name(word);
    const auto keyword = keywords().find(name.folded());
    push(keyword == keywords().end() ? TokenKind::Identifier : keyword->second, start).name = name;
}

void Lexer::bracketedName()
{
    const qsizetype start = m_place++;
    while (!atEnd() && !isLineBreak(here()) && here() != u']')
        ++m_place;
    const QStringView word = m_text.sliced(start + 1, m_place - start - 1);
    if (here() != u']') {
        bad(SyntaxError::ExpectedCloseBracket, m_place);
    } else if (word.size() > LongestIdentifier) {
        bad(SyntaxError::IdentifierTooLong, m_place);
    } else {
        ++m_place;
        // A name of no characters is a name too; the bracket keeps it apart from "no name".
        push(TokenKind::Identifier, start).name = word.isEmpty() ? values::Name("[]") : values::Name(word);
    }
}

void Lexer::number()
{
    const qsizetype start = m_place;
    bool whole = true;
    while (isDigit(here()))
        ++m_place;
    if (here() == u'.') {
        whole = false;
        for (++m_place; isDigit(here());)
            ++m_place;
    }
    if ((here() | 0x20) == u'e') {
        qsizetype exponent = m_place + 1;
        if (at(exponent) == u'+' || at(exponent) == u'-')
            ++exponent;
        if (isDigit(at(exponent))) {
            whole = false;
            m_place = exponent;
            while (isDigit(here()))
                ++m_place;
        }
    }
    bool valid = false;
    const double value = QLocale::c().toDouble(m_text.sliced(start, m_place - start), &valid);
    if (!(std::abs(value) <= std::numeric_limits<double>::max())) {
        bad(SyntaxError::InvalidNumber, start);
        return;
    }
    Token& token = push(TokenKind::Number, start);
    if (whole && value <= 32767)
        token.value = values::Variant(std::int16_t(value));
    else if (whole && value <= 2147483647.0)
        token.value = values::Variant(std::int32_t(value));
    else
        token.value = values::Variant(value);
}

/// Whether the last token ends an operand, so that an `&` after it joins texts.
bool Lexer::afterOperand() const noexcept
{
    using enum TokenKind;
    if (m_tokens.empty())
        return false;
    switch (m_tokens.back().kind) {
    case Identifier:
    case Number:
    case Text:
    case Date:
    case CloseParenthesis:
    case True:
    case False:
    case TokenKind::Empty:
    case Null:
    case Nothing:
    case Me:
        return true;
    default: // a keyword after a dot is the name of a member
        return m_tokens.back().isWord() && m_tokens.size() > 1 && m_tokens[m_tokens.size() - 2].kind == Dot;
    }
}

/// `&` starts a number where `h` or `o` and digits of that base follow, and then the word ends or a keyword begins:
/// `&h01or&h02` is two numbers, but in "a"&hello the `&` joins texts. With no letter the digits are octal; there only
/// the place tells the number from the operator.
Lexer::Prefix Lexer::numberPrefix() const
{
    const char16_t letter = at(m_place + 1) | 0x20;
    if (letter != u'h' && letter != u'o')
        return digitValue(at(m_place + 1)) < 8 && !afterOperand() ? Prefix{8, 1} : Prefix();
    const Prefix prefix{letter == u'h' ? 16 : 8, 2};
    qsizetype end = m_place + 2;
    while (digitValue(at(end)) < prefix.base)
        ++end;
    if (end == m_place + 2)
        return {};
    const qsizetype word = end;
    while (isWordCharacter(at(end)))
        ++end;
    const bool ends = end == word || (isLetter(at(word)) && end - word <= LongestKeyword &&
                                      keywords().contains(values::Name(m_text.sliced(word, end - word)).folded()));
    return ends ? prefix : Prefix();
}

void Lexer::basedNumber(Prefix prefix)
{
    const qsizetype start = m_place;
    const int base = prefix.base;
    std::uint64_t value = 0;
    bool fits = true;
    for (m_place += prefix.length; digitValue(here()) < base; ++m_place) {
        value = value * std::uint64_t(base) + std::uint64_t(digitValue(here()));
        fits = fits && value <= 0xffffffffu;
        if (!fits)
            value = 0;
    }
    const bool longSuffix = here() == u'&';
    if (longSuffix)
        ++m_place;
    if (!fits) {
        bad(SyntaxError::InvalidNumber, start);
        return;
    }
    Token& token = push(TokenKind::Number, start);
    // COMPAT: four digits are a signed 16-bit pattern unless the suffix says Long, and whatever then fits an
    // Integer is one: &hffff is -1, &hffff& is 65535, &hffffffff& is Integer -1. Only -32768 is a Long, as it is
    // when written in decimal: &h8000.
    const std::int32_t pattern =
        !longSuffix && value <= 0xffff ? std::int16_t(value) : std::int32_t(std::uint32_t(value));
    if (pattern > -32768 && pattern <= 32767)
        token.value = values::Variant(std::int16_t(pattern));
    else
        token.value = values::Variant(pattern);
}

void Lexer::text()
{
    const qsizetype start = m_place++;
    QString value;
    while (true) {
        const qsizetype piece = m_place;
        while (!atEnd() && !isLineBreak(here()) && here() != u'"')
            ++m_place;
        value += m_text.sliced(piece, m_place - piece);
        if (here() != u'"' || atEnd()) {
            bad(SyntaxError::UnterminatedString, m_place);
            return;
        }
        ++m_place;
        if (here() != u'"')
            break;
        value += u'"';
        ++m_place;
    }
    push(TokenKind::Text, start).value = values::Variant(std::move(value));
}

void Lexer::date()
{
    const qsizetype start = m_place++;
    while (!atEnd() && !isLineBreak(here()) && here() != u'#')
        ++m_place;
    values::Date value;
    const QString text = m_text.sliced(start + 1, m_place - start - 1).toString();
    const bool closed = here() == u'#';
    if (closed)
        ++m_place;
    if (!closed || !hasDateShape(text) ||
        values::tryToDate(values::Variant(text), value) != values::ErrorNumber::None) {
        bad(SyntaxError::Syntax, start);
        return;
    }
    push(TokenKind::Date, start).value = values::Variant(value);
}

void Lexer::punctuation()
{
    using enum TokenKind;
    const char16_t next = at(m_place + 1);
    switch (here()) {
    case u':':
        return take(Colon, 1);
    case u'+':
        return take(Plus, 1);
    case u'-':
        return take(Minus, 1);
    case u'*':
        return take(Star, 1);
    case u'/':
        return take(Slash, 1);
    case u'\\':
        return take(Backslash, 1);
    case u'^':
        return take(Caret, 1);
    case u'&':
        return take(Ampersand, 1);
    case u'(':
        return take(OpenParenthesis, 1);
    case u')':
        return take(CloseParenthesis, 1);
    case u',':
        return take(Comma, 1);
    case u'.':
        return take(Dot, 1);
    case u'=':
        return next == u'<' ? take(LessEqual, 2) : next == u'>' ? take(GreaterEqual, 2) : take(Equal, 1);
    case u'<':
        return next == u'=' ? take(LessEqual, 2) : next == u'>' ? take(NotEqual, 2) : take(Less, 1);
    case u'>':
        return next == u'=' ? take(GreaterEqual, 2) : next == u'<' ? take(NotEqual, 2) : take(Greater, 1);
    default:
        bad(SyntaxError::InvalidCharacter, offendingPlace());
        ++m_place;
    }
}

/// Place of a character that fits nowhere. A line continuation is misplaced because of what follows it on its line.
qsizetype Lexer::offendingPlace() const noexcept
{
    qsizetype place = m_place + 1;
    if (here() != u'_' || isWordCharacter(at(place)))
        return m_place;
    while (isBlank(at(place)))
        ++place;
    return place;
}

Token& Lexer::push(TokenKind kind, qsizetype start)
{
    Token& token = m_tokens.emplace_back();
    token.kind = kind;
    token.position = positionAt(start);
    token.spaceBefore = m_spaceBefore;
    return token;
}

void Lexer::bad(SyntaxError error, qsizetype place)
{
    push(TokenKind::Bad, place).error = error;
}

void Lexer::take(TokenKind kind, qsizetype length)
{
    push(kind, m_place);
    m_place += length;
}

} // namespace zan::script
