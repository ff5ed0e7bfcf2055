#include "surface/host/ProvidedControls.h"

#include "surface/host/LiveControl.h"

#include <algorithm>
#include <vector>

namespace zan::surface {

namespace {

struct Entry
{
    QStringView key;
    ProvidedCreator creator;
};

std::vector<Entry>& entries()
{
    static std::vector<Entry> list;
    return list;
}

} // namespace

void provideControl(QStringView key, ProvidedCreator creator)
{
    const auto found =
        std::find_if(entries().begin(), entries().end(), [&](const Entry& entry) { return entry.key == key; });
    if (found != entries().end())
        found->creator = creator;
    else
        entries().push_back({key, creator});
}

ProvidedCreator providedControl(QStringView key) noexcept
{
    for (const Entry& entry : entries()) {
        if (entry.key == key)
            return entry.creator;
    }
    return nullptr;
}

} // namespace zan::surface
