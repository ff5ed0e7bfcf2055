#pragma once

#include "zanbench/HostActions.h"
#include "zanbench/PanelPages.h"

#include <QObject>
#include <QPointer>

namespace zan::window {
class PanelEditor;
}

namespace zan::host {

/// The Edit menu: undo and redo of the panel in front, and its editor's commands on the control that the pointer was
/// over last.
class EditCommands : public QObject
{
    Q_OBJECT
public:
    /// Actions and pages must outlive the commands.
    EditCommands(HostActions& actions, PanelPages& pages, QObject* parent = nullptr);

    /// For good: a kiosk is not edited.
    void restrictToKiosk();
    /// Has the actions say what they would do now. Undo and redo follow by themselves; which control copying and
    /// deleting mean is known when the menu opens.
    void follow();

private:
    void run(void (window::BenchWindow::*step)());
    void command(void (window::PanelEditor::*action)());

    HostActions& m_actions;
    PanelPages& m_pages;
    bool m_isKiosk = false;
};

} // namespace zan::host
