#include "HostFixture.h"

#include "zanbench/LiveValues.h"
#include "zanbench/PanelLoader.h"

#include "halyard/HalyardLogger.h"
#include "values/Convert.h"

#include <QMessageBox>

using namespace zan;
using host::MainWindow;
using values::Name;

namespace {

QByteArray light(const QByteArray& settings)
{
    return "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><WIDTH>600</WIDTH><HEIGHT>300</HEIGHT>" + settings +
           "</CONTROL>";
}

QByteArray button(const QByteArray& action)
{
    return "<CONTROL><TYPE>VB.CommandButton</TYPE><TOP>600</TOP><WIDTH>1500</WIDTH><HEIGHT>300</HEIGHT><ACTION>" +
           action + "</ACTION></CONTROL>";
}

} // namespace

/// A site of two windows, each with a light for the link, one for the data, one for a channel, and a connect button.
class LinkFollow : public HostTest
{
protected:
    enum Place : std::int32_t { LinkLight = 1, DataLight, ChannelLight, ConnectButton, PutButton };

    void writeSite(const QByteArray& logger)
    {
        QByteArray windows;
        for (const QByteArray key : {"One", "Two"}) {
            windows += "<WINDOW><KEY>" + key +
                       "</KEY><CHANNEL><KEY>A</KEY><LABEL>Level</LABEL>"
                       "<BASEADDRESS>16</BASEADDRESS><BYTES>1</BYTES></CHANNEL>" +
                       light("<MODE>PROGRAM</MODE>") + light("<MODE>PROGRAM</MODE><PROGRAM>DATASTATUS</PROGRAM>") +
                       light("<BINDTO>" + key +
                             "|A</BINDTO><COMPARISON>=</COMPARISON><COMPAREVALUE>42"
                             "</COMPAREVALUE>") +
                       button("<TYPE>VESPER</TYPE><FUNCTION>CONNECT</FUNCTION>") +
                       button("<TYPE>PUT</TYPE><PUTADDRESS>16</PUTADDRESS><PUTVALUE>7</PUTVALUE>") + "</WINDOW>";
        }
        write("site.scheme", "<SCHEME><NAME>Site</NAME>" + logger + windows + "</SCHEME>");
    }
    static values::Ref<binding::Object> live(const MainWindow& window, Place place)
    {
        return window.currentPanel()->Controls()->Control(binding::Variant(std::int32_t(place)))->Control();
    }
    static bool isLit(const MainWindow& window, Place place)
    {
        return values::toBoolean(live(window, place)->get(Name("Value")));
    }
    static QString caption(const MainWindow& window, Place place)
    {
        return values::toText(live(window, place)->get(Name("Caption")));
    }
    static QString text(const MainWindow& window, const char* name)
    {
        return window.findChild<QLabel*>(QLatin1String(name))->text();
    }
    static void click(const MainWindow& window, Place place)
    {
        live(window, place)->put(Name("Value"), binding::Variant(true));
    }
    static bool isErrorShown(const MainWindow& window)
    {
        return !window.findChild<QFrame*>(QStringLiteral("errorBar"))->isHidden();
    }
};

TEST_F(LinkFollow, ABrokenConnectionLeavesNoPanelBehindWhileItsBoxIsOpen)
{
    writeSite(
        "<LOGGER>sim:?connect=0&amp;period=20&amp;drop=3&amp;wave.16=const:42</LOGGER>"); // time enough for data
    MainWindow window(settings, dialogs);
    host::OpenOptions options = offline();
    options.offline = false;
    window.show();
    ASSERT_TRUE(window.openScheme(options));
    window.showWindow("Two");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window.forms().openBoxes().empty(); }, DeadlineMilliseconds));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !isLit(window, DataLight); }, DeadlineMilliseconds));
    EXPECT_EQ(window.forms().openBoxes().size(), 1U) << "two panels say the same";
    EXPECT_EQ(window.forms().openBoxes()[0]->text(), "Connection to site broken");
    EXPECT_EQ(text(window, "linkState"), "Connection broken");
    for (const char* key : {"One", "Two"}) {
        window.showWindow(key);
        EXPECT_FALSE(isLit(window, LinkLight)) << key;
        EXPECT_FALSE(isLit(window, DataLight)) << key;
        EXPECT_TRUE(isLit(window, ChannelLight)) << key << ": the last value stands, as in every text";
        EXPECT_EQ(caption(window, ConnectButton), "&Re-connect") << key;
    }
}

TEST_F(LinkFollow, ALightForAChannelDoesNotClaimAValueBecauseTheLinkIsUp)
{
    // Data comes much later than the connection.
    writeSite("<LOGGER>sim:?connect=0&amp;slow=3600000</LOGGER>");
    MainWindow window(settings, dialogs);
    host::OpenOptions options = offline();
    options.offline = false;
    ASSERT_TRUE(window.openScheme(options));
    ASSERT_TRUE(QTest::qWaitFor([&] { return isLit(window, LinkLight); }, DeadlineMilliseconds));
    QCoreApplication::processEvents();
    EXPECT_FALSE(isLit(window, ChannelLight));
}

TEST_F(LinkFollow, AnUnknownOrMissingLoggerFailsToConnectInWordsAndInventsNothing)
{
    const std::pair<const char*, const char*> rows[] = {
        {"<LOGGER>carrier-pigeon:7</LOGGER>", "no kind of logger called \"carrier-pigeon\""},
        {"<LOGGER>sim:?sede=7</LOGGER>", "\"sede\""},
        {"", "names no logger"},
    };
    for (const auto& [logger, reason] : rows) {
        writeSite(logger);
        MainWindow window(settings, dialogs);
        ASSERT_TRUE(window.openScheme(offline()));
        window.findChild<QFrame*>(QStringLiteral("errorBar"))->hide();
        click(window, ConnectButton);
        ASSERT_TRUE(QTest::qWaitFor([&] { return isErrorShown(window); }, DeadlineMilliseconds)) << logger;
        EXPECT_TRUE(text(window, "errorText").contains(reason)) << text(window, "errorText").toStdString();
        EXPECT_EQ(window.site()->linkState(), site::LinkState::NotConnected);
        EXPECT_FALSE(isLit(window, LinkLight));
        EXPECT_FALSE(window.windowTitle().contains("simulated"));
        EXPECT_EQ(text(window, "simulated"), "");
    }
}

TEST_F(LinkFollow, ASimulatedLoggerIsMarkedInTitleAndStatusBar)
{
    writeSite("<LOGGER>sim:</LOGGER>");
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_TRUE(window.windowTitle().contains("simulated logger"));
    EXPECT_EQ(text(window, "simulated"), "Simulated logger");
    EXPECT_FALSE(window.findChild<QLabel*>(QStringLiteral("simulated"))->isHidden());
}

TEST_F(LinkFollow, ARefusedWriteIsShownWithItsChannel)
{
    writeSite("<LOGGER>sim:?connect=0&amp;period=20&amp;writeerror=1</LOGGER>");
    MainWindow window(settings, dialogs);
    host::OpenOptions options = offline();
    options.offline = false;
    ASSERT_TRUE(window.openScheme(options));
    ASSERT_TRUE(QTest::qWaitFor([&] { return isLit(window, LinkLight); }, DeadlineMilliseconds));
    EXPECT_FALSE(isErrorShown(window));
    click(window, PutButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isErrorShown(window); }, DeadlineMilliseconds));
    EXPECT_EQ(text(window, "errorText"),
              "Level (One|A): \"7\" was not written to address 16, which takes a number from 0 to 255: The logger "
              "refused the value "
              "for address 16. Write it again; a logger that goes on refusing it has the place read-only.");
}

TEST_F(LinkFollow, AnErrorInALoggersEventIsShown)
{
    writeSite("<LOGGER>sim:</LOGGER>");
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    auto* logger = qobject_cast<halyard::HalyardLogger*>(window.site()->logger().get());
    ASSERT_TRUE(logger);
    Q_EMIT logger->EventFailed(13, "Type mismatch");
    EXPECT_EQ(text(window, "errorText"), "Type mismatch (run-time error 13)");
}
