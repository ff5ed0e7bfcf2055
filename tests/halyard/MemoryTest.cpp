#include "halyard/BlockPlan.h"
#include "halyard/MemoryImage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace zan::halyard {
namespace {

using site::DataType;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t LastAddress = std::numeric_limits<std::int32_t>::max();

std::string readImage(const MemoryImage& image, std::int32_t address, std::int32_t length)
{
    QByteArray bytes(length, '\0');
    if (!image.read(address, length, reinterpret_cast<std::uint8_t*>(bytes.data())))
        return "unknown";
    return bytes.toHex().toStdString();
}

TEST(MemoryImage, KnowsOnlyWhatWasStored)
{
    MemoryImage image;
    image.store(10, QByteArray::fromHex("010203"));
    EXPECT_EQ(readImage(image, 10, 3), "010203");
    EXPECT_EQ(readImage(image, 11, 1), "02");
    EXPECT_EQ(readImage(image, 9, 2), "unknown");
    EXPECT_EQ(readImage(image, 12, 2), "unknown");
    image.forget(11, 1);
    EXPECT_EQ(readImage(image, 10, 3), "unknown");
    EXPECT_EQ(readImage(image, 10, 1), "01");
    image.clear();
    EXPECT_EQ(readImage(image, 10, 1), "unknown");
}

TEST(MemoryImage, AStretchMayCrossPages)
{
    MemoryImage image;
    image.store(1000, QByteArray(3000, '\x07'));
    EXPECT_EQ(readImage(image, 1020, 8), "0707070707070707");
    image.store(1023, QByteArray::fromHex("0a0b"));
    EXPECT_EQ(readImage(image, 1022, 4), "070a0b07");
}

TEST(MemoryImage, ReachesTheLastAddressAndNotBeyond)
{
    MemoryImage image;
    image.store(LastAddress - 1, QByteArray::fromHex("0102"));
    EXPECT_EQ(readImage(image, LastAddress, 1), "02");
    EXPECT_EQ(readImage(image, LastAddress, 2), "unknown");
    image.store(LastAddress, QByteArray::fromHex("0909")); // leaves the memory: nothing is stored
    EXPECT_EQ(readImage(image, LastAddress, 1), "02");
    image.store(-1, QByteArray::fromHex("0909"));
    EXPECT_EQ(readImage(image, -1, 1), "unknown");
}

TEST(MemoryImage, AnOverlayLeavesUnknownBytesAlone)
{
    MemoryImage image;
    image.store(2, QByteArray::fromHex("aa"));
    image.store(1024, QByteArray::fromHex("bb"));
    QByteArray bytes(4, '\x01');
    image.overlay(0, 4, reinterpret_cast<std::uint8_t*>(bytes.data()));
    EXPECT_EQ(bytes.toHex(), "0101aa01");
}

std::vector<std::pair<std::int32_t, std::int32_t>> plan(MemoryLayout layout, const BlockLimits& limits)
{
    sortLayout(layout);
    std::vector<std::pair<std::int32_t, std::int32_t>> blocks;
    for (const MemoryBlock& block : planBlocks(layout, limits))
        blocks.emplace_back(block.address, block.length);
    return blocks;
}

MemoryField field(std::int32_t address, std::int32_t length)
{
    return {address, length, DataType::UnsignedByte};
}

TEST(BlockPlan, NeighboursAndSmallGapsShareABlock)
{
    EXPECT_THAT(plan({field(10, 2), field(0, 4), field(100, 1)}, {64, 8, 1}),
                ElementsAre(std::pair(0, 12), std::pair(100, 1)));
    EXPECT_THAT(plan({field(0, 4), field(12, 4)}, {64, 8, 1}), ElementsAre(std::pair(0, 16)));
    EXPECT_THAT(plan({field(0, 4), field(13, 4)}, {64, 8, 1}), ElementsAre(std::pair(0, 4), std::pair(13, 4)));
}

TEST(BlockPlan, OverlapsAndRepetitionsAreReadOnce)
{
    EXPECT_THAT(plan({field(0, 8), field(2, 2), field(0, 8), field(6, 4)}, {64, 0, 1}),
                ElementsAre(std::pair(0, 10)));
}

TEST(BlockPlan, AFieldThatFitsIsNeverDivided)
{
    EXPECT_THAT(plan({field(0, 6), field(6, 6), field(12, 8)}, {16, 0, 1}),
                ElementsAre(std::pair(0, 12), std::pair(12, 8)));
}

TEST(BlockPlan, AFieldLongerThanABlockTakesSeveral)
{
    EXPECT_THAT(plan({field(5, 40)}, {16, 0, 1}),
                ElementsAre(std::pair(5, 16), std::pair(21, 16), std::pair(37, 8)));
}

TEST(BlockPlan, BlocksKeepToTheAlignment)
{
    EXPECT_THAT(plan({field(3, 2), field(9, 1)}, {64, 0, 2}), ElementsAre(std::pair(2, 4), std::pair(8, 2)));
}

TEST(BlockPlan, FieldsOutsideTheMemoryAreLeftOut)
{
    EXPECT_THAT(plan({field(-4, 2), field(0, 0), field(LastAddress, 2)}, {64, 8, 1}), IsEmpty());
    EXPECT_THAT(plan({field(LastAddress, 1)}, {64, 8, 1}), ElementsAre(std::pair(LastAddress, 1)));
}

TEST(BlockPlan, NonsenseLimitsStillCoverEverything)
{
    EXPECT_THAT(plan({field(0, 4), field(4, 4)}, {0, -5, 0}), ElementsAre(std::pair(0, 8)));
}

} // namespace
} // namespace zan::halyard
