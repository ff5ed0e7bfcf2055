#pragma once

#include "binding/MemberTable.h"
#include "binding/Object.h"

#include <QString>

#include <optional>

namespace zan::script {

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
    /// Raises the error; 5 for number 0.
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
