// Draws a metafile: the file on the standard input, the picture on the standard output ("ZWMF", width and height as
// 32-bit numbers, then 32 bits for each pixel from the top left corner, all of them in the order of the machine's bytes).
// Ends with 0 only when all of the picture was written.
//
// The file may be anybody's, and the library that interprets it has had its faults. So the first thing done is to give up
// whatever a fault could use: time, memory, files, further processes.

#include <libwmf/api.h>
#include <libwmf/gd.h>

#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <vector>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr std::size_t LargestFile = 16U * 1024 * 1024;
constexpr unsigned LargestSide = 4096;
constexpr std::uint64_t LargestArea = 8U * 1024 * 1024;
constexpr double PixelsPerInch = 96;
constexpr double UnitsPerInch = 72; // of the library

bool limit(__rlimit_resource what, rlim_t most)
{
    const rlimit both{most, most};
    return setrlimit(what, &both) == 0;
}

bool giveUpPowers()
{
    constexpr rlim_t Seconds = 2;
    constexpr rlim_t Memory = 384U * 1024 * 1024;
    constexpr rlim_t Files = 16; // fonts, one after the other
    alarm(10);                   // waiting counts as well
    return limit(RLIMIT_CPU, Seconds) && limit(RLIMIT_AS, Memory) && limit(RLIMIT_FSIZE, 0) &&
           limit(RLIMIT_NOFILE, Files) && limit(RLIMIT_NPROC, 0) && limit(RLIMIT_CORE, 0) &&
           prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_PDEATHSIG, SIGKILL) == 0;
}

std::vector<unsigned char> input()
{
    std::vector<unsigned char> bytes(LargestFile + 1);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stdin));
    return bytes;
}

/// The picture in pixels: its size, and where the part of it that is drawn lies.
struct Canvas
{
    unsigned width = 0;
    unsigned height = 0;
    long left = 0;
    long top = 0;
};

/// In the library's units.
struct Extent
{
    double width;
    double height;

    bool fits(double scale) const
    {
        return width * scale <= LargestSide && height * scale <= LargestSide &&
               width * scale * height * scale <= double(LargestArea);
    }
};

unsigned pixels(double units, double scale)
{
    const double rounded = std::floor(units * scale + 0.5);
    return rounded < 1 ? 1 : unsigned(rounded);
}

/// What is drawn is a part of the picture where the file says how large that is on paper, and all of it where the file
/// says nothing. Both are made smaller together where one is too large.
bool arrange(const wmfAPI& api, wmf_gd_t& device, Canvas& canvas)
{
    const wmfD_Rect& box = device.bbox;
    const Extent drawn{double(box.BR.x) - double(box.TL.x), double(box.BR.y) - double(box.TL.y)};
    Extent whole = drawn;
    const wmfPlaceableMetaHeader& paper = api.PlaceableMetaHeader;
    const bool hasPaper = api.File->placeable && paper.Inch != 0;
    if (hasPaper)
        whole = {std::abs(double(paper.Right) - paper.Left) * UnitsPerInch / paper.Inch,
                 std::abs(double(paper.Bottom) - paper.Top) * UnitsPerInch / paper.Inch};
    if (!(drawn.width >= 0 && drawn.height >= 0 && std::isfinite(drawn.width) && std::isfinite(drawn.height)))
        return false;
    double scale = PixelsPerInch / UnitsPerInch;
    while (!drawn.fits(scale) || !whole.fits(scale))
        scale /= 2;
    device.width = pixels(drawn.width, scale);
    device.height = pixels(drawn.height, scale);
    canvas = {pixels(whole.width, scale), pixels(whole.height, scale), 0, 0};
    if (hasPaper) {
        canvas.left = std::lround(double(box.TL.x) * scale);
        canvas.top = std::lround(double(box.TL.y) * scale);
    }
    return true;
}

bool write(const void* bytes, std::size_t size)
{
    return std::fwrite(bytes, 1, size, stdout) == size;
}

/// Paper is white around what is drawn.
bool writePicture(const wmf_gd_t& device, const Canvas& canvas)
{
    constexpr int White = 0xffffff;
    const int* const drawn = device.gd_image ? wmf_gd_image_pixels(device.gd_image) : nullptr;
    const std::uint32_t size[] = {canvas.width, canvas.height};
    if (!drawn || !write("ZWMF", 4) || !write(size, sizeof size))
        return false;
    std::vector<int> row(canvas.width);
    for (long y = 0; y < long(canvas.height); ++y) {
        const long line = y - canvas.top;
        for (long x = 0; x < long(canvas.width); ++x) {
            const long place = x - canvas.left;
            const bool isDrawn =
                line >= 0 && line < long(device.height) && place >= 0 && place < long(device.width);
            row[std::size_t(x)] = isDrawn ? drawn[line * long(device.width) + place] : White;
        }
        if (!write(row.data(), row.size() * sizeof(int)))
            return false;
    }
    return std::fflush(stdout) == 0;
}

/// The fonts that stand in for those that metafiles name, by the names that the library has for them.
struct StandIn
{
    const char* name;
    const char* file;
};
constexpr const char* FontFolder = "/usr/share/fonts/truetype/liberation";
constexpr StandIn StandIns[] = {
    {"Times-Roman", "LiberationSerif-Regular.ttf"}, {"Times-Italic", "LiberationSerif-Italic.ttf"},
    {"Times-Bold", "LiberationSerif-Bold.ttf"},     {"Times-BoldItalic", "LiberationSerif-BoldItalic.ttf"},
    {"Helvetica", "LiberationSans-Regular.ttf"},    {"Helvetica-Oblique", "LiberationSans-Italic.ttf"},
    {"Helvetica-Bold", "LiberationSans-Bold.ttf"},  {"Helvetica-BoldOblique", "LiberationSans-BoldItalic.ttf"},
    {"Courier", "LiberationMono-Regular.ttf"},      {"Courier-Oblique", "LiberationMono-Italic.ttf"},
    {"Courier-Bold", "LiberationMono-Bold.ttf"},    {"Courier-BoldOblique", "LiberationMono-BoldItalic.ttf"},
};

enum class Fonts { OurStandIns, TheLibrarysOwn };

bool draw(std::vector<unsigned char>& file, Fonts fonts)
{
    static char* folders[] = {const_cast<char*>(FontFolder), nullptr};
    std::vector<wmfMapping> mappings;
    for (const StandIn& font : StandIns)
        mappings.push_back({const_cast<char*>(font.name), const_cast<char*>(font.file), FT_ENCODING_UNICODE});
    mappings.push_back({});
    wmfAPI_Options options = {};
    options.function = wmf_gd_function;
    unsigned long manner = WMF_OPT_FUNCTION | WMF_OPT_IGNORE_NONFATAL | WMF_OPT_NO_ERROR | WMF_OPT_NO_DEBUG;
    if (fonts == Fonts::OurStandIns) {
        options.fontdirs = folders;
        options.font.ps = mappings.data();
        manner |= WMF_OPT_FONTDIRS | WMF_OPT_FONTMAP;
    }
    wmfAPI* api = nullptr;
    if (wmf_api_create(&api, manner, &options) != wmf_E_None)
        return false;
    wmf_gd_t& device = *WMF_GD_GetData(api);
    Canvas canvas;
    if (wmf_mem_open(api, file.data(), long(file.size())) != wmf_E_None ||
        wmf_scan(api, 0, &device.bbox) != wmf_E_None || !arrange(*api, device, canvas))
        return false;
    device.type = wmf_gd_image;
    return wmf_play(api, 0, &device.bbox) == wmf_E_None && writePicture(device, canvas);
    // The memory goes with the process.
}

} // namespace

int main()
{
    if (!giveUpPowers())
        return 2;
    std::vector<unsigned char> file = input();
    if (file.empty() || file.size() > LargestFile)
        return 1;
    // A file with a text needs fonts, and the library gives up on one when there are none where it looks.
    const bool isDrawn = draw(file, access(FontFolder, R_OK) == 0 ? Fonts::OurStandIns : Fonts::TheLibrarysOwn);
    return isDrawn ? 0 : 1;
}
