#include "FormFixture.h"

#include "document/XmlText.h"

#include <random>

namespace zan::dialogs {
namespace {

using RandomUser = FormTest;

/// What nobody should type, among what somebody might.
const char16_t* const texts[] = {u"",         u"0",        u"-1",     u"1",          u"12abc",
                                 u"1e999",    u"-1e308",   u"3.5",    u" 7",         u"&HFF",
                                 u"<A&B>",    u"RTD|FLOW", u"\u0001", u"2147483648", u"\xD800",
                                 u"a\r\nb\t", u"None",     u"|",      u"nan",        u"-2147483648"};
const char16_t* const answers[] = {
    u"Cancel",       u"font:DejaVu Serif,14,bold", u"font:,0", u"colour:255",
    u"colour:-5000", u"file:/nowhere/at all.bmp",  u"OK",      u"font:Terminal,99999"};

/// Does to a form what comes to his mind: the same for a seed, wherever the test runs.
class User
{
public:
    explicit User(std::uint32_t seed)
        : m_random(seed)
    {}
    int pick(int count) { return int(m_random() % std::uint32_t(count)); }
    QString text() { return QString::fromUtf16(texts[pick(int(std::size(texts)))]); }

    void use(surface::RecordingForms& forms, SetupForm& form)
    {
        forms.answer(QString::fromUtf16(answers[pick(int(std::size(answers)))]));
        Field& field = form.fields()[std::size_t(pick(int(form.fields().size())))];
        switch (pick(5)) {
        case 0:
            return form.userDoubleClick(field);
        case 1:
            return form.userCheck(field, pick(3));
        case 2:
            return form.userTab(pick(4) - 1);
        default:
            break;
        }
        if (field.isText())
            form.userText(field, text());
        else if (field.isList())
            form.userSelect(field, pick(int(field.rows().size()) + 2) - 1);
        else
            form.userClick(field);
    }

private:
    std::mt19937 m_random;
};

QString randomControl(User& user, const wrappers::ControlType& type)
{
    const char* const elements[] = {"BINDTO",       "CAPTION",     "MODE",       "COMPARISON", "TRUECOLOUR",
                                    "FLASH",        "MIN",         "MAX",        "BOUNDLIMIT", "SCROLLING",
                                    "LIMITCHANNEL", "TOOLTIPTEXT", "ACTION",     "LOWCOLOUR",  "VISIBLE",
                                    "FILTER",       "PICTUREFILE", "LIMITOFFSET"};
    QString xml = QStringLiteral("<CONTROL><TYPE>%1</TYPE>").arg(type.key);
    for (const char* element : elements) {
        QString text = user.text().toHtmlEscaped();
        text.removeIf([](QChar letter) { return letter < u' ' || letter.isSurrogate(); });
        if (user.pick(2) == 0)
            xml += QStringLiteral("<%1>%2</%1>").arg(QLatin1String(element), text);
    }
    return xml + QStringLiteral("</CONTROL>");
}

TEST_F(RandomUser, NeitherCrashesAFormNorSpoilsTheDocument)
{
    constexpr int Rounds = 40;
    constexpr int Deeds = 60;
    load("");
    for (int round = 0; round < Rounds; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << round);
        User user{std::uint32_t(round)};
        QString controls;
        int count = 0;
        for (const wrappers::ControlType& type : panel->controlTypes()) {
            if (!type.setup)
                continue;
            controls += randomControl(user, type);
            ++count;
        }
        ASSERT_GT(count, 0);
        const QByteArray key = "W" + QByteArray::number(round);
        fill(key, controls.toUtf8().constData());
        panel->LoadWindow(QString::fromLatin1(key));
        ASSERT_EQ(panel->Controls()->Count(), count);
        forms.onForm = [&](surface::ModalForm& shown) {
            auto& form = static_cast<SetupForm&>(shown);
            if (user.pick(4) == 0)
                form.dialog(nullptr); // with its widgets, or as data alone
            for (int deed = 0; deed < Deeds && form.isOpen(); ++deed)
                user.use(forms, form);
        };
        for (int place = 1; place <= count; ++place)
            panel->edit([&](window::PanelEditor&) { panel->setup().edit(wrapper(place)); });
        panel->edit([&](window::PanelEditor&) { panel->setup().editWindow(); });
        forms.onForm = nullptr;
        while (panel->CanUndo() && user.pick(3) != 0)
            panel->Undo();

        panel->UpdateDocument();
        const QString stored = nodeOf(key).xml();
        const document::ParseResult parsed = document::parseXml(stored);
        ASSERT_TRUE(parsed) << parsed.error.message.toStdString() << '\n' << stored.toStdString();
        const QByteArray again = key + "again"; // the window itself is emptied when another one comes
        const document::Node window = parsed.document.firstChildElement();
        while (const document::Node child = window.firstChildElement())
            nodeOf(again).appendChild(child);
        panel->LoadWindow(QString::fromLatin1(again));
        EXPECT_EQ(panel->Controls()->Count(), count);
    }
}

} // namespace
} // namespace zan::dialogs
