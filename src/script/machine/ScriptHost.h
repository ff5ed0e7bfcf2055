#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace zan::script {

/// What a script engine asks of the program that runs it. Called on the thread that runs the script.
class ScriptHost
{
public:
    virtual ~ScriptHost() = default;
    /// MsgBox: shows the text with these buttons and icon (the sum that MsgBox takes) until the user answers, and
    /// returns the number of the button (vbOK 1, vbCancel 2, vbAbort 3, vbRetry 4, vbIgnore 5, vbYes 6, vbNo 7).
    /// An empty title means the host's own. The time it takes does not count as script time.
    virtual int messageBox(const QString& text, int buttons, const QString& title) = 0;
    /// InputBox: the text typed, or nothing when the user cancelled. The time does not count as script time.
    virtual std::optional<QString> inputBox(const QString& prompt, const QString& title, const QString& text) = 0;
    /// Called every now and then while a script has been running for long, with the script time so far: the place
    /// to show that the program is busy and to let the user cancel. False stops the script with error 18.
    virtual bool busy(std::chrono::milliseconds elapsed)
    {
        static_cast<void>(elapsed);
        return true;
    }
};

/// What a run may take. A run that takes more ends in an ordinary script error; the host is never harmed.
struct ScriptLimits
{
    /// Script time of one call into the engine, boxes not counted; then error 18, which no On Error catches.
    std::chrono::milliseconds runTime{10000};
    /// Script time between two calls of ScriptHost::busy.
    std::chrono::milliseconds busyInterval{250};
    /// Loop passes and calls between two looks at the clock and the heap, or as much other work as takes as long.
    int passesPerLook = 20000;
    /// Procedures that may be under way at once; one more is error 28.
    std::size_t callDepth = 4000;
    /// Growth of the process's heap during a run, in bytes; then error 7, which no On Error catches.
    std::size_t memory = 512u * 1024 * 1024;
    /// Characters of one text; a longer one is error 14.
    std::size_t stringLength = 32u * 1024 * 1024;
    /// Characters of a script's text; a longer one does not compile (1001).
    std::size_t codeLength = 1u * 1024 * 1024;
};

} // namespace zan::script
