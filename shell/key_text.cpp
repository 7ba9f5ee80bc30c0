#include "shell/key_text.hpp"

#include "base/text.hpp"
#include "shell/qt_convert.hpp"

namespace drav {

std::optional<std::string> KeyText(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Shift: case Qt::Key_Control: case Qt::Key_Alt: case Qt::Key_Meta: case Qt::Key_AltGr:
    case Qt::Key_CapsLock: case Qt::Key_NumLock: case Qt::Key_ScrollLock: case Qt::Key_Super_L:
    case Qt::Key_Super_R: case Qt::Key_Hyper_L: case Qt::Key_Hyper_R: case Qt::Key_unknown:
      return std::nullopt;
    case Qt::Key_Enter: return Chr(3);
    case Qt::Key_Backspace: return Chr(8);
    case Qt::Key_Tab: case Qt::Key_Backtab: return Chr(9);
    case Qt::Key_Return: return Chr(13);
    case Qt::Key_Escape: return Chr(27);
    case Qt::Key_Left: return Chr(28);
    case Qt::Key_Right: return Chr(29);
    case Qt::Key_Up: return Chr(30);
    case Qt::Key_Down: return Chr(31);
    case Qt::Key_Delete: return Chr(127);
    case Qt::Key_Home: return Chr(1);
    case Qt::Key_End: return Chr(4);
    case Qt::Key_PageUp: return Chr(11);
    case Qt::Key_PageDown: return Chr(12);
    default: break;
  }
  const Qt::KeyboardModifiers chord = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  if (event.modifiers() & chord) {
    const int key = event.key();
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
      return Chr((event.modifiers() & Qt::ShiftModifier) ? key : key - Qt::Key_A + 'a');
    }
    if (key > 0 && key < 0x110000) return Chr(key);
    return Chr(0);
  }
  const QString text = event.text();
  if (text.isEmpty()) return Chr(0);  // a key with no character and no code of its own
  return Chr(text.at(0).isHighSurrogate() && text.size() > 1 ? QChar::surrogateToUcs4(text.at(0), text.at(1))
                                                            : text.at(0).unicode());
}

}  // namespace drav
