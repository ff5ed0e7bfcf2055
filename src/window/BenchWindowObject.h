#pragma once

#include "binding/MemberTable.h"
#include "window/BenchWindow.h"

#include <QPointer>

namespace zan::window {

/// A panel by name: the face that documents and scripts see. It outlives the panel; then every access raises 91.
class BenchWindowObject : public binding::Object
{
public:
    explicit BenchWindowObject(BenchWindow& window)
        : m_window(&window)
    {}
    /// Raises 91 when the panel has gone.
    BenchWindow& window() const;
    /// The panel is about to go.
    void forget() noexcept { m_window = nullptr; }
    const binding::MemberTable& members() const override;

private:
    QPointer<BenchWindow> m_window;
};

} // namespace zan::window

template <>
struct zan::binding::Self<zan::window::BenchWindow>
{
    static zan::window::BenchWindow& of(Object& object)
    {
        return static_cast<zan::window::BenchWindowObject&>(object).window();
    }
};
