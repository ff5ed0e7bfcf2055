#include "component/Holder.h"

#include "component/Frame.h"

namespace zan::component {

Holder::Holder(QWidget* control)
    : m_control(control)
    , m_window(new FrameWindow(control))
{}

Holder::~Holder()
{
    if (m_frame)
        m_frame->forget();
    if (m_window)
        Module::get().bury(m_window);
}

Ref<Frame> Holder::frame()
{
    if (!m_frame)
        m_frame = values::make<Frame>(*this);
    return m_frame;
}

} // namespace zan::component
