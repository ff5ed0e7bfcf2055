#include "history/StoredValue.h"

#include <cmath>

namespace zan::history {

namespace {

using values::Kind;

constexpr qsizetype LongestText = 65'535;

// What stands in the store; never renumbered.
enum class Tag : std::uint8_t {
    Empty = 0,
    Null = 1,
    Integer = 2,
    Long = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    Text = 8, // UTF-8 with its length in front
    False = 9,
    True = 10,
    Byte = 11,
};
constexpr int TagCount = 12;

/// Bytes after the tag, in order of the tags; a text's stand in front of it.
constexpr int sizes[TagCount] = {0, 0, 2, 4, 4, 8, 8, 8, -1, 0, 0, 1};

void put(QByteArray& bytes, Tag tag, std::uint64_t bits = 0)
{
    bytes.append(char(tag));
    putFixed(bytes, bits, sizes[int(tag)]);
}

} // namespace

void putValue(QByteArray& bytes, const Variant& value)
{
    switch (value.kind()) {
    case Kind::Null:
        put(bytes, Tag::Null);
        return;
    case Kind::Integer:
        put(bytes, Tag::Integer, std::uint16_t(value.integer()));
        return;
    case Kind::Long:
        put(bytes, Tag::Long, std::uint32_t(value.longInteger()));
        return;
    case Kind::Single:
        put(bytes, Tag::Single, std::bit_cast<std::uint32_t>(value.single()));
        return;
    case Kind::Double:
        put(bytes, Tag::Double, std::bit_cast<std::uint64_t>(value.real()));
        return;
    case Kind::Currency:
        put(bytes, Tag::Currency, std::uint64_t(value.currency().scaled));
        return;
    case Kind::Date:
        put(bytes, Tag::Date, std::bit_cast<std::uint64_t>(value.date().serial));
        return;
    case Kind::Boolean:
        put(bytes, value.boolean() ? Tag::True : Tag::False);
        return;
    case Kind::Byte:
        put(bytes, Tag::Byte, value.byte());
        return;
    case Kind::String: {
        const QByteArray text = value.text().left(LongestText).toUtf8();
        bytes.append(char(Tag::Text));
        putNumber(bytes, std::uint64_t(text.size()));
        bytes.append(text);
        return;
    }
    default:
        put(bytes, Tag::Empty);
        return;
    }
}

QByteArrayView takeValue(ByteReader& reader)
{
    const char* const begin = reader.at();
    const auto tag = reader.fixed(1);
    if (reader.hasFailed() || tag >= TagCount) {
        reader.fail();
        return {};
    }
    reader.skip(sizes[tag] < 0 ? reader.number() : std::uint64_t(sizes[tag]));
    return reader.hasFailed() ? QByteArrayView() : QByteArrayView(begin, reader.at());
}

Variant valueOf(QByteArrayView bytes)
{
    ByteReader reader(bytes.begin(), bytes.end());
    const auto tag = Tag(reader.fixed(1));
    if (reader.hasFailed())
        return {};
    switch (tag) {
    case Tag::Null:
        return Variant::null();
    case Tag::Integer:
        return Variant(std::int16_t(reader.fixed(2)));
    case Tag::Long:
        return Variant(std::int32_t(reader.fixed(4)));
    case Tag::Single:
        return Variant(std::bit_cast<float>(std::uint32_t(reader.fixed(4))));
    case Tag::Double:
        return Variant(reader.real());
    case Tag::Currency:
        return Variant(values::Currency{std::int64_t(reader.fixed(8))});
    case Tag::Date:
        return Variant(values::Date{reader.real()});
    case Tag::False:
        return Variant(false);
    case Tag::True:
        return Variant(true);
    case Tag::Byte:
        return Variant(std::uint8_t(reader.fixed(1)));
    case Tag::Text:
        reader.number();
        return Variant(QString::fromUtf8(reader.at(), bytes.end() - reader.at()));
    default:
        return {};
    }
}

bool numberOf(QByteArrayView bytes, double& number)
{
    ByteReader reader(bytes.begin(), bytes.end());
    switch (Tag(reader.fixed(1))) {
    case Tag::Integer:
        number = std::int16_t(reader.fixed(2));
        break;
    case Tag::Long:
        number = std::int32_t(reader.fixed(4));
        break;
    case Tag::Single:
        number = double(std::bit_cast<float>(std::uint32_t(reader.fixed(4))));
        break;
    case Tag::Currency:
        number = double(std::int64_t(reader.fixed(8))) / 10'000;
        break;
    case Tag::Double:
    case Tag::Date:
        number = reader.real();
        break;
    case Tag::False:
        number = 0;
        break;
    case Tag::True:
        number = -1;
        break;
    case Tag::Byte:
        number = double(reader.fixed(1));
        break;
    default:
        return false;
    }
    return !reader.hasFailed() && std::isfinite(number);
}

QByteArrayView emptyValue()
{
    static constexpr char bytes[] = {char(Tag::Empty)};
    return {bytes, 1};
}

} // namespace zan::history
