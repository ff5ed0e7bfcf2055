#include "document/Tape.h"

#include "document/Record.h"
#include "document/TapeText.h"

#include <array>
#include <cstring>

namespace zan::document {

/// Short texts decoded lately on this thread, so that the "-1" of ten thousand elements is decoded once and is one
/// text.
class Tape::ShortTexts
{
public:
    static ShortTexts& ofThread()
    {
        // On the heap: a library whose threads' own memory is large cannot be loaded by a program that runs already.
        thread_local const auto texts = std::make_unique<ShortTexts>();
        return *texts;
    }
    const QString& text(const char* raw, std::size_t size);

private:
    struct Known
    {
        std::uint64_t bytes[2] = {}; ///< of the text, filled up with zeros
        QString text;
    };
    std::array<Known, 512> m_known;
};

const QString& Tape::ShortTexts::text(const char* raw, std::size_t size)
{
    std::uint64_t bytes[2] = {};
    std::memcpy(bytes, raw, size);
    const std::uint64_t mixed = (bytes[0] ^ (bytes[1] * 0x9E3779B97F4A7C15u)) * 0xD6E8FEB86659FD93u;
    Known& found = m_known[(mixed >> 32) % m_known.size()];
    if (found.bytes[0] != bytes[0] || found.bytes[1] != bytes[1]) {
        found.text = QString::fromLatin1(raw, qsizetype(size));
        std::memcpy(found.bytes, bytes, sizeof bytes);
    }
    return found.text;
}

Tape::Tape(const QByteArray& utf8)
    : m_bytes(utf8)
    , m_pool(*this)
    , m_shortTexts(ShortTexts::ofThread())
{
    if (m_bytes.capacity() < m_bytes.size()) // somebody else's memory, which may go before the tape
        m_bytes = QByteArray(utf8.constData(), utf8.size());
}

std::uint16_t Tape::addName(Name name, QByteArrayView raw)
{
    m_names.push_back({name, name.localPart(), raw});
    return std::uint16_t(m_names.size() - 1);
}

Node Tape::documentOf(std::unique_ptr<Tape> tape)
{
    Node::Record* const record = tape->makeRecord(0);
    (void)tape.release();
    return Node(record);
}

NodeType Tape::type(std::uint32_t entry) const noexcept
{
    constexpr std::array Types{
        NodeType::Document, NodeType::Element, NodeType::Text, NodeType::Comment, NodeType::ProcessingInstruction,
        NodeType::None};
    return Types[std::size_t(m_entries[entry].kind)];
}

bool Tape::isTrivial(std::uint32_t entry) const noexcept
{
    const Entry& read = m_entries[entry];
    return read.size < TrivialSize && (read.marks & (Coded | Wide)) == 0 && firstChild(entry) == end(entry);
}

QString Tape::text(std::uint32_t entry) const
{
    const Entry& read = m_entries[entry];
    if (read.size == 0)
        return {};
    const char* const raw = m_bytes.constData() + read.begin;
    if ((read.marks & (Coded | Wide)) == 0)
        return read.size < TrivialSize ? m_shortTexts.text(raw, read.size)
                                       : QString::fromLatin1(raw, qsizetype(read.size));
    const TextRule rule = read.kind == Kind::Attribute                            ? TextRule::Attribute
                          : read.kind == Kind::Element || read.kind == Kind::Text ? TextRule::Text
                                                                                  : TextRule::Plain;
    return decodeText({raw, qsizetype(read.size)}, rule);
}

std::uint32_t Tape::child(std::uint32_t parent, Name elementName) const noexcept
{
    const Entry* const entries = m_entries.data();
    const KnownName* const names = m_names.data();
    const std::uint32_t behind = end(parent);
    for (std::uint32_t entry = firstChild(parent); entry != behind; entry += entries[entry].span) {
        if (names[entries[entry].name].name == elementName && entries[entry].kind == Kind::Element)
            return entry;
    }
    return 0;
}

Node::Record* Tape::makeRecord(std::uint32_t entry) const
{
    const Entry& read = m_entries[entry];
    const bool isNamed = read.kind == Kind::Element || read.kind == Kind::Instruction;
    Node::Record* const record = m_pool.make(type(entry), isNamed ? name(entry) : Name());
    ++m_users;
    record->entry = entry;
    record->folded = read.size > 0 || read.span > 1;
    record->watchers = read.watchers;
    return record;
}

void Tape::release() const noexcept
{
    if (--m_users == 0)
        delete this;
}

} // namespace zan::document
