#include "dialogs/FormSteps.h"
#include "dialogs/Names.h"
#include "dialogs/frmChannel.h"
#include "document/Elements.h"
#include "document/XMLOps.h"
#include "surface/text/FontFace.h"
#include "values/Convert.h"
#include "values/Format.h"
#include "values/Twips.h"

namespace zan::dialogs::channelform {

using values::Variant;
using wrappers::iBenchControl;

namespace {

constexpr QStringView ChannelFrame = u"fraChannels";
constexpr int StringType = int(site::DataType::String);
const QString SvcPrefix = QStringLiteral("ECANSVC|");
const QString ScrapePrefix = QStringLiteral("ECANSCRAPE|");

/// Entries of the binding list in front of the windows.
enum Binding { NoChannel, Ecan };

struct State : FormState
{
    Ref<site::SchemeWindow> window; ///< whose channels are listed
};

Ref<site::SchemeWindow>& windowOf(SetupForm& form)
{
    return form.state<State>().window;
}

bool isType(const QString& type, QLatin1String wanted)
{
    return type.compare(wanted, Qt::CaseInsensitive) == 0;
}

} // namespace

std::unique_ptr<FormState> makeState()
{
    return std::make_unique<State>();
}

void fillLists(SetupForm& form)
{
    fillDataTypes(form, form.field(u"cboDataType"));
}

// Filling ------------------------------------------------------------------------------------------------------

void takeForeColour(SetupForm& form)
{
    form.foreColour = form.control()->ForeColour();
}

void takeBackColour(SetupForm& form)
{
    form.backColour = form.control()->BackColour();
}

void rememberFontName(SetupForm& form)
{
    form.fontName = values::given(form.savedFont)->name();
}

void fillBindings(SetupForm& form)
{
    Field& list = form.field(u"cboBind");
    form.addRow(list, {.text = QStringLiteral("No Channel"), .key = {}, .parent = {}});
    form.addRow(list, {.text = QStringLiteral("ECAN Web Service"), .key = {}, .parent = {}});
    const Ref<site::SchemeWindows> windows = form.windows();
    for (std::int32_t place = 1; windows && place <= windows->Count(); ++place) {
        form.statement([&] {
            const QString key = values::given(windows->Item(Variant(place)))->Key();
            form.addRow(list, {.text = key, .key = {}, .parent = {}});
        });
    }
    form.listFilled(list);
}

namespace {

void selectEcan(SetupForm& form, const QStringList& parts, QStringView first, QStringView second,
                QStringView option)
{
    form.statement([&] { form.select(form.field(u"cboBind"), Ecan); });
    form.statement([&] { form.setText(form.field(first), parts[1]); });
    form.statement([&] { form.setText(form.field(second), parts[2]); });
    form.statement([&] { form.choose(form.field(option)); });
}

} // namespace

void selectBinding(SetupForm& form)
{
    Field& list = form.field(u"cboBind");
    const QString bound = form.control()->BindTo();
    const QStringList parts = bound.split(QLatin1Char('|'));
    if (form.control()->Channel()) {
        form.statement([&] { form.SelectListItem(list, parts.front(), NoChannel); });
        form.statement([&] { form.setText(form.field(u"txtSiteNo"), QStringLiteral("0")); });
        form.statement([&] { form.setText(form.field(u"txtBand"), QStringLiteral("0")); });
    } else if (bound.startsWith(SvcPrefix) && parts.size() > 2) {
        selectEcan(form, parts, u"txtSiteNo", u"txtBand", u"obSVC");
    } else if (bound.startsWith(ScrapePrefix) && parts.size() > 2) {
        selectEcan(form, parts, u"txtScrapeSiteNumber", u"txtScrapeURL", u"obScrape");
    } else {
        form.select(list, NoChannel);
    }
}

void takeCaption(SetupForm& form)
{
    const QString type = form.control()->ControlType();
    Field& caption = form.field(u"txtCaption");
    if (isType(type, QLatin1String("VB.Label")))
        form.setText(caption, values::toText(form.live()->get(name::Caption)));
    else if (isType(type, QLatin1String("VB.TextBox")))
        form.setText(caption, values::toText(form.live()->get(name::Text)));
}

// Channels -----------------------------------------------------------------------------------------------------

namespace {

void showFrame(SetupForm& form, QStringView shown)
{
    for (const QStringView frame : {QStringView(u"fraCaption"), ChannelFrame, QStringView(u"fraECANURL")})
        form.setVisible(form.field(frame), frame == shown);
}

void showNoChannels(SetupForm& form)
{
    Field& list = form.field(u"lboChannels");
    windowOf(form) = nullptr;
    form.setShownChannel(nullptr);
    form.clearList(list);
    form.addRow(list, {.text = QStringLiteral("<None>"), .key = {}, .parent = {}});
    form.listFilled(list);
    form.setEnabled(list, false);
}

/// Lists the channels of a window but those with a negative address, and selects a row for the bound one.
void fillChannels(SetupForm& form, const Ref<site::SchemeWindow>& window)
{
    Field& list = form.field(u"lboChannels");
    const QString bound = form.control()->BindTo();
    const QString wanted = bound.mid(bound.indexOf(QLatin1Char('|')) + 1);
    form.clearList(list);
    if (!window)
        return;
    int remembered = 0;
    for (std::int32_t index = 1; index <= window->Count(); ++index) {
        const Ref<site::Channel> channel = values::given(window->Item(Variant(index)));
        if (channel->BaseAddress() < 0)
            continue;
        const QString key = channel->Key();
        form.addRow(list,
                    {.text = channel->Label() + QLatin1String(" - ") + channel->Units(), .key = {}, .parent = key});
        if (key == wanted)
            remembered = index;
    }
    form.listFilled(list);
    values::attempt([&] { form.select(list, remembered - 1); });
}

/// Raises what the window raises for an index that it does not have.
Ref<site::Channel> channelAt(SetupForm& form, int distance)
{
    const int index = form.field(u"lboChannels").listIndex() + distance;
    return values::given(windowOf(form))->Item(Variant(std::int32_t(index)));
}

void enableBytes(SetupForm& form)
{
    form.setEnabled(form.field(u"txtBytes"), form.field(u"cboDataType").listIndex() == StringType);
}

void enableChannelFields(SetupForm& form, bool enabled)
{
    for (Field& field : form.fields()) {
        if (field.row().at == At::Channel)
            form.setEnabled(field, enabled);
    }
    if (enabled)
        enableBytes(form);
}

QString valueText(const Ref<site::Logger>& logger, site::Channel& channel)
{
    const Ref<site::Link> link = logger ? logger->Link() : nullptr;
    if (!link || link->State() != site::LinkState::Connected)
        return QStringLiteral("not connected"); // what was read before may be long past
    const Variant value = channel.Value();
    if (value.isEmpty())
        return QStringLiteral("no data yet");
    const QString units = channel.Units();
    const QString shown = values::format(value, channel.Format());
    return units.isEmpty() ? shown : shown + QLatin1Char(' ') + units;
}

void showValue(SetupForm& form)
{
    const Ref<site::Channel> channel = form.shownChannel();
    QString shown;
    if (channel && !values::attempt([&] { shown = valueText(form.site().logger(), *channel); }))
        shown = QStringLiteral("ERROR!"); // as a label shows it
    form.setCaption(form.field(u"lblNow"), channel ? QStringLiteral("Now: ") + shown : QString());
}

/// Fills the fields; each of them writes back what it has just got.
void showChannel(SetupForm& form, const Ref<site::Channel>& channel)
{
    if (!channel)
        return;
    form.setShownChannel(channel);
    for (Field& field : form.fields()) {
        if (field.row().at != At::Channel)
            continue;
        if (field.row().value != &name::Formula) {
            form.loadField(field);
            continue;
        }
        // COMPAT: the list offers the channel's own formula and no other.
        const QString formula = channel->Formula();
        form.clearList(field);
        form.addRow(field, {.text = formula.isEmpty() ? QStringLiteral("None") : formula, .key = {}, .parent = {}});
        form.listFilled(field);
        form.select(field, 0);
    }
    showValue(form);
}

} // namespace

void bindClicked(SetupForm& form, Field& field)
{
    Field& list = form.field(u"lboChannels");
    if (field.listIndex() <= Ecan) {
        showFrame(form, field.listIndex() == NoChannel ? u"fraCaption" : u"fraECANURL");
        showNoChannels(form);
        return;
    }
    showFrame(form, ChannelFrame);
    const QString key = field.text();
    form.setShownChannel(nullptr);
    windowOf(form) = values::given(form.windows())->Item(Variant(key));
    fillChannels(form, windowOf(form));
    form.setEnabled(list, true);
    const bool isRtd = values::given(windowOf(form))->Key() == QLatin1String("RTD");
    form.setEnabled(form.field(u"cmdAdd"), isRtd);
    form.setEnabled(form.field(u"cmdRemove"), isRtd && list.selectedRow());
    showValue(form);
}

void channelClicked(SetupForm& form, Field&)
{
    if (!windowOf(form))
        return;
    const QString key = windowOf(form)->Key();
    enableChannelFields(form, key != QLatin1String("SCHEME") && key != QLatin1String("LOGGER"));
    showChannel(form, channelAt(form, 2));
}

void writeChannel(SetupForm& form, Field& field)
{
    if (!windowOf(form))
        return;
    values::given(channelAt(form, 2))->put(*field.row().value, form.valueOf(field));
    showValue(form);
}

void dataTypeClicked(SetupForm& form, Field& field)
{
    enableBytes(form);
    writeChannel(form, field);
}

void addChannel(SetupForm& form, Field&)
{
    if (!windowOf(form))
        return;
    const Ref<site::Channel> added = values::given(values::given(form.windows())->createChannel());
    added->setLabel(QStringLiteral("New"));
    added->setVisible(true);
    windowOf(form)->Add(added);
    Field& list = form.field(u"lboChannels");
    form.addRow(list, {.text = QStringLiteral("New"), .key = {}, .parent = {}});
    form.listFilled(list);
}

void followValue(SetupForm& form)
{
    const Ref<site::Logger> logger = form.site().logger();
    if (!logger)
        return;
    const auto show = [&form] { values::attempt([&form] { showValue(form); }); };
    QObject::connect(logger.get(), &site::Logger::NewBenchData, &form.context(), show);
    if (const Ref<site::Link> link = logger->Link())
        QObject::connect(link.get(), &site::Link::StateChange, &form.context(), show);
}

// Format -------------------------------------------------------------------------------------------------------

void ecanClicked(SetupForm& form, Field& field)
{
    const bool isSvc = field.row().name == u"obSVC";
    for (const QStringView part : {u"lblSVCSiteNumber", u"lblSVCBand", u"txtSiteNo", u"txtBand"})
        form.setEnabled(form.field(part), isSvc);
    for (const QStringView part :
         {u"lblScrapeSiteNumber", u"lblScrapeURL", u"txtScrapeSiteNumber", u"txtScrapeURL"})
        form.setEnabled(form.field(part), !isSvc);
}

void dosCharsetClicked(SetupForm& form, Field& field)
{
    const Ref<surface::FontObject> font = values::given(form.editFont);
    if (field.isChecked()) {
        form.fontName = font->name();
        font->setCharset(255);
    } else {
        font->setCharset(0);
        if (font->name() != form.fontName)
            font->setName(form.fontName);
    }
    showExample(form);
}

void showExample(SetupForm& form)
{
    const Ref<surface::FontObject> font = values::given(form.editFont);
    for (const QStringView example : {u"txtExample", u"lblExample"}) {
        Field& field = form.field(example);
        form.setFont(field, font);
        form.setForeColour(field, form.foreColour);
        form.setBackColour(field, form.backColour);
    }
    const double height = double(values::pixelsToTwips(font->face().height()));
    form.setHeight(form.field(u"txtExample"), int(1.2 * height));
}

// Applying -----------------------------------------------------------------------------------------------------

void applyBackColour(SetupForm& form)
{
    if (form.control()->BackColour() == form.backColour)
        return;
    form.control()->setBackColour(form.backColour);
    form.control()->setUseWindowSettings(false);
}

void applyForeColour(SetupForm& form)
{
    if (form.control()->ForeColour() == form.foreColour)
        return;
    form.control()->setForeColour(form.foreColour);
    form.control()->setUseWindowSettings(false);
}

void releaseBinding(SetupForm& form)
{
    const Ref<site::Channel> channel = form.control()->Channel();
    if (!channel)
        return;
    countUse(form, *channel, -1);
    if (channel->UseCount() < 0)
        channel->setUnits(QStringLiteral("0")); // COMPAT: the units, where the count was meant
}

namespace {

void bindCaption(SetupForm& form)
{
    const Ref<iBenchControl> control = form.control();
    const QString caption = form.field(u"txtCaption").text();
    control->setChannel(nullptr);
    const bool isLabel =
        isType(document::XMLOps::GetAttribute(form.node(), document::element::Type), QLatin1String("VB.Label"));
    const values::Name& property = isLabel ? name::Caption : name::Text;
    form.live()->put(property, caption);
    document::XMLOps::SetAttribute(form.node(), property, caption);
}

void bindEcan(SetupForm& form)
{
    const Ref<iBenchControl> control = form.control();
    const auto part = [&form](QStringView field) { return form.field(field).text().trimmed(); };
    const QString caption = QStringLiteral("ECAN Web Service:");
    form.live()->put(name::Caption, caption);
    document::XMLOps::SetAttribute(form.node(), name::Text, caption); // COMPAT: a label's caption, as TEXT
    control->setBindTo(form.field(u"obSVC").isChecked()
                           ? SvcPrefix + part(u"txtSiteNo") + QLatin1Char('|') + part(u"txtBand")
                           : ScrapePrefix + part(u"txtScrapeSiteNumber") + QLatin1Char('|') +
                                 part(u"txtScrapeURL"));
    control->setUpdated(false);
}

void bindChannel(SetupForm& form)
{
    const Ref<iBenchControl> control = form.control();
    const Ref<site::SchemeWindow> window = values::given(windowOf(form));
    const Ref<site::Channel> channel = values::given(channelAt(form, 1));
    control->setChannel(channel);
    control->setBindTo(window->Key() + QLatin1Char('|') + channel->Key());
    countUse(form, *channel, 1);
}

} // namespace

void bind(SetupForm& form)
{
    switch (form.field(u"cboBind").listIndex()) {
    case NoChannel:
        return bindCaption(form);
    case Ecan:
        return bindEcan(form);
    default:
        return bindChannel(form);
    }
}

} // namespace zan::dialogs::channelform
