#pragma once

#include "site/Logger.h"
#include "surface/forms/HostForms.h"
#include "wrappers/iBenchControl.h"

#include <functional>

namespace zan::dialogs {

using values::Ref;

/// What a setup form needs of the panel that has opened it. The panel may go while the form is open.
class FormSite
{
public:
    virtual ~FormSite() = default;
    /// Who shows pickers; null once the panel has gone.
    virtual surface::HostForms* forms() = 0;
    /// For what a form shows of the running logger; may be Nothing.
    virtual Ref<site::Logger> logger() = 0;
    /// Runs what an Apply does as one step of the panel's edit history. The control is Nothing for the panel's own form.
    /// What the step raises is raised here, too.
    virtual void edit(const QString& what, const Ref<wrappers::iBenchControl>& control,
                      const std::function<void()>& step) = 0;
    /// Inside such a step: the channel is about to count one binding more or less, and undoing is to take that back.
    virtual void counts(const Ref<site::Channel>& channel) = 0;
    /// Takes an error that no step of the form has trapped.
    virtual void reportError(const values::RuntimeError& error) = 0;
};

} // namespace zan::dialogs
