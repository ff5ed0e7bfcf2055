#include "zanbench/hostitem/HostForms.h"

#include "zanbench/hostitem/ControlLookup.h"
#include "zanbench/hostitem/OpenForm.h"

#include "surface/forms/RecordingForms.h"
#include "window/BenchWindow.h"
#include "window/PanelSetup.h"

#include <QMap>

namespace zan::host {

/// The procedures by the names of their forms, in small letters.
struct HostForms::Procedures
{
    QMap<QString, QString> byForm;
};

HostForms::HostForms(HostRun& run)
    : HostFamily(run)
    , m_procedures(std::make_shared<Procedures>())
{
    run.forms().onForm = [this, known = std::weak_ptr<Procedures>(m_procedures)](surface::ModalForm& form) {
        const std::shared_ptr<Procedures> procedures = known.lock();
        const QString procedure = procedures ? procedures->byForm.value(form.name().toLower()) : QString();
        if (procedure.isEmpty())
            return;
        if (const Ref<OpenForm> opened = OpenForm::of(form, this->run()))
            this->run().call(procedure, opened);
    };
}

HostForms::~HostForms() = default;

void HostForms::OnForm(const QString& form, const QString& procedure)
{
    static_cast<void>(run());
    m_procedures->byForm.insert(form.toLower(), procedure);
}

void HostForms::Edit(const Variant& control)
{
    const Ref<wrappers::iBenchControl> edited = wrapperOf(panel(), control);
    panel().edit([&](window::PanelEditor&) { panel().setup().edit(edited); });
}

void HostForms::WindowProperties()
{
    panel().edit([&](window::PanelEditor&) { panel().setup().editWindow(); });
}

const binding::MemberTable& HostForms::members() const
{
    using C = HostForms;
    using binding::method;
    return binding::table([] {
        return binding::MemberTable("HostForms", nullptr,
                                    {method<&C::OnForm>("OnForm"), method<&C::Edit>("Edit"),
                                     method<&C::WindowProperties>("WindowProperties")});
    });
}

} // namespace zan::host
