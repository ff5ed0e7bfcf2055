#include "window/ActionEngine.h"

#include "display/frmProgress.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Compare.h"
#include "values/Convert.h"
#include "values/Failure.h"
#include "values/Format.h"
#include "window/BenchWindow.h"
#include "window/PanelTime.h"
#include "window/ScriptActions.h"
#include "window/frmSet.h"

#include <QScopeGuard>

namespace zan::window {

namespace element = document::element;
using document::Node;
using document::XMLOps::GetAttribute;
using document::XMLOps::Marking;
using site::LinkState;
using surface::HostForms;
using values::Name;
using wrappers::iBenchControl;

namespace {

const Name TextName("Text");
const QString Zero = QStringLiteral("0");

void writeChannel(const Ref<site::Logger>& logger, const Ref<site::Channel>& channel, const Variant& value)
{
    values::given(logger->Live())->WriteChannel(channel, value);
}

/// An attribute of an action. What a read stores where there was nothing is nobody's edit.
QString read(const Node& action, Name name, const QString& fallback = {})
{
    const Marking off(Marking::Off);
    return GetAttribute(action, name, fallback);
}

/// Whether the panel is there and has been live ever since this was made.
class StaysLive
{
public:
    explicit StaysLive(BenchWindow& window)
        : m_window(&window)
        , m_departures(window.time().departures())
    {}
    explicit operator bool() const
    {
        return m_window && m_window->IsLive() && m_window->time().departures() == m_departures;
    }

private:
    QPointer<BenchWindow> m_window;
    std::uint32_t m_departures;
};

/// Whether a channel holds the value that means unchecked. What cannot be compared with a number, and what is no number
/// at all, does not.
bool isUncheckedValue(const Variant& value, double unchecked)
{
    if (value.isEmpty() || value.isText())
        return false;
    bool isEqual = false;
    values::attempt([&] { isEqual = values::compareWithNumber(value, unchecked) == values::Ordering::Equal; });
    return isEqual;
}

} // namespace

ActionEngine::ActionEngine(BenchWindow& window)
    : m_window(window)
    , m_scripts(std::make_unique<ScriptActions>(window))
{}

ActionEngine::~ActionEngine() = default;

std::shared_ptr<void> ActionEngine::pauseScripts() const
{
    return m_scripts->pause();
}

void ActionEngine::endScripts()
{
    m_scripts->end();
}

void ActionEngine::setScriptClock(std::function<std::chrono::nanoseconds()> clock)
{
    m_scripts->setClock(std::move(clock));
}

Ref<site::Logger> ActionEngine::logger() const
{
    return values::given(m_window.Logger());
}

void ActionEngine::RunAction(const Ref<iBenchControl>& control)
{
    const Node action = control->XMLNode().child(element::Action);
    if (!action || !m_window.IsLive())
        return;
    const StaysLive window(m_window);
    const QString type = read(action, element::Type);
    const QString function = read(action, element::Function);
    // Only a connect works without a connection, whatever the type.
    const bool mayAct =
        function == QLatin1String("CONNECT") || values::given(logger()->Link())->State() == LinkState::Connected;
    if (!window)
        return; // the link has closed the panel, or sent it to the past
    if (!mayAct) {
        m_window.forms().messageBox(
            &m_window, QStringLiteral("You have to Connect to the site before you can perform this action"),
            HostForms::Information, QString());
        return;
    }
    if (type == QLatin1String("SET"))
        setChannel(control->Channel());
    else if (type == QLatin1String("PUT"))
        put(action);
    else if (type == QLatin1String("TOGGLE"))
        toggle(action, control->Channel());
    else if (type == QLatin1String("VESPER"))
        vesper(action, function);
    else if (type == QLatin1String("SCRIPT"))
        m_scripts->run(read(action, element::Script), control->Control());
}

// Values -------------------------------------------------------------------------------------------------------

/// Asks for a value in the form and writes it as text: the link library converts it. The form is the panel's one: while
/// it is open a further request ends quietly, as the one that is being answered must not be touched.
void ActionEngine::askAndWrite(const Ref<site::Channel>& channel, const QString& text, const QString* label)
{
    if (m_isAsking)
        return;
    if (!m_setForm)
        m_setForm = new frmSet(&m_window);
    const QPointer<BenchWindow> alive(&m_window);
    const StaysLive window(m_window);
    const QPointer<frmSet> form = m_setForm;
    const Ref<site::Logger> target = logger();
    form->setValueText(text);
    if (label)
        form->setChannelLabel(*label);
    m_isAsking = true;
    const auto done = qScopeGuard([&] {
        if (alive)
            m_isAsking = false;
    });
    m_window.forms().showModal(*form);
    if (window && form && !form->cancelled())
        writeChannel(target, channel, Variant(form->valueText()));
}

void ActionEngine::setChannel(const Ref<site::Channel>& channel)
{
    if (!channel)
        return;
    const StaysLive window(m_window);
    // A text channel shows its text as it is, any other its display.
    const bool isText = channel->DataType() == std::int32_t(site::DataType::String);
    const QString text =
        isText ? values::toText(channel->Value()) : values::format(channel->Value(), channel->Format());
    const QString label = channel->Label();
    if (window) // the host's channel may have closed the panel
        askAndWrite(channel, text, &label);
}

void ActionEngine::setFromTextBox(const Ref<iBenchControl>& control)
{
    const Ref<site::Channel> channel = control->Channel();
    if (!channel || !m_window.IsLive())
        return;
    // The form's label stays as the last action left it.
    askAndWrite(channel, values::toText(values::given(control->Control())->get(TextName)), nullptr);
}

void ActionEngine::put(const Node& action)
{
    const QString value = read(action, element::PutValue);
    const double address = values::val(read(action, element::PutAddress, Zero));
    const double dataType = values::val(read(action, element::PutDataType, Zero));
    if (address == 0)
        return;
    PutValue(Variant(value), values::toLong(Variant(address)), values::toLong(Variant(dataType)));
}

void ActionEngine::PutValue(const Variant& value, std::int32_t address, std::int32_t dataType)
{
    const Ref<site::Logger> target = logger();
    const Ref<site::Channel> channel = values::given(target->createChannel());
    channel->setBaseAddress(address);
    channel->setDataType(dataType);
    writeChannel(target, channel, value);
}

void ActionEngine::toggle(const Node& action, const Ref<site::Channel>& channel)
{
    if (!channel)
        return;
    const Ref<site::Logger> target = logger();
    const double checked = values::val(read(action, element::CheckedValue, QStringLiteral("1")));
    const double unchecked = values::val(read(action, element::UncheckedValue, Zero));
    // A value that is neither toggles to unchecked.
    writeChannel(target, channel, Variant(isUncheckedValue(channel->Value(), unchecked) ? checked : unchecked));
}

// The link -----------------------------------------------------------------------------------------------------

void ActionEngine::vesper(const Node& action, const QString& function)
{
    const StaysLive window(m_window);
    const bool showsProgress = values::val(read(action, element::ShowProgress, Zero)) != 0;
    if (showsProgress)
        m_window.ShowProgress();
    const QPointer<display::frmProgress> progress = m_window.progressWindow();
    QString title;
    QString status;
    if (function == QLatin1String("CONNECT")) {
        connectOrDisconnect(title);
        status = title;
    } else if (function == QLatin1String("PROGRAM")) {
        if (!confirmProgramming()) {
            if (showsProgress && progress)
                progress->unload();
            return;
        }
        title = QStringLiteral("Programming Logger");
        status = QStringLiteral("Waiting for prompt...");
    } else if (function == QLatin1String("UNLOAD")) {
        const Ref<site::Logger> target = logger();
        m_window.forms().messageBox(&m_window,
                                    QStringLiteral("NB: Unload functionality not yet complete - get onto it Robin"),
                                    HostForms::Information, QString());
        if (!window)
            return;
        target->AddAction(site::UnloadAction);
        title = QStringLiteral("Unloading Data");
        status = QStringLiteral("Waiting for prompt...");
    }
    // The window may have closed itself already.
    if (showsProgress && window && progress) {
        progress->setCaption(title);
        progress->setSiteText(status);
    }
}

void ActionEngine::connectOrDisconnect(QString& title)
{
    const Ref<site::Logger> target = logger();
    const Ref<site::Link> link = values::given(target->Link());
    const LinkState state = link->State();
    const QString siteName = values::given(target->Scheme())->Name();
    if (state == LinkState::NotConnected || state == LinkState::Broken) {
        title = QStringLiteral("Connecting to: ") + siteName;
        if (!(target->Actions() & site::LiveAction))
            target->AddAction(site::LiveAction);
        link->Connect();
    } else {
        // The same button cancels a connection under way.
        title = QStringLiteral("Disconnecting from: ") + siteName;
        target->RemoveActions(target->Actions());
        link->Disconnect();
    }
}

bool ActionEngine::confirmProgramming()
{
    const Ref<site::Logger> target = logger();
    const StaysLive window(m_window);
    const int answer = m_window.forms().messageBox(
        &m_window, QStringLiteral("Warning - this will reset the logger"), HostForms::OkCancel, QString());
    if (answer != HostForms::Ok || !window)
        return false;
    target->AddAction(site::ProgramAction);
    return true;
}

} // namespace zan::window
