#pragma once

#include "zanbench/hostitem/HostFamily.h"

#include <memory>

namespace zan::host {

/// Setup forms: OnForm, Edit, WindowProperties.
class HostForms : public HostFamily
{
public:
    explicit HostForms(HostRun& run);
    ~HostForms() override;

    /// Names the procedure that is called with a Form when a form of this name opens; an empty one takes that back. A form
    /// without a procedure is recorded and closed, and so is one whose procedure leaves it open.
    void OnForm(const QString& form, const QString& procedure);
    /// Opens a control's form as the entry of its menu does.
    void Edit(const Variant& control);
    /// Opens the form of the panel's own properties as the entry of the surface's menu does.
    void WindowProperties();

    const binding::MemberTable& members() const override;

private:
    struct Procedures;
    std::shared_ptr<Procedures> m_procedures;
};

} // namespace zan::host
