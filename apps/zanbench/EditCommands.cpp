#include "zanbench/EditCommands.h"

#include "window/BenchWindow.h"
#include "window/PanelEditor.h"

namespace zan::host {

namespace {

/// A text from a document as part of an entry: an ampersand in it is no access key.
QString literally(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString entryText(const QString& command, const QString& object)
{
    return object.isEmpty() ? command : QStringLiteral("%1 %2").arg(command, literally(object));
}

/// "StatusLight @3", as the entry of a menu names the panel's current control; empty for none. A control that was
/// deleted stays the current one, though its place is another's by now: it counts as none.
QString currentName(const window::BenchWindow& panel)
{
    const values::Ref<wrappers::iBenchControl>& control = panel.editor().currentControl();
    if (!control || panel.Controls()->placeOfControl(*control) == 0)
        return {};
    const QString type = control->ControlType();
    return QStringLiteral("%1 %2").arg(type.mid(type.lastIndexOf(QLatin1Char('.')) + 1), control->Key());
}

} // namespace

EditCommands::EditCommands(HostActions& actions, PanelPages& pages, QObject* parent)
    : QObject(parent)
    , m_actions(actions)
    , m_pages(pages)
{
    connect(actions.undo, &QAction::triggered, this, [this] { run(&window::BenchWindow::Undo); });
    connect(actions.redo, &QAction::triggered, this, [this] { run(&window::BenchWindow::Redo); });
    connect(actions.copy, &QAction::triggered, this, [this] { command(&window::PanelEditor::copy); });
    connect(actions.paste, &QAction::triggered, this, [this] { command(&window::PanelEditor::paste); });
    connect(actions.remove, &QAction::triggered, this, [this] { command(&window::PanelEditor::remove); });
    connect(&actions.editMenu(), &QMenu::aboutToShow, this, &EditCommands::follow);
    connect(&pages, &PanelPages::shownChanged, this, &EditCommands::follow);
    connect(&pages, &PanelPages::edited, this, &EditCommands::follow);
}

void EditCommands::restrictToKiosk()
{
    m_isKiosk = true;
    follow();
}

void EditCommands::follow()
{
    window::BenchWindow* panel = m_isKiosk ? nullptr : m_pages.currentPanel();
    const bool canEdit = panel && panel->Controls();
    const QString current = canEdit ? currentName(*panel) : QString();
    m_actions.undo->setEnabled(canEdit && panel->CanUndo());
    m_actions.undo->setText(entryText(QStringLiteral("&Undo"), canEdit ? panel->UndoText() : QString()));
    m_actions.redo->setEnabled(canEdit && panel->CanRedo());
    m_actions.redo->setText(entryText(QStringLiteral("&Redo"), canEdit ? panel->RedoText() : QString()));
    m_actions.copy->setEnabled(!current.isEmpty());
    m_actions.copy->setText(entryText(QStringLiteral("&Copy"), current));
    m_actions.paste->setEnabled(canEdit);
    m_actions.remove->setEnabled(!current.isEmpty());
    m_actions.remove->setText(entryText(QStringLiteral("&Delete"), current));
}

void EditCommands::run(void (window::BenchWindow::*step)())
{
    // Undo has no event of the panel around it: what it raises goes where the panel's other errors go.
    if (const QPointer<window::BenchWindow> panel = m_pages.currentPanel())
        panel->edit([panel, step](window::PanelEditor&) { (panel->*step)(); });
}

void EditCommands::command(void (window::PanelEditor::*action)())
{
    if (window::BenchWindow* panel = m_pages.currentPanel())
        panel->edit([action](window::PanelEditor& editor) { (editor.*action)(); });
}

} // namespace zan::host
