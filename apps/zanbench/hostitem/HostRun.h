#pragma once

#include "binding/Object.h"

#include <QString>

#include <cstdint>

namespace zan::surface {
class RecordingForms;
}
namespace zan::window {
class BenchWindow;
}

namespace zan::host {

/// What the families of the item Host may ask of the run that they belong to.
class HostRun
{
public:
    virtual ~HostRun() = default;
    /// The panel of the run; null for a run without one.
    virtual window::BenchWindow* panel() const = 0;
    virtual surface::RecordingForms& forms() = 0;
    /// Calls a procedure of the script with an object; what goes wrong in it is a failure of the run.
    virtual void call(const QString& procedure, const values::Ref<binding::Object>& argument) = 0;
    /// Counts a failure and prints it with the place of the statement that is running.
    virtual void failHere(const QString& message) = 0;
    /// How many writes the logger has refused since the last call. What is taken here does not fail the run.
    virtual std::int32_t takeRefusedWrites() = 0;
    /// Runs the event loop; the time does not count as script time.
    virtual void wait(int milliseconds) = 0;
    /// Ends the script with this code as soon as it lets go.
    virtual void quit(int code) = 0;
    /// Path of a file that the script names, relative to the script's own folder.
    virtual QString filePath(const QString& name) const = 0;
};

} // namespace zan::host
