#include "document/Node.h"

#include "document/Place.h"
#include "document/Record.h"
#include "document/XmlEncoding.h"
#include "document/XmlNames.h"
#include "document/XmlWriter.h"
#include "values/Convert.h"

#include <algorithm>

namespace zan::document {

namespace {

using Record = Node::Record;

Record* firstElement(Record* record)
{
    while (record && record->type != NodeType::Element)
        record = record->nextSibling();
    return record;
}

Record* findChild(Record* parent, Name name)
{
    if (!parent)
        return nullptr;
    parent->noteRead();
    return parent->child(name);
}

QString textOf(Record* record)
{
    const Place place(record);
    if (record->folded && !place.hasChildren() && !record->tape().isTrivial(record->entry)) {
        record->unfold(); // decoded once and kept
        return Place(record).text();
    }
    return place.text();
}

/// The record, noted as read with its list of children; null for null.
Record* readList(Record* record) noexcept
{
    if (record)
        record->noteRead();
    return record;
}

/// The record, noted as read with its place among its siblings; null for null.
Record* readPlace(Record* record) noexcept
{
    if (record && record->attached)
        record->up->noteRead();
    return readList(record);
}

/// Moves a record that is out of every list of siblings to its document as a detached root, or frees it when
/// nobody holds anything of it. The caller holds a handle to the former parent.
void detach(Record* child, Record* parent, Record* document) noexcept
{
    if (child->references == 0) {
        child->destroy();
        return;
    }
    child->up = document;
    document->retain();
    parent->release();
}

/// Levels of elements that stand in the tree up to and including this record.
int levelOf(const Record* record) noexcept
{
    int level = 0;
    for (; record->type == NodeType::Element; record = record->up) {
        ++level;
        if (!record->attached)
            break;
    }
    return level;
}

bool isBelow(const Record* record, const Record* ancestor) noexcept
{
    for (; record; record = record->attached ? record->up : nullptr) {
        if (record == ancestor)
            return true;
    }
    return false;
}

bool accepts(Record* parent, Record* child)
{
    if (parent->type == NodeType::Element)
        return child->type != NodeType::Document;
    if (parent->type != NodeType::Document || child->type == NodeType::Document || child->type == NodeType::Text)
        return false;
    // A document has one element.
    const Record* element = firstElement(parent->firstChild());
    return child->type != NodeType::Element || !element || element == child;
}

} // namespace

Node::Node(Record* record) noexcept
    : m_record(record)
{
    if (m_record)
        m_record->retain();
}

Node::Node(const Node& other) noexcept
    : m_record(other.m_record)
{
    if (m_record)
        ++m_record->references; // referenced already: nothing to climb for
}

Node::Node(Node&& other) noexcept
    : m_record(std::exchange(other.m_record, nullptr))
{}

Node::~Node()
{
    if (m_record)
        m_record->release();
}

Node& Node::operator=(Node other) noexcept
{
    std::swap(m_record, other.m_record);
    return *this;
}

NodeType Node::type() const noexcept
{
    return m_record ? m_record->type : NodeType::None;
}

Name Node::name() const noexcept
{
    return m_record ? m_record->name : Name();
}

QString Node::text() const
{
    return m_record ? textOf(m_record) : QString();
}

void Node::setText(const QString& text) const
{
    if (!m_record || m_record->type == NodeType::Document)
        return;
    const QString kept = text; // may be the text of something that goes now
    m_record->dropContent();
    Record* document = m_record->first ? m_record->top() : nullptr;
    while (Record* child = m_record->first) {
        m_record->unlink(child);
        detach(child, m_record, document);
    }
    m_record->text = kept;
    m_record->isDefault = false;
    m_record->noteChange();
}

Node Node::parent() const noexcept
{
    const Record* record = readList(m_record);
    return Node(record && record->attached ? record->up : nullptr);
}

Node Node::ownerDocument() const noexcept
{
    if (!m_record)
        return {};
    for (Record* record = m_record; record; record = record->up)
        record->noteRead();
    return Node(m_record->top());
}

Node Node::documentElement() const noexcept
{
    return Node(type() == NodeType::Document ? firstElement(readList(m_record)->firstChild()) : nullptr);
}

Node Node::firstChild() const noexcept
{
    return Node(m_record ? readList(m_record)->firstChild() : nullptr);
}

Node Node::nextSibling() const noexcept
{
    return Node(m_record ? readPlace(m_record)->nextSibling() : nullptr);
}

Node Node::lastChild() const noexcept
{
    return Node(m_record ? readList(m_record)->lastChild() : nullptr);
}

Node Node::previousSibling() const noexcept
{
    return Node(m_record ? readPlace(m_record)->previousSibling() : nullptr);
}

Node Node::firstChildElement() const noexcept
{
    return Node(m_record ? firstElement(readList(m_record)->firstChild()) : nullptr);
}

Node Node::nextSiblingElement() const noexcept
{
    return Node(m_record ? firstElement(readPlace(m_record)->nextSibling()) : nullptr);
}

Node Node::child(Name name) const noexcept
{
    return Node(findChild(m_record, name));
}

std::vector<Node> Node::children(Name name) const
{
    std::vector<Node> found;
    for (Record* child = m_record ? readList(m_record)->firstChild() : nullptr; child; child = child->next) {
        if (child->name == name && child->type == NodeType::Element)
            found.emplace_back(child);
    }
    return found;
}

std::size_t Node::childElementCount() const noexcept
{
    std::size_t count = 0;
    if (m_record) {
        Place(readList(m_record)).forEachChild([&](const Place& child) {
            count += child.type() == NodeType::Element;
            return true;
        });
    }
    return count;
}

template <class Plain, class Any>
bool Node::readChild(Name name, Plain&& plain, Any&& any) const
{
    if (m_record && m_record->folded) {
        m_record->noteRead();
        const Tape& tape = m_record->tape();
        const std::uint32_t entry = tape.child(m_record->entry, name);
        if (entry == 0)
            return false;
        if (tape.isTrivial(entry) && !m_record->madeChildAt(entry))
            return plain(Place(tape, entry));
    }
    Record* const found = findChild(m_record, name);
    return found && any(textOf(found));
}

bool Node::childText(Name name, QString& text) const
{
    return readChild(
        name,
        [&](const Place& leaf) {
            leaf.noteRead();
            text = leaf.ownText();
            return true;
        },
        [&](const QString& found) {
            text = found;
            return true;
        });
}

std::optional<double> Node::childNumber(Name name) const
{
    std::optional<double> number;
    const auto take = [&](QStringView text) {
        number = values::val(text);
        return true;
    };
    readChild(
        name,
        [&](const Place& leaf) {
            leaf.noteRead();
            Place::Room room;
            return take(*leaf.trivialText(room));
        },
        take);
    return number;
}

bool Node::isChildText(Name name, QStringView text) const
{
    return readChild(
        name, [&](const Place& leaf) { return leaf.isPlainText(text); },
        [&](const QString& found) { return found == text; });
}

bool Node::appendChild(const Node& child) const
{
    Record* moved = child.m_record;
    if (!m_record || !moved || !accepts(m_record, moved) || isBelow(m_record, moved) ||
        levelOf(m_record) + Place(moved).height() > DeepestLevel)
        return false;
    m_record->separateText();
    Record* from = moved->up;
    if (moved->attached)
        from->unlink(moved);
    m_record->link(moved);
    m_record->retain(); // by the child, which has a handle
    from->release();    // its former parent or document may end here
    return true;
}

bool Node::insertBefore(const Node& child, const Node& before) const
{
    if (before && (before.parent() != *this || before == child))
        return before == child && child.parent() == *this;
    if (!appendChild(child))
        return false;
    if (before) {
        m_record->unlink(child.m_record);
        m_record->linkBefore(child.m_record, before.m_record);
    }
    return true;
}

bool Node::removeChild(const Node& child) const
{
    Record* removed = child.m_record;
    if (!m_record || !removed || !removed->attached || removed->up != m_record)
        return false;
    m_record->unlink(removed);
    detach(removed, m_record, m_record->top());
    return true;
}

Node Node::createElement(Name name, const QString& text) const
{
    if (!m_record || !isXmlName(name.text()))
        return {};
    auto* element = new Record(NodeType::Element, name);
    element->text = text;
    element->up = m_record->top();
    return Node(element);
}

QString Node::xml() const
{
    if (!m_record)
        return {};
    Place(m_record).noteReadAll();
    return fromUtf8(XmlWriter(XmlWriter::Layout::OneLine).write(m_record));
}

const std::vector<Node::Attribute>& Node::attributes() const noexcept
{
    static const std::vector<Attribute> none;
    Record* record = readList(m_record);
    if (record)
        record->unfold();
    return record && record->attributes ? *record->attributes : none;
}

void Node::setAttribute(const QString& name, const QString& value) const
{
    if (type() != NodeType::Element || !isXmlName(name))
        return;
    m_record->unfold();
    if (!m_record->attributes)
        m_record->attributes = std::make_unique<std::vector<Attribute>>();
    auto& all = *m_record->attributes;
    const auto same = std::find_if(all.begin(), all.end(), [&](const Attribute& one) { return one.name == name; });
    if (same != all.end())
        same->value = value;
    else
        all.push_back({name, value});
    m_record->isDefault = false;
    m_record->noteChange();
}

Node Node::newDocument()
{
    return Node(new Record(NodeType::Document));
}

void Node::watch(const ChangeCounter& counter) const noexcept
{
    if (m_record)
        m_record->watchers |= counter.bit();
}

} // namespace zan::document
