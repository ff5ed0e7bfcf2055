#include "script/machine/RegExpSearch.h"

#include "values/RuntimeError.h"

#include <algorithm>

namespace zan::script {

namespace {

/// Texts up to this length are first looked through in one go, with few steps allowed at each place. The toolkit's
/// compiled matching is not used: it counts too few of its steps.
constexpr qsizetype LongestInOneGo = 2048;
constexpr auto FewSteps = "(*NO_JIT)(*LIMIT_MATCH=500)";
/// Steps that one look may take before the pattern is given up.
constexpr auto ManySteps = "(*NO_JIT)(*LIMIT_MATCH=2000000)";
/// Characters that one look may read, for a pattern that reads on to the end of the text at each place.
constexpr qsizetype CharactersPerLook = 1 << 24;
constexpr qsizetype MostPlacesPerLook = 4096;

/// The text with the replacement character for halves of characters that stand alone, which the toolkit refuses.
QString wholeCharacters(QString text)
{
    if (text.isValidUtf16())
        return text;
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (text[place].isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate())
            ++place;
        else if (text[place].isSurrogate())
            text[place] = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

} // namespace

RegExpPattern::RegExpPattern(QString pattern, QRegularExpression::PatternOptions options)
    : m_pattern(std::move(pattern))
    , m_options(options)
    , m_quick(QLatin1String(FewSteps) + m_pattern, options)
{}

/// The gap is as short as possible and begins at one place, so that the steps are counted for all places together.
const QRegularExpression& RegExpPattern::patient(qsizetype places)
{
    if (places != m_places) {
        m_patient = QRegularExpression(QStringLiteral("%1[\\s\\S]{0,%2}?\\K(?:%3)")
                                           .arg(QLatin1String(ManySteps), QString::number(places - 1), m_pattern),
                                       m_options);
        m_places = places;
    }
    return m_patient;
}

RegExpSearch::RegExpSearch(std::shared_ptr<RegExpPattern> pattern, const QString& text, Progress progress)
    : m_pattern(std::move(pattern))
    , m_text(wholeCharacters(text))
    , m_progress(std::move(progress))
{}

QRegularExpressionMatch RegExpSearch::next()
{
    if (m_place > m_text.size())
        return {};
    const QRegularExpressionMatch found = from(m_place);
    if (!found.hasMatch())
        m_place = m_text.size() + 1;
    else if (found.capturedLength(0) > 0)
        m_place = found.capturedEnd(0);
    else // behind an empty match the next one begins a character later
        m_place = characterAt(found.capturedEnd(0) + 1);
    return found;
}

/// The place, or the next one where it lies in the middle of a character.
qsizetype RegExpSearch::characterAt(qsizetype place) const
{
    const bool isInside = place > 0 && place < m_text.size() && m_text[place].isLowSurrogate();
    return isInside ? place + 1 : place;
}

QRegularExpressionMatch RegExpSearch::from(qsizetype place)
{
    if (m_text.size() > LongestInOneGo)
        return patiently(place);
    const QRegularExpressionMatch found = m_pattern->quick().match(m_text, place);
    m_progress(m_text.size() - place);
    return found.isValid() ? found : patiently(place);
}

QRegularExpressionMatch RegExpSearch::patiently(qsizetype place)
{
    const qsizetype places =
        std::clamp<qsizetype>(CharactersPerLook / std::max<qsizetype>(m_text.size(), 1), 1, MostPlacesPerLook);
    const QRegularExpression pattern = m_pattern->patient(places);
    for (; place <= m_text.size(); place = characterAt(place + places)) {
        const QRegularExpressionMatch found = pattern.match(
            m_text, place, QRegularExpression::NormalMatch,
            QRegularExpression::AnchorAtOffsetMatchOption | QRegularExpression::DontCheckSubjectStringMatchOption);
        m_progress(places);
        if (!found.isValid()) // nobody knows whether it is there: "no match" would be a guess
            throw values::RuntimeError(values::ErrorNumber::OutOfStack,
                                       QStringLiteral("The regular expression takes too many steps on this text"));
        if (found.hasMatch())
            return found;
    }
    return {};
}

} // namespace zan::script
