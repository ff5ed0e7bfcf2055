#pragma once

#include "script/ScriptError.h"
#include "script/machine/ScriptHost.h"

#include "binding/Object.h"

#include <QString>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>

namespace zan::script {

class Engine;
struct EngineSettings;

/// A place in a program's text: lines count from 1, columns from 0. Line 0 is no place.
struct ScriptPlace
{
    int line = 0;
    int column = 0;
};

/// An engine for scripts in VBScript. Give it named objects and the text of a program, then call its procedures.
///
/// Nothing is ever thrown: a call that fails says so in its result, and Error tells why. A script may call back into
/// the control that runs it, Reset included: the program under way then goes on with its own variables until it
/// returns. The same holds when the host deletes the control under a script. One control belongs to one thread.
class ScriptControl
{
public:
    /// The host must outlive the control; without one, boxes are answered as if the user had pressed Enter.
    explicit ScriptControl(ScriptHost* host = nullptr);
    ~ScriptControl();
    ScriptControl(const ScriptControl&) = delete;
    ScriptControl& operator=(const ScriptControl&) = delete;

    /// Forgets code, variables, named objects and the error. Compiled texts stay known, so that the same program
    /// starts at once the next time.
    void Reset();
    /// Makes an object known to scripts by a name; with addMembers its members can be used without the name.
    /// Fails for no object and for a name that is there already (error 5).
    bool AddObject(const QString& name, const binding::Ref<binding::Object>& object, bool addMembers = false);
    /// Compiles a text, adds its declarations to the program and runs the statements outside procedures.
    bool AddCode(const QString& text);
    /// Calls a procedure of the program; the result of a Sub is Empty. Nothing when it failed; a name that the
    /// program does not have fails with error 438.
    std::optional<values::Variant> Run(const QString& procedure, binding::Arguments arguments = {});
    std::optional<values::Variant> Run(const QString& procedure, std::initializer_list<values::Variant> arguments);
    /// Value of an expression in the program; nothing when it failed.
    std::optional<values::Variant> Eval(const QString& expression);

    /// A second engine beside this one, with variables of its own, for a script that starts while this one runs.
    /// Host, classes, clock and limits are the same: what is under way in both at once shares one depth, one time and
    /// one memory, and a limit ends it all.
    std::unique_ptr<ScriptControl> beside() const;
    /// Calls made while it lives are one run: they share the limits of one call.
    class Session;
    /// Time that does not count while it lives, because the host shows a box of its own to the user.
    class Pause;
    /// Ends what is under way at its next look or its next call to the world outside, with error 18 and this text.
    /// Nothing when nothing is under way.
    void Stop(const QString& reason);
    /// True from the moment that a limit was hit until the outermost call under way has returned.
    bool isStopped() const noexcept;

    /// What went wrong in the last call that failed. A call that succeeds leaves it as it is.
    ScriptError& Error() noexcept { return m_state->error; }
    const ScriptError& Error() const noexcept { return m_state->error; }

    /// The statement that has called the host, for an object that wants to say where; no place while nothing runs.
    ScriptPlace currentPlace() const noexcept;
    /// True inside a call of Run, AddCode or Eval.
    bool isRunning() const noexcept { return m_state->running > 0; }
    void setHost(ScriptHost* host) noexcept;
    const ScriptLimits& limits() const noexcept;
    /// Takes effect with the next look at the limits.
    void setLimits(const ScriptLimits& limits) noexcept;
    /// Lets CreateObject make objects under this name, besides "Scripting.Dictionary". Stays over Reset.
    void registerClass(const QString& name, std::function<binding::Ref<binding::Object>()> factory);
    /// Puts another clock in place of the machine's.
    void setClock(std::function<std::chrono::nanoseconds()> clock);
    /// Puts another measure of memory in place of the size of the process's heap, in bytes.
    void setMemoryMeter(std::function<std::size_t()> meter);

private:
    /// What a call needs to its end, even if the script makes the host delete the control meanwhile.
    struct State
    {
        std::shared_ptr<Engine> engine;
        ScriptError error;
        int running = 0;
    };
    explicit ScriptControl(std::shared_ptr<EngineSettings> settings);
    template <class Call>
    bool guarded(const QString& text, Call&& call);

    std::shared_ptr<EngineSettings> m_settings;
    std::shared_ptr<State> m_state;
};

class ScriptControl::Session
{
public:
    explicit Session(const ScriptControl& control);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

private:
    struct Part;
    std::unique_ptr<Part> m_part;
};

class ScriptControl::Pause
{
public:
    explicit Pause(const ScriptControl& control);
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

private:
    struct Part;
    std::unique_ptr<Part> m_part;
};

} // namespace zan::script
