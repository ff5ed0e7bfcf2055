#pragma once

#include <QByteArray>

#include <optional>

namespace zan::ecan {

/// What a server has sent.
struct Fetched
{
    QByteArray body;
    QByteArray contentType; ///< the header; empty for none

    /// The type without its parameters, in lower case.
    QByteArray mediaType() const;
    /// The charset that the header names, in lower case; empty for none.
    QByteArray charset() const;
    /// Whether the body itself says by its first bytes how it is encoded. That counts more than any header.
    bool hasMark() const;
};

/// A body as UTF-8, in the encoding that its mark or else this charset says. Nothing for an encoding that is not known.
std::optional<QByteArray> bodyAsUtf8(const Fetched& fetched, const QByteArray& charset);

} // namespace zan::ecan
