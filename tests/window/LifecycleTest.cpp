#include "WindowFixture.h"

#include "window/ControlFactory.h"

using namespace zan;
using namespace zan::window;
using binding::Variant;
using document::Node;
using values::ErrorNumber;
using values::make;
using values::Name;
using values::Ref;

namespace {
class Lifecycle : public WindowTest
{};

QString childText(const Node& node, const char* first, const char* second)
{
    return node.child(Name(first)).child(Name(second)).text();
}

constexpr const char* Label = "<CONTROL><TYPE>VB.Label</TYPE><CAPTION>hello</CAPTION></CONTROL>";
} // namespace

TEST_F(Lifecycle, LoadOfANewKeyCreatesTheWindowAndTheNextLoadFindsIt)
{
    EXPECT_EQ(logger->scheme->windows->Count(), 0);
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(logger->scheme->windows->Count(), 1);
    const Ref<site::SchemeWindow> created = panel->CurrentWindow();
    EXPECT_EQ(created->Key(), u"A");
    EXPECT_TRUE(created->XML().child(Name("CONTAINER")));
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(logger->scheme->windows->Count(), 1);
    EXPECT_EQ(panel->CurrentWindow().get(), created.get());
}

TEST_F(Lifecycle, LoadOfAnotherWindowEmptiesTheFormerTreeAndResetsItsContainer)
{
    fill("A", "<CONTAINER><GRIDSIZE>120</GRIDSIZE><BACKCOLOR>255</BACKCOLOR></CONTAINER>");
    fill("A", Label);
    fill("B", Label);
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->GridSize(), 120);
    panel->LoadWindow(QStringLiteral("B"));
    EXPECT_TRUE(nodeOf("A").children(Name("CONTROL")).empty());
    EXPECT_EQ(childText(nodeOf("A"), "CONTAINER", "GRIDSIZE"), u"200");
    EXPECT_EQ(childText(nodeOf("A"), "CONTAINER", "BACKCOLOR"), u"-2147483633");
    EXPECT_EQ(nodeOf("B").children(Name("CONTROL")).size(), 1u);
}

TEST_F(Lifecycle, AHostHearsOfALoadWhileTheFormerTreeIsWholeAndAgainAtItsEnd)
{
    fill("A", "<CONTAINER><GRIDSIZE>300</GRIDSIZE></CONTAINER><CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    fill("B", "<CONTAINER/>");
    panel->LoadWindow(QStringLiteral("A"));
    QStringList heard;
    const auto note = [&](const char* what) {
        const document::Node window = nodeOf("A");
        heard << QStringLiteral("%1 %2: %3 controls, grid %4")
                     .arg(QLatin1String(what), panel->CurrentWindow()->Key())
                     .arg(window.children(values::Name("CONTROL")).size())
                     .arg(window.child(values::Name("CONTAINER")).child(values::Name("GRIDSIZE")).text());
    };
    QObject::connect(panel.get(), &BenchWindow::WindowLeaving, panel.get(), [&] { note("leaving"); });
    QObject::connect(panel.get(), &BenchWindow::WindowEntered, panel.get(), [&] { note("entered"); });
    panel->LoadWindow(QStringLiteral("B"));
    EXPECT_EQ(heard, (QStringList{"leaving A: 1 controls, grid 300", "entered B: 0 controls, grid 200"}));
    heard.clear();
    logger->scheme->windows->failure = values::RuntimeError(ErrorNumber::PathNotFound);
    EXPECT_EQ(errorOf([&] { panel->LoadWindow(QStringLiteral("A")); }), int(ErrorNumber::PathNotFound));
    EXPECT_EQ(heard.size(), 2) << "a load that fails has an end, too";
    logger->scheme->windows->failure.reset();
    heard.clear();
    panel->Clear();
    EXPECT_EQ(heard.size(), 2);
}

TEST_F(Lifecycle, AHandlerOfALoadThatFailsDoesNotTakeTheLoadAlong)
{
    QObject::connect(panel.get(), &BenchWindow::WindowLeaving, panel.get(),
                     [] { values::raise(ErrorNumber::OutOfMemory); });
    QObject::connect(panel.get(), &BenchWindow::WindowEntered, panel.get(),
                     [] { values::raise(ErrorNumber::SubscriptOutOfRange); });
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->CurrentWindow()->Key(), "A");
    EXPECT_EQ(errors, (std::vector<int>{int(ErrorNumber::OutOfMemory), int(ErrorNumber::SubscriptOutOfRange)}));
}

TEST_F(Lifecycle, ScriptsReachTheirHostThroughTheWindowAndFindNothingWithoutOne)
{
    const values::Ref<BenchWindowObject> face = panel->object();
    EXPECT_FALSE(face->get(values::Name("Host")).object());
    panel->setHost(panel->Controls());
    EXPECT_EQ(face->get(values::Name("Host")).object(), panel->Controls().get());
}

TEST_F(Lifecycle, ContainerSettingsReachTheWindowByName)
{
    fill("A", "<CONTAINER><BACKCOLOR>255</BACKCOLOR><FORECOLOR>65280</FORECOLOR><BORDERSTYLE>1</BORDERSTYLE>"
              "<BACKSTYLE>0</BACKSTYLE><GRIDSIZE>150</GRIDSIZE><SNAPTOGRID>0</SNAPTOGRID><STRETCH>-1</STRETCH>"
              "<NOSUCH>1</NOSUCH><FONT><NAME>Arial</NAME><SIZE>14</SIZE><BOLD>-1</BOLD></FONT></CONTAINER>");
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->BackColor().code, 255);
    EXPECT_EQ(panel->ForeColor().code, 65280);
    EXPECT_EQ(panel->BorderStyle(), 1);
    EXPECT_EQ(panel->BackStyle(), 0);
    EXPECT_EQ(panel->GridSize(), 150);
    EXPECT_FALSE(panel->SnapToGrid());
    EXPECT_TRUE(panel->Stretch());
    EXPECT_EQ(panel->Font()->name(), u"Arial");
    EXPECT_TRUE(panel->Font()->bold());
    EXPECT_EQ(panel->Font()->size().scaled, 140000);
}

TEST_F(Lifecycle, GridSizeOfZeroIsTakenAndLeavesTheDocument)
{
    panel->LoadWindow(QStringLiteral("A"));
    panel->setGridSize(0);
    EXPECT_EQ(panel->GridSize(), 0);
    EXPECT_FALSE(nodeOf("A").child(Name("CONTAINER")).child(Name("GRIDSIZE")));
    panel->setGridSize(-5);
    EXPECT_EQ(panel->GridSize(), -5);
    EXPECT_EQ(childText(nodeOf("A"), "CONTAINER", "GRIDSIZE"), u"-5");
}

TEST_F(Lifecycle, LoadWithoutLoggerRaisesWithTheDefaultsAlreadyRestored)
{
    BenchWindow bare;
    bare.InitProperties();
    bare.setGridSize(77);
    EXPECT_EQ(errorOf([&] { bare.LoadWindow(QStringLiteral("A")); }), int(ErrorNumber::ObjectNotSet));
    EXPECT_EQ(bare.GridSize(), 200);
    EXPECT_EQ(errorOf([&] { bare.setLogger({}); }), int(ErrorNumber::ObjectNotSet));
}

TEST_F(Lifecycle, FailureOfTheSchemeReachesTheHost)
{
    logger->scheme->windows->failure = values::RuntimeError(ErrorNumber::PathNotFound);
    EXPECT_EQ(errorOf([&] { panel->LoadWindow(QStringLiteral("A")); }), int(ErrorNumber::PathNotFound));
    EXPECT_FALSE(panel->CurrentWindow());
}

TEST_F(Lifecycle, StoredSiteMapControlsDisappearAtTheLoad)
{
    fill("A", "<CONTROL><TYPE>SITEMAP</TYPE></CONTROL>");
    fill("A", Label);
    fill("A", "<CONTROL><TYPE>SITEMAP</TYPE></CONTROL>");
    panel->setShowSiteMap(false);
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(nodeOf("A").children(Name("CONTROL")).size(), 1u);
    EXPECT_EQ(panel->Controls()->Count(), 1);
}

TEST_F(Lifecycle, WithoutSiteMapItsElementIsLeftAtTheLoadAndWrittenBySave)
{
    fill("A", "<CONTAINER><SITEMAP><LEFT>77</LEFT></SITEMAP></CONTAINER>");
    panel->setShowSiteMap(false);
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(nodeOf("A").child(Name("CONTAINER")).child(Name("SITEMAP")).xml(),
              u"<SITEMAP><LEFT>77</LEFT></SITEMAP>");
    panel->SaveWindow();
    const Node siteMap = nodeOf("A").child(Name("CONTAINER")).child(Name("SITEMAP"));
    EXPECT_EQ(siteMap.child(Name("LEFT")).text(), u"360");
    EXPECT_EQ(siteMap.child(Name("HEIGHT")).text(), u"3495");
    EXPECT_TRUE(siteMap.child(Name("FONT")));
}

TEST_F(Lifecycle, SaveStoresFontAndNodesAndCallsTheScheme)
{
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    live(1)->move(150, 300, 450, 600);
    panel->SaveWindow();
    const Node control = nodeOf("A").child(Name("CONTROL"));
    EXPECT_EQ(control.child(Name("LEFT")).text(), u"150");
    EXPECT_EQ(control.child(Name("HEIGHT")).text(), u"600");
    EXPECT_FALSE(childText(nodeOf("A"), "CONTAINER", "FONT").isEmpty());
    EXPECT_EQ(logger->scheme->saves, 1);
}

TEST_F(Lifecycle, FailedSaveIsSilent)
{
    panel->LoadWindow(QStringLiteral("A"));
    logger->scheme->failure = values::RuntimeError(ErrorNumber::PathFileAccess);
    EXPECT_EQ(errorOf([&] { panel->SaveWindow(); }), 0);
    EXPECT_EQ(logger->scheme->saves, 1);
}

TEST_F(Lifecycle, SaveWithoutCurrentWindowIsNothing)
{
    panel->SaveWindow();
    EXPECT_EQ(logger->scheme->saves, 0);
}

TEST_F(Lifecycle, SaveAfterClearTouchesAWindowOfNoSchemeAndStillSaves)
{
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    panel->Clear();
    EXPECT_EQ(panel->Controls()->Count(), 0);
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"RTD");
    EXPECT_EQ(logger->scheme->windows->Count(), 1) << "the fresh window is not added";
    panel->SaveWindow();
    EXPECT_EQ(logger->scheme->saves, 1);
}

TEST_F(Lifecycle, LoadedFormReloadsToTheSameTree)
{
    fill("A", "<CONTAINER/><FOREIGN keep=\"yes\">x</FOREIGN>");
    fill("A", Label);
    fill("A", "<CONTROL><TYPE>VB.TextBox</TYPE><LEFT>10</LEFT><ODD>kept</ODD></CONTROL>");
    fill("A", "<CONTROL><TYPE>Some.Day</TYPE><INNER>kept</INNER></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    panel->SaveWindow();
    const QString first = nodeOf("A").xml();
    BenchWindow second;
    second.setShowSiteMap(false);
    second.InitProperties();
    second.setLogger(logger);
    second.LoadWindow(QStringLiteral("A"));
    second.SaveWindow();
    EXPECT_EQ(nodeOf("A").xml(), first);
    EXPECT_TRUE(first.contains(u"<FOREIGN keep=\"yes\">x</FOREIGN>"));
    EXPECT_TRUE(first.contains(u"<ODD>kept</ODD>"));
    EXPECT_TRUE(first.contains(u"<INNER>kept</INNER>"));
}

TEST_F(Lifecycle, LoadOfTheWindowThatIsShownFindsItsControlsTakenOut)
{
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->Controls()->Count(), 0);
}

TEST_F(Lifecycle, LoadOfASavedWindowLeavesTheSchemeUnchanged)
{
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    panel->SaveWindow();
    const Node changed = logger->scheme->windows->root.child(Name("CHANGED"));
    if (changed)
        logger->scheme->windows->root.removeChild(changed);
    BenchWindow second;
    second.InitProperties();
    second.setLogger(logger);
    second.setShowSiteMap(false);
    second.LoadWindow(QStringLiteral("A"));
    EXPECT_FALSE(isChanged());
}

TEST_F(Lifecycle, FollowersTakeTheWindowsColoursAndOthersDoNot)
{
    fill("A", "<CONTROL><TYPE>VB.Label</TYPE><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS></CONTROL>");
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    panel->setForeColor(values::rgb(1, 2, 3));
    EXPECT_EQ(property(1, "ForeColor"), QString::number(values::rgb(1, 2, 3).code));
    EXPECT_NE(property(2, "ForeColor"), QString::number(values::rgb(1, 2, 3).code));
    EXPECT_EQ(childText(nodeOf("A"), "CONTAINER", "FORECOLOR"), QString::number(values::rgb(1, 2, 3).code));
}

TEST_F(Lifecycle, FollowersShareTheVeryFontObjectThatIsSet)
{
    fill("A", "<CONTROL><TYPE>VB.Label</TYPE><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS></CONTROL>");
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    const auto font = make<surface::FontObject>();
    panel->setFont(font);
    EXPECT_EQ(live(1)->get(Name("Font")).object(), font.get());
    EXPECT_NE(live(2)->get(Name("Font")).object(), font.get());
    EXPECT_FALSE(nodeOf("A").child(Name("CONTAINER")).child(Name("FONT")));
}

TEST_F(Lifecycle, EveryWriteOfABagPropertyIsReported)
{
    QStringList reported;
    QObject::connect(panel.get(), &BenchWindow::PropertyChanged, panel.get(),
                     [&](const QString& name) { reported << name; });
    panel->object()->put(Name("backcolor"), Variant(7));
    panel->setGridSize(3);
    panel->setLockMenu(true);
    panel->setHideProtectedControls(true); // not in the bag
    EXPECT_EQ(reported.join(u' '), u"BackColor GridSize LockMenu");
}

TEST_F(Lifecycle, LinkThatIsUpAlreadyShowsAtTheLoad)
{
    logger->link->state = site::LinkState::Connected;
    fill("A",
         "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>VESPER</TYPE><FUNCTION>CONNECT</FUNCTION></ACTION>"
         "</CONTROL>");
    fill("A", "<CONTROL><TYPE>VB.CommandButton</TYPE><CAPTION>Other</CAPTION><ACTION><TYPE>VESPER</TYPE>"
              "<FUNCTION>UNLOAD</FUNCTION></ACTION></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(property(1, "Caption"), u"&Disconnect");
    EXPECT_EQ(property(2, "Caption"), u"Other");
    const char16_t* captions[] = {u"&Connect", u"&Cancel", u"&Disconnect", u"&Cancel", u"&Re-connect"};
    for (int state = 0; state <= 4; ++state) {
        logger->link->enter(site::LinkState(state));
        EXPECT_EQ(property(1, "Caption"), captions[state]);
    }
    ASSERT_EQ(forms.boxes().size(), 1u);
    EXPECT_EQ(forms.boxes()[0].text, u"Connection to site broken");
    EXPECT_EQ(forms.boxes()[0].style, surface::HostForms::Exclamation);
}

TEST_F(Lifecycle, PanelWithTooManyControlsFailsByOverflowAndLives)
{
    const Node root = nodeOf("A");
    for (int i = 0; i < 40000; ++i) {
        const Node control = root.createElement(Name("CONTROL"));
        control.appendChild(control.createElement(Name("TYPE"), QStringLiteral("VB.Label")));
        root.appendChild(control);
    }
    EXPECT_EQ(errorOf([&] { panel->LoadWindow(QStringLiteral("A")); }), int(ErrorNumber::Overflow));
    EXPECT_EQ(panel->Controls()->Count(), 32767);
    fill("B", Label);
    panel->LoadWindow(QStringLiteral("B"));
    EXPECT_EQ(panel->Controls()->Count(), 1);
}

TEST_F(Lifecycle, HidingThePanelItselfEndsItsLifeAndHidingAParentDoesNot)
{
    QWidget page;
    auto* shownPanel = new BenchWindow(&page);
    shownPanel->InitProperties();
    std::vector<int> seen;
    QObject::connect(shownPanel, &BenchWindow::runtimeError, &page,
                     [&](int number, const QString&) { seen.push_back(number); });
    page.show();
    page.hide();
    EXPECT_TRUE(shownPanel->Controls());
    page.show();
    shownPanel->hide();
    EXPECT_FALSE(shownPanel->Controls());
    shownPanel->show(); // what a host must not do: it is told, nothing crashes
    EXPECT_EQ(seen, std::vector<int>{int(ErrorNumber::ObjectNotSet)});
}

TEST_F(Lifecycle, FaceOfAPanelThatHasGoneRaisesObjectNotSet)
{
    const Ref<BenchWindowObject> object = panel->object();
    const Ref<wrappers::BenchControls> list = panel->Controls();
    panel.reset();
    EXPECT_EQ(errorOf([&] { object->get(Name("GridSize")); }), int(ErrorNumber::ObjectNotSet));
    EXPECT_EQ(errorOf([&] { list->Add(QStringLiteral("VB.Label")); }), int(ErrorNumber::ObjectNotSet));
    logger->link->enter(site::LinkState::Connected);
    Q_EMIT logger->NewBenchData();
}

TEST_F(Lifecycle, DataReachesLabelsAndTextBoxesOfTheLoadedPanel)
{
    logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"))->format = QStringLiteral("0.000");
    fill("A", "<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>"
              "<CONTROL><TYPE>VB.TextBox</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>"
              "<CONTROL><TYPE>VB.TextBox</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(property(1, "Caption"), u"");
    logger->setValue(QStringLiteral("RTD"), QStringLiteral("STAGE"), Variant(1.5));
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(property(1, "Caption"), u"1.500");
    EXPECT_EQ(property(2, "Text"), u"1.500");
    EXPECT_EQ(property(3, "Text"), u"No channel");
}

TEST_F(Lifecycle, DocumentIsBroughtUpToDateWithoutASave)
{
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    live(1)->move(150, 300, 450, 600);
    panel->UpdateDocument();
    EXPECT_EQ(nodeOf("A").child(Name("CONTROL")).child(Name("LEFT")).text(), u"150");
    EXPECT_EQ(logger->scheme->saves, 0);
}

TEST_F(Lifecycle, AfterClearWhatIsPlacedBelongsToAFreshWindowAndTheFormerHoldsDefaults)
{
    fill("A", "<CONTAINER><GRIDSIZE>120</GRIDSIZE></CONTAINER>");
    fill("A", Label);
    panel->LoadWindow(QStringLiteral("A"));
    panel->Clear();
    EXPECT_EQ(childText(nodeOf("A"), "CONTAINER", "GRIDSIZE"), u"200");
    const Ref<site::SchemeWindow> fresh = panel->CurrentWindow();
    EXPECT_FALSE(fresh->XML().child(Name("CONTAINER"))) << "made when first needed";
    const QString left = nodeOf("A").xml();
    panel->setGridSize(77);
    panel->Controls()->Add(QStringLiteral("VB.Label"));
    panel->SaveWindow();
    EXPECT_EQ(childText(fresh->XML(), "CONTAINER", "GRIDSIZE"), u"77");
    EXPECT_TRUE(fresh->XML().child(Name("CONTAINER")).child(Name("FONT")));
    EXPECT_EQ(fresh->XML().children(Name("CONTROL")).size(), 1u);
    EXPECT_EQ(nodeOf("A").xml(), left) << "nothing of the former window is touched";
}

TEST_F(Lifecycle, ClearNeedsNoLogger)
{
    BenchWindow bare;
    bare.InitProperties();
    EXPECT_EQ(errorOf([&] { bare.Clear(); }), 0);
    ASSERT_TRUE(bare.CurrentWindow());
    EXPECT_EQ(bare.CurrentWindow()->Key(), u"RTD");
    EXPECT_EQ(bare.CurrentWindow()->Count(), 0);
    bare.Controls()->Add(QStringLiteral("VB.Label"));
    bare.setGridSize(33);
    bare.SaveWindow();
    EXPECT_EQ(bare.CurrentWindow()->XML().children(Name("CONTROL")).size(), 1u);
    EXPECT_EQ(childText(bare.CurrentWindow()->XML(), "CONTAINER", "GRIDSIZE"), u"33");
    logger->scheme->windows->onCreate = [] { throw values::RuntimeError(ErrorNumber::PathFileAccess); };
    EXPECT_EQ(errorOf([&] { panel->Clear(); }), 0) << "nor a scheme that can make a window";
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"RTD");
}

TEST_F(Lifecycle, OfTwoFontsAndSiteMapsTheLastOneCountsAndIsTheOneThatIsStored)
{
    fill("A",
         "<CONTAINER xmlns:p='urn:p'><FONT><NAME>Arial</NAME></FONT><SITEMAP><LEFT>1</LEFT></SITEMAP>"
         "<p:FONT><NAME>Courier New</NAME><SIZE>11</SIZE></p:FONT><SITEMAP><LEFT>2</LEFT></SITEMAP></CONTAINER>");
    panel->setShowSiteMap(true);
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->Font()->name(), u"Courier New");
    panel->Font()->setName(QStringLiteral("Tahoma"));
    panel->SaveWindow();
    const Node container = nodeOf("A").child(Name("CONTAINER"));
    EXPECT_EQ(childText(container, "FONT", "NAME"), u"Arial");
    EXPECT_EQ(childText(container, "p:FONT", "NAME"), u"Tahoma");
    EXPECT_EQ(childText(container, "SITEMAP", "LEFT"), u"1");
    EXPECT_EQ(container.children(Name("SITEMAP")).back().child(Name("LEFT")).text(), u"2");
}

TEST_F(Lifecycle, BackStyleAndBorderStyleAreZeroOrOneAndAnythingElseIsRefused)
{
    for (const char* name : {"BackStyle", "BorderStyle"}) {
        for (const int style : {0, 1})
            EXPECT_EQ(errorOf([&] { panel->object()->put(Name(name), Variant(style)); }), 0);
        for (const int style : {-1, 2, 7}) {
            EXPECT_EQ(errorOf([&] { panel->object()->put(Name(name), Variant(style)); }),
                      int(ErrorNumber::InvalidPropertyValue));
            EXPECT_EQ(values::toLong(panel->object()->get(Name(name))), 1);
        }
    }
    panel->setBackStyle(1);
    panel->setBorderStyle(0);
    fill("A",
         "<CONTAINER><BACKSTYLE>2</BACKSTYLE><BORDERSTYLE>-3</BORDERSTYLE><GRIDSIZE>99</GRIDSIZE></CONTAINER>");
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->BackStyle(), 1) << "skipped at a load";
    EXPECT_EQ(panel->BorderStyle(), 0);
    EXPECT_EQ(panel->GridSize(), 99);
}

TEST_F(Lifecycle, ValuesInTheDocumentClickNothing)
{
    logger->link->state = site::LinkState::Connected;
    logger->channel(QStringLiteral("RTD"), QStringLiteral("GATE"));
    constexpr const char* action = "<BINDTO>RTD|GATE</BINDTO><ACTION><TYPE>TOGGLE</TYPE></ACTION><VALUE>1</VALUE>";
    for (const char* type : {"VB.CheckBox", "VB.CommandButton", "VB.OptionButton"}) {
        fill("A",
             (QByteArray("<CONTROL><TYPE>") + type + "</TYPE>" + action + "</CONTROL>").repeated(2).constData());
    }
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_TRUE(errors.empty());
    EXPECT_TRUE(logger->live->writes.empty());
    EXPECT_EQ(property(6, "Value"), u"True") << "the state itself is shown";
    const auto box = panel->Controls()->Control(Variant(1));
    box->setXMLNode(box->XMLNode());
    live(1)->put(Name("Value"), Variant(0));
    EXPECT_FALSE(logger->live->writes.empty()) << "from then on a value that is put is a click";
}

TEST_F(Lifecycle, LockingAFailedSaveAndAScanAreNoUnsavedChanges)
{
    logger->link->state = site::LinkState::Connected;
    logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"))->value = Variant(4);
    fill("A", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL><CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>"
              "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>"
              "<CONTROL><TYPE>VB.CheckBox</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    const auto settle = [this] { document::XMLOps::UnmarkChanged(logger->scheme->windows->root); };
    settle();
    panel->setLockPositions(false);
    panel->setLockPositions(true);
    EXPECT_FALSE(isChanged());
    Q_EMIT logger->NewBenchData();
    logger->link->enter(site::LinkState::Broken);
    panel->Refresh();
    EXPECT_FALSE(isChanged());
    logger->scheme->failure = values::RuntimeError(ErrorNumber::PathFileAccess);
    live(1)->move(150, 300);
    panel->SaveWindow();
    EXPECT_FALSE(isChanged());
    EXPECT_EQ(nodeOf("A").child(Name("CONTROL")).child(Name("LEFT")).text(), u"150");
    panel->setGridSize(44);
    EXPECT_TRUE(isChanged());
    panel->SaveWindow();
    EXPECT_TRUE(isChanged()) << "a failed save does not hide a change either";
}

TEST_F(Lifecycle, WindowsColoursReachTheNodeOfAFollowerThatHasNoSuchColour)
{
    fill("A", "<CONTROL><TYPE>MSComctlLib.ProgressBar</TYPE><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    panel->setForeColor({255});
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(nodeOf("A").child(Name("CONTROL")).child(Name("FORECOLOR")).text(), u"255");
}

TEST_F(Lifecycle, WindowOfTheMostControlsLoadsScansAndSaves)
{
    const Node root = nodeOf("A");
    for (int i = 0; i < 32766; ++i) { // and the site map is the last one
        const Node control = root.createElement(Name("CONTROL"));
        control.appendChild(control.createElement(Name("TYPE"), QStringLiteral("VB.Label")));
        root.appendChild(control);
    }
    panel->LoadWindow(QStringLiteral("A"));
    panel->setBackColor({255});
    panel->setFont(make<surface::FontObject>());
    panel->SaveWindow();
    EXPECT_GE(panel->Controls()->Count(), 32766);
    EXPECT_EQ(logger->scheme->saves, 1);
}
