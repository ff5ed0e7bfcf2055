#include "window/EditHistory.h"

#include "surface/host/LiveControl.h"
#include "surface/host/PointerLoop.h"

#include <QScopeGuard>

namespace zan::window {

EditHistory::Command::Command(EditHistory& history, QString text)
    : m_history(history)
    , m_life(history.m_life)
{
    if (history.m_recording)
        return;
    history.m_recording = true;
    m_step.emplace();
    m_step->text = std::move(text);
}

EditHistory::Command::~Command()
{
    if (!records())
        return;
    m_history.m_recording = false;
    try {
        if (m_step->finish())
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

void EditHistory::Command::watchStacking(std::vector<Ref<surface::LiveControl>> controls)
{
    if (!records())
        return;
    for (Ref<surface::LiveControl>& control : controls) {
        const std::int32_t rank = control->rank();
        m_step->stacking.push_back({std::move(control), rank, rank});
    }
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
    return canUndo() ? m_steps[m_done - 1].text : QString();
}

QString EditHistory::redoText() const
{
    return canRedo() ? m_steps[m_done].text : QString();
}

void EditHistory::push(EditStep step)
{
    m_steps.erase(m_steps.begin() + std::ptrdiff_t(m_done), m_steps.end());
    if (m_steps.size() == MostSteps) {
        // The older half goes at once, so that forgetting costs nothing to speak of per step.
        m_steps.erase(m_steps.begin(), m_steps.begin() + std::ptrdiff_t(MostSteps / 2));
        m_forgotten += MostSteps / 2;
    }
    m_steps.push_back(std::move(step));
    m_done = m_steps.size();
    tell();
}

void EditHistory::undo()
{
    const Ref<wrappers::BenchControls> list = m_panel.editedControls();
    if (!canUndo() || m_recording || surface::PointerLoop::isRunning() || !list)
        return;
    m_recording = true;
    const std::weak_ptr<char> life = m_life;
    const auto end = qScopeGuard([&] {
        if (!life.expired())
            m_recording = false;
    });
    m_steps[--m_done].undo(*list);
    tell();
}

void EditHistory::redo()
{
    const Ref<wrappers::BenchControls> list = m_panel.editedControls();
    if (!canRedo() || m_recording || surface::PointerLoop::isRunning() || !list)
        return;
    m_recording = true;
    const std::weak_ptr<char> life = m_life;
    const auto end = qScopeGuard([&] {
        if (!life.expired())
            m_recording = false;
    });
    m_steps[m_done++].redo(*list);
    tell();
}

void EditHistory::clear()
{
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
