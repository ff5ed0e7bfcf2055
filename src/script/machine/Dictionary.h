#pragma once

#include "script/machine/Tracked.h"

#include "binding/Object.h"

#include <QHash>
#include <QString>

#include <optional>
#include <unordered_map>
#include <vector>

namespace zan::script {

/// What CreateObject("Scripting.Dictionary") gives: values by key, in the order they were added.
class Dictionary final : public binding::Object, public Tracked
{
public:
    explicit Dictionary(Engine& engine)
        : Tracked(engine)
    {}
    ~Dictionary() override;

    const binding::MemberTable& members() const override;
    values::Variant invoke(values::Name name, binding::Access access, binding::Arguments arguments) override;
    std::unique_ptr<binding::Enumerator> enumerate() override;

    void letGo() override { removeAll(); }
    void hold() const override { retain(); }
    void drop() const override { release(); }

    void add(const values::Variant& key, const values::Variant& item); ///< 457 when the key is there
    bool exists(const values::Variant& key) const;
    values::Variant item(const values::Variant& key); ///< a key that is missing is added with Empty
    void setItem(const values::Variant& key, const values::Variant& item);
    void setKey(const values::Variant& key, const values::Variant& newKey); ///< 32811 when the key is missing
    void remove(const values::Variant& key);                                ///< 32811 when the key is missing
    void removeAll();
    values::Variant keys() const;
    values::Variant items() const;
    std::int32_t count() const { return std::int32_t(m_places.size()); }
    std::int32_t compareMode() const { return m_compareMode; }
    void setCompareMode(std::int32_t mode); ///< 5 unless empty

private:
    friend class DictionaryEnumerator;
    struct Entry
    {
        values::Variant key;
        values::Variant item;
        bool present = true;
    };
    QString normal(const values::Variant& key) const;
    std::size_t& placeOf(const values::Variant& key);
    Entry& insert(const values::Variant& key, const QString& normalKey);
    void compact();

    std::vector<Entry> m_entries; ///< in order of adding, with gaps where something was removed
    std::unordered_map<QString, std::size_t> m_places;
    std::int32_t m_compareMode = 0;
};

} // namespace zan::script
