#include "halyard/SimulatedMemory.h"
#include "halyard/RawValue.h"
#include "values/Convert.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zan::halyard {
namespace {

MemoryLayout layoutOfAllTypes()
{
    MemoryLayout layout;
    for (std::int32_t type = 0; type < site::DataTypeCount; ++type) {
        const auto dataType = DataType(type);
        layout.push_back({100 + 20 * type, dataType == DataType::String ? 12 : sizeOf(dataType), dataType});
    }
    return layout;
}

double valueAt(const SimulatedMemory& memory, DataType type, std::int32_t address, double seconds)
{
    RawFormat format;
    format.type = type;
    format.length = sizeOf(type);
    const QByteArray bytes = memory.read(address, format.length, seconds);
    return values::toDouble(decodeRaw(format, reinterpret_cast<const std::uint8_t*>(bytes.constData())));
}

TEST(SimulatedMemory, TheSameSeedAndTimeGiveTheSameBytes)
{
    SimulatedMemory a(7, ByteOrder::Big, {});
    SimulatedMemory b(7, ByteOrder::Big, {});
    SimulatedMemory other(8, ByteOrder::Big, {});
    for (SimulatedMemory* memory : {&a, &b, &other})
        memory->setLayout(layoutOfAllTypes());
    for (const double seconds : {0.0, 0.5, 12.25, 100000.0}) {
        EXPECT_EQ(a.read(0, 400, seconds), b.read(0, 400, seconds));
        EXPECT_NE(a.read(0, 400, seconds), other.read(0, 400, seconds));
    }
    EXPECT_NE(a.read(0, 400, 0), a.read(0, 400, 30));
}

TEST(SimulatedMemory, APartReadAloneIsAPartOfTheWhole)
{
    SimulatedMemory memory(3, ByteOrder::Little, {});
    memory.setLayout(layoutOfAllTypes());
    memory.write(203, "Z");
    const QByteArray whole = memory.read(90, 220, 42);
    for (std::int32_t from = 0; from + 3 <= 220; from += 3)
        EXPECT_EQ(memory.read(90 + from, 3, 42), whole.mid(from, 3)) << from;
}

TEST(SimulatedMemory, AWordMovesInARangeThatAPersonBelieves)
{
    SimulatedMemory memory(1, ByteOrder::Big, {});
    MemoryLayout layout;
    for (std::int32_t address = 0; address < 400; address += 2)
        layout.push_back({address, 2, DataType::UnsignedWord});
    memory.setLayout(layout);
    for (const MemoryField& field : layout) {
        double lowest = 65535;
        double highest = 0;
        for (double seconds = 0; seconds < 1200; seconds += 7) {
            const double value = valueAt(memory, field.type, field.address, seconds);
            lowest = std::min(lowest, value);
            highest = std::max(highest, value);
        }
        EXPECT_LT(highest, 4000) << field.address;
        EXPECT_GT(highest - lowest, 40) << field.address;
    }
}

TEST(SimulatedMemory, AWaveformCanBeChosenForAnAddress)
{
    SimulatedMemory::Waves waves;
    ASSERT_TRUE(Waveform::parse(QStringLiteral("sine:0.5:2.5:60"), 1, waves[160 + 80]));
    ASSERT_TRUE(Waveform::parse(QStringLiteral("const:PUMP 1: ON"), 1, waves[220]));
    ASSERT_TRUE(Waveform::parse(QStringLiteral("ramp:0:100:10"), 1, waves[5]));
    ASSERT_TRUE(Waveform::parse(QStringLiteral("square:1:0:10"), 1, waves[6]));
    ASSERT_TRUE(Waveform::parse(QStringLiteral("triangle:0:100:10"), 1, waves[7]));
    SimulatedMemory memory(1, ByteOrder::Big, waves);
    memory.setLayout(layoutOfAllTypes());
    EXPECT_EQ(valueAt(memory, DataType::Single, 240, 0), 1.5);
    EXPECT_EQ(valueAt(memory, DataType::Single, 240, 15), 2.5);
    EXPECT_EQ(valueAt(memory, DataType::Single, 240, 45), 0.5);
    EXPECT_EQ(memory.read(220, 12, 3), QByteArray("PUMP 1: ON\0\0", 12));
    EXPECT_EQ(valueAt(memory, DataType::UnsignedByte, 5, 2.5), 25);
    EXPECT_EQ(valueAt(memory, DataType::UnsignedByte, 5, 12.5), 25);
    EXPECT_EQ(valueAt(memory, DataType::UnsignedByte, 6, 4), 1);
    EXPECT_EQ(valueAt(memory, DataType::UnsignedByte, 6, 6), 0);
    EXPECT_EQ(valueAt(memory, DataType::UnsignedByte, 7, 7.5), 50);
}

TEST(SimulatedMemory, AWalkStaysInItsRangeAndDoesNotJump)
{
    Waveform wave;
    ASSERT_TRUE(Waveform::parse(QStringLiteral("walk:10:20:30"), 4, wave));
    double former = wave.at(0);
    for (double seconds = 0.1; seconds < 600; seconds += 0.1) {
        const double now = wave.at(seconds);
        EXPECT_GE(now, 10);
        EXPECT_LE(now, 20);
        EXPECT_LT(std::fabs(now - former), 0.5);
        former = now;
    }
}

TEST(SimulatedMemory, ExtremeWavesStayFinite)
{
    Waveform wave;
    ASSERT_TRUE(Waveform::parse(QStringLiteral("sine:-1.7e308:1.7e308:0.001"), 1, wave));
    for (const double seconds : {0.0, 1e-9, 1e12})
        EXPECT_TRUE(std::isfinite(wave.at(seconds)));
    EXPECT_FALSE(Waveform::parse(QStringLiteral("sine:0:1:nan"), 1, wave));
    EXPECT_FALSE(Waveform::parse(QStringLiteral("sine:0:1e999:5"), 1, wave));
}

TEST(SimulatedMemory, WhatIsWrittenSticksUntilReset)
{
    SimulatedMemory memory(1, ByteOrder::Big, {});
    const QByteArray natural = memory.read(50, 3, 100);
    memory.write(51, "W");
    EXPECT_EQ(memory.read(51, 1, 0), "W");
    EXPECT_EQ(memory.read(51, 1, 5000), "W");
    EXPECT_EQ(memory.read(50, 3, 100), natural.left(1) + "W" + natural.mid(2));
    memory.reset();
    EXPECT_EQ(memory.read(50, 3, 100), natural);
}

TEST(SimulatedMemory, AShorterFieldLiesOnTopOfALongerOneAtItsAddress)
{
    SimulatedMemory::Waves waves;
    ASSERT_TRUE(Waveform::parse(QStringLiteral("const:1"), 1, waves[0]));
    SimulatedMemory memory(1, ByteOrder::Big, waves);
    memory.setLayout({{0, 4, DataType::SignedLong}, {0, 1, DataType::UnsignedByte}});
    EXPECT_EQ(memory.read(0, 4, 0).toHex(), "01000001");
}

} // namespace
} // namespace zan::halyard
