#pragma once

#include <QString>

namespace zan::script {

/// What went wrong in the last failed call of a ScriptControl. Everything is 0 or empty at first and after Clear.
class ScriptError
{
public:
    ScriptError() = default;
    ScriptError(int number, QString description, QString source, int line, int column, QString text)
        : m_number(number)
        , m_description(std::move(description))
        , m_source(std::move(source))
        , m_line(line)
        , m_column(column)
        , m_text(std::move(text))
    {}

    /// Number of the run-time or compile error.
    int Number() const noexcept { return m_number; }
    /// Its text; that of an error about a name carries the name.
    const QString& Description() const noexcept { return m_description; }
    /// What raised it: the language's run-time or compiler, or what Err.Raise gave.
    const QString& Source() const noexcept { return m_source; }
    /// Line of the statement, from 1 within the text that was added.
    int Line() const noexcept { return m_line; }
    /// Column, from 0: of the statement for run-time errors, of the mistake for compile errors.
    int Column() const noexcept { return m_column; }
    /// The offending line for compile errors; empty for run-time errors.
    const QString& Text() const noexcept { return m_text; }
    void Clear() { *this = ScriptError(); }

private:
    int m_number = 0;
    QString m_description;
    QString m_source;
    int m_line = 0;
    int m_column = 0;
    QString m_text;
};

} // namespace zan::script
