#include "window/ScriptActions.h"

#include "values/RuntimeError.h"
#include "window/BenchWindow.h"

namespace zan::window {

struct ScriptActions::Engine
{};

ScriptActions::ScriptActions(BenchWindow& window) : m_window(window) {}

ScriptActions::~ScriptActions() = default;

void ScriptActions::run(const QString&, const values::Ref<binding::Object>&)
{
    (void)m_window;
    values::raise(values::ErrorNumber::CannotCreateObject);
}

} // namespace zan::window
