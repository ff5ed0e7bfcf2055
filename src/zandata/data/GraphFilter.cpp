#include "zandata/data/GraphFilter.h"

#include "binding/MemberTable.h"
#include "values/Array.h"

namespace zan::zandata {

namespace {

std::int32_t checkedNumber(std::int32_t channel)
{
    if (channel < 1 || channel > GraphFilter::MostChannels)
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return channel;
}

} // namespace

Variant GraphFilter::Channels() const
{
    const auto list =
        values::make<values::Array>(std::vector{values::Array::Bound{1, std::int32_t(m_labels.size())}});
    for (std::size_t i = 0; i < m_labels.size(); ++i)
        list->elements()[i] = Variant(m_labels[i]);
    return Variant(list);
}

bool GraphFilter::Enabled(std::int32_t channel) const
{
    return isShown(checkedNumber(channel));
}

void GraphFilter::setEnabled(std::int32_t channel, bool enabled)
{
    checkedNumber(channel);
    const bool isChange = enabled ? m_hidden.erase(channel) > 0 : m_hidden.insert(channel).second;
    if (isChange)
        tell();
}

void GraphFilter::Reset()
{
    if (m_hidden.empty())
        return;
    m_hidden.clear();
    tell();
}

void GraphFilter::tell() const
{
    if (changed)
        changed();
}

void GraphFilter::setSource(const Ref<binding::Object>& source, std::vector<QString> labels)
{
    m_source = source;
    m_labels = std::move(labels);
}

const binding::MemberTable& GraphFilter::members() const
{
    using C = GraphFilter;
    return binding::table([] {
        return binding::MemberTable("GraphFilter", nullptr,
                                    {
                                        binding::readOnly<&C::DataSource>("DataSource"),
                                        binding::readOnly<&C::Channels>("Channels"),
                                        binding::property<&C::Enabled, &C::setEnabled>("Enabled").asDefault(),
                                        binding::method<&C::Reset>("Reset"),
                                    });
    });
}

} // namespace zan::zandata
