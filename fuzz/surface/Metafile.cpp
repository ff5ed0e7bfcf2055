// Any bytes as a metafile: what we look at before the program that interprets it gets the file. The program is not run.

#include "surface/host/Metafile.h"
#include "fuzz/support/Require.h"

#include <cstdint>

using namespace zan;
using fuzz::require;
using surface::Metafile::isMetafile;
using surface::Metafile::isWellFormed;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A copy of exactly this size: what lies behind it is not ours to read.
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const bool whole = isWellFormed(bytes);
    require(!whole || isMetafile(bytes), "what is whole is known by its head");
    require(!whole || isWellFormed(bytes + "more"), "what follows the end does not count");
    if (whole) {
        qsizetype shortest = bytes.size();
        while (shortest > 0 && isWellFormed(bytes.left(shortest - 1)))
            --shortest;
        for (qsizetype cut = 0; cut < shortest && cut < 64; ++cut)
            require(!isWellFormed(bytes.left(cut)), "a part is not the whole");
    }
    return 0;
}
