#include "halyard/LoggerFactory.h"
#include "halyard/SimulatedDriver.h"
#include "halyard/UnavailableDriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zan::halyard {
namespace {

using testing::HasSubstr;

std::string errorOfUri(const QString& uri)
{
    const LoggerResult result = createLogger(uri, nullptr);
    EXPECT_NE(bool(result.logger), !result.error.isEmpty());
    return result.error.toStdString();
}

TEST(LoggerUri, EveryOptionOfASimulationIsTaken)
{
    EXPECT_EQ(errorOfUri(QStringLiteral("sim:")), "");
    EXPECT_EQ(errorOfUri(QStringLiteral(" SIM:?SEED=7 ")), "");
    EXPECT_EQ(errorOfUri(QStringLiteral(
                  "sim:?seed=7&period=500&log=1000&records=10&endian=little-swapped&connect=800&refuse=1&drop=12.5"
                  "&slow=300&programerror=1&unloaderror=yes&writeerror=on&programtime=10&unloadtime=20&memory=65536"
                  "&missing=10-20&wave.100=sine:0.5:2.5:60&wave.200=const:RUN&wave.300=walk:0:1:5:0.5&")),
              "");
}

TEST(LoggerUri, ALoggerThatMakesItsValuesUpSaysSo)
{
    EXPECT_TRUE(createLogger(QStringLiteral("sim:"), nullptr).isSimulated);
    const auto silent = [](const DriverRequest&, QString&) -> std::unique_ptr<Driver> {
        return std::make_unique<UnavailableDriver>(QStringLiteral("silent"));
    };
    ASSERT_TRUE(registerDriver(QStringLiteral("silent"), silent));
    EXPECT_FALSE(createLogger(QStringLiteral("silent:"), nullptr).isSimulated);
}

TEST(LoggerUri, AMistakeIsReportedWithTheNameOfItsOption)
{
    const std::pair<const char*, const char*> rows[] = {
        {"sim:?colour=red", "no option \"colour\""},
        {"sim:?seed=x", "\"seed\""},
        {"sim:?seed=-1", "\"seed\""},
        {"sim:?period=0", "\"period\""},
        {"sim:?period=99999999999999999999", "\"period\""},
        {"sim:?period", "\"period\""},
        {"sim:?records=32768", "\"records\""},
        {"sim:?connect=1.5", "\"connect\""},
        {"sim:?refuse=maybe", "\"refuse\""},
        {"sim:?drop=nan", "\"drop\""},
        {"sim:?drop=-1", "\"drop\""},
        {"sim:?drop=inf", "\"drop\""},
        {"sim:?endian=middle", "one of big, little, big-swapped, little-swapped"},
        {"sim:?seed=1&Seed=2", "\"seed\" is given twice"},
        {"sim:?wave.=const:1", "\"wave.\""},
        {"sim:?wave.-4=const:1", "\"wave.-4\""},
        {"sim:?wave.9999999999=const:1", "\"wave.9999999999\""},
        {"sim:?wave.5=sine:0:1", "\"wave.5\""},
        {"sim:?wave.5=sine:0:1:0", "\"wave.5\""},
        {"sim:?wave.5=sine:0:x:1", "\"wave.5\""},
        {"sim:?wave.5=sine:0:1:1:2", "\"wave.5\""},
        {"sim:?wave.5=saw:0:1:1", "\"wave.5\""},
        {"sim:?wave.5=1", "\"wave.5\""},
        {"sim:?missing=20-10", "\"missing\""},
        {"sim:?missing=a", "\"missing\""},
        {"sim:?=3", "without a name"},
        {"sim:river?seed=1", "has no address"},
        {"sms:?seed=1", "no kind of logger called \"sms\""},
        {"", "no logger URI"},
        {"sim", "no logger URI"},
        {":?seed=1", "no logger URI"},
        {"4sim:", "no logger URI"},
        {"<x>:", "no logger URI"},
    };
    for (const auto& [uri, message] : rows)
        EXPECT_THAT(errorOfUri(QString::fromUtf8(uri)), HasSubstr(message)) << uri;
}

TEST(LoggerUri, PartsAreDecoded)
{
    LoggerUri uri;
    EXPECT_EQ(LoggerUri::parse(QStringLiteral("x-y:a%20b?n%3d=c%26d%25"), uri), QString());
    EXPECT_EQ(uri.scheme, QStringLiteral("x-y"));
    EXPECT_EQ(uri.address, QStringLiteral("a b"));
    EXPECT_EQ(uri.options, (std::vector<LoggerUri::Option>{{QStringLiteral("n="), QStringLiteral("c&d%")}}));
}

TEST(LoggerUri, HostileTextsAreRefusedInAShortLine)
{
    const QString rows[] = {QString(70'000, u's'),
                            QStringLiteral("sim:?") + QString(60'000, u'&'),
                            QStringLiteral("sim:?%00%ff%fe=%zz"),
                            QStringLiteral("sim:?x=\n\n\t") + QString(5000, u'y'),
                            QStringLiteral("sim:?wave.1=const:") + QString(60'000, u':'),
                            QString(QChar(0xd800)) + QStringLiteral(":")};
    for (const QString& uri : rows) {
        const std::string error = errorOfUri(uri);
        EXPECT_LT(error.size(), 400U);
        EXPECT_EQ(error.find('\n'), std::string::npos);
    }
}

TEST(LoggerUri, LaterDriversAreFoundByTheirScheme)
{
    int made = 0;
    const auto factory = [&](const DriverRequest& request, QString& error) -> std::unique_ptr<Driver> {
        ++made;
        EXPECT_EQ(request.uri.address, QStringLiteral("//host:5"));
        EXPECT_EQ(request.order, ByteOrder::Little);
        if (request.options.text(QStringLiteral("unit")) != QStringLiteral("3"))
            error = QStringLiteral("no such unit");
        return std::make_unique<SimulatedDriver>(SimulatedOptions(), request.clock);
    };
    static int run = 0; // a scheme stays known for the life of the process
    const QString name = QStringLiteral("test-bus%1").arg(++run);
    EXPECT_TRUE(registerDriver(name, factory));
    EXPECT_FALSE(registerDriver(name.toUpper(), factory));
    EXPECT_FALSE(registerDriver(QStringLiteral("sim"), factory));
    EXPECT_TRUE(driverSchemes().contains(name));
    EXPECT_TRUE(driverSchemes().contains(QStringLiteral("sim")));
    EXPECT_EQ(errorOfUri(name + QStringLiteral("://host:5?unit=3&endian=little")), "");
    EXPECT_EQ(errorOfUri(name + QStringLiteral("://host:5?unit=4&endian=little")), "no such unit");
    EXPECT_EQ(made, 2);
}

} // namespace
} // namespace zan::halyard
