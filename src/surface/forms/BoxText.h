#pragma once

#include <QString>

class QWidget;

namespace zan::surface {

/// A text as a box shows it: as much as about half a screen holds, with a word that there is more, and with places to
/// break a line in words that are wider than a box. A text of a script may have any length, and the toolkit would lay
/// out and show all of it. The owner tells which screen; null for the first.
QString textForBox(const QString& text, const QWidget* owner);
/// The same for a title: one line, cut where no frame shows more.
QString titleForBox(const QString& title);

} // namespace zan::surface
