#pragma once

#include <QStringView>

#include <span>

namespace zan::window {

/// What a new live control takes from the window at its creation.
enum Styling : unsigned {
    NoStyling = 0,
    CopiesFont = 1,
    CopiesBackColor = 2,
    CopiesForeColor = 4,
    ClearsCaption = 8,
    ClearsText = 16,
    ShowsBorderWhenUnlocked = 32,
    OwnSettings = 64, ///< UseWindowSettings is false from the beginning
    TakesLogger = 128,
};

/// One type of control: its key in documents, its entry in the new-control menu, the surface's array that holds its
/// elements, and the design-time rectangle of the array's template in twips.
struct ControlType
{
    QStringView key;
    QStringView menuCaption; ///< empty: not offered in the menu
    QStringView arrayName;
    float left;
    float top;
    float width;
    float height;
    unsigned styling;
};

/// All types; the rows with a caption are in the menu's order.
std::span<const ControlType> controlTypes();
/// The row of a type key, compared exactly; null for an unknown key.
const ControlType* findControlType(QStringView key);

/// One entry of the new-control menu.
struct NewControlMenuItem
{
    QStringView caption;
    QStringView typeKey;
};

} // namespace zan::window
