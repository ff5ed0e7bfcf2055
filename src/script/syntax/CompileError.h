#pragma once

#include <QString>

#include <exception>

namespace zan::script {

/// Numbers of the errors that a script's text may have. Their texts stand in one table, see compileErrorText.
enum class SyntaxError : int {
    OutOfMemory = 1001, ///< nested or grown beyond what the engine takes
    Syntax = 1002,
    ExpectedColon = 1003,
    ExpectedOpenParenthesis = 1005,
    ExpectedCloseParenthesis = 1006,
    ExpectedCloseBracket = 1007,
    ExpectedIdentifier = 1010,
    ExpectedEquals = 1011,
    ExpectedIf = 1012,
    ExpectedTo = 1013,
    ExpectedEnd = 1014,
    ExpectedFunction = 1015,
    ExpectedSub = 1016,
    ExpectedThen = 1017,
    ExpectedWend = 1018,
    ExpectedLoop = 1019,
    ExpectedNext = 1020,
    ExpectedCase = 1021,
    ExpectedSelect = 1022,
    ExpectedExpression = 1023,
    ExpectedStatement = 1024,
    ExpectedEndOfStatement = 1025,
    ExpectedIntegerConstant = 1026,
    ExpectedWhileOrUntil = 1027,
    ExpectedWhileUntilOrEnd = 1028,
    ExpectedWith = 1029,
    IdentifierTooLong = 1030,
    InvalidNumber = 1031,
    InvalidCharacter = 1032,
    UnterminatedString = 1033,
    InvalidMe = 1037,
    LoopWithoutDo = 1038,
    InvalidExit = 1039,
    InvalidForVariable = 1040,
    NameRedefined = 1041,
    MustBeFirst = 1042,
    CannotUseParentheses = 1044,
    ExpectedLiteral = 1045,
    ExpectedIn = 1046,
    ExpectedClass = 1047,
    OutsideClass = 1048,
    ExpectedPropertyKind = 1049,
    ExpectedProperty = 1050,
    InconsistentArguments = 1051,
    SecondDefault = 1052,
    ClassEventArguments = 1053,
    PropertyNeedsArgument = 1054,
    UnexpectedNext = 1055,
    DefaultMisplaced = 1056,
    DefaultNeedsPublic = 1057,
    DefaultOnlyOnGet = 1058,
};

/// The text that goes with a compile error's number.
QString compileErrorText(int number);

/// A place in a script's text.
struct Position
{
    int line = 0;   ///< counted from 1
    int column = 0; ///< counted from 0
};

/// Thrown by the lexer, the parser and the compiler; caught where the text was handed in.
class CompileError : public std::exception
{
public:
    CompileError(SyntaxError number, Position position) noexcept
        : m_number(number)
        , m_position(position)
    {}
    int number() const noexcept { return static_cast<int>(m_number); }
    Position position() const noexcept { return m_position; }
    const char* what() const noexcept override { return "script compile error"; }

private:
    SyntaxError m_number;
    Position m_position;
};

} // namespace zan::script
