#pragma once

#include "script/machine/RegExpSearch.h"
#include "script/machine/Tracked.h"

#include "binding/Object.h"

#include <QRegularExpression>
#include <QString>

namespace zan::script {

/// The RegExp class of the language, over the toolkit's regular expressions.
class RegExpObject final : public binding::Object, public Tracked
{
public:
    explicit RegExpObject(Engine& engine)
        : Tracked(engine)
    {}

    void letGo() override {}
    void hold() const override { retain(); }
    void drop() const override { release(); }

    const binding::MemberTable& members() const override;

    QString pattern() const { return m_pattern; }
    void setPattern(const QString& pattern);
    bool global() const { return m_global; }
    void setGlobal(bool global) { m_global = global; }
    bool ignoreCase() const { return m_ignoreCase; }
    void setIgnoreCase(bool ignore);
    bool multiLine() const { return m_multiLine; }
    void setMultiLine(bool multiLine);

    /// Matches of the pattern in the text: all of them when Global, else the first.
    values::Ref<binding::Object> execute(const QString& text);
    bool test(const QString& text);
    QString replace(const QString& text, const values::Variant& replacement);

private:
    /// Raises 5017 to 5021 for a pattern that is none.
    const std::shared_ptr<RegExpPattern>& compiled();
    RegExpSearch search(const QString& text);

    QString m_pattern;
    bool m_global = false;
    bool m_ignoreCase = false;
    bool m_multiLine = false;
    std::shared_ptr<RegExpPattern> m_compiled; ///< none after a change
};

/// One text with what the pattern's groups matched.
class SubMatches final : public binding::Object
{
public:
    explicit SubMatches(std::vector<values::Variant> texts)
        : m_texts(std::move(texts))
    {}
    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;
    std::int32_t count() const { return std::int32_t(m_texts.size()); }
    values::Variant item(std::int32_t place) const;

private:
    std::vector<values::Variant> m_texts;
};

class Match final : public binding::Object
{
public:
    explicit Match(const QRegularExpressionMatch& match);
    const binding::MemberTable& members() const override;
    std::int32_t firstIndex() const { return m_first; }
    std::int32_t length() const { return std::int32_t(m_value.size()); }
    QString value() const { return m_value; }
    values::Ref<binding::Object> subMatches() const { return m_subMatches; }

private:
    QString m_value;
    std::int32_t m_first;
    values::Ref<binding::Object> m_subMatches;
};

class MatchCollection final : public binding::Object
{
public:
    explicit MatchCollection(std::vector<values::Variant> matches)
        : m_matches(std::move(matches))
    {}
    const binding::MemberTable& members() const override;
    std::unique_ptr<binding::Enumerator> enumerate() override;
    std::int32_t count() const { return std::int32_t(m_matches.size()); }
    values::Variant item(std::int32_t place) const;

private:
    std::vector<values::Variant> m_matches;
};

} // namespace zan::script
