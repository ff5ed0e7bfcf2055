#include "Component.h"

#include <QApplication>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <thread>

namespace zan::test {

namespace {

class EntryPoints : public ComponentTest
{
protected:
    void SetUp() override { m_light = create(Light); }
    ZanHandle m_light = 0;
};

/// What a receiver has been told.
struct Heard
{
    std::vector<std::string> events;
    std::function<void(const char* event)> then;
    static void receive(void* context, ZanHandle, const char* event, const ZanVariant* arguments, int32_t count)
    {
        auto& heard = *static_cast<Heard*>(context);
        std::string line = event;
        for (int32_t i = 0; i < count; ++i)
            line += arguments[i].kind == ZAN_TEXT ? std::string(" ") + arguments[i].as.text : " #";
        heard.events.push_back(line);
        if (heard.then)
            heard.then(event);
    }
    bool has(const std::string& event) const
    {
        return std::find(events.begin(), events.end(), event) != events.end();
    }
};

} // namespace

TEST_F(EntryPoints, CreateEveryClassByItsId)
{
    for (const ZanId* id : {&Panel, &Map, &Light, &Bar, &SiteClass, &BagClass})
        EXPECT_NE(create(*id), 0U);
}

TEST_F(EntryPoints, FindTheIdOfAClassByItsName)
{
    ZanId id{};
    EXPECT_EQ(zanClassId("statuslight", &id), ZAN_OK);
    EXPECT_TRUE(std::equal(std::begin(id.bytes), std::end(id.bytes), std::begin(Light.bytes)));
    EXPECT_EQ(zanClassId("Elephant", &id), ZAN_E_CLASS);
    EXPECT_EQ(zanClassId(nullptr, &id), ZAN_E_POINTER);
    EXPECT_EQ(zanClassId("StatusLight", nullptr), ZAN_E_POINTER);
}

TEST_F(EntryPoints, RefuseAnIdThatNobodyHas)
{
    ZanHandle handle = 7;
    EXPECT_EQ(DllGetClassObject(&FactoryInterface, &FactoryInterface, &handle), ZAN_E_CLASS);
    EXPECT_EQ(handle, 0U);
    EXPECT_EQ(zanErrorNumber(), ZAN_E_CLASS);
    EXPECT_STREQ(zanErrorDescription(), "There is no class of this id.");
    EXPECT_EQ(DllGetClassObject(&Light, &Panel, &handle), ZAN_E_INTERFACE);
    EXPECT_EQ(zanCreateInstance(factory(Light), &FactoryInterface, &handle), ZAN_E_INTERFACE);
    EXPECT_EQ(zanCreateInstance(m_light, &DispatchInterface, &handle), ZAN_E_INTERFACE);
    EXPECT_EQ(zanQueryInterface(create(BagClass), &FrameInterface, &handle), ZAN_E_INTERFACE);
}

TEST_F(EntryPoints, RefuseNullPointers)
{
    ZanHandle handle = 0;
    ZanVariant value{};
    EXPECT_EQ(DllGetClassObject(nullptr, &FactoryInterface, &handle), ZAN_E_POINTER);
    EXPECT_EQ(DllGetClassObject(&Light, nullptr, &handle), ZAN_E_POINTER);
    EXPECT_EQ(DllGetClassObject(&Light, &FactoryInterface, nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanCreateInstance(factory(Light), nullptr, &handle), ZAN_E_POINTER);
    EXPECT_EQ(zanCreateInstance(factory(Light), &DispatchInterface, nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanQueryInterface(m_light, nullptr, &handle), ZAN_E_POINTER);
    EXPECT_EQ(zanQueryInterface(m_light, &DispatchInterface, nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanGet(m_light, nullptr, &value), ZAN_E_POINTER);
    EXPECT_EQ(zanGet(m_light, "Value", nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanPut(m_light, "Value", nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanInvoke(m_light, "Refresh", ZAN_GET, nullptr, 1, nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanSubscribe(m_light, nullptr, nullptr, &handle), ZAN_E_POINTER);
    EXPECT_EQ(zanSubscribe(m_light, &Heard::receive, nullptr, nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanClear(nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanTypeLibrary(nullptr), ZAN_E_POINTER);
    value = text(nullptr);
    EXPECT_EQ(zanPut(m_light, "TrueCaption", &value), ZAN_E_POINTER);
}

TEST_F(EntryPoints, ReadAndWritePropertiesByNameWhateverTheCase)
{
    const ZanVariant caption = text("Pumpe l\xC3\xA4uft");
    EXPECT_EQ(zanPut(m_light, "truecaption", &caption), ZAN_OK);
    Value got;
    EXPECT_EQ(zanGet(m_light, "TRUECAPTION", &got.value), ZAN_OK);
    EXPECT_EQ(got.text(), "Pumpe l\xC3\xA4uft");
    EXPECT_EQ(got.value.length, 12); // bytes
    const ZanVariant on = boolean(true);
    EXPECT_EQ(zanPut(m_light, "Value", &on), ZAN_OK);
    Value shown;
    EXPECT_EQ(zanGet(m_light, "Caption", &shown.value), ZAN_OK);
    EXPECT_EQ(shown.text(), "Pumpe l\xC3\xA4uft");
}

TEST_F(EntryPoints, ConvertValuesAsTheLateBoundMechanismDoes)
{
    ZanVariant colour = text("255");
    EXPECT_EQ(zanPut(m_light, "FalseColour", &colour), ZAN_OK);
    ZanVariant got{};
    EXPECT_EQ(zanGet(m_light, "FalseColour", &got), ZAN_OK);
    EXPECT_EQ(got.kind, ZAN_LONG);
    EXPECT_EQ(got.as.long_integer, 255);
    colour = text("red");
    EXPECT_EQ(zanPut(m_light, "FalseColour", &colour), 13);
    EXPECT_STREQ(zanErrorDescription(), "Type mismatch");
}

TEST_F(EntryPoints, SayWhatIsWrongWithAMember)
{
    ZanVariant value = number(1);
    EXPECT_EQ(zanPut(m_light, "Elephant", &value), 438);
    EXPECT_EQ(zanGet(m_light, std::string(300, 'x').c_str(), &value), 438);
    value = number(1);
    EXPECT_EQ(zanPut(m_light, "hWnd", &value), 383);
    EXPECT_EQ(zanInvoke(m_light, "Refresh", ZAN_GET, &value, 1, nullptr), 450);
    EXPECT_EQ(zanInvoke(m_light, "Value", 9, nullptr, 0, nullptr), 5);
    EXPECT_EQ(zanInvoke(m_light, "Value", ZAN_GET, &value, -1, nullptr), 450);
    EXPECT_EQ(zanInvoke(m_light, "Value", ZAN_GET, &value, 1'000'000, nullptr), 450);
}

TEST_F(EntryPoints, RefuseValuesThatAreNone)
{
    ZanVariant value{};
    value.kind = 99;
    EXPECT_EQ(zanPut(m_light, "Value", &value), ZAN_E_VARIANT);
    value.kind = 8192 + ZAN_LONG;
    EXPECT_EQ(zanPut(m_light, "Value", &value), ZAN_E_VARIANT);
    value.kind = ZAN_DOUBLE;
    value.as.real = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(zanPut(m_light, "Value", &value), ZAN_E_VARIANT);
    value.kind = ZAN_SINGLE;
    value.as.single = std::numeric_limits<float>::infinity();
    EXPECT_EQ(zanPut(m_light, "Value", &value), ZAN_E_VARIANT);
    value = text("broken \xFF text");
    EXPECT_EQ(zanPut(m_light, "TrueCaption", &value), ZAN_E_VARIANT);
    value.length = -2;
    EXPECT_EQ(zanPut(m_light, "TrueCaption", &value), ZAN_E_VARIANT);
    EXPECT_EQ(zanGet(m_light, "\xFF", &value), ZAN_E_VARIANT);
    value = object(123456);
    EXPECT_EQ(zanPut(m_light, "Font", &value), ZAN_E_HANDLE);
}

TEST_F(EntryPoints, TakeATextOfALengthWithItsZeroBytes)
{
    ZanVariant caption = text("abc\0def!");
    caption.length = 7;
    EXPECT_EQ(zanPut(m_light, "TrueCaption", &caption), ZAN_OK);
    Value got;
    EXPECT_EQ(zanGet(m_light, "TrueCaption", &got.value), ZAN_OK);
    ASSERT_EQ(got.value.length, 7);
    EXPECT_EQ(std::string(got.value.as.text, 8), std::string("abc\0def\0", 8));
}

TEST_F(EntryPoints, FindNothingBehindAHandleAfterItsRelease)
{
    ZanHandle light = 0;
    ASSERT_EQ(zanCreateInstance(factory(Light), &DispatchInterface, &light), ZAN_OK);
    EXPECT_EQ(zanRetain(light), ZAN_OK);
    EXPECT_EQ(zanRelease(light), ZAN_OK);
    ZanVariant value{};
    EXPECT_EQ(zanGet(light, "Flash", &value), ZAN_OK);
    EXPECT_EQ(zanRelease(light), ZAN_OK);
    ZanHandle other = 0;
    EXPECT_EQ(zanGet(light, "Flash", &value), ZAN_E_HANDLE);
    EXPECT_EQ(zanPut(light, "Flash", &value), ZAN_E_HANDLE);
    EXPECT_EQ(zanRetain(light), ZAN_E_HANDLE);
    EXPECT_EQ(zanRelease(light), ZAN_E_HANDLE);
    EXPECT_EQ(zanQueryInterface(light, &FrameInterface, &other), ZAN_E_HANDLE);
    EXPECT_EQ(zanSubscribe(light, &Heard::receive, nullptr, &other), ZAN_E_HANDLE);
    EXPECT_EQ(zanRelease(0), ZAN_E_HANDLE);
    EXPECT_NE(create(Light), light); // a number is never given twice
}

TEST_F(EntryPoints, TellAFrameThatItsControlHasGone)
{
    ZanHandle light = 0;
    ASSERT_EQ(zanCreateInstance(factory(Light), &DispatchInterface, &light), ZAN_OK);
    const ZanHandle frame = frameOf(light);
    EXPECT_EQ(zanRelease(light), ZAN_OK);
    ZanVariant value{};
    EXPECT_EQ(zanGet(frame, "Width", &value), 91);
    ZanHandle subscription = 0;
    EXPECT_EQ(zanSubscribe(frame, &Heard::receive, nullptr, &subscription), 91);
}

TEST_F(EntryPoints, GiveOneHandleForOneObject)
{
    const ZanHandle panel = create(Panel);
    EXPECT_EQ(objectIn(panel, "Controls"), objectIn(panel, "Controls"));
    EXPECT_EQ(frameOf(panel), frameOf(panel));
}

TEST_F(EntryPoints, RefuseATextThatIsGivenBackTwice)
{
    ZanVariant value{};
    ASSERT_EQ(zanGet(m_light, "FalseCaption", &value), ZAN_OK);
    ZanVariant copy = value;
    EXPECT_EQ(zanClear(&value), ZAN_OK);
    EXPECT_EQ(value.kind, ZAN_EMPTY);
    EXPECT_EQ(zanClear(&value), ZAN_OK);
    EXPECT_EQ(zanClear(&copy), ZAN_E_VARIANT);
    ZanVariant foreign = text("mine");
    EXPECT_EQ(zanClear(&foreign), ZAN_E_VARIANT);
}

TEST_F(EntryPoints, RefuseCallsFromAnotherThread)
{
    std::vector<ZanResult> results;
    ZanResult kept = 0;
    std::thread other([&] {
        ZanVariant value{};
        ZanHandle handle = 0;
        results = {zanGet(m_light, "Flash", &value),
                   zanPut(m_light, "Flash", &value),
                   zanRetain(m_light),
                   zanRelease(m_light),
                   DllGetClassObject(&Light, &FactoryInterface, &handle),
                   zanSubscribe(m_light, &Heard::receive, nullptr, &handle),
                   zanProcessEvents(0),
                   zanStart(ZAN_OFFSCREEN),
                   zanEnd()};
        kept = zanErrorNumber();
    });
    other.join();
    EXPECT_EQ(results, std::vector<ZanResult>(9, ZAN_E_THREAD));
    EXPECT_EQ(kept, ZAN_E_THREAD);
    EXPECT_NE(zanErrorNumber(), ZAN_E_THREAD); // each thread has its own
    ZanVariant value{};
    EXPECT_EQ(zanGet(m_light, "Flash", &value), ZAN_OK);
}

TEST_F(EntryPoints, TellEventsUntilTheSubscriptionIsReleased)
{
    Heard heard;
    ZanHandle subscription = 0;
    ASSERT_EQ(zanSubscribe(m_light, &Heard::receive, &heard, &subscription), ZAN_OK);
    const ZanVariant on = boolean(true);
    EXPECT_EQ(zanPut(m_light, "Value", &on), ZAN_OK);
    EXPECT_EQ(heard.events, std::vector<std::string>{"PropertyChanged Value"});
    EXPECT_EQ(zanRelease(subscription), ZAN_OK);
    EXPECT_EQ(zanPut(m_light, "Value", &on), ZAN_OK);
    EXPECT_EQ(heard.events.size(), 1U);
    EXPECT_EQ(zanSubscribe(create(BagClass), &Heard::receive, &heard, &subscription), ZAN_E_INTERFACE);
}

TEST_F(EntryPoints, LetAReceiverReleaseItsSourceAndItself)
{
    ZanHandle light = 0;
    ASSERT_EQ(zanCreateInstance(factory(Light), &DispatchInterface, &light), ZAN_OK);
    Heard heard;
    ZanHandle subscription = 0;
    ASSERT_EQ(zanSubscribe(light, &Heard::receive, &heard, &subscription), ZAN_OK);
    heard.then = [&](const char*) {
        EXPECT_EQ(zanRelease(subscription), ZAN_OK);
        EXPECT_EQ(zanRelease(light), ZAN_OK);
    };
    const ZanVariant on = boolean(true);
    EXPECT_EQ(zanPut(light, "Value", &on), ZAN_OK);
    EXPECT_EQ(heard.events.size(), 1U);
    EXPECT_EQ(zanPut(light, "Value", &on), ZAN_E_HANDLE);
}

TEST_F(EntryPoints, StopWhatAReceiverThrows)
{
    Heard heard;
    ZanHandle subscription = 0;
    ASSERT_EQ(zanSubscribe(m_light, &Heard::receive, &heard, &subscription), ZAN_OK);
    hold(subscription);
    heard.then = [](const char*) { throw std::runtime_error("of a host in another language"); };
    const ZanVariant on = boolean(true);
    EXPECT_EQ(zanPut(m_light, "Value", &on), ZAN_OK);
    EXPECT_EQ(heard.events.size(), 1U);
}

TEST_F(EntryPoints, ShowAWindowOfTheDemo)
{
    const ZanHandle panel = create(Panel);
    const ZanHandle site = demoSite();
    putObject(panel, "Logger", objectIn(site, "Logger"));
    const ZanVariant key = text("Overview");
    ASSERT_EQ(zanInvoke(panel, "LoadWindow", ZAN_GET, &key, 1, nullptr), ZAN_OK) << zanErrorDescription();
    ZanVariant count{};
    EXPECT_EQ(zanGet(objectIn(panel, "Controls"), "Count", &count), ZAN_OK);
    EXPECT_GT(count.as.long_integer, 10);
    const ZanHandle frame = frameOf(panel);
    EXPECT_EQ(zanInvoke(frame, "Fit", ZAN_GET, nullptr, 0, nullptr), ZAN_OK);
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("panel.png"));
    const QByteArray name = file.toUtf8();
    const ZanVariant path = text(name.constData());
    ASSERT_EQ(zanInvoke(frame, "SavePicture", ZAN_GET, &path, 1, nullptr), ZAN_OK) << zanErrorDescription();
    ZanVariant width{};
    EXPECT_EQ(zanGet(frame, "Width", &width), ZAN_OK);
    const QImage picture(file);
    EXPECT_EQ(picture.width(), width.as.long_integer);
    const ZanVariant nowhere = text("/nowhere/at/all.png");
    EXPECT_EQ(zanInvoke(frame, "SavePicture", ZAN_GET, &nowhere, 1, nullptr), 75);
}

TEST_F(EntryPoints, KeepAPanelAliveWhileItsFrameIsHidden)
{
    const ZanHandle panel = create(Panel);
    const ZanHandle frame = frameOf(panel);
    ZanVariant visible = boolean(true);
    EXPECT_EQ(zanPut(frame, "Visible", &visible), ZAN_OK);
    visible = boolean(false);
    EXPECT_EQ(zanPut(frame, "Visible", &visible), ZAN_OK);
    ZanVariant controls{};
    EXPECT_EQ(zanGet(panel, "Controls", &controls), ZAN_OK);
    EXPECT_NE(controls.as.object, 0U); // a panel that has ended has none
    zanClear(&controls);
}

TEST_F(EntryPoints, ReadAndWriteChannelsOfASite)
{
    const ZanHandle site = demoSite();
    ZanVariant simulated{};
    EXPECT_EQ(zanGet(site, "IsSimulated", &simulated), ZAN_OK);
    EXPECT_EQ(simulated.as.boolean, -1);
    Heard heard;
    ZanHandle subscription = 0;
    ASSERT_EQ(zanSubscribe(objectIn(site, "Logger"), &Heard::receive, &heard, &subscription), ZAN_OK);
    hold(subscription);
    heard.then = [](const char* event) {
        if (std::string(event) == "NewBenchData")
            zanStopEvents();
    };
    EXPECT_EQ(zanInvoke(site, "Connect", ZAN_GET, nullptr, 0, nullptr), ZAN_OK);
    EXPECT_EQ(zanProcessEvents(20'000), ZAN_OK);
    EXPECT_TRUE(heard.has("Connected"));
    EXPECT_TRUE(heard.has("NewBenchData"));
    const ZanVariant bind = text("Overview|no such channel");
    EXPECT_EQ(zanInvoke(site, "Read", ZAN_GET, &bind, 1, nullptr), 9);
    EXPECT_STREQ(zanErrorDescription(), "There is no channel \"Overview|no such channel\".");
    EXPECT_EQ(zanInvoke(site, "Disconnect", ZAN_GET, nullptr, 0, nullptr), ZAN_OK);
}

TEST_F(EntryPoints, SayWhyASchemeCannotBeOpened)
{
    const ZanHandle site = create(SiteClass);
    const ZanVariant file = text("/nowhere/at/all.scheme");
    EXPECT_EQ(zanInvoke(site, "Open", ZAN_GET, &file, 1, nullptr), 5);
    EXPECT_NE(std::string(zanErrorDescription()).find("/nowhere/at/all.scheme"), std::string::npos);
    ZanVariant name{};
    EXPECT_EQ(zanGet(site, "Name", &name), 91);
    const ZanVariant arguments[] = {text(DEMO_SCHEME), text("elephant:1")};
    EXPECT_EQ(zanInvoke(site, "Open", ZAN_GET, arguments, 2, nullptr), 5);
    EXPECT_EQ(zanGet(site, "Name", &name), 91);
}

TEST_F(EntryPoints, TellTheTruthAboutUnloading)
{
    // The test's application object keeps the library, with or without objects; ending it would end all tests.
    EXPECT_EQ(DllCanUnloadNow(), 1);
    EXPECT_EQ(zanEnd(), ZAN_E_ALIVE);
    EXPECT_EQ(zanStart(ZAN_OFFSCREEN), ZAN_OK);
    EXPECT_EQ(zanEnd(), ZAN_OK); // the inner one
    EXPECT_EQ(zanStart(77), 5);
    EXPECT_EQ(zanLockServer(1), ZAN_OK);
    EXPECT_EQ(zanLockServer(0), ZAN_OK);
    EXPECT_EQ(zanLockServer(0), 5);
}

TEST_F(EntryPoints, EndTheEventLoopAtItsTimeOrWhenItIsStopped)
{
    EXPECT_EQ(zanProcessEvents(0), ZAN_OK);
    EXPECT_EQ(zanProcessEvents(1), ZAN_OK);
    EXPECT_EQ(zanProcessEvents(-1), 5);
    EXPECT_EQ(zanStopEvents(), 5);
}

TEST_F(EntryPoints, AnswerBoxesWhereNobodyCould)
{
    const ZanHandle frame = frameOf(create(Panel));
    ZanVariant value{};
    EXPECT_EQ(zanGet(frame, "Unattended", &value), ZAN_OK);
    EXPECT_EQ(value.as.boolean, -1);
    EXPECT_EQ(zanGet(frame, "BoxCount", &value), ZAN_OK);
    EXPECT_EQ(value.as.long_integer, 0);
    const ZanVariant first = number(1);
    EXPECT_EQ(zanInvoke(frame, "Box", ZAN_GET, &first, 1, nullptr), 9);
}

TEST_F(EntryPoints, RefuseSizesThatNoWindowHas)
{
    const ZanHandle frame = frameOf(m_light);
    for (const std::int32_t side : {0, -1, 8193, 2'000'000'000}) {
        const ZanVariant value = number(side);
        EXPECT_EQ(zanPut(frame, "Width", &value), 380);
        EXPECT_EQ(zanPut(frame, "Height", &value), 380);
    }
}

} // namespace zan::test
