#include "site/Scheme.h"

#include "binding/MemberTable.h"
#include "site/IndexEnumerator.h"
#include "site/NodeObject.h"

namespace zan::site {

using binding::Arguments;
using binding::Member;
using binding::MemberTable;
using binding::method;
using binding::Name;
using binding::Object;
using binding::property;
using binding::readOnly;

namespace {

/// SchemeWindow.Add(Channel, [Key])
Variant addChannel(Object& object, Arguments arguments)
{
    auto& window = static_cast<SchemeWindow&>(object);
    const auto channel = binding::Marshal<Ref<Channel>>::from(arguments[0]);
    const auto key = binding::Marshal<std::optional<QString>>::from(binding::detail::argumentAt(arguments, 1));
    return Variant(window.Add(channel, key.value_or(QString())));
}

Member addChannelMember()
{
    Member member;
    member.name = Name("Add");
    member.kind = Member::Kind::Method;
    member.type = binding::ValueType::Object;
    member.requiredArguments = 1;
    member.allowedArguments = 2;
    member.get = addChannel;
    return member;
}

} // namespace

const MemberTable& SchemeWindow::members() const
{
    return binding::table([] {
        return MemberTable("SchemeWindow", nullptr,
                           {
                               property<&SchemeWindow::Key, &SchemeWindow::setKey>("Key"),
                               readOnly<&SchemeWindow::XML>("XML"),
                               readOnly<&SchemeWindow::Count>("Count"),
                               readOnly<&SchemeWindow::Item>("Item").asDefault(),
                               addChannelMember(),
                           });
    });
}

std::unique_ptr<binding::Enumerator> SchemeWindow::enumerate()
{
    return std::make_unique<IndexEnumerator<SchemeWindow>>(*this);
}

const MemberTable& SchemeWindows::members() const
{
    return binding::table([] {
        return MemberTable("SchemeWindows", nullptr,
                           {
                               readOnly<&SchemeWindows::Count>("Count"),
                               readOnly<&SchemeWindows::Item>("Item").asDefault(),
                               method<&SchemeWindows::Add>("Add"),
                               method<&SchemeWindows::Remove>("Remove"),
                               method<&SchemeWindows::createWindow>("CreateWindow"),
                               method<&SchemeWindows::createChannel>("CreateChannel"),
                           });
    });
}

std::unique_ptr<binding::Enumerator> SchemeWindows::enumerate()
{
    return std::make_unique<IndexEnumerator<SchemeWindows>>(*this);
}

const MemberTable& Scheme::members() const
{
    return binding::table([] {
        return MemberTable("Scheme", nullptr,
                           {
                               property<&Scheme::Name, &Scheme::setName>("Name").asDefault(),
                               readOnly<&Scheme::Windows>("Windows"),
                               method<&Scheme::Save>("Save"),
                           });
    });
}

Ref<Channel> findChannel(const Ref<SchemeWindows>& windows, const QString& bindString) noexcept
{
    try {
        const qsizetype bar = bindString.indexOf(u'|');
        if (!windows || bar < 0)
            return {};
        const Ref<SchemeWindow> window = windows->Item(Variant(bindString.left(bar)));
        if (!window)
            return {};
        return window->Item(Variant(bindString.mid(bar + 1)));
    } catch (...) {
        return {}; // a scheme of the host may fail in its own ways; a control then has no channel
    }
}

} // namespace zan::site
