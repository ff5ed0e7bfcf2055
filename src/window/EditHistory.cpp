#include "window/EditHistory.h"

#include "surface/host/LiveControl.h"
#include "surface/host/PointerLoop.h"
#include "values/Failure.h"

#include <QScopeGuard>

namespace zan::window {

EditHistory::Command::Command(EditHistory& history, QString text)
    : m_history(history)
    , m_life(history.m_life)
{
    if (history.m_recording)
        return;
    history.m_recording = true;
    m_window = history.m_window;
    m_step.emplace();
    m_step->text = std::move(text);
}

EditHistory::Command::~Command()
{
    if (!records())
        return;
    m_history.m_recording = false;
    const Ref<wrappers::BenchControls> list = m_history.m_panel.editedControls();
    if (!list || m_window != m_history.m_window)
        return; // what it has changed belongs to a window that is no longer shown
    try {
        if (m_step->finish(m_history.m_panel.editedWindow(), *list))
            m_history.push(std::move(*m_step));
    } catch (const std::exception&) {
        // A step that cannot be told (a control that refuses to be read) cannot be taken back either.
    }
}

void EditHistory::Command::watch(const Ref<wrappers::iBenchControl>& control)
{
    if (!records() || !control)
        return;
    ControlChange change;
    change.control = control;
    change.nodeBefore = document::NodeImage(control->XMLNode());
    change.before = measuresOf(*control);
    m_step->controls.push_back(std::move(change));
}

void EditHistory::Command::watchSettings(const Ref<wrappers::iBenchControl>& control)
{
    if (!records() || !control)
        return;
    watch(control);
    m_step->controls.back().hasSettings = true;
    m_step->controls.back().looksBefore = LiveImage(*control);
}

void EditHistory::Command::watchPanel()
{
    const Ref<wrappers::BenchControls> list = records() ? m_history.m_panel.editedControls() : nullptr;
    if (!list)
        return;
    m_step->panel.emplace();
    m_step->panel->before = PanelImage(m_history.m_panel.editedWindow());
    for (std::int32_t place = 1; place <= list->Count(); ++place) {
        const Ref<wrappers::iBenchControl> control = list->Control(binding::Variant(place));
        if (control->UseWindowSettings())
            watchSettings(control);
    }
}

void EditHistory::Command::watchStacking(std::vector<Ref<surface::LiveControl>> controls)
{
    if (!records())
        return;
    for (Ref<surface::LiveControl>& control : controls) {
        const std::int32_t rank = control->rank();
        m_step->stacking.push_back({std::move(control), rank, rank});
    }
}

void EditHistory::Command::watchUse(const Ref<site::Channel>& channel)
{
    if (!records() || !channel)
        return;
    for (const UseChange& known : m_step->uses) {
        if (known.channel == channel)
            return;
    }
    UseChange change;
    change.channel = channel;
    const bool isTold = values::attempt([&change] {
        change.before = change.channel->UseCount();
        change.unitsBefore = change.channel->Units();
    });
    if (isTold && records())
        m_step->uses.push_back(std::move(change));
}

void EditHistory::Command::added(const Ref<wrappers::iBenchControl>& control)
{
    const Ref<wrappers::BenchControls> list = records() ? m_history.m_panel.editedControls() : nullptr;
    const std::int32_t place = list && control ? list->placeOfControl(*control) : 0;
    if (place != 0)
        m_step->places.push_back({list->placedAt(place), true});
}

void EditHistory::Command::removes(const Ref<wrappers::iBenchControl>& control)
{
    const Ref<wrappers::BenchControls> list = records() ? m_history.m_panel.editedControls() : nullptr;
    const std::int32_t place = list && control ? list->placeOfControl(*control) : 0;
    if (place != 0)
        m_step->places.push_back({list->placedAt(place), false});
}

QString EditHistory::undoText() const
{
    return canUndo() ? m_steps[m_done - 1]->text : QString();
}

QString EditHistory::redoText() const
{
    return canRedo() ? m_steps[m_done]->text : QString();
}

void EditHistory::push(EditStep step)
{
    m_steps.erase(m_steps.begin() + std::ptrdiff_t(m_done), m_steps.end());
    if (m_steps.size() == MostSteps) {
        // The older half goes at once, so that forgetting costs nothing to speak of per step.
        m_steps.erase(m_steps.begin(), m_steps.begin() + std::ptrdiff_t(MostSteps / 2));
        m_forgotten += MostSteps / 2;
    }
    m_steps.push_back(std::make_shared<EditStep>(std::move(step)));
    m_done = m_steps.size();
    tell();
}

void EditHistory::undo()
{
    if (canUndo())
        replay(m_done - 1, &EditStep::undo, m_done - 1);
}

void EditHistory::redo()
{
    if (canRedo())
        replay(m_done, &EditStep::redo, m_done + 1);
}

/// What a step writes when it is made again or taken back is no new step. One that fails stays where it was: it can be
/// tried again.
void EditHistory::replay(std::size_t place, void (EditStep::*run)(BenchWindow&, wrappers::BenchControls&),
                         std::size_t doneThen)
{
    const Ref<wrappers::BenchControls> list = m_panel.editedControls();
    if (m_recording || surface::PointerLoop::isRunning() || !list)
        return;
    // Channels are called, which are a host's, and whoever hears of the panel's properties: they may load another window, or end the panel.
    const std::shared_ptr<EditStep> step = m_steps[place];
    const std::weak_ptr<char> life = m_life;
    const std::uint32_t window = m_window;
    m_recording = true;
    const auto end = qScopeGuard([&] {
        if (!life.expired())
            m_recording = false;
    });
    (*step.*run)(m_panel.editedWindow(), *list);
    if (life.expired() || m_window != window)
        return;
    m_done = doneThen;
    tell();
}

void EditHistory::clear()
{
    ++m_window;
    m_steps.clear();
    m_done = 0;
    m_forgotten = 0;
    tell();
}

void EditHistory::tell()
{
    if (changed)
        changed();
}

} // namespace zan::window
