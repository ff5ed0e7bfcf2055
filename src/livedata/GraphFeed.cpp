#include "livedata/GraphFeed.h"

#include "document/XMLOps.h"
#include "livedata/LiveTarget.h"
#include "wrappers/ZanGraphControl.h"

namespace zan::livedata {

using values::attempt;
using values::given;
using values::Name;
using values::Ref;
using values::Variant;
using wrappers::ZanGraphControl;

namespace {

const Name HeadingName("Heading");
const Name HistoryName("History");
const Name DataSourceName("DataSource");

constexpr std::int32_t BufferUsed = 1;

/// What of the wrapper's goes to the graph's property of the same name, in this order.
struct Limit
{
    Name name;
    Variant (*read)(const ZanGraphControl& wrapper);
};

const Limit limits[] = {
    {Name("LowerLimitLine"), [](const ZanGraphControl& wrapper) { return Variant(wrapper.LowerLimitLine()); }},
    {Name("UpperLimitLine"), [](const ZanGraphControl& wrapper) { return Variant(wrapper.UpperLimitLine()); }},
    {Name("LowerLimitLabel"), [](const ZanGraphControl& wrapper) { return Variant(wrapper.LowerLimitLabel()); }},
    {Name("UpperLimitLabel"), [](const ZanGraphControl& wrapper) { return Variant(wrapper.UpperLimitLabel()); }},
};

Ref<site::Live> liveOf(const wrappers::BenchControls& controls)
{
    return given(given(controls.logger())->Live());
}

Ref<site::LogBuffer> bufferOf(const wrappers::BenchControls& controls)
{
    return given(given(liveOf(controls)->Buffers())->Item(BufferUsed));
}

} // namespace

void FeedGraph(wrappers::iBenchControl& control, wrappers::BenchControls& controls)
{
    // What the first reads of missing limits store is nobody's edit.
    const document::XMLOps::Marking off(document::XMLOps::Marking::Off);
    const Ref<wrappers::iBenchControl> alive(&control);
    const Ref<wrappers::BenchControls> held(&controls);
    const Ref<binding::Object> graph = liveTarget(control);
    attempt([&] {
        const std::int16_t count = bufferOf(controls)->RecordCount();
        graph->put(HeadingName, QStringLiteral("Last %1 records").arg(count));
    });
    if (const auto* wrapper = dynamic_cast<const ZanGraphControl*>(&control)) {
        for (const Limit& limit : limits)
            attempt([&] { graph->put(limit.name, limit.read(*wrapper)); });
    }
    // A history is the past of what the data source shows: the graph is drawn anew when it gets the data source.
    attempt([&] { graph->putReference(HistoryName, Variant(liveOf(controls)->History())); });
    attempt([&] { graph->putReference(DataSourceName, Variant(bufferOf(controls)->Records())); });
}

} // namespace zan::livedata
