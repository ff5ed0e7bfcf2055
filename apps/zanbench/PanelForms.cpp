#include "zanbench/PanelForms.h"

#include <QDialog>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>

#include <algorithm>

namespace zan::host {

namespace {

/// Who a box stands in front of. A panel that is drawn at a zoom lies in a scene, and a box of its own would be drawn
/// there: such a box belongs to the window around the scene.
QWidget* windowOf(QWidget* owner)
{
    const QGraphicsProxyWidget* proxy = owner ? owner->window()->graphicsProxyWidget() : nullptr;
    const QList<QGraphicsView*> views = proxy && proxy->scene() ? proxy->scene()->views() : QList<QGraphicsView*>();
    return views.isEmpty() ? owner : views.constFirst()->window();
}

} // namespace

int PanelForms::messageBox(QWidget* owner, const QString& text, int style, const QString& title)
{
    const bool hasOneAnswer = (style & 15) == OkOnly;
    if (!m_isAnnouncing || !hasOneAnswer)
        return DesktopForms::messageBox(windowOf(owner), text, style, title);
    showBeside(owner, text, style, title);
    return Ok;
}

std::optional<QString> PanelForms::inputBox(QWidget* owner, const QString& prompt, const QString& title,
                                            const QString& text)
{
    return DesktopForms::inputBox(windowOf(owner), prompt, title, text);
}

bool PanelForms::progress(QWidget* owner, const QString& text, double share)
{
    return DesktopForms::progress(windowOf(owner), text, share);
}

bool PanelForms::busy(QWidget* owner, std::chrono::milliseconds elapsed)
{
    return DesktopForms::busy(windowOf(owner), elapsed);
}

void PanelForms::popupMenu(QWidget* owner, const std::shared_ptr<surface::PopupMenu>& menu, QPoint place)
{
    DesktopForms::popupMenu(windowOf(owner), menu, place);
}

void PanelForms::showModal(QDialog& form)
{
    form.setWindowFlag(Qt::BypassGraphicsProxyWidget); // a window of its own, whatever its panel is drawn in
    DesktopForms::showModal(form);
}

void PanelForms::showForm(QWidget* owner, surface::ModalForm& form)
{
    DesktopForms::showForm(windowOf(owner), form);
}

std::optional<surface::FontChoice> PanelForms::pickFont(QWidget* owner, const QString& title,
                                                        const surface::FontChoice& font)
{
    return DesktopForms::pickFont(windowOf(owner), title, font);
}

std::optional<values::Colour> PanelForms::pickColour(QWidget* owner, const QString& title, values::Colour colour)
{
    return DesktopForms::pickColour(windowOf(owner), title, colour);
}

std::optional<QString> PanelForms::pickFile(QWidget* owner, const surface::FileRequest& request)
{
    return DesktopForms::pickFile(windowOf(owner), request);
}

void PanelForms::showBeside(QWidget* owner, const QString& text, int style, const QString& title)
{
    std::erase_if(m_shown, [](const Shown& shown) { return !shown.box; });
    // Panels of one site say the same of it: once is enough. One panel that says it twice means it.
    const bool saidByAnother = std::any_of(m_shown.begin(), m_shown.end(), [&](const Shown& shown) {
        return shown.owner != owner && shown.text == text;
    });
    if (saidByAnother)
        return;
    QMessageBox* box = makeBox(windowOf(owner), text, style, title);
    box->setAttribute(Qt::WA_DeleteOnClose);
    m_shown.push_back({box, owner, text});
    box->open();
}

std::vector<QMessageBox*> PanelForms::openBoxes() const
{
    std::vector<QMessageBox*> boxes;
    for (const Shown& shown : m_shown)
        if (shown.box && shown.box->isVisible())
            boxes.push_back(shown.box);
    return boxes;
}

} // namespace zan::host
