#include "wrappers/ValueText.h"

#include "values/Convert.h"
#include "values/NumberText.h"

namespace zan::wrappers {

QString storedText(const values::Variant& value)
{
    using values::Kind;
    switch (value.kind()) {
    case Kind::Boolean:
        return storedText(value.boolean());
    case Kind::Single:
        return values::documentText(value.single());
    case Kind::Double:
        return values::documentText(value.real());
    case Kind::Date:
        return values::documentText(value.date().serial);
    default:
        break;
    }
    QString text;
    if (values::tryToText(value, text) != values::ErrorNumber::None)
        text.clear();
    return text;
}

} // namespace zan::wrappers
