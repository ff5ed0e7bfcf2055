#include "window/BenchWindow.h"

#include "display/DesignProperties.h"
#include "display/SiteMapControl.h"
#include "display/frmProgress.h"
#include "ecan/NetworkSource.h"
#include "site/LocalTime.h"
#include "surface/host/Surface.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Twips.h"
#include "window/ActionEngine.h"
#include "window/BenchWindowObject.h"
#include "window/ControlFactory.h"
#include "window/ControlTypes.h"
#include "window/PanelDesign.h"
#include "window/PanelDocument.h"
#include "window/PanelEditor.h"
#include "window/PanelEvents.h"
#include "window/PanelSetup.h"
#include "window/PanelTime.h"
#include "window/PausingForms.h"
#include "window/SiteMapPlacement.h"

#include <QMdiSubWindow>
#include <QStackedLayout>

namespace zan::window {

namespace {

// The surface as it was designed, in twips: the size of a panel that shows nothing yet.
constexpr double DesignWidth = 8505;
constexpr double DesignHeight = 5895;

bool hasPage(const QLayout* layout, const QWidget& page)
{
    if (!layout)
        return false;
    if (qobject_cast<const QStackedLayout*>(layout))
        return layout->indexOf(&page) >= 0;
    for (int place = 0; place < layout->count(); ++place) {
        if (hasPage(layout->itemAt(place)->layout(), page))
            return true;
    }
    return false;
}

/// Whether the widget is a page of a container that hides and shows its pages: a stacked layout or widget, the pages of
/// a tab widget among them, or an MDI window.
bool isPage(const QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    return parent && (qobject_cast<const QMdiSubWindow*>(parent) || hasPage(parent->layout(), widget));
}

} // namespace

BenchWindow::BenchWindow(QWidget* parent)
    : BenchWindow(window::controlTypes(), parent)
{}

BenchWindow::BenchWindow(wrappers::ControlTypes types, QWidget* parent)
    : QWidget(parent)
    , m_surface(new surface::Surface(this))
    , m_object(values::make<BenchWindowObject>(*this))
    , m_ownForms(std::make_unique<surface::DesktopForms>())
    , m_forms(std::make_unique<PausingForms>(*m_ownForms))
    , m_time(std::make_unique<PanelTime>(*this, *m_surface))
    , m_document(std::make_unique<PanelDocument>(*this, *m_surface, types))
    , m_design(std::make_unique<PanelDesign>(*this, *m_surface))
    , m_editor(std::make_unique<PanelEditor>(*this, *m_surface, *m_document))
    , m_setup(std::make_unique<PanelSetup>(*this))
    , m_events(std::make_unique<PanelEvents>(*this, *m_surface))
    , m_actions(std::make_unique<ActionEngine>(*this))
{
    setFocusProxy(m_surface);
    m_forms->pause = [this] { return m_actions->pauseScripts(); };
    new display::DesignProperties(*this, m_object);
    m_editor->history().changed = [this] { Q_EMIT EditsChanged(); };
    QObject::connect(m_surface, &surface::Surface::runtimeError, this, &BenchWindow::runtimeError);
}

/// The last words of a script's objects are spoken while the parts go: they reach no panel and click nothing.
BenchWindow::~BenchWindow()
{
    m_forms->pause = nullptr;
    m_surface->setEvents(nullptr);
    m_object->forget();
    m_document->end();
}

Ref<BenchWindowObject> BenchWindow::object() const
{
    return m_object;
}

std::int32_t BenchWindow::hWnd() const
{
    return m_surface->hWnd();
}

// Design values ------------------------------------------------------------------------------------------------

Colour BenchWindow::BackColor() const
{
    return m_surface->backColor();
}

void BenchWindow::setBackColor(Colour colour)
{
    m_design->setBackColor(colour);
}

Colour BenchWindow::ForeColor() const
{
    return m_surface->foreColor();
}

void BenchWindow::setForeColor(Colour colour)
{
    m_design->setForeColor(colour);
}

Ref<surface::FontObject> BenchWindow::Font() const
{
    return m_surface->surfaceFont();
}

void BenchWindow::setFont(const Ref<surface::FontObject>& font)
{
    m_design->setFont(font);
}

std::int16_t BenchWindow::BackStyle() const
{
    return m_surface->backStyle();
}

void BenchWindow::setBackStyle(std::int16_t style)
{
    m_design->setBackStyle(style);
}

std::int16_t BenchWindow::BorderStyle() const
{
    return m_surface->borderStyle();
}

void BenchWindow::setBorderStyle(std::int16_t style)
{
    m_design->setBorderStyle(style);
}

float BenchWindow::GridSize() const
{
    return m_design->gridSize();
}

void BenchWindow::setGridSize(float size)
{
    m_design->setGridSize(size);
}

bool BenchWindow::SnapToGrid() const
{
    return m_design->snapToGrid();
}

void BenchWindow::setSnapToGrid(bool snap)
{
    m_design->setSnapToGrid(snap);
}

bool BenchWindow::LockPositions() const
{
    return m_document->controls()->LockPositions();
}

void BenchWindow::setLockPositions(bool lock)
{
    if (!lock)
        m_time->requireLive(QStringLiteral("The layout cannot be edited"));
    m_design->setLockPositions(lock);
}

bool BenchWindow::Stretch() const
{
    return m_design->stretch();
}

void BenchWindow::setStretch(bool stretch)
{
    m_design->setStretch(stretch);
}

bool BenchWindow::ShowSiteMap() const
{
    return m_design->showSiteMap();
}

void BenchWindow::setShowSiteMap(bool show)
{
    m_design->setShowSiteMap(show);
}

Ref<display::SiteMapControl> BenchWindow::SiteMap() const
{
    return m_document->siteMap().control();
}

bool BenchWindow::LockMenu() const
{
    return m_design->lockMenu();
}

void BenchWindow::setLockMenu(bool lock)
{
    m_design->setLockMenu(lock);
}

QString BenchWindow::PictureFile() const
{
    return m_design->pictureFile();
}

void BenchWindow::setPictureFile(const QString& file)
{
    m_design->setPictureFile(file);
}

Ref<surface::Picture> BenchWindow::Picture() const
{
    return m_design->picture();
}

void BenchWindow::setPicture(const Ref<surface::Picture>& picture)
{
    m_design->setPicture(picture);
}

void BenchWindow::setEnabled(bool enabled)
{
    m_design->setEnabled(enabled);
}

void BenchWindow::InitProperties()
{
    m_design->init();
}

void BenchWindow::ReadProperties(const PropertyBag& bag)
{
    m_design->read(bag);
}

void BenchWindow::WriteProperties(PropertyBag& bag) const
{
    m_design->write(bag);
}

// The window document ------------------------------------------------------------------------------------------

Ref<wrappers::BenchControls> BenchWindow::Controls() const
{
    return m_document->controlsOrNothing();
}

QString BenchWindow::ECANHost() const
{
    return m_document->restrictionSource().host();
}

void BenchWindow::setECANHost(const QString& host)
{
    m_document->restrictionSource().setHost(host);
}

bool BenchWindow::HideProtectedControls() const
{
    return m_document->controls()->HideProtectedControls();
}

void BenchWindow::setHideProtectedControls(bool hide)
{
    m_document->controls()->setHideProtectedControls(hide);
}

Ref<site::SchemeWindow> BenchWindow::CurrentWindow() const
{
    return m_document->currentWindow();
}

void BenchWindow::LoadWindow(const QString& key)
{
    m_document->load(key);
}

void BenchWindow::Clear()
{
    m_document->clear();
}

void BenchWindow::UpdateDocument()
{
    m_document->update();
}

void BenchWindow::SaveWindow()
{
    m_document->save();
}

bool BenchWindow::ImportKeel(const QString& KeelFile)
{
    m_time->requireLive(QStringLiteral("Nothing can be imported"));
    m_document->import(KeelFile);
    return false;
}

void BenchWindow::Refresh()
{
    m_time->refresh();
}

// The past -----------------------------------------------------------------------------------------------------

void BenchWindow::ShowAt(const binding::Variant& time)
{
    const std::optional<site::HistoryTime> moment = site::timeOf(binding::Variant(values::toDate(time)));
    if (!moment)
        values::raise(values::ErrorNumber::InvalidCall);
    m_time->showAt(*moment);
}

void BenchWindow::showMoment(site::HistoryTime moment)
{
    m_time->showAt(moment);
}

void BenchWindow::ShowLive()
{
    m_time->showLive();
}

bool BenchWindow::IsLive() const
{
    return m_time->isLive();
}

wrappers::ControlTypes BenchWindow::controlTypes() const
{
    return m_document->controlTypes();
}

const std::vector<NewControlMenuItem>& BenchWindow::newControlMenu() const
{
    return m_document->factory().newControlMenu();
}

// Edits --------------------------------------------------------------------------------------------------------

bool BenchWindow::AlignmentGuides() const
{
    return m_editor->guides().isOn();
}

void BenchWindow::setAlignmentGuides(bool on)
{
    m_editor->guides().setOn(on);
}

bool BenchWindow::KeyboardEditing() const
{
    return m_editor->keys().isOn();
}

void BenchWindow::setKeyboardEditing(bool on)
{
    m_editor->keys().setOn(on);
}

void BenchWindow::Undo()
{
    m_time->requireLive(QStringLiteral("Nothing can be undone"));
    m_editor->history().undo();
}

void BenchWindow::Redo()
{
    m_time->requireLive(QStringLiteral("Nothing can be made again"));
    m_editor->history().redo();
}

bool BenchWindow::CanUndo() const
{
    return m_editor->history().canUndo();
}

bool BenchWindow::CanRedo() const
{
    return m_editor->history().canRedo();
}

QString BenchWindow::UndoText() const
{
    return m_editor->history().undoText();
}

QString BenchWindow::RedoText() const
{
    return m_editor->history().redoText();
}

std::int32_t BenchWindow::EditCount() const
{
    return m_editor->history().count();
}

// Logger and host ----------------------------------------------------------------------------------------------

Ref<site::Logger> BenchWindow::Logger() const
{
    return m_events->logger();
}

void BenchWindow::setLogger(const Ref<site::Logger>& logger)
{
    const QPointer<BenchWindow> alive(this);
    const Ref<site::Logger> wanted = logger;
    m_time->showLive(); // the past was another logger's
    if (alive)
        m_events->setLogger(wanted);
}

void BenchWindow::setForms(surface::HostForms* forms)
{
    m_forms->setForms(forms ? *forms : *m_ownForms);
}

surface::HostForms& BenchWindow::forms() const
{
    return *m_forms;
}

void BenchWindow::reportError(const values::RuntimeError& error)
{
    Q_EMIT runtimeError(error.number(), error.description());
}

void BenchWindow::edit(const std::function<void(PanelEditor&)>& command)
{
    const auto report = [this, alive = QPointer<BenchWindow>(this)](const values::RuntimeError& error) {
        if (alive)
            reportError(error);
    };
    values::atBoundary(
        [&] {
            m_time->requireLive(QStringLiteral("The layout cannot be edited"));
            command(*m_editor);
        },
        report);
}

void BenchWindow::ShowProgress()
{
    if (!progressWindow())
        m_progress = new display::frmProgress(this, *m_forms);
    m_progress->clear();
    m_progress->setLogger(Logger());
    m_progress->show();
}

QPointer<display::frmProgress> BenchWindow::progressWindow() const
{
    return m_progress && m_progress->isLoaded() ? m_progress : nullptr;
}

// The widget ---------------------------------------------------------------------------------------------------

QSize BenchWindow::sizeHint() const
{
    QRect whole;
    for (const Ref<surface::LiveControl>& control : m_surface->controls()) {
        if (control->visible())
            whole |= control->bounds();
    }
    QSize size(whole.right() + 1, whole.bottom() + 1);
    if (const Ref<surface::Picture>& background = m_surface->picture(); background && !Stretch())
        size = size.expandedTo(background->image().deviceIndependentSize().toSize());
    if (size.isEmpty())
        size = {values::twipsToPixels(DesignWidth), values::twipsToPixels(DesignHeight)};
    return size.boundedTo({QWIDGETSIZE_MAX, QWIDGETSIZE_MAX});
}

void BenchWindow::flush()
{
    m_surface->flush();
}

void BenchWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_surface->resize(size());
}

void BenchWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // A panel that has ended has no controls any more: the host is told that this cannot work.
    values::atBoundary([this] { m_document->controls()->setParentHandle(m_surface->hWnd()); },
                       [this](const values::RuntimeError& error) { reportError(error); });
}

void BenchWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    // Minimised, hidden with a parent, or a page of a container that shows another one now: the panel lives on.
    if (!isHidden() || !m_endsWhenHidden || isPage(*this))
        return;
    m_editor->setCurrentControl(nullptr);
    m_document->end();
    m_time->end();
}

} // namespace zan::window
