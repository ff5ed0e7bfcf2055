#pragma once

#include "document/Record.h"
#include "document/Tape.h"

#include <algorithm>
#include <array>
#include <optional>

namespace zan::document {

/// A node to be read, wherever it is: a record of its own, or still nothing but an entry of a tape. Walking makes no
/// records. Valid while the tree stays as it is.
class Place
{
public:
    explicit Place(Node::Record* record) noexcept
        : m_record(record)
        , m_tape(record->folded ? &record->tape() : nullptr)
        , m_entry(record->entry)
    {}
    Place(const Tape& tape, std::uint32_t entry) noexcept
        : m_tape(&tape)
        , m_entry(entry)
    {}

    NodeType type() const noexcept { return m_record ? m_record->type : m_tape->type(m_entry); }
    Name name() const noexcept { return m_record ? m_record->name : m_tape->name(m_entry); }
    bool hasChildren() const noexcept
    {
        return m_tape ? m_tape->firstChild(m_entry) != m_tape->end(m_entry) : m_record->first != nullptr;
    }
    /// The text of a leaf element, a text, a comment, an instruction.
    QString ownText() const { return m_tape ? m_tape->text(m_entry) : m_record->text; }
    /// The name as it stands in the bytes, when it does.
    QByteArrayView plainName() const noexcept { return m_tape ? m_tape->rawName(m_entry) : QByteArrayView(); }
    /// The text as it stands in the bytes, when it is on a tape and XML is written the same.
    QByteArrayView plainBytes() const noexcept
    {
        if (!m_tape || (m_tape->at(m_entry).marks & (Tape::Coded | Tape::Angle)) != 0)
            return {};
        return m_tape->rawText(m_entry);
    }
    /// Whether a leaf that is trivial on its tape has this text; decodes nothing.
    bool isPlainText(QStringView text) const
    {
        noteRead();
        return QLatin1StringView(m_tape->rawText(m_entry)) == text;
    }
    /// What is read of a text as short as that of a number.
    using Room = std::array<char16_t, Tape::TrivialSize>;
    /// The text of a leaf that is trivial on its tape, put into the caller's room; nothing for any other. Noting that
    /// it is read is the caller's business.
    std::optional<QStringView> trivialText(Room& room) const
    {
        if (!m_tape || !m_tape->isTrivial(m_entry))
            return std::nullopt;
        const QByteArrayView raw = m_tape->rawText(m_entry);
        std::copy(raw.begin(), raw.end(), room.begin());
        return QStringView(room.data(), raw.size());
    }
    bool hasOwnText() const noexcept { return m_tape ? m_tape->at(m_entry).size > 0 : !m_record->text.isEmpty(); }

    /// Calls `visit(Place)` for each child in order, until it returns false. Returns whether none did.
    template <class Visit>
    bool forEachChild(Visit&& visit) const;
    /// Calls `visit(name, value)` for each attribute, both as they are decoded.
    template <class Visit>
    void forEachAttribute(Visit&& visit) const;

    /// The text of the node and of everything below it.
    QString text() const;
    /// Notes the node as read.
    void noteRead() const noexcept;
    /// The same for everything below it too.
    void noteReadAll() const noexcept;
    /// Levels of elements from this node down.
    int height() const noexcept;

private:
    void addText(QString& text) const;

    Node::Record* m_record = nullptr;
    const Tape* m_tape = nullptr; ///< null when the content is the record's own
    std::uint32_t m_entry = 0;
};

template <class Visit>
bool Place::forEachChild(Visit&& visit) const
{
    if (!m_tape) {
        for (Node::Record* child = m_record->first; child; child = child->next) {
            if (!visit(Place(child)))
                return false;
        }
        return true;
    }
    // Children that have become records may have changed since, though their parent has not.
    Node::Record* made = m_record ? m_record->first : nullptr;
    const std::uint32_t end = m_tape->end(m_entry);
    for (std::uint32_t entry = m_tape->firstChild(m_entry); entry != end; entry = m_tape->next(entry)) {
        const bool isMade = made && made->entry == entry;
        if (!visit(isMade ? Place(made) : Place(*m_tape, entry)))
            return false;
        if (isMade)
            made = made->next;
    }
    return true;
}

template <class Visit>
void Place::forEachAttribute(Visit&& visit) const
{
    if (m_tape) {
        const std::uint32_t end = m_tape->firstChild(m_entry);
        for (std::uint32_t entry = m_entry + 1; entry != end; ++entry)
            visit(m_tape->name(entry).text(), m_tape->text(entry));
    } else if (m_record->attributes) {
        for (const Node::Attribute& attribute : *m_record->attributes)
            visit(attribute.name, attribute.value);
    }
}

} // namespace zan::document
