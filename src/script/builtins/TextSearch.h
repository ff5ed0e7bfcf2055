#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <vector>

namespace zan::script {

/// Looks for one text in others. Takes time in proportion to what is read through, whatever the texts are: it compares
/// at each place as long as that goes well, and keeps a table of the wanted text's borders from where it does not.
class TextSearch
{
public:
    enum class Direction : std::uint8_t { Forward, Backward };

    /// The wanted text must outlive the search.
    TextSearch(QStringView wanted, Qt::CaseSensitivity sensitivity, Direction direction = Direction::Forward);

    TextSearch(const TextSearch&) = delete;
    TextSearch& operator=(const TextSearch&) = delete;

    /// Forward: the first place at or after this one where the wanted text stands in the text. -1 when it does not,
    /// and always for a wanted text of no characters.
    qsizetype find(QStringView text, qsizetype from = 0);
    /// Backward: the last place where the wanted text stands in the text, or -1.
    qsizetype findLast(QStringView text);

private:
    template <class Reader>
    qsizetype search(const Reader& text, qsizetype from);
    template <class Reader>
    qsizetype searchByBorders(const Reader& text, qsizetype from);
    void findBorders();

    QString m_prepared;   ///< the wanted text in the order of reading and folded, where that makes a difference
    QStringView m_wanted; ///< as it is compared
    bool m_ignoresCase;
    std::vector<std::int32_t> m_borders; ///< length of the longest start that ends at each place; made when needed
};

} // namespace zan::script
