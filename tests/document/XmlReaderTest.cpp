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

TEST(XmlReader, TextInMemoryMayDeclareAnyEncoding)
{
    const ParseResult result = parseXml(QStringLiteral("<?xml version='1.0' encoding='UTF-16'?><A>\u20AC</A>"));
    ASSERT_TRUE(result);
    EXPECT_EQ(result.document.documentElement().text(), u"\u20AC");
}

TEST(XmlReader, HalfASurrogatePairInMemoryIsRefusedWithItsPlace)
{
    const QString text = QStringLiteral("<A>\n\U0001F600x") + QChar(0xDC00) + QStringLiteral("</A>");
    const ParseResult result = parseXml(text);
    EXPECT_FALSE(result);
    EXPECT_EQ(result.error.line, 2);
    EXPECT_EQ(result.error.column, 3) << "a character outside the basic plane is one column";
}

TEST(XmlReader, LinesEndInAnyOfTheThreeWays)
{
    const ParseResult result = parseXml(QByteArray("<A>\r\n\r\n\r\r\n &x;</A>"));
    EXPECT_FALSE(result);
    EXPECT_EQ(result.error.line, 5);
    EXPECT_EQ(result.error.column, 2);
}

struct Encoded
{
    const char* rule;
    QByteArray xml;
    const char16_t* text;
};

TEST(XmlReader, ReadsTheEncodingsItKnows)
{
    const Encoded rows[] = {
        {"none declared", "<A>\xC3\xA4\xE2\x82\xAC</A>", u"\u00E4\u20AC"},
        {"UTF-8 mark", "\xEF\xBB\xBF<A>\xC3\xA4</A>", u"\u00E4"},
        {"UTF-8 declared", "<?xml version=\"1.0\" encoding=\"utf-8\"?><A>\xC3\xA4</A>", u"\u00E4"},
        {"Latin-1", "<?xml version='1.0' encoding='ISO-8859-1'?><A>\xE4\xFF</A>", u"\u00E4\u00FF"},
        {"windows-1252", "<?xml version='1.0' encoding='Windows-1252' ?><A>\xE4\x80\x99</A>",
         u"\u00E4\u20AC\u2122"},
        {"blanks in the old declaration", "<?xml version = \"1.0\" encoding = \"windows-1252\"?><A>\x80</A>",
         u"\u20AC"},
        {"little endian UTF-16", QByteArray("\xFF\xFE<\0A\0>\0\xAC\x20<\0/\0A\0>\0", 18), u"\u20AC"},
        {"big endian UTF-16", QByteArray("\xFE\xFF\0<\0A\0>\x20\xAC\0<\0/\0A\0>", 18), u"\u20AC"},
        {"the mark wins", "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><A>\xC3\xA4</A>", u"\u00E4"},
    };
    for (const Encoded& row : rows)
        EXPECT_EQ(parsed(row.xml).documentElement().text(), QString::fromUtf16(row.text)) << row.rule;
}

TEST(XmlReader, LimitsAreReachedButNotExceeded)
{
    ParseLimits limits;
    limits.bytes = 8;
    EXPECT_TRUE(parseXml(QByteArray("<A>x</A>"), limits));
    EXPECT_FALSE(parseXml(QByteArray("<A>xx</A>"), limits));
    EXPECT_FALSE(parseXml(QStringLiteral("<A>\u00E4</A>"), limits)) << "bytes of UTF-8 count, not characters";

    limits = {};
    limits.elements = 3;
    EXPECT_TRUE(parseXml(QByteArray("<A><B/><C/></A>"), limits));
    for (const char* more :
         {"<A><B/><C/><D/></A>", "<A><B/><!--c--><?p?></A>", "<A b='' c='' d=''/>", "<A><B/>t<C/></A>"}) {
        const ParseResult result = parseXml(QByteArray(more), limits);
        EXPECT_FALSE(result) << more;
        EXPECT_TRUE(result.error.message.contains(u"too many elements")) << more;
    }

    limits = {};
    limits.depth = 2;
    EXPECT_TRUE(parseXml(QByteArray("<A><B>t</B></A>"), limits));
    const ParseResult result = parseXml(QByteArray("<A><B>\n<C/></B></A>"), limits);
    EXPECT_TRUE(result.error.message.contains(u"deeply"));
    EXPECT_EQ(result.error.line, 2);

    limits = {};
    limits.names = 2;
    EXPECT_TRUE(parseXml(QByteArray("<A><B/><B/><A/></A>"), limits));
    EXPECT_FALSE(parseXml(QByteArray("<A><B/><C/></A>"), limits));
    EXPECT_FALSE(parseXml(QByteArray("<A><B c=''/></A>"), limits));
}

TEST(XmlReader, TheDeepestTreeAllowedIs256Levels)
{
    const auto nested = [](int levels) {
        return QByteArray("<E>").repeated(levels) + QByteArray("</E>").repeated(levels);
    };
    EXPECT_TRUE(parseXml(nested(256)));
    EXPECT_FALSE(parseXml(nested(257)));
    EXPECT_FALSE(parseXml(nested(300'000)));
    EXPECT_FALSE(parseXml(QByteArray("<E>").repeated(1'000'000))) << "never closed at all";
}

TEST(XmlReader, TagsBeyondTheLimitAreRefusedBeforeTheyAreRead)
{
    ParseLimits limits;
    limits.elements = 100;
    const ParseResult result = parseXml(QByteArray("<E>").repeated(5000), limits);
    EXPECT_FALSE(result);
    EXPECT_TRUE(result.error.message.contains(u"too many elements"));
    // Each counts, wherever it stands among the bytes that are looked at in one go.
    const auto columnOf = [&](const QByteArray& sixteen) {
        return parseXml(sixteen.repeated(5000), limits).error.column;
    };
    const int first = columnOf("<E>1234567890123") - 1;
    for (int place = 1; place < 14; ++place) {
        const QByteArray before(place, '1');
        EXPECT_EQ(columnOf(before + "<E>" + QByteArray(13 - place, '1')) - 1, first + place);
    }
}

TEST(XmlReader, AnElementOfVeryManyAttributesStillHasEachOnlyOnce)
{
    QByteArray tag = "<A";
    for (int i = 0; i < 20'000; ++i)
        tag += " a" + QByteArray::number(i) + "=''";
    EXPECT_TRUE(parseXml(tag + "/>"));
    EXPECT_FALSE(parseXml(tag + " a19999=''/>"));
    EXPECT_FALSE(parseXml(tag + " a3=''/>"));
}

TEST(XmlReader, AForbiddenByteIsFoundAtAnyPlaceAmongOthers)
{
    const QByteArray after = "  " + QByteArray(300, '~') + "</A>"; // more than what is looked at in one go
    for (int before = 0; before < 200; ++before) {
        for (const char bad : {'\x00', '\x1F', '\x08', '\x80', '\xFF'}) {
            const ParseResult result = parseXml("<A>" + QByteArray(before, '~') + bad + after);
            EXPECT_FALSE(result);
            EXPECT_EQ(result.error.column, 4 + before);
        }
        EXPECT_TRUE(parseXml("<A>" + QByteArray(before, ' ') + "\t\x7F \xC3\xA4 ;=" + after));
    }
}

TEST(XmlReader, ANameThatIsTooLongIsRefused)
{
    EXPECT_TRUE(parseXml("<" + QByteArray(1024, 'a') + "/>"));
    EXPECT_FALSE(parseXml("<" + QByteArray(1025, 'a') + "/>"));
}

TEST(XmlReader, DecodesReferencesAndCData)
{
    const Node root =
        parsed("<A b='&lt;&quot;&#10;x'>&amp;&lt;&gt;&apos;&quot;&#65;&#x1F600;<![CDATA[&amp;<]]></A>")
            .documentElement();
    EXPECT_EQ(root.text(), QString::fromUtf16(u"&<>'\"A\U0001F600&amp;<"));
    EXPECT_EQ(root.attributes().front().value, u"<\"\nx");
}

TEST(XmlReader, LineEndsBecomeLineFeedsAndBlanksInAttributesBecomeSpaces)
{
    const Node root = parsed("<A b='1\r\n2\t3\n4'>x\r\ny\rz<![CDATA[\r\n]]></A>").documentElement();
    EXPECT_EQ(root.text(), u"x\ny\nz\n");
    EXPECT_EQ(root.attributes().front().value, u"1 2 3 4");
}

TEST(XmlReader, TextOfShortPiecesNeverGetsMixedUp)
{
    QByteArray xml = "<A>";
    for (int i = 0; i < 20'000; ++i)
        xml += "<B>" + QByteArray::number(i) + "</B>";
    xml += "</A>";
    Node child = parsed(xml).documentElement().firstChild();
    for (int i = 0; i < 20'000; ++i, child = child.nextSibling())
        ASSERT_EQ(child.text(), QString::number(i));
}

TEST(XmlReader, BlanksAreDroppedOnlyWhereAnElementHoldsNoText)
{
    struct Row
    {
        const char* xml;
        const char* tree;
    };
    const Row rows[] = {
        {"<A>\n  <B/>\n  <C/>\n</A>", "<A><B/><C/></A>"},
        {"<A> <!--c--> <?p?> </A>", "<A><!--c--><?p?></A>"},
        {"<A> \t </A>", "<A> \t </A>"},
        {"<A> <B/> x <C/> </A>", "<A> <B/> x <C/> </A>"},
        {"<A> <B/> <![CDATA[x]]></A>", "<A> <B/> x</A>"},
        {"<A>\n<B> </B>\n</A>", "<A><B> </B></A>"},
        {"<A>&#32;<B/></A>", "<A>&#32;<B/></A>"},
        {"<A xml:space='preserve'> <B> <C/></B></A>", "<A xml:space=\"preserve\"> <B> <C/></B></A>"},
        {"<A xml:space='preserve'> <B xml:space='default'> <C/></B></A>",
         "<A xml:space=\"preserve\"> <B xml:space=\"default\"><C/></B></A>"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(textOf(parsed(row.xml)), row.tree) << row.xml;
}

TEST(XmlReader, TextInPiecesIsOneNode)
{
    const Node root = parsed("<A>a<![CDATA[b]]>c<B/>d&amp;<![CDATA[]]>e</A>").documentElement();
    EXPECT_EQ(root.firstChild().text(), u"abc");
    EXPECT_EQ(root.firstChild().nextSibling().name(), name("B"));
    EXPECT_EQ(root.lastChild().text(), u"d&e");
    EXPECT_EQ(root.lastChild().previousSibling().name(), name("B"));
}
