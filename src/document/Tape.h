#pragma once

#include "document/RecordPool.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace zan::document {

/// A text that has been read: its bytes, and one entry for each of its nodes in document order, sixteen bytes each.
///
/// Most nodes of a document are never looked at before the next save, so none is made of them here. An entry says
/// where in the bytes its text stands; a record is made of it when somebody wants a handle to the node, and a text
/// is decoded when somebody reads it. What is on a tape has been checked from end to end: decoding cannot fail.
///
/// A tape lives as long as any record that was made of it, and its bytes with it.
class Tape
{
public:
    enum class Kind : std::uint8_t { Document, Element, Text, Comment, Instruction, Attribute };

    // What is known of a text in advance.
    static constexpr std::uint8_t Coded = 1; ///< it holds a reference, a carriage return or a CDATA section
    static constexpr std::uint8_t Wide = 2;  ///< it holds bytes beyond ASCII
    static constexpr std::uint8_t Angle = 4; ///< it holds a > as it stands

    struct Entry
    {
        std::uint32_t begin = 0; ///< place of the text in the bytes
        std::uint32_t size = 0;  ///< bytes of the text of all but documents and elements with children
        std::uint32_t span = 1;  ///< entries of the node: itself, its attributes, everything below it
        std::uint16_t name = 0;  ///< place in the list of names
        Kind kind : 4 = Kind::Document;
        std::uint8_t marks : 4 = 0;
        std::uint8_t watchers = 0; ///< as those of a record, for the record that may be made of it
    };
    static constexpr std::size_t MostNames = 0x10000;
    /// Plain texts of fewer bytes than this are kept once for all of their readers.
    static constexpr std::size_t TrivialSize = 16;

    /// The bytes are sound UTF-8 of less than 4 GB.
    explicit Tape(const QByteArray& utf8);
    Tape(const Tape&) = delete;
    Tape& operator=(const Tape&) = delete;

    // To the reader that fills it ------------------------------------------------------------------------------

    const char* bytes() const noexcept { return m_bytes.constData(); }
    qsizetype size() const noexcept { return m_bytes.size(); }
    std::vector<Entry>& entries() noexcept { return m_entries; }
    std::uint16_t addName(Name name, QByteArrayView raw);
    std::size_t nameCount() const noexcept { return m_names.size(); }
    /// A handle to the document, entry 0. Its record owns the tape from then on.
    static Node documentOf(std::unique_ptr<Tape> tape);

    // To records and walkers -----------------------------------------------------------------------------------

    const Entry& at(std::uint32_t entry) const noexcept { return m_entries[entry]; }
    /// First entry of an element's attributes, which end where its children begin.
    static std::uint32_t firstAttribute(std::uint32_t entry) noexcept { return entry + 1; }
    std::uint32_t firstChild(std::uint32_t entry) const noexcept
    {
        const std::uint32_t behind = end(entry);
        for (++entry; entry != behind && m_entries[entry].kind == Kind::Attribute;)
            ++entry;
        return entry;
    }
    std::uint32_t end(std::uint32_t entry) const noexcept { return entry + m_entries[entry].span; }
    std::uint32_t next(std::uint32_t entry) const noexcept { return end(entry); }
    NodeType type(std::uint32_t entry) const noexcept;
    Name name(std::uint32_t entry) const noexcept { return m_names[m_entries[entry].name].name; }
    /// The name without its prefix.
    Name localName(std::uint32_t entry) const noexcept { return m_names[m_entries[entry].name].local; }
    /// The name as it stands in the bytes.
    QByteArrayView rawName(std::uint32_t entry) const noexcept { return rawNameAt(m_entries[entry].name); }
    QByteArrayView rawNameAt(std::uint16_t place) const noexcept { return m_names[place].raw; }
    QByteArrayView rawText(std::uint32_t entry) const noexcept
    {
        return {m_bytes.constData() + m_entries[entry].begin, qsizetype(m_entries[entry].size)};
    }
    QString text(std::uint32_t entry) const;
    /// Whether the entry is a leaf with a text so plain and short that decoding it costs no more than keeping it.
    bool isTrivial(std::uint32_t entry) const noexcept;
    bool isElement(std::uint32_t entry) const noexcept { return m_entries[entry].kind == Kind::Element; }
    bool isElement(std::uint32_t entry, Name elementName) const noexcept
    {
        return isElement(entry) && name(entry) == elementName;
    }
    /// The first child element of this name; 0 when there is none.
    std::uint32_t child(std::uint32_t parent, Name elementName) const noexcept;
    void watch(std::uint32_t entry, std::uint8_t watchers) const noexcept
    {
        m_entries[entry].watchers = std::uint8_t(m_entries[entry].watchers | watchers);
    }

    /// A record of an entry, without a place in the tree and with everything below it still on the tape.
    Node::Record* makeRecord(std::uint32_t entry) const;
    /// One record less; the last one takes the tape along.
    void release() const noexcept;

private:
    class ShortTexts;
    struct KnownName
    {
        Name name;
        Name local;
        QByteArrayView raw;
    };

    QByteArray m_bytes;
    std::vector<KnownName> m_names;
    mutable std::vector<Entry> m_entries; // mutable for the watchers
    mutable RecordPool m_pool;
    ShortTexts& m_shortTexts;          ///< of the thread that the document belongs to
    mutable std::uint32_t m_users = 0; ///< records that live
};

static_assert(sizeof(Tape::Entry) == 16);

} // namespace zan::document
