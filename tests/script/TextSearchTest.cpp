#include "script/builtins/TextSearch.h"

#include <gtest/gtest.h>

using zan::script::TextSearch;

namespace {

/// All texts of so many characters out of "aAb".
std::vector<QString> textsOf(int length)
{
    std::vector<QString> texts = {QString()};
    for (int place = 0; place < length; ++place) {
        std::vector<QString> longer;
        for (const QString& text : texts) {
            for (const char16_t c : {u'a', u'A', u'b'})
                longer.push_back(text + QChar(c));
        }
        texts = std::move(longer);
    }
    return texts;
}

} // namespace

TEST(TextSearch, FindsWhatComparingAtEveryPlaceFinds)
{
    // Behind a start that nearly matches again and again, so that the search by borders is under test, too.
    const QString start = QStringLiteral("aab").repeated(2) + QStringLiteral("aa").repeated(400);
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        for (const QString& end : textsOf(5)) {
            for (const QString& wanted : textsOf(3)) {
                for (const QString& text : {end, start + end}) {
                    EXPECT_EQ(TextSearch(wanted, sensitivity).find(text), text.indexOf(wanted, 0, sensitivity));
                    EXPECT_EQ(TextSearch(wanted, sensitivity, TextSearch::Direction::Backward).findLast(text),
                              text.lastIndexOf(wanted, -1, sensitivity));
                }
            }
            const QString longWanted = QStringLiteral("a").repeated(300) + end;
            EXPECT_EQ(TextSearch(longWanted, sensitivity).find(start + end),
                      (start + end).indexOf(longWanted, 0, sensitivity));
        }
    }
}

TEST(TextSearch, BeginsWhereItIsToldTo)
{
    TextSearch search(QStringLiteral("ab"), Qt::CaseSensitive);
    EXPECT_EQ(search.find(u"abab", 0), 0);
    EXPECT_EQ(search.find(u"abab", 1), 2);
    EXPECT_EQ(search.find(u"abab", 3), -1);
    EXPECT_EQ(search.find(u"abab", 4), -1);
}

TEST(TextSearch, IgnoresCaseBeyondTheFirstLettersToo)
{
    const QString wanted = QString::fromUcs4(U"\u00c4\u0416\U00010400", 3); // capitals, the last one of two halves
    const QString text = QString::fromUcs4(U"x\u00e4\u0436\U00010428", 4);
    EXPECT_EQ(TextSearch(wanted, Qt::CaseInsensitive).find(text), 1);
    EXPECT_EQ(TextSearch(wanted, Qt::CaseSensitive).find(text), -1);
    EXPECT_EQ(TextSearch(wanted, Qt::CaseInsensitive, TextSearch::Direction::Backward).findLast(text), 1);
}
