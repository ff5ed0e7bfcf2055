#include "keel/KeelWindows.h"

#include "support/ErrorOf.h"
#include "support/FakeScheme.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

namespace zan::keel {

using binding::Variant;
using test::errorOf;

namespace {

class KeelWindowsTest : public testing::Test
{
protected:
    QString file(const QByteArray& content)
    {
        const QString name = folder.filePath(QStringLiteral("window.kel"));
        QFile written(name);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly) && written.write(content) == content.size());
        return name;
    }
    Ref<site::SchemeWindow> load(const QByteArray& content,
                                 KeelWindows::Texts texts = KeelWindows::Texts::AsTheyAre)
    {
        return KeelWindows(store, texts).Load(file(content));
    }
    static QString position(const Ref<site::Channel>& channel, values::Name name)
    {
        return channel->XMLNode().child(name).text();
    }

    QTemporaryDir folder;
    Ref<fake::FakeWindows> store = values::make<fake::FakeWindows>();
};

} // namespace

TEST_F(KeelWindowsTest, GivesAWindowOfNoSchemeWithAChannelForEachRow)
{
    const auto window = load("KEEL\n4,12,\"Level \",m,16,2,0.00,0.01,-1,4\n0,0,Weir\n");
    EXPECT_EQ(store->Count(), 0);
    ASSERT_EQ(window->Count(), 2);
    const Ref<site::Channel> level = window->Item(Variant(1));
    EXPECT_EQ(level->Label(), u"Level ");
    EXPECT_EQ(level->Units(), u"m");
    EXPECT_EQ(level->BaseAddress(), 16);
    EXPECT_EQ(level->DataType(), 2);
    EXPECT_EQ(level->Format(), u"0.00");
    EXPECT_EQ(level->Multiplier(), 0.01F);
    EXPECT_EQ(level->Offset(), -1.0F);
    EXPECT_EQ(level->Bytes(), 4);
    EXPECT_EQ(position(level, PositionX), u"12");
    EXPECT_EQ(position(level, PositionY), u"4");
    const Ref<site::Channel> text = window->Item(Variant(2));
    EXPECT_EQ(text->BaseAddress(), -1);
    EXPECT_EQ(text->Bytes(), 1) << "what the scheme gives a new channel";
}

TEST_F(KeelWindowsTest, WhatTheFileLeavesOutIsNotInTheNodeOfTheChannel)
{
    const Ref<site::Channel> channel = load("KEEL\n,,Weir\n")->Item(Variant(1));
    EXPECT_FALSE(channel->XMLNode().child(PositionX));
    EXPECT_FALSE(channel->XMLNode().child(PositionY));
}

TEST_F(KeelWindowsTest, TextsForADosFontAreThoseThatItShowsAsTheFiles)
{
    const QByteArray content = "KEEL\nCODEPAGE 850\n0,0,\"\xcd T \",\"\xf8"
                               "C\",1,2,\"0 \xf8\"\n";
    const auto plain = load(content)->Item(Variant(1));
    EXPECT_EQ(plain->Label(), u"═ T ");
    EXPECT_EQ(plain->Units(), u"°C");
    const auto stored = load(content, KeelWindows::Texts::ForDosFont)->Item(Variant(1));
    EXPECT_EQ(stored->Label(), u"\u00cd T ");
    EXPECT_EQ(stored->Units(), u"\u00f8C");
    EXPECT_EQ(stored->Format(), u"0 \u00f8");
}

TEST_F(KeelWindowsTest, AFileThatCannotBeReadIsNamedWithItsReason)
{
    KeelWindows reader(store);
    EXPECT_EQ(errorOf([&] { reader.Load(folder.filePath(QStringLiteral("none"))); }), 53);
    EXPECT_EQ(errorOf([&] { reader.Load(folder.path()); }), 75);
    EXPECT_EQ(errorOf([&] { reader.Load(QString()); }), 53);
    const QString wrong = file("KEEL\n0,x,a");
    try {
        reader.Load(wrong);
        FAIL();
    } catch (const values::RuntimeError& error) {
        EXPECT_EQ(error.number(), InvalidFileFormat);
        EXPECT_TRUE(error.description().startsWith(wrong + QStringLiteral(":2:3: ")))
            << error.description().toStdString();
    }
}

TEST_F(KeelWindowsTest, AFileThatIsRefusedAsksTheSchemeForNothing)
{
    bool asked = false;
    store->onCreate = store->onCreateChannel = [&] { asked = true; };
    EXPECT_EQ(errorOf([&] { load("KEEL\n0,0,a\n0,x,b"); }), InvalidFileFormat);
    EXPECT_FALSE(asked);
}

TEST_F(KeelWindowsTest, ASchemeThatGivesNothingIsErrorNinetyOne)
{
    EXPECT_EQ(errorOf([] { KeelWindows reader(nullptr); }), 91);
    store->makesChannels = false;
    EXPECT_EQ(errorOf([&] { load("KEEL\n0,0,a"); }), 91);
    store->makesChannels = true;
    store->makesWindows = false;
    EXPECT_EQ(errorOf([&] { load("KEEL\n0,0,a"); }), 91);
}

TEST_F(KeelWindowsTest, WhateverASchemeThrowsReachesTheCaller)
{
    store->onCreateChannel = [] { throw std::runtime_error("disk gone"); };
    EXPECT_THROW(load("KEEL\n0,0,a"), std::runtime_error);
}

} // namespace zan::keel
