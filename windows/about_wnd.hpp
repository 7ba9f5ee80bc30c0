#pragma once
#include "shell/canvas.hpp"
#include "shell/label.hpp"
#include "shell/timer.hpp"
#include "shell/window.hpp"

namespace drav {

// The splash panel: a picture and a credit line, no title and no buttons.
// It gives way to the main window after 4 seconds or at the first click or
// key, and is only ever hidden, never closed; "About Drav" shows it again.
class AboutWnd : public Window {
 public:
  static constexpr const char* kClassName = "AboutWnd.AboutWnd";
  AboutWnd() : Window(kClassName) {}

  Label& StaticText2() const { return ControlAs<Label>("StaticText2"); }
  Canvas& Canvas2() const { return ControlAs<Canvas>("Canvas2"); }
  Timer& Timer1() const { return ControlAs<Timer>("Timer1"); }

  void StaticText2_Open(Label& label);
  void Timer1_Action(Timer& timer);

 protected:
  void Layout() override;
  void CreateControls() override;
  bool Event_MouseDown(std::int64_t x, std::int64_t y) override;
  bool Event_KeyDown(const std::string& key) override;

 private:
  void CreateControls0();
  static void HandOver();
};

}  // namespace drav
