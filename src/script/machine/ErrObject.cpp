#include "script/machine/ErrObject.h"

#include "script/machine/ResultCodes.h"

namespace zan::script {

QString runtimeErrorSource()
{
    return QStringLiteral("Microsoft VBScript runtime error");
}

QString compilationErrorSource()
{
    return QStringLiteral("Microsoft VBScript compilation error");
}

const binding::MemberTable& ErrObject::members() const
{
    return binding::table([] {
        return binding::MemberTable(
            "Object", nullptr,
            {
                binding::property<&ErrObject::number, &ErrObject::setNumber>("Number").asDefault(),
                binding::property<&ErrObject::description, &ErrObject::setDescription>("Description"),
                binding::property<&ErrObject::source, &ErrObject::setSource>("Source"),
                binding::property<&ErrObject::helpContext, &ErrObject::setHelpContext>("HelpContext"),
                binding::property<&ErrObject::helpFile, &ErrObject::setHelpFile>("HelpFile"),
                binding::method<&ErrObject::raise>("Raise"),
                binding::method<&ErrObject::clear>("Clear"),
            });
    });
}

void ErrObject::set(int number, const QString& description, const QString& source)
{
    clear();
    m_number = number;
    m_description = description;
    m_source = source;
}

void ErrObject::clear()
{
    m_number = 0;
    m_description.clear();
    m_source.clear();
    m_helpContext = 0;
    m_helpFile.clear();
}

void ErrObject::raise(std::int32_t number, std::optional<QString> source, std::optional<QString> description,
                      std::optional<QString> helpFile, std::optional<std::int32_t> helpContext)
{
    constexpr std::int32_t LargestNumber = 65535;
    if (number == 0 || number > LargestNumber)
        values::raise(values::ErrorNumber::InvalidCall);
    const std::int32_t shown = errorNumberOf(number);
    throw RaisedError(shown, description ? *description : values::errorText(shown), source.value_or(QString()),
                      helpFile.value_or(QString()), helpContext.value_or(0));
}

} // namespace zan::script
