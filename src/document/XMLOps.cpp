#include "document/XMLOps.h"

#include "document/EditCount.h"
#include "document/Elements.h"
#include "document/Record.h"
#include "document/StoredDefault.h"
#include "document/XmlText.h"
#include "values/Convert.h"
#include "values/NumberText.h"

namespace zan::document {

namespace {

/// The document that elements are made in before they have a place, and how many use it; one per thread.
struct SharedDocument
{
    Node document;
    int users = 0;
    bool marks = true; ///< whether writes set CHANGED
    std::uint64_t edits = 0;
};

SharedDocument& shared()
{
    thread_local SharedDocument instance;
    return instance;
}

} // namespace

std::uint64_t editCount() noexcept
{
    return shared().edits;
}

void countEdit() noexcept
{
    if (shared().marks)
        ++shared().edits;
}

} // namespace zan::document

namespace zan::document::XMLOps {

namespace {

/// A value that the normal write stores by absence.
bool isAbsent(const QString& value)
{
    return value.isEmpty() || value == u"0";
}

/// The mark of a document element; null when there is none. It stands once, and near one end as a rule: first made
/// it is the last child. So a write to one of ten thousand controls does not walk past them all.
Node findMark(const Node& element, Name mark)
{
    Node::Record* front = element.record()->firstChild();
    Node::Record* back = element.record()->lastChild();
    for (; front && back; front = front->next, back = back->previous) {
        for (Node::Record* record : {front, back}) {
            if (record->name == mark && record->type == NodeType::Element)
                return Node(record);
        }
        if (front == back || front->next == back)
            break;
    }
    return {};
}

/// The document element that a node stands below; a node that is still in the shared document has none above it.
Node elementToMark(const Node& node)
{
    return node ? Node(node.record()->top()).documentElement() : Node();
}

/// Gives the child this text, a child that does not exist yet being made in the node's own document.
void store(Node node, Name name, const QString& value)
{
    if (Node child = node.child(name))
        child.setText(value);
    else
        node.appendChild(node.createElement(name, value));
}

/// Stores what a read gives where there is nothing, unless absence says it.
void storeDefault(const Node& node, Name name, const QString& value, bool force = false)
{
    if (!force && isAbsent(value))
        return;
    SetAttribute(node, name, value, force);
    setStoredDefault(node.child(name), true);
}

} // namespace

void SetAttribute(const Node& node, Name name, const QString& value, bool force)
{
    if (!node)
        return;
    // Forced, the text is written as it is, and the document counts as changed whatever stood there. Otherwise an
    // absent value removes the child, and an equal one is left alone.
    if (!force) {
        if (isAbsent(value)) {
            // COMPAT: a removal does not mark the document changed; a creation and a change do.
            if (const Node child = node.child(name)) {
                node.removeChild(child);
                countEdit();
            }
            return;
        }
        if (node.isChildText(name, value))
            return;
    }
    store(node, name, value);
    MarkChanged(node);
}

QString GetAttribute(const Node& node, Name name, const QString& defaultValue)
{
    // COMPAT: a null node gives an empty text and not the default.
    if (!node)
        return {};
    QString text;
    if (node.childText(name, text))
        return text;
    // COMPAT: reading what is missing stores the default, which marks the document changed, unless the default
    //    is stored by absence.
    storeDefault(node, name, defaultValue);
    return defaultValue;
}

void MarkChanged(const Node& node)
{
    static const QString set = QStringLiteral("-1");
    if (!shared().marks)
        return;
    countEdit();
    const Node element = elementToMark(node);
    if (!element)
        return;
    Node mark = findMark(element, element::Changed);
    if (!mark)
        Node(element).appendChild(element.createElement(element::Changed, set));
    else if (mark.text() != set)
        mark.setText(set);
}

bool IsMarkedChanged(const Node& node)
{
    const Node element = elementToMark(node);
    return element && findMark(element, element::Changed);
}

void UnmarkChanged(const Node& node)
{
    const Node element = elementToMark(node);
    if (element)
        element.removeChild(findMark(element, element::Changed));
}

Marking::Marking(Mode mode) noexcept
    : m_before(shared().marks)
{
    shared().marks = mode == On;
}

Marking::~Marking()
{
    shared().marks = m_before;
}

QString GetText(const Node& node, Name name, const QString& defaultValue, bool force)
{
    QString text = defaultValue;
    if (node && !node.childText(name, text))
        storeDefault(node, name, defaultValue, force);
    return text;
}

void SetText(const Node& node, Name name, const QString& value, const QString& defaultValue, bool force)
{
    if (!node)
        return;
    if (force || value != defaultValue || node.child(name))
        store(node, name, value);
    MarkChanged(node); // COMPAT: also when nothing was written
}

double GetNumber(const Node& node, Name name, double defaultValue, bool force)
{
    if (!node)
        return defaultValue;
    if (const std::optional<double> number = node.childNumber(name))
        return *number;
    if (defaultValue != 0 || force)
        storeDefault(node, name, values::documentText(defaultValue), force);
    return defaultValue;
}

void SetNumber(const Node& node, Name name, double value, double defaultValue, bool force)
{
    if (!node)
        return;
    if (force || value != defaultValue || node.child(name))
        store(node, name, values::documentText(value));
    MarkChanged(node); // COMPAT: also when nothing was written
}

Node CreateElement(Name name)
{
    return shared().document.createElement(name);
}

Node LoadDocument(const QString& xml)
{
    return parseXml(xml).document.firstChild();
}

Node NewDocument()
{
    // Never stored: a document that is saved gets the writer's declaration.
    Node document = Node::newDocument();
    Node::Record* instruction = document.record()->add(NodeType::ProcessingInstruction, Name("xml"));
    instruction->text = QStringLiteral("version = \"1.0\" encoding=\"windows-1252\"");
    return document;
}

void OpenXML()
{
    SharedDocument& instance = shared();
    if (instance.users++ == 0)
        instance.document = NewDocument();
}

void CloseXML()
{
    SharedDocument& instance = shared();
    if (instance.users > 0 && --instance.users == 0)
        instance.document = Node();
}

} // namespace zan::document::XMLOps
