#include "window/BenchWindow.h"

#include "display/frmProgress.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "livedata/Scan.h"
#include "values/Failure.h"
#include "values/Twips.h"
#include "window/ActionEngine.h"
#include "window/Background.h"
#include "window/BenchWindowObject.h"
#include "window/ControlFactory.h"
#include "window/ControlTypes.h"
#include "window/PanelEditor.h"
#include "window/SiteMapPlacement.h"
#include "wrappers/ValueText.h"

namespace zan::window {

namespace element = document::element;
using binding::Variant;
using surface::FontObject;
using values::ErrorNumber;
using values::Name;
using values::RuntimeError;
using wrappers::BenchControls;
using wrappers::iBenchControl;

namespace {

// The surface as it was designed, in twips: the size of a panel that shows nothing yet.
constexpr double DesignWidth = 8505;
constexpr double DesignHeight = 5895;

void requireStyle(std::int16_t style)
{
    if (style != 0 && style != 1)
        values::raise(ErrorNumber::InvalidPropertyValue);
}

} // namespace

BenchWindow::BenchWindow(QWidget* parent)
    : BenchWindow(window::controlTypes(), parent)
{}

BenchWindow::BenchWindow(wrappers::ControlTypes types, QWidget* parent)
    : Surface(parent)
    , m_controls(values::make<BenchControls>())
    , m_object(values::make<BenchWindowObject>(*this))
    , m_factory(std::make_unique<ControlFactory>(*this, types))
    , m_background(std::make_unique<Background>(*this))
    , m_liveData(std::make_unique<livedata::Scan>(types))
    , m_siteMap(
          std::make_unique<SiteMapPlacement>(*this, [this](const QString& scheme) { Q_EMIT LoadScheme(scheme); }))
    , m_editor(std::make_unique<PanelEditor>(*this))
    , m_actions(std::make_unique<ActionEngine>(*this))
    , m_ownForms(std::make_unique<surface::DesktopForms>())
    , m_forms(m_ownForms.get())
{
    document::XMLOps::OpenXML();
    m_container = document::XMLOps::CreateElement(element::Container);
    m_controls->setWindow(this);
    m_controls->setLiveData(m_liveData.get());
    m_controls->setParentHandle(hWnd());
    setEvents(this);
    m_editor->history().changed = [this] { Q_EMIT EditsChanged(); };
}

BenchWindow::~BenchWindow()
{
    setEvents(nullptr);
    if (m_controls) {
        m_controls->setWindow(nullptr);
        m_controls->setLiveData(nullptr);
    }
    document::XMLOps::CloseXML();
}

Ref<BenchWindowObject> BenchWindow::object() const
{
    return m_object;
}

BenchControls& BenchWindow::controlsOrRaise() const
{
    if (!m_controls)
        values::raise(ErrorNumber::ObjectNotSet);
    return *m_controls;
}

void BenchWindow::writeAttribute(Name name, const Variant& value)
{
    document::XMLOps::SetAttribute(container(), name, wrappers::storedText(value), false);
}

template <class Apply>
void BenchWindow::forFollowers(Apply apply)
{
    const Ref<BenchControls> list = m_controls;
    for (std::int32_t place = 1; list && place <= list->Count(); ++place) {
        // A control that refuses keeps its own look.
        values::attempt([&] {
            const Ref<iBenchControl> control = list->Control(Variant(place));
            if (control->UseWindowSettings())
                apply(*control);
        });
    }
}

// Look ---------------------------------------------------------------------------------------------------------

void BenchWindow::setBackColor(Colour colour)
{
    Surface::setBackColor(colour);
    writeAttribute(element::BackColor, Variant(colour.code));
    forFollowers([colour](iBenchControl& control) { control.setBackColour(colour); });
    Q_EMIT PropertyChanged(QStringLiteral("BackColor"));
}

void BenchWindow::setForeColor(Colour colour)
{
    Surface::setForeColor(colour);
    writeAttribute(element::ForeColor, Variant(colour.code));
    forFollowers([colour](iBenchControl& control) { control.setForeColour(colour); });
    Q_EMIT PropertyChanged(QStringLiteral("ForeColor"));
}

void BenchWindow::setEnabled(bool enabled)
{
    Surface::setEnabled(enabled);
    Q_EMIT PropertyChanged(QStringLiteral("Enabled"));
}

void BenchWindow::setFont(const Ref<FontObject>& font)
{
    const Ref<FontObject> shared = font;
    if (!shared)
        return; // the panel keeps the one it has
    setSurfaceFont(shared);
    forFollowers([&shared](iBenchControl& control) { control.setFont(shared); });
    Q_EMIT PropertyChanged(QStringLiteral("Font"));
}

void BenchWindow::setBackStyle(std::int16_t style)
{
    requireStyle(style);
    Surface::setBackStyle(style);
    writeAttribute(element::BackStyle, Variant(style));
    Q_EMIT PropertyChanged(QStringLiteral("BackStyle"));
}

void BenchWindow::setBorderStyle(std::int16_t style)
{
    requireStyle(style);
    Surface::setBorderStyle(style);
    writeAttribute(element::BorderStyle, Variant(style));
    Q_EMIT PropertyChanged(QStringLiteral("BorderStyle"));
}

// Grid, locks and site map -------------------------------------------------------------------------------------

void BenchWindow::setGridSize(float size)
{
    m_gridSize = size; // any value, zero and negative ones included
    writeAttribute(element::GridSize, Variant(size));
    Q_EMIT PropertyChanged(QStringLiteral("GridSize"));
}

void BenchWindow::setSnapToGrid(bool snap)
{
    m_snapToGrid = snap;
    writeAttribute(element::SnapToGrid, Variant(snap));
    Q_EMIT PropertyChanged(QStringLiteral("SnapToGrid"));
}

bool BenchWindow::LockPositions() const
{
    return controlsOrRaise().LockPositions();
}

void BenchWindow::setLockPositions(bool lock)
{
    controlsOrRaise().setLockPositions(lock);
    m_editor->ShowMarker(!lock);
    Q_EMIT PropertyChanged(QStringLiteral("LockPositions"));
}

void BenchWindow::setLockMenu(bool lock)
{
    m_lockMenu = lock;
    Q_EMIT PropertyChanged(QStringLiteral("LockMenu"));
}

void BenchWindow::setShowSiteMap(bool show)
{
    m_siteMap->setVisible(show);
    m_showSiteMap = show;
    Q_EMIT PropertyChanged(QStringLiteral("ShowSiteMap"));
}

Ref<display::SiteMapControl> BenchWindow::SiteMap() const
{
    return m_siteMap->control();
}

bool BenchWindow::HideProtectedControls() const
{
    return controlsOrRaise().HideProtectedControls();
}

void BenchWindow::setHideProtectedControls(bool hide)
{
    controlsOrRaise().setHideProtectedControls(hide);
}

// Background ---------------------------------------------------------------------------------------------------

bool BenchWindow::Stretch() const
{
    return m_background->stretch();
}

void BenchWindow::setStretch(bool stretch)
{
    m_background->setStretch(stretch);
    writeAttribute(element::Stretch, Variant(stretch));
    Q_EMIT PropertyChanged(QStringLiteral("Stretch"));
}

QString BenchWindow::PictureFile() const
{
    return m_background->pictureFile();
}

void BenchWindow::setPictureFile(const QString& file)
{
    m_background->setPictureFile(file);
    writeAttribute(element::PictureFile, Variant(file));
    Q_EMIT PropertyChanged(QStringLiteral("PictureFile"));
}

Ref<surface::Picture> BenchWindow::Picture() const
{
    return m_background->picture();
}

void BenchWindow::setPicture(const Ref<surface::Picture>& picture)
{
    m_background->setPicture(picture);
    Q_EMIT PropertyChanged(QStringLiteral("Picture"));
}

QSize BenchWindow::sizeHint() const
{
    QRect whole;
    for (const Ref<surface::LiveControl>& control : controls()) {
        if (control->visible())
            whole |= control->bounds();
    }
    QSize size(whole.right() + 1, whole.bottom() + 1);
    if (const Ref<surface::Picture>& background = picture(); background && !Stretch())
        size = size.expandedTo(background->image().deviceIndependentSize().toSize());
    if (size.isEmpty())
        size = {values::twipsToPixels(DesignWidth), values::twipsToPixels(DesignHeight)};
    return size.boundedTo({QWIDGETSIZE_MAX, QWIDGETSIZE_MAX});
}

// Logger and host ----------------------------------------------------------------------------------------------

void BenchWindow::setLogger(const Ref<site::Logger>& logger)
{
    const QPointer<BenchWindow> alive(this);
    const Ref<site::Logger> wanted = logger;
    if (m_link)
        QObject::disconnect(m_link.get(), nullptr, this, nullptr);
    m_link = nullptr;
    m_logger = wanted;
    const Ref<site::Link> link = values::given(wanted)->Link();
    if (!alive || m_logger != wanted || m_link)
        return; // asked for its link, the logger has had another one set
    m_link = link;
    // The panel hears of a new state before its controls do.
    if (m_link)
        QObject::connect(m_link.get(), &site::Link::StateChange, this,
                         [this](int state) { followLink(site::LinkState(state)); });
    controlsOrRaise().attachTo(wanted, link);
}

void BenchWindow::setForms(surface::HostForms* forms)
{
    m_forms = forms ? forms : m_ownForms.get();
}

const std::vector<NewControlMenuItem>& BenchWindow::newControlMenu() const
{
    return m_factory->newControlMenu();
}

void BenchWindow::ShowProgress()
{
    if (!progressWindow())
        m_progress = new display::frmProgress(this, *m_forms);
    m_progress->clear();
    m_progress->setLogger(m_logger);
    m_progress->show();
}

QPointer<display::frmProgress> BenchWindow::progressWindow() const
{
    return m_progress && m_progress->isLoaded() ? m_progress : nullptr;
}

void BenchWindow::Refresh()
{
    const Ref<BenchControls> list(&controlsOrRaise());
    list->ScanControls();
}

wrappers::ControlTypes BenchWindow::controlTypes() const
{
    return m_factory->types();
}

Ref<iBenchControl> BenchWindow::createControl(const QString& type)
{
    return m_factory->CreateControl(type, LockPositions());
}

Ref<site::SchemeWindows> BenchWindow::schemeWindows()
{
    return values::given(values::given(m_logger)->Scheme())->Windows();
}

void BenchWindow::discardControl(const Ref<binding::Object>& control)
{
    m_factory->discard(control);
}

void BenchWindow::restoreControl(const wrappers::PlacedControl& placed)
{
    m_factory->restore(placed);
}

void BenchWindow::reportError(const RuntimeError& error)
{
    Q_EMIT runtimeError(error.number(), error.description());
}

} // namespace zan::window
