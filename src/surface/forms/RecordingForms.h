#pragma once

#include "surface/forms/HostForms.h"

#include <deque>
#include <functional>
#include <vector>

namespace zan::surface {

/// Forms without a screen: remembers every box and answers from a queue. For runs without a display, and for tests
/// of panels.
///
/// An answer to a message box is a button's name ("OK", "Cancel", "Yes", "No", "Abort", "Retry", "Ignore", any case)
/// or its number; to an input box the text; to a modal form the text of its field txtValue, confirmed. "Cancel"
/// cancels each of them. A picker is answered by "font:NAME,SIZE" with ",bold", ",italic" and ",underline" behind it,
/// "colour:NUMBER" or "file:NAME". Without an answer a message box takes its first button, everything else is
/// cancelled.
///
/// A setup form is handed to onForm and closed afterwards; without one it is remembered and closed at once.
class RecordingForms : public HostForms
{
public:
    struct Box
    {
        QString text;
        int style = 0; ///< buttons and icon as given; 0 for input boxes and forms
        QString title;
    };
    /// Every box, input box (its prompt), form and picker (its title) so far, oldest first.
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
    void showForm(QWidget* owner, ModalForm& form) override;
    std::optional<FontChoice> pickFont(QWidget* owner, const QString& title, const FontChoice& font) override;
    std::optional<values::Colour> pickColour(QWidget* owner, const QString& title, values::Colour colour) override;
    std::optional<QString> pickFile(QWidget* owner, const FileRequest& request) override;

    /// Fills in a form that has just opened, in place of its user.
    std::function<void(ModalForm& form)> onForm;

private:
    std::optional<QString> takePick(const QString& title, QLatin1String kind);
    std::optional<QString> takeAnswer();
    std::vector<Box> m_boxes;
    std::deque<QString> m_answers;
    std::shared_ptr<PopupMenu> m_menu;
};

} // namespace zan::surface
