#include "values/Burial.h"

namespace zan::values {

namespace {

constexpr int DirectLevels = 32;

struct Graveyard
{
    int depth = 0;
    std::vector<std::vector<Variant>> waiting;
};

Graveyard& graveyard()
{
    // Never destroyed: the last containers of a process may go after every other static.
    static thread_local Graveyard* yard = new Graveyard;
    return *yard;
}

} // namespace

void bury(std::vector<Variant>&& contents) noexcept
{
    if (contents.empty())
        return;
    Graveyard& yard = graveyard();
    if (yard.depth >= DirectLevels) {
        yard.waiting.push_back(std::move(contents));
        return;
    }
    ++yard.depth;
    {
        const std::vector<Variant> mine = std::move(contents);
    }
    while (yard.depth == 1 && !yard.waiting.empty()) {
        const std::vector<Variant> next = std::move(yard.waiting.back());
        yard.waiting.pop_back();
    }
    --yard.depth;
}

} // namespace zan::values
