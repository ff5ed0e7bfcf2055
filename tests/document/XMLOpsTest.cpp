#include "Parsed.h"

#include "document/EditCount.h"
#include "document/StoredDefault.h"
#include "document/XMLOps.h"

#include <limits>

using namespace zan::document;

namespace {

/// A document whose element `W` holds one control `C` with the content given.
class XmlOps : public testing::Test
{
protected:
    Node control(const QByteArray& content = {})
    {
        m_document = parsed("<W><C>" + content + "</C></W>");
        return m_document.documentElement().child(name("C"));
    }
    std::string all() const { return textOf(m_document); }
    bool isMarked() const { return m_document.documentElement().child(name("CHANGED")).text() == u"-1"; }

    Node m_document;
};

const Name X("X");

QString text(const char16_t* units)
{
    return QString::fromUtf16(units);
}

} // namespace

TEST_F(XmlOps, ANormalWriteOfZeroOrNothingRemovesTheChildAndDoesNotMarkTheDocument)
{
    for (const char16_t* absent : {u"0", u""}) {
        const Node node = control("<X>5</X><Y/>");
        XMLOps::SetAttribute(node, X, text(absent));
        EXPECT_EQ(all(), "<W><C><Y/></C></W>");
    }
}

TEST_F(XmlOps, AForcedWriteOfZeroOrNothingIsStoredAndMarksTheDocument)
{
    XMLOps::SetAttribute(control("<X>5</X>"), X, text(u"0"), true);
    EXPECT_EQ(all(), "<W><C><X>0</X></C><CHANGED>-1</CHANGED></W>");
    XMLOps::SetAttribute(control("<X>5</X>"), X, QString(), true);
    EXPECT_EQ(all(), "<W><C><X/></C><CHANGED>-1</CHANGED></W>");
    XMLOps::SetAttribute(control(), X, text(u"0"), true);
    EXPECT_EQ(all(), "<W><C><X>0</X></C><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, OnlyExactlyZeroIsAbsent)
{
    for (const char16_t* stored : {u"0.0", u"00", u" 0", u"-0", u"False"}) {
        const Node node = control();
        XMLOps::SetAttribute(node, X, text(stored));
        EXPECT_EQ(node.child(X).text(), text(stored));
    }
}

TEST_F(XmlOps, AnUnchangedValueIsNotWrittenAndDoesNotMarkTheDocument)
{
    XMLOps::SetAttribute(control("<X>abc</X>"), X, text(u"abc"));
    EXPECT_FALSE(isMarked());
    XMLOps::SetAttribute(control("<X>abc</X>"), X, text(u"ABC"));
    EXPECT_TRUE(isMarked()) << "case counts";
}

TEST_F(XmlOps, AForcedWriteOfTheSameValueMarksTheDocument)
{
    XMLOps::SetAttribute(control("<X>abc</X>"), X, text(u"abc"), true);
    EXPECT_TRUE(isMarked());
}

TEST_F(XmlOps, AMissingChildIsAppendedAsTheLastOne)
{
    XMLOps::SetAttribute(control("<A/><B/>"), X, text(u"1"));
    EXPECT_EQ(all(), "<W><C><A/><B/><X>1</X></C><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, NamesAreComparedWithCase)
{
    XMLOps::SetAttribute(control("<x>1</x>"), X, text(u"2"));
    EXPECT_EQ(all(), "<W><C><x>1</x><X>2</X></C><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, OnlyTheFirstChildOfANameCounts)
{
    const Node node = control("<X>1</X><X>2</X>");
    EXPECT_EQ(XMLOps::GetAttribute(node, X), u"1");
    XMLOps::SetAttribute(node, X, text(u"0"));
    EXPECT_EQ(XMLOps::GetAttribute(node, X), u"2");
}

TEST_F(XmlOps, ANameThatXmlDoesNotAllowWritesNothing)
{
    const Node node = control();
    XMLOps::SetAttribute(node, Name("A B"), text(u"1"));
    EXPECT_EQ(textOf(node), "<C/>");
    EXPECT_EQ(XMLOps::GetAttribute(node, Name("A B"), text(u"d")), u"d");
}

TEST_F(XmlOps, AReadOfAMissingChildWithAnAbsentDefaultAddsNothing)
{
    const Node node = control();
    EXPECT_EQ(XMLOps::GetAttribute(node, X), u"");
    EXPECT_EQ(XMLOps::GetAttribute(node, X, text(u"0")), u"0");
    EXPECT_EQ(all(), "<W><C/></W>");
}

TEST_F(XmlOps, AReadOfAMissingChildStoresItsDefaultAndMarksTheDocument)
{
    EXPECT_EQ(XMLOps::GetAttribute(control(), X, text(u"=")), u"=");
    EXPECT_EQ(all(), "<W><C><X>=</X></C><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, AReadOfAnEmptyChildGivesItsEmptyTextAndNotTheDefault)
{
    EXPECT_EQ(XMLOps::GetAttribute(control("<X/>"), X, text(u"d")), u"");
    EXPECT_EQ(all(), "<W><C><X/></C></W>");
}

TEST_F(XmlOps, AReadGivesTheTextOfEverythingBelowTheChild)
{
    EXPECT_EQ(XMLOps::GetAttribute(control("<X>a<Y>b</Y></X>"), X), u"ab");
}

TEST_F(XmlOps, AReadOnANullNodeIsEmptyWhateverTheDefault)
{
    EXPECT_EQ(XMLOps::GetAttribute(Node(), X, text(u"CHANNEL")), u"");
}

TEST_F(XmlOps, WritesOnANullNodeDoNothing)
{
    XMLOps::SetAttribute(Node(), X, text(u"1"), true);
    XMLOps::SetText(Node(), X, text(u"1"), text(u"2"), true);
    XMLOps::SetNumber(Node(), X, 1, 2, true);
    XMLOps::MarkChanged(Node());
}

TEST_F(XmlOps, TheMarkIsMadeOnceInTheDocumentElement)
{
    const Node node = control();
    XMLOps::MarkChanged(node);
    XMLOps::MarkChanged(node);
    EXPECT_EQ(all(), "<W><C/><CHANGED>-1</CHANGED></W>");
    m_document.documentElement().child(name("CHANGED")).setText(text(u"0"));
    XMLOps::MarkChanged(node);
    EXPECT_TRUE(isMarked()) << "another text is replaced";
}

TEST_F(XmlOps, TheMarkIsFoundWhereverItStands)
{
    const QByteArray mark = "<CHANGED>0</CHANGED>";
    for (int count = 0; count < 6; ++count) {
        for (int place = 0; place <= count; ++place) {
            m_document = parsed("<W>" + QByteArray("<C/>").repeated(place) + mark +
                                QByteArray("<C/>").repeated(count - place) + "</W>");
            XMLOps::MarkChanged(m_document);
            EXPECT_TRUE(isMarked());
            EXPECT_EQ(m_document.documentElement().childElementCount(), std::size_t(count) + 1) << all();
        }
    }
}

TEST_F(XmlOps, ADetachedNodeMarksTheDocumentItBelongsTo)
{
    const Node node = control("<X>1</X>");
    m_document.documentElement().removeChild(node);
    XMLOps::SetAttribute(node, X, text(u"2"));
    EXPECT_TRUE(isMarked());
}

TEST_F(XmlOps, ANodeThatIsStillInTheSharedDocumentMarksNothing)
{
    XMLOps::OpenXML();
    const Node node = XMLOps::CreateElement(name("WINDOW"));
    const std::string before = textOf(node.ownerDocument());
    XMLOps::MarkChanged(node);
    EXPECT_EQ(textOf(node.ownerDocument()), before);
    XMLOps::SetAttribute(node, X, text(u"1"));
    EXPECT_EQ(textOf(node), "<WINDOW><X>1</X></WINDOW>") << "its own content is written all the same";
    EXPECT_EQ(XMLOps::GetAttribute(node, name("Y"), text(u"d")), u"d");
    EXPECT_EQ(textOf(node), "<WINDOW><X>1</X><Y>d</Y></WINDOW>");
    XMLOps::CloseXML();
}

TEST_F(XmlOps, GetTextOnANullNodeGivesTheDefault)
{
    EXPECT_EQ(XMLOps::GetText(Node(), X, text(u"d"), true), u"d");
    EXPECT_EQ(XMLOps::GetNumber(Node(), X, 2.5, true), 2.5);
}

TEST_F(XmlOps, GetTextOfAMissingChildStoresTheDefaultLikeAWriteWithItsForce)
{
    EXPECT_EQ(XMLOps::GetText(control(), X, text(u"0"), false), u"0");
    EXPECT_EQ(all(), "<W><C/></W>");
    EXPECT_EQ(XMLOps::GetText(control(), X, text(u"0"), true), u"0");
    EXPECT_EQ(all(), "<W><C><X>0</X></C><CHANGED>-1</CHANGED></W>");
    EXPECT_EQ(XMLOps::GetText(control("<X>t</X>"), X, text(u"d"), true), u"t");
    EXPECT_FALSE(isMarked());
}

TEST_F(XmlOps, SetTextOfTheDefaultOnAMissingChildAddsNothingButMarksTheDocument)
{
    XMLOps::SetText(control(), X, text(u"d"), text(u"d"), false);
    EXPECT_EQ(all(), "<W><C/><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, SetTextMakesAMissingChildWhenForcedOrDifferent)
{
    XMLOps::SetText(control(), X, text(u"d"), text(u"d"), true);
    EXPECT_EQ(all(), "<W><C><X>d</X></C><CHANGED>-1</CHANGED></W>");
    XMLOps::SetText(control(), X, QString(), text(u"d"), false);
    EXPECT_EQ(all(), "<W><C><X/></C><CHANGED>-1</CHANGED></W>") << "nothing is a value as any other";
}

TEST_F(XmlOps, SetTextReplacesAnExistingTextByTheDefaultToo)
{
    XMLOps::SetText(control("<X>t</X>"), X, text(u"0"), text(u"0"), false);
    EXPECT_EQ(all(), "<W><C><X>0</X></C><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, NumbersAreReadByTheirLeadingNumber)
{
    struct Row
    {
        const char* content;
        double value;
    };
    const Row rows[] = {{"12", 12},        {" -1.5e2x", -150}, {"abc", 0},  {"", 0},   {"1,5", 1},
                        {"&amp;HFF", 255}, {"1 2 3", 123},     {".5", 0.5}, {"-1", -1}};
    for (const Row& row : rows)
        EXPECT_EQ(XMLOps::GetNumber(control(QByteArray("<X>") + row.content + "</X>"), X, 7, true), row.value)
            << row.content;
}

TEST_F(XmlOps, AMissingNumberStoresItsDefaultAsDecimalText)
{
    EXPECT_EQ(XMLOps::GetNumber(control(), X, 2.5, false), 2.5);
    EXPECT_EQ(all(), "<W><C><X>2.5</X></C><CHANGED>-1</CHANGED></W>");
    EXPECT_EQ(XMLOps::GetNumber(control(), X, 0, false), 0);
    EXPECT_EQ(all(), "<W><C/></W>");
    EXPECT_EQ(XMLOps::GetNumber(control(), X, 0, true), 0);
    EXPECT_EQ(all(), "<W><C><X>0</X></C><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, NumbersAreComparedAsNumbersAndMarkTheDocumentInEveryCase)
{
    XMLOps::SetNumber(control(), X, 0, -0.0, false);
    EXPECT_EQ(all(), "<W><C/><CHANGED>-1</CHANGED></W>");
    XMLOps::SetNumber(control(), X, 0, 0, true);
    EXPECT_EQ(all(), "<W><C><X>0</X></C><CHANGED>-1</CHANGED></W>");
    XMLOps::SetNumber(control("<X>3</X>"), X, 0, 0, false);
    EXPECT_EQ(all(), "<W><C><X>0</X></C><CHANGED>-1</CHANGED></W>");
}

TEST_F(XmlOps, EveryNumberReadsBackAsItWasWritten)
{
    for (const double number :
         {0.1, 1.0 / 3, -2147483633.0, 1e300, 5e-324, std::numeric_limits<double>::max(), 123456789.123456789}) {
        const Node node = control();
        XMLOps::SetNumber(node, X, number, 0, true);
        EXPECT_EQ(XMLOps::GetNumber(node, X, 0, false), number);
    }
}

TEST_F(XmlOps, WhatAReadStoresIsADefaultUntilSomebodyWritesToIt)
{
    const Node node = control("<Y>1</Y>");
    XMLOps::GetAttribute(node, X, text(u"CHANNEL"));
    EXPECT_TRUE(isStoredDefault(node.child(X)));
    XMLOps::GetAttribute(node, name("Y"), text(u"2"));
    EXPECT_FALSE(isStoredDefault(node.child(name("Y")))) << "it was there";
    XMLOps::SetAttribute(node, X, text(u"CHANNEL"));
    EXPECT_TRUE(isStoredDefault(node.child(X))) << "an equal text writes nothing";
    XMLOps::SetAttribute(node, X, text(u"PROGRAM"));
    EXPECT_FALSE(isStoredDefault(node.child(X)));
    XMLOps::GetNumber(node, name("N"), 0, true);
    EXPECT_TRUE(isStoredDefault(node.child(name("N"))));
    node.child(name("N")).appendChild(node.createElement(X));
    EXPECT_FALSE(isStoredDefault(node.child(name("N"))));
    EXPECT_FALSE(isStoredDefault({}));
}

TEST_F(XmlOps, WritesThatMarkAndRemovalsAreCountedAsEdits)
{
    const Node node = control("<Y>1</Y>");
    const auto counts = [](auto&& write) {
        const std::uint64_t before = editCount();
        write();
        return editCount() != before;
    };
    EXPECT_TRUE(counts([&] { XMLOps::SetAttribute(node, X, text(u"1")); }));
    EXPECT_TRUE(counts([&] { XMLOps::SetAttribute(node, X, text(u"2")); })) << "it was marked already";
    EXPECT_FALSE(counts([&] { XMLOps::SetAttribute(node, X, text(u"2")); })) << "an equal text writes nothing";
    EXPECT_TRUE(counts([&] { XMLOps::SetAttribute(node, X, QString()); }))
        << "a removal leaves no mark, and counts";
    EXPECT_FALSE(counts([&] { XMLOps::SetAttribute(node, X, QString()); }));
    const XMLOps::Marking off(XMLOps::Marking::Off);
    EXPECT_FALSE(counts([&] {
        XMLOps::SetAttribute(node, X, text(u"3"));
        XMLOps::SetAttribute(node, name("Y"), QString());
        countEdit();
    })) << "what a scan stores is nobody's edit";
}

TEST_F(XmlOps, TheSharedDocumentExistsWhileSomebodyHasItOpen)
{
    EXPECT_FALSE(XMLOps::CreateElement(X)) << "nobody has it open";
    XMLOps::OpenXML();
    XMLOps::OpenXML();
    const Node first = XMLOps::CreateElement(X);
    XMLOps::CloseXML();
    EXPECT_EQ(XMLOps::CreateElement(X).ownerDocument(), first.ownerDocument());
    XMLOps::CloseXML();
    EXPECT_FALSE(XMLOps::CreateElement(X));
    EXPECT_EQ(first.name(), X) << "an element outlives it";
    XMLOps::CloseXML();
    XMLOps::CloseXML();
    XMLOps::OpenXML();
    EXPECT_TRUE(XMLOps::CreateElement(X)) << "closing too often leaves no debt";
    XMLOps::CloseXML();
}

TEST_F(XmlOps, LoadDocumentGivesTheFirstChildOfADocumentOfItsOwn)
{
    const Node one = XMLOps::LoadDocument(text(u"<A><B>1</B></A>"));
    const Node two = XMLOps::LoadDocument(text(u"<A><B>1</B></A>"));
    EXPECT_EQ(textOf(one), "<A><B>1</B></A>");
    EXPECT_NE(one.ownerDocument(), two.ownerDocument());
    EXPECT_EQ(textOf(one.ownerDocument()), "<A><B>1</B></A>") << "the node keeps it alive";
    EXPECT_EQ(XMLOps::LoadDocument(text(u"<!--c--><A/>")).type(), NodeType::Comment);
    EXPECT_EQ(XMLOps::LoadDocument(text(u"<?xml version='1.0'?><A/>")).name(), name("A"));
}

TEST_F(XmlOps, LoadDocumentOfATextThatCannotBeReadIsNull)
{
    for (const char16_t* bad : {u"", u"text", u"<A>", u"<A></B>", u"<!DOCTYPE A><A/>"})
        EXPECT_FALSE(XMLOps::LoadDocument(text(bad)));
}

TEST_F(XmlOps, NewDocumentHoldsItsInstructionAlone)
{
    const Node document = XMLOps::NewDocument();
    EXPECT_EQ(document.firstChild(), document.lastChild());
    EXPECT_EQ(document.firstChild().type(), NodeType::ProcessingInstruction);
    EXPECT_EQ(document.firstChild().name(), name("xml"));
    EXPECT_EQ(document.firstChild().text(), u"version = \"1.0\" encoding=\"windows-1252\"");
}
