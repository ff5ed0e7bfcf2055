#include "keel/CodePage.h"

#include <gtest/gtest.h>

namespace zan::keel {

namespace {

std::string text(QByteArrayView bytes, CodePage page)
{
    return decode(bytes, page).text.toStdString();
}

} // namespace

TEST(KeelCodePage, IsNamedInEitherManner)
{
    EXPECT_EQ(codePageOfName(u"437"), CodePage::Dos437);
    EXPECT_EQ(codePageOfName(u"cp850"), CodePage::Dos850);
    EXPECT_EQ(codePageOfName(u"utf-8"), CodePage::Utf8);
    EXPECT_EQ(codePageOfName(u"1252"), std::nullopt);
    EXPECT_EQ(codePageOfName(u""), std::nullopt);
}

TEST(KeelCodePage, BoxesAndDegreesOf437AreThoseOfTheTerminal)
{
    EXPECT_EQ(text("\xc9\xcd\xbb\xba\xc8\xbc", CodePage::Dos437), "╔═╗║╚╝");
    EXPECT_EQ(text("12 \xf8"
                   "C \xe6\xb1",
                   CodePage::Dos437),
              "12 °C µ▒");
    EXPECT_EQ(text("\x9b\xb5\xc6\xd5", CodePage::Dos437), "¢╡╞╒");
}

TEST(KeelCodePage, LettersOf850StandWhere437HasMixedBoxes)
{
    EXPECT_EQ(text("\xc9\xcd\xbb\xba\xc8\xbc", CodePage::Dos850), "╔═╗║╚╝");
    EXPECT_EQ(text("12 \xf8"
                   "C \xe6\xb1",
                   CodePage::Dos850),
              "12 °C µ▒");
    EXPECT_EQ(text("\x9b\xb5\xc6\xd5\xfc", CodePage::Dos850), "øÁãı³");
}

TEST(KeelCodePage, CodesBelowABlankAreThePicturesOfTheTerminal)
{
    EXPECT_EQ(text("\x10\x1e\x18\x7f", CodePage::Dos437), "►▲↑⌂");
    EXPECT_EQ(text("\t", CodePage::Dos850), "\t");
}

TEST(KeelCodePage, WhatStandsForNoCharacterIsNamedByItsPlace)
{
    EXPECT_EQ(decode(QByteArrayView("ab\0c", 4), CodePage::Dos437).invalidAt, 2);
    EXPECT_EQ(decode("ab\xf8"
                     "c",
                     CodePage::Utf8)
                  .invalidAt,
              2);
    EXPECT_EQ(decode("\xc2\xb0\x01", CodePage::Utf8).invalidAt, 1) << "counted in characters";
    EXPECT_EQ(decode("\xc2\xb0", CodePage::Utf8).invalidAt, -1);
    EXPECT_EQ(text("\xe2\x95\x94", CodePage::Utf8), "╔");
}

} // namespace zan::keel
