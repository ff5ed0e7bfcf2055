#include "display/Sites.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"

#include <algorithm>
#include <limits>

namespace zan::display {

using values::ErrorNumber;

namespace {

class SiteWalk : public binding::Enumerator
{
public:
    explicit SiteWalk(Sites& sites)
        : m_sites(&sites)
    {}
    std::optional<Variant> next() override
    {
        if (m_place >= m_sites->Count())
            return std::nullopt;
        return binding::Marshal<document::Node>::to(m_sites->Item(Variant(++m_place)));
    }

private:
    binding::Ref<Sites> m_sites;
    std::int32_t m_place = 0;
};

} // namespace

std::int16_t Sites::Count() const
{
    if (m_entries.size() > std::size_t(std::numeric_limits<std::int16_t>::max()))
        values::raise(ErrorNumber::Overflow);
    return std::int16_t(m_entries.size());
}

std::size_t Sites::find(const Variant& index) const
{
    if (!index.isText()) {
        const std::int32_t place = values::toLong(index);
        if (place < 1 || std::size_t(place) > m_entries.size())
            values::raise(ErrorNumber::SubscriptOutOfRange);
        return std::size_t(place) - 1;
    }
    const QString folded = index.text().toCaseFolded();
    if (!m_keys.contains(folded))
        values::raise(ErrorNumber::InvalidCall);
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&folded](const Entry& candidate) { return candidate.foldedKey == folded; });
    return std::size_t(entry - m_entries.begin());
}

document::Node Sites::Item(const Variant& index) const
{
    return m_entries[find(index)].node;
}

void Sites::Add(const document::Node& site, const std::optional<QString>& key, const std::optional<Variant>& before,
                const std::optional<Variant>& after)
{
    if (before && after)
        values::raise(ErrorNumber::InvalidCall);
    const std::size_t place = before ? find(*before) : after ? find(*after) + 1 : m_entries.size();
    const QString folded = key.value_or(QString()).toCaseFolded();
    if (!folded.isEmpty()) {
        if (m_keys.contains(folded))
            values::raise(ErrorNumber::DuplicateKey);
        m_keys.insert(folded);
    }
    m_entries.insert(m_entries.begin() + std::ptrdiff_t(place), {site, folded});
}

void Sites::Remove(const Variant& index)
{
    const auto entry = m_entries.begin() + std::ptrdiff_t(find(index));
    m_keys.remove(entry->foldedKey);
    m_entries.erase(entry);
}

void Sites::Clear()
{
    m_entries.clear();
    m_keys.clear();
}

std::unique_ptr<binding::Enumerator> Sites::enumerate()
{
    return std::make_unique<SiteWalk>(*this);
}

const binding::MemberTable& Sites::members() const
{
    using binding::method;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Sites", nullptr,
                                    {
                                        readOnly<&Sites::Count>("Count"),
                                        readOnly<&Sites::Item>("Item").asDefault(),
                                        method<&Sites::Add>("Add"),
                                        method<&Sites::Remove>("Remove"),
                                        method<&Sites::Clear>("Clear"),
                                    });
    });
}

} // namespace zan::display
