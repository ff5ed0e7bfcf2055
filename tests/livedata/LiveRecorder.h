#pragma once

#include "binding/MemberTable.h"
#include "document/XMLOps.h"
#include "values/Convert.h"
#include "wrappers/BenchControl.h"
#include "wrappers/BenchControls.h"

#include "support/ErrorOf.h"
#include "support/FakePanel.h"
#include "support/FakeSite.h"

#include <map>
#include <string>
#include <vector>

namespace zan::test {

/// A live control that writes down what is assigned to it, in order, and refuses what it is told to refuse.
class LiveRecorder : public fake::LooseControl
{
public:
    std::vector<std::string> writes; ///< "Name=value"
    std::map<std::string, values::Variant> properties;
    std::map<std::string, int> refused; ///< name to error number

    values::Variant invoke(values::Name name, binding::Access access, binding::Arguments arguments) override
    {
        const std::string text = name.text().toStdString();
        if (access == binding::Access::Get)
            return properties[text];
        if (const auto refusal = refused.find(text); refusal != refused.end())
            throw values::RuntimeError(refusal->second, QStringLiteral("refused"));
        properties[text] = arguments.back();
        writes.push_back(text + "=" + values::toText(arguments.back()).toStdString());
        return {};
    }
    /// Its own members are only what tryPut() needs to see.
    const binding::MemberTable& members() const override
    {
        using R = LiveRecorder;
        static const binding::MemberTable table("LiveRecorder", nullptr,
                                                {binding::property<&R::value, &R::setValue>("Value")});
        return table;
    }
    values::Variant value() { return properties["Value"]; }
    void setValue(const values::Variant& value) { put(values::Name("Value"), value); }

    std::vector<std::string> takeWrites() { return std::exchange(writes, {}); }
};

/// A wrapper with a recorder for its live control, as part of a collection whose logger is a fake.
class LiveStage
{
public:
    LiveStage()
    {
        wrapper->setControl(live);
        collection->AttachLogger(logger);
        live->takeWrites();
    }
    void set(const char* name, const char* text) { set(wrapper->XMLNode(), name, text); }
    static void set(const document::Node& node, const char* name, const char* text)
    {
        document::XMLOps::SetAttribute(node, values::Name(name), QString::fromLatin1(text), true);
    }
    /// Binds the control to a channel with this value.
    void bind(const values::Variant& value)
    {
        channel->value = value;
        wrapper->setChannel(channel);
    }

    values::Ref<fake::FakeLogger> logger = values::make<fake::FakeLogger>();
    values::Ref<fake::FakeChannel> channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    values::Ref<wrappers::BenchControls> collection = values::make<wrappers::BenchControls>();
    values::Ref<wrappers::BenchControl> wrapper = values::make<wrappers::BenchControl>();
    values::Ref<LiveRecorder> live = values::make<LiveRecorder>();
};

} // namespace zan::test
