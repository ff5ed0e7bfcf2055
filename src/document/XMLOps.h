#pragma once

#include "document/Node.h"

#include <QString>

namespace zan::document::XMLOps {

// Values in and out of the window document: an "attribute" is a child element with a text. A value of "0" or no
// text is stored by absence unless force is given; a read of a missing value stores its default.

/// Writes a child's text. Without force an empty value or "0" removes the child, and does not mark the document
/// changed; an equal value writes nothing. With force the text is written as it is. Nothing on a null node.
void SetAttribute(const Node& node, Name name, const QString& value, bool force = false);
/// A child's text. A missing child stores the default (unless it is empty or "0") and gives it back. A null node
/// gives an empty text whatever the default.
QString GetAttribute(const Node& node, Name name, const QString& defaultValue = {});

/// Sets CHANGED to -1 in the document element of the node's document; nothing when there is none.
void MarkChanged(const Node& node);
/// Whether the document element of the node's document has a CHANGED.
bool IsMarkedChanged(const Node& node);
/// Takes CHANGED away again, for who finds that nothing was changed after all.
void UnmarkChanged(const Node& node);

/// Whether writes mark their document, for as long as the object lives; one inside another has its own way. What a
/// scan or the default of a read stores is no change that anybody would miss: nobody is to be asked about it.
class Marking
{
public:
    enum Mode : bool { Off, On };
    explicit Marking(Mode mode) noexcept;
    ~Marking();
    Marking(const Marking&) = delete;
    Marking& operator=(const Marking&) = delete;

private:
    bool m_before;
};

QString GetText(const Node& node, Name name, const QString& defaultValue, bool force);
void SetText(const Node& node, Name name, const QString& value, const QString& defaultValue, bool force);
double GetNumber(const Node& node, Name name, double defaultValue, bool force);
void SetNumber(const Node& node, Name name, double value, double defaultValue, bool force);

/// A new element of the shared document, which exists while anybody has it open.
Node CreateElement(Name name);
/// First child of a new document read from this text; null when it cannot be read.
Node LoadDocument(const QString& xml);
/// A new document that holds nothing but its processing instruction.
Node NewDocument();
/// Counts one user of the shared document; the first one creates it.
void OpenXML();
/// Takes one user off; the last one releases the shared document. Never below zero.
void CloseXML();

} // namespace zan::document::XMLOps
