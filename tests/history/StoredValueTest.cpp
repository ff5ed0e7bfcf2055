#include "StoreFixture.h"

#include <cmath>
#include <limits>
#include <random>

namespace zan::history {

namespace {

QByteArray stored(const Variant& value)
{
    QByteArray bytes;
    putValue(bytes, value);
    return bytes;
}

bool isSame(const Variant& left, const Variant& right)
{
    return left.kind() == right.kind() && stored(left) == stored(right);
}

} // namespace

TEST(StoredValue, EveryPlainKindComesBackAsItWas)
{
    const Variant values[] = {Variant(),
                              Variant::null(),
                              Variant(std::int16_t(-32768)),
                              Variant(std::int32_t(-2147483647)),
                              Variant(1.5F),
                              Variant(-1e300),
                              Variant(values::Currency{-12345}),
                              Variant(values::Date{45000.25}),
                              Variant(QStringLiteral("Über 5 m")),
                              Variant(QString()),
                              Variant(true),
                              Variant(false),
                              Variant(std::uint8_t(255))};
    for (const Variant& value : values) {
        const QByteArray bytes = stored(value);
        ByteReader reader(bytes);
        EXPECT_EQ(takeValue(reader).size(), bytes.size());
        EXPECT_TRUE(isSame(valueOf(bytes), value)) << int(value.kind());
    }
    EXPECT_EQ(valueOf(stored(Variant(QStringLiteral("Über 5 m")))).text(), QStringLiteral("Über 5 m"));
    EXPECT_EQ(valueOf(stored(Variant(std::int16_t(-5)))).integer(), -5);
}

TEST(StoredValue, WhatIsNoPlainValueIsStoredAsEmpty)
{
    EXPECT_TRUE(valueOf(stored(Variant::nothing())).isEmpty());
    EXPECT_TRUE(valueOf(stored(Variant(values::ErrorValue{13}))).isEmpty());
}

TEST(StoredValue, TextEmptyNullAndWhatIsNotFiniteAreNoNumbers)
{
    double number = 7;
    for (const Variant& value : {Variant(), Variant::null(), Variant(QStringLiteral("12")),
                                 Variant(std::numeric_limits<double>::infinity()), Variant(std::nan(""))})
        EXPECT_FALSE(numberOf(stored(value), number));
    EXPECT_TRUE(numberOf(stored(Variant(true)), number));
    EXPECT_EQ(number, -1);
    EXPECT_TRUE(numberOf(stored(Variant(values::Currency{-12500})), number));
    EXPECT_EQ(number, -1.25);
}

TEST(StoredValue, BytesThatAreNoneAreRefusedAndNeverReadPastTheirEnd)
{
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes(int(random() % 40), '\0');
        for (char& byte : bytes)
            byte = char(random() % 3 ? random() % 14 : random());
        ByteReader reader(bytes);
        while (!reader.isAtEnd()) {
            const QByteArrayView value = takeValue(reader);
            double number = 0;
            valueOf(value);
            numberOf(value, number);
        }
        std::vector<StoredRecord> records;
        if (takeRecords(bytes, Noon, records)) {
            ASSERT_FALSE(records.empty());
            ASSERT_TRUE(std::is_sorted(records.begin(), records.end(),
                                       [](const auto& left, const auto& right) { return left.time < right.time; }));
        }
        std::vector<Figures> figures;
        if (takeFigures(bytes, Noon, Levels[0], figures)) {
            for (const Figures& one : figures)
                ASSERT_TRUE(one.count > 0 && one.first >= one.start && one.last < one.start + 60'000);
        }
        Tail tail;
        const bool isTaken = tail.add(1, Noon, bytes);
        EXPECT_EQ(tail.count(), isTaken ? 1U : 0U);
    }
}

} // namespace zan::history
