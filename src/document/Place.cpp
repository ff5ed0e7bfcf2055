#include "document/Place.h"

#include <algorithm>

namespace zan::document {

QString Place::text() const
{
    if (!hasChildren()) {
        noteRead();
        return ownText();
    }
    QString text;
    addText(text);
    return text;
}

// Recursion is safe below: a tree has no more than Node::DeepestLevel levels.

void Place::addText(QString& text) const
{
    noteRead();
    if (type() == NodeType::Comment || type() == NodeType::ProcessingInstruction)
        return;
    if (hasOwnText())
        text += ownText();
    forEachChild([&](const Place& child) {
        child.addText(text);
        return true;
    });
}

void Place::noteRead() const noexcept
{
    const std::uint8_t bit = ReadRecorder::activeBit();
    if (bit == 0)
        return;
    if (m_record)
        m_record->watchers |= bit;
    else
        m_tape->watch(m_entry, bit);
}

void Place::noteReadAll() const noexcept
{
    if (ReadRecorder::activeBit() == 0)
        return;
    noteRead();
    forEachChild([](const Place& child) {
        child.noteReadAll();
        return true;
    });
}

int Place::height() const noexcept
{
    int below = 0;
    forEachChild([&](const Place& child) {
        below = std::max(below, child.height());
        return true;
    });
    return below + (type() == NodeType::Element ? 1 : 0);
}

} // namespace zan::document
