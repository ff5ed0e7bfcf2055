#pragma once

#include "binding/MemberTable.h"
#include "binding/Object.h"
#include "support/ErrorOf.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace zan::binding {

using test::errorOf;

enum class Direction { None, Up, Down };

/// An object with a member of every kind and type.
class Sample : public Object
{
public:
    bool Flag() const { return m_flag; }
    void setFlag(bool flag) { m_flag = flag; }
    std::uint8_t Octet() const { return m_byte; }
    void setOctet(std::uint8_t byte) { m_byte = byte; }
    std::int16_t Small() const { return m_small; }
    void setSmall(std::int16_t small) { m_small = small; }
    std::int32_t Large() const { return m_large; }
    void setLarge(std::int32_t large) { m_large = large; }
    float Left() const { return m_left; }
    void setLeft(float left) { m_left = left; }
    double Max() const { return m_max; }
    void setMax(double max) { m_max = max; }
    values::Currency Size() const { return m_size; }
    void setSize(values::Currency size) { m_size = size; }
    values::Date When() const { return m_when; }
    void setWhen(values::Date when) { m_when = when; }
    const QString& Caption() const { return m_caption; }
    void setCaption(const QString& caption) { m_caption = caption; }
    values::Colour BackColour() const { return m_colour; }
    void setBackColour(values::Colour colour) { m_colour = colour; }
    Variant Value() const { return m_value; }
    void setValue(const Variant& value) { m_value = value; }
    Direction Way() const { return m_way; }
    void setWay(Direction way) { m_way = way; }
    const Ref<Sample>& Next() const { return m_next; }
    void setNext(const Ref<Sample>& next) { m_next = next; }

    /// 0 to 10; raises 380 for anything else.
    std::int16_t Level() const { return m_level; }
    void setLevel(std::int16_t level)
    {
        if (level < 0 || level > 10)
            values::raise(ErrorNumber::InvalidPropertyValue);
        m_level = level;
    }

    QString Key() const { return QStringLiteral("key"); }
    void setSecret(const QString& secret) { m_secret = secret; }

    QString Item(std::int32_t index) const { return m_items.at(std::size_t(checked(index))); }
    void setItem(std::int32_t index, const QString& text) { m_items.at(std::size_t(checked(index))) = text; }

    std::int32_t Add(std::int32_t a, std::optional<std::int32_t> b) { return a + b.value_or(100); }
    void Clear() { m_caption.clear(); }
    void Drop() { m_owner = nullptr; }

    const MemberTable& members() const override;

    QString m_secret;
    Ref<Sample> m_owner;

private:
    std::int32_t checked(std::int32_t index) const
    {
        if (index < 0 || std::size_t(index) >= m_items.size())
            values::raise(ErrorNumber::SubscriptOutOfRange);
        return index;
    }

    bool m_flag = false;
    std::uint8_t m_byte = 0;
    std::int16_t m_small = 0;
    std::int32_t m_large = 0;
    float m_left = 0;
    double m_max = 0;
    values::Currency m_size;
    values::Date m_when;
    QString m_caption;
    values::Colour m_colour;
    Variant m_value;
    Direction m_way = Direction::None;
    Ref<Sample> m_next;
    std::int16_t m_level = 0;
    std::vector<QString> m_items = {QStringLiteral("zero"), QStringLiteral("one")};
};

inline const MemberTable& Sample::members() const
{
    static const MemberTable table("Sample", nullptr,
                                   {
                                       property<&Sample::Flag, &Sample::setFlag>("Flag"),
                                       property<&Sample::Octet, &Sample::setOctet>("Octet"),
                                       property<&Sample::Small, &Sample::setSmall>("Small"),
                                       property<&Sample::Large, &Sample::setLarge>("Large"),
                                       property<&Sample::Left, &Sample::setLeft>("Left"),
                                       property<&Sample::Max, &Sample::setMax>("Max"),
                                       property<&Sample::Size, &Sample::setSize>("Size"),
                                       property<&Sample::When, &Sample::setWhen>("When"),
                                       property<&Sample::Caption, &Sample::setCaption>("Caption").asDefault(),
                                       property<&Sample::BackColour, &Sample::setBackColour>("BackColour"),
                                       property<&Sample::Value, &Sample::setValue>("Value"),
                                       property<&Sample::Way, &Sample::setWay>("Way"),
                                       property<&Sample::Next, &Sample::setNext>("Next"),
                                       property<&Sample::Level, &Sample::setLevel>("Level"),
                                       readOnly<&Sample::Key>("Key"),
                                       writeOnly<&Sample::setSecret>("Secret"),
                                       property<&Sample::Item, &Sample::setItem>("Item"),
                                       method<&Sample::Add>("Add"),
                                       method<&Sample::Clear>("Clear"),
                                       method<&Sample::Drop>("Drop"),
                                   });
    return table;
}

} // namespace zan::binding
