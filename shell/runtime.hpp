#pragma once
// The global operations of the runtime.
#include <cstdint>
#include <string>

namespace drav {

class Window;

// Plays the platform's alert sound.
void Beep();
// How often Beep has sounded in this process; tests read it.
std::int64_t BeepCount();

// Ends the event loop with the exit code. Safe to reach again while it runs:
// a window closed on the way may call it a second time.
void Quit(std::int64_t code);

// The live window of that full class name ("ControlWnd.ControlWnd"), or nil.
Window* GetImplicitWindow(const std::string& fullClassName);

}  // namespace drav
