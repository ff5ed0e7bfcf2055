#include "livedata/StatusDisplay.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "livedata/LiveTarget.h"
#include "values/Compare.h"
#include "values/Convert.h"
#include "values/Failure.h"

#include <QStringView>

#include <algorithm>
#include <array>
#include <cmath>

namespace zan::livedata {

namespace element = document::element;
using document::Node;
using document::XMLOps::GetAttribute;
using values::ErrorNumber;
using values::Name;
using values::Ordering;
using values::Ref;
using values::Variant;
using wrappers::BenchControls;
using wrappers::iBenchControl;

namespace {

const Name ValueName("Value");
const QString ChannelMode = QStringLiteral("CHANNEL");
const QString ConnectionStatus = QStringLiteral("CONNECTIONSTATUS");
const QString DataStatus = QStringLiteral("DATASTATUS");
const QString Zero = QStringLiteral("0");

struct ComparisonRow
{
    QStringView word;
    bool (*holds)(Ordering ordering);
};

// Words are matched exactly; any other word leaves the status False and compares nothing.
// COMPAT: ">=" is the strict test and ">" the inclusive one. Panels are set up to it.
constexpr std::array<ComparisonRow, 6> comparisons{{
    {u"<", [](Ordering ordering) { return ordering == Ordering::Less; }},
    {u"<=", [](Ordering ordering) { return ordering == Ordering::Less || ordering == Ordering::Equal; }},
    {u"=", [](Ordering ordering) { return ordering == Ordering::Equal; }},
    {u">=", [](Ordering ordering) { return ordering == Ordering::Greater; }},
    {u">", [](Ordering ordering) { return ordering == Ordering::Greater || ordering == Ordering::Equal; }},
    {u"NOT=", [](Ordering ordering) { return ordering != Ordering::Equal; }},
}};
constexpr QStringView BitSet = u"BIT SET=";
constexpr QStringView BitClear = u"BIT CLEAR=";

/// Nobody keeps what the connection was like: a light of the past that shows it is missing its value.
bool isConnected(const iBenchControl& control, const BenchControls& controls)
{
    if (wrappers::PastView* past = control.past()) {
        past->noteMissing();
        return false;
    }
    return values::given(values::given(controls.logger())->Link())->State() == site::LinkState::Connected;
}

double readWord(const iBenchControl& control, const site::Channel& channel, const BenchControls& controls)
{
    if (wrappers::PastView* past = control.past())
        return past->rawWord(channel).value_or(0);
    const Ref<site::Live> live = values::given(values::given(controls.logger())->Live());
    return live->ReadMemory(channel.BaseAddress(), channel.Bytes());
}

/// The raw word of a channel as the logger holds it; 0 when it cannot be read or has no place in 32 bits.
std::int32_t rawWord(const iBenchControl& control, const site::Channel& channel, const BenchControls& controls)
{
    std::int32_t word = 0;
    const bool isRead = values::attempt([&] {
        const double raw = readWord(control, channel, controls);
        if (values::roundToLong(raw, word) != ErrorNumber::None)
            word = 0;
    });
    return isRead ? word : 0;
}

/// The bit tests. A bit number that has no mask in 32 bits leaves the status False for both of them.
bool testBit(QStringView comparison, std::int32_t word, double compareValue)
{
    std::int16_t bit = 0;
    std::int32_t mask = 0;
    if (values::tryToInteger(Variant(compareValue), bit) != ErrorNumber::None ||
        values::roundToLong(std::exp2(double(bit)), mask) != ErrorNumber::None)
        return false;
    return ((word & mask) != 0) == (comparison == BitSet);
}

bool loggerStatus(const iBenchControl& control, const Node& node, const BenchControls& controls)
{
    const bool wantsData = GetAttribute(node, element::Program, ConnectionStatus) == DataStatus;
    return isConnected(control, controls) && (!wantsData || controls.HaveData());
}

/// Visible is written before Value, and both at every scan.
void show(iBenchControl& control, const Node& node, bool status)
{
    const QString hide = GetAttribute(node, status ? element::HideWhenTrue : element::HideWhenFalse, Zero);
    control.setVisible(values::val(hide) == 0);
    liveTarget(control)->put(ValueName, Variant(status));
}

/// As show(), each failing step skipped.
void showTrapped(iBenchControl& control, const Node& node, bool status)
{
    const QString hide = GetAttribute(node, status ? element::HideWhenTrue : element::HideWhenFalse, Zero);
    // A light that cannot be shown or hidden can still take its value.
    values::attempt([&] { control.setVisible(values::val(hide) == 0); });
    if (const Ref<binding::Object> live = control.Control())
        live->tryPut(ValueName, Variant(status));
}

void updateFromChannel(iBenchControl& control, const Node& node, const site::Channel& channel,
                       const BenchControls& controls)
{
    const QString comparison = GetAttribute(node, element::Comparison, QStringLiteral("="));
    const double compareValue = values::val(GetAttribute(node, element::CompareValue, Zero));
    if (comparison == BitSet || comparison == BitClear) {
        showTrapped(control, node, testBit(comparison, rawWord(control, channel, controls), compareValue));
        return;
    }
    const auto row = std::find_if(comparisons.begin(), comparisons.end(),
                                  [&](const ComparisonRow& candidate) { return candidate.word == comparison; });
    const bool status =
        row != comparisons.end() && row->holds(values::compareWithNumber(channel.Value(), compareValue));
    show(control, node, status);
}

} // namespace

void UpdateStatusLight(iBenchControl& control, const BenchControls& controls)
{
    const Node node = control.XMLNode();
    if (GetAttribute(node, element::Mode, ChannelMode) != ChannelMode) {
        show(control, node, loggerStatus(control, node, controls));
        return;
    }
    if (const Ref<site::Channel> channel = control.Channel())
        updateFromChannel(control, node, *channel, controls);
}

void FollowLink(iBenchControl& control, int state)
{
    // COMPAT: MODE is not asked. A light that shows a channel follows the link too, until the next scan.
    if (GetAttribute(control.XMLNode(), element::Program, ConnectionStatus) == ConnectionStatus)
        liveTarget(control)->put(ValueName, Variant(state == int(site::LinkState::Connected)));
}

} // namespace zan::livedata
