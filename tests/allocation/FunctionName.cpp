#include "FunctionName.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cxxabi.h>
#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <span>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zan::test {

namespace {

/// A file as it lies on the disk, mapped: libraries are large.
class MappedFile
{
public:
    explicit MappedFile(const std::string& path)
    {
        const int number = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status = {};
        if (number >= 0 && ::fstat(number, &status) == 0) {
            void* place = ::mmap(nullptr, std::size_t(status.st_size), PROT_READ, MAP_PRIVATE, number, 0);
            if (place != MAP_FAILED)
                m_bytes = {static_cast<const char*>(place), std::size_t(status.st_size)};
        }
        if (number >= 0)
            ::close(number);
    }
    ~MappedFile()
    {
        if (!m_bytes.empty())
            ::munmap(const_cast<char*>(m_bytes.data()), m_bytes.size());
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    std::span<const char> bytes() const { return m_bytes; }

private:
    std::span<const char> m_bytes;
};

/// The name of the function at this offset of a library, by one of its tables of symbols; empty when it has none there.
std::string symbolAt(std::span<const char> file, std::uintptr_t offset, unsigned kind)
{
    if (file.size() < sizeof(ElfW(Ehdr)))
        return {};
    const auto* head = reinterpret_cast<const ElfW(Ehdr)*>(file.data());
    const auto* sections = reinterpret_cast<const ElfW(Shdr)*>(file.data() + head->e_shoff);
    for (int number = 0; number < head->e_shnum; ++number) {
        const auto& section = sections[number];
        if (section.sh_type != kind)
            continue;
        const auto* symbols = reinterpret_cast<const ElfW(Sym)*>(file.data() + section.sh_offset);
        const char* names = file.data() + sections[section.sh_link].sh_offset;
        for (std::size_t place = 0; place < section.sh_size / sizeof(ElfW(Sym)); ++place) {
            const auto& symbol = symbols[place];
            if ((symbol.st_info & 0xf) == STT_FUNC && symbol.st_value <= offset &&
                offset < symbol.st_value + symbol.st_size)
                return names + symbol.st_name;
        }
    }
    return {};
}

std::string readable(const std::string& symbol)
{
    int status = 0;
    char* text = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
    std::string name = text ? text : symbol;
    std::free(text);
    return name;
}

template <std::size_t N>
bool startsWithOneOf(const std::string& text, const std::array<const char*, N>& beginnings)
{
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](const char* beginning) { return text.rfind(beginning, 0) == 0; });
}

} // namespace

FunctionName FunctionName::of(const void* address)
{
    Dl_info place{};
    if (!address || dladdr(address, &place) == 0 || !place.dli_fname)
        return {};
    const std::string path = place.dli_fname;
    const MappedFile file(path);
    const auto offset = std::uintptr_t(address) - std::uintptr_t(place.dli_fbase);
    std::string symbol = symbolAt(file.bytes(), offset, SHT_SYMTAB);
    if (symbol.empty())
        symbol = symbolAt(file.bytes(), offset, SHT_DYNSYM);
    return {path.substr(path.rfind('/') + 1), readable(symbol)};
}

bool FunctionName::isToolkit() const
{
    constexpr std::array Libraries = {"libQt6", "libq", "libglib", "libfontconfig", "libfreetype", "libharfbuzz"};
    if (startsWithOneOf(library, Libraries))
        return true;
    // "void QHashPrivate::Span<...>::addStorage()": the name begins behind the type of the result.
    const std::string name = function.substr(0, function.find_first_of("<("));
    const std::size_t blank = name.rfind(' ');
    return name.compare(blank == std::string::npos ? 0 : blank + 1, 1, "Q") == 0;
}

bool FunctionName::isRuntime() const
{
    constexpr std::array Libraries = {"libc.", "libstdc++", "libgcc_s", "libm.", "ld-linux", "libpthread"};
    return startsWithOneOf(library, Libraries);
}

} // namespace zan::test
