#include "document/WatchedChild.h"

#include "document/Record.h"

namespace zan::document {

bool watchedChildText(const Node& parent, Name name, const ChangeCounter& counter, QString& text)
{
    if (!parent || !parent.record()->watchChild(name, counter.bit()))
        return false;
    return parent.childText(name, text);
}

} // namespace zan::document
