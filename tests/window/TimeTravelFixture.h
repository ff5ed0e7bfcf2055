#pragma once

#include "WindowFixture.h"

#include "support/FakeHistory.h"
#include "window/PanelTime.h"
#include "window/PastFrame.h"

#include <functional>

namespace zan::window {

using binding::Variant;
using site::HistoryTime;
using site::LinkState;
using values::Name;
using values::Ref;

inline constexpr HistoryTime Moment = 1'600'000'000'000;
inline constexpr HistoryTime Second = 1000;

/// A history that tells how often it is asked, and does something meanwhile.
class AskedHistory : public fake::FakeHistory
{
public:
    mutable int asked = 0;
    std::function<void()> onValues;
    std::size_t answers = 1000; ///< at most so many values

    std::vector<Past> valuesAt(Time moment) const override
    {
        ++asked;
        if (const auto action = onValues)
            action();
        std::vector<Past> values = FakeHistory::valuesAt(moment);
        values.resize(std::min(values.size(), answers));
        return values;
    }
};

/// A panel whose logger keeps a history, at a moment of it.
class TimeTravel : public WindowTest
{
protected:
    TimeTravel()
    {
        logger->live->history = history;
        logger->link->state = LinkState::Connected;
        panel->resize(400, 300);
    }

    /// A channel of the window RTD with its series, as it is now.
    Ref<fake::FakeChannel> channel(const char* key, const Variant& now, std::int64_t period = Second)
    {
        const QString name = QString::fromLatin1(key);
        const Ref<fake::FakeChannel> made = logger->channel(QStringLiteral("RTD"), name);
        made->value = now;
        made->label = name;
        history->list.push_back(
            {std::int64_t(history->list.size()) + 1, QStringLiteral("RTD"), name, name, {}, {}, period});
        return made;
    }
    void record(std::int64_t series, HistoryTime time, const Variant& value) { history->put(series, time, value); }
    void load(const QByteArray& controls)
    {
        fill("MAIN", controls.constData());
        panel->LoadWindow(QStringLiteral("MAIN"));
    }
    /// One label on a channel that is 5 now and was 3 at the moment.
    void loadLabel()
    {
        level = channel("LEVEL", 5);
        record(1, Moment, 3);
        load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|LEVEL</BINDTO></CONTROL>");
    }
    QString caption(int place = 1) { return property(place, "Caption"); }
    bool isCovered(int place)
    {
        const auto list = panel->Controls()->withoutRecord();
        return std::any_of(list.begin(), list.end(),
                           [&](const Ref<binding::Object>& one) { return one.get() == live(place).get(); });
    }
    PastFrame* frame() { return dynamic_cast<PastFrame*>(panel->findChild<QWidget*>(QStringLiteral("pastFrame"))); }
    QByteArray document() { return document::toXml(logger->scheme->windows->root); }

    Ref<AskedHistory> history = values::make<AskedHistory>();
    Ref<fake::FakeChannel> level;
};

/// The CONTROL element of a type that is bound to the channel LEVEL.
inline QByteArray bound(const char* type, const char* rest = "")
{
    return QByteArray("<CONTROL><TYPE>") + type + "</TYPE><BINDTO>RTD|LEVEL</BINDTO>" + rest + "</CONTROL>";
}

} // namespace zan::window
