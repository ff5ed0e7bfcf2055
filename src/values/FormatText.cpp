#include "values/FormatOutput.h"

namespace zan::values {

void putText(FormatOutput& output, const FormatSection& section, const QString& text)
{
    QString shown = text;
    if (section.letterCase == LetterCase::Lower)
        shown = text.toLower();
    else if (section.letterCase == LetterCase::Upper)
        shown = text.toUpper();

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
        if (place >= empty && next < shown.size())
            output.put(shown[next++].unicode());
        else if (item.step == Step::Space)
            output.put(u' ');
        ++place;
        if (place == places) {
            // COMPAT: what finds no place of its own spills at the last one.
            output.put(QStringView(shown).mid(next));
            next = shown.size();
        }
    }
    if (places == 0)
        output.put(shown); // "<" and ">" alone: the whole text
}

} // namespace zan::values
