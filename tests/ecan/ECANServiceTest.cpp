// The two classes that a label asks, over a source that a test fills.

#include "ecan/ECANService.h"
#include "ecan/ECANScraper.h"
#include "support/ErrorOf.h"
#include "values/Convert.h"

#include <gtest/gtest.h>

using namespace zan;
using ecan::Answer;
using ecan::ECANScraper;
using ecan::ECANService;
using ecan::Fetched;
using ecan::Kind;
using values::Variant;

namespace {

/// Says what a test wants, at once.
class ToldSource : public ecan::Source
{
public:
    QStringList asked;
    Answer answer;

    void tell(const QByteArray& document)
    {
        answer = {Answer::State::Here, ecan::Restrictions::read({document, {}}), nullptr};
    }
    void tellPage(const QByteArray& page)
    {
        answer = {Answer::State::Here, nullptr, ecan::RestrictionsPage::read({page, {}})};
    }
    QString host() const override { return {}; }
    Answer ask(Kind, const QString& address) override
    {
        asked << address;
        return answer;
    }
    void wasOfNoUse(Kind, const QString&) noexcept override {}
    QDateTime now() const override { return {}; }
};

class Service : public testing::Test
{
protected:
    ECANService& of(const QByteArray& content)
    {
        source.tell("<Restrictions>" + content + "</Restrictions>");
        service.setURL(QStringLiteral("http://e/1"));
        return service;
    }
    double flow(std::int32_t site)
    {
        double result = 99;
        service.AssessedFlow(site, result);
        return result;
    }
    std::string allocation(const char* site, std::int16_t band)
    {
        Variant result;
        service.Allocation(QString::fromLatin1(site), band, result);
        return result.isNull() ? "Null" : values::toText(result).toStdString();
    }

    ToldSource source;
    ECANService service{source};
};

} // namespace

TEST_F(Service, IsConnectedOnlyWhileADocumentIsHere)
{
    EXPECT_FALSE(service.Connected());
    EXPECT_TRUE(of("").Connected());
    source.answer = {Answer::State::UnderWay, nullptr, nullptr};
    service.setURL(QStringLiteral("http://e/1"));
    EXPECT_FALSE(service.Connected());
    EXPECT_TRUE(service.isUnderWay());
}

TEST_F(Service, AsksNobodyWithoutAnAddress)
{
    service.setURL(QString());
    EXPECT_FALSE(service.Connected());
    EXPECT_FALSE(service.isUnderWay());
    EXPECT_TRUE(source.asked.isEmpty());
}

TEST_F(Service, HasRestrictionsWhenThereIsARecord)
{
    EXPECT_FALSE(of("").HasRestrictions());
    EXPECT_TRUE(of("<Restriction/>").HasRestrictions());
}

TEST_F(Service, TheAssessedFlowIsTheFirstFigureOfTheSite)
{
    of("<Restriction><Site>1</Site><Band>1</Band></Restriction>"
       "<Restriction><Site>2</Site><AssessedFlow>5</AssessedFlow></Restriction>"
       "<Restriction><Site>1</Site><AssessedFlow>2.5</AssessedFlow></Restriction>");
    EXPECT_EQ(flow(1), 2.5);
    EXPECT_EQ(flow(2), 5);
    EXPECT_EQ(flow(3), -1) << "no figure";
}

TEST_F(Service, TheAllocationIsThatOfTheBandAtTheSite)
{
    of("<Restriction><Site>1</Site><Band>1</Band><Allocation>75</Allocation></Restriction>"
       "<Restriction><Site>1</Site><Band>2</Band><Allocation>0</Allocation></Restriction>"
       "<Restriction><Site>2</Site><Band>3</Band><Allocation>25</Allocation></Restriction>");
    EXPECT_EQ(allocation("1", 1), "75");
    EXPECT_EQ(allocation("1", 2), "0");
    EXPECT_EQ(allocation("1", 3), "Null") << "no figure is no zero";
    EXPECT_EQ(allocation("2", 3), "25");
}

TEST_F(Service, ResultsAreCountedFromOne)
{
    const ecan::ECANResults results = of("<Restriction LastUpdate='a'/><Restriction LastUpdate='b'/>").Results();
    EXPECT_EQ(results.Count(), 2);
    EXPECT_EQ(results.Item(1).LastUpdate(), u"a");
    EXPECT_EQ(results.Item(2).LastUpdate(), u"b");
    EXPECT_EQ(test::errorOf([&] { static_cast<void>(results.Item(0)); }), 9);
    EXPECT_EQ(test::errorOf([&] { static_cast<void>(results.Item(3)); }), 9);
}

TEST(Scraper, GivesTheTextsOfTheSiteThatWasFound)
{
    ToldSource source;
    source.tellPage("<table><tr><th>Site<th>Status<th>Flow<th>Time<tr><td>Weir<td>Full<td>2<td>noon</table>");
    ECANScraper scraper(source);
    EXPECT_TRUE(scraper.LoadPage(QStringLiteral("http://e/page")));
    EXPECT_EQ(scraper.Status(), u"");
    EXPECT_TRUE(scraper.FindSite(QStringLiteral("weir")));
    EXPECT_EQ(scraper.Status(), u"Full");
    EXPECT_EQ(scraper.Flow(), u"2");
    EXPECT_EQ(scraper.Stamp(), u"noon");
    EXPECT_FALSE(scraper.FindSite(QStringLiteral("dam")));
    EXPECT_EQ(scraper.Status(), u"") << "nothing is left of the site before";
}

TEST(Scraper, APageThatIsNotHereIsNotLoaded)
{
    ToldSource source;
    ECANScraper scraper(source);
    EXPECT_FALSE(scraper.FindSite(QStringLiteral("weir")));
    EXPECT_FALSE(scraper.LoadPage(QStringLiteral("http://e/page")));
    EXPECT_FALSE(scraper.isUnderWay());
    source.answer = {Answer::State::UnderWay, nullptr, nullptr};
    EXPECT_FALSE(scraper.LoadPage(QStringLiteral("http://e/page")));
    EXPECT_TRUE(scraper.isUnderWay());
}
