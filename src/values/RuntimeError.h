#pragma once

#include <QString>

#include <exception>

namespace zan::values {

/// Numbers of the platform's run-time errors that our own code raises. Scripts may raise any other number.
enum class ErrorNumber : int {
    None = 0,
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    ArrayLocked = 10,
    DivisionByZero = 11,
    TypeMismatch = 13,
    OutOfStringSpace = 14,
    OutOfStack = 28,
    FileNotFound = 53,
    PathFileAccess = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    ForLoopNotInitialized = 92,
    InvalidNull = 94,
    InvalidPropertyValue = 380,
    InvalidArrayIndex = 381,
    ReadOnlyProperty = 383,
    WriteOnlyProperty = 394,
    ObjectRequired = 424,
    CannotCreateObject = 429,
    NoSuchMember = 438,
    NamedArgumentNotFound = 448,
    WrongArgumentCount = 450,
    NotACollection = 451,
    DuplicateKey = 457,
    InvalidPicture = 481,
    ExceptionOccurred = 507,
};

/// The classic text of an error number; "Unknown runtime error" for a number that has none.
QString errorText(int number);
inline QString errorText(ErrorNumber number)
{
    return errorText(static_cast<int>(number));
}

/// The platform's run-time error: the one exception that our code throws on purpose. It may leave a routine
/// only where the routine says so, and never enters the toolkit: every event boundary stops it.
class RuntimeError : public std::exception
{
public:
    explicit RuntimeError(ErrorNumber number)
        : RuntimeError(static_cast<int>(number), errorText(number))
    {}
    RuntimeError(ErrorNumber number, QString description)
        : RuntimeError(static_cast<int>(number), std::move(description))
    {}
    RuntimeError(int number, QString description, QString source = {});

    int number() const noexcept { return m_number; }
    const QString& description() const noexcept { return m_description; }
    /// Name of the component that raised it; empty for the platform itself.
    const QString& source() const noexcept { return m_source; }
    bool is(ErrorNumber number) const noexcept { return m_number == static_cast<int>(number); }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QString m_source;
    QByteArray m_what;
};

/// Throws the error with its classic text.
[[noreturn]] void raise(ErrorNumber number);
/// Throws the error with a text that says what, where and what to do.
[[noreturn]] void raise(ErrorNumber number, const QString& description);

} // namespace zan::values
