#pragma once

#include "binding/MemberTable.h"
#include "binding/Object.h"

#include <QString>

#include <optional>

namespace zan::script {

/// What Err.Source says of an error that the language itself raised.
QString runtimeErrorSource();
QString compilationErrorSource();

/// What Err.Raise throws: an error with the help that its author gave.
class RaisedError final : public values::RuntimeError
{
public:
    RaisedError(int number, QString description, QString source, QString helpFile, std::int32_t helpContext)
        : RuntimeError(number, std::move(description), std::move(source))
        , m_helpFile(std::move(helpFile))
        , m_helpContext(helpContext)
    {}
    const QString& helpFile() const noexcept { return m_helpFile; }
    std::int32_t helpContext() const noexcept { return m_helpContext; }

private:
    QString m_helpFile;
    std::int32_t m_helpContext;
};

/// The object Err: the last run-time error that the script went on after.
class ErrObject final : public binding::Object
{
public:
    const binding::MemberTable& members() const override;

    void set(int number, const QString& description, const QString& source);
    void clear();
    std::int32_t number() const { return m_number; }
    void setNumber(std::int32_t number) { m_number = number; }
    QString description() const { return m_description; }
    void setDescription(const QString& text) { m_description = text; }
    QString source() const { return m_source; }
    void setSource(const QString& text) { m_source = text; }
    std::int32_t helpContext() const { return m_helpContext; }
    void setHelpContext(std::int32_t context) { m_helpContext = context; }
    QString helpFile() const { return m_helpFile; }
    void setHelpFile(const QString& file) { m_helpFile = file; }
    /// Raises the error, with the number that errorNumberOf makes of it; 5 for 0 and for what is above 65535.
    void raise(std::int32_t number, std::optional<QString> source, std::optional<QString> description,
               std::optional<QString> helpFile, std::optional<std::int32_t> helpContext);

private:
    std::int32_t m_number = 0;
    QString m_description;
    QString m_source;
    std::int32_t m_helpContext = 0;
    QString m_helpFile;
};

} // namespace zan::script
