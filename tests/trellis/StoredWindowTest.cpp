#include "SchemeFolder.h"

#include "support/FakeSite.h"
#include "trellis/Elements.h"

namespace zan::trellis {

namespace {

const QByteArray Site = "<SCHEME>"
                        "<WINDOW><KEY>SCHEME</KEY></WINDOW>"
                        "<WINDOW><KEY>RTD</KEY>"
                        "<CHANNEL><KEY>Stage</KEY><LABEL>first</LABEL></CHANNEL>"
                        "<CONTAINER/>"
                        "<CHANNEL><KEY>Flow</KEY></CHANNEL>"
                        "<CHANNEL><LABEL>keyless</LABEL></CHANNEL>"
                        "<CHANNEL><KEY>STAGE</KEY><LABEL>second</LABEL></CHANNEL>"
                        "</WINDOW>"
                        "<WINDOW><KEY>rtd</KEY></WINDOW>"
                        "</SCHEME>";

} // namespace

class StoredWindowTest : public SchemeFolder
{
protected:
    Ref<SchemeFile> scheme = opened(Site);
    Ref<site::SchemeWindows> windows = scheme->Windows();
    Ref<site::SchemeWindow> rtd = windows->Item(key("RTD"));

    std::string labelOf(const char* channel) const
    {
        const auto found = rtd->Item(key(channel));
        return found ? found->Label().toStdString() : "(none)";
    }
    Node nodeOf(const char* channel) const { return rtd->Item(key(channel))->XMLNode(); }
};

TEST_F(StoredWindowTest, AWindowIsFoundByIndexAndByKeyInAnyCase)
{
    EXPECT_EQ(windows->Count(), 3);
    EXPECT_EQ(windows->Item(Variant(1))->Key().toStdString(), "SCHEME");
    EXPECT_EQ(windows->Item(key("scheme")).get(), windows->Item(Variant(1)).get());
    EXPECT_EQ(windows->Item(Variant(2.4)).get(), rtd.get());
    EXPECT_FALSE(windows->Item(key("Nowhere")));
    EXPECT_FALSE(windows->Item(key("2")));
    EXPECT_FALSE(windows->Item(key("")));
}

TEST_F(StoredWindowTest, OfTwoElementsWithOneKeyTheFirstWinsAndTheOtherIsReachedByIndex)
{
    EXPECT_EQ(rtd.get(), windows->Item(Variant(2)).get());
    EXPECT_EQ(windows->Item(Variant(3))->Key().toStdString(), "rtd");
    EXPECT_EQ(labelOf("stage"), "first");
    EXPECT_EQ(rtd->Item(Variant(4))->Label().toStdString(), "second");
}

TEST_F(StoredWindowTest, AnIndexOutsideRaisesNine)
{
    for (const Variant& index : {Variant(0), Variant(4), Variant(-1), Variant()})
        EXPECT_EQ(errorOf([&] { windows->Item(index); }), 9);
    for (const Variant& index : {Variant(0), Variant(5), Variant(std::int16_t(-32768))})
        EXPECT_EQ(errorOf([&] { rtd->Item(index); }), 9);
    EXPECT_EQ(errorOf([&] { rtd->Item(Variant::null()); }), 94);
}

TEST_F(StoredWindowTest, AnElementWithoutKeyHasTheEmptyKey)
{
    EXPECT_EQ(rtd->Item(key(""))->Label().toStdString(), "keyless");
    EXPECT_EQ(rtd->Item(Variant(3))->Key(), QString());
}

TEST_F(StoredWindowTest, ANodeHasOneObjectWhileAnybodyHoldsIt)
{
    const auto stage = rtd->Item(key("Stage"));
    stage->setUseCount(2);
    EXPECT_EQ(rtd->Item(Variant(1)).get(), stage.get());
    EXPECT_EQ(windows->Item(Variant(2)).get(), rtd.get());
    EXPECT_EQ(scheme->Windows().get(), windows.get());
}

TEST_F(StoredWindowTest, TheWindowKeepsTheValuesOfChannelsThatNobodyElseHolds)
{
    rtd->Item(key("Flow"))->setValue(Variant(12.5));
    rtd->Item(key("Flow"))->setUseCount(1);
    EXPECT_EQ(rtd->Item(key("Flow"))->Value().real(), 12.5);
    EXPECT_EQ(rtd->Item(key("Flow"))->UseCount(), 1);
}

TEST_F(StoredWindowTest, AChannelThatSomebodyHoldsIsTheSameObjectAfterItsNodeHasMoved)
{
    const auto stage = rtd->Item(key("Stage"));
    stage->setValue(Variant(7));
    Node other = windows->Item(key("SCHEME"))->XML();
    other.appendChild(stage->XMLNode());
    EXPECT_EQ(rtd->Count(), 3);
    EXPECT_EQ(labelOf("Stage"), "second");
    EXPECT_EQ(windows->Item(key("SCHEME"))->Item(key("Stage")).get(), stage.get());
    other.removeChild(stage->XMLNode());
    rtd->XML().appendChild(stage->XMLNode());
    EXPECT_EQ(rtd->Item(Variant(4)).get(), stage.get());
}

TEST_F(StoredWindowTest, AKeyThatSomebodyWritesIntoTheTreeIsSeen)
{
    EXPECT_EQ(labelOf("New"), "(none)");
    nodeOf("Flow").child(element::Key).setText(QStringLiteral("New"));
    EXPECT_EQ(labelOf("Flow"), "(none)");
    EXPECT_EQ(rtd->Item(key("New")).get(), rtd->Item(Variant(2)).get());
    // An earlier element that takes a key on wins over the later one that had it.
    rtd->Item(Variant(1))->XMLNode().child(element::Key).setText(QStringLiteral("NEW"));
    EXPECT_EQ(labelOf("new"), "first");
    EXPECT_EQ(labelOf("Stage"), "second");
}

TEST_F(StoredWindowTest, AKeyThatComesIntoBeingOrGoesIsSeen)
{
    Node keyless = rtd->Item(Variant(3))->XMLNode();
    EXPECT_EQ(labelOf("Late"), "(none)");
    keyless.appendChild(keyless.createElement(element::Key, QStringLiteral("Late")));
    EXPECT_EQ(labelOf("Late"), "keyless");
    keyless.removeChild(keyless.child(element::Key));
    EXPECT_EQ(labelOf("Late"), "(none)");
    keyless.setText(QStringLiteral("wiped"));
    EXPECT_EQ(rtd->Count(), 4);
    nodeOf("Flow").setText(QStringLiteral("wiped"));
    EXPECT_EQ(labelOf("Flow"), "(none)");
}

TEST_F(StoredWindowTest, AKeyWhoseTextIsANodeOfItsOwnIsFollowed)
{
    Node flowKey = nodeOf("Flow").child(element::Key);
    Node comment = document::parseXml(QByteArray("<A><!-- c --></A>")).document.documentElement().firstChild();
    ASSERT_TRUE(flowKey.appendChild(comment));
    EXPECT_NE(labelOf("Flow"), "(none)");
    flowKey.firstChild().setText(QStringLiteral("Other"));
    EXPECT_EQ(labelOf("Flow"), "(none)");
    EXPECT_NE(labelOf("Other"), "(none)");
}

TEST_F(StoredWindowTest, ChannelsThatSomebodyAddsToTheTreeOrTakesOutAreSeen)
{
    Node panel = rtd->XML();
    EXPECT_EQ(rtd->Count(), 4);
    Node added = panel.createElement(element::Channel);
    added.appendChild(panel.createElement(element::Key, QStringLiteral("Extra")));
    panel.appendChild(added);
    EXPECT_EQ(rtd->Count(), 5);
    EXPECT_TRUE(rtd->Item(key("Extra")));
    panel.removeChild(nodeOf("Stage"));
    EXPECT_EQ(rtd->Count(), 4);
    EXPECT_EQ(rtd->Item(Variant(1))->Key().toStdString(), "Flow");
    EXPECT_EQ(labelOf("Stage"), "second");
}

TEST_F(StoredWindowTest, EditingControlsLeavesTheIndexStanding)
{
    Node panel = rtd->XML();
    Node control = panel.createElement(document::element::Control);
    panel.appendChild(control);
    scheme->setName(QStringLiteral("changed before"));
    EXPECT_TRUE(rtd->Item(key("Stage")));
    control.appendChild(control.createElement(element::Key, QStringLiteral("@1")));
    control.child(element::Key).setText(QStringLiteral("@2"));
    rtd->Item(key("Stage"))->setLabel(QStringLiteral("other"));
    // An index that is built anew reads the list of the window's children.
    const document::ChangeCounter reads;
    {
        const document::ReadRecorder recorder(reads);
        EXPECT_TRUE(rtd->Item(key("Stage")));
    }
    const std::uint32_t before = reads.value();
    panel.appendChild(panel.createElement(document::element::Control));
    EXPECT_EQ(reads.value(), before);
    EXPECT_TRUE(rtd->Item(key("Stage")));
}

TEST_F(StoredWindowTest, AWindowThatIsRemovedLeavesTheSchemeAndLivesOnWithWhoHoldsIt)
{
    windows->Remove(key("rtd"));
    EXPECT_EQ(windows->Count(), 2);
    EXPECT_TRUE(scheme->isChanged());
    EXPECT_FALSE(rtd->XML().parent());
    EXPECT_EQ(rtd->Count(), 4);
    EXPECT_NE(windows->Item(key("RTD")).get(), rtd.get()) << "the second one of the key is found now";
    windows->Remove(Variant(2));
    EXPECT_FALSE(windows->Item(key("RTD")));
    EXPECT_EQ(errorOf([&] { windows->Remove(key("RTD")); }), 5);
    EXPECT_EQ(errorOf([&] { windows->Remove(Variant(2)); }), 9);
    const auto again = windows->Add(rtd, QStringLiteral("RTD"));
    EXPECT_EQ(again.get(), rtd.get());
}

TEST_F(StoredWindowTest, AddAppendsTheChannelUnderItsKey)
{
    const auto channel = windows->createChannel();
    EXPECT_TRUE(channel->Value().isEmpty());
    EXPECT_EQ(channel->DataType(), 0);
    EXPECT_EQ(channel->Bytes(), 1);
    EXPECT_EQ(channel->Multiplier(), 1.0F);
    channel->setLabel(QStringLiteral("New"));
    EXPECT_FALSE(scheme->isChanged()) << "a channel that belongs to nothing yet";
    const auto added = rtd->Add(channel, QStringLiteral("Gate"));
    EXPECT_EQ(added.get(), channel.get());
    EXPECT_EQ(added->Key().toStdString(), "Gate");
    EXPECT_EQ(rtd->Item(Variant(5)).get(), channel.get());
    EXPECT_EQ(rtd->Item(key("gate")).get(), channel.get());
    EXPECT_EQ(channel->XMLNode().parent().child(element::Key).text().toStdString(), "RTD");
    EXPECT_TRUE(scheme->isChanged());
    scheme->Save();
    EXPECT_NE(read(at()).find("<KEY>Gate</KEY>"), std::string::npos);
}

TEST_F(StoredWindowTest, AddWithoutAKeyMakesOneThatIsFree)
{
    rtd->Add(windows->createChannel(), QStringLiteral("ch6"));
    EXPECT_EQ(rtd->Add(windows->createChannel())->Key().toStdString(), "CH7");
    EXPECT_EQ(rtd->Add(windows->createChannel())->Key().toStdString(), "CH8");
    rtd->XML().removeChild(rtd->Item(key("Flow"))->XMLNode());
    EXPECT_EQ(rtd->Add(windows->createChannel())->Key().toStdString(), "CH9") << "CH8 is taken";
}

TEST_F(StoredWindowTest, AddRefusesWhatItCannotTake)
{
    EXPECT_EQ(errorOf([&] { rtd->Add({}); }), 91);
    EXPECT_EQ(errorOf([&] { rtd->Add(values::make<fake::FakeChannel>()); }), 13);
    EXPECT_EQ(errorOf([&] { rtd->Add(windows->createChannel(), QStringLiteral("FLOW")); }), 457);
    EXPECT_EQ(errorOf([&] { rtd->Add(rtd->Item(key("Flow")), QStringLiteral("Again")); }), 5);
    EXPECT_EQ(rtd->Count(), 4);
    EXPECT_FALSE(scheme->isChanged());
}

TEST_F(StoredWindowTest, ANewWindowBelongsToTheSchemeOnceItIsAdded)
{
    const auto fresh = windows->createWindow();
    fresh->setKey(QStringLiteral("RTD")); // no clash: it stands nowhere
    fresh->Add(windows->createChannel(), QStringLiteral("A"));
    EXPECT_FALSE(scheme->isChanged());
    const auto added = windows->Add(fresh, QStringLiteral("Pumps"));
    EXPECT_EQ(added.get(), fresh.get());
    EXPECT_EQ(added->Key().toStdString(), "Pumps");
    EXPECT_EQ(windows->Item(key("pumps")).get(), fresh.get());
    EXPECT_EQ(windows->Count(), 4);
    EXPECT_TRUE(scheme->isChanged());
    EXPECT_TRUE(site::findChannel(windows, QStringLiteral("Pumps|a")));
}

TEST_F(StoredWindowTest, AWindowUnderAKeyThatExistsIsRefused)
{
    EXPECT_EQ(errorOf([&] { windows->Add(windows->createWindow(), QStringLiteral("Rtd")); }), 457);
    EXPECT_EQ(errorOf([&] { windows->Add({}, QStringLiteral("New")); }), 91);
    EXPECT_EQ(errorOf([&] { rtd->setKey(QStringLiteral("Scheme")); }), 457);
    EXPECT_EQ(rtd->Key().toStdString(), "RTD");
    EXPECT_EQ(windows->Count(), 3);
}

TEST_F(StoredWindowTest, ARenamedWindowIsFoundUnderItsNewKeyOnly)
{
    windows->Item(key("SCHEME"))->setKey(QStringLiteral("Overview"));
    EXPECT_TRUE(windows->Item(key("OVERVIEW")));
    EXPECT_FALSE(windows->Item(key("SCHEME")));
    EXPECT_TRUE(scheme->isChanged());
}

TEST_F(StoredWindowTest, AWindowOfAnotherLibraryIsTakenInAsACopyWithItsChannels)
{
    const fake::FakeScheme other;
    const auto source = other.windows->createWindow();
    const auto channel = values::make<fake::FakeChannel>();
    channel->label = QStringLiteral("Rain");
    channel->dataType = 99; // no type that there is
    source->Add(channel, QStringLiteral("R"));
    Node panel = source->XML();
    panel.appendChild(panel.createElement(document::element::Control));
    const auto added = windows->Add(source, QStringLiteral("Copy"));
    EXPECT_NE(added.get(), source.get());
    EXPECT_EQ(added->Key().toStdString(), "Copy");
    EXPECT_EQ(added->Count(), 1);
    EXPECT_TRUE(added->Item(key("R")));
    EXPECT_TRUE(added->XML().child(document::element::Control));
    EXPECT_TRUE(panel.child(document::element::Control)) << "the source keeps its own";
}

TEST_F(StoredWindowTest, ChannelsKeptOutsideTheTreeOfAForeignWindowAreCopiedToo)
{
    const fake::FakeScheme other;
    const auto source = values::make<fake::FakeWindow>(other.windows->document);
    for (const char* label : {"One", "Two"}) {
        const auto channel = source->channel(QString::fromLatin1(label));
        channel->label = QString::fromLatin1(label);
        channel->dataType = 99;
        source->node.removeChild(channel->node);
    }
    const auto added = windows->Add(source, QStringLiteral("Copy"));
    EXPECT_EQ(added->Count(), 2);
    EXPECT_EQ(added->Item(key("Two"))->Label().toStdString(), "Two");
    EXPECT_EQ(added->Item(key("Two"))->DataType(), 8);
}

TEST_F(StoredWindowTest, AWindowOfThisOrAnotherStoredSchemeIsCopied)
{
    rtd->Item(key("Stage"))->setValue(Variant(1));
    const auto copy = windows->Add(rtd, QStringLiteral("Copy"));
    EXPECT_NE(copy.get(), rtd.get());
    EXPECT_EQ(copy->Count(), 4);
    EXPECT_EQ(rtd->Count(), 4);
    EXPECT_TRUE(copy->Item(key("Stage"))->Value().isEmpty());
    const auto other = opened("<SCHEME/>", "other.xml");
    other->Windows()->Add(rtd, QStringLiteral("RTD"));
    EXPECT_EQ(other->Windows()->Item(key("RTD"))->Count(), 4);
    EXPECT_EQ(rtd->Count(), 4);
}

TEST_F(StoredWindowTest, WindowsAndChannelsOutliveTheScheme)
{
    const auto stage = rtd->Item(key("Stage"));
    scheme = nullptr;
    windows = nullptr;
    EXPECT_EQ(rtd->Count(), 4);
    rtd = nullptr;
    stage->setLabel(QStringLiteral("alive"));
    EXPECT_EQ(stage->Label().toStdString(), "alive");
    EXPECT_EQ(stage->XMLNode().parent().child(element::Key).text().toStdString(), "RTD");
}

TEST_F(StoredWindowTest, KeysOfAnyAlphabetAreFoundInAnyCase)
{
    rtd->Add(windows->createChannel(), QStringLiteral("K1"));
    rtd->Add(windows->createChannel(), QStringLiteral(u"\u00C4pfel"));
    const auto found = [&](const QString& text) { return bool(rtd->Item(Variant(text))); };
    EXPECT_TRUE(found(QStringLiteral("k1")));
    EXPECT_TRUE(found(QStringLiteral(u"\u212A1"))) << "the Kelvin sign folds to a k";
    EXPECT_TRUE(found(QStringLiteral(u"\u00E4PFEL")));
    EXPECT_FALSE(found(QStringLiteral("apfel")));
    EXPECT_FALSE(found(QStringLiteral("K1[")));
    EXPECT_FALSE(found(QStringLiteral("K")));
}

} // namespace zan::trellis
