#include "script/machine/RegExpObject.h"

#include "script/machine/Engine.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"

#include <algorithm>
#include <cctype>

namespace zan::script {

using values::ErrorNumber;
using values::Variant;

namespace {

constexpr int SyntaxInExpression = 5017;
constexpr int UnexpectedQuantifier = 5018;
constexpr int ExpectedBracket = 5019;
constexpr int ExpectedParenthesis = 5020;
constexpr int InvalidRange = 5021;

/// A step of a search may take as long as some calls of the host.
constexpr int CallsPerStep = 4;

class ListEnumerator final : public binding::Enumerator
{
public:
    explicit ListEnumerator(std::vector<Variant> items)
        : m_items(std::move(items))
    {}
    std::optional<Variant> next() override
    {
        return m_place < m_items.size() ? std::optional(m_items[m_place++]) : std::nullopt;
    }

private:
    std::vector<Variant> m_items;
    std::size_t m_place = 0;
};

Variant itemAt(const std::vector<Variant>& items, std::int32_t place)
{
    if (place < 0 || std::size_t(place) >= items.size())
        values::raise(ErrorNumber::InvalidCall);
    return items[std::size_t(place)];
}

[[noreturn]] void raisePattern(const QString& reason)
{
    int number = SyntaxInExpression;
    if (reason.contains(QLatin1String("quantifier")))
        number = UnexpectedQuantifier;
    else if (reason.contains(QLatin1String("missing terminating ]")))
        number = ExpectedBracket;
    else if (reason.contains(QLatin1String("missing closing parenthesis")) ||
             reason.contains(QLatin1String("parenthes")))
        number = ExpectedParenthesis;
    else if (reason.contains(QLatin1String("range")))
        number = InvalidRange;
    throw values::RuntimeError(number, values::errorText(number));
}

/// A pattern in the toolkit's spelling: `\u0041` names a character by four digits; with fewer the `u` is a letter.
QString translated(const QString& pattern)
{
    constexpr qsizetype Digits = 4;
    QString result;
    for (qsizetype place = 0; place < pattern.size(); ++place) {
        if (pattern[place] != QLatin1Char('\\') || place + 1 == pattern.size()) {
            result += pattern[place];
            continue;
        }
        const QChar escaped = pattern[++place];
        if (escaped != QLatin1Char('u')) {
            result += QLatin1Char('\\');
            result += escaped;
            continue;
        }
        const QStringView digits = QStringView(pattern).mid(place + 1, Digits);
        const bool allHex = std::all_of(digits.begin(), digits.end(), [](QChar c) {
            return c.unicode() < 128 && std::isxdigit(static_cast<unsigned char>(c.unicode())) != 0;
        });
        if (allHex && digits.size() == Digits) {
            result += QStringLiteral("\\x{%1}").arg(digits);
            place += Digits;
        } else {
            result += escaped;
        }
    }
    return result;
}

/// The replacement with $1 to $99, $&, $`, $' and $$ filled in.
void appendReplacement(QString& result, const QString& replacement, const QRegularExpressionMatch& match,
                       const QString& text)
{
    for (qsizetype place = 0; place < replacement.size(); ++place) {
        const QChar c = replacement[place];
        const QChar next = place + 1 < replacement.size() ? replacement[place + 1] : QChar();
        if (c != QLatin1Char('$')) {
            result += c;
        } else if (next == QLatin1Char('$')) {
            result += c;
            ++place;
        } else if (next == QLatin1Char('&')) {
            result += match.captured(0);
            ++place;
        } else if (next == QLatin1Char('`')) {
            result += QStringView(text).left(match.capturedStart(0));
            ++place;
        } else if (next == QLatin1Char('\'')) {
            result += QStringView(text).sliced(match.capturedEnd(0));
            ++place;
        } else if (next.unicode() >= u'0' && next.unicode() <= u'9') {
            int group = next.unicode() - u'0';
            int digits = 1;
            if (place + 2 < replacement.size() && replacement[place + 2].unicode() >= u'0' &&
                replacement[place + 2].unicode() <= u'9') {
                const int two = group * 10 + replacement[place + 2].unicode() - u'0';
                if (two <= match.regularExpression().captureCount()) {
                    group = two;
                    digits = 2;
                }
            }
            if (group == 0 || group > match.regularExpression().captureCount()) {
                result += c;
            } else {
                result += match.captured(group);
                place += digits;
            }
        } else {
            result += c;
        }
    }
}

} // namespace

const binding::MemberTable& RegExpObject::members() const
{
    return binding::table([] {
        return binding::MemberTable(
            "IRegExp2", nullptr,
            {
                binding::property<&RegExpObject::pattern, &RegExpObject::setPattern>("Pattern"),
                binding::property<&RegExpObject::global, &RegExpObject::setGlobal>("Global"),
                binding::property<&RegExpObject::ignoreCase, &RegExpObject::setIgnoreCase>("IgnoreCase"),
                binding::property<&RegExpObject::multiLine, &RegExpObject::setMultiLine>("MultiLine"),
                binding::method<&RegExpObject::execute>("Execute"),
                binding::method<&RegExpObject::test>("Test"),
                binding::method<&RegExpObject::replace>("Replace"),
            });
    });
}

void RegExpObject::setPattern(const QString& pattern)
{
    m_pattern = pattern;
    m_compiled.reset();
}

void RegExpObject::setIgnoreCase(bool ignore)
{
    m_ignoreCase = ignore;
    m_compiled.reset();
}

void RegExpObject::setMultiLine(bool multiLine)
{
    m_multiLine = multiLine;
    m_compiled.reset();
}

const std::shared_ptr<RegExpPattern>& RegExpObject::compiled()
{
    if (m_compiled)
        return m_compiled;
    QRegularExpression::PatternOptions options;
    options.setFlag(QRegularExpression::CaseInsensitiveOption, m_ignoreCase);
    options.setFlag(QRegularExpression::MultilineOption, m_multiLine);
    auto pattern = std::make_shared<RegExpPattern>(translated(m_pattern), options);
    if (!pattern->quick().isValid())
        raisePattern(pattern->quick().errorString());
    m_compiled = std::move(pattern);
    return m_compiled;
}

RegExpSearch RegExpObject::search(const QString& text)
{
    return RegExpSearch(compiled(), text, [this](qsizetype places) {
        if (!engine())
            return;
        Vm& vm = engine()->vm();
        vm.spendText(places);
        for (int call = 0; call < CallsPerStep; ++call)
            vm.budget().countCall();
        vm.look();
    });
}

values::Ref<binding::Object> RegExpObject::execute(const QString& text)
{
    constexpr std::size_t BytesPerMatch = 512;
    const bool global = m_global;
    RegExpSearch matching = search(text);
    std::vector<Variant> matches;
    for (QRegularExpressionMatch found = matching.next(); found.hasMatch(); found = matching.next()) {
        matches.emplace_back(values::make<Match>(found));
        if (!global)
            break;
        if (engine())
            engine()->vm().chargeBytes(BytesPerMatch + std::size_t(found.capturedLength(0)) * sizeof(QChar));
    }
    return values::make<MatchCollection>(std::move(matches));
}

bool RegExpObject::test(const QString& text)
{
    return search(text).next().hasMatch();
}

QString RegExpObject::replace(const QString& text, const Variant& replacement)
{
    // COMPAT: a Boolean is replaced by its number.
    const QString with =
        values::toText(replacement.is(values::Kind::Boolean) ? Variant(std::int16_t(replacement.boolean() ? -1 : 0))
                                                             : replacement);
    const bool global = m_global;
    const QString source = text; // what is looked at meanwhile may run code that changes the variable
    RegExpSearch matching = search(source);
    QString result;
    qsizetype place = 0;
    for (QRegularExpressionMatch match = matching.next(); match.hasMatch(); match = matching.next()) {
        const qsizetype before = result.size();
        result += QStringView(source).sliced(place, match.capturedStart(0) - place);
        appendReplacement(result, with, match, source);
        if (engine()) {
            engine()->vm().checkLength(result.size());
            engine()->vm().chargeBytes(std::size_t(result.size() - before) * sizeof(QChar));
        }
        place = match.capturedEnd(0);
        if (!global)
            break;
    }
    result += QStringView(source).sliced(place);
    return result;
}

const binding::MemberTable& SubMatches::members() const
{
    return binding::table([] {
        return binding::MemberTable("ISubMatches", nullptr,
                                    {
                                        binding::readOnly<&SubMatches::count>("Count"),
                                        binding::readOnly<&SubMatches::item>("Item").asDefault(),
                                    });
    });
}

std::unique_ptr<binding::Enumerator> SubMatches::enumerate()
{
    return std::make_unique<ListEnumerator>(m_texts);
}

Variant SubMatches::item(std::int32_t place) const
{
    return itemAt(m_texts, place);
}

Match::Match(const QRegularExpressionMatch& match)
    : m_value(match.captured(0))
    , m_first(std::int32_t(match.capturedStart(0)))
{
    std::vector<Variant> texts;
    for (int group = 1; group <= match.regularExpression().captureCount(); ++group)
        texts.push_back(match.capturedStart(group) < 0 ? Variant() : Variant(match.captured(group)));
    m_subMatches = values::make<SubMatches>(std::move(texts));
}

const binding::MemberTable& Match::members() const
{
    return binding::table([] {
        return binding::MemberTable("IMatch2", nullptr,
                                    {
                                        binding::readOnly<&Match::firstIndex>("FirstIndex"),
                                        binding::readOnly<&Match::length>("Length"),
                                        binding::readOnly<&Match::value>("Value").asDefault(),
                                        binding::readOnly<&Match::subMatches>("SubMatches"),
                                    });
    });
}

const binding::MemberTable& MatchCollection::members() const
{
    return binding::table([] {
        return binding::MemberTable("IMatchCollection2", nullptr,
                                    {
                                        binding::readOnly<&MatchCollection::count>("Count"),
                                        binding::readOnly<&MatchCollection::item>("Item").asDefault(),
                                    });
    });
}

std::unique_ptr<binding::Enumerator> MatchCollection::enumerate()
{
    return std::make_unique<ListEnumerator>(m_matches);
}

Variant MatchCollection::item(std::int32_t place) const
{
    return itemAt(m_matches, place);
}

} // namespace zan::script
