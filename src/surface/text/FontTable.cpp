#include "surface/text/FontTable.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>

namespace zan::surface::FontTable {

namespace {

struct Substitution
{
    const char* name;
    std::array<const char*, 5> families;
};

constexpr std::array SansFamilies{"Liberation Sans", "Arimo", "DejaVu Sans Condensed", "DejaVu Sans",
                                  "Nimbus Sans"};
constexpr std::array WideFamilies{"DejaVu Sans", "Bitstream Vera Sans", "Liberation Sans", "Arimo", "Nimbus Sans"};
constexpr std::array SerifFamilies{"Liberation Serif", "Tinos", "DejaVu Serif Condensed", "DejaVu Serif",
                                   "Nimbus Roman"};
constexpr std::array MonoFamilies{"Liberation Mono", "Cousine", "DejaVu Sans Mono", "Nimbus Mono PS", "FreeMono"};
/// For the DOS character set: families that have its line drawing characters.
constexpr std::array DosFamilies{"DejaVu Sans Mono", "Liberation Mono", "Cousine", "FreeMono", "Nimbus Mono PS"};

/// What stands in for the classic families where they are not installed, the nearest in width first.
constexpr Substitution Substitutions[]{
    {"ms sans serif", SansFamilies}, {"microsoft sans serif", SansFamilies},
    {"ms shell dlg", SansFamilies},  {"ms shell dlg 2", SansFamilies},
    {"helv", SansFamilies},          {"helvetica", SansFamilies},
    {"system", SansFamilies},        {"small fonts", SansFamilies},
    {"arial", SansFamilies},         {"arial narrow", SansFamilies},
    {"segoe ui", SansFamilies},      {"calibri", SansFamilies},
    {"trebuchet ms", SansFamilies},  {"tahoma", WideFamilies},
    {"verdana", WideFamilies},       {"times new roman", SerifFamilies},
    {"times", SerifFamilies},        {"tms rmn", SerifFamilies},
    {"ms serif", SerifFamilies},     {"georgia", SerifFamilies},
    {"garamond", SerifFamilies},     {"courier new", MonoFamilies},
    {"courier", MonoFamilies},       {"consolas", MonoFamilies},
    {"lucida console", DosFamilies}, {"terminal", DosFamilies},
    {"fixedsys", DosFamilies},
};

bool isInstalled(const QString& family)
{
    return QFontDatabase::hasFamily(family);
}

QString substituteFor(const QString& name)
{
    const QByteArray folded = name.trimmed().toLower().toLatin1();
    for (const Substitution& row : Substitutions) {
        if (folded != row.name)
            continue;
        for (const char* family : row.families) {
            if (const QString candidate = QString::fromLatin1(family); isInstalled(candidate))
                return candidate;
        }
    }
    return {};
}

/// The installed family spelt as this name but for case.
QString installedSpelling(const QString& name)
{
    const QStringList families = QFontDatabase::families();
    const auto found = std::find_if(families.begin(), families.end(), [&](const QString& family) {
        return family.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == families.end() ? QString() : *found;
}

QString chooseFamily(const QString& name)
{
    if (isInstalled(name))
        return name;
    if (const QString spelt = installedSpelling(name); !spelt.isEmpty())
        return spelt;
    if (const QString substitute = substituteFor(name); !substitute.isEmpty())
        return substitute;
    return QGuiApplication::font().family();
}

} // namespace

QString installedFamily(const QString& name)
{
    // Asking the toolkit for its families is slow, and a panel asks for the same name a thousand times.
    static QHash<QString, QString> known;
    if (const auto found = known.constFind(name); found != known.constEnd())
        return *found;
    constexpr int Limit = 1000; // names come from documents
    if (known.size() >= Limit)
        known.clear();
    return *known.insert(name, chooseFamily(name));
}

std::optional<std::int16_t> charsetOfName(const QString& name)
{
    constexpr std::int16_t Symbols = 2;
    constexpr std::int16_t Dos = 255;
    const QString folded = name.trimmed().toLower();
    if (folded == QLatin1String("terminal"))
        return Dos;
    for (const char* symbolic : {"symbol", "wingdings", "wingdings 2", "wingdings 3", "webdings", "marlett"}) {
        if (folded == QLatin1String(symbolic))
            return Symbols;
    }
    const bool hasLetter = std::any_of(name.begin(), name.end(), [](QChar letter) { return letter.isLetter(); });
    return hasLetter ? std::nullopt : std::optional<std::int16_t>(0);
}

} // namespace zan::surface::FontTable
