#include "values/Convert.h"
#include "support/ErrorOf.h"
#include "values/Array.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace zan::values {

using test::errorOf;

namespace {

/// An object whose default value is whatever the test gives it.
class Box : public AutomationObject
{
public:
    explicit Box(Variant content)
        : m_content(std::move(content))
    {}
    QString typeName() const override { return QStringLiteral("Box"); }
    Variant defaultValue() override { return m_content; }
    void setContent(const Variant& content) { m_content = content; }

private:
    Variant m_content;
};

/// An object without a default member.
class Bare : public AutomationObject
{
public:
    QString typeName() const override { return QStringLiteral("Bare"); }
};

/// An object whose default member fails with a number and text of its own.
class Failing : public AutomationObject
{
public:
    QString typeName() const override { return QStringLiteral("Failing"); }
    Variant defaultValue() override { throw RuntimeError(1234, QStringLiteral("the sensor is gone")); }
};

} // namespace

TEST(Convert, WholeNumbersRoundHalfToEven)
{
    EXPECT_EQ(toInteger(0.5), 0);
    EXPECT_EQ(toInteger(1.5), 2);
    EXPECT_EQ(toInteger(2.5), 2);
    EXPECT_EQ(toInteger(-0.5), 0);
    EXPECT_EQ(toInteger(-1.5), -2);
    EXPECT_EQ(toLong(2147483646.5), 2147483646);
    EXPECT_EQ(toLong(u"2.5"), 2);
    EXPECT_EQ(toLong(Currency{25000}), 2);
    EXPECT_EQ(toByte(254.5), 254);
    EXPECT_EQ(toInteger(2.5f), 2);
}

TEST(Convert, WholeNumbersOutsideTheirRangeOverflow)
{
    EXPECT_EQ(errorOf([] { toInteger(32767.5); }), 6);
    EXPECT_EQ(toInteger(32767.49), 32767);
    EXPECT_EQ(toInteger(-32768.5), -32768);
    EXPECT_EQ(errorOf([] { toInteger(-32768.51); }), 6);
    EXPECT_EQ(errorOf([] { toInteger(40000); }), 6);
    EXPECT_EQ(errorOf([] { toLong(2147483647.5); }), 6);
    EXPECT_EQ(errorOf([] { toLong(-2147483648.6); }), 6);
    EXPECT_EQ(toLong(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(errorOf([] { toByte(255.5); }), 6);
    EXPECT_EQ(errorOf([] { toByte(-1); }), 6);
    EXPECT_EQ(errorOf([] { toLong(std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_EQ(errorOf([] { toLong(std::numeric_limits<double>::infinity()); }), 6);
    EXPECT_EQ(errorOf([] { toLong(u"9999999999"); }), 6);
}

TEST(Convert, EmptyIsZeroFalseAndNoText)
{
    EXPECT_EQ(toInteger(Variant()), 0);
    EXPECT_EQ(toDouble(Variant()), 0);
    EXPECT_FALSE(toBoolean(Variant()));
    EXPECT_EQ(toText(Variant()), QString());
    EXPECT_EQ(toCurrency(Variant()).scaled, 0);
    EXPECT_EQ(toDate(Variant()).serial, 0);
    EXPECT_EQ(toByte(Variant()), 0);
}

TEST(Convert, NullIsInvalidEverywhere)
{
    const Variant null = Variant::null();
    EXPECT_EQ(errorOf([&] { toInteger(null); }), 94);
    EXPECT_EQ(errorOf([&] { toLong(null); }), 94);
    EXPECT_EQ(errorOf([&] { toBoolean(null); }), 94);
    EXPECT_EQ(errorOf([&] { toDouble(null); }), 94);
    EXPECT_EQ(errorOf([&] { toSingle(null); }), 94);
    EXPECT_EQ(errorOf([&] { toText(null); }), 94);
    EXPECT_EQ(errorOf([&] { toDate(null); }), 94);
    EXPECT_EQ(errorOf([&] { toCurrency(null); }), 94);
    EXPECT_EQ(errorOf([&] { toByte(null); }), 94);
}

TEST(Convert, NothingIsNotSetAndAnArrayMismatches)
{
    EXPECT_EQ(errorOf([] { toInteger(Variant::nothing()); }), 91);
    EXPECT_EQ(errorOf([] { toText(Variant::nothing()); }), 91);
    EXPECT_EQ(errorOf([] { toBoolean(Variant::nothing()); }), 91);
    const Variant array(Array::fromValues({1}));
    EXPECT_EQ(errorOf([&] { toInteger(array); }), 13);
    EXPECT_EQ(errorOf([&] { toText(array); }), 13);
    EXPECT_EQ(errorOf([&] { toBoolean(array); }), 13);
}

TEST(Convert, AnObjectStandsForItsDefaultValue)
{
    const Ref<Box> box = make<Box>(u"42");
    EXPECT_EQ(toLong(box), 42);
    EXPECT_EQ(toText(make<Box>(Variant(box))), QStringLiteral("42"));
    EXPECT_EQ(errorOf([] { toLong(make<Bare>()); }), 438);
}

TEST(Convert, TheErrorOfADefaultMemberKeepsItsNumberAndText)
{
    try {
        toDouble(make<Failing>());
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 1234);
        EXPECT_EQ(error.description(), QStringLiteral("the sensor is gone"));
    }
    double number = 7;
    EXPECT_EQ(int(tryToDouble(make<Failing>(), number)), 1234);
    EXPECT_EQ(number, 7);
}

TEST(Convert, ObjectsThatStandForEachOtherWithoutEndRunOutOfStack)
{
    const Ref<Box> box = make<Box>(Variant());
    box->setContent(box);
    EXPECT_EQ(errorOf([&] { toLong(box); }), 28);
    box->setContent(Variant());
}

TEST(Convert, ATextMustBeANumberAsAWhole)
{
    const auto number = [](const char16_t* text) { return numberFromText(text); };
    EXPECT_EQ(number(u"12"), 12);
    EXPECT_EQ(number(u" -1.5e3 "), -1500);
    EXPECT_EQ(number(u"\t7\r\n"), 7);
    EXPECT_EQ(number(u"1D2"), 100);
    EXPECT_EQ(number(u".5"), 0.5);
    EXPECT_EQ(number(u"5."), 5);
    EXPECT_EQ(number(u"1,234"), 1234);
    EXPECT_EQ(number(u"1,234,567.5"), 1234567.5);
    EXPECT_EQ(number(u"&hFF"), 255);
    EXPECT_EQ(number(u"&O17"), 15);
    EXPECT_EQ(number(u"$5"), 5);
    EXPECT_EQ(number(u"-$5"), -5);
    EXPECT_EQ(number(u"(5)"), -5);
    EXPECT_EQ(number(u"($1,234.50)"), -1234.5);
    EXPECT_EQ(number(u"5-"), -5);
    EXPECT_EQ(number(u"- 5"), -5);
    for (const char16_t* text : {u"",     u" ",        u"abc",      u"5 mm",  u"1e",
                                 u"1e+",  u"--5",      u"5-5",      u"(5",    u"5)",
                                 u"(-5)", u"1.2.3",    u",5",       u"1.5,0", u"&h",
                                 u"&hG",  u"&h1.5",    u"1 2",      u"$",     u"$$5",
                                 u".",    u"True",     u"1/2/2003", u"1e5x",  u"&HFFFFFFFFFFFFFFFFF",
                                 u"+-5",  u"Infinity", u"nan"})
        EXPECT_FALSE(number(text)) << QString::fromUtf16(text).toStdString();
}

TEST(Convert, ATextThatIsNoNumberMismatches)
{
    EXPECT_EQ(errorOf([] { toInteger(u"abc"); }), 13);
    EXPECT_EQ(errorOf([] { toDouble(u""); }), 13);
    EXPECT_EQ(errorOf([] { toSingle(u"5 mm"); }), 13);
    EXPECT_EQ(errorOf([] { toCurrency(u"abc"); }), 13);
    EXPECT_EQ(errorOf([] { toDate(u"abc"); }), 13);
    EXPECT_EQ(errorOf([] { toBoolean(u"abc"); }), 13);
    EXPECT_EQ(errorOf([] { toDouble(u"1e999"); }), 6);
}

TEST(Convert, HexadecimalTextFillsTheBitsOfAWholeNumber)
{
    EXPECT_EQ(toInteger(u"&HFFFF"), -1);
    EXPECT_EQ(toLong(u"&HFFFF"), 65535);
    EXPECT_EQ(toLong(u"&HFFFFFFFF"), -1);
    EXPECT_EQ(errorOf([] { toInteger(u"&H10000"); }), 6);
    EXPECT_EQ(errorOf([] { toLong(u"&H100000000"); }), 6);
    EXPECT_EQ(toByte(u"&HFF"), 255);
}

TEST(Convert, BooleansAreMinusOneAndZeroAndAllBitsInAByte)
{
    EXPECT_EQ(toInteger(true), -1);
    EXPECT_EQ(toLong(false), 0);
    EXPECT_EQ(toDouble(true), -1);
    EXPECT_EQ(toByte(true), 255);
    EXPECT_EQ(toCurrency(true).scaled, -10000);
    EXPECT_EQ(toText(true), QStringLiteral("True"));
    EXPECT_EQ(toText(false), QStringLiteral("False"));
}

TEST(Convert, AnythingButZeroIsTrue)
{
    EXPECT_TRUE(toBoolean(0.1));
    EXPECT_TRUE(toBoolean(-5));
    EXPECT_FALSE(toBoolean(0));
    EXPECT_FALSE(toBoolean(-0.0));
    EXPECT_TRUE(toBoolean(Currency{1}));
    for (const char16_t* text : {u"True", u"TRUE", u"true", u"#TRUE#", u"-1", u"0.1"})
        EXPECT_TRUE(toBoolean(text)) << QString::fromUtf16(text).toStdString();
    for (const char16_t* text : {u"False", u"FALSE", u"#FALSE#", u"0", u"0.0"})
        EXPECT_FALSE(toBoolean(text)) << QString::fromUtf16(text).toStdString();
}

TEST(Convert, CurrencyKeepsFourDecimalsExactly)
{
    EXPECT_EQ(toCurrency(u"922337203685477.5807").scaled, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(toCurrency(u"-922337203685477.5807").scaled, -std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(toCurrency(u"1.23456").scaled, 12346);
    EXPECT_EQ(toCurrency(u"1.23445").scaled, 12344);
    EXPECT_EQ(toCurrency(u"1.23455").scaled, 12346);
    EXPECT_EQ(toCurrency(u"-1.23445").scaled, -12344);
    EXPECT_EQ(toCurrency(u"1.5e2").scaled, 1500000);
    EXPECT_EQ(toCurrency(u"1e-9").scaled, 0);
    EXPECT_EQ(toCurrency(u"1e-99").scaled, 0);
    EXPECT_EQ(toCurrency(1.5).scaled, 15000);
    EXPECT_EQ(toCurrency(2.5f).scaled, 25000);
    EXPECT_EQ(errorOf([] { toCurrency(1e15); }), 6);
    EXPECT_EQ(errorOf([] { toCurrency(u"922337203685478"); }), 6);
    EXPECT_EQ(errorOf([] { toCurrency(u"1e99"); }), 6);
    EXPECT_EQ(errorOf([] { toCurrency(std::numeric_limits<double>::quiet_NaN()); }), 6);
}

TEST(Convert, ASingleOverflowsBeyondItsRange)
{
    EXPECT_EQ(toSingle(1.5), 1.5f);
    EXPECT_EQ(toSingle(u"0.1"), 0.1f);
    EXPECT_EQ(errorOf([] { toSingle(1e39); }), 6);
    EXPECT_EQ(errorOf([] { toSingle(-3.5e38); }), 6);
    EXPECT_EQ(toSingle(3.4028234663852886e38), std::numeric_limits<float>::max());
    EXPECT_EQ(toSingle(1e-60), 0.0f);
}

TEST(Convert, DatesComeFromTextAndFromSerialNumbers)
{
    EXPECT_EQ(toDate(u"1/1/2000").serial, 36526);
    EXPECT_EQ(toDate(36526.5).serial, 36526.5);
    EXPECT_EQ(toDate(u"36526").serial, 36526);
    EXPECT_EQ(toDouble(Date{36526.5}), 36526.5);
    EXPECT_EQ(errorOf([] { toDate(2958466); }), 6);
    EXPECT_EQ(errorOf([] { toDate(-657435); }), 6);
    EXPECT_EQ(errorOf([] { toDate(std::numeric_limits<double>::infinity()); }), 6);
}

TEST(Convert, TextOfEveryKind)
{
    EXPECT_EQ(toText(std::int16_t(-5)), QStringLiteral("-5"));
    EXPECT_EQ(toText(2147483647), QStringLiteral("2147483647"));
    EXPECT_EQ(toText(std::uint8_t(7)), QStringLiteral("7"));
    EXPECT_EQ(toText(0.1f), QStringLiteral("0.1"));
    EXPECT_EQ(toText(1e15), QStringLiteral("1E+15"));
    EXPECT_EQ(toText(Currency{5000}), QStringLiteral("0.5"));
    EXPECT_EQ(toText(Date{36526}), QStringLiteral("1/1/2000"));
    EXPECT_EQ(toText(ErrorValue{2042}), QStringLiteral("Error 2042"));
    EXPECT_EQ(errorOf([] { toDouble(ErrorValue{2042}); }), 13);
}

TEST(Convert, AFailedConversionLeavesTheResultUntouched)
{
    std::int32_t whole = 7;
    EXPECT_EQ(tryToLong(u"abc", whole), ErrorNumber::TypeMismatch);
    EXPECT_EQ(tryToLong(1e20, whole), ErrorNumber::Overflow);
    EXPECT_EQ(whole, 7);
    QString text = QStringLiteral("kept");
    EXPECT_EQ(tryToText(Variant::null(), text), ErrorNumber::InvalidNull);
    EXPECT_EQ(text, QStringLiteral("kept"));
}

TEST(Convert, WhatTextMakesOfANumberReadsBackToThatNumber)
{
    for (int value = -40000; value <= 40000; value += 7) {
        ASSERT_EQ(toLong(toText(value)), value);
        ASSERT_EQ(val(toText(value / 8.0)), value / 8.0);
        ASSERT_EQ(toCurrency(toText(Currency{value})).scaled, value);
    }
}

} // namespace zan::values
