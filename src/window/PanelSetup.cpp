#include "window/PanelSetup.h"

#include "dialogs/SetupForm.h"
#include "dialogs/SetupForms.h"
#include "document/XMLOps.h"
#include "values/Failure.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"
#include "window/PanelDocument.h"
#include "window/PanelEditor.h"
#include "window/PanelTime.h"

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace zan::window {

using dialogs::FormDescription;
using dialogs::SetupForm;
using wrappers::ControlType;
using wrappers::iBenchControl;

namespace {

/// A panel as its forms see it.
class PanelFormSite : public dialogs::FormSite
{
public:
    explicit PanelFormSite(BenchWindow& panel)
        : m_panel(&panel)
    {}

    surface::HostForms* forms() override { return m_panel ? &m_panel->forms() : nullptr; }
    Ref<site::Logger> logger() override { return m_panel ? m_panel->Logger() : nullptr; }

    void edit(const QString& what, const Ref<iBenchControl>& control, const std::function<void()>& step) override
    {
        if (!m_panel)
            return step();
        EditHistory& history = m_panel->editor().history();
        const int before = history.count();
        const auto mark = qScopeGuard([&] {
            // What only the live control shows, a font say, is stored with the next save: it must not be forgotten.
            if (m_panel && history.count() != before)
                document::XMLOps::MarkChanged(control ? control->XMLNode() : m_panel->document().container());
        });
        EditHistory::Command command(history, what);
        if (control)
            command.watchSettings(control);
        else
            command.watchPanel();
        const auto end = qScopeGuard([this, outer = std::exchange(m_command, &command)] { m_command = outer; });
        step();
    }

    void counts(const Ref<site::Channel>& channel) override
    {
        if (m_command)
            m_command->watchUse(channel);
    }

    void reportError(const values::RuntimeError& error) override
    {
        if (m_panel)
            Q_EMIT m_panel->runtimeError(error.number(), error.description());
    }

private:
    QPointer<BenchWindow> m_panel;
    EditHistory::Command* m_command = nullptr; ///< the Apply that is under way
};

} // namespace

PanelSetup::~PanelSetup()
{
    for (const std::weak_ptr<SetupForm>& open : m_open) {
        if (const std::shared_ptr<SetupForm> form = open.lock())
            form->close();
    }
}

/// Null while such a form is open.
std::shared_ptr<SetupForm> PanelSetup::begin(const FormDescription& description)
{
    std::erase_if(m_open, [](const std::weak_ptr<SetupForm>& open) {
        const std::shared_ptr<SetupForm> form = open.lock();
        return !form || !form->isOpen();
    });
    for (const std::weak_ptr<SetupForm>& open : m_open) {
        if (&open.lock()->description() == &description)
            return nullptr;
    }
    std::shared_ptr<SetupForm> form = SetupForm::make(description, std::make_shared<PanelFormSite>(m_panel));
    m_open.push_back(form);
    return form;
}

bool PanelSetup::isOpen() const
{
    return std::any_of(m_open.begin(), m_open.end(), [](const std::weak_ptr<SetupForm>& open) {
        const std::shared_ptr<SetupForm> form = open.lock();
        return form && form->isOpen();
    });
}

void PanelSetup::edit(const Ref<iBenchControl>& control)
{
    m_panel.time().requireLive(QStringLiteral("Nothing can be set up"));
    const Ref<iBenchControl> edited = values::given(control);
    const ControlType* type = m_panel.controlTypes().find(edited->ControlType());
    if (!type || !type->setup)
        return;
    Ref<site::SchemeWindows> windows;
    if (type->setup->usesWindows)
        windows = values::given(values::given(values::given(m_panel.Logger())->Scheme())->Windows());
    const std::shared_ptr<SetupForm> form = begin(*type->setup);
    if (!form)
        return;
    form->LoadControl(windows, edited, QString::number(m_panel.hWnd()));
    m_panel.forms().showForm(&m_panel, *form);
    form->close(); // its window may have gone with its owner
}

void PanelSetup::editWindow()
{
    m_panel.time().requireLive(QStringLiteral("Nothing can be set up"));
    const std::shared_ptr<SetupForm> form = begin(dialogs::frmBenchProp);
    if (!form)
        return;
    form->LoadUserControl(m_panel.object());
    m_panel.forms().showForm(&m_panel, *form);
    form->close();
}

} // namespace zan::window
