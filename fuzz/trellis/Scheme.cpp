// Any bytes as a scheme file: refused with a reason, or a scheme whose every window and channel can be read, looked
// up and written to, and whose tree reads again as the same tree.

#include "fuzz/support/MemoryFile.h"
#include "trellis/SchemeFile.h"

#include <cstdint>

using namespace zan;
using fuzz::MemoryFile;
using fuzz::require;
using trellis::SchemeFile;

namespace {

void exercise(site::Channel& channel)
{
    require(channel.DataType() >= 0 && channel.DataType() < site::DataTypeCount, "a data type exists");
    require(channel.Multiplier() - channel.Multiplier() == 0, "a multiplier is finite");
    require(channel.Offset() - channel.Offset() == 0, "an offset is finite");
    channel.setBaseAddress(channel.BaseAddress());
    channel.setBytes(channel.Bytes());
    channel.setLabel(channel.Label() + channel.Units() + channel.Format() + channel.Formula());
    channel.setVisible(!channel.Visible());
    channel.setCDT(channel.CDT());
    channel.setUseCount(1);
}

void exercise(site::SchemeWindows& windows)
{
    for (std::int32_t w = 1; w <= windows.Count(); ++w) {
        const auto window = windows.Item(binding::Variant(w));
        require(bool(windows.Item(binding::Variant(window->Key()))), "a window is found by its key");
        for (std::int32_t c = 1; c <= window->Count(); ++c) {
            const auto channel = window->Item(binding::Variant(c));
            exercise(*channel);
            const auto first = window->Item(binding::Variant(channel->Key()));
            require(first && first->Key().toCaseFolded() == channel->Key().toCaseFolded(), "a key finds its like");
        }
        const auto added = window->Add(windows.createChannel());
        require(window->Item(binding::Variant(added->Key())).get() == added.get(), "what is added is found");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const MemoryFile file(data, size);
    document::ParseLimits limits;
    limits.elements = 2'000;
    const trellis::OpenResult result = SchemeFile::open(file.path(), limits);
    if (!result) {
        require(!result.error.message.isEmpty() && !result.error.file.isEmpty(),
                "a refusal has a reason and a file");
        return 0;
    }
    const QByteArray before = document::toXml(result.scheme->document());
    exercise(*result.scheme->Windows());
    result.scheme->setName(QStringLiteral("fuzzed"));
    const QByteArray after = document::toXml(result.scheme->document());
    for (const QByteArray& text : {before, after}) {
        const document::ParseResult again = document::parseXml(text);
        require(bool(again), "what would be saved can be read");
        require(document::toXml(again.document) == text, "and is the same tree");
    }
    return 0;
}
