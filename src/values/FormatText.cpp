#include "values/FormatOutput.h"

namespace zan::values {

namespace {

QString inCase(const QString& text, LetterCase letterCase)
{
    switch (letterCase) {
    case LetterCase::Lower:
        return text.toLower();
    case LetterCase::Upper:
        return text.toUpper();
    case LetterCase::Kept:
        break;
    }
    return text;
}

} // namespace

void putText(FormatOutput& output, const FormatSection& section, const QString& text)
{
    QString shown = section.mixedCase ? text : inCase(text, section.letterCase);
    LetterCase letterCase = section.letterCase; // of the place at hand, where the section mixes cases
    const auto put = [&](QStringView piece) {
        if (section.mixedCase)
            output.put(inCase(piece.toString(), letterCase));
        else
            output.put(piece);
    };

    // Places are filled from the right, so with too few characters the first places stay empty.
    const qsizetype places = section.textPlaces;
    const qsizetype empty = section.fillFromLeft ? 0 : std::max<qsizetype>(places - shown.size(), 0);
    const QStringView literals(section.literals);
    qsizetype literal = 0;
    qsizetype place = 0;
    qsizetype next = 0;
    for (const FormatSection::Item& item : section.items) {
        if (item.step == Step::Literal) {
            output.put(literals.mid(literal, item.count));
            literal += item.count;
            continue;
        }
        letterCase = item.letterCase;
        if (place >= empty && next < shown.size())
            put(QStringView(shown).mid(next++, 1));
        else if (item.step == Step::Space)
            output.put(u' ');
        ++place;
        if (place == places) {
            // COMPAT: what finds no place of its own spills at the last one.
            put(QStringView(shown).mid(next));
            next = shown.size();
        }
    }
    if (places == 0)
        put(shown); // "<" and ">" alone: the whole text
}

} // namespace zan::values
