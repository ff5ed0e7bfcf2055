#include "values/Variant.h"

#include "values/Array.h"
#include "values/RuntimeError.h"

namespace zan::values {

Variant AutomationObject::defaultValue()
{
    raise(ErrorNumber::NoSuchMember);
}

Variant::Variant(const Ref<Array>& array) noexcept
    : m_kind(Kind::Array)
    , m_counted(1)
{
    m_payload.array = array.get();
    array->retain();
}

bool Variant::isNumber() const noexcept
{
    switch (m_kind) {
    case Kind::Integer:
    case Kind::Long:
    case Kind::Single:
    case Kind::Double:
    case Kind::Currency:
    case Kind::Boolean:
    case Kind::Byte:
        return true;
    default:
        return false;
    }
}

Array& Variant::arrayForWriting()
{
    if (m_payload.array->references() > 1)
        *this = Variant(m_payload.array->clone());
    return *m_payload.array;
}

void Variant::retainShared() const noexcept
{
    if (m_kind == Kind::Object)
        m_payload.object->retain();
    else
        m_payload.array->retain();
}

void Variant::releasePayload() noexcept
{
    switch (m_kind) {
    case Kind::String:
        if (--m_payload.text->references == 0)
            delete m_payload.text;
        break;
    case Kind::Object:
        m_payload.object->release();
        break;
    default:
        m_payload.array->release();
        break;
    }
}

} // namespace zan::values
