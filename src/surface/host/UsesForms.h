#pragma once

#include <functional>

namespace zan::surface {

class HostForms;

/// Who shows boxes and pickers for a control; null once the panel has gone.
using FormsSource = std::function<HostForms*()>;

/// A control that asks its user for something, a file say: it does so through the forms of the panel it lies on.
class UsesForms
{
public:
    virtual ~UsesForms() = default;
    virtual void setForms(const FormsSource& forms) = 0;
};

} // namespace zan::surface
