#include "component/Boundary.h"

#include <algorithm>
#include <cstring>

namespace zan::component {

namespace {

// Plain memory: an object with a destructor would keep the library loaded until its thread ends.
constexpr std::size_t LongestDescription = 1024;
thread_local ZanResult failedNumber = ZAN_OK;
thread_local char failedDescription[LongestDescription] = "";

/// The bytes of a text that fit, without cutting a character in two.
std::size_t fittingLength(const QByteArray& text)
{
    auto length = std::min(std::size_t(text.size()), LongestDescription - 1);
    if (length < std::size_t(text.size())) {
        while (length > 0 && (std::uint8_t(text[qsizetype(length)]) & 0xC0U) == 0x80)
            --length;
    }
    return length;
}

} // namespace

void fail(ZanError number, const char* description)
{
    throw values::RuntimeError(int(number), QString::fromLatin1(description));
}

ZanResult remember(const values::RuntimeError& error) noexcept
{
    // 0 says that nothing has failed, and a script may raise it all the same.
    failedNumber = error.number() ? error.number() : ZanResult(values::ErrorNumber::ExceptionOccurred);
    failedDescription[0] = 0;
    static_cast<void>(values::attempt([&] {
        const QByteArray text = error.description().toUtf8();
        const std::size_t length = fittingLength(text);
        std::memcpy(failedDescription, text.constData(), length);
        failedDescription[length] = 0;
    }));
    return failedNumber;
}

ZanResult lastError() noexcept
{
    return failedNumber;
}

const char* lastDescription() noexcept
{
    return failedDescription;
}

} // namespace zan::component
