#include "LastPlace.h"

#include "FailingNew.h"
#include "FunctionName.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <dlfcn.h>
#include <exception>
#include <execinfo.h>
#include <span>
#include <string>
#include <sys/time.h>
#include <unistd.h>
#include <unwind.h>

namespace {

using Personality = _Unwind_Reason_Code (*)(int, _Unwind_Action, _Unwind_Exception_Class, _Unwind_Exception*,
                                            _Unwind_Context*);

/// The place where the exception under way ends; null while nobody has been found who takes it or lets none through.
thread_local void* lastTaker = nullptr;

} // namespace

/// What the language's run-time library asks of each function that an exception comes to. This program's stands in
/// front of the library's, for every library of the process, and notes where the exception ends.
extern "C" _Unwind_Reason_Code __gxx_personality_v0(int version, _Unwind_Action actions,
                                                    _Unwind_Exception_Class exceptionClass,
                                                    _Unwind_Exception* exception, _Unwind_Context* context)
{
    static const auto real = reinterpret_cast<Personality>(dlsym(RTLD_NEXT, "__gxx_personality_v0"));
    if (actions & _UA_SEARCH_PHASE)
        lastTaker = nullptr;
    const _Unwind_Reason_Code answer = real(version, actions, exceptionClass, exception, context);
    if ((actions & _UA_SEARCH_PHASE) && answer == _URC_HANDLER_FOUND)
        lastTaker = reinterpret_cast<void*>(_Unwind_GetIP(context));
    return answer;
}

namespace zan::test {

namespace {

int report = -1;

/// Seconds of work and of waiting; 0 for no limit.
void setTimeLimits(int work, unsigned wait)
{
    itimerval limit{};
    limit.it_value.tv_sec = work;
    setitimer(ITIMER_PROF, &limit, nullptr);
    alarm(wait);
}

std::string told(const FunctionName& name)
{
    return name.library + ' ' + (name.function.empty() ? "?" : name.function.substr(0, 160));
}

/// Writes whose fault it is and how the process came to its end, and the stack.
[[noreturn]] void tell(bool isToolkits, const std::string& how, std::span<void* const> stack)
{
    std::string text = (isToolkits ? "toolkit: " : "ours: ") + how + '\n';
    if (isToolkits)
        stack = {}; // nobody asks where
    for (void* frame : stack.first(std::min<std::size_t>(stack.size(), 24))) {
        if (const FunctionName name = FunctionName::of(frame); !name.isRuntime())
            text += "  " + told(name) + '\n';
    }
    static_cast<void>(::write(report, text.data(), text.size()));
    _exit(Died);
}

void terminated()
{
    FailingNew::end();
    setTimeLimits(0, 0);
    std::array<void*, 100> frames{};
    const std::size_t count = std::size_t(backtrace(frames.data(), int(frames.size())));
    const FunctionName taker = FunctionName::of(lastTaker);
    const FunctionName asker = FunctionName::of(FailingNew::lastAsker());
    tell(taker.isToolkit() || asker.isToolkit(),
         "memory asked for by " + told(asker) + " was missed in " + told(taker) +
             ", which lets no exception through",
         {frames.data(), count});
}

bool isTimeLimit(int number)
{
    return number == SIGALRM || number == SIGPROF;
}

std::string how(int number)
{
    switch (number) {
    case SIGABRT:
        return "an abort";
    case SIGALRM:
    case SIGPROF:
        return "no end";
    default:
        return "a bad access";
    }
}

void signalled(int number)
{
    FailingNew::end();
    setTimeLimits(0, 0);
    std::array<void*, 100> frames{};
    const std::size_t count = std::size_t(backtrace(frames.data(), int(frames.size())));
    // The first frames are this function and what the system puts below the one that was interrupted.
    std::size_t first = 1;
    while (first < count && FunctionName::of(frames[first]).isRuntime())
        ++first;
    // An assertion is asked by the toolkit and failed by its caller.
    while (first < count && FunctionName::of(frames[first]).function.find("qt_assert") != std::string::npos)
        ++first;
    const FunctionName place = FunctionName::of(first < count ? frames[first] : nullptr);
    // Waiting for ever is the toolkit's only when an allocation of its own has failed before.
    const bool isToolkits =
        place.isToolkit() && (!isTimeLimit(number) || FunctionName::of(FailingNew::lastAsker()).isToolkit());
    tell(isToolkits, how(number) + " in " + told(place), {frames.data() + first, count - first});
}

} // namespace

void limitTime()
{
    setTimeLimits(10, 300);
}

void reportLastPlace(int descriptor)
{
    report = descriptor;
    std::array<void*, 2> once{};
    static_cast<void>(backtrace(once.data(), 2)); // takes memory the first time
    std::set_terminate(terminated);
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM, SIGPROF})
        std::signal(number, signalled);
}

} // namespace zan::test
