#include "document/XMLOps.h"

#include "document/Record.h"
#include "document/XmlText.h"
#include "values/Convert.h"
#include "values/NumberText.h"

namespace zan::document::XMLOps {

namespace {

/// The document that elements are made in before they have a place, and how many use it; one per thread.
struct SharedDocument
{
    Node document;
    int users = 0;
};

SharedDocument& shared()
{
    thread_local SharedDocument instance;
    return instance;
}

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

/// Gives the child this text, a child that does not exist yet being made in the node's own document.
void store(Node node, Name name, const QString& value)
{
    if (Node child = node.child(name))
        child.setText(value);
    else
        node.appendChild(node.createElement(name, value));
}

} // namespace

void SetAttribute(const Node& node, Name name, const QString& value, bool force)
{
    // 1. A null node takes nothing.
    if (!node)
        return;
    // 2. Forced: the text is written as it is, and the document counts as changed whatever stood there.
    // 3. Normal: an absent value removes the child, an equal one is left alone.
    if (!force) {
        if (isAbsent(value)) {
            // COMPAT: a removal does not mark the document changed; a creation and a change do.
            if (const Node child = node.child(name))
                node.removeChild(child);
            return;
        }
        QString current;
        if (node.childText(name, current) && current == value)
            return;
    }
    // 4. A child that is missing is made, and the document is marked.
    store(node, name, value);
    MarkChanged(node);
}

QString GetAttribute(const Node& node, Name name, const QString& defaultValue)
{
    // 1. COMPAT: a null node gives an empty text and not the default.
    if (!node)
        return {};
    // 2. The child's text.
    QString text;
    if (node.childText(name, text))
        return text;
    // 3. COMPAT: reading what is missing stores the default, which marks the document changed, unless the default
    //    is stored by absence.
    SetAttribute(node, name, defaultValue, false);
    return defaultValue;
}

void MarkChanged(const Node& node)
{
    static const Name changed("CHANGED");
    static const QString set = QStringLiteral("-1");
    // 1., 2. The document element; a node that is still in the shared document has none above it.
    const Node element = node ? Node(node.record()->top()).documentElement() : Node();
    if (!element)
        return;
    // 3., 4. Its mark, made where it is missing.
    Node mark = findMark(element, changed);
    if (!mark)
        Node(element).appendChild(element.createElement(changed, set));
    else if (mark.text() != set)
        mark.setText(set);
}

QString GetText(const Node& node, Name name, const QString& defaultValue, bool force)
{
    QString text = defaultValue;
    if (node && !node.childText(name, text))
        SetAttribute(node, name, defaultValue, force);
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
    QString text;
    if (node.childText(name, text))
        return values::val(text);
    SetAttribute(node, name, values::documentText(defaultValue), force);
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
