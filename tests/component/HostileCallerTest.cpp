// Callers that mean no good, or know no better.
#include "Component.h"

#include <QStringDecoder>

#include <cstring>
#include <thread>

namespace zan::test {

namespace {

class HostileCaller : public ComponentTest
{
protected:
    void SetUp() override { m_light = create(Light); }
    static void ignore(void*, ZanHandle, const char*, const ZanVariant*, int32_t) {}
    /// Whether a text is UTF-8 from end to end.
    static bool isWhole(const char* text)
    {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString decoded = decoder.decode(QByteArrayView(text, qsizetype(std::strlen(text))));
        return !decoded.isEmpty() && !decoder.hasError();
    }
    ZanHandle m_light = 0;
};

} // namespace

TEST_F(HostileCaller, FindsNothingWhereAFailedCallWouldHaveLeftItsResult)
{
    ZanVariant value = number(77);
    EXPECT_EQ(zanGet(m_light, "Elephant", &value), 438);
    EXPECT_EQ(value.kind, ZAN_EMPTY);
    value = number(77);
    EXPECT_EQ(zanInvoke(m_light, "Elephant", ZAN_GET, nullptr, 0, &value), 438);
    EXPECT_EQ(value.kind, ZAN_EMPTY);
    ZanHandle handle = 77;
    EXPECT_EQ(zanQueryInterface(m_light, &FactoryInterface, &handle), ZAN_E_INTERFACE);
    EXPECT_EQ(handle, 0U);
    handle = 77;
    EXPECT_EQ(zanSubscribe(12345, &ignore, nullptr, &handle), ZAN_E_HANDLE);
    EXPECT_EQ(handle, 0U);
    handle = 77;
    EXPECT_EQ(zanCreateInstance(m_light, &DispatchInterface, &handle), ZAN_E_INTERFACE);
    EXPECT_EQ(handle, 0U);
}

TEST_F(HostileCaller, GetsNoFactoryOutOfWhatIsNone)
{
    ZanHandle handle = 0;
    EXPECT_EQ(zanQueryInterface(m_light, &FactoryInterface, &handle), ZAN_E_INTERFACE);
    EXPECT_EQ(zanCreateInstance(factory(Light), &FrameInterface, &handle), ZAN_E_INTERFACE)
        << "a frame does not hold its control";
    EXPECT_EQ(handle, 0U);
}

TEST_F(HostileCaller, HasNoTextReadThatIsTooLong)
{
    // The length is judged before a byte is looked at: there are four behind the pointer.
    ZanVariant value = text("abc");
    for (const std::int32_t length : {(64 << 20) + 1, 2'000'000'000, 2'147'483'647}) {
        value.length = length;
        EXPECT_EQ(zanPut(m_light, "TrueCaption", &value), ZAN_E_VARIANT) << length;
    }
    value.length = 3;
    EXPECT_EQ(zanPut(m_light, "TrueCaption", &value), ZAN_OK);
}

TEST_F(HostileCaller, HasNoTextTakenThatOnlyLooksLikeUtf8)
{
    for (const char* broken : {"\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80", "caption \xE2\x82"}) {
        ZanVariant value = text(broken);
        EXPECT_EQ(zanPut(m_light, "TrueCaption", &value), ZAN_E_VARIANT) << broken;
        EXPECT_EQ(zanPut(m_light, broken, &value), ZAN_E_VARIANT) << broken;
    }
}

TEST_F(HostileCaller, GetsTheWordsOfAnErrorCutBetweenCharacters)
{
    const ZanHandle site = create(SiteClass);
    for (const char* first : {"/", "/x", "/xx", "/xxx"}) {
        std::string file = first;
        for (int i = 0; i < 1000; ++i)
            file += "\xE2\x82\xAC"; // three bytes each
        const ZanVariant name = text(file.c_str());
        EXPECT_NE(zanInvoke(site, "Open", ZAN_GET, &name, 1, nullptr), ZAN_OK);
        EXPECT_LT(std::strlen(zanErrorDescription()), 1024U);
        EXPECT_TRUE(isWhole(zanErrorDescription())) << first;
    }
}

TEST_F(HostileCaller, IsRefusedOnEveryOtherThread)
{
    ZanHandle frame = frameOf(m_light);
    const ZanHandle lights = factory(Light);
    std::vector<ZanResult> results;
    std::thread other([&] {
        ZanHandle handle = 0;
        ZanVariant value = object(frame);
        results = {zanQueryInterface(m_light, &FrameInterface, &handle),
                   zanCreateInstance(lights, &DispatchInterface, &handle),
                   zanInvoke(m_light, "Refresh", ZAN_GET, nullptr, 0, nullptr), zanStopEvents(), zanClear(&value)};
    });
    other.join();
    EXPECT_EQ(results, std::vector<ZanResult>(5, ZAN_E_THREAD));
    ZanVariant width{};
    EXPECT_EQ(zanGet(frame, "Width", &width), ZAN_OK) << "nothing was let go";
}

TEST_F(HostileCaller, MayTakeATextOfTheLibraryToAnotherThread)
{
    ZanVariant value{};
    ASSERT_EQ(zanGet(m_light, "FalseCaption", &value), ZAN_OK);
    ZanResult result = ZAN_E_THREAD;
    std::thread([&] { result = zanClear(&value); }).join();
    EXPECT_EQ(result, ZAN_OK);
    EXPECT_EQ(value.kind, ZAN_EMPTY);
}

TEST_F(HostileCaller, KeepsNothingAliveWithAFailedSubscription)
{
    ZanHandle bar = 0;
    ASSERT_EQ(zanCreateInstance(factory(Bar), &DispatchInterface, &bar), ZAN_OK);
    EXPECT_EQ(zanSubscribe(bar, &ignore, nullptr, nullptr), ZAN_E_POINTER);
    EXPECT_EQ(zanRelease(bar), ZAN_OK);
    EXPECT_EQ(zanRelease(bar), ZAN_E_HANDLE);
}

TEST_F(HostileCaller, GetsValuesOfEveryKindBackAsTheyWere)
{
    const ZanHandle bag = create(BagClass);
    const auto back = [&](const ZanVariant& value) {
        const ZanVariant arguments[] = {text("Key"), value};
        EXPECT_EQ(zanInvoke(bag, "WriteProperty", ZAN_GET, arguments, 2, nullptr), ZAN_OK) << zanErrorDescription();
        ZanVariant got{};
        EXPECT_EQ(zanInvoke(bag, "ReadProperty", ZAN_GET, arguments, 1, &got), ZAN_OK) << zanErrorDescription();
        EXPECT_EQ(got.kind, value.kind);
        return got;
    };
    ZanVariant value{};
    value.kind = ZAN_CURRENCY;
    value.as.currency = 123'456'789;
    EXPECT_EQ(back(value).as.currency, 123'456'789);
    value = {};
    value.kind = ZAN_DATE;
    value.as.real = 45000.25;
    EXPECT_EQ(back(value).as.real, 45000.25);
    EXPECT_EQ(back(boolean(true)).as.boolean, -1);
    EXPECT_EQ(back(boolean(false)).as.boolean, 0);
    value = {};
    value.kind = ZAN_BYTE;
    value.as.byte = 255;
    EXPECT_EQ(back(value).as.byte, 255);
    value = {};
    value.kind = ZAN_SINGLE;
    value.as.single = 1.5F;
    EXPECT_EQ(back(value).as.single, 1.5F);
}

} // namespace zan::test
