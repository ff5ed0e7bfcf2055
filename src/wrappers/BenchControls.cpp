#include "wrappers/BenchControls.h"

#include "binding/MemberTable.h"
#include "document/EditCount.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "site/NodeObject.h"
#include "surface/host/LiveControl.h"
#include "values/Convert.h"
#include "values/Failure.h"

#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace zan::wrappers {

namespace element = document::element;
using binding::AccessStatus;
using document::Node;
using document::XMLOps::GetAttribute;
using values::ErrorNumber;
using values::Name;

namespace {

const Name VisibleName("Visible");
const Name BorderStyleName("BorderStyle");
constexpr values::Colour HandleColour = values::rgb(0, 0, 255);

/// The places of a list are 16-bit: the next one after a full list does not exist.
std::int16_t checkedPlace(std::int32_t place)
{
    if (place > std::numeric_limits<std::int16_t>::max())
        values::raise(ErrorNumber::Overflow);
    return std::int16_t(place);
}

/// Characters above which a text is not even read.
constexpr qsizetype MostPasted = 16'000'000;

/// The CONTROL element that is the root of a text; a declaration and comments before it are passed over. Null when
/// the root is another one or the text cannot be read, one with a doctype among them.
Node pastedControl(const QString& xml)
{
    if (xml.size() > MostPasted || !xml.contains(QLatin1String("<CONTROL")))
        return {};
    const Node root = document::XMLOps::LoadDocument(xml).ownerDocument().documentElement();
    return root.name() == element::Control ? root : Node();
}

QString placeKey(std::int32_t place)
{
    std::array<char, 12> text{'@'};
    const char* const end = std::to_chars(text.data() + 1, text.data() + text.size(), place).ptr;
    return QString::fromLatin1(text.data(), end - text.data());
}

} // namespace

BenchControls::BenchControls()
{
    document::XMLOps::OpenXML();
    m_node = document::XMLOps::CreateElement(element::Window);
}

BenchControls::~BenchControls()
{
    document::XMLOps::CloseXML();
}

void BenchControls::setLiveData(LiveData* liveData)
{
    m_liveData = liveData;
    m_list.clearMemos(); // they say what the former one would do
}

PanelWindow& BenchControls::window() const
{
    if (!m_window)
        values::raise(ErrorNumber::ObjectNotSet);
    return *m_window;
}

// Building the list --------------------------------------------------------------------------------------------

void BenchControls::setXMLNode(const Node& node)
{
    const Ref<BenchControls> alive(this);
    const Node tree = node; // the caller's handle may change while controls are made
    window();               // must be there for the whole call
    // The old node is still in place: each removal takes the CONTROL out of the old window's tree too.
    Clear();
    m_node = tree;
    m_haveData = false;
    const std::uint32_t load = ++m_loads;
    {
        m_boundWindow.emplace();
        const auto forget = qScopeGuard([this] { m_boundWindow.reset(); });
        // In document order. The nodes are listed first: a load may add to the tree.
        const std::vector<Node> controls = tree.children(element::Control);
        m_list.reserve(controls.size());
        for (const Node& control : controls) {
            loadControl(control);
            if (m_loads != load)
                return; // a scheme that was asked for a channel has loaded something else
        }
    }
    setHideProtectedControls(m_hideProtectedControls);
}

template <class Step>
void BenchControls::orGiveUp(iBenchControl& control, Step&& step)
{
    try {
        step();
    } catch (...) {
        giveUp(control);
        throw;
    }
}

/// What is not in the list must not stay on the surface, where its clicks would reach another control.
void BenchControls::giveUp(iBenchControl& control)
{
    values::attempt([&] { releaseChannel(control); });
    values::attempt([&] { discard(control); });
}

void BenchControls::loadControl(const Node& node)
{
    // An unknown type is passed over and stays in the tree.
    const Ref<iBenchControl> control = window().createControl(GetAttribute(node, element::Type));
    if (!control)
        return;
    const std::uint32_t load = m_loads;
    orGiveUp(*control, [&] {
        control->setXMLNode(node);
        attach(*control);
        control->setVisible(true);
        if (m_loads != load) {
            giveUp(*control); // the list that it was made for is gone
            return;
        }
        const QString key = placeKey(m_list.count() + 1);
        control->setKey(key);
        enlist(control, key);
    });
}

void BenchControls::enlist(const Ref<iBenchControl>& control, const QString& key)
{
    const std::int16_t place = checkedPlace(m_list.count() + 1);
    m_list.add(control, key);
    control->setIndex(place);
}

void BenchControls::releaseChannel(const iBenchControl& control)
{
    if (const Ref<site::Channel> channel = control.Channel())
        channel->setUseCount(std::int16_t(std::max(0, channel->UseCount() - 1)));
}

void BenchControls::discard(iBenchControl& control)
{
    control.dropGrabHandles();
    if (const Ref<binding::Object> live = control.Control(); m_window && live)
        m_window->discardControl(live);
}

void BenchControls::attach(iBenchControl& control)
{
    control.InitGrabHandles(m_parentHandle, control.hWnd(), HandleColour);
    control.setShowGrabHandles(!m_lockPositions);
    // A bound control takes its channel up; one that is gone leaves the bind string alone.
    const QString bindString = control.BindTo();
    if (bindString.isEmpty())
        return;
    if (const Ref<site::Channel> channel = boundChannel(bindString)) {
        const int uses = channel->UseCount() + 1;
        channel->setUseCount(std::int16_t(std::min<int>(uses, std::numeric_limits<std::int16_t>::max())));
        control.setChannel(channel);
    }
}

Ref<site::Channel> BenchControls::boundChannel(const QString& bindString)
{
    const qsizetype bar = bindString.indexOf(u'|');
    if (bar < 0)
        return {};
    try {
        Ref<site::SchemeWindow> home;
        if (m_boundWindow && m_boundWindow->key && *m_boundWindow->key == QStringView(bindString).first(bar)) {
            home = m_boundWindow->window;
        } else {
            const QString key = bindString.left(bar);
            if (const Ref<site::SchemeWindows> windows = window().schemeWindows())
                home = windows->Item(Variant(key));
            if (m_boundWindow)
                m_boundWindow = BoundWindow{key, home};
        }
        return home ? home->Item(Variant(bindString.mid(bar + 1))) : nullptr;
    } catch (...) {
        return {}; // without a logger, or when a scheme of the host fails in its own ways, there is no channel
    }
}

Ref<iBenchControl> BenchControls::Add(const QString& controlType, std::optional<QString> key)
{
    const Ref<BenchControls> alive(this);
    const Ref<iBenchControl> control = window().createControl(controlType);
    if (!control)
        return {};
    orGiveUp(*control, [&] {
        attach(*control);
        if (key)
            control->setKey(*key);
        enlist(control, key.value_or(QString()));
    });
    m_node.appendChild(control->XMLNode());
    document::countEdit();
    ScanControls();
    return control;
}

Ref<iBenchControl> BenchControls::AddFromXML(const QString& xml)
{
    const Ref<BenchControls> alive(this);
    // A clipboard may hold anything: what is no CONTROL of a sensible size is left alone.
    const Node node = pastedControl(xml);
    if (!node)
        return {};
    const Ref<iBenchControl> control = window().createControl(GetAttribute(node, element::Type));
    if (!control)
        return {};
    // The key goes to the list only: the pasted node keeps the KEY of the control that was copied.
    orGiveUp(*control, [&] {
        control->setXMLNode(node);
        attach(*control);
        enlist(control, placeKey(m_list.count() + 1));
    });
    m_node.appendChild(node);
    document::countEdit();
    ScanControls();
    return control;
}

// Removing -----------------------------------------------------------------------------------------------------

void BenchControls::Remove(const Variant& index)
{
    removeAt(index.isText() ? m_list.placeOf(index.text()) : values::toLong(index));
}

void BenchControls::removeAt(std::int32_t place)
{
    const Ref<BenchControls> alive(this);
    takeOut(place);
    renumber();
}

void BenchControls::takeOut(std::int32_t place)
{
    // Fails for a place that does not exist, and for a channel that cannot be given up, before anything changes.
    const Ref<iBenchControl> control = m_list.at(place);
    releaseChannel(*control);
    if (place > m_list.count() || m_list.at(place) != control)
        return; // the channel has taken it out itself
    m_list.remove(place);
    m_writtenOver.remove(control->Control().get());
    document::countEdit();
    m_node.removeChild(control->XMLNode());
    discard(*control);
}

/// The document is marked once and not by each of the writes, which would look for its mark each time. Those whose
/// number has changed are the last ones.
void BenchControls::renumber()
{
    const std::int32_t count = m_list.count();
    const bool isChange = count > 0 && m_list.at(count)->Index() != count;
    {
        const document::XMLOps::Marking off(document::XMLOps::Marking::Off);
        for (std::int32_t place = 1; place <= count; ++place)
            m_list.at(place)->setIndex(std::int16_t(place));
    }
    if (isChange)
        document::XMLOps::MarkChanged(m_list.at(count)->XMLNode());
}

void BenchControls::Clear()
{
    m_haveData = false;
    m_withoutRecord.clear();
    ++m_pastScans; // a scan under way has nothing left to look at
    // What removing item 1 until none is left comes to, without numbering all the others anew each time: each
    // control but the first moves up to place 1 before it goes.
    while (m_list.count() > 0) {
        const std::int32_t last = m_list.count();
        if (last > 1)
            Ref<iBenchControl>(m_list.at(last))->setIndex(1);
        takeOut(std::min(last, m_list.count()));
    }
}

// Putting back -------------------------------------------------------------------------------------------------

std::int32_t BenchControls::placeOfControl(const iBenchControl& control) const
{
    const std::int32_t told = control.Index();
    if (told >= 1 && told <= m_list.count() && m_list.at(told).get() == &control)
        return told;
    for (std::int32_t place = 1; place <= m_list.count(); ++place) {
        if (m_list.at(place).get() == &control)
            return place;
    }
    return 0;
}

PlacedControl BenchControls::placedAt(std::int32_t place) const
{
    PlacedControl placed;
    placed.control = m_list.at(place);
    placed.place = place;
    placed.listKey = m_list.keyAt(place);
    placed.next = placed.control->XMLNode().nextSibling();
    if (const auto* live = dynamic_cast<const surface::LiveControl*>(placed.control->Control().get())) {
        placed.rank = live->rank();
        placed.visible = live->visible();
    }
    return placed;
}

void BenchControls::putBack(const PlacedControl& placed)
{
    const Ref<iBenchControl> control = placed.control;
    if (placeOfControl(*control) != 0)
        return;
    if (!placed.listKey.isEmpty() && m_list.containsKey(placed.listKey))
        values::raise(ErrorNumber::DuplicateKey);
    const std::int32_t place = std::min(placed.place, m_list.count() + 1);
    checkedPlace(m_list.count() + 1);
    window().restoreControl(placed);
    m_list.insert(place, control, placed.listKey);
    const Node node = control->XMLNode();
    m_node.insertBefore(node, placed.next.parent() == m_node ? placed.next : Node());
    if (const Ref<site::Channel> channel = control->Channel())
        channel->setUseCount(std::int16_t(std::min(channel->UseCount() + 1, 32767)));
    document::countEdit();
    renumber();
    control->setControl(control->Control()); // the handles follow it again
    control->setShowGrabHandles(!m_lockPositions);
}

// Reading ------------------------------------------------------------------------------------------------------

std::int16_t BenchControls::Count() const
{
    return std::int16_t(m_list.count());
}

std::int32_t BenchControls::placeOf(const Variant& index) const
{
    if (!index.isText())
        return values::toLong(index);
    for (std::int32_t place = 1; place <= m_list.count(); ++place) {
        if (m_list.at(place)->Key().compare(index.text(), Qt::CaseInsensitive) == 0)
            return place;
    }
    return 0;
}

Ref<iBenchControl> BenchControls::Control(const Variant& index) const
{
    return m_list.at(placeOf(index));
}

// States of all controls ---------------------------------------------------------------------------------------

void BenchControls::setLockPositions(bool lock)
{
    m_lockPositions = lock;
    const document::XMLOps::Marking off(document::XMLOps::Marking::Off); // showing handles is no edit
    for (std::int32_t place = 1; place <= m_list.count(); ++place) {
        const Ref<iBenchControl> control = m_list.at(place);
        control->setShowGrabHandles(!lock);
        const Ref<binding::Object> live = control->Control();
        if (!live)
            continue;
        // Unlocking shows everything, whatever hid it.
        if (!lock)
            live->tryPut(VisibleName, Variant(true));
        const ControlType* type = m_window ? m_window->controlTypes().find(control->ControlType()) : nullptr;
        if (type && type->border)
            live->tryPut(BorderStyleName, Variant(lock ? type->border->locked : type->border->unlocked));
    }
}

void BenchControls::setHideProtectedControls(bool hide)
{
    m_hideProtectedControls = hide;
    for (std::int32_t place = 1; place <= m_list.count(); ++place) {
        const Ref<iBenchControl> control = m_list.at(place);
        if (document::XMLOps::GetNumber(control->XMLNode(), element::HideWhenProtected, 0, false) != 0)
            control->setVisible(!hide);
    }
}

void BenchControls::updateAllNodes()
{
    const Ref<BenchControls> alive(this);
    // A document says nothing of a moment that somebody looks at: while it is stored, the controls are as they were live.
    exchangeLooks();
    const auto back = qScopeGuard([this] { exchangeLooks(); });
    for (std::int32_t place = 1; place <= m_list.count(); ++place)
        Ref<iBenchControl>(m_list.at(place))->UpdateNode();
}

// Late binding -------------------------------------------------------------------------------------------------

namespace {

class ControlEnumerator : public binding::Enumerator
{
public:
    explicit ControlEnumerator(BenchControls& controls)
        : m_controls(&controls)
    {}
    std::optional<Variant> next() override
    {
        if (m_place >= m_controls->Count())
            return std::nullopt;
        return Variant(m_controls->Control(Variant(++m_place)));
    }

private:
    Ref<BenchControls> m_controls;
    std::int32_t m_place = 0;
};

} // namespace

std::unique_ptr<binding::Enumerator> BenchControls::enumerate()
{
    return std::make_unique<ControlEnumerator>(*this);
}

const binding::MemberTable& BenchControls::members() const
{
    using C = BenchControls;
    using binding::method;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("BenchControls", nullptr,
                                    {
                                        binding::property<&C::XMLNode, &C::setXMLNode>("XMLNode"),
                                        readOnly<&C::Count>("Count"),
                                        readOnly<&C::Control>("Control").asDefault(),
                                        method<&C::Add>("Add"),
                                        method<&C::Remove>("Remove"),
                                        method<&C::Clear>("Clear"),
                                    });
    });
}

} // namespace zan::wrappers
