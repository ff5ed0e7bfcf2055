#pragma once

#include "surface/forms/HostForms.h"

#include <deque>
#include <vector>

namespace zan::surface {

/// Forms without a screen: remembers every box and answers from a queue. For runs without a display, and for tests
/// of panels.
///
/// An answer to a message box is a button's name ("OK", "Cancel", "Yes", "No", "Abort", "Retry", "Ignore", any case)
/// or its number; to an input box the text; to a modal form the text of its field txtValue, confirmed. "Cancel"
/// cancels each of them. Without an answer a message box takes its first button, everything else is cancelled.
class RecordingForms : public HostForms
{
public:
    struct Box
    {
        QString text;
        int style = 0; ///< buttons and icon as given; 0 for input boxes and forms
        QString title;
    };
    /// Every box, input box (its prompt) and form (its title) so far, oldest first.
    const std::vector<Box>& boxes() const noexcept { return m_boxes; }
    void clearBoxes() { m_boxes.clear(); }
    /// Lays an answer ready for the next box that has none yet.
    void answer(const QString& text) { m_answers.push_back(text); }
    std::size_t pendingAnswers() const noexcept { return m_answers.size(); }

    /// The menu that was opened last and is still open; null for none.
    const std::shared_ptr<PopupMenu>& menu() const noexcept { return m_menu; }
    void closeMenu() { m_menu = nullptr; }

    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override;
    std::optional<QString> inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                    const QString& text) override;
    void popupMenu(QWidget*, const std::shared_ptr<PopupMenu>& menu, QPoint) override { m_menu = menu; }
    void showModal(QDialog& form) override;

private:
    std::optional<QString> takeAnswer();
    std::vector<Box> m_boxes;
    std::deque<QString> m_answers;
    std::shared_ptr<PopupMenu> m_menu;
};

} // namespace zan::surface
