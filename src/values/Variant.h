#pragma once

#include "values/Kind.h"
#include "values/Ref.h"

#include <QString>

#include <cstdint>
#include <new>

namespace zan::values {

// Representation
//
// A Variant is 16 bytes: a 16-bit kind, a 16-bit flag word and eight bytes of payload. Numbers, Booleans, dates
// and error numbers lie in the payload. Text, objects and arrays lie behind one counted pointer each; the flag
// says that there is something to count, so copying a number never looks at its kind. Counts are not atomic: a
// Variant stays on the thread that made it, and drivers hand raw bytes, not Variants, to the interface thread.
//
// Text is a counted box around a QString, so that a text moves between Variants, documents and widgets without
// being copied, and the sole owner of a box can append to it in place.

class Array;
class AutomationObject;
class Variant;

/// Base of every object that a Variant can hold: shared by reference, known to scripts by its type name.
class AutomationObject : public Shared
{
public:
    /// Class name as TypeName reports it.
    virtual QString typeName() const = 0;
    /// Value of the default member without arguments, used where a plain value is needed. Raises 438 when the
    /// object has no default member.
    virtual Variant defaultValue();
};

class Variant
{
public:
    Variant() noexcept = default;
    Variant(bool value) noexcept
        : m_kind(Kind::Boolean)
    {
        m_payload.boolean = value;
    }
    Variant(std::uint8_t value) noexcept
        : m_kind(Kind::Byte)
    {
        m_payload.byte = value;
    }
    Variant(std::int16_t value) noexcept
        : m_kind(Kind::Integer)
    {
        m_payload.integer = value;
    }
    Variant(std::int32_t value) noexcept
        : m_kind(Kind::Long)
    {
        m_payload.longInteger = value;
    }
    Variant(float value) noexcept
        : m_kind(Kind::Single)
    {
        m_payload.single = value;
    }
    Variant(double value) noexcept
        : m_kind(Kind::Double)
    {
        m_payload.real = value;
    }
    Variant(Currency value) noexcept
        : m_kind(Kind::Currency)
    {
        m_payload.currency = value.scaled;
    }
    Variant(Date value) noexcept
        : m_kind(Kind::Date)
    {
        m_payload.real = value.serial;
    }
    Variant(ErrorValue value) noexcept
        : m_kind(Kind::Error)
    {
        m_payload.longInteger = value.code;
    }
    Variant(const QString& text)
        : Variant(new Text(text))
    {}
    Variant(QString&& text)
        : Variant(new Text(std::move(text)))
    {}
    Variant(const char16_t* text)
        : Variant(QString::fromUtf16(text))
    {}
    /// An object reference; the empty reference is Nothing (kind Object).
    template <class T>
    requires std::is_convertible_v<T*, AutomationObject*> Variant(const Ref<T>& object)
        : Variant(static_cast<AutomationObject*>(object.get()), ObjectTag())
    {}
    explicit Variant(const Ref<Array>& array) noexcept;
    /// No silent road from other pointers (they would become Booleans) or integer widths.
    Variant(const void*) = delete;
    Variant(std::int64_t) = delete;
    Variant(std::uint32_t) = delete;

    static Variant null() noexcept
    {
        Variant value;
        value.m_kind = Kind::Null;
        return value;
    }
    /// The object reference that refers to nothing.
    static Variant nothing() noexcept { return Variant(nullptr, ObjectTag()); }
    static Variant missing() noexcept { return Variant(ErrorValue{ErrorValue::MissingArgument}); }

    Variant(const Variant& other) noexcept
        : m_kind(other.m_kind)
        , m_counted(other.m_counted)
        , m_payload(other.m_payload)
    {
        if (m_counted)
            retainPayload();
    }
    Variant(Variant&& other) noexcept
        : m_kind(std::exchange(other.m_kind, Kind::Empty))
        , m_counted(std::exchange(other.m_counted, 0))
        , m_payload(other.m_payload)
    {}
    ~Variant()
    {
        if (m_counted)
            releasePayload();
    }
    Variant& operator=(const Variant& other) noexcept { return *this = Variant(other); }
    Variant& operator=(Variant&& other) noexcept
    {
        if (this != &other) {
            const Variant old = takeSelf(); // released last: its end may run code that looks at us
            m_kind = std::exchange(other.m_kind, Kind::Empty);
            m_counted = std::exchange(other.m_counted, 0);
            m_payload = other.m_payload;
        }
        return *this;
    }

    Kind kind() const noexcept { return m_kind; }
    bool is(Kind kind) const noexcept { return m_kind == kind; }
    bool isEmpty() const noexcept { return m_kind == Kind::Empty; }
    bool isNull() const noexcept { return m_kind == Kind::Null; }
    bool isText() const noexcept { return m_kind == Kind::String; }
    bool isObject() const noexcept { return m_kind == Kind::Object; }
    bool isArray() const noexcept { return m_kind == Kind::Array; }
    bool isMissing() const noexcept
    {
        return m_kind == Kind::Error && m_payload.longInteger == ErrorValue::MissingArgument;
    }
    /// Integer, Long, Single, Double, Currency, Byte, Boolean: what counts as a number in arithmetic. Not Date.
    bool isNumber() const noexcept;

    // Payload as it lies, for the kind named; asking for another kind is a programmer's mistake.
    bool boolean() const noexcept { return m_payload.boolean; }
    std::uint8_t byte() const noexcept { return m_payload.byte; }
    std::int16_t integer() const noexcept { return m_payload.integer; }
    std::int32_t longInteger() const noexcept { return m_payload.longInteger; }
    float single() const noexcept { return m_payload.single; }
    double real() const noexcept { return m_payload.real; }
    Currency currency() const noexcept { return {m_payload.currency}; }
    Date date() const noexcept { return {m_payload.real}; }
    ErrorValue error() const noexcept { return {m_payload.longInteger}; }
    const QString& text() const noexcept { return m_payload.text->value; }
    /// The text for appending in place when this Variant is its only owner, else null.
    QString* uniqueText() noexcept
    {
        return m_kind == Kind::String && m_payload.text->references == 1 ? &m_payload.text->value : nullptr;
    }
    AutomationObject* object() const noexcept { return m_payload.object; }
    Ref<AutomationObject> objectRef() const noexcept { return Ref<AutomationObject>(m_payload.object); }
    const Array& array() const noexcept { return *m_payload.array; }
    /// The array for writing; made this Variant's own copy first when it is shared.
    Array& arrayForWriting();

    /// True when the payload is counted: text, an object other than Nothing, an array.
    bool isCounted() const noexcept { return m_counted != 0; }

private:
    struct Text
    {
        explicit Text(const QString& text)
            : value(text)
        {}
        explicit Text(QString&& text) noexcept
            : value(std::move(text))
        {}
        std::uint32_t references = 0;
        QString value;
    };
    struct ObjectTag
    {};
    explicit Variant(Text* text) noexcept
        : m_kind(Kind::String)
        , m_counted(1)
    {
        m_payload.text = text;
        ++text->references;
    }
    Variant(AutomationObject* object, ObjectTag) noexcept
        : m_kind(Kind::Object)
        , m_counted(object != nullptr)
    {
        m_payload.object = object;
        if (object)
            object->retain();
    }
    Variant takeSelf() noexcept { return std::move(*this); }
    void retainPayload() const noexcept
    {
        if (m_kind == Kind::String)
            ++m_payload.text->references;
        else
            retainShared();
    }
    void retainShared() const noexcept;
    void releasePayload() noexcept;

    Kind m_kind = Kind::Empty;
    std::uint16_t m_counted = 0;
    union {
        std::uint64_t bits = 0;
        bool boolean;
        std::uint8_t byte;
        std::int16_t integer;
        std::int32_t longInteger;
        float single;
        double real;
        std::int64_t currency;
        Text* text;
        AutomationObject* object;
        Array* array;
    } m_payload;
};

static_assert(sizeof(Variant) == 16);

} // namespace zan::values
