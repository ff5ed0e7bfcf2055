#include "zanbench/PanelForms.h"

#include <algorithm>

namespace zan::host {

int PanelForms::messageBox(QWidget* owner, const QString& text, int style, const QString& title)
{
    const bool hasOneAnswer = (style & 15) == OkOnly;
    if (!m_isAnnouncing || !hasOneAnswer)
        return DesktopForms::messageBox(owner, text, style, title);
    showBeside(owner, text, style, title);
    return Ok;
}

void PanelForms::showBeside(QWidget* owner, const QString& text, int style, const QString& title)
{
    std::erase_if(m_shown, [](const Shown& shown) { return !shown.box; });
    // Panels of one site say the same of it: once is enough. One panel that says it twice means it.
    const bool saidByAnother = std::any_of(m_shown.begin(), m_shown.end(), [&](const Shown& shown) {
        return shown.owner != owner && shown.box->text() == text;
    });
    if (saidByAnother)
        return;
    QMessageBox* box = makeBox(owner, text, style, title);
    box->setAttribute(Qt::WA_DeleteOnClose);
    m_shown.push_back({box, owner});
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
