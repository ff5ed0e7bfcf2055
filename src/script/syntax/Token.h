#pragma once

#include "script/syntax/CompileError.h"
#include "values/Name.h"
#include "values/Variant.h"

namespace zan::script {

/// Kinds of tokens. Keywords that the language reserves have a kind of their own; words that are keywords only in
/// some places (Default, Error, Explicit, Property, Step) are identifiers, and the parser looks at their names.
enum class TokenKind : std::uint8_t {
    EndOfText,
    EndOfLine,
    Colon,
    Identifier,
    Number,
    Text,
    Date,
    Bad, ///< a piece of text that is no token; raises its error when the parser comes to it

    Plus,
    Minus,
    Star,
    Slash,
    Backslash,
    Caret,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    OpenParenthesis,
    CloseParenthesis,
    Comma,
    Dot,

    And,
    ByRef,
    ByVal,
    Call,
    Case,
    Class,
    Const,
    Dim,
    Do,
    Each,
    Else,
    ElseIf,
    Empty,
    End,
    Eqv,
    Erase,
    Exit,
    False,
    For,
    Function,
    Get,
    GoTo,
    If,
    Imp,
    In,
    Is,
    Let,
    Loop,
    Me,
    Mod,
    New,
    Next,
    Not,
    Nothing,
    Null,
    On,
    Option,
    Or,
    Preserve,
    Private,
    Public,
    ReDim,
    Resume,
    Select,
    Set,
    Stop,
    Sub,
    Then,
    To,
    True,
    Until,
    Wend,
    While,
    With,
    Xor,
};

struct Token
{
    TokenKind kind = TokenKind::EndOfText;
    SyntaxError error = SyntaxError::Syntax; ///< of a Bad token
    bool spaceBefore = false;
    Position position;
    values::Name name;     ///< of identifiers and keywords, as written
    values::Variant value; ///< of literals

    /// True for a word: what may follow a dot.
    bool isWord() const noexcept { return !name.isEmpty(); }
};

} // namespace zan::script
