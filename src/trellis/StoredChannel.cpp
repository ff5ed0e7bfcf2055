#include "trellis/StoredChannel.h"

#include "trellis/ElementText.h"
#include "trellis/Elements.h"
#include "values/Convert.h"
#include "values/NumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace zan::trellis {

namespace {

QString textOf(const Node& node, document::Name name)
{
    QString text;
    node.childText(name, text);
    return text;
}

double numberOf(const Node& node, document::Name name)
{
    return values::val(textOf(node, name));
}

/// Nearest number of the type, half to even.
template <class T>
T within(double number)
{
    using Limits = std::numeric_limits<T>;
    if constexpr (std::is_integral_v<T>)
        number = std::nearbyint(number);
    return T(std::clamp(number, double(Limits::lowest()), double(Limits::max())));
}

QString booleanText(bool value)
{
    return value ? QStringLiteral("-1") : QStringLiteral("0");
}

std::int16_t sizeOf(std::int32_t dataType)
{
    constexpr std::array<std::int16_t, site::DataTypeCount> Sizes{1, 1, 2, 2, 4, 4, 0, 4, 8};
    return Sizes[std::size_t(dataType)];
}

bool sameBits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// Whether two values cannot be told apart. May say no of values that are equal.
bool isSame(const Variant& a, const Variant& b)
{
    using values::Kind;
    if (a.kind() != b.kind())
        return false;
    switch (a.kind()) {
    case Kind::Empty:
    case Kind::Null:
        return true;
    case Kind::Boolean:
        return a.boolean() == b.boolean();
    case Kind::Byte:
        return a.byte() == b.byte();
    case Kind::Integer:
        return a.integer() == b.integer();
    case Kind::Long:
        return a.longInteger() == b.longInteger();
    case Kind::Single:
        return sameBits(double(a.single()), double(b.single()));
    case Kind::Double:
        return sameBits(a.real(), b.real());
    case Kind::Date:
        return sameBits(a.date().serial, b.date().serial);
    case Kind::Currency:
        return a.currency() == b.currency();
    case Kind::String:
        return a.text() == b.text();
    default:
        return false; // an object or an array may have changed inside
    }
}

} // namespace

StoredChannel::StoredChannel(Node node, Ref<ObjectRegistry> registry)
    : m_node(std::move(node))
    , m_registry(std::move(registry))
{
    m_registry->add(m_node, this);
}

StoredChannel::~StoredChannel()
{
    m_registry->remove(m_node);
}

Ref<StoredChannel> StoredChannel::of(const Node& node, const Ref<ObjectRegistry>& registry)
{
    const auto known = registry->find<StoredChannel>(node);
    return known ? known : values::make<StoredChannel>(node, registry);
}

std::int32_t StoredChannel::BaseAddress() const
{
    return within<std::int32_t>(numberOf(m_node, element::BaseAddress));
}

void StoredChannel::setBaseAddress(std::int32_t address)
{
    writeText(m_node, element::BaseAddress, QString::number(address), QStringLiteral("0"));
}

bool StoredChannel::CDT() const
{
    return numberOf(m_node, element::Cdt) != 0;
}

void StoredChannel::setCDT(bool isProtected)
{
    writeText(m_node, element::Cdt, booleanText(isProtected), QStringLiteral("0"));
}

std::int32_t StoredChannel::DataType() const
{
    const auto type = within<std::int32_t>(numberOf(m_node, element::DataType));
    return type >= 0 && type < site::DataTypeCount ? type : 0;
}

void StoredChannel::setDataType(std::int32_t type)
{
    if (type < 0 || type >= site::DataTypeCount)
        values::raise(values::ErrorNumber::InvalidPropertyValue);
    writeText(m_node, element::DataType, QString::number(type), QStringLiteral("0"));
}

std::int16_t StoredChannel::Bytes() const
{
    QString text;
    if (m_node.childText(element::Bytes, text))
        return within<std::int16_t>(values::val(text));
    return sizeOf(DataType());
}

void StoredChannel::setBytes(std::int16_t bytes)
{
    writeText(m_node, element::Bytes, QString::number(bytes));
}

float StoredChannel::Multiplier() const
{
    QString text;
    return m_node.childText(element::Multiplier, text) ? within<float>(values::val(text)) : 1.0F;
}

void StoredChannel::setMultiplier(float multiplier)
{
    writeText(m_node, element::Multiplier, values::documentText(multiplier), QStringLiteral("1"));
}

float StoredChannel::Offset() const
{
    return within<float>(numberOf(m_node, element::Offset));
}

void StoredChannel::setOffset(float offset)
{
    writeText(m_node, element::Offset, values::documentText(offset), QStringLiteral("0"));
}

QString StoredChannel::Formula() const
{
    return textOf(m_node, element::Formula);
}

void StoredChannel::setFormula(const QString& formula)
{
    writeText(m_node, element::Formula, formula);
}

QString StoredChannel::Label() const
{
    return textOf(m_node, element::Label);
}

void StoredChannel::setLabel(const QString& label)
{
    writeText(m_node, element::Label, label);
}

QString StoredChannel::Format() const
{
    return textOf(m_node, element::Format);
}

void StoredChannel::setFormat(const QString& format)
{
    writeText(m_node, element::Format, format);
}

QString StoredChannel::Units() const
{
    return textOf(m_node, element::Units);
}

void StoredChannel::setUnits(const QString& units)
{
    writeText(m_node, element::Units, units);
}

bool StoredChannel::Visible() const
{
    return numberOf(m_node, element::Visible) != 0;
}

void StoredChannel::setVisible(bool visible)
{
    writeText(m_node, element::Visible, booleanText(visible), QStringLiteral("0"));
}

void StoredChannel::setValue(const Variant& value)
{
    // A logger writes every channel at every poll; most read as before, and are not to be shown anew.
    if (isSame(m_value, value))
        return;
    m_value = value;
    m_changes.add();
}

QString StoredChannel::Key() const
{
    return textOf(m_node, element::Key);
}

} // namespace zan::trellis
