#pragma once

#include "values/Ref.h"
#include "window/EditSteps.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zan::window {

/// What a user has done to a panel, step by step, so that it can be taken back. One command is one step (a press that
/// moved something, a resize, an entry of a menu, one Apply of a form), and none when nothing has changed. What
/// scripts and scans write is no step.
///
/// A step costs what its command touched, whatever the size of the panel: it keeps the nodes and measures before and
/// after, and what was removed as a whole.
class EditHistory
{
public:
    /// A panel that is edited without end forgets its oldest steps.
    static constexpr std::size_t MostSteps = 10'000;

    explicit EditHistory(EditedPanel& panel)
        : m_panel(panel)
    {}

    /// A command under way: what it is about to change is named first, and what has changed when it ends is a step.
    /// A command inside another one belongs to it.
    class Command
    {
    public:
        Command(EditHistory& history, QString text);
        ~Command();
        Command(const Command&) = delete;
        Command& operator=(const Command&) = delete;

        /// The control's node, place and size, as they are now, are the state before.
        void watch(const Ref<wrappers::iBenchControl>& control);
        /// The same, and how it looks and what it is bound to.
        void watchSettings(const Ref<wrappers::iBenchControl>& control);
        /// The panel itself, and every control that follows its looks, are the state before.
        void watchPanel();
        /// The stacking of these controls is the state before.
        void watchStacking(std::vector<Ref<surface::LiveControl>> controls);
        /// The channel's count of its bindings is the state before. What a channel refuses to tell is not watched.
        void watchUse(const Ref<site::Channel>& channel);
        /// The control has been placed in the list by the command.
        void added(const Ref<wrappers::iBenchControl>& control);
        /// The control is about to be taken out of the list.
        void removes(const Ref<wrappers::iBenchControl>& control);

    private:
        bool records() const { return m_step.has_value() && !m_life.expired(); }

        EditHistory& m_history;
        std::weak_ptr<char> m_life; // the history may go while the command runs
        std::uint32_t m_window = 0; // in which it began
        std::optional<EditStep> m_step;
    };

    bool canUndo() const noexcept { return m_done > 0; }
    bool canRedo() const noexcept { return m_done < m_steps.size(); }
    /// What the next undo takes back, in the words of its menu entry; empty for nothing.
    QString undoText() const;
    QString redoText() const;
    /// How many steps separate the panel from the one that was loaded.
    int count() const noexcept { return int(m_forgotten + m_done); }
    /// Takes the last step back; nothing when there is none, or while a command is under way.
    void undo();
    void redo();
    /// Another window is shown: its steps begin anew.
    void clear();

    /// Called when one of the answers above may have changed.
    std::function<void()> changed;

private:
    void push(EditStep step);
    void replay(std::size_t place, void (EditStep::*run)(BenchWindow&, wrappers::BenchControls&),
                std::size_t doneThen);
    void tell();

    EditedPanel& m_panel;
    std::vector<std::shared_ptr<EditStep>> m_steps;
    std::size_t m_done = 0; ///< steps that are in force; those behind can be redone
    std::size_t m_forgotten = 0;
    std::uint32_t m_window = 0; ///< how often the steps have begun anew
    bool m_recording = false;
    std::shared_ptr<char> m_life = std::make_shared<char>();
};

} // namespace zan::window
