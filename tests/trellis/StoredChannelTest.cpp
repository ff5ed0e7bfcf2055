#include "SchemeFolder.h"

#include "binding/MemberTable.h"
#include "trellis/Elements.h"
#include "values/Convert.h"

#include <cmath>
#include <limits>

namespace zan::trellis {

namespace {

/// A channel with these children, in a document of its own.
Ref<StoredChannel> channelOf(const QByteArray& children)
{
    const auto parsed = document::parseXml("<WINDOW><CHANNEL>" + children + "</CHANNEL></WINDOW>");
    EXPECT_TRUE(parsed) << parsed.error.message.toStdString();
    return values::make<StoredChannel>(parsed.document.documentElement().firstChild(),
                                       values::make<ObjectRegistry>());
}

struct NumberRow
{
    const char* text;
    std::int32_t address;
    std::int32_t dataType;
    std::int16_t bytes;
    float multiplier;
};

const NumberRow NumberRows[] = {
    {"7", 7, 7, 7, 7},
    {" 5 km", 5, 5, 5, 5},
    {"abc", 0, 0, 0, 0},
    {"", 0, 0, 0, 0},
    {"-3", -3, 0, -3, -3},
    {"2.5", 2, 2, 2, 2.5F},
    {"3.5", 4, 4, 4, 3.5F},
    {"9", 9, 0, 9, 9},
    {"1e3", 1000, 0, 1000, 1000},
    {"&amp;hFF", 255, 0, 255, 255},
    {"99999999999", 2147483647, 0, 32767, 1e11F},
    {"-99999999999", -2147483647 - 1, 0, -32768, -1e11F},
    {"1e300", 2147483647, 0, 32767, std::numeric_limits<float>::max()},
    {"1e9999", 2147483647, 0, 32767, std::numeric_limits<float>::max()},
};

} // namespace

TEST(StoredChannel, NumbersAreTheLeadingNumberKeptInsideTheirRange)
{
    for (const NumberRow& row : NumberRows) {
        const QByteArray text = row.text;
        const auto channel =
            channelOf("<BASEADDRESS>" + text + "</BASEADDRESS><DATATYPE>" + text + "</DATATYPE><BYTES>" + text +
                      "</BYTES><MULTIPLIER>" + text + "</MULTIPLIER><OFFSET>" + text + "</OFFSET>");
        EXPECT_EQ(channel->BaseAddress(), row.address) << row.text;
        EXPECT_EQ(channel->DataType(), row.dataType) << row.text;
        EXPECT_EQ(channel->Bytes(), row.bytes) << row.text;
        EXPECT_EQ(channel->Multiplier(), row.multiplier) << row.text;
        EXPECT_EQ(channel->Offset(), row.multiplier) << row.text;
    }
}

TEST(StoredChannel, WhatIsMissingHasAUsableDefault)
{
    const auto channel = channelOf({});
    EXPECT_EQ(channel->BaseAddress(), 0);
    EXPECT_EQ(channel->DataType(), 0);
    EXPECT_EQ(channel->Multiplier(), 1.0F);
    EXPECT_EQ(channel->Offset(), 0.0F);
    EXPECT_FALSE(channel->CDT());
    EXPECT_FALSE(channel->Visible());
    EXPECT_EQ(channel->Label() + channel->Units() + channel->Format() + channel->Formula() + channel->Key(),
              QString());
    EXPECT_TRUE(channel->Value().isEmpty());
    EXPECT_EQ(channel->XMLNode().childElementCount(), 0U) << "reading writes nothing";
}

TEST(StoredChannel, MissingBytesAreTheSizeOfTheDataType)
{
    const std::int16_t sizes[] = {1, 1, 2, 2, 4, 4, 0, 4, 8};
    for (int type = 0; type < site::DataTypeCount; ++type) {
        const auto channel = channelOf("<DATATYPE>" + QByteArray::number(type) + "</DATATYPE>");
        EXPECT_EQ(channel->Bytes(), sizes[type]) << type;
    }
}

TEST(StoredChannel, ABooleanIsTrueWhenItsNumberIsNotZero)
{
    for (const auto& [text, expected] : std::initializer_list<std::pair<const char*, bool>>{
             {"-1", true}, {"1", true}, {"0.5", true}, {"0", false}, {"", false}, {"True", false}}) {
        const QByteArray bytes = text;
        const auto channel = channelOf("<CDT>" + bytes + "</CDT><VISIBLE>" + bytes + "</VISIBLE>");
        EXPECT_EQ(channel->CDT(), expected) << text;
        EXPECT_EQ(channel->Visible(), expected) << text;
    }
}

TEST(StoredChannel, WhatIsWrittenStandsInTheTreeAndIsReadBack)
{
    const auto channel = channelOf({});
    channel->setBaseAddress(-5);
    channel->setCDT(true);
    channel->setDataType(7);
    channel->setBytes(4);
    channel->setMultiplier(0.1F);
    channel->setOffset(-0.5F);
    channel->setFormula(QStringLiteral("F"));
    channel->setLabel(QStringLiteral("L"));
    channel->setFormat(QStringLiteral("0.0"));
    channel->setUnits(QStringLiteral("<m>"));
    channel->setVisible(true);
    EXPECT_EQ(channel->XMLNode().xml().toStdString(),
              "<CHANNEL><BASEADDRESS>-5</BASEADDRESS><CDT>-1</CDT><DATATYPE>7</DATATYPE><BYTES>4</BYTES>"
              "<MULTIPLIER>0.1</MULTIPLIER><OFFSET>-0.5</OFFSET><FORMULA>F</FORMULA><LABEL>L</LABEL>"
              "<FORMAT>0.0</FORMAT><UNITS>&lt;m&gt;</UNITS><VISIBLE>-1</VISIBLE></CHANNEL>");
    EXPECT_EQ(channel->Multiplier(), 0.1F);
    EXPECT_EQ(channel->Offset(), -0.5F);
    EXPECT_EQ(channel->Bytes(), 4);
}

TEST(StoredChannel, ZeroAndEmptyAreWrittenOverWhatStoodThere)
{
    const auto channel = channelOf("<CDT>-1</CDT><MULTIPLIER>2</MULTIPLIER><LABEL>L</LABEL><LABEL>hidden</LABEL>");
    channel->setCDT(false);
    channel->setMultiplier(0);
    channel->setLabel({});
    EXPECT_FALSE(channel->CDT());
    EXPECT_EQ(channel->Multiplier(), 0.0F);
    EXPECT_EQ(channel->Label(), QString());
    const auto bare = channelOf({});
    bare->setMultiplier(0);
    EXPECT_EQ(bare->Multiplier(), 0.0F) << "absence would mean 1";
}

TEST(StoredChannel, EveryFloatSurvivesItsText)
{
    const auto channel = channelOf({});
    for (const float value : {0.1F, 1.0F / 3, 16777217.0F, std::numeric_limits<float>::min(), 1e-45F,
                              std::numeric_limits<float>::max(), -0.000123F}) {
        channel->setMultiplier(value);
        EXPECT_EQ(channel->Multiplier(), value);
    }
    channel->setMultiplier(std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isfinite(channel->Multiplier()));
}

TEST(StoredChannel, ADataTypeThatDoesNotExistIsRefused)
{
    const auto channel = channelOf("<DATATYPE>3</DATATYPE>");
    for (const int type : {-1, 9, 1000})
        EXPECT_EQ(errorOf([&] { channel->setDataType(type); }), 380);
    EXPECT_EQ(channel->DataType(), 3);
}

TEST(StoredChannel, AChangeOfTheNodeByAnybodyIsSeenAtOnce)
{
    const auto channel = channelOf("<LABEL>Old</LABEL>");
    EXPECT_EQ(channel->Label().toStdString(), "Old");
    Node node = channel->XMLNode();
    node.child(element::Label).setText(QStringLiteral("New"));
    node.appendChild(node.createElement(element::Units, QStringLiteral("m")));
    EXPECT_EQ(channel->Label().toStdString(), "New");
    EXPECT_EQ(channel->Units().toStdString(), "m");
    node.removeChild(node.child(element::Label));
    EXPECT_EQ(channel->Label(), QString());
}

TEST(StoredChannel, ValueAndUseCountAreNeverStored)
{
    const auto channel = channelOf("<KEY>K</KEY>");
    channel->setValue(Variant(3.5));
    channel->setUseCount(2);
    EXPECT_EQ(channel->Value().real(), 3.5);
    EXPECT_EQ(channel->UseCount(), 2);
    EXPECT_EQ(channel->XMLNode().xml().toStdString(), "<CHANNEL><KEY>K</KEY></CHANNEL>");
}

class StoredChannelInScheme : public SchemeFolder
{};

TEST_F(StoredChannelInScheme, OnlyAWriteThatChangesSomethingMarksTheScheme)
{
    const auto scheme = opened("<SCHEME><WINDOW><KEY>A</KEY><CHANNEL><LABEL>L</LABEL></CHANNEL></WINDOW></SCHEME>");
    const auto channel = scheme->Windows()->Item(Variant(1))->Item(Variant(1));
    channel->setLabel(QStringLiteral("L"));
    channel->setUnits({});
    channel->setMultiplier(1);
    channel->setVisible(false);
    channel->setDataType(0);
    channel->setValue(Variant(1));
    channel->setUseCount(1);
    EXPECT_FALSE(scheme->isChanged());
    channel->setLabel({});
    EXPECT_TRUE(scheme->isChanged()) << "taking a text away is a change too";
}

} // namespace zan::trellis
