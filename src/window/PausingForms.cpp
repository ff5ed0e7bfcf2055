#include "window/PausingForms.h"

namespace zan::window {

using surface::HostForms;

template <class Show>
auto PausingForms::waiting(const Show& show) const
{
    HostForms& forms = *m_forms;
    const std::shared_ptr<void> paused = pause ? pause() : nullptr;
    return show(forms);
}

int PausingForms::messageBox(QWidget* owner, const QString& text, int style, const QString& title)
{
    return waiting([&](HostForms& forms) { return forms.messageBox(owner, text, style, title); });
}

std::optional<QString> PausingForms::inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                              const QString& text)
{
    return waiting([&](HostForms& forms) { return forms.inputBox(owner, prompt, title, text); });
}

bool PausingForms::progress(QWidget* owner, const QString& text, double share)
{
    return waiting([&](HostForms& forms) { return forms.progress(owner, text, share); });
}

void PausingForms::popupMenu(QWidget* owner, const std::shared_ptr<surface::PopupMenu>& menu, QPoint place)
{
    waiting([&](HostForms& forms) { forms.popupMenu(owner, menu, place); });
}

void PausingForms::showModal(QDialog& form)
{
    waiting([&](HostForms& forms) { forms.showModal(form); });
}

void PausingForms::showForm(QWidget* owner, surface::ModalForm& form)
{
    waiting([&](HostForms& forms) { forms.showForm(owner, form); });
}

std::optional<surface::FontChoice> PausingForms::pickFont(QWidget* owner, const QString& title,
                                                          const surface::FontChoice& font)
{
    return waiting([&](HostForms& forms) { return forms.pickFont(owner, title, font); });
}

std::optional<values::Colour> PausingForms::pickColour(QWidget* owner, const QString& title, values::Colour colour)
{
    return waiting([&](HostForms& forms) { return forms.pickColour(owner, title, colour); });
}

std::optional<QString> PausingForms::pickFile(QWidget* owner, const surface::FileRequest& request)
{
    return waiting([&](HostForms& forms) { return forms.pickFile(owner, request); });
}

} // namespace zan::window
