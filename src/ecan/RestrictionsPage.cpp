#include "ecan/RestrictionsPage.h"

#include "ecan/HtmlTree.h"

#include <algorithm>
#include <array>
#include <optional>

namespace zan::ecan {

namespace {

using Element = HtmlTree::Element;

/// Characters of a cell that are read.
constexpr qsizetype LongestCell = 256;
constexpr std::size_t LongestSpan = RestrictionsPage::MostRows;
/// A head says its charset before this.
constexpr qsizetype LongestHead = 4096;

enum class Column : unsigned char { Other, Site, Status, Flow, Stamp };

struct HeaderName
{
    QStringView name;
    Column column;
};

/// What headers of columns are called, letter case and whatever stands in brackets left out.
constexpr std::array<HeaderName, 23> headerNames{{
    {u"site", Column::Site},
    {u"site no", Column::Site},
    {u"site number", Column::Site},
    {u"site id", Column::Site},
    {u"site name", Column::Site},
    {u"recorder site", Column::Site},
    {u"status", Column::Status},
    {u"restriction", Column::Status},
    {u"restrictions", Column::Status},
    {u"restriction status", Column::Status},
    {u"current restriction", Column::Status},
    {u"flow", Column::Flow},
    {u"assessed flow", Column::Flow},
    {u"current flow", Column::Flow},
    {u"mean flow", Column::Flow},
    {u"stamp", Column::Stamp},
    {u"time", Column::Stamp},
    {u"date", Column::Stamp},
    {u"date/time", Column::Stamp},
    {u"updated", Column::Stamp},
    {u"last update", Column::Stamp},
    {u"last updated", Column::Stamp},
    {u"as at", Column::Stamp},
}};

/// A header without its unit: "Flow (m3/s)" is "flow", and so is "Flow [m3/s]:".
QString headerOf(const QString& cell)
{
    QString name = cell.toLower();
    for (const char16_t bracket : {u'(', u'['}) {
        if (const qsizetype at = name.indexOf(QChar(bracket)); at > 0)
            name.truncate(at);
    }
    while (!name.isEmpty() && (name.back() == u':' || name.back() == u'.' || name.back().isSpace()))
        name.chop(1);
    return name;
}

Column columnOf(const QString& cell)
{
    const QString name = headerOf(cell);
    const auto row = std::find_if(headerNames.begin(), headerNames.end(),
                                  [&](const HeaderName& candidate) { return candidate.name == name; });
    return row == headerNames.end() ? Column::Other : row->column;
}

/// The rows of one table as a grid: a cell that spans columns or rows stands at each of its places.
class TableGrid
{
public:
    using Row = std::vector<QString>;

    /// The cells of the next row; those of rows above that reach into it among them.
    Row read(Element row)
    {
        Row cells;
        const auto takeSpanning = [&] {
            while (cells.size() < m_spans.size() && m_spans[cells.size()].rows > 0) {
                Span& span = m_spans[cells.size()];
                --span.rows;
                cells.push_back(span.text);
            }
        };
        Element cell = HtmlTree::next(row, row);
        while (cell && cells.size() < RestrictionsPage::MostColumns) {
            if (HtmlTree::isNamed(cell, "td") || HtmlTree::isNamed(cell, "th")) {
                takeSpanning();
                add(cells, cell);
                cell = HtmlTree::afterwards(cell, row);
            } else {
                cell =
                    HtmlTree::isNamed(cell, "table") ? HtmlTree::afterwards(cell, row) : HtmlTree::next(cell, row);
            }
        }
        takeSpanning();
        return cells;
    }

private:
    struct Span
    {
        QString text;
        std::size_t rows = 0; ///< still to come
    };

    void add(Row& cells, Element cell)
    {
        const QString text = HtmlTree::text(cell, LongestCell);
        const std::size_t columns = HtmlTree::number(cell, "colspan", RestrictionsPage::MostColumns);
        const std::size_t rows = HtmlTree::number(cell, "rowspan", LongestSpan);
        for (std::size_t i = 0; i < columns && cells.size() < RestrictionsPage::MostColumns; ++i) {
            if (m_spans.size() <= cells.size())
                m_spans.resize(cells.size() + 1);
            m_spans[cells.size()] = {text, rows - 1};
            cells.push_back(text);
        }
    }

    std::vector<Span> m_spans; // by column
};

/// Which columns of a table hold what.
class TableColumns
{
public:
    /// The columns that this row names; nothing when it is no header: a site and its status are needed.
    static std::optional<TableColumns> of(const TableGrid::Row& row)
    {
        TableColumns found;
        for (const QString& cell : row)
            found.m_columns.push_back(columnOf(cell));
        const auto has = [&](Column column) {
            return std::find(found.m_columns.begin(), found.m_columns.end(), column) != found.m_columns.end();
        };
        return has(Column::Site) && has(Column::Status) ? std::optional(found) : std::nullopt;
    }

    SiteRow siteRow(const TableGrid::Row& row) const
    {
        SiteRow site;
        site.status = first(row, Column::Status);
        site.flow = first(row, Column::Flow);
        site.stamp = first(row, Column::Stamp);
        for (std::size_t i = 0; i < std::min(row.size(), m_columns.size()); ++i) {
            if (m_columns[i] == Column::Site && !row[i].isEmpty())
                site.sites.push_back(row[i]);
        }
        return site;
    }

private:
    QString first(const TableGrid::Row& row, Column column) const
    {
        const auto at = std::size_t(std::find(m_columns.begin(), m_columns.end(), column) - m_columns.begin());
        return at < row.size() && at < m_columns.size() ? row[at] : QString();
    }

    std::vector<Column> m_columns;
};

/// The rows behind a table's header. Rows of a table inside it are that one's own.
void readTable(Element table, std::size_t& rowsLeft, std::vector<SiteRow>& rows)
{
    TableGrid grid;
    std::optional<TableColumns> columns;
    Element element = HtmlTree::next(table, table);
    while (element && rowsLeft > 0) {
        if (HtmlTree::isNamed(element, "tr")) {
            --rowsLeft;
            const TableGrid::Row row = grid.read(element);
            if (!columns)
                columns = TableColumns::of(row);
            else if (SiteRow site = columns->siteRow(row); !site.sites.empty())
                rows.push_back(std::move(site));
        }
        const bool isPassed = HtmlTree::isNamed(element, "table") || HtmlTree::isNamed(element, "tr");
        element = isPassed ? HtmlTree::afterwards(element, table) : HtmlTree::next(element, table);
    }
}

bool isPage(const QByteArray& mediaType)
{
    return mediaType.isEmpty() || mediaType.startsWith("text/") || mediaType == "application/xhtml+xml" ||
           mediaType == "application/xml";
}

/// The charset that a page's own head names, in lower case; empty for none.
QByteArray charsetOfHead(const QByteArray& page)
{
    const HtmlTree head(page.left(LongestHead), HtmlTree::Text::AnyBytes);
    const Element root = head.root();
    for (Element element = root; element; element = HtmlTree::next(element, root)) {
        if (!HtmlTree::isNamed(element, "meta"))
            continue;
        QByteArray charset = HtmlTree::attribute(element, "charset").trimmed().toLower();
        if (charset.isEmpty() && HtmlTree::attribute(element, "http-equiv").toLower() == "content-type")
            charset = Fetched{{}, HtmlTree::attribute(element, "content")}.charset();
        if (!charset.isEmpty())
            return charset;
    }
    return {};
}

/// The page's own head is asked where neither a mark nor the header tells; a page that says nothing at all is UTF-8
/// where its bytes are, and else what most old pages are.
std::optional<QByteArray> pageAsUtf8(const Fetched& fetched)
{
    QByteArray charset = fetched.charset();
    if (charset.isEmpty() && !fetched.hasMark())
        charset = charsetOfHead(fetched.body);
    if (charset.isEmpty())
        charset = QByteArrayView(fetched.body).isValidUtf8() ? "utf-8" : "windows-1252";
    return bodyAsUtf8(fetched, charset);
}

} // namespace

std::shared_ptr<const RestrictionsPage> RestrictionsPage::read(const Fetched& fetched)
{
    const std::optional<QByteArray> utf8 = isPage(fetched.mediaType()) ? pageAsUtf8(fetched) : std::nullopt;
    if (!utf8)
        return nullptr;
    const HtmlTree tree(*utf8);
    const Element root = tree.root();
    if (!root)
        return nullptr;
    auto page = std::make_shared<RestrictionsPage>();
    std::size_t rowsLeft = MostRows;
    for (Element element = HtmlTree::next(root, root); element; element = HtmlTree::next(element, root)) {
        if (HtmlTree::isNamed(element, "table"))
            readTable(element, rowsLeft, page->m_rows);
    }
    return page;
}

const SiteRow* RestrictionsPage::find(QStringView site) const
{
    const QString wanted = site.toString().simplified();
    const auto isWanted = [&](const QString& name) { return name.compare(wanted, Qt::CaseInsensitive) == 0; };
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const SiteRow& candidate) {
        return std::any_of(candidate.sites.begin(), candidate.sites.end(), isWanted);
    });
    return row == m_rows.end() ? nullptr : &*row;
}

} // namespace zan::ecan
