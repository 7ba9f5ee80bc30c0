#include "windows/about_wnd.hpp"

#include "shell/implicit.hpp"
#include "windows/common_sheets.hpp"
#include "windows/control_wnd.hpp"
#include "windows/credits.hpp"
#include "windows/pictures.hpp"

namespace drav {
namespace {

const Sheet& WindowSheet() {
  static const Sheet sheet = Sheet()
      .Integer("Width", 450).Integer("Height", 350)
      .Integer("MinimumWidth", 64).Integer("MinimumHeight", 64)
      .Integer("MaximumWidth", 32000).Integer("MaximumHeight", 32000)
      // Type 2: a plain panel with no title and no window buttons.
      .Integer("Type", 2).Text("Title", "")
      .Boolean("HasCloseButton", false).Boolean("HasMinimizeButton", false)
      .Boolean("HasMaximizeButton", false).Boolean("HasFullScreenButton", false)
      .Boolean("Resizeable", false).Boolean("Composite", false).Integer("MacProcID", 0)
      .Boolean("FullScreen", false).Integer("DefaultLocation", 0).Boolean("Visible", true)
      .Boolean("HasBackgroundColor", true).Colour("BackgroundColor", 0xFFFFFF)
      .Boolean("MenuBarVisible", true).Boolean("LiveResize", false);
  return sheet;
}

const Sheet& StaticText2Sheet() {
  static const Sheet sheet = Place(98, 297, 258, 15, 3, false)
      .Boolean("TabStop", false).Boolean("Multiline", true).Boolean("Selectable", false)
      .Boolean("Transparent", false).Integer("TextAlignment", 2).Colour("TextColor", 0x666666)
      .With(Font("System", 10, false)).Boolean("Visible", true).With(NoDataBinding())
      .Text("Value", SplashCredit);
  return sheet;
}

const Sheet& Canvas2Sheet() {
  static const Sheet sheet = Place(96, 41, 258, 258, 5, true)
      .Boolean("TabStop", false).Boolean("Visible", true).Boolean("Transparent", true)
      .Boolean("DoubleBuffer", false).Boolean("AllowFocus", false).Boolean("AllowTabs", false)
      .Boolean("AllowFocusRing", true).Text("InitialParent", "");
  return sheet;
}

const Sheet& Timer1Sheet() {
  // Fires once, 4 seconds after the panel was built.
  static const Sheet sheet = Sheet().Integer("Period", 4000).Integer("RunMode", 1);
  return sheet;
}

}  // namespace

void AboutWnd::Layout() { SetProperties(*this, WindowSheet().Bytes()); }

void AboutWnd::CreateControls() { CreateControls0(); }

void AboutWnd::CreateControls0() {
  auto* credit = new Label;
  AddControl("StaticText2", credit);
  SetProperties(*credit, StaticText2Sheet().Bytes());
  credit->SetAccessibleText(SplashCredit, "Who made Drav");
  credit->Open = [this, credit] { StaticText2_Open(*credit); };

  auto* picture = new Canvas;
  AddControl("Canvas2", picture);
  picture->SetBackdrop(_x_Drav256());
  SetProperties(*picture, Canvas2Sheet().Bytes());
  picture->SetAccessibleText("Drav", "The program's picture");

  auto* timer = new Timer(this);
  AddControl("Timer1", timer);
  SetProperties(*timer, Timer1Sheet().Bytes());
  timer->Action = [this, timer] { Timer1_Action(*timer); };
}

void AboutWnd::StaticText2_Open(Label& label) {
  label.SetTextFont("System");
  label.SetBold(false);
  label.SetTextSize(9);
}

// The same in all three: the timer, a press and a key. At the first
// hand-over of a run the mention of ControlWnd makes the main window.
void AboutWnd::HandOver() {
  Implicit<AboutWnd>().Hide();
  Implicit<ControlWnd>().Show();
}

void AboutWnd::Timer1_Action(Timer&) { HandOver(); }

bool AboutWnd::Event_MouseDown(std::int64_t, std::int64_t) {
  HandOver();
  return false;
}

bool AboutWnd::Event_KeyDown(const std::string&) {
  HandOver();
  return false;
}

}  // namespace drav
