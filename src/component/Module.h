#pragma once

#include "component/Handles.h"

#include <QPointer>
#include <QWidget>

#include <atomic>
#include <vector>

namespace zan::component {

/// One more thing that keeps the library from being unloaded, for as long as the token lives.
class Alive
{
public:
    Alive() noexcept { ++s_count; }
    Alive(const Alive&) noexcept
        : Alive()
    {}
    Alive& operator=(const Alive&) = default;
    ~Alive() { --s_count; }
    /// From any thread.
    static bool anything() noexcept { return s_count > 0; }

private:
    static inline std::atomic<std::int64_t> s_count = 0;
};

/// The state of the loaded library.
class Module
{
public:
    static Module& get();
    Handles& handles() noexcept { return m_handles; }

    /// Takes a window whose last owner has gone. It goes at once, or when no call of ours is under way: the one that is
    /// may be working for it.
    void bury(QWidget* window);
    /// Ends the windows that wait for it, unless a call is under way around this one.
    void endBuried();
    bool isBuryingDone() const;

    /// A call from C into the library, or from the library into C.
    class Depth
    {
    public:
        Depth() noexcept { ++Module::get().m_depth; }
        ~Depth() { --Module::get().m_depth; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;

    private:
        Alive m_alive; // code that runs cannot be unloaded
    };
    /// A call from C that needs the user interface. Raises unless there is an application and this is its thread.
    class Call
    {
        struct ThreadCheck
        {
            ThreadCheck();
        };
        ThreadCheck m_check; // first: the depth belongs to the interface's thread
        Depth m_depth;
    };

private:
    Module();
    ~Module();
    static void applicationEnds();

    Handles m_handles;
    std::vector<QPointer<QWidget>> m_buried;
    int m_depth = 0;
};

} // namespace zan::component
