#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace zan::values {

/// Base of everything that is shared by counted reference. An object starts with no references; the last
/// Ref that lets go destroys it. Counts are not atomic: an object belongs to the user-interface thread.
class Shared
{
public:
    Shared() = default;
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    virtual ~Shared() = 0; // nobody is just shared; the compiler may rule that out where it looks for destructors

    void retain() const noexcept { ++m_references; }
    void release() const noexcept
    {
        if (--m_references == 0) {
            // The destructor may hand out and drop references to this object again (an event that says
            // goodbye, say): the large count keeps that from destroying it twice.
            m_references = Dying;
            delete this;
        }
    }
    /// Number of references held at this moment.
    std::uint32_t references() const noexcept { return m_references; }

protected:
    /// For a class whose own operator delete decides whether the object goes: ends its dying and returns the
    /// number of references taken meanwhile, which count from now on as any others.
    std::uint32_t endDying() const noexcept { return m_references -= Dying; }
    /// Begins it again, for an object that nobody took a reference to.
    void beginDying() const noexcept { m_references += Dying; }

private:
    static constexpr std::uint32_t Dying = 0x40000000;
    mutable std::uint32_t m_references = 0;
};

inline Shared::~Shared() = default;

/// Counted reference to a T that has retain() and release(). Empty by default.
template <class T>
class Ref
{
public:
    Ref() noexcept = default;
    Ref(std::nullptr_t) noexcept {}
    explicit Ref(T* object) noexcept
        : m_object(object)
    {
        if (m_object)
            m_object->retain();
    }
    Ref(const Ref& other) noexcept
        : Ref(other.m_object)
    {}
    Ref(Ref&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
    noexcept
        : Ref(static_cast<T*>(other.get()))
    {}
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(Ref<U>&& other)
    noexcept
        : m_object(other.detach())
    {}
    ~Ref()
    {
        if (m_object)
            m_object->release();
    }
    Ref& operator=(Ref other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* get() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    T* operator->() const noexcept { return m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }
    /// Gives the pointer away without releasing it; the caller takes over one reference.
    T* detach() noexcept { return std::exchange(m_object, nullptr); }
    /// Takes over a reference that somebody else counted.
    static Ref adopt(T* object) noexcept
    {
        Ref ref;
        ref.m_object = object;
        return ref;
    }

    friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.m_object == b.m_object; }
    friend bool operator==(const Ref& a, std::nullptr_t) noexcept { return a.m_object == nullptr; }

private:
    T* m_object = nullptr;
};

template <class T, class... Arguments>
Ref<T> make(Arguments&&... arguments)
{
    return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

} // namespace zan::values
