#include "halyard/RawValue.h"
#include "support/FakeSite.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zan::halyard {
namespace {

using values::Kind;

RawFormat formatOf(DataType type, std::int32_t length = 0)
{
    RawFormat format;
    format.type = type;
    format.length = type == DataType::String ? length : sizeOf(type);
    return format;
}

Variant decode(const RawFormat& format, const char* hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    EXPECT_EQ(bytes.size(), format.length);
    return decodeRaw(format, reinterpret_cast<const std::uint8_t*>(bytes.constData()));
}

std::string encoded(const RawFormat& format, const Variant& value)
{
    QByteArray bytes = "untouched";
    const ErrorNumber error = encodeRaw(format, value, bytes);
    if (error == ErrorNumber::None)
        return bytes.toHex().toStdString();
    EXPECT_EQ(bytes, "untouched");
    return "error " + std::to_string(int(error));
}

struct NumberRow
{
    DataType type;
    const char* hex;
    Kind kind;
    double value;
};

const NumberRow NumberRows[] = {
    {DataType::UnsignedByte, "00", Kind::Integer, 0},
    {DataType::UnsignedByte, "80", Kind::Integer, 128},
    {DataType::UnsignedByte, "ff", Kind::Integer, 255},
    {DataType::SignedByte, "7f", Kind::Integer, 127},
    {DataType::SignedByte, "80", Kind::Integer, -128},
    {DataType::SignedByte, "ff", Kind::Integer, -1},
    {DataType::UnsignedWord, "0102", Kind::Long, 258},
    {DataType::UnsignedWord, "ffff", Kind::Long, 65535},
    {DataType::SignedWord, "7fff", Kind::Integer, 32767},
    {DataType::SignedWord, "8000", Kind::Integer, -32768},
    {DataType::SignedWord, "fffe", Kind::Integer, -2},
    {DataType::UnsignedLong, "01020304", Kind::Double, 16909060},
    {DataType::UnsignedLong, "ffffffff", Kind::Double, 4294967295.0},
    {DataType::SignedLong, "7fffffff", Kind::Long, 2147483647},
    {DataType::SignedLong, "80000000", Kind::Long, -2147483648.0},
    {DataType::Single, "3fc00000", Kind::Single, 1.5},
    {DataType::Single, "ff7fffff", Kind::Single, -double(std::numeric_limits<float>::max())},
    {DataType::Double, "3ff8000000000000", Kind::Double, 1.5},
    {DataType::Double, "7fefffffffffffff", Kind::Double, std::numeric_limits<double>::max()},
};

TEST(RawValue, NumbersWithoutScalingBecomeTheSmallestKindThatHoldsThemExactly)
{
    for (const NumberRow& row : NumberRows) {
        const Variant value = decode(formatOf(row.type), row.hex);
        EXPECT_EQ(value.kind(), row.kind) << row.hex;
        EXPECT_EQ(values::toDouble(value), row.value) << row.hex;
    }
}

TEST(RawValue, AValueWrittenGivesTheBytesItWasReadFrom)
{
    for (const NumberRow& row : NumberRows)
        EXPECT_EQ(encoded(formatOf(row.type), decode(formatOf(row.type), row.hex)), row.hex);
}

TEST(RawValue, ByteOrdersPlaceTheBytesOfALong)
{
    const std::pair<ByteOrder, const char*> rows[] = {{ByteOrder::Big, "0a0b0c0d"},
                                                      {ByteOrder::Little, "0d0c0b0a"},
                                                      {ByteOrder::BigSwapped, "0c0d0a0b"},
                                                      {ByteOrder::LittleSwapped, "0b0a0d0c"}};
    for (const auto& [order, hex] : rows) {
        RawFormat format = formatOf(DataType::SignedLong);
        format.order = order;
        EXPECT_EQ(encoded(format, Variant(0x0a0b0c0d)), hex);
        EXPECT_EQ(decode(format, hex).longInteger(), 0x0a0b0c0d);
    }
}

TEST(RawValue, ByteOrdersPlaceTheBytesOfOtherSizes)
{
    RawFormat word = formatOf(DataType::UnsignedWord);
    word.order = ByteOrder::BigSwapped;
    EXPECT_EQ(encoded(word, Variant(0x0a0b)), "0a0b");
    word.order = ByteOrder::LittleSwapped;
    EXPECT_EQ(encoded(word, Variant(0x0a0b)), "0b0a");
    RawFormat real = formatOf(DataType::Double);
    real.order = ByteOrder::BigSwapped;
    EXPECT_EQ(encoded(real, Variant(1.5)), "0000000000003ff8");
    const std::uint8_t three[] = {1, 2, 3};
    EXPECT_EQ(unsignedWord(three, 3, ByteOrder::BigSwapped), 0x010203);
    EXPECT_EQ(unsignedWord(three, 3, ByteOrder::Little), 0x030201);
}

TEST(RawValue, ANumberThatIsNoneIsNoReading)
{
    EXPECT_TRUE(decode(formatOf(DataType::Single), "7fc00000").isEmpty());
    EXPECT_TRUE(decode(formatOf(DataType::Single), "7f800000").isEmpty());
    EXPECT_TRUE(decode(formatOf(DataType::Double), "fff0000000000000").isEmpty());
    RawFormat logarithm = formatOf(DataType::UnsignedByte);
    logarithm.formula = findFormula(QStringLiteral("Log"));
    EXPECT_TRUE(decode(logarithm, "00").isEmpty());
}

TEST(RawValue, TextEndsBeforeItsFirstZeroByteAndLosesBlanksAtItsEnd)
{
    const RawFormat format = formatOf(DataType::String, 5);
    EXPECT_EQ(decode(format, "4142004344").text(), QStringLiteral("AB"));
    EXPECT_EQ(decode(format, "4142202020").text(), QStringLiteral("AB"));
    EXPECT_EQ(decode(format, "2041424344").text(), QStringLiteral(" ABCD"));
    EXPECT_EQ(decode(format, "0041424344").text(), QString());
    EXPECT_EQ(decode(format, "e9b0ff8041").text(), QString::fromUtf16(u"\u00e9\u00b0\u00ff\u0080A"));
}

TEST(RawValue, TextIsFilledWithZeroBytesAndRefusedWhenItDoesNotFit)
{
    const RawFormat format = formatOf(DataType::String, 4);
    EXPECT_EQ(encoded(format, Variant(u"AB")), "41420000");
    EXPECT_EQ(encoded(format, Variant(u"")), "00000000");
    EXPECT_EQ(encoded(format, Variant(12)), "31320000");
    EXPECT_EQ(encoded(format, Variant(u"ABCDE")), "error 6");
    EXPECT_EQ(encoded(format, Variant(u"\u20ac")), "error 13");
}

struct RefusedRow
{
    DataType type;
    Variant value;
    const char* result;
};

TEST(RawValue, ValuesOutsideTheTypeOverflowAndTextThatIsNoNumberIsAMismatch)
{
    const RefusedRow rows[] = {
        {DataType::UnsignedByte, Variant(-1), "error 6"},
        {DataType::UnsignedByte, Variant(255.4), "ff"},
        {DataType::UnsignedByte, Variant(255.5), "error 6"},
        {DataType::UnsignedByte, Variant(254.5), "fe"}, // half to even
        {DataType::UnsignedByte, Variant(true), "error 6"},
        {DataType::SignedByte, Variant(128), "error 6"},
        {DataType::SignedByte, Variant(-128.5), "80"},
        {DataType::SignedByte, Variant(-129), "error 6"},
        {DataType::UnsignedWord, Variant(65536), "error 6"},
        {DataType::SignedWord, Variant(32768), "error 6"},
        {DataType::UnsignedLong, Variant(4294967296.0), "error 6"},
        {DataType::UnsignedLong, Variant(-1), "error 6"},
        {DataType::SignedLong, Variant(2147483648.0), "error 6"},
        {DataType::SignedLong, Variant(1e300), "error 6"},
        {DataType::Single, Variant(1e39), "error 6"},
        {DataType::Double, Variant(1e39), "48078287f49c4a1d"},
        {DataType::UnsignedByte, Variant(u"12"), "0c"},
        {DataType::UnsignedByte, Variant(u" 12 "), "0c"},
        {DataType::UnsignedByte, Variant(u"12x"), "error 13"},
        {DataType::UnsignedByte, Variant(u""), "error 13"},
        {DataType::Double, Variant(u"nan"), "error 13"},
        {DataType::UnsignedByte, Variant(), "00"},
        {DataType::UnsignedByte, Variant::null(), "error 94"},
    };
    for (const RefusedRow& row : rows)
        EXPECT_EQ(encoded(formatOf(row.type), row.value), row.result) << int(row.type);
}

TEST(RawValue, ATextIsANumberAsAWholeOrNone)
{
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"16", "10"},           {u"+16", "10"},        {u" 1.6e1 ", "10"},     {u".5E1", "05"},
        {u"3.", "03"},           {u"-0", "00"},         {u"1e-400", "00"},      {u"0,5", "error 13"},
        {u"1,6", "error 13"},    {u"&H10", "error 13"}, {u"&o20", "error 13"},  {u"$3", "error 13"},
        {u"(3)", "error 13"},    {u"3-", "error 13"},   {u"+-3", "error 13"},   {u"- 3", "error 13"},
        {u"1d1", "error 13"},    {u"1e", "error 13"},   {u".", "error 13"},     {u"0x10", "error 13"},
        {u"inf", "error 13"},    {u"-nan", "error 13"}, {u"1 2", "error 13"},   {u"1.2.3", "error 13"},
        {u"\u0663", "error 13"}, {u"1e400", "error 6"}, {u"-1e400", "error 6"},
    };
    for (const auto& [text, result] : rows)
        EXPECT_EQ(encoded(formatOf(DataType::UnsignedByte), Variant(text)), result)
            << QString::fromUtf16(text).toStdString();
}

TEST(RawValue, ARefusalTellsWhatIsTakenAndWhatWasGiven)
{
    RawFormat format = formatOf(DataType::SignedByte);
    EXPECT_EQ(refusalText(format, Variant(u"0,5")), u"it takes a number from -128 to 127, not \"0,5\"");
    format.multiplier = -0.5;
    format.offset = 1;
    EXPECT_EQ(refusalText(format, Variant(200)), u"it takes a number from -62.5 to 65, not \"200\"");
    format.formula = findFormula(QStringLiteral("Square"));
    EXPECT_EQ(refusalText(format, Variant(u"x")),
              u"it takes a number that comes from a raw value between -128 and 127, not \"x\"");
    EXPECT_EQ(refusalText(formatOf(DataType::String, 4), Variant(u"ABCDE")),
              u"it takes a text of up to 4 Latin-1 characters, not \"ABCDE\"");
    EXPECT_EQ(refusalText(formatOf(DataType::Double), Variant(QString(41, u'x'))),
              QStringLiteral("it takes a number, not \"%1...\"").arg(QString(40, u'x')));
    EXPECT_EQ(refusalText(formatOf(DataType::Double), Variant::null()), u"it takes a number, not what is no text");
}

TEST(RawValue, ScaledNumbersAreDoublesThatReadAsTheyAreMeant)
{
    RawFormat format = formatOf(DataType::SignedWord);
    format.multiplier = plainDouble(0.1F);
    format.offset = -10;
    const Variant value = decode(format, "007b");
    EXPECT_EQ(value.kind(), Kind::Double);
    EXPECT_EQ(values::toText(value), QStringLiteral("2.3"));
    EXPECT_EQ(encoded(format, value), "007b");
    EXPECT_EQ(encoded(format, Variant(u"2.3")), "007b");
    EXPECT_EQ(encoded(format, Variant(1e6)), "error 6");
}

TEST(RawValue, ASingleIsScaledAsTheDecimalItShows)
{
    RawFormat format = formatOf(DataType::Single);
    format.multiplier = 10;
    EXPECT_EQ(values::toText(decode(format, "3f8ccccd")), QStringLiteral("11")); // 1.1
}

TEST(RawValue, EveryScaledRawWordSurvivesAReadAndAWrite)
{
    RawFormat format = formatOf(DataType::UnsignedWord);
    for (const float multiplier : {0.1F, 0.01F, 0.3F, 7.0F, -0.001F}) {
        format.multiplier = plainDouble(multiplier);
        format.offset = plainDouble(3.3F);
        for (int raw = 0; raw < 65536; raw += 7) {
            std::uint8_t bytes[2];
            storeRaw(format.type, format.order, raw, bytes);
            QByteArray back;
            ASSERT_EQ(encodeRaw(format, decodeRaw(format, bytes), back), ErrorNumber::None);
            ASSERT_EQ(back, QByteArray(reinterpret_cast<char*>(bytes), 2)) << raw << " * " << multiplier;
        }
    }
}

TEST(RawValue, AChannelWithoutAMultiplierIsNotScaled)
{
    const auto channel = values::make<fake::FakeChannel>();
    channel->multiplier = 0;
    channel->dataType = std::int32_t(DataType::UnsignedWord);
    EXPECT_FALSE(rawFormat(*channel, ByteOrder::Big).isScaled());
    channel->multiplier = std::numeric_limits<float>::quiet_NaN();
    channel->offset = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(rawFormat(*channel, ByteOrder::Big).isScaled());
    channel->offset = 0.5F;
    EXPECT_TRUE(rawFormat(*channel, ByteOrder::Big).isScaled());
}

TEST(RawValue, OnlyTextTakesItsLengthFromTheChannel)
{
    const auto channel = values::make<fake::FakeChannel>();
    channel->bytes = 7;
    channel->dataType = std::int32_t(DataType::SignedLong);
    EXPECT_EQ(rawFormat(*channel, ByteOrder::Big).length, 4);
    channel->dataType = std::int32_t(DataType::String);
    EXPECT_EQ(rawFormat(*channel, ByteOrder::Big).length, 7);
    channel->bytes = -3;
    EXPECT_EQ(rawFormat(*channel, ByteOrder::Big).length, 1);
}

TEST(RawValue, AnUnknownDataTypeHasNoBytes)
{
    const auto channel = values::make<fake::FakeChannel>();
    for (const std::int32_t type : {-1, 9, std::numeric_limits<std::int32_t>::min()}) {
        channel->dataType = type;
        const RawFormat format = rawFormat(*channel, ByteOrder::Big);
        EXPECT_EQ(format.length, 0);
        EXPECT_TRUE(decodeRaw(format, nullptr).isEmpty());
        EXPECT_EQ(encoded(format, Variant(1)), "error 5");
    }
}

TEST(RawValue, StoringKeepsANumberInsideItsType)
{
    std::uint8_t byte = 0;
    storeRaw(DataType::UnsignedByte, ByteOrder::Big, 300, &byte);
    EXPECT_EQ(byte, 255);
    storeRaw(DataType::SignedByte, ByteOrder::Big, -1e9, &byte);
    EXPECT_EQ(byte, 0x80);
}

TEST(Formula, NamesDoNotCountCaseAndBlanks)
{
    ASSERT_NE(findFormula(QStringLiteral("square root")), nullptr);
    EXPECT_EQ(findFormula(QStringLiteral("SQUAREROOT")), findFormula(QStringLiteral(" Square  Root ")));
    EXPECT_NE(findFormula(QStringLiteral("Square")), findFormula(QStringLiteral("Square Root")));
}

TEST(Formula, AnEmptyOrUnknownNameOrNoneLeavesValuesAsTheyAre)
{
    for (const char* name : {"", "None", "Square R", "Square Roots", "Evapotranspiration"})
        EXPECT_EQ(findFormula(QLatin1String(name)), nullptr) << name;
}

TEST(Formula, EveryInverseLeadsBack)
{
    for (const Formula& formula : formulas())
        EXPECT_NEAR(formula.inverse(formula.forward(2.5)), 2.5, 1e-12) << formula.name;
}

TEST(Formula, AFormulaAppliesAfterTheScaling)
{
    RawFormat format = formatOf(DataType::UnsignedByte);
    format.multiplier = 2;
    format.offset = 1;
    format.formula = findFormula(QStringLiteral("Square"));
    EXPECT_EQ(values::toDouble(decode(format, "02")), 25);
    EXPECT_EQ(encoded(format, Variant(25)), "02");
    EXPECT_EQ(encoded(format, Variant(-25)), "error 6");
}

} // namespace
} // namespace zan::halyard
