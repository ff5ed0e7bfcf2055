// Any bytes as a web page that a server has sent, the first line being its Content-Type: refused, or a page whose rows
// keep their limits and are found by what names them.

#include "ecan/RestrictionsPage.h"

#include "fuzz/support/Require.h"

#include <cstdint>

using namespace zan;
using ecan::RestrictionsPage;
using fuzz::require;

namespace {

void check(const RestrictionsPage& page, const ecan::SiteRow& row)
{
    require(!row.sites.empty() && row.sites.size() <= RestrictionsPage::MostColumns, "a row has the site's name");
    for (const QString& text : {row.status, row.flow, row.stamp, row.sites.front()}) {
        require(text.size() <= 256, "a text is cut");
        require(text == text.simplified(), "a text has single blanks");
    }
    require(page.find(row.sites.front()) != nullptr, "a site is found by its name");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype line = input.indexOf('\n');
    const auto page = RestrictionsPage::read({input.mid(line + 1), input.left(std::max<qsizetype>(line, 0))});
    if (!page)
        return 0;
    require(page->rows().size() <= RestrictionsPage::MostRows, "there are no more rows than are read");
    require(!page->find(u""), "no site is nameless");
    for (std::size_t i = 0; i < std::min<std::size_t>(page->rows().size(), 20); ++i)
        check(*page, page->rows()[i]);
    static_cast<void>(page->find(u"66401"));
    return 0;
}
