#include "script/machine/Dictionary.h"

#include "script/machine/Engine.h"

#include "binding/MemberTable.h"
#include "values/Array.h"
#include "values/Burial.h"
#include "values/Convert.h"
#include "values/NumberText.h"

namespace zan::script {

using values::ErrorNumber;
using values::Kind;
using values::Variant;

namespace {

constexpr int ElementNotFound = 32811;

[[noreturn]] void raiseMissing()
{
    throw values::RuntimeError(ElementNotFound, values::errorText(ElementNotFound));
}

} // namespace

/// Walks the keys. Holds the dictionary, and copes with keys that come and go meanwhile.
class DictionaryEnumerator final : public binding::Enumerator
{
public:
    explicit DictionaryEnumerator(Dictionary* dictionary)
        : m_dictionary(dictionary)
    {}
    std::optional<Variant> next() override
    {
        const auto& entries = m_dictionary->m_entries;
        while (m_place < entries.size() && !entries[m_place].present)
            ++m_place;
        return m_place < entries.size() ? std::optional(entries[m_place++].key) : std::nullopt;
    }

private:
    values::Ref<Dictionary> m_dictionary;
    std::size_t m_place = 0;
};

Dictionary::~Dictionary()
{
    removeAll();
}

const binding::MemberTable& Dictionary::members() const
{
    return binding::table([] {
        return binding::MemberTable(
            "Dictionary", nullptr,
            {
                binding::method<&Dictionary::add>("Add"),
                binding::property<&Dictionary::compareMode, &Dictionary::setCompareMode>("CompareMode"),
                binding::readOnly<&Dictionary::count>("Count"),
                binding::method<&Dictionary::exists>("Exists"),
                binding::property<&Dictionary::item, &Dictionary::setItem>("Item").asDefault(),
                binding::method<&Dictionary::items>("Items"),
                binding::writeOnly<&Dictionary::setKey>("Key"),
                binding::method<&Dictionary::keys>("Keys"),
                binding::method<&Dictionary::remove>("Remove"),
                binding::method<&Dictionary::removeAll>("RemoveAll"),
            });
    });
}

/// `d.Items()(0)` and `d.Keys(0)`: an index after a method without parameters is one of its result.
Variant Dictionary::invoke(values::Name name, binding::Access access, binding::Arguments arguments)
{
    const bool isList =
        access == binding::Access::Get && arguments.size() == 1 &&
        (name.folded().text() == QLatin1String("items") || name.folded().text() == QLatin1String("keys"));
    if (!isList)
        return Object::invoke(name, access, arguments);
    const Variant list = Object::invoke(name, access, {});
    if (engine())
        engine()->vm().chargeValue(list);
    const std::int32_t index = values::toLong(arguments[0]);
    return list.array().elements()[list.array().offset({&index, 1})];
}

std::unique_ptr<binding::Enumerator> Dictionary::enumerate()
{
    return std::make_unique<DictionaryEnumerator>(this);
}

/// A text that is the same for equal keys: numbers are equal by value, texts by the compare mode, objects by
/// identity.
QString Dictionary::normal(const Variant& key) const
{
    switch (key.kind()) {
    case Kind::String:
        return QLatin1Char('t') + (m_compareMode == 0 ? key.text() : key.text().toCaseFolded());
    case Kind::Empty:
        return QStringLiteral("e");
    case Kind::Null:
        return QStringLiteral("n");
    case Kind::Object:
        return QStringLiteral("o%1").arg(reinterpret_cast<quintptr>(key.object()));
    case Kind::Array:
        values::raise(ErrorNumber::InvalidCall);
    case Kind::Error:
        values::raise(ErrorNumber::TypeMismatch);
    case Kind::Date:
        return QLatin1Char('d') + values::documentText(key.date().serial);
    default:
        return QLatin1Char('d') + values::documentText(values::toDouble(key));
    }
}

std::size_t& Dictionary::placeOf(const Variant& key)
{
    const auto found = m_places.find(normal(key));
    if (found == m_places.end())
        raiseMissing();
    return found->second;
}

Dictionary::Entry& Dictionary::insert(const Variant& key, const QString& normalKey)
{
    if (engine())
        engine()->vm().chargeBytes(sizeof(Entry) + std::size_t(normalKey.size()) * 2 + 64);
    m_places.emplace(normalKey, m_entries.size());
    return m_entries.emplace_back(Entry{key, {}});
}

void Dictionary::add(const Variant& key, const Variant& item)
{
    const QString normalKey = normal(key);
    if (m_places.contains(normalKey))
        values::raise(ErrorNumber::DuplicateKey);
    insert(key, normalKey).item = item;
}

bool Dictionary::exists(const Variant& key) const
{
    return m_places.contains(normal(key));
}

Variant Dictionary::item(const Variant& key)
{
    const QString normalKey = normal(key);
    if (const auto found = m_places.find(normalKey); found != m_places.end())
        return m_entries[found->second].item;
    insert(key, normalKey);
    return {};
}

void Dictionary::setItem(const Variant& key, const Variant& item)
{
    const QString normalKey = normal(key);
    const auto found = m_places.find(normalKey);
    Entry& entry = found != m_places.end() ? m_entries[found->second] : insert(key, normalKey);
    const Variant old = std::exchange(entry.item, item); // its end may run code that changes the dictionary
}

void Dictionary::setKey(const Variant& key, const Variant& newKey)
{
    const std::size_t place = placeOf(key);
    const QString normalKey = normal(newKey);
    if (m_places.contains(normalKey))
        values::raise(ErrorNumber::DuplicateKey);
    m_places.erase(normal(key));
    m_places.emplace(normalKey, place);
    const Variant old = std::exchange(m_entries[place].key, newKey);
}

void Dictionary::remove(const Variant& key)
{
    const std::size_t place = placeOf(key);
    m_places.erase(normal(key));
    const Entry removed = std::exchange(m_entries[place], Entry{{}, {}, false});
    compact();
}

/// Drops the gaps once they outweigh the rest.
void Dictionary::compact()
{
    constexpr std::size_t Few = 32;
    if (m_entries.size() < Few || m_places.size() * 2 > m_entries.size())
        return;
    std::erase_if(m_entries, [](const Entry& entry) { return !entry.present; });
    m_places.clear();
    for (std::size_t place = 0; place < m_entries.size(); ++place)
        m_places.emplace(normal(m_entries[place].key), place);
}

void Dictionary::removeAll()
{
    m_places.clear();
    std::vector<Variant> contents;
    contents.reserve(m_entries.size() * 2);
    for (Entry& entry : m_entries) {
        contents.push_back(std::move(entry.key));
        contents.push_back(std::move(entry.item));
    }
    m_entries.clear();
    values::bury(std::move(contents));
}

Variant Dictionary::keys() const
{
    std::vector<Variant> list;
    for (const Entry& entry : m_entries) {
        if (entry.present)
            list.push_back(entry.key);
    }
    return Variant(values::Array::fromValues(std::move(list)));
}

Variant Dictionary::items() const
{
    std::vector<Variant> list;
    for (const Entry& entry : m_entries) {
        if (entry.present)
            list.push_back(entry.item);
    }
    return Variant(values::Array::fromValues(std::move(list)));
}

void Dictionary::setCompareMode(std::int32_t mode)
{
    if (!m_places.empty() || mode < 0 || mode > 2)
        values::raise(ErrorNumber::InvalidCall);
    m_compareMode = mode;
}

} // namespace zan::script
