#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace zan::host {

/// A window of a scheme, as somebody was looking at it.
struct SchemePlace
{
    QString scheme; ///< path of its file
    QString window; ///< key; empty: whatever comes first
};

/// The way that has led from scheme to scheme over sites of a map, for the way back.
class SchemeTrail
{
public:
    /// Longest way that is remembered; what lies farther back is forgotten.
    static constexpr std::size_t Longest = 100;

    bool isEmpty() const noexcept { return m_places.empty(); }
    void push(const SchemePlace& place);
    /// Where the last step began; nothing at the beginning of the way.
    std::optional<SchemePlace> last() const;
    void pop();

    /// The file that a site's SCHEME names: relative to the folder of its map, in the notation of any platform. Empty
    /// for a site without a scheme.
    static QString fileOf(const QString& scheme, const QString& mapFile);

private:
    std::vector<SchemePlace> m_places;
};

} // namespace zan::host
