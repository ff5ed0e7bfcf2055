#pragma once

#include <cstdint>

namespace zan::script {

/// Character of a one-byte code as Chr reads it: the Western code page of the classic platform.
char16_t fromCodePage(std::uint8_t code) noexcept;
/// Code of a character as Asc gives it; that of `?` for a character that the code page lacks.
std::uint8_t toCodePage(char16_t character) noexcept;

} // namespace zan::script
