#include "component/CVariant.h"

#include "component/Boundary.h"
#include "component/Module.h"

#include <QStringDecoder>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_set>

namespace zan::component {

namespace {

constexpr std::int32_t MostArguments = 255;
constexpr std::size_t LongestText = 64U << 20U; // bytes

[[noreturn]] void refuse(const char* why)
{
    fail(ZAN_E_VARIANT, why);
}

/// The texts that callers have been given and have not given back.
class OwnedTexts
{
public:
    const char* make(const QByteArray& bytes)
    {
        auto* text = static_cast<char*>(std::malloc(std::size_t(bytes.size()) + 1));
        if (!text)
            throw std::bad_alloc();
        std::memcpy(text, bytes.constData(), std::size_t(bytes.size()) + 1);
        const std::lock_guard<std::mutex> lock(m_mutex);
        try {
            m_texts.insert(text);
        } catch (...) {
            std::free(text);
            throw;
        }
        return text;
    }
    void giveBack(const char* text)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_texts.erase(text) == 0)
            refuse("This text was not given by the library, or was given back before.");
        std::free(const_cast<char*>(text));
    }

private:
    std::mutex m_mutex;
    std::unordered_set<const char*> m_texts;
};

OwnedTexts& ownedTexts()
{
    static OwnedTexts texts;
    return texts;
}

QString decoded(const char* text, std::size_t length)
{
    if (length > LongestText)
        refuse("A text is longer than 64 MB.");
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString result = decoder.decode(QByteArrayView(text, qsizetype(length)));
    if (decoder.hasError())
        refuse("A text is not UTF-8.");
    return result;
}

double finite(double number)
{
    if (!std::isfinite(number))
        refuse("A number is not finite.");
    return number;
}

} // namespace

QString textFromC(const char* text)
{
    const char* const given = &due(text);
    return decoded(given, strnlen(given, LongestText + 1));
}

Variant fromC(const ZanVariant& value)
{
    switch (value.kind) {
    case ZAN_EMPTY:
        return {};
    case ZAN_NULL:
        return Variant::null();
    case ZAN_INTEGER:
        return Variant(value.as.integer);
    case ZAN_LONG:
        return Variant(value.as.long_integer);
    case ZAN_SINGLE:
        return Variant(float(finite(double(value.as.single))));
    case ZAN_DOUBLE:
        return Variant(finite(value.as.real));
    case ZAN_CURRENCY:
        return Variant(values::Currency{value.as.currency});
    case ZAN_DATE:
        return Variant(values::Date{finite(value.as.real)});
    case ZAN_TEXT:
        if (value.length < ZAN_TO_ZERO)
            refuse("A text has a negative length.");
        return Variant(value.length == ZAN_TO_ZERO ? textFromC(value.as.text)
                                                   : decoded(&due(value.as.text), std::size_t(value.length)));
    case ZAN_OBJECT:
        return value.as.object ? Variant(Module::get().handles().at(value.as.object).object) : Variant::nothing();
    case ZAN_ERROR:
        return Variant(values::ErrorValue{value.as.error});
    case ZAN_BOOLEAN:
        return Variant(value.as.boolean != 0);
    case ZAN_BYTE:
        return Variant(value.as.byte);
    default:
        refuse("A value is of a kind that cannot be passed.");
    }
}

std::vector<Variant> fromC(const ZanVariant* values, std::int32_t count)
{
    if (count < 0 || count > MostArguments)
        values::raise(values::ErrorNumber::WrongArgumentCount);
    std::vector<Variant> result;
    for (std::int32_t i = 0; i < count; ++i)
        result.push_back(fromC((&due(values))[i]));
    return result;
}

ZanVariant toC(const Variant& value)
{
    using values::Kind;
    ZanVariant result{};
    result.kind = std::uint16_t(value.kind());
    switch (value.kind()) {
    case Kind::Empty:
    case Kind::Null:
        break;
    case Kind::Integer:
        result.as.integer = value.integer();
        break;
    case Kind::Long:
        result.as.long_integer = value.longInteger();
        break;
    case Kind::Single:
        result.as.single = value.single();
        break;
    case Kind::Double:
        result.as.real = value.real();
        break;
    case Kind::Currency:
        result.as.currency = value.currency().scaled;
        break;
    case Kind::Date:
        result.as.real = value.date().serial;
        break;
    case Kind::String: {
        const QByteArray text = value.text().toUtf8();
        if (text.size() > qsizetype(LongestText))
            refuse("A text is longer than 64 MB.");
        result.as.text = ownedTexts().make(text);
        result.length = std::int32_t(text.size());
        break;
    }
    case Kind::Object:
        if (value.object())
            result.as.object = Module::get().handles().give(Ref<Object>(&binding::objectOf(value)));
        break;
    case Kind::Error:
        result.as.error = value.error().code;
        break;
    case Kind::Boolean:
        result.as.boolean = value.boolean() ? -1 : 0;
        break;
    case Kind::Byte:
        result.as.byte = value.byte();
        break;
    case Kind::Array:
        refuse("An array cannot be passed.");
    }
    return result;
}

void clear(ZanVariant& value)
{
    const ZanVariant old = std::exchange(value, ZanVariant{});
    if (old.kind == ZAN_TEXT && old.as.text)
        ownedTexts().giveBack(old.as.text);
    if (old.kind == ZAN_OBJECT && old.as.object) {
        const Module::Call call;
        Module::get().handles().release(old.as.object);
    }
}

LentValues::~LentValues()
{
    for (ZanVariant& value : m_values)
        static_cast<void>(values::attempt([&] { clear(value); }));
}

} // namespace zan::component
