#pragma once

#include "surface/forms/HostForms.h"

#include <functional>
#include <memory>

namespace zan::window {

/// The host's forms as the parts of a panel use them: while one of them waits for a person, the time of the panel's
/// scripts stands still, whichever part has opened it. The panel, and this with it, may be gone when a call returns.
class PausingForms final : public surface::HostForms
{
public:
    explicit PausingForms(surface::HostForms& forms)
        : m_forms(&forms)
    {}
    void setForms(surface::HostForms& forms) { m_forms = &forms; }
    /// Stops the scripts' time for as long as what it gives lives. Empty while there are no scripts.
    std::function<std::shared_ptr<void>()> pause;

    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override;
    std::optional<QString> inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                    const QString& text) override;
    /// A script that is busy waits for nobody.
    bool busy(QWidget* owner, std::chrono::milliseconds elapsed) override { return m_forms->busy(owner, elapsed); }
    void busyEnded() override { m_forms->busyEnded(); }
    bool progress(QWidget* owner, const QString& text, double share) override;
    void progressEnded() override { m_forms->progressEnded(); }
    void popupMenu(QWidget* owner, const std::shared_ptr<surface::PopupMenu>& menu, QPoint place) override;
    void showModal(QDialog& form) override;
    void showForm(QWidget* owner, surface::ModalForm& form) override;
    std::optional<surface::FontChoice> pickFont(QWidget* owner, const QString& title,
                                                const surface::FontChoice& font) override;
    std::optional<values::Colour> pickColour(QWidget* owner, const QString& title, values::Colour colour) override;
    std::optional<QString> pickFile(QWidget* owner, const surface::FileRequest& request) override;

private:
    template <class Show>
    auto waiting(const Show& show) const;

    surface::HostForms* m_forms;
};

} // namespace zan::window
