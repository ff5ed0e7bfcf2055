#include "script/machine/ResultCodes.h"

#include <algorithm>
#include <array>

namespace zan::script {

namespace {

/// The facility of script errors: their low word is the error's number.
constexpr std::uint32_t ControlFacility = 0x800a0000;

struct ResultCode
{
    std::uint32_t code;
    std::int32_t number;
};

/// By code. Facilities: 0x8000 general, 0x8002 late binding, 0x8003 storage, 0x8004 classes, 0x8007 system,
/// 0x8008 servers.
constexpr std::array ResultCodes{
    ResultCode{0x80004001, 445}, ResultCode{0x80004002, 430}, ResultCode{0x80020001, 438},
    ResultCode{0x80020003, 438}, ResultCode{0x80020004, 448}, ResultCode{0x80020005, 13},
    ResultCode{0x80020006, 438}, ResultCode{0x80020007, 446}, ResultCode{0x80020008, 458},
    ResultCode{0x8002000a, 6},   ResultCode{0x8002000b, 9},   ResultCode{0x8002000c, 447},
    ResultCode{0x8002000d, 10},  ResultCode{0x8002000e, 450}, ResultCode{0x8002000f, 449},
    ResultCode{0x80020011, 451}, ResultCode{0x8002802f, 453}, ResultCode{0x80028ca0, 13},
    ResultCode{0x80028ca1, 9},   ResultCode{0x80028ca2, 57},  ResultCode{0x80028ca3, 322},
    ResultCode{0x80030002, 432}, ResultCode{0x80030003, 76},  ResultCode{0x80030004, 67},
    ResultCode{0x80030005, 70},  ResultCode{0x80030008, 7},   ResultCode{0x80030012, 67},
    ResultCode{0x80030013, 70},  ResultCode{0x8003001d, 57},  ResultCode{0x8003001e, 57},
    ResultCode{0x80030020, 75},  ResultCode{0x80030021, 70},  ResultCode{0x80030050, 58},
    ResultCode{0x80030070, 61},  ResultCode{0x800300fc, 53},  ResultCode{0x80030100, 70},
    ResultCode{0x80030101, 70},  ResultCode{0x80030103, 57},  ResultCode{0x80040154, 429},
    ResultCode{0x800401e3, 429}, ResultCode{0x800401e6, 432}, ResultCode{0x800401ea, 432},
    ResultCode{0x800401f3, 429}, ResultCode{0x800401f5, 429}, ResultCode{0x800401fe, 429},
    ResultCode{0x80070005, 70},  ResultCode{0x8007000e, 7},   ResultCode{0x80070057, 5},
    ResultCode{0x800706ba, 462}, ResultCode{0x80080005, 429},
};

} // namespace

std::int32_t errorNumberOf(std::int32_t raised) noexcept
{
    const auto lessByCode = [](const ResultCode& entry, std::uint32_t wanted) { return entry.code < wanted; };
    static_assert(std::is_sorted(ResultCodes.begin(), ResultCodes.end(),
                                 [](const ResultCode& a, const ResultCode& b) { return a.code < b.code; }));
    const auto code = std::uint32_t(raised);
    if ((code & 0xffff0000) == ControlFacility && (code & 0xffff) != 0)
        return std::int32_t(code & 0xffff);
    const auto found = std::lower_bound(ResultCodes.begin(), ResultCodes.end(), code, lessByCode);
    return found != ResultCodes.end() && found->code == code ? found->number : raised;
}

} // namespace zan::script
