#include "surface/host/Handles.h"

#include "surface/host/Surface.h"

#include <unordered_map>

namespace zan::surface {

namespace {

struct HandleOwner
{
    LiveControl* control = nullptr;
    Surface* surface = nullptr;
    QWidget* widget = nullptr;
};

struct HandleTable
{
    std::int32_t last = 0;
    std::unordered_map<std::int32_t, HandleOwner> owners;

    static HandleTable& instance()
    {
        // Never destroyed: a control may outlive every static object.
        static HandleTable* table = new HandleTable;
        return *table;
    }
    std::int32_t add(HandleOwner owner)
    {
        owners.emplace(++last, owner);
        return last;
    }
    HandleOwner find(std::int32_t handle) const noexcept
    {
        const auto found = owners.find(handle);
        return found == owners.end() ? HandleOwner() : found->second;
    }
};

} // namespace

std::int32_t Handles::allocate(LiveControl& control)
{
    return HandleTable::instance().add({.control = &control});
}

std::int32_t Handles::allocate(Surface& surface)
{
    return HandleTable::instance().add({.surface = &surface});
}

std::int32_t Handles::of(QWidget& widget)
{
    if (auto* surface = dynamic_cast<Surface*>(&widget))
        return surface->hWnd();
    for (const auto& [handle, owner] : HandleTable::instance().owners) {
        if (owner.widget == &widget)
            return handle;
    }
    const std::int32_t handle = HandleTable::instance().add({.widget = &widget});
    QObject::connect(&widget, &QObject::destroyed, [handle] { release(handle); });
    return handle;
}

void Handles::release(std::int32_t handle) noexcept
{
    if (handle != 0)
        HandleTable::instance().owners.erase(handle);
}

LiveControl* Handles::control(std::int32_t handle) noexcept
{
    return HandleTable::instance().find(handle).control;
}

Surface* Handles::surface(std::int32_t handle) noexcept
{
    return HandleTable::instance().find(handle).surface;
}

QWidget* Handles::widget(std::int32_t handle) noexcept
{
    const HandleOwner owner = HandleTable::instance().find(handle);
    return owner.surface ? owner.surface : owner.widget;
}

std::int32_t Handles::next() noexcept
{
    return ++HandleTable::instance().last;
}

} // namespace zan::surface
