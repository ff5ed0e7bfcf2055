#include "zanbench/hostitem/HostEditing.h"

#include "zanbench/hostitem/ControlLookup.h"
#include "zanbench/hostitem/HandleList.h"
#include "zanbench/hostitem/OpenMenu.h"

#include "surface/forms/RecordingForms.h"
#include "window/BenchWindow.h"

#include <QClipboard>
#include <QGuiApplication>

namespace zan::host {

Ref<binding::Object> HostEditing::Menu()
{
    surface::RecordingForms& forms = run().forms();
    if (!forms.menu())
        return {};
    return values::make<OpenMenu>(forms, forms.menu());
}

QString HostEditing::Clipboard() const
{
    return QGuiApplication::clipboard()->text();
}

void HostEditing::setClipboard(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

Ref<binding::Object> HostEditing::Handles(const Variant& control)
{
    return values::make<HandleList>(*wrapperOf(panel(), control), *liveOf(panel(), control));
}

void HostEditing::Undo()
{
    panel().Undo();
}

void HostEditing::Redo()
{
    panel().Redo();
}

const binding::MemberTable& HostEditing::members() const
{
    using C = HostEditing;
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("HostEditing", nullptr,
                                    {
                                        readOnly<&C::Menu>("Menu"),
                                        property<&C::Clipboard, &C::setClipboard>("Clipboard"),
                                        readOnly<&C::Handles>("Handles"),
                                        method<&C::Undo>("Undo"),
                                        method<&C::Redo>("Redo"),
                                    });
    });
}

} // namespace zan::host
