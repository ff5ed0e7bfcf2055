#include "window/ActionEngine.h"

#include "display/frmProgress.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "values/Compare.h"
#include "values/Convert.h"
#include "values/Format.h"
#include "window/BenchWindow.h"
#include "window/ScriptActions.h"
#include "window/frmSet.h"

namespace zan::window {

namespace element = document::element;
using document::Node;
using document::XMLOps::GetAttribute;
using site::LinkState;
using surface::HostForms;
using values::ErrorNumber;
using values::Name;
using wrappers::iBenchControl;

namespace {

const Name TextName("Text");
const QString Zero = QStringLiteral("0");

void writeChannel(const Ref<site::Logger>& logger, const Ref<site::Channel>& channel, const Variant& value)
{
    const Ref<site::Live> live = logger->Live();
    if (!live)
        values::raise(ErrorNumber::ObjectNotSet);
    live->WriteChannel(channel, value);
}

} // namespace

ActionEngine::ActionEngine(BenchWindow& window)
    : m_window(window)
    , m_scripts(std::make_unique<ScriptActions>(window))
{}

ActionEngine::~ActionEngine() = default;

Ref<site::Logger> ActionEngine::logger() const
{
    const Ref<site::Logger> current = m_window.Logger();
    if (!current)
        values::raise(ErrorNumber::ObjectNotSet);
    return current;
}

void ActionEngine::RunAction(const Ref<iBenchControl>& control)
{
    // 1.
    const Node action = control->XMLNode().child(element::Action);
    if (!action)
        return;
    // 2.
    const QString type = GetAttribute(action, element::Type);
    const QString function = GetAttribute(action, element::Function);
    // 3. Only a connect works without a connection, whatever the type.
    if (function != QLatin1String("CONNECT") && logger()->Link()->State() != LinkState::Connected) {
        const auto pause = m_scripts->pause();
        m_window.forms().messageBox(
            &m_window, QStringLiteral("You have to Connect to the site before you can perform this action"),
            HostForms::Information, QString());
        return;
    }
    // 4.
    if (type == QLatin1String("SET"))
        setChannel(control->Channel());
    else if (type == QLatin1String("PUT"))
        put(action);
    else if (type == QLatin1String("TOGGLE"))
        toggle(action, control->Channel());
    else if (type == QLatin1String("VESPER"))
        vesper(action, function);
    else if (type == QLatin1String("SCRIPT"))
        m_scripts->run(GetAttribute(action, element::Script), control->Control());
}

// Values -------------------------------------------------------------------------------------------------------

bool ActionEngine::askForValue(QString& value)
{
    const QPointer<BenchWindow> window(&m_window);
    const QPointer<frmSet> form = m_setForm;
    const auto pause = m_scripts->pause();
    m_window.forms().showModal(*form);
    if (!window || !form || form->cancelled())
        return false;
    value = form->valueText();
    return true;
}

void ActionEngine::setChannel(const Ref<site::Channel>& channel)
{
    // 1.
    if (!channel)
        return;
    // 2. A text channel shows its text as it is, any other its display.
    if (!m_setForm)
        m_setForm = new frmSet(&m_window);
    const bool isText = channel->DataType() == std::int32_t(site::DataType::String);
    m_setForm->setValueText(isText ? values::toText(channel->Value())
                                   : values::format(channel->Value(), channel->Format()));
    m_setForm->setChannelLabel(channel->Label());
    // 3. and 4. The value goes as text: the link library converts it.
    const Ref<site::Logger> target = logger();
    QString value;
    if (askForValue(value))
        writeChannel(target, channel, Variant(value));
}

void ActionEngine::setFromTextBox(const Ref<iBenchControl>& control)
{
    const Ref<site::Channel> channel = control->Channel();
    if (!channel)
        return;
    if (!m_setForm)
        m_setForm = new frmSet(&m_window);
    // The form's label stays as the last action left it.
    m_setForm->setValueText(values::toText(control->Control()->get(TextName)));
    const Ref<site::Logger> target = logger();
    QString value;
    if (askForValue(value))
        writeChannel(target, channel, Variant(value));
}

void ActionEngine::put(const Node& action)
{
    const QString value = GetAttribute(action, element::PutValue);
    const double address = values::val(GetAttribute(action, element::PutAddress, Zero));
    const double dataType = values::val(GetAttribute(action, element::PutDataType, Zero));
    if (address == 0)
        return;
    PutValue(Variant(value), values::toLong(Variant(address)), values::toLong(Variant(dataType)));
}

void ActionEngine::PutValue(const Variant& value, std::int32_t address, std::int32_t dataType)
{
    const Ref<site::Logger> target = logger();
    const Ref<site::Channel> channel = target->createChannel();
    channel->setBaseAddress(address);
    channel->setDataType(dataType);
    writeChannel(target, channel, value);
}

void ActionEngine::toggle(const Node& action, const Ref<site::Channel>& channel)
{
    // 1.
    if (!channel)
        return;
    // 2.
    const double checked = values::val(GetAttribute(action, element::CheckedValue, QStringLiteral("1")));
    const double unchecked = values::val(GetAttribute(action, element::UncheckedValue, Zero));
    // 3. A value that is neither toggles to unchecked.
    const bool isUnchecked = values::compareWithNumber(channel->Value(), unchecked) == values::Ordering::Equal;
    writeChannel(logger(), channel, Variant(isUnchecked ? checked : unchecked));
}

// The link -----------------------------------------------------------------------------------------------------

void ActionEngine::vesper(const Node& action, const QString& function)
{
    // 1.
    const QPointer<BenchWindow> window(&m_window);
    const bool showsProgress = values::val(GetAttribute(action, element::ShowProgress, Zero)) != 0;
    if (showsProgress)
        m_window.ShowProgress();
    const QPointer<display::frmProgress> progress = m_window.progressWindow();
    // 2.
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
        const auto pause = m_scripts->pause();
        m_window.forms().messageBox(&m_window,
                                    QStringLiteral("NB: Unload functionality not yet complete - get onto it Robin"),
                                    HostForms::Information, QString());
        target->AddAction(site::UnloadAction);
        title = QStringLiteral("Unloading Data");
        status = QStringLiteral("Waiting for prompt...");
    }
    // 3. The window may have closed itself already.
    if (showsProgress && window && progress) {
        progress->setCaption(title);
        progress->setSiteText(status);
    }
}

void ActionEngine::connectOrDisconnect(QString& title)
{
    const Ref<site::Logger> target = logger();
    const Ref<site::Link> link = target->Link();
    const LinkState state = link->State();
    const QString siteName = target->Scheme()->Name();
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
    const auto pause = m_scripts->pause();
    const int answer = m_window.forms().messageBox(
        &m_window, QStringLiteral("Warning - this will reset the logger"), HostForms::OkCancel, QString());
    if (answer != HostForms::Ok)
        return false;
    target->AddAction(site::ProgramAction);
    return true;
}

} // namespace zan::window
