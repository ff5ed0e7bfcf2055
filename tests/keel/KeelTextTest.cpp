#include "keel/KeelText.h"

#include <gtest/gtest.h>

namespace zan::keel {

namespace {

/// A file of rows alone.
KeelText rows(const QByteArray& lines)
{
    return parseKeel("KEEL 1\n" + lines);
}

/// "LINE:COLUMN" of what is wrong; empty for a file that is understood.
std::string wrongAt(const QByteArray& file)
{
    const KeelText read = parseKeel(file);
    return read.error ? std::to_string(read.error->line) + ":" + std::to_string(read.error->column) : std::string();
}

} // namespace

TEST(KeelText, ARowIsPlaceLabelUnitsAddressTypeFormatAndScaling)
{
    const KeelText read = rows(R"(4, 12, "Level ", "m", 16, "Unsigned Word", "0.00", 0.01, -1.5, 2)");
    ASSERT_FALSE(read.error) << read.error->message.toStdString();
    ASSERT_EQ(read.fields.size(), 1U);
    const KeelField& field = read.fields[0];
    EXPECT_EQ(field.line, u"4");
    EXPECT_EQ(field.column, u"12");
    EXPECT_EQ(field.label, u"Level ");
    EXPECT_EQ(field.units, u"m");
    EXPECT_EQ(field.address, 16);
    EXPECT_EQ(field.type, site::DataType::UnsignedWord);
    EXPECT_EQ(field.format, u"0.00");
    EXPECT_EQ(field.multiplier, 0.01F);
    EXPECT_EQ(field.offset, -1.5F);
    EXPECT_EQ(field.bytes, std::int16_t(2));
}

TEST(KeelText, WhatIsLeftOutKeepsItsDefault)
{
    for (const char* row : {"3,5,Weir", "3,5,Weir,,,", "3 , 5 , Weir , , , , ,,,", "\t3,\t5,\t\"Weir\"   \t"}) {
        const KeelText read = rows(row);
        ASSERT_EQ(read.fields.size(), 1U) << row;
        EXPECT_EQ(read.fields[0].line, u"3") << row;
        EXPECT_EQ(read.fields[0].label, u"Weir") << row;
        EXPECT_EQ(read.fields[0].units, QString()) << row;
        EXPECT_EQ(read.fields[0].address, KeelField::NoAddress) << row;
        EXPECT_EQ(read.fields[0].multiplier, 1.0F) << row;
        EXPECT_FALSE(read.fields[0].bytes) << row;
    }
    const KeelText placeless = rows(",,\"Weir\"");
    ASSERT_EQ(placeless.fields.size(), 1U);
    EXPECT_EQ(placeless.fields[0].line, QString());
    EXPECT_EQ(placeless.fields[0].column, QString());
}

TEST(KeelText, QuotesKeepBlanksAndCommasAndAreWrittenTwiceInside)
{
    const KeelText read = rows("0,0,\"  a, \"\"b\"\"\tc \",\"m\"");
    ASSERT_EQ(read.fields.size(), 1U);
    EXPECT_EQ(read.fields[0].label, u"  a, \"b\" c ") << "a tab is a blank";
    EXPECT_EQ(read.fields[0].units, u"m");
}

TEST(KeelText, ATypeIsItsNumberOrItsNameInAnyCase)
{
    EXPECT_EQ(rows("0,0,a,,1,8").fields.at(0).type, site::DataType::Double);
    EXPECT_EQ(rows("0,0,a,,1,single  prec fp").fields.at(0).type, site::DataType::Single);
    EXPECT_EQ(wrongAt("KEEL\n0,0,a,,1,9"), "2:10");
}

TEST(KeelText, AnAddressMayBeHexadecimal)
{
    EXPECT_EQ(rows("0,0,a,,&h1F").fields.at(0).address, 31);
    EXPECT_EQ(rows("0,0,a,,-1").fields.at(0).address, -1);
}

TEST(KeelText, LinesEndInAnyMannerAndTheFileWhereAnEditorOfTheTimeEndedIt)
{
    EXPECT_EQ(parseKeel("KEEL\r\n0,0,a\r\n1,0,b").fields.size(), 2U);
    EXPECT_EQ(parseKeel("KEEL\r0,0,a\r\r1,0,b\r").fields.size(), 2U);
    EXPECT_EQ(parseKeel("KEEL\n0,0,a\n\x1a\xff\xff garbage").fields.size(), 1U);
    EXPECT_EQ(wrongAt("KEEL\r\n\r\n0;0"), "3:1") << "both characters are one end";
}

TEST(KeelText, RemarksAndEmptyLinesSayNothing)
{
    EXPECT_EQ(parseKeel("; of 1989\n\n  KEEL 1 \n \t\n;0,0,a\n  ; b\n0,0,c").fields.size(), 1U);
}

TEST(KeelText, TheCodePageIs437UntilTheFileNamesAnother)
{
    EXPECT_EQ(parseKeel("KEEL\n0,0,\x9b").fields.at(0).label, u"¢");
    EXPECT_EQ(parseKeel("KEEL\ncodepage 850\n0,0,\x9b").fields.at(0).label, u"ø");
    EXPECT_EQ(parseKeel("KEEL\nCODEPAGE UTF-8\n0,0,\xc2\xb0").fields.at(0).label, u"°");
    EXPECT_EQ(parseKeel("\xef\xbb\xbfKEEL\n0,0,\xc2\xb0").fields.at(0).label, u"°") << "by its first bytes";
    EXPECT_EQ(wrongAt("KEEL\n0,0,a\nCODEPAGE 850"), "3:1") << "rows were read in another by then";
    EXPECT_EQ(wrongAt("KEEL\nCODEPAGE 1252"), "2:10");
}

TEST(KeelText, EveryErrorNamesItsLineAndItsColumn)
{
    struct Row
    {
        const char* file;
        const char* place;
    };
    const Row table[] = {
        {"", "1:1"},
        {"\n\n", "2:1"},
        {"<SCHEME/>", "1:1"},
        {"  KEEL 2", "1:8"},
        {"KEEL\n  WINDOW a", "2:3"},
        {"KEEL\n0,x,a", "2:3"},
        {"KEEL\n0,1e,a", "2:3"},
        {"KEEL\n0,nan,a", "2:3"},
        {"KEEL\n0,0,\"a", "2:5"},
        {"KEEL\n0,0,\"a\" b", "2:9"},
        {"KEEL\n0,0,a,m,12.5", "2:9"},
        {"KEEL\n0,0,a,m,2147483648", "2:9"},
        {"KEEL\n0,0,a,m,1,0,0,1e39", "2:15"},
        {"KEEL\n0,0,a,m,1,0,0,1,inf", "2:17"},
        {"KEEL\n0,0,a,m,1,0,0,1,0,0", "2:19"},
        {"KEEL\n0,0,a,m,1,0,0,1,0,2,more", "2:21"},
        {"KEEL\nCODEPAGE UTF-8\n0,0,\"\xc2\xb0\xff\"", "3:7"},
    };
    for (const Row& row : table)
        EXPECT_EQ(wrongAt(row.file), row.place) << row.file;
    const KeelError error{QStringLiteral("Wrong."), 3, 7};
    EXPECT_EQ(error.text(QStringLiteral("A.KEL")), u"A.KEL:3:7: Wrong.");
}

TEST(KeelText, APositionKeepsTheTextThatTheFileWrites)
{
    EXPECT_EQ(rows("1e60,+2.50,a").fields.at(0).line, u"1e60");
    EXPECT_EQ(rows("1e60,+2.50,a").fields.at(0).column, u"+2.50");
}

TEST(KeelText, HostileSizesAreRefused)
{
    EXPECT_EQ(wrongAt(QByteArray(LargestKeelFile + 1, '\n')), "1:1");
    EXPECT_EQ(wrongAt("KEEL\n0,0,\"" + QByteArray(LongestKeelText + 1, 'a') + "\""), "2:5");
    EXPECT_EQ(rows("0,0,\"" + QByteArray(LongestKeelText, 'a') + "\"").fields.size(), 1U);
    const QByteArray most = QByteArray("0,0,a\n").repeated(MostKeelFields);
    EXPECT_EQ(rows(most).fields.size(), MostKeelFields);
    EXPECT_EQ(wrongAt("KEEL\n" + most + "0,0,a"), std::to_string(MostKeelFields + 2) + ":1");
    EXPECT_FALSE(rows("0,0,a" + QByteArray(100'000, ',')).error) << "empty fields are none";
}

} // namespace zan::keel
