#pragma once

#include "binding/Object.h"

#include <QString>

#include <functional>

namespace zan::host {

/// What the scripts of a panel may ask of the program around it: the object behind `Window.Host`.
class PanelHost : public binding::Object
{
public:
    using ShowWindow = std::function<void(const QString& key)>;

    explicit PanelHost(ShowWindow show)
        : m_show(std::move(show))
    {}
    /// The program's window goes: every access raises 91 from now on.
    void detach() { m_show = {}; }

    /// Shows another window of the scheme, each on a panel of its own: the one shown so far keeps its controls. Raises
    /// 9 for a window that the scheme does not have.
    void Show(const QString& key);

    const binding::MemberTable& members() const override;

private:
    ShowWindow m_show;
};

} // namespace zan::host
