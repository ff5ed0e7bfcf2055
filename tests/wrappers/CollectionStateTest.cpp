// What the list of controls keeps for all of them at once, and what it remembers of each.
#include "CollectionFixture.h"

using namespace zan;
using namespace zan::test;

namespace {

/// A live control that counts its changes, as those of a surface do.
class CountedControl : public fake::FakeControl
{
public:
    std::uint32_t revision() const override { return changes.value(); }
    values::ChangeCount changes;
};

/// Live data that reads one element of a control's node and depends on nothing else.
class RestfulLiveData : public RecordingLiveData
{
public:
    RestfulLiveData()
    {
        onUpdate = [](iBenchControl& control) {
            static_cast<void>(control.XMLNode().child(Name("CAPTION")).text());
        };
    }
    bool mayRest(const iBenchControl&) override { return true; }
};

class RestingCollection : public Collection
{
protected:
    RestingCollection()
    {
        controls->setLiveData(&restful);
        load("<WINDOW><CONTROL><TYPE>VB.Label</TYPE><CAPTION>a</CAPTION></CONTROL></WINDOW>");
        controls->Control(Variant(1))->setControl(counted);
    }
    ~RestingCollection() override { controls->setLiveData(nullptr); }
    std::size_t updatesOfScans(int count)
    {
        restful.updated.clear();
        for (int scan = 0; scan < count; ++scan)
            controls->ScanControls();
        return restful.updated.size();
    }
    RestfulLiveData restful;
    Ref<CountedControl> counted = make<CountedControl>();
};

} // namespace

TEST_F(RestingCollection, ControlRestsOnceAnUpdateHasFoundNothingChanged)
{
    static_cast<void>(updatesOfScans(2)); // one to see what it is like, one that changes nothing
    EXPECT_EQ(updatesOfScans(3), 0u);
}

TEST_F(RestingCollection, ControlIsUpdatedAgainWhenWhatItsUpdateReadsHasChanged)
{
    static_cast<void>(updatesOfScans(3));
    controls->Control(Variant(1))->XMLNode().child(Name("CAPTION")).setText(QStringLiteral("b"));
    EXPECT_EQ(updatesOfScans(1), 1u);
    static_cast<void>(updatesOfScans(2));
    counted->changes.add();
    EXPECT_EQ(updatesOfScans(1), 1u);
}

TEST_F(RestingCollection, ControlThatHasLeftTheListDuringItsUpdateIsNotRemembered)
{
    restful.onUpdate = [this](iBenchControl&) { controls->Clear(); };
    EXPECT_EQ(updatesOfScans(1), 1u);
    EXPECT_EQ(controls->Count(), 0);
}

TEST_F(Collection, PasteRefreshesEverything)
{
    load(ThreeLabels);
    live.updated.clear();
    ASSERT_TRUE(controls->AddFromXML(QStringLiteral("<CONTROL><TYPE>VB.Label</TYPE></CONTROL>")));
    EXPECT_EQ(live.updated.size(), 4u);
}

TEST_F(Collection, EachControlIsNumberOneWhenTheListThatIsClearedGivesItUp)
{
    load(ThreeLabels);
    const Ref<iBenchControl> last = controls->Control(Variant(3));
    controls->Clear();
    EXPECT_EQ(last->Index(), 1);
    EXPECT_EQ(window.made[2]->tag, u"1");
}

TEST_F(Collection, LockIsToldAndHoldsForControlsThatComeLater)
{
    load(ThreeLabels);
    EXPECT_TRUE(controls->LockPositions());
    EXPECT_FALSE(controls->Add(QStringLiteral("VB.Label"))->ShowGrabHandles());
    controls->setLockPositions(false);
    EXPECT_FALSE(controls->LockPositions());
    EXPECT_TRUE(controls->Add(QStringLiteral("VB.Label"))->ShowGrabHandles());
}

TEST_F(Collection, HowAControlStandsTellsWhetherItIsShown)
{
    load(ThreeLabels);
    surface::LiveControl& second = *window.made[1];
    for (const bool shown : {false, true}) {
        second.setVisible(shown);
        EXPECT_EQ(controls->placedAt(2).visible, shown);
    }
}
