#pragma once

#include "binding/Object.h"

#include <functional>
#include <set>
#include <vector>

namespace zan::zandata {

using binding::Ref;
using binding::Variant;

/// Which channels of its data source a graph shows. Channels are numbered from 1; one that nobody has switched off is
/// shown, also one that the data source has not got yet.
class GraphFilter final : public binding::Object
{
public:
    /// Highest number that can be switched off.
    static constexpr std::int32_t MostChannels = 100'000;

    Ref<binding::Object> DataSource() const { return m_source; }
    /// The labels, an array from 1.
    Variant Channels() const;
    /// Raises 9 for a number that no channel can have.
    bool Enabled(std::int32_t channel) const;
    void setEnabled(std::int32_t channel, bool enabled);
    /// Shows every channel.
    void Reset();

    bool isShown(std::int32_t channel) const { return !m_hidden.contains(channel); }
    void setSource(const Ref<binding::Object>& source, std::vector<QString> labels);
    /// Called after a channel was switched on or off.
    std::function<void()> changed;

    const binding::MemberTable& members() const override;

private:
    void tell() const;
    Ref<binding::Object> m_source;
    std::vector<QString> m_labels;
    std::set<std::int32_t> m_hidden;
};

} // namespace zan::zandata
