#include "wrappers/BenchControl.h"

#include "binding/MemberTable.h"
#include "document/Elements.h"
#include "document/LoadByName.h"
#include "document/XMLOps.h"
#include "surface/host/Surface.h"
#include "surface/ops/ControlOps.h"
#include "surface/ops/WindowOps.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Twips.h"
#include "wrappers/FontNode.h"
#include "wrappers/ValueText.h"

#include <array>

namespace zan::wrappers {

namespace element = document::element;
using binding::AccessStatus;
using document::Node;
using document::XMLOps::GetAttribute;
using document::XMLOps::GetNumber;
using document::XMLOps::SetAttribute;
using values::Colour;
using values::Name;

namespace {

const Name TagName("Tag");
const Name WindowHandleName("hWnd");
const Name PictureName("Picture");
const Name MoveName("Move");

/// What a wrapper is given as its live control: Nothing, or a control that lies on a surface. Anything else raises 13; a
/// wrapper among them, which would be asked for its measures by itself.
surface::LiveControl* requireLiveControl(const Ref<binding::Object>& control)
{
    auto* live = dynamic_cast<surface::LiveControl*>(control.get());
    if (control && !live)
        values::raise(values::ErrorNumber::TypeMismatch);
    return live;
}

// Every control of a load is written so: the one that lies on a surface, as nearly all do, is written without a search for
// the member. Any other is written by name, and raises 91 when it was unloaded.

void putTag(surface::LiveControl& live, const QString& tag)
{
    if (live.isLoaded())
        live.setTag(tag);
    else
        Ref<surface::LiveControl>(&live)->put(TagName, tag); // which may take it from its wrapper
}

void putVisible(surface::LiveControl& live, bool visible)
{
    if (live.isLoaded())
        live.setVisible(visible);
    else
        Ref<surface::LiveControl>(&live)->put(element::Visible, Variant(visible));
}

/// Whether a bind string is made of these keys; of a window without one there is none.
bool isBindString(QStringView text, QStringView windowKey, QStringView channelKey)
{
    return !windowKey.isEmpty() && text.size() == windowKey.size() + 1 + channelKey.size() &&
           text.startsWith(windowKey) && text[windowKey.size()] == u'|' && text.endsWith(channelKey);
}

} // namespace

BenchControl::BenchControl()
    : m_isNodeDue(true)
{
    document::XMLOps::OpenXML();
}

BenchControl::~BenchControl()
{
    document::XMLOps::CloseXML();
}

const binding::MemberTable& BenchControl::members() const
{
    return binding::table([] { return binding::MemberTable("BenchControl", &wrapperMembers(), {}); });
}

// Beginning ----------------------------------------------------------------------------------------------------

const Node& BenchControl::node() const
{
    if (m_isNodeDue)
        makeNode();
    return m_node;
}

/// A new wrapper has a node of its own. It is made when somebody asks for it: a document that is loaded brings the
/// nodes of all its controls along.
void BenchControl::makeNode() const
{
    m_isNodeDue = false;
    m_node = document::XMLOps::CreateElement(element::Control);
    m_fontNode = document::XMLOps::CreateElement(element::Font);
    m_node.appendChild(m_fontNode);
    if (m_followsWindow)
        SetAttribute(m_node, element::UseWindowSettings, storedText(true));
    SetAttribute(m_node, element::Type, m_firstType);
    if (m_isShownFirst)
        SetAttribute(m_node, element::Visible, storedText(true));
}

void BenchControl::begin(const QString& type, const Ref<surface::LiveControl>& control, bool usesWindowSettings)
{
    if (!m_isNodeDue) {
        setControlType(type);
        setUseWindowSettings(usesWindowSettings);
        takeControl(control.get());
        setVisible(true);
        return;
    }
    m_firstType = type;
    m_followsWindow = usesWindowSettings;
    takeControl(control.get());
    if (m_live)
        putVisible(*m_live, true);
    m_isShownFirst = true;
}

// Loading ------------------------------------------------------------------------------------------------------

void BenchControl::setXMLNode(const Node& node)
{
    m_isNodeDue = false;
    m_node = node;
    m_fontNode = Node();
    m_changes.add();
    if (const Ref<binding::Object> control = m_control) {
        // A VALUE in the document is a state to be shown, and nobody's click.
        const surface::Surface::WithoutClicks silent(m_live->surface());
        loadLive(*control);
    }
    m_fontNode = document::specialChild(m_node, element::Font);
    // A node without FONT gets one.
    if (!m_fontNode && m_node) {
        m_fontNode = m_node.createElement(element::Font);
        m_node.appendChild(m_fontNode);
    }
    // The stored font counts only for a control that does not follow the window.
    if (!UseWindowSettings()) {
        if (const Ref<binding::Object> font = Font())
            loadFont(m_fontNode, *font);
    }
    loadRest();
}

void BenchControl::loadLive(binding::Object& control)
{
    std::array special{document::SpecialChild{element::PictureFile, {}}, document::SpecialChild{element::Font, {}}};
    document::loadByName(node(), control, special);
    loadPicture(control, special.front().node);
}

void BenchControl::loadFont(const Node& fontNode, binding::Object& font)
{
    applyFontNode(fontNode, font);
}

void BenchControl::loadPicture(binding::Object& control, const Node& fileNode)
{
    if (!fileNode || !m_pictureLoader)
        return;
    // A picture that is missing or broken leaves the control without one.
    values::attempt([&] { control.putReference(PictureName, (*m_pictureLoader)(fileNode.text())); });
}

void BenchControl::setControl(const Ref<binding::Object>& control)
{
    takeControl(requireLiveControl(control));
}

void BenchControl::takeControl(surface::LiveControl* live)
{
    static const QString none = QStringLiteral("0");
    const Ref<surface::LiveControl> next(live);
    if (next) {
        const QString tag = m_isNodeDue ? none : GetAttribute(m_node, element::Index, none);
        putTag(*next, tag);
    }
    m_control = next;
    m_live = live;
    m_changes.add();
    if (m_grabHandles)
        m_grabHandles->SubClassTarget(hWnd());
}

void BenchControl::setChannel(const Ref<site::Channel>& channel)
{
    const Ref<site::Channel> bound = channel; // asked below, where it may bind the control to another one
    m_channel = bound;
    m_changes.add();
    if (!bound) {
        setBindTo(QString());
        return;
    }
    const Node parent = bound->XMLNode().parent();
    if (!parent)
        return;
    const QString windowKey = GetAttribute(parent, element::Key);
    const QString channelKey = bound->Key();
    if (m_channel != bound)
        return;
    if (QString text; node().childText(element::BindTo, text) && isBindString(text, windowKey, channelKey))
        return; // as always when a window is loaded
    setBindTo(windowKey.isEmpty() ? QString() : windowKey + QLatin1Char('|') + channelKey);
}

// Live control and node ----------------------------------------------------------------------------------------

void BenchControl::putLive(Name name, const Variant& value)
{
    if (const Ref<binding::Object> control = m_control)
        control->put(name, value);
}

void BenchControl::putLiveAndNode(Name name, const Variant& value)
{
    putLive(name, value);
    SetAttribute(node(), name, storedText(value));
}

float BenchControl::measure(Name name) const
{
    return m_control ? values::toSingle(m_control->get(name)) : 0.0f;
}

void BenchControl::putMeasure(Name name, float value)
{
    putLiveAndNode(name, Variant(value));
}

/// A type without such a colour shows nothing of it; its node keeps it all the same.
void BenchControl::putColour(Name name, Colour value)
{
    const Ref<binding::Object> control = m_control;
    if (!control || control->members().find(name))
        putLive(name, Variant(value.code));
    SetAttribute(node(), name, storedText(Variant(value.code)));
}

Colour BenchControl::colour(Name name) const
{
    Variant value;
    std::int32_t code = 0;
    if (!m_control || m_control->tryGet(name, value) != AccessStatus::Ok ||
        values::tryToLong(value, code) != values::ErrorNumber::None)
        return {};
    return {code};
}

float BenchControl::Left() const
{
    return measure(element::Left);
}
void BenchControl::setLeft(float left)
{
    putMeasure(element::Left, left);
}
float BenchControl::Top() const
{
    return measure(element::Top);
}
void BenchControl::setTop(float top)
{
    putMeasure(element::Top, top);
}
float BenchControl::Width() const
{
    return measure(element::Width);
}
void BenchControl::setWidth(float width)
{
    putMeasure(element::Width, width);
}
float BenchControl::Height() const
{
    return measure(element::Height);
}
void BenchControl::setHeight(float height)
{
    putMeasure(element::Height, height);
}

Colour BenchControl::BackColour() const
{
    return colour(element::BackColor);
}
void BenchControl::setBackColour(Colour value)
{
    putColour(element::BackColor, value);
}
Colour BenchControl::ForeColour() const
{
    return colour(element::ForeColor);
}
void BenchControl::setForeColour(Colour value)
{
    putColour(element::ForeColor, value);
}

QString BenchControl::ToolTipText() const
{
    return GetAttribute(node(), element::ToolTipText);
}
void BenchControl::setToolTipText(const QString& text)
{
    putLiveAndNode(element::ToolTipText, Variant(text));
}

bool BenchControl::Visible() const
{
    return GetNumber(node(), element::Visible, 0, false) != 0;
}
void BenchControl::setVisible(bool visible)
{
    if (m_live)
        putVisible(*m_live, visible);
    SetAttribute(node(), element::Visible, storedText(visible));
}

std::int32_t BenchControl::hWnd() const
{
    if (m_live && m_live->isLoaded())
        return m_live->hWnd();
    return colour(WindowHandleName).code; // read like a colour: a control without the property gives 0
}

Ref<binding::Object> BenchControl::Font() const
{
    Variant font;
    if (!m_control || m_control->tryGet(element::Font, font) != AccessStatus::Ok || !font.isObject() ||
        !font.object())
        return {};
    return Ref<binding::Object>(&binding::objectOf(font));
}

void BenchControl::setFont(const Ref<binding::Object>& font)
{
    if (m_control)
        m_control->tryPut(element::Font, Variant(font)); // the node follows at UpdateNode
}

// Node only ----------------------------------------------------------------------------------------------------

std::int16_t BenchControl::Index() const
{
    return values::toInteger(GetNumber(node(), element::Index, 0, false));
}
void BenchControl::setIndex(std::int16_t index)
{
    const QString text = QString::number(index);
    SetAttribute(node(), element::Index, text);
    if (m_live)
        putTag(*m_live, text);
}

QString BenchControl::Key() const
{
    return GetAttribute(node(), element::Key);
}
void BenchControl::setKey(const QString& key)
{
    SetAttribute(node(), element::Key, key);
}
QString BenchControl::BindTo() const
{
    return GetAttribute(node(), element::BindTo);
}
void BenchControl::setBindTo(const QString& bindString)
{
    SetAttribute(node(), element::BindTo, bindString);
}
QString BenchControl::ControlType() const
{
    return GetAttribute(node(), element::Type);
}
void BenchControl::setControlType(const QString& type)
{
    SetAttribute(node(), element::Type, type);
}
bool BenchControl::UseWindowSettings() const
{
    return GetNumber(node(), element::UseWindowSettings, 0, false) != 0;
}
void BenchControl::setUseWindowSettings(bool use)
{
    SetAttribute(node(), element::UseWindowSettings, storedText(use));
}

// Handles and movement -----------------------------------------------------------------------------------------

display::cGrabHandles* BenchControl::handles() const
{
    if (!m_grabHandles && m_handlePlan) {
        m_grabHandles = std::make_unique<display::cGrabHandles>(m_handlePlan->parent, m_handlePlan->target, false,
                                                                m_handlePlan->colour, -1);
        m_grabHandles->EndResize = [self = const_cast<BenchControl*>(this)] { self->endResize(); };
    }
    return m_grabHandles.get();
}

bool BenchControl::ShowGrabHandles() const
{
    return m_grabHandles && m_grabHandles->ShowHandles();
}
void BenchControl::setShowGrabHandles(bool show)
{
    if (m_grabHandles || show) {
        if (display::cGrabHandles* shown = handles())
            shown->setShowHandles(show);
    }
    SetAttribute(node(), element::ShowGrabHandles, storedText(show));
}

void BenchControl::InitGrabHandles(std::int32_t parent, std::int32_t target, Colour handleColour)
{
    // Most panels are never unlocked: the handles are made when they are first to be seen.
    if (!m_handlePlan)
        m_handlePlan = HandlePlan{parent, target, handleColour};
}

void BenchControl::Move(float left, std::optional<float> top, std::optional<float> width,
                        std::optional<float> height)
{
    const Ref<binding::Object> control = m_control;
    if (!control)
        return;
    const auto part = [&](Name name, std::optional<float> given) {
        if (!given)
            return measure(name);
        SetAttribute(node(), name, storedText(Variant(*given)));
        return *given;
    };
    const float newTop = part(element::Top, top);
    const float newWidth = part(element::Width, width);
    const float newHeight = part(element::Height, height);
    const Variant arguments[] = {left, newTop, newWidth, newHeight};
    control->get(MoveName, arguments);
    SetAttribute(node(), element::Left, storedText(Variant(left)));
}

void BenchControl::Drag()
{
    if (!m_control)
        return;
    const Ref<BenchControl> alive(this);
    // A control that cannot be moved lies where it lies; that is stored.
    values::attempt([this] { surface::ControlOps::StartWindowDrag(hWnd()); });
    storePosition();
}

void BenchControl::endResize()
{
    const Ref<BenchControl> alive(this);
    const Ref<binding::Object> control = m_control;
    if (!control)
        return;
    // A control that refuses to be moved keeps its place; that place is stored below.
    values::attempt([&] {
        // The rectangle in twips. COMPAT: left is the window's own screen left, only top is measured from the parent.
        const surface::WindowOps::Bounds bounds =
            surface::WindowOps::GetWindowBounds(hWnd(), m_handlePlan ? m_handlePlan->parent : 0);
        const float left = values::pixelsToTwips(bounds.Left);
        const float top = values::pixelsToTwips(bounds.Top);
        const float width = values::pixelsToTwips(bounds.Width);
        const float height = values::pixelsToTwips(bounds.Height);
        // COMPAT: two moves, the first 20 twips short, so that the control draws itself anew.
        if (left != Left() || top != Top() || width != Width() || height != Height()) {
            const Variant shorter[] = {left, top, width, height - 20.0f};
            control->get(MoveName, shorter);
            const Variant full[] = {left, top, width, height};
            control->get(MoveName, full);
        }
    });
    storePosition();
}

void BenchControl::ZOrder(std::optional<std::int32_t>)
{
    // COMPAT: the guard is the reverse of every other member's. A working control is not moved; without one this
    // fails as a call on nothing does.
    if (!m_control)
        values::raise(values::ErrorNumber::ObjectNotSet);
}

// Storing ------------------------------------------------------------------------------------------------------

void BenchControl::storePosition()
{
    for (const Name name : {element::Height, element::Top, element::Left, element::Width}) {
        Variant value;
        if (!m_control || m_control->tryGet(name, value) != AccessStatus::Ok)
            continue;
        const QString text = storedText(value);
        if (QString stored; node().childText(name, stored) && stored == text)
            continue;                           // what is stored already is no change of the document
        SetAttribute(node(), name, text, true); // forced, so that 0 is kept
    }
}

void BenchControl::storeLive(Name name)
{
    Variant value;
    const bool read = m_control->tryGet(name, value) == AccessStatus::Ok;
    SetAttribute(node(), name, read ? storedText(value) : QString()); // no such property: no such element
}

void BenchControl::UpdateNode()
{
    if (!m_control)
        return;
    for (const Name name : {element::BackColor, element::ForeColor, element::ToolTipText, element::Visible})
        storeLive(name);
    storePosition();
    if (const Ref<binding::Object> font = Font())
        storeFontNode(m_fontNode, *font);
}

} // namespace zan::wrappers
