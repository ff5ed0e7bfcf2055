#pragma once

#include "surface/forms/HostForms.h"

#include <QMessageBox>
#include <QPointer>

#include <vector>

namespace zan::host {

/// The boxes and forms of the host's panels.
///
/// A box that a panel shows because the connection broke stands in the middle of the announcement: until it is
/// closed, neither the lights of that panel nor any other panel would hear of it. Such a box is shown beside the
/// announcement instead, which goes on at once; as there is only one answer, nobody waits for it.
class PanelForms : public surface::DesktopForms
{
public:
    /// The connection is being announced as broken, or that announcement is over.
    void setAnnouncing(bool announcing) { m_isAnnouncing = announcing; }

    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override;
    std::optional<QString> inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                    const QString& text) override;
    bool busy(QWidget* owner, std::chrono::milliseconds elapsed) override;
    bool progress(QWidget* owner, const QString& text, double share) override;
    void popupMenu(QWidget* owner, const std::shared_ptr<surface::PopupMenu>& menu, QPoint place) override;
    void showModal(QDialog& form) override;
    void showForm(QWidget* owner, surface::ModalForm& form) override;
    std::optional<surface::FontChoice> pickFont(QWidget* owner, const QString& title,
                                                const surface::FontChoice& font) override;
    std::optional<values::Colour> pickColour(QWidget* owner, const QString& title, values::Colour colour) override;
    std::optional<QString> pickFile(QWidget* owner, const surface::FileRequest& request) override;
    /// Boxes shown beside an announcement that are still open.
    std::vector<QMessageBox*> openBoxes() const;

private:
    struct Shown
    {
        QPointer<QMessageBox> box;
        QPointer<QWidget> owner;
        QString text; ///< as it was given; the box shows what fits
    };

    void showBeside(QWidget* owner, const QString& text, int style, const QString& title);

    bool m_isAnnouncing = false;
    std::vector<Shown> m_shown;
};

} // namespace zan::host
