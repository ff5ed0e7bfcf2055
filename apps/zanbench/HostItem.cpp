#include "zanbench/HostItem.h"

#include "zanbench/BoxList.h"
#include "zanbench/Commands.h"
#include "zanbench/ScriptRun.h"
#include "zanbench/SimulatedInput.h"

#include "binding/MemberTable.h"
#include "values/Format.h"
#include "values/Twips.h"
#include "wrappers/BenchControls.h"

#include <QPixmap>

#include <limits>

namespace zan::host {

using values::ErrorNumber;

namespace {

window::BenchWindow& panelOf(const ScriptRun& run)
{
    if (!run.panel())
        values::raise(ErrorNumber::ObjectNotSet,
                      QStringLiteral("This run has no panel: give --scheme and --window."));
    return *run.panel();
}

QPoint pixelsOf(float x, float y)
{
    return {values::twipsToPixels(x), values::twipsToPixels(y)};
}

} // namespace

ScriptRun& HostItem::run() const
{
    if (!m_run)
        values::raise(ErrorNumber::ObjectNotSet);
    return *m_run;
}

Variant HostItem::Echo(binding::Object&, binding::Arguments arguments)
{
    QStringList words;
    for (const Variant& argument : arguments)
        words << values::toText(argument);
    print(words.join(QLatin1Char(' ')) + QLatin1Char('\n'));
    return {};
}

void HostItem::Assert(bool condition, std::optional<QString> text)
{
    run().check(condition, text.value_or(QStringLiteral("an assertion without a text")));
}

void HostItem::Wait(std::int32_t milliseconds)
{
    run().wait(milliseconds);
}

// Controls -----------------------------------------------------------------------------------------------------

Ref<binding::Object> HostItem::wrapperOf(const Variant& control) const
{
    const Ref<wrappers::BenchControls> list = panelOf(run()).Controls();
    if (!control.isObject())
        return list->Control(control);
    if (auto* wrapper = dynamic_cast<wrappers::iBenchControl*>(control.object()))
        return Ref<binding::Object>(wrapper);
    const auto& live = binding::Marshal<Ref<surface::LiveControl>>::from(control);
    if (!live)
        values::raise(ErrorNumber::ObjectNotSet);
    return list->Control(Variant(values::toInteger(Variant(live->tag()))));
}

Ref<surface::LiveControl> HostItem::liveOf(const Variant& control) const
{
    const Ref<binding::Object> wrapper = wrapperOf(control);
    const Ref<surface::LiveControl> live(
        dynamic_cast<surface::LiveControl*>(static_cast<wrappers::iBenchControl&>(*wrapper).Control().get()));
    if (!live)
        values::raise(ErrorNumber::ObjectNotSet);
    return live;
}

void HostItem::Click(const Variant& control)
{
    SimulatedInput(panelOf(run())).click(liveOf(control)->bounds().center());
}

void HostItem::DoubleClick(const Variant& control)
{
    SimulatedInput(panelOf(run())).doubleClick(liveOf(control)->bounds().center());
}

void HostItem::Press(float x, float y, std::optional<std::int16_t> button)
{
    SimulatedInput(panelOf(run())).click(pixelsOf(x, y), button.value_or(1));
}

void HostItem::Drag(float x1, float y1, float x2, float y2)
{
    SimulatedInput(panelOf(run())).drag(pixelsOf(x1, y1), pixelsOf(x2, y2));
}

void HostItem::Keys(const QString& text)
{
    SimulatedInput(panelOf(run())).type(text);
}

QString HostItem::Node(const Variant& control)
{
    const Ref<binding::Object> wrapper = wrapperOf(control);
    auto& face = static_cast<wrappers::iBenchControl&>(*wrapper);
    face.UpdateNode();
    return face.XMLNode().xml();
}

// Boxes, texts and pictures ------------------------------------------------------------------------------------

Ref<binding::Object> HostItem::Boxes()
{
    return values::make<BoxList>(run().forms().boxes());
}

void HostItem::Answer(const QString& text)
{
    run().forms().answer(text);
}

QString HostItem::Format(const Variant& value, std::optional<QString> format, std::optional<std::int32_t> firstDay,
                         std::optional<std::int32_t> firstWeek)
{
    const std::int32_t day = firstDay.value_or(0);
    const std::int32_t week = firstWeek.value_or(0);
    if (day < 0 || day > 7 || week < 0 || week > 3)
        values::raise(ErrorNumber::InvalidCall);
    // 0 asks for the setting of the system: weeks from Sunday, the first one that of 1 January.
    return values::format(value, format.value_or(QString()), values::FirstDayOfWeek(day == 0 ? 1 : day),
                          values::FirstWeekOfYear(week == 0 ? 1 : week));
}

double HostItem::Val(const QString& text)
{
    return values::val(text);
}

void HostItem::Shot(const QString& file)
{
    const QString path = run().filePath(file);
    if (!panelOf(run()).grab().save(path, "PNG"))
        values::raise(ErrorNumber::PathFileAccess,
                      QStringLiteral("The picture %1 could not be written.").arg(path));
}

void HostItem::Quit(std::optional<std::int32_t> code)
{
    run().quit(code.value_or(Success));
    values::raise(
        ErrorNumber::InvalidCall); // nothing after it runs, unless the script resumes: then its time is up
}

const binding::MemberTable& HostItem::members() const
{
    using C = HostItem;
    using binding::method;
    static const binding::Member echo = [] {
        binding::Member member;
        member.name = values::Name("Echo");
        member.kind = binding::Member::Kind::Method;
        member.type = binding::ValueType::None;
        member.allowedArguments = std::numeric_limits<std::uint8_t>::max();
        member.get = &HostItem::Echo;
        return member;
    }();
    static const binding::MemberTable table("Host", nullptr,
                                            {
                                                echo,
                                                method<&C::Assert>("Assert"),
                                                method<&C::Wait>("Wait"),
                                                method<&C::Click>("Click"),
                                                method<&C::DoubleClick>("DoubleClick"),
                                                method<&C::Press>("Press"),
                                                method<&C::Drag>("Drag"),
                                                method<&C::Keys>("Keys"),
                                                binding::readOnly<&C::Boxes>("Boxes"),
                                                method<&C::Answer>("Answer"),
                                                method<&C::Format>("Format"),
                                                method<&C::Val>("Val"),
                                                method<&C::Shot>("Shot"),
                                                method<&C::Node>("Node"),
                                                method<&C::Quit>("Quit"),
                                            });
    return table;
}

} // namespace zan::host
