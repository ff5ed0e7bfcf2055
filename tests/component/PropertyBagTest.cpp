#include "Component.h"

#include "binding/MemberTable.h"

#include <QImage>

#include <algorithm>
#include <cstring>
#include <optional>
#include <set>

namespace zan::test {

namespace {

ZanVariant integer(std::int16_t number)
{
    ZanVariant value{};
    value.kind = ZAN_INTEGER;
    value.as.integer = number;
    return value;
}

ZanVariant real(double number)
{
    ZanVariant value{};
    value.kind = ZAN_DOUBLE;
    value.as.real = number;
    return value;
}

constexpr std::int32_t ButtonFace = std::int32_t(0x8000000F);
constexpr std::int32_t ButtonText = std::int32_t(0x80000012);

enum class Kept { UnlessDefault, Always };
/// How a test gives the property another value.
enum class By { Value, FontSize, PictureFile, Nothing };

/// A key of a bag. Rows stand in the order in which keys are written.
struct Key
{
    const char* name;
    ZanVariant other{};     ///< a value that is not the default
    ZanVariant byDefault{}; ///< what is left out when it is written
    By by = By::Value;
    Kept kept = Kept::UnlessDefault;
    std::optional<double> readDefault{}; ///< what an empty bag gives, where that is another number
};

struct Bagged
{
    const char* className;
    ZanId id;
    std::vector<Key> keys;
};

std::vector<Bagged> baggedClasses()
{
    return {
        {"BenchWindow",
         Panel,
         {{"BackColor", number(255), number(ButtonFace)},
          {"ForeColor", number(255), number(ButtonText)},
          {"Enabled", boolean(false), boolean(true)},
          {"Font", {}, {}, By::FontSize},
          {"BackStyle", integer(0), integer(1)},
          {"BorderStyle", integer(1), integer(0)},
          {"GridSize", real(150), real(200)},
          {"SnapToGrid", boolean(false), boolean(true)},
          {"LockPositions", boolean(false), boolean(true)},
          {"Stretch", boolean(true), boolean(false)},
          {"PictureFile", text("examples/weir.gif"), text("")},
          {"Picture", {}, {}, By::PictureFile},
          {"ShowSiteMap", boolean(false), boolean(true), By::Value, Kept::Always},
          {"LockMenu", boolean(true), boolean(false), By::Value, Kept::Always}}},
        {"StatusLight",
         Light,
         {{"Enabled", boolean(false), boolean(true)},
          {"Font", {}, {}, By::FontSize},
          {"BackStyle", integer(0), integer(1)},
          {"BorderStyle", integer(1), integer(0)},
          {"Caption", text("Open"), text("STATUS")},
          {"TrueColour", number(7), number(255)},
          {"FalseColour", number(7), number(128)},
          {"Value", boolean(true), integer(0)},
          {"TrueCaption", text("Open"), text("TRUE")},
          {"FalseCaption", text("Shut"), text("FALSE")},
          {"Flash", boolean(true), boolean(false)}}},
        {"ValueBar",
         Bar,
         {{"BackColor", number(7), number(ButtonFace)},
          {"ForeColor", number(7), number(ButtonText)},
          {"Enabled", boolean(false), boolean(true)},
          {"Font", {}, {}, By::FontSize},
          {"BackStyle", integer(0), integer(1)},
          {"BorderStyle", integer(1), integer(0)},
          {"Value", real(51), real(50)},
          {"HighLimit", real(76), real(75)},
          {"LowLimit", real(26), real(25)},
          {"HighColour", number(7), number(255)},
          {"NormalColour", number(7), number(49152)},
          {"LowColour", number(7), number(255)},
          {"Flash", boolean(true), boolean(false)},
          {"Max", real(120), real(100)},
          {"Min", real(-5), real(0)},
          {"ShowScale", boolean(true), boolean(false)},
          {"TickCount", integer(4), integer(10)}}},
        {"SiteMap",
         Map,
         {{"BorderStyle", integer(0), integer(1)},
          {"Enabled", boolean(false), boolean(true)},
          {"Font", {}, {}, By::FontSize},
          {"MouseIcon", {}, {}, By::Nothing},
          {"BackColour", number(7), number(ButtonFace), By::Value, Kept::Always},
          {"SiteColour", number(7), number(ButtonFace)},
          {"LineColour", number(7), number(ButtonText)},
          {"LineWidth", integer(3), integer(5)},
          {"ColumnOffset", real(900), real(1500), By::Value, Kept::UnlessDefault, 1200},
          {"RowOffset", real(900), real(750)}}},
    };
}

double numberOf(const ZanVariant& value)
{
    switch (value.kind) {
    case ZAN_BOOLEAN:
        return value.as.boolean;
    case ZAN_INTEGER:
        return value.as.integer;
    case ZAN_LONG:
        return value.as.long_integer;
    case ZAN_SINGLE:
        return double(value.as.single);
    case ZAN_DOUBLE:
        return value.as.real;
    default:
        return 1e300; // no number
    }
}

bool same(const ZanVariant& a, const ZanVariant& b)
{
    if (a.kind == ZAN_TEXT && b.kind == ZAN_TEXT)
        return std::strcmp(a.as.text, b.as.text) == 0;
    return numberOf(a) == numberOf(b);
}

using Names = std::vector<std::string>;

/// The bags of all four controls, through the interface of programs in C.
class PropertyBags : public ComponentTest
{
protected:
    void put(ZanHandle control, const Key& key, const ZanVariant& value)
    {
        EXPECT_EQ(zanPut(control, key.name, &value), ZAN_OK) << key.name << ": " << zanErrorDescription();
    }
    void putAll(ZanHandle control, const Bagged& type, bool isOther)
    {
        for (const Key& key : type.keys) {
            if (key.by == By::Value)
                put(control, key, isOther ? key.other : key.byDefault);
            else if (key.by == By::FontSize && isOther)
                setFontSize(control);
        }
        // A light's caption is what it shows: whatever is written to it lasts until the next picture.
        for (const Key& key : type.keys) {
            if (std::strcmp(key.name, "Caption") == 0)
                put(control, key, isOther ? key.other : key.byDefault);
        }
    }
    void setFontSize(ZanHandle control)
    {
        const ZanVariant size = number(20);
        EXPECT_EQ(zanPut(objectIn(control, "Font"), "Size", &size), ZAN_OK);
    }
    /// What the control writes into a new bag.
    ZanHandle bagOf(ZanHandle control)
    {
        const ZanHandle bag = create(BagClass);
        const ZanVariant argument = object(bag);
        EXPECT_EQ(zanInvoke(frameOf(control), "WriteProperties", ZAN_GET, &argument, 1, nullptr), ZAN_OK)
            << zanErrorDescription();
        return bag;
    }
    void read(ZanHandle control, ZanHandle bag)
    {
        const ZanVariant argument = object(bag);
        EXPECT_EQ(zanInvoke(frameOf(control), "ReadProperties", ZAN_GET, &argument, 1, nullptr), ZAN_OK)
            << zanErrorDescription();
    }
    static Names keysIn(ZanHandle bag)
    {
        Names keys;
        ZanVariant count{};
        EXPECT_EQ(zanGet(bag, "Count", &count), ZAN_OK);
        for (std::int32_t i = 1; i <= count.as.long_integer; ++i) {
            const ZanVariant index = number(i);
            Value key;
            EXPECT_EQ(zanInvoke(bag, "Key", ZAN_GET, &index, 1, &key.value), ZAN_OK);
            keys.push_back(key.text());
        }
        return keys;
    }
    static Names keysOf(const Bagged& type, bool (*isIn)(const Key& key))
    {
        Names keys;
        for (const Key& key : type.keys) {
            if (isIn(key))
                keys.push_back(key.name);
        }
        return keys;
    }
};

} // namespace

TEST_F(PropertyBags, HoldEveryKeyThatIsNotItsDefaultInTheirOrder)
{
    for (const Bagged& type : baggedClasses()) {
        SCOPED_TRACE(type.className);
        const ZanHandle control = create(type.id);
        putAll(control, type, true);
        const ZanHandle bag = bagOf(control);
        EXPECT_EQ(keysIn(bag), keysOf(type, [](const Key& key) { return key.by != By::Nothing; }));
        for (const Key& key : type.keys) {
            if (key.by != By::Value)
                continue;
            const ZanVariant name = text(key.name);
            Value stored;
            EXPECT_EQ(zanInvoke(bag, "ReadProperty", ZAN_GET, &name, 1, &stored.value), ZAN_OK);
            EXPECT_TRUE(same(stored.value, key.other)) << key.name;
        }
    }
}

TEST_F(PropertyBags, LeaveDefaultsOutButForThoseThatAreWrittenAlways)
{
    for (const Bagged& type : baggedClasses()) {
        SCOPED_TRACE(type.className);
        const ZanHandle control = create(type.id);
        read(control, create(BagClass)); // the font of the place where it stands
        putAll(control, type, false);
        EXPECT_EQ(keysIn(bagOf(control)), keysOf(type, [](const Key& key) { return key.kept == Kept::Always; }));
    }
}

TEST_F(PropertyBags, GiveTheirValuesToAnotherControl)
{
    for (const Bagged& type : baggedClasses()) {
        SCOPED_TRACE(type.className);
        const ZanHandle first = create(type.id);
        putAll(first, type, true);
        const ZanHandle bag = bagOf(first);
        const ZanHandle second = create(type.id);
        read(second, bag);
        for (const Key& key : type.keys) {
            Value now;
            if (key.by == By::Value) {
                EXPECT_EQ(zanGet(second, key.name, &now.value), ZAN_OK);
                EXPECT_TRUE(same(now.value, key.other)) << key.name;
            } else if (key.by == By::FontSize) {
                EXPECT_EQ(zanGet(objectIn(second, "Font"), "Size", &now.value), ZAN_OK);
                EXPECT_EQ(now.value.as.currency, 200'000) << "twenty points, four decimals";
            }
        }
        EXPECT_NE(objectIn(first, "Font"), objectIn(second, "Font")); // a copy
    }
}

TEST_F(PropertyBags, ThatAreEmptyGiveTheDefaults)
{
    for (const Bagged& type : baggedClasses()) {
        SCOPED_TRACE(type.className);
        const ZanHandle control = create(type.id);
        putAll(control, type, true);
        read(control, create(BagClass));
        for (const Key& key : type.keys) {
            if (key.by != By::Value || std::strcmp(key.name, "Caption") == 0)
                continue;
            Value now;
            EXPECT_EQ(zanGet(control, key.name, &now.value), ZAN_OK);
            if (key.readDefault)
                EXPECT_EQ(numberOf(now.value), *key.readDefault) << key.name;
            else
                EXPECT_TRUE(same(now.value, key.byDefault)) << key.name;
        }
    }
}

TEST_F(PropertyBags, HoldWhatTheMemberTablesSayIsKept)
{
    for (const Bagged& type : baggedClasses()) {
        SCOPED_TRACE(type.className);
        std::set<std::string> kept;
        for (const binding::MemberTable* table : binding::MemberTable::all()) {
            if (table->className() != QLatin1String(type.className))
                continue;
            for (const binding::Member* member : table->stored())
                kept.insert(member->name.text().toStdString());
        }
        std::set<std::string> keys;
        for (const Key& key : type.keys)
            keys.insert(key.name);
        keys.erase("MouseIcon"); // there is no way to set one
        EXPECT_EQ(kept, keys);
    }
}

TEST_F(PropertyBags, NeedABag)
{
    const ZanHandle frame = frameOf(create(Light));
    const ZanVariant nothing = object(0);
    EXPECT_EQ(zanInvoke(frame, "WriteProperties", ZAN_GET, &nothing, 1, nullptr), 91);
    const ZanVariant wrong = object(frame);
    EXPECT_EQ(zanInvoke(frame, "ReadProperties", ZAN_GET, &wrong, 1, nullptr), 13);
    EXPECT_EQ(zanInvoke(frame, "ReadProperties", ZAN_GET, nullptr, 0, nullptr), 450);
}

} // namespace zan::test
