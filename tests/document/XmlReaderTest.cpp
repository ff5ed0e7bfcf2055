#include "Parsed.h"

#include <ostream>

#include <string>

using namespace zan::document;

namespace {

struct Refusal
{
    const char* rule;
    QByteArray xml;
    int line;
    int column;
    const char* message; ///< a part of it
};

std::ostream& operator<<(std::ostream& out, const Refusal& row)
{
    return out << row.rule;
}

class XmlReaderRefuses : public testing::TestWithParam<Refusal>
{};

const Refusal Refusals[] = {
    {"NoText", "", 1, 1, "holds no element"},
    {"BlanksOnly", " \n ", 2, 2, "holds no element"},
    {"ACommentOnly", "<!--c-->", 1, 9, "holds no element"},
    {"ADoctype", "\n<!DOCTYPE A><A/>", 2, 1, "document type"},
    {"ADoctypeWithEntities", "<!DOCTYPE A [<!ENTITY x 'y'>]><A>&x;</A>", 1, 1, "document type"},
    {"ADoctypeThatDoesNotEnd", "<!DOCTYPE A [<A/>", 1, 1, "document type"},
    {"ADoctypeInsideTheElement", "<A>\n<!DOCTYPE A></A>", 2, 1, "document type"},
    {"ADoctypeAfterTheElement", "<A/><!DOCTYPE A>", 1, 5, "document type"},
    {"AnElementThatIsNotClosed", "<A>\n<B></B>", 2, 8, "ends before every element"},
    {"AnElementClosedByAnother", "<A>\n <B></C></A>", 2, 5, "does not close"},
    {"ANameClosedInAnotherCase", "<A></a>", 1, 4, "does not close"},
    {"AnEndTagOfALongerName", "<A></AB>", 1, 4, "does not close"},
    {"AnEndTagWithoutAStart", "<A/></A>", 1, 5, "does not close"},
    {"AnEndTagWithAnAttribute", "<A></A b='1'>", 1, 4, "end tag is not well"},
    {"AStartTagThatDoesNotEnd", "<A><B", 1, 4, "start tag"},
    {"TwoOutermostElements", "<A/>\n<B/>", 2, 1, "one outermost"},
    {"TextBeforeTheElement", "x<A/>", 1, 1, "outside"},
    {"TextAfterTheElement", "<A/>\nx", 1, 5, "outside"},
    {"CDataOutsideTheElement", "<A/><![CDATA[ ]]>", 1, 14, "outside"},
    {"AReferenceOutsideTheElement", "<A/>&#32;", 1, 5, "outside"},
    {"AnUnknownReference", "<A>\n x&nbsp;y</A>", 2, 3, "not known"},
    {"AReferenceInAnotherCase", "<A>&LT;</A>", 1, 4, "not known"},
    {"APlainAmpersand", "<A>a & b</A>", 1, 6, "not known"},
    {"AReferenceWithoutAnEnd", "<A>&lt</A>", 1, 4, "not known"},
    {"AnUnknownReferenceInAnAttribute", "<A b='&x;'/>", 1, 7, "not known"},
    {"AReferenceToZero", "<A>&#0;</A>", 1, 4, "names no character"},
    {"AReferenceToAControlCharacter", "<A>&#1;</A>", 1, 4, "names no character"},
    {"AReferenceToHalfAPair", "<A>&#xD800;</A>", 1, 4, "names no character"},
    {"AReferenceBeyondUnicode", "<A>&#x110000;</A>", 1, 4, "names no character"},
    {"AReferenceThatOverflows", "<A>&#99999999999999999999;</A>", 1, 4, "names no character"},
    {"AReferenceOfNoDigits", "<A>&#;</A>", 1, 4, "names no character"},
    {"AReferenceOfNoHexDigits", "<A>&#x;</A>", 1, 4, "names no character"},
    {"AReferenceWithACapitalX", "<A>&#X20;</A>", 1, 4, "names no character"},
    {"AControlCharacter", "<A>\n\x01</A>", 2, 1, "control character"},
    {"AZero", QByteArray("<A>\0</A>", 8), 1, 4, "control character"},
    {"AZeroAfterTheElement", QByteArray("<A/>\0", 5), 1, 5, "control character"},
    {"ByteThatIsNoUtf8", "<A>\xC3\xA4\xE4</A>", 1, 5, "no character"},
    {"AnOverlongForm", "<A>\xC0\x80</A>", 1, 4, "no character"},
    {"AnOverlongFormOfThree", "<A>\xE0\x80\xAF</A>", 1, 4, "no character"},
    {"ASurrogateInUtf8", "<A>\xED\xA0\x80</A>", 1, 4, "no character"},
    {"ACharacterBeyondUnicode", "<A>\xF4\x90\x80\x80</A>", 1, 4, "no character"},
    {"ACutOffCharacter", "<A>\xE2\x82", 1, 4, "no character"},
    {"ANonCharacter", "<A>\xEF\xBF\xBE</A>", 1, 4, "no character"},
    {"ANameThatStartsWithADigit", "<A><1/></A>", 1, 4, "starts no tag"},
    {"ANameThatStartsWithADash", "<A><-a/></A>", 1, 4, "starts no tag"},
    {"ANameOfAForbiddenCharacter", "<A><a\xC3\x97/></A>", 1, 5, "name is not"},
    {"AnAttributeNameOfADigit", "<A 1='x'/>", 1, 1, "start tag"},
    {"ADoubleAttribute", "<A\n b='1' c='2' b='3'/>", 2, 14, "already"},
    {"AnAttributeWithoutQuotes", "<A b=1/>", 1, 6, "attribute is not well"},
    {"AnAttributeWithoutAValue", "<A b/>", 1, 6, "attribute is not well"},
    {"AttributesWithoutABlankBetween", "<A b='1'c='2'/>", 1, 9, "attribute is not well"},
    {"ALessThanInAnAttribute", "<A b='a<b'/>", 1, 8, "&lt;"},
    {"ACommentThatDoesNotEnd", "<A><!-- x</A>", 1, 4, "not closed with -->"},
    {"ACommentWithTwoDashes", "<A><!--a--b--></A>", 1, 9, "cannot hold --"},
    {"ACommentThatEndsInThreeDashes", "<A><!--a---></A>", 1, 9, "cannot hold --"},
    {"ACommentWithATagThatDoesNotEnd", "<A><!-- <b/></A>", 1, 4, "not closed with -->"},
    {"CDataThatDoesNotEnd", "<A><![CDATA[ x</A>", 1, 4, "CDATA section is not closed"},
    {"AnInstructionThatDoesNotEnd", "<A><?x y</A>", 1, 4, "ends with ?>"},
    {"ACDataEndInText", "<A>a]]>b</A>", 1, 5, "]]>"},
    {"ADeclarationAfterABlank", " <?xml version='1.0'?><A/>", 1, 2, "start of the text"},
    {"ASecondDeclaration", "<?xml version='1.0'?>\n<?xml version='1.0'?><A/>", 2, 1, "start of the text"},
    {"ADeclarationInsideTheElement", "<A><?xml version='1.0'?></A>", 1, 4, "instruction"},
    {"ADeclarationInAnotherCase", "<?XML version='1.0'?><A/>", 1, 1, "start of the text"},
    {"AnUnknownEncoding", "<?xml version='1.0' encoding='EBCDIC-9'?><A/>", 1, 21, "\"ebcdic-9\""},
    {"Utf16ThatIsNot", "<?xml version='1.0' encoding='UTF-16'?><A/>", 1, 21, "\"utf-16\""},
    {"HalfAUtf16Character", QByteArray("\xFF\xFE<\0A\0/\0>\0\n", 11), 1, 5, "within a character"},
    {"HalfAUtf16Pair", QByteArray("\xFF\xFE<\0A\0>\0\0\xD8", 10), 1, 4, "surrogate pair"},
};

} // namespace

TEST_P(XmlReaderRefuses, WithThePlaceAndAReason)
{
    const ParseResult result = parseXml(GetParam().xml);
    EXPECT_FALSE(result);
    EXPECT_TRUE(result.error.message.contains(QLatin1String(GetParam().message)))
        << result.error.message.toStdString();
    EXPECT_EQ(result.error.line, GetParam().line);
    EXPECT_EQ(result.error.column, GetParam().column);
}

INSTANTIATE_TEST_SUITE_P(Xml, XmlReaderRefuses, testing::ValuesIn(Refusals),
                         [](const auto& row) { return std::string(row.param.rule); });
