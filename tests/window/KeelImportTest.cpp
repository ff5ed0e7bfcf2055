// What an import of an older window builds, and what the logger and the scheme may do in the middle of it.

#include "WindowFixture.h"

#include "surface/host/Surface.h"
#include "surface/ops/WindowOps.h"
#include "surface/text/TextPainter.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Twips.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using document::Node;
using values::ErrorNumber;
using values::Name;
using values::Ref;

namespace {

/// Something that no catch clause names.
struct NoErrorOfOurs
{};

class KeelImportTest : public WindowTest
{
protected:
    ~KeelImportTest() override { surface::WindowOps::UnlockUpdates(); }

    /// Imports a window of these rows.
    bool import(const QByteArray& rows)
    {
        const QString name = folder.filePath(QStringLiteral("old.kel"));
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("KEEL 1\n" + rows);
        file.close();
        return panel->ImportKeel(name);
    }
    int errorOfImport(const QByteArray& rows)
    {
        return errorOf([&] { import(rows); });
    }
    Ref<wrappers::iBenchControl> control(int place) { return panel->Controls()->Control(Variant(place)); }
    QString child(int place, const char* name) { return control(place)->XMLNode().child(Name(name)).text(); }
    float charWidth() { return widthOf(QStringLiteral("A")); }
    float lineHeight() { return float(double(values::pixelsToTwips(panel->Font()->face().height())) * 1.2); }
    float widthOf(const QString& text)
    {
        surface::TextPainter painter;
        return values::pixelsToTwips(painter.measure(text, panel->Font()->face(), false).width());
    }
    bool isFrozen() const { return !panel->surface().updatesEnabled(); }
    Node keelNode() { return nodeOf("KEEL"); }
    Ref<fake::FakeWindows>& windows() { return logger->scheme->windows; }

    QTemporaryDir folder;
};

/// Each window that the scheme stores is prepared: it may get a way to come back to us.
void onStored(fake::FakeWindows& windows, const std::function<void(fake::FakeWindow&)>& prepare)
{
    windows.onStored = prepare;
}

const QByteArray Level = "4,12,\"Level \",m,16,2,0.00\n";
const QByteArray Title = "2,3,Weir,\n";

} // namespace

TEST_F(KeelImportTest, WindowIsNavyWithYellowLettersOfTheBoldDosTerminalFont)
{
    import("");
    EXPECT_EQ(panel->BackColor(), values::rgb(0, 0, 128));
    EXPECT_EQ(panel->ForeColor(), values::rgb(255, 255, 0));
    const Ref<surface::FontObject> font = panel->Font();
    EXPECT_EQ(font->name(), u"Terminal");
    EXPECT_TRUE(font->bold());
    EXPECT_EQ(font->points(), 12.0);
    EXPECT_EQ(font->charset(), 255);
}

TEST_F(KeelImportTest, OtherSettingsAreThoseOfANewWindow)
{
    panel->setGridSize(77);
    panel->setSnapToGrid(false);
    panel->setLockPositions(false);
    panel->setLockMenu(true);
    import("");
    EXPECT_EQ(panel->GridSize(), 200.0F);
    EXPECT_TRUE(panel->SnapToGrid());
    EXPECT_TRUE(panel->LockPositions());
    EXPECT_FALSE(panel->LockMenu());
}

TEST_F(KeelImportTest, WindowWithoutChannelsHasOnlyTheConnectButton)
{
    import("");
    ASSERT_EQ(panel->Controls()->Count(), 1);
    EXPECT_EQ(control(1)->ControlType(), u"VB.CommandButton");
    EXPECT_EQ(property(1, "Caption"), u"&Connect");
    EXPECT_EQ(control(1)->Left(), 0.0F);
    EXPECT_EQ(control(1)->Top(), 0.0F);
    EXPECT_EQ(control(1)->Width(), 2500.0F);
    EXPECT_EQ(control(1)->Height(), 800.0F);
    const Node action = control(1)->XMLNode().child(Name("ACTION"));
    EXPECT_EQ(action.xml(), u"<ACTION><TYPE>VESPER</TYPE><FUNCTION>CONNECT</FUNCTION><SHOWPROGRESS>1</SHOWPROGRESS>"
                            "</ACTION>");
}

TEST_F(KeelImportTest, ConnectButtonConnects)
{
    import("");
    static_cast<surface::LiveControl&>(*live(1)).put(Name("Value"), Variant(true));
    EXPECT_EQ(logger->link->connects, 1);
}

TEST_F(KeelImportTest, RowStandsAtItsCharacterAndItsLineBelowTheButton)
{
    import(Level + Title);
    ASSERT_EQ(panel->Controls()->Count(), 3);
    EXPECT_EQ(control(2)->Left(), 12 * charWidth());
    EXPECT_EQ(control(2)->Top(), 4 * lineHeight() + 500);
    EXPECT_EQ(control(3)->Left(), 3 * charWidth());
    EXPECT_EQ(control(3)->Top(), 2 * lineHeight() + 500);
}

TEST_F(KeelImportTest, MissingPositionIsColumnNullAndLineNullAtFiveHundredTwips)
{
    import(",,Weir\n1,,Gate\n,1,Pump\n");
    EXPECT_EQ(control(2)->Left(), 0.0F);
    EXPECT_EQ(control(2)->Top(), 500.0F);
    EXPECT_EQ(control(3)->Left(), 0.0F);
    EXPECT_EQ(control(3)->Top(), lineHeight() + 500);
    EXPECT_EQ(control(4)->Left(), charWidth());
    EXPECT_EQ(control(4)->Top(), 500.0F);
}

TEST_F(KeelImportTest, RowWithAnAddressIsALiveValueWithLabelAndUnits)
{
    import(Level);
    EXPECT_EQ(control(2)->ControlType(), u"VB.Label");
    const Ref<site::Channel> channel = control(2)->Channel();
    ASSERT_TRUE(channel);
    EXPECT_EQ(channel->BaseAddress(), 16);
    EXPECT_EQ(channel->UseCount(), 1);
    EXPECT_EQ(control(2)->BindTo(), QStringLiteral("KEEL|") + channel->Key());
    EXPECT_EQ(child(2, "ADDLABELSEPERATORS"), u"0");
    EXPECT_EQ(child(2, "SHOWLABELS"), u"-1");
    EXPECT_EQ(property(2, "BackStyle"), u"0");
    EXPECT_EQ(property(2, "Alignment"), u"0");
    EXPECT_EQ(property(2, "AutoSize"), values::toText(Variant(true)));
    EXPECT_EQ(property(2, "Caption"), u"Level ") << "until a scan";
    EXPECT_EQ(child(2, "WIDTH").toFloat(), widthOf(QStringLiteral("Level ")));
    EXPECT_EQ(child(2, "HEIGHT").toFloat(), lineHeight());
    channel->setValue(Variant(2.5));
    panel->Refresh();
    EXPECT_EQ(property(2, "Caption"), u"Level 2.50 m");
}

TEST_F(KeelImportTest, UseCountOfALiveValueIsOneWhateverTheSchemeGaveIt)
{
    onStored(*windows(), [](fake::FakeWindow& window) {
        for (const Ref<fake::FakeChannel>& channel : window.channels)
            channel->useCount = 7;
    });
    import(Level + "5,0,Also,,0\n");
    EXPECT_EQ(control(2)->Channel()->UseCount(), 1);
    ASSERT_TRUE(control(3)->Channel()) << "address 0 is one";
    EXPECT_EQ(control(3)->Channel()->UseCount(), 1);
}

TEST_F(KeelImportTest, RowWithoutAnAddressIsFixedTextOfLabelAndUnits)
{
    import("0,0,Weir,\" at \xf8\"\n");
    EXPECT_FALSE(control(2)->Channel());
    EXPECT_EQ(control(2)->BindTo(), QString());
    const QString text = QStringLiteral("Weir at \u00f8"); // which a DOS font shows as a degree sign
    EXPECT_EQ(property(2, "Caption"), text);
    EXPECT_EQ(property(2, "AutoSize"), values::toText(Variant(false)));
    EXPECT_EQ(property(2, "BackStyle"), u"0");
    EXPECT_EQ(control(2)->Width(), widthOf(text));
    EXPECT_EQ(control(2)->Height(), lineHeight());
    EXPECT_FALSE(control(2)->XMLNode().child(Name("SHOWLABELS")));
}

TEST_F(KeelImportTest, FixedTextWithoutUnitsIsTheLabel)
{
    import("0,0,Weir,,-1\n");
    EXPECT_EQ(property(2, "Caption"), u"Weir");
    panel->Refresh();
    EXPECT_EQ(property(2, "Caption"), u"Weir") << "no scan touches it";
}

TEST_F(KeelImportTest, RowsBeforeTheLastAreRefreshedWhenTheLastIsAddedAndTheListGoesOnRefreshing)
{
    import(Level + Level + Level);
    EXPECT_EQ(property(2, "Caption"), u"Level 0.00 m");
    EXPECT_EQ(property(3, "Caption"), u"Level 0.00 m");
    EXPECT_EQ(property(4, "Caption"), u"Level ") << "until a scan";
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(property(4, "Caption"), u"Level 0.00 m");
}

TEST_F(KeelImportTest, ControlsHaveEmptyKeys)
{
    import(Level);
    EXPECT_EQ(control(1)->Key(), QString());
    EXPECT_EQ(control(2)->Key(), QString());
}

TEST_F(KeelImportTest, AnswerIsFalseInAllCases)
{
    EXPECT_FALSE(import(""));
    EXPECT_FALSE(import(Level + Title));
    const Variant name = folder.filePath(QStringLiteral("old.kel"));
    EXPECT_FALSE(values::toBoolean(panel->object()->get(Name("ImportKeel"), {&name, 1})));
}

TEST_F(KeelImportTest, ImportedWindowIsTheSchemesKeelAndTheOneThatIsEdited)
{
    import(Level);
    const Ref<site::SchemeWindow> stored = windows()->Item(Variant(QStringLiteral("KEEL")));
    ASSERT_TRUE(stored);
    EXPECT_EQ(panel->CurrentWindow().get(), stored.get());
    EXPECT_EQ(panel->Controls()->XMLNode(), stored->XML());
    panel->setGridSize(55);
    EXPECT_EQ(stored->XML().child(Name("CONTAINER")).child(Name("GRIDSIZE")).text(), u"55");
    EXPECT_TRUE(isChanged());
}

TEST_F(KeelImportTest, SecondImportReplacesTheWindowOfTheFirst)
{
    import(Level + Title);
    const Ref<site::SchemeWindow> first = panel->CurrentWindow();
    import(Title);
    EXPECT_EQ(windows()->Count(), 1);
    EXPECT_NE(panel->CurrentWindow().get(), first.get());
    EXPECT_EQ(panel->CurrentWindow()->Count(), 1);
    EXPECT_EQ(panel->Controls()->Count(), 2);
    EXPECT_FALSE(first->XML().parent());
}

TEST_F(KeelImportTest, WindowShownBeforeIsLeftAsAnyOther)
{
    fill("A", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    import(Title);
    EXPECT_TRUE(nodeOf("A").children(Name("CONTROL")).empty());
    EXPECT_FALSE(nodeOf("A").child(Name("CONTAINER")).child(Name("BACKCOLOR")).text() == QStringLiteral("8388608"))
        << "navy is the import's alone";
}

TEST_F(KeelImportTest, LoadingItLaterShowsTheImport)
{
    import(Level + Title);
    panel->UpdateDocument();
    BenchWindow other;
    other.setForms(&forms);
    other.InitProperties();
    other.setShowSiteMap(false);
    other.setLogger(logger);
    other.LoadWindow(QStringLiteral("KEEL"));
    ASSERT_EQ(other.Controls()->Count(), 3);
    EXPECT_EQ(other.BackColor(), values::rgb(0, 0, 128));
    EXPECT_EQ(other.ForeColor(), values::rgb(255, 255, 0));
    EXPECT_TRUE(surface::fontsEqual(*other.Font(), *panel->Font()));
    for (int place = 1; place <= 3; ++place) {
        const Ref<wrappers::iBenchControl> again = other.Controls()->Control(Variant(place));
        EXPECT_EQ(again->Left(), control(place)->Left()) << place;
        EXPECT_EQ(again->Top(), control(place)->Top()) << place;
        EXPECT_EQ(again->Width(), control(place)->Width()) << place;
        const auto text = [](const wrappers::iBenchControl& shown, const char* name) {
            return values::toText(shown.Control()->get(Name(name)));
        };
        if (place > 1) {
            EXPECT_EQ(text(*again, "BackStyle"), u"0") << place;
        }
        if (place != 2) {
            EXPECT_EQ(text(*again, "Caption"), property(place, "Caption")) << place;
        }
    }
    EXPECT_EQ(values::toText(other.Controls()->Control(Variant(2))->Control()->get(Name("Caption"))),
              u"Level 0.00 m");
}

TEST_F(KeelImportTest, HostHearsOfTheWindowThatIsLeftAndOfTheOneThatIsEntered)
{
    QStringList heard;
    QObject::connect(panel.get(), &BenchWindow::WindowLeaving, [&] { heard += QStringLiteral("leaving"); });
    QObject::connect(panel.get(), &BenchWindow::WindowEntered, [&] { heard += panel->CurrentWindow()->Key(); });
    import(Title);
    EXPECT_EQ(heard.first(), u"leaving");
    EXPECT_EQ(heard.last(), u"KEEL");
    EXPECT_EQ(heard.filter(QStringLiteral("leaving")).size() * 2, heard.size()) << "in pairs";
}

// Failures -----------------------------------------------------------------------------------------------------

TEST_F(KeelImportTest, DrawingStandsStillMeanwhileAndGoesOnAfterwards)
{
    bool wasFrozen = false;
    windows()->onAdd = [&] { wasFrozen = isFrozen(); };
    import(Title);
    EXPECT_TRUE(wasFrozen);
    EXPECT_FALSE(isFrozen());
}

TEST_F(KeelImportTest, RemovalOfAWindowThatIsNotThereIsTheOneFailureThatIsTolerated)
{
    windows()->onRemove = [] { throw NoErrorOfOurs(); };
    EXPECT_NO_THROW(import(Title));
    EXPECT_EQ(panel->Controls()->Count(), 2);
}

TEST_F(KeelImportTest, AnyOtherFailureReachesTheCallerAndLeavesTheDrawingStopped)
{
    struct Row
    {
        const char* call;
        std::function<void()>* step;
    };
    const Row rows[] = {
        {"Scheme", &logger->onScheme},
        {"Windows", &logger->scheme->onWindows},
        {"createChannel", &windows()->onCreateChannel},
        {"Add", &windows()->onAdd},
    };
    for (const Row& row : rows) {
        *row.step = [] { throw std::runtime_error("disk gone"); };
        EXPECT_THROW(import(Title), std::runtime_error) << row.call;
        EXPECT_TRUE(isFrozen()) << row.call;
        *row.step = {};
        import(Title);
        EXPECT_FALSE(isFrozen()) << "the next import that succeeds lets it go on";
    }
}

TEST_F(KeelImportTest, FileThatIsRefusedLeavesTheKeelOfBeforeInTheScheme)
{
    import(Title);
    EXPECT_EQ(errorOfImport("0,x,a"), 321);
    EXPECT_EQ(errorOf([&] { panel->ImportKeel(folder.filePath(QStringLiteral("none"))); }), 53);
    EXPECT_EQ(windows()->Count(), 1);
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"RTD") << "the panel was cleared first";
    EXPECT_EQ(panel->BackColor(), values::rgb(0, 0, 128));
}

TEST_F(KeelImportTest, WithoutALoggerItIsErrorNinetyOneWithThePanelDressed)
{
    BenchWindow bare;
    bare.InitProperties();
    EXPECT_EQ(errorOf([&] { bare.ImportKeel(folder.filePath(QStringLiteral("old.kel"))); }), 91);
    EXPECT_EQ(bare.BackColor(), values::rgb(0, 0, 128));
    surface::WindowOps::UnlockUpdates();
}

TEST_F(KeelImportTest, PositionTooLargeForAMeasureIsAnOverflowWithTheWindowPartlyBuilt)
{
    EXPECT_EQ(errorOfImport(Title + "0,1e60,Far\n" + Title), int(ErrorNumber::Overflow));
    EXPECT_EQ(panel->Controls()->Count(), 3) << "button, title and the label without its place";
    EXPECT_TRUE(isFrozen());
    EXPECT_EQ(errorOfImport("1e400,0,Far\n"), int(ErrorNumber::Overflow));
}

TEST_F(KeelImportTest, PartThatIsMissingIsErrorNinetyOne)
{
    const auto fails = [&] { return errorOfImport(Title); };
    windows()->storesWindows = false;
    EXPECT_EQ(fails(), 91);
    windows()->storesWindows = true;
    windows()->makesChannels = false;
    EXPECT_EQ(fails(), 91);
    windows()->makesChannels = true;
    windows()->onAdd = [this] { logger->scheme->onWindows = {}; };
    bool given = true;
    QObject::connect(panel.get(), &BenchWindow::WindowEntered, [&] { given = bool(panel->CurrentWindow()); });
    const auto scheme = std::exchange(logger->scheme, nullptr);
    EXPECT_EQ(fails(), 91);
    EXPECT_TRUE(given) << "some window is always the one that is edited";
    logger->scheme = scheme;
    EXPECT_EQ(fails(), 0);
}

TEST_F(KeelImportTest, ChannelThatIsNotGivenIsErrorNinetyOneWithTheWindowPartlyBuilt)
{
    onStored(*windows(), [](fake::FakeWindow& window) { window.givesChannels = false; });
    EXPECT_EQ(errorOfImport(Title), 91);
    EXPECT_EQ(panel->Controls()->Count(), 1);
    onStored(*windows(), [](fake::FakeWindow& window) { window.onChannel = [] { throw NoErrorOfOurs(); }; });
    EXPECT_THROW(import(Title), NoErrorOfOurs);
    onStored(*windows(), [](fake::FakeWindow& window) { window.onCount = [] { throw std::bad_alloc(); }; });
    EXPECT_THROW(import(Title), std::bad_alloc);
}

TEST_F(KeelImportTest, WindowThatIsLoadedInTheMiddleStands)
{
    fill("B", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    int loads = 0;
    const auto load = [&] {
        if (loads++ == 0)
            panel->LoadWindow(QStringLiteral("B"));
    };
    const auto stands = [&](const char* call) {
        EXPECT_GT(loads, 0) << call;
        EXPECT_EQ(panel->CurrentWindow()->Key(), u"B") << call;
        EXPECT_EQ(panel->Controls()->Count(), 1) << call;
        EXPECT_FALSE(isFrozen()) << call;
        panel->Clear();
        fill("B", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
        loads = 0;
    };
    const std::pair<const char*, std::function<void()>*> steps[] = {
        {"createChannel", &windows()->onCreateChannel},
        {"Remove", &windows()->onRemove},
        {"Add", &windows()->onAdd},
    };
    for (const auto& [call, step] : steps) {
        *step = load;
        import(Title + Level);
        *step = {};
        stands(call);
    }
    onStored(*windows(), [&](fake::FakeWindow& window) { window.onCount = load; });
    import(Title + Level);
    stands("Count");
    onStored(*windows(), [&](fake::FakeWindow& window) { window.onChannel = load; });
    import(Title + Level);
    stands("Item");
}

TEST_F(KeelImportTest, PanelMayGoAtEveryCall)
{
    const auto without = [&, this](const char* call, const std::function<void()>& arm) {
        if (!panel) {
            panel = std::make_unique<BenchWindow>();
            panel->setForms(&forms);
            panel->setLogger(logger);
        }
        arm();
        BenchWindow& doomed = *panel;
        const QString name = folder.filePath(QStringLiteral("old.kel"));
        doomed.ImportKeel(name);
        EXPECT_FALSE(panel) << call;
        windows()->onStored = {};
    };
    import(Title + Level);
    const std::function<void()> end = [this] { panel.reset(); };
    const std::pair<const char*, std::function<void()>*> steps[] = {
        {"Scheme", &logger->onScheme},          {"Windows", &logger->scheme->onWindows},
        {"createWindow", &windows()->onCreate}, {"createChannel", &windows()->onCreateChannel},
        {"Remove", &windows()->onRemove},       {"Add", &windows()->onAdd},
    };
    for (const auto& row : steps) {
        std::function<void()>* step = row.second;
        without(row.first, [&] { *step = end; });
        *step = {};
    }
    without("Count", [&] { onStored(*windows(), [&](fake::FakeWindow& window) { window.onCount = end; }); });
    without("Item", [&] { onStored(*windows(), [&](fake::FakeWindow& window) { window.onChannel = end; }); });
}

TEST_F(KeelImportTest, ImportInsideAnImportStands)
{
    bool once = true;
    windows()->onAdd = [&] {
        if (std::exchange(once, false))
            import(Title);
    };
    errorOfImport(Title + Level); // the scheme has its key by then
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"KEEL");
    EXPECT_EQ(panel->Controls()->Count(), 2);
}
