#include "window/KeelImport.h"

#include "document/Elements.h"
#include "document/XMLOps.h"
#include "keel/KeelWindows.h"
#include "surface/host/Surface.h"
#include "surface/ops/WindowOps.h"
#include "surface/text/TextPainter.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Twips.h"
#include "window/BenchWindow.h"
#include "window/PanelDesign.h"
#include "window/PanelDocument.h"

#include <QScopeGuard>

#include <cmath>

namespace zan::window {

namespace element = document::element;
using binding::Variant;
using document::Node;
using document::XMLOps::GetAttribute;
using document::XMLOps::SetAttribute;
using values::Name;
using wrappers::iBenchControl;

namespace {

constexpr values::Colour Navy = values::rgb(0, 0, 128);
constexpr values::Colour Yellow = values::rgb(255, 255, 0);
const QString TerminalFont = QStringLiteral("Terminal");
constexpr int TerminalPoints = 12;
constexpr std::int16_t DosCharset = 255;

// Twips.
constexpr float FirstLine = 500; // room for the connect button
constexpr double LinesPerHeight = 1.2;
constexpr float ButtonWidth = 2500;
constexpr float ButtonHeight = 800;

const Name CaptionName("CAPTION");
const Name AlignmentName("ALIGNMENT");
const Name AutoSizeName("AUTOSIZE");

/// Sets a property of the live control, which may refuse it, and keeps it in the document, so that the window looks the
/// same when it is loaded again.
void putAndKeep(iBenchControl& control, Name name, const Variant& value, const QString& stored)
{
    if (const Ref<binding::Object> live = control.Control())
        live->tryPut(name, value);
    SetAttribute(control.XMLNode(), name, stored, true);
}

/// A place in characters or lines as twips. Raises 6 for one beyond what a measure holds.
float placed(const Node& node, Name position, float step, float from)
{
    const double place = values::val(GetAttribute(node, position)) * double(step) + double(from);
    if (!std::isfinite(place))
        values::raise(values::ErrorNumber::Overflow);
    return values::toSingle(Variant(place));
}

} // namespace

const QString KeelImport::WindowKey = QStringLiteral("KEEL");

KeelImport::KeelImport(BenchWindow& panel, surface::Surface& surface)
    : m_panel(panel)
    , m_surface(surface)
    , m_alive(&panel)
{}

bool KeelImport::goesOn() const
{
    return m_alive && m_panel.document().loads() == m_load;
}

void KeelImport::run(const QString& file)
{
    m_load = m_panel.document().loads() + 1;
    m_panel.Clear();
    if (!goesOn())
        return;
    // COMPAT: a failure leaves the drawing stopped. Only a window that has taken this one's place is to be seen at once.
    surface::WindowOps::LockUpdates(m_panel.hWnd());
    auto release = qScopeGuard([] { surface::WindowOps::UnlockUpdates(); });
    try {
        if (dress() && takeWindow(file)) {
            addConnectButton();
            addRows();
        }
    } catch (...) {
        release.dismiss();
        throw;
    }
    if (m_alive)
        m_panel.updateGeometry();
}

/// The look of the terminal, and its character grid.
bool KeelImport::dress()
{
    m_panel.design().init();
    if (!goesOn())
        return false;
    const Ref<surface::FontObject> font = m_surface.surfaceFont();
    font->setName(TerminalFont);
    font->setBold(true);
    font->setSize(values::toCurrency(Variant(TerminalPoints)));
    font->setCharset(DosCharset);
    m_panel.setBackColor(Navy);
    if (goesOn())
        m_panel.setForeColor(Yellow);
    if (!goesOn())
        return false;
    const QString measured = QStringLiteral("A");
    m_grid.charWidth = widthOf(measured);
    m_grid.lineHeight = float(double(values::pixelsToTwips(font->face().height())) * LinesPerHeight);
    return true;
}

/// Reads the file, and has the scheme keep its window in place of the one that was imported before.
bool KeelImport::takeWindow(const QString& file)
{
    PanelDocument& document = m_panel.document();
    keel::KeelWindows reader(document.schemeWindows(), keel::KeelWindows::Texts::ForDosFont);
    const Ref<site::SchemeWindow> read = reader.Load(file);
    if (!goesOn())
        return false;
    const Ref<site::SchemeWindows> windows = values::given(document.schemeWindows());
    values::attempt([&] { windows->Remove(Variant(WindowKey)); }); // there may be none
    if (!goesOn())
        return false;
    const Ref<site::SchemeWindow> stored = values::given(windows->Add(read, WindowKey));
    if (!goesOn())
        return false;
    ++m_load;
    document.enter(stored);
    return goesOn();
}

/// A control that is added has all of them refreshed. Of that only the last time is to be seen, as nothing is drawn
/// meanwhile; each of the others would look at every label before it.
Ref<iBenchControl> KeelImport::add(const QString& type, bool refreshes)
{
    const Ref<wrappers::BenchControls> list = values::given(m_panel.Controls());
    m_panel.document().setRefreshing(refreshes);
    const auto resume = qScopeGuard([this] {
        if (m_alive)
            m_panel.document().setRefreshing(true);
    });
    return values::given(list->Add(type, QString()));
}

void KeelImport::addConnectButton()
{
    const Ref<iBenchControl> button = add(QStringLiteral("VB.CommandButton"), true);
    if (!goesOn())
        return;
    const QString caption = QStringLiteral("&Connect");
    putAndKeep(*button, CaptionName, Variant(caption), caption);
    const Node action = document::XMLOps::CreateElement(element::Action);
    SetAttribute(action, element::Type, QStringLiteral("VESPER"));
    SetAttribute(action, element::Function, QStringLiteral("CONNECT"));
    SetAttribute(action, element::ShowProgress, QStringLiteral("1"));
    button->XMLNode().appendChild(action);
    button->Move(0, 0, ButtonWidth, ButtonHeight);
}

/// The window may be another one, or the panel gone, after every call of a row.
void KeelImport::addRows()
{
    const Ref<site::SchemeWindow> window = m_alive ? m_panel.CurrentWindow() : nullptr;
    if (!goesOn())
        return;
    // All are read before the first label is added: a store that finds its channels anew after each change of the window
    // would otherwise do so for every row.
    const std::int32_t count = values::given(window)->Count();
    std::vector<Ref<site::Channel>> channels;
    for (std::int32_t place = 1; goesOn() && place <= count; ++place)
        channels.push_back(values::given(window->Item(Variant(place))));
    for (std::size_t place = 0; goesOn() && place < channels.size(); ++place)
        addRow(*channels[place], place + 1 == channels.size());
}

void KeelImport::addRow(site::Channel& channel, bool isLast)
{
    const Ref<iBenchControl> label = add(QStringLiteral("VB.Label"), isLast);
    if (!goesOn())
        return;
    const QString zero = QStringLiteral("0");
    putAndKeep(*label, element::BackStyle, Variant(std::int16_t(0)), zero);
    putAndKeep(*label, AlignmentName, Variant(std::int16_t(0)), zero);
    const Node node = channel.XMLNode();
    const float left = placed(node, keel::PositionX, m_grid.charWidth, 0);
    const float top = placed(node, keel::PositionY, m_grid.lineHeight, FirstLine);
    const bool isLive = channel.BaseAddress() >= 0;
    if (!goesOn())
        return;
    if (isLive) {
        showValue(*label, channel, left, top);
        return;
    }
    const QString text = channel.Label() + channel.Units();
    if (goesOn())
        showText(*label, text, left, top);
}

/// A scan shows label, value and units.
void KeelImport::showValue(iBenchControl& label, site::Channel& channel, float left, float top)
{
    channel.setUseCount(1);
    if (goesOn())
        label.setChannel(Ref<site::Channel>(&channel));
    const QString caption = goesOn() ? channel.Label() : QString();
    if (!goesOn())
        return;
    const QString yes = QStringLiteral("-1");
    putAndKeep(label, AutoSizeName, Variant(true), yes);
    putAndKeep(label, CaptionName, Variant(caption), caption);
    SetAttribute(label.XMLNode(), element::AddLabelSeperators, QStringLiteral("0"), true);
    SetAttribute(label.XMLNode(), element::ShowLabels, yes, true);
    label.Move(left, top, label.Width(), m_grid.lineHeight);
}

void KeelImport::showText(iBenchControl& label, const QString& text, float left, float top)
{
    putAndKeep(label, AutoSizeName, Variant(false), QStringLiteral("0"));
    putAndKeep(label, CaptionName, Variant(text), text);
    label.Move(left, top, widthOf(text), m_grid.lineHeight);
}

/// Twips that a text takes in the window's font.
float KeelImport::widthOf(const QString& text) const
{
    surface::TextPainter measuring;
    return values::pixelsToTwips(measuring.measure(text, m_surface.surfaceFont()->face(), false).width());
}

} // namespace zan::window
