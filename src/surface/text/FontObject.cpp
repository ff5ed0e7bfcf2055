#include "surface/text/FontObject.h"

#include "binding/MemberTable.h"
#include "surface/text/FontFace.h"
#include "surface/text/FontTable.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zan::surface {

using binding::Member;
using values::ErrorNumber;

namespace {

constexpr std::int16_t RegularWeight = 400;
constexpr std::int16_t BoldWeight = 700;
constexpr std::int16_t BoldAbove = 550;
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
    static const QString name = QStringLiteral("MS Sans Serif");
    return name;
}

} // namespace

FontObject::FontObject()
    : m_charset(0)
    , m_italic(false)
    , m_underline(false)
    , m_strikethrough(false)
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

namespace {

/// A design value of fonts: what it is in a new one, and how a copy takes it over, untold.
template <class Copy>
Member kept(Member row, Variant standard, Copy)
{
    row.hasField = row.isStored = true;
    row.fallback = std::move(standard);
    row.copy = [](Object& to, const Object& from) {
        Copy()(static_cast<FontObject&>(to), static_cast<const FontObject&>(from));
    };
    return row;
}

} // namespace

const binding::MemberTable& FontObject::members() const
{
    using F = FontObject;
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "Font", nullptr,
            {
                kept(property<&F::name, &F::setName>("Name").asDefault(), Variant(defaultFontName()),
                     [](F& to, const F& from) { to.m_name = from.m_name; }),
                kept(property<&F::size, &F::setSize>("Size"), Variant(DefaultSize),
                     [](F& to, const F& from) { to.m_size = from.m_size; }),
                property<&F::bold, &F::setBold>("Bold"), // another way to say Weight
                kept(property<&F::italic, &F::setItalic>("Italic"), Variant(false),
                     [](F& to, const F& from) { to.m_italic = from.m_italic; }),
                kept(property<&F::underline, &F::setUnderline>("Underline"), Variant(false),
                     [](F& to, const F& from) { to.m_underline = from.m_underline; }),
                kept(property<&F::strikethrough, &F::setStrikethrough>("Strikethrough"), Variant(false),
                     [](F& to, const F& from) { to.m_strikethrough = from.m_strikethrough; }),
                kept(property<&F::weight, &F::setWeight>("Weight"), Variant(RegularWeight),
                     [](F& to, const F& from) { to.m_weight = from.m_weight; }),
                kept(property<&F::charset, &F::setCharset>("Charset"), Variant(std::int16_t(0)),
                     [](F& to, const F& from) { to.m_charset = from.m_charset; }),
            });
    });
}

void FontObject::setName(const QString& name)
{
    if (name.isEmpty())
        values::raise(ErrorNumber::InvalidPropertyValue);
    const std::optional<std::int16_t> charset = FontTable::charsetOfName(name);
    if (m_name == name && charset.value_or(std::int16_t(m_charset)) == m_charset)
        return;
    m_name = name;
    if (charset)
        m_charset = *charset;
    changed();
}

void FontObject::setSize(Currency size)
{
    requireInRange(size.scaled, OnePoint, LargestSize);
    if (m_size == size)
        return;
    m_size = size;
    changed();
}

bool FontObject::bold() const noexcept
{
    return m_weight > BoldAbove;
}

void FontObject::setBold(bool bold)
{
    setWeight(bold ? BoldWeight : RegularWeight);
}

void FontObject::setItalic(bool italic)
{
    if (m_italic == italic)
        return;
    m_italic = italic;
    changed();
}

void FontObject::setUnderline(bool underline)
{
    if (m_underline == underline)
        return;
    m_underline = underline;
    changed();
}

void FontObject::setStrikethrough(bool strikethrough)
{
    if (m_strikethrough == strikethrough)
        return;
    m_strikethrough = strikethrough;
    changed();
}

void FontObject::setWeight(std::int16_t weight)
{
    requireInRange(weight, 0, 1000);
    if (m_weight == weight)
        return;
    m_weight = weight;
    changed();
}

void FontObject::setCharset(std::int16_t charset)
{
    requireInRange(charset, 0, 255);
    if (m_charset == charset)
        return;
    m_charset = charset;
    changed();
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
