#include "ecan/RestrictionsPage.h"

#include <gtest/gtest.h>

using namespace zan;
using ecan::Fetched;
using ecan::RestrictionsPage;
using ecan::SiteRow;

namespace {

std::shared_ptr<const RestrictionsPage> read(const QByteArray& body, const QByteArray& type = "text/html")
{
    return RestrictionsPage::read(Fetched{body, type});
}

/// "status/flow/stamp" of a site's row; "none" when there is none, "no page" without a page.
std::string find(const QByteArray& body, const char* site, const QByteArray& type = "text/html")
{
    const auto page = read(body, type);
    if (!page)
        return "no page";
    const SiteRow* row = page->find(QString::fromUtf8(site));
    return row ? (row->status + u'/' + row->flow + u'/' + row->stamp).toStdString() : "none";
}

const QByteArray Header = "<tr><th>Site</th><th>Restriction</th><th>Flow (m3/s)</th><th>Last updated</th></tr>";

QByteArray table(const QByteArray& rows)
{
    return "<html><body><table>" + Header + rows + "</table></body></html>";
}

const QByteArray Weir = "<tr><td>Weir</td><td>Full</td><td>12.5</td><td>3 Feb 08:00</td></tr>";

} // namespace

TEST(RestrictionsPage, TheRowOfASiteIsFoundInATable)
{
    EXPECT_EQ(find(table(Weir), "Weir"), "Full/12.5/3 Feb 08:00");
    EXPECT_EQ(find(table(Weir), "Dam"), "none");
    EXPECT_EQ(find(table(Weir), "Full"), "none") << "only a column of sites names one";
}

TEST(RestrictionsPage, ASiteIsComparedAsAWholeWithoutRegardToCaseAndBlanks)
{
    const QByteArray page = table("<tr><td> Weir\n<b>at</b>&nbsp;the <i>mi</i>ll </td><td>x</td></tr>");
    EXPECT_EQ(find(page, "WEIR at the  mill"), "x//");
    EXPECT_EQ(find(page, "Weir"), "none");
    EXPECT_EQ(find(page, ""), "none");
}

TEST(RestrictionsPage, ColumnsAreFoundByTheirHeadersInAnyOrder)
{
    const QByteArray page = "<table><tr><td>STATUS:</td><td>Owner</td><td> As at </td><td>Site "
                            "no.</td><td>Assessed flow [l/s]</td></tr>"
                            "<tr><td>Partial</td><td>Smith</td><td>noon</td><td>66401</td><td>3</td></tr></table>";
    EXPECT_EQ(find(page, "66401"), "Partial/3/noon");
    EXPECT_EQ(find(page, "Smith"), "none");
}

TEST(RestrictionsPage, ASiteMayHaveANumberAndAName)
{
    const QByteArray page = "<table><tr><th>Site number</th><th>Site name</th><th>Status</th></tr>"
                            "<tr><td>7</td><td>Weir</td><td>Full</td></tr></table>";
    EXPECT_EQ(find(page, "7"), "Full//");
    EXPECT_EQ(find(page, "Weir"), "Full//");
}

TEST(RestrictionsPage, ATableWithoutSiteOrStatusIsNotRead)
{
    EXPECT_EQ(find("<table><tr><th>Site</th><th>Owner</th></tr><tr><td>Weir</td><td>x</td></tr></table>", "Weir"),
              "none");
    EXPECT_EQ(find("<p>Site Weir Status Full</p>", "Weir"), "none");
}

TEST(RestrictionsPage, RowsAboveTheHeaderArePassedOver)
{
    EXPECT_EQ(find("<table><tr><td colspan=4>Rivers</td></tr><tr><td>Weir</td><td>wrong</td></tr>" + Header + Weir +
                       "</table>",
                   "Weir"),
              "Full/12.5/3 Feb 08:00");
}

TEST(RestrictionsPage, TheFirstOfSeveralTablesThatHasTheSiteCounts)
{
    const QByteArray other = "<table>" + Header + "<tr><td>Dam</td><td>None</td></tr></table>";
    EXPECT_EQ(find(other + table(Weir), "Weir"), "Full/12.5/3 Feb 08:00");
    EXPECT_EQ(find(other + table(Weir), "Dam"), "None//");
}

TEST(RestrictionsPage, ATableInsideACellIsReadForItselfAlone)
{
    const QByteArray page = "<table><tr><td>Menu</td><td><table>" + Header + Weir + "</table></td></tr></table>";
    EXPECT_EQ(find(page, "Weir"), "Full/12.5/3 Feb 08:00");
}

TEST(RestrictionsPage, CellsThatSpanColumnsAndRowsKeepTheOthersInTheirColumns)
{
    const QByteArray rows = "<tr><td rowspan=2>Weir</td><td>Full</td><td>1</td><td rowspan=2>noon</td></tr>"
                            "<tr><td>Partial</td><td>2</td></tr>"
                            "<tr><td>Dam</td><td colspan=2>Closed</td><td>one</td></tr>"
                            "<tr><td>Ford</td><td>Open</td><td>3</td><td>two</td></tr>";
    EXPECT_EQ(find(table(rows), "Weir"), "Full/1/noon");
    EXPECT_EQ(find(table(rows), "Dam"), "Closed/Closed/one");
    EXPECT_EQ(find(table(rows), "Ford"), "Open/3/two") << "no cell of the rows above reaches into this one";
}

TEST(RestrictionsPage, BrokenMarkupIsReadAsABrowserReadsIt)
{
    const QByteArray page =
        "<TABLE><TR><TH>Site<TH>Status<TH>Flow<TR><TD>Weir<TD>Full &amp; firm<TD>1<br>2</TABLE>";
    EXPECT_EQ(find(page, "Weir"), "Full & firm/1 2/");
}

TEST(RestrictionsPage, WhatLooksLikeARowInACommentOrAScriptIsNone)
{
    EXPECT_EQ(find("<!-- " + table(Weir) + " -->", "Weir"), "no page");
    EXPECT_EQ(find("<body><script>'" + table(Weir) + "'</script><p>x", "Weir"), "none");
    EXPECT_EQ(find(table("<tr><td>Weir<script>x()</script></td><td>Full</td></tr>"), "Weir"), "Full//");
}

TEST(RestrictionsPage, ARowThatEndsEarlyHasNoMoreTexts)
{
    EXPECT_EQ(find(table("<tr><td>Weir</td></tr>"), "Weir"), "//");
}

TEST(RestrictionsPage, ACellOfAbsurdLengthIsCut)
{
    const auto page = read(table("<tr><td>Weir</td><td>" + QByteArray(100'000, 'x') + "</td></tr>"));
    ASSERT_TRUE(page);
    EXPECT_EQ(page->find(u"Weir")->status, QString(255, u'x') + QChar(0x2026));
}

TEST(RestrictionsPage, WhatIsNoPageIsRefused)
{
    EXPECT_EQ(find("", "Weir"), "no page");
    EXPECT_EQ(find(table(Weir), "Weir", "image/png"), "no page");
    EXPECT_EQ(find(table(Weir), "Weir", "application/octet-stream"), "no page");
    EXPECT_EQ(find(table(Weir), "Weir", "text/html; charset=x-unknown"), "no page");
    EXPECT_EQ(find(table(Weir), "Weir", ""), "Full/12.5/3 Feb 08:00");
}

TEST(RestrictionsPage, TheHeaderThenThePageItselfSaysTheCharset)
{
    const QByteArray latin = table("<tr><td>Weir</td><td>M\xE4rz</td></tr>");
    const QByteArray meta =
        "<head><meta http-equiv='Content-Type' content='text/html; charset=windows-1252'></head>";
    const QByteArray utf8Meta = "<head><meta charset=utf-8></head>";
    EXPECT_EQ(find(latin, "Weir", "text/html; charset=iso-8859-1"), "März//");
    EXPECT_EQ(find(meta + latin, "Weir"), "März//");
    EXPECT_EQ(find(utf8Meta + table("<tr><td>Weir</td><td>März</td></tr>"), "Weir"), "März//");
    EXPECT_EQ(find(utf8Meta + latin, "Weir", "text/html; charset=windows-1252"), "März//");
    EXPECT_EQ(find("<head><meta charset='x-unknown'></head>" + latin, "Weir"), "no page");
}

TEST(RestrictionsPage, APageThatSaysNothingIsUtf8WhereItsBytesAre)
{
    EXPECT_EQ(find(table("<tr><td>Weir</td><td>März</td></tr>"), "Weir"), "März//");
    EXPECT_EQ(find(table("<tr><td>Weir</td><td>M\xE4rz</td></tr>"), "Weir"), "März//");
}

TEST(RestrictionsPage, BytesOfAnotherCharsetThanThePageSaysShowThatTheyAreWrong)
{
    EXPECT_EQ(find(table("<tr><td>Weir</td><td>M\xE4rz</td></tr>"), "Weir", "text/html; charset=utf-8"),
              "M\xEF\xBF\xBDrz//");
}

TEST(RestrictionsPage, HostilePagesAreReadInALimitedWay)
{
    for (const char* piece : {"<table><tr><td>", "<div>", "<tr>", "<td colspan=1000>x", "<td rowspan=65534>x",
                              "<b><p>", "<table>", "<a><table><tr>", "&#65;", "<!--", "<![CDATA[", "<svg><math>"}) {
        const QByteArray page =
            "<table>" + Header + QByteArray(piece).repeated(1'000'000 / qsizetype(qstrlen(piece)));
        const auto found = read(page);
        if (found) {
            EXPECT_LE(found->rows().size(), RestrictionsPage::MostRows) << piece;
        }
    }
}
