#include "script/machine/ErrObject.h"

namespace zan::script {

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
                      std::optional<QString>, std::optional<std::int32_t>)
{
    if (number == 0)
        values::raise(values::ErrorNumber::InvalidCall);
    throw values::RuntimeError(number, description ? *description : values::errorText(number),
                               source ? *source : QString());
}

} // namespace zan::script
