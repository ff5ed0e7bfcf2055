#pragma once

#include "document/XmlBytes.h"

#include <bit>
#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zan::document::xml {

/// Bytes that plainBytes looks at.
inline constexpr std::size_t PlainBlock = 16;

/// How many of the next bytes are plain in an element's text: ASCII, no markup and nothing that is read as something
/// else. All of the block can be read.
inline std::size_t plainBytes(const char* at) noexcept
{
#ifdef __SSE2__
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const auto is = [&](char byte) { return _mm_cmpeq_epi8(block, _mm_set1_epi8(byte)); };
    // Bytes beyond ASCII and those found have their uppermost bit set.
    const __m128i others =
        _mm_or_si128(_mm_or_si128(_mm_or_si128(is('<'), is('>')), _mm_or_si128(is('&'), is('\r'))), block);
    return std::size_t(std::countr_zero(unsigned(_mm_movemask_epi8(others)) | 1u << PlainBlock));
#else
    std::size_t plain = 0;
    while (plain != PlainBlock && (classOf(at[plain]) & (Halts | IsCoded | IsWide)) == 0)
        ++plain;
    return plain;
#endif
}

} // namespace zan::document::xml
