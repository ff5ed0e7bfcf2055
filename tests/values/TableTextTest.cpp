#include "values/TableText.h"

#include <gtest/gtest.h>

#include <limits>

namespace zan::values {

TEST(TableText, FormulasGetAnApostropheAndNumbersKeepTheirSign)
{
    EXPECT_EQ(csvCell(QStringLiteral("=1+1")), u"'=1+1");
    EXPECT_EQ(csvCell(QStringLiteral("  =1")), u"'  =1");
    EXPECT_EQ(csvCell(QChar(u'\0') + QStringLiteral("=1+1")), u"'=1+1") << "zeros are left out before the look";
    EXPECT_EQ(csvCell(QStringLiteral("@SUM(A1)")), u"'@SUM(A1)");
    EXPECT_EQ(csvCell(QStringLiteral("-2.5")), u"-2.5");
    EXPECT_EQ(csvCell(QStringLiteral("+1e3")), u"+1e3");
    EXPECT_EQ(csvCell(QStringLiteral("-2+3")), u"'-2+3");
    EXPECT_EQ(csvCell(QStringLiteral("-inf")), u"'-inf");
    EXPECT_EQ(csvCell(QStringLiteral("a,\"b\"\n")), u"\"a,\"\"b\"\"\n\"");
    EXPECT_EQ(csvCell(QString()), QString());
    EXPECT_EQ(clipboardCell(QStringLiteral("\t=1")), u"' =1");
    EXPECT_EQ(csvCell(QStringLiteral(" a ")), u"\" a \"");
    EXPECT_EQ(csvCell(QStringLiteral("a|b"), u'|'), u"\"a|b\"");
    EXPECT_EQ(csvNumber(0.1), u"0.1");
    EXPECT_EQ(csvNumber(0.1F), u"0.1");
    EXPECT_EQ(csvNumber(-std::numeric_limits<double>::infinity()), u"'-inf");
}

} // namespace zan::values
