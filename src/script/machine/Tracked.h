#pragma once

namespace zan::script {

class Engine;

/// An object of a script that may be part of a cycle of references. Its engine lists it, and breaks the cycle when
/// the program ends.
class Tracked
{
public:
    explicit Tracked(Engine& engine);
    virtual ~Tracked();
    Tracked(const Tracked&) = delete;
    Tracked& operator=(const Tracked&) = delete;

    /// The program ends: first everybody says goodbye, then everybody lets go of what it holds.
    virtual void sayGoodbye() {}
    virtual void letGo() = 0;
    /// Keeps the object alive while its engine walks the list.
    virtual void hold() const = 0;
    virtual void drop() const = 0;
    /// The engine, null once it has gone.
    Engine* engine() const noexcept { return m_engine; }

private:
    friend class Engine;
    Engine* m_engine;
    Tracked* m_previous = nullptr;
    Tracked* m_next = nullptr;
};

} // namespace zan::script
