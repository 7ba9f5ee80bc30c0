#pragma once
#include <QKeyEvent>
#include <optional>
#include <string>

namespace drav {

// The one-character key text that KeyDown handlers see, whose Asc is the
// key's code: the character for a printable key, and for the others enter 3,
// backspace 8, tab 9, return 13, escape 27, the arrows 28 to 31 (left,
// right, up, down) and forward delete 127. While Ctrl, Alt or Meta is held
// the key decides, never the event's text (Ctrl+C carries code 3 as text).
// Nothing for a key that is only a modifier: Shift alone types nothing.
std::optional<std::string> KeyText(const QKeyEvent& event);

}  // namespace drav
