#pragma once

#include <Qt>

namespace zan::surface {

/// The classic key code of a toolkit key: letters and digits as their capital characters, 13 Enter, 27 Esc, 37 to 40
/// the arrows, 112 on F1 and so on; 0 for a key that has none.
int classicKeyCode(Qt::Key key, bool onKeypad);
/// The toolkit's key of a classic code that is no character of the keypad; Qt::Key_unknown for a code that none has.
Qt::Key toolkitKey(int keyCode);
/// Sum of 1 Shift, 2 Ctrl, 4 Alt.
int classicShift(Qt::KeyboardModifiers modifiers);
/// 1 left, 2 right, 4 middle; 0 for others.
int classicButton(Qt::MouseButton button);

} // namespace zan::surface
