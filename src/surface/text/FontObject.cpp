#include "surface/text/FontObject.h"

#include "binding/MemberTable.h"
#include "surface/text/FontFace.h"
#include "surface/text/FontTable.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zan::surface {

using values::ErrorNumber;

namespace {

constexpr std::int16_t RegularWeight = 400;
constexpr std::int16_t BoldWeight = 700;
constexpr std::int16_t BoldAbove = 550;
constexpr std::int16_t HeaviestWeight = 1000;
constexpr std::int16_t LastCharset = 255;
constexpr const char* DefaultName = "MS Sans Serif";
constexpr std::int64_t OnePoint = 10000; // Currency counts ten-thousandths
constexpr std::int64_t LargestSize = 2160 * OnePoint;
constexpr Currency DefaultSize{82500};
constexpr double PixelsPerPoint = 96.0 / 72.0;

void requireInRange(std::int64_t value, std::int64_t least, std::int64_t most)
{
    if (value < least || value > most)
        values::raise(ErrorNumber::InvalidPropertyValue);
}

const QString& defaultFontName()
{
    static const QString name = QLatin1String(DefaultName);
    return name;
}

} // namespace

FontObject::FontObject()
    : m_weight(RegularWeight)
    , m_size(DefaultSize)
    , m_name(defaultFontName())
{}

FontObject::~FontObject() = default;

Ref<FontObject> FontObject::fromQFont(const QFont& font)
{
    auto result = values::make<FontObject>();
    if (!font.family().isEmpty())
        result->m_name = font.family();
    const double points = font.pixelSize() > 0 ? font.pixelSize() / PixelsPerPoint : font.pointSizeF();
    result->m_size.scaled = std::clamp(std::int64_t(std::llround(points * OnePoint)), OnePoint, LargestSize);
    result->m_weight = std::int16_t(font.weight());
    result->m_italic = font.italic();
    result->m_underline = font.underline();
    result->m_strikethrough = font.strikeOut();
    return result;
}

const binding::MemberTable& FontObject::members() const
{
    using F = FontObject;
    using binding::between;
    using binding::field;
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "Font", nullptr,
            {
                property<&F::name, &F::setName>("Name").asDefault().keptIn<&F::m_name>(DefaultName),
                property<&F::size, &F::setSize>("Size").keptIn<&F::m_size>(DefaultSize),
                property<&F::bold, &F::setBold>("Bold"), // another way to say Weight
                field<&F::m_italic, &F::changed>("Italic", false),
                field<&F::m_underline, &F::changed>("Underline", false),
                field<&F::m_strikethrough, &F::changed>("Strikethrough", false),
                field<&F::m_weight, &F::changed>("Weight", RegularWeight, between(0, HeaviestWeight)),
                field<&F::m_charset, &F::changed>("Charset", 0, between(0, LastCharset)),
            });
    });
}

void FontObject::setName(const QString& name)
{
    if (name.isEmpty())
        values::raise(ErrorNumber::InvalidPropertyValue);
    const std::optional<std::int16_t> charset = FontTable::charsetOfName(name);
    if (m_name == name && charset.value_or(m_charset) == m_charset)
        return;
    m_name = name;
    if (charset)
        m_charset = *charset;
    changed();
}

void FontObject::setSize(Currency size)
{
    requireInRange(size.scaled, OnePoint, LargestSize);
    change(m_size, size);
}

bool FontObject::bold() const noexcept
{
    return m_weight > BoldAbove;
}

void FontObject::setBold(bool bold)
{
    setWeight(bold ? BoldWeight : RegularWeight);
}

void FontObject::setWeight(std::int16_t weight)
{
    requireInRange(weight, 0, HeaviestWeight);
    change(m_weight, weight);
}

void FontObject::setCharset(std::int16_t charset)
{
    requireInRange(charset, 0, LastCharset);
    change(m_charset, charset);
}

const QFont& FontObject::qfont()
{
    return face().font();
}

FontFace& FontObject::face()
{
    if (!m_face) {
        FaceKey key;
        key.family = FontTable::installedFamily(m_name);
        key.pixels = std::int16_t(std::max(1L, std::lround(points() * PixelsPerPoint)));
        key.weight = m_weight == 0 ? RegularWeight : m_weight;
        key.italic = m_italic;
        key.underline = m_underline;
        key.strikethrough = m_strikethrough;
        key.dos = isDosCharset();
        m_face = FontFace::find(key);
    }
    return *m_face;
}

void FontObject::addListener(FontListener& listener)
{
    if (!m_listener) {
        m_listener = &listener;
        return;
    }
    if (!m_further)
        m_further = std::make_unique<std::vector<FontListener*>>();
    m_further->push_back(&listener);
}

void FontObject::removeListener(FontListener& listener)
{
    if (m_listener == &listener) {
        m_listener = nullptr;
        return;
    }
    if (!m_further)
        return;
    if (const auto found = std::find(m_further->begin(), m_further->end(), &listener); found != m_further->end())
        m_further->erase(found);
}

void FontObject::changed()
{
    m_face = {};
    const Ref<FontObject> alive(this);
    if (m_listener)
        m_listener->fontChanged(*this);
    if (!m_further)
        return;
    const std::vector<FontListener*> listeners = *m_further; // a listener may come or go while it is told
    for (FontListener* listener : listeners) {
        if (std::find(m_further->begin(), m_further->end(), listener) != m_further->end())
            listener->fontChanged(*this);
    }
}

Ref<binding::Object> FontObject::valueCopy() const
{
    return copyFont(*this);
}

Ref<FontObject> copyFont(const FontObject& font)
{
    // A copy has no owner to tell, so the values are taken over as they lie; the order of assignment that callers
    // rely on shows in the result only: a character set given apart from the name stays.
    auto copy = values::make<FontObject>();
    font.members().copyDesign(*copy, font);
    copy->m_face = font.m_face;
    return copy;
}

bool fontsEqual(const FontObject& a, const FontObject& b)
{
    return a.name() == b.name() && a.bold() == b.bold() && a.charset() == b.charset() && a.italic() == b.italic() &&
           a.size() == b.size() && a.strikethrough() == b.strikethrough() && a.underline() == b.underline() &&
           a.weight() == b.weight();
}

} // namespace zan::surface
