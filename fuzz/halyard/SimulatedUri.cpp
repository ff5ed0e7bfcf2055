// Any text as the URI of a simulated logger: it is refused in one short line, or it makes memory whose bytes follow
// from the time alone and whose numbers survive being read and written.

#include "fuzz/support/Require.h"
#include "halyard/SimulatedDriver.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

using namespace zan::halyard;
using zan::fuzz::require;

namespace {

bool isShortLine(const QString& error)
{
    return error.size() < 600 && !error.contains(u'\n');
}

MemoryLayout layoutOfAllTypes()
{
    MemoryLayout layout;
    for (std::int32_t type = 0; type < zan::site::DataTypeCount; ++type) {
        const auto dataType = DataType(type);
        layout.push_back({10 * type, dataType == DataType::String ? 9 : sizeOf(dataType), dataType});
    }
    return layout;
}

void checkMemory(const SimulatedOptions& options)
{
    SimulatedMemory memory(options.seed, options.order, options.waves);
    const MemoryLayout layout = layoutOfAllTypes();
    memory.setLayout(layout);
    for (const double seconds : {0.0, 0.25, 86'400.0}) {
        const QByteArray bytes = memory.read(0, 100, seconds);
        require(bytes == memory.read(0, 100, seconds), "the same moment gives the same bytes");
        for (const MemoryField& field : layout) {
            RawFormat format;
            format.type = field.type;
            format.length = field.length;
            format.order = options.order;
            const auto* raw = reinterpret_cast<const std::uint8_t*>(bytes.constData()) + field.address;
            const Variant value = decodeRaw(format, raw);
            require(!value.isEmpty(), "a simulated number is a number");
            QByteArray back;
            require(encodeRaw(format, value, back) == ErrorNumber::None, "what was read can be written");
            require(decodeRaw(format, reinterpret_cast<const std::uint8_t*>(back.constData())).kind() ==
                        value.kind(),
                    "what was written has the kind of what was read");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    LoggerUri uri;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    if (const QString error = LoggerUri::parse(text, uri); !error.isEmpty()) {
        require(isShortLine(error), "an error is one short line");
        return 0;
    }
    UriOptions options(uri.options);
    const SimulatedOptions simulated = SimulatedOptions::take(options, ByteOrder::Big);
    require(isShortLine(options.error()), "an error is one short line");
    if (options.error().isEmpty())
        checkMemory(simulated);
    return 0;
}
