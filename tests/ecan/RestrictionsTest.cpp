#include "ecan/Restrictions.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace zan;
using ecan::ECANRecord;
using ecan::Fetched;
using ecan::Restrictions;

namespace {

std::shared_ptr<const Restrictions> read(const QByteArray& body, const QByteArray& type = {})
{
    return Restrictions::read(Fetched{body, type});
}

/// The only record of a document whose text is this inside its root.
ECANRecord record(const QByteArray& content)
{
    const auto document = read("<Restrictions>" + content + "</Restrictions>");
    EXPECT_TRUE(document && document->records().size() == 1) << content.constData();
    return document && !document->records().empty() ? document->records().front() : ECANRecord();
}

} // namespace

TEST(Restrictions, ARecordHasSiteBandFlowAllocationAndTime)
{
    const ECANRecord read =
        record("<Restriction><Site>66401</Site><Band>2</Band><AssessedFlow>12.5</AssessedFlow>"
               "<Allocation>75</Allocation><LastUpdate>2024-02-03 08:00</LastUpdate></Restriction>");
    EXPECT_TRUE(read.isOf(u"66401"));
    EXPECT_FALSE(read.isOf(u"66402"));
    EXPECT_EQ(read.band(), 2);
    EXPECT_EQ(read.flow(), 12.5);
    EXPECT_EQ(read.allocation(), 75);
    EXPECT_EQ(read.LastUpdate(), u"2024-02-03 08:00");
}

TEST(Restrictions, OrderLetterCaseAndNamespacesDoNotMatter)
{
    const auto document =
        read("<e:RESTRICTIONS xmlns:e='urn:e'><list><e:restriction><e:ALLOCATION> 50 % </e:ALLOCATION>"
             "<e:band>1</e:band></e:restriction></list></e:RESTRICTIONS>");
    ASSERT_TRUE(document);
    ASSERT_EQ(document->records().size(), 1u);
    EXPECT_EQ(document->records().front().band(), 1);
    EXPECT_EQ(document->records().front().allocation(), 50);
}

TEST(Restrictions, AValueMayStandInAnAttribute)
{
    const ECANRecord read = record("<Restriction band='3' e:Site='A 7'><Allocation>10</Allocation></Restriction>");
    EXPECT_EQ(read.band(), 3);
    EXPECT_TRUE(read.isOf(u"a 7"));
}

TEST(Restrictions, WhatIsMissingIsNoFigure)
{
    const ECANRecord read = record("<Restriction/>");
    EXPECT_FALSE(read.band() || read.flow() || read.allocation());
    EXPECT_EQ(read.LastUpdate(), u"");
    EXPECT_TRUE(read.isOf(u"66401")) << "a record that names no site is of the one that was asked for";
}

TEST(Restrictions, WhatIsNoNumberIsNoFigure)
{
    for (const char* text : {"x", "", "nan", "inf", "1e999", "12 l/s", "0x10", "1,5"}) {
        const QByteArray value = text;
        const ECANRecord read = record("<Restriction><AssessedFlow>" + value + "</AssessedFlow><Allocation>" +
                                       value + "</Allocation><Band>" + value + "</Band></Restriction>");
        EXPECT_FALSE(read.band() || read.flow() || read.allocation()) << text;
    }
    EXPECT_FALSE(record("<Restriction><Band>1.5</Band></Restriction>").band());
    EXPECT_FALSE(record("<Restriction><Band>99999</Band></Restriction>").band());
}

TEST(Restrictions, TheDocumentMaySayForAllWhatARecordDoesNot)
{
    const ECANRecord read = record("<Site>7</Site><AssessedFlow>3</AssessedFlow><LastUpdate>now</LastUpdate>"
                                   "<Restriction><AssessedFlow>4</AssessedFlow></Restriction>");
    EXPECT_TRUE(read.isOf(u"7"));
    EXPECT_FALSE(read.isOf(u"8"));
    EXPECT_EQ(read.flow(), 4);
    EXPECT_EQ(read.LastUpdate(), u"now");
}

TEST(Restrictions, SitesThatAreNumbersAreComparedAsNumbers)
{
    EXPECT_TRUE(record("<Restriction><Site>007</Site></Restriction>").isOf(u"7"));
    EXPECT_FALSE(record("<Restriction><Site>x7</Site></Restriction>").isOf(u"7"));
}

TEST(Restrictions, ADocumentWithoutRecordsIsOne)
{
    const auto document = read("<Restrictions/>");
    ASSERT_TRUE(document);
    EXPECT_TRUE(document->records().empty());
}

TEST(Restrictions, WhatIsNoRestrictionsDocumentIsRefused)
{
    for (const char* text :
         {"", " ", "<Restrictions>", "<html><body>Out of order</body></html>", "<Restriction/>", "no XML at all",
          "<!DOCTYPE Restrictions><Restrictions/>",
          "<!DOCTYPE a [<!ENTITY b 'c'>]><Restrictions><Restriction><Site>&b;</Site></Restriction></Restrictions>",
          "<Restrictions>&b;</Restrictions>", "{\"Restrictions\": []}"})
        EXPECT_FALSE(read(text)) << text;
}

TEST(Restrictions, ADeepOrEndlessDocumentIsRefusedOrCut)
{
    EXPECT_FALSE(read("<Restrictions>" + QByteArray("<a>").repeated(5000) + QByteArray("</a>").repeated(5000) +
                      "</Restrictions>"));
    EXPECT_FALSE(read("<Restrictions>" + QByteArray("<a/>").repeated(200'000) + "</Restrictions>"));
    const auto many = read("<Restrictions>" + QByteArray("<Restriction/>").repeated(5000) + "</Restrictions>");
    ASSERT_TRUE(many);
    EXPECT_EQ(many->records().size(), Restrictions::MostRecords);
}

TEST(Restrictions, ATextOfAbsurdLengthIsNoTimeAndNoSite)
{
    const QByteArray absurd(10'000, 'x');
    const ECANRecord read = record("<Restriction><LastUpdate>" + absurd + "</LastUpdate></Restriction>");
    EXPECT_EQ(read.LastUpdate(), u"");
}

// Charsets -----------------------------------------------------------------------------------------------------

TEST(Restrictions, TheHeaderSaysTheCharset)
{
    const QByteArray latin = "<Restrictions><Restriction LastUpdate='M\xE4rz'/></Restrictions>";
    const auto document = read(latin, "text/xml; charset=\"ISO-8859-1\"");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->records().front().LastUpdate(), u"März");
    const QByteArray declared = "<?xml version='1.0' encoding='utf-8'?>" + latin;
    EXPECT_TRUE(read(declared, "text/xml; charset=windows-1252")) << "the header counts more than the declaration";
}

TEST(Restrictions, WithoutAHeaderTheDeclarationSaysTheCharset)
{
    const auto document = read("<?xml version='1.0' encoding='windows-1252'?><Restrictions><Restriction "
                               "LastUpdate='M\xE4rz'/></Restrictions>",
                               "text/xml");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->records().front().LastUpdate(), u"März");
}

TEST(Restrictions, AMarkCountsMoreThanTheHeader)
{
    QByteArray text("\xFF\xFE", 2);
    for (const char character : QByteArray("<Restrictions/>"))
        text.append(character).append('\0');
    EXPECT_TRUE(read(text, "text/xml; charset=iso-8859-1"));
}

TEST(Restrictions, ATextInAnotherCharsetThanItSaysIsRefused)
{
    const QByteArray latin = "<Restrictions><Restriction LastUpdate='M\xE4rz'/></Restrictions>";
    EXPECT_FALSE(read(latin));
    EXPECT_FALSE(read(latin, "text/xml; charset=utf-8"));
    EXPECT_FALSE(read(latin, "text/xml; charset=x-unknown"));
    EXPECT_FALSE(read(latin, "text/xml; charset=utf-16"));
}

TEST(Restrictions, TheDocumentOfTheManualIsOne)
{
    QFile page(QStringLiteral("docs/ecan.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    QByteArray text = page.readAll();
    const qsizetype begin = text.indexOf("```xml\n") + 7;
    const auto document = read(text.mid(begin, text.indexOf("```", begin) - begin));
    ASSERT_TRUE(document);
    ASSERT_EQ(document->records().size(), 2u);
    EXPECT_TRUE(document->records()[1].isOf(u"66401"));
    EXPECT_EQ(document->records()[1].flow(), 12.4);
    EXPECT_EQ(document->records()[1].band(), 2);
    EXPECT_EQ(document->records()[1].allocation(), 75);
    EXPECT_EQ(document->records()[1].LastUpdate(), u"2024-02-03 08:00");
}
