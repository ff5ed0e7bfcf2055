#pragma once

#include "component/ZanBenchComponent.h"

#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zan::test {

inline constexpr ZanId Panel = ZAN_CLASS_BENCHWINDOW;
inline constexpr ZanId Map = ZAN_CLASS_SITEMAP;
inline constexpr ZanId Light = ZAN_CLASS_STATUSLIGHT;
inline constexpr ZanId Bar = ZAN_CLASS_VALUEBAR;
inline constexpr ZanId SiteClass = ZAN_CLASS_SITE;
inline constexpr ZanId BagClass = ZAN_CLASS_PROPERTYBAG;
inline constexpr ZanId FactoryInterface = ZAN_INTERFACE_FACTORY;
inline constexpr ZanId DispatchInterface = ZAN_INTERFACE_DISPATCH;
inline constexpr ZanId FrameInterface = ZAN_INTERFACE_FRAME;

/// A value whose text and object are given back.
class Value
{
public:
    Value() = default;
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value() { zanClear(&value); }
    std::string text() const { return value.kind == ZAN_TEXT ? std::string(value.as.text) : "not a text"; }

    ZanVariant value{};
};

inline ZanVariant number(std::int32_t number)
{
    ZanVariant value{};
    value.kind = ZAN_LONG;
    value.as.long_integer = number;
    return value;
}

inline ZanVariant boolean(bool flag)
{
    ZanVariant value{};
    value.kind = ZAN_BOOLEAN;
    value.as.boolean = flag ? -1 : 0;
    return value;
}

inline ZanVariant text(const char* text)
{
    ZanVariant value{};
    value.kind = ZAN_TEXT;
    value.length = ZAN_TO_ZERO;
    value.as.text = text;
    return value;
}

inline ZanVariant object(ZanHandle handle)
{
    ZanVariant value{};
    value.kind = ZAN_OBJECT;
    value.as.object = handle;
    return value;
}

/// Creates objects, and lets go of whatever a test has not.
class ComponentTest : public testing::Test
{
protected:
    ~ComponentTest() override
    {
        for (const ZanHandle handle : m_held)
            zanRelease(handle);
        EXPECT_EQ(zanProcessEvents(0), ZAN_OK);
    }

    ZanHandle factory(const ZanId& id)
    {
        ZanHandle handle = 0;
        EXPECT_EQ(DllGetClassObject(&id, &FactoryInterface, &handle), ZAN_OK) << zanErrorDescription();
        return hold(handle);
    }
    ZanHandle create(const ZanId& id)
    {
        ZanHandle handle = 0;
        EXPECT_EQ(zanCreateInstance(factory(id), &DispatchInterface, &handle), ZAN_OK) << zanErrorDescription();
        return hold(handle);
    }
    ZanHandle frameOf(ZanHandle control)
    {
        ZanHandle handle = 0;
        EXPECT_EQ(zanQueryInterface(control, &FrameInterface, &handle), ZAN_OK) << zanErrorDescription();
        return hold(handle);
    }
    /// The object that a property holds.
    ZanHandle objectIn(ZanHandle owner, const char* member)
    {
        ZanVariant value{};
        EXPECT_EQ(zanGet(owner, member, &value), ZAN_OK) << member << ": " << zanErrorDescription();
        EXPECT_EQ(value.kind, ZAN_OBJECT);
        return hold(value.as.object);
    }
    /// The demo, without a connection.
    ZanHandle demoSite()
    {
        const ZanHandle site = create(SiteClass);
        const ZanVariant file = text(DEMO_SCHEME);
        EXPECT_EQ(zanInvoke(site, "Open", ZAN_GET, &file, 1, nullptr), ZAN_OK) << zanErrorDescription();
        return site;
    }
    void putObject(ZanHandle owner, const char* member, ZanHandle value)
    {
        const ZanVariant argument = object(value);
        EXPECT_EQ(zanPut(owner, member, &argument), ZAN_OK) << member << ": " << zanErrorDescription();
    }
    ZanHandle hold(ZanHandle handle)
    {
        m_held.push_back(handle);
        return handle;
    }
    /// Lets go of everything held so far.
    void letGo()
    {
        for (const ZanHandle handle : m_held)
            EXPECT_EQ(zanRelease(handle), ZAN_OK);
        m_held.clear();
    }

private:
    std::vector<ZanHandle> m_held;
};

} // namespace zan::test
