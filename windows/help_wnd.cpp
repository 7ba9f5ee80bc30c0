#include "windows/help_wnd.hpp"

#include "shell/implicit.hpp"
#include "windows/common_sheets.hpp"
#include "windows/control_wnd.hpp"
#include "windows/help_document.hpp"
#include "windows/menu_bar1.hpp"

namespace drav {
namespace {

const Sheet& WindowSheet() {
  static const Sheet sheet = Sheet()
      .Integer("Width", 550).Integer("Height", 500)
      .Integer("MinimumWidth", 64).Integer("MinimumHeight", 64)
      .Integer("MaximumWidth", 32000).Integer("MaximumHeight", 32000)
      .Integer("Type", 0).Text("Title", "Info")
      .Boolean("HasCloseButton", true).Boolean("HasMinimizeButton", true)
      .Boolean("HasMaximizeButton", false).Boolean("HasFullScreenButton", false)
      .Boolean("Resizeable", true).Boolean("Composite", false).Integer("MacProcID", 0)
      .Boolean("FullScreen", false).Integer("DefaultLocation", 3).Boolean("Visible", true)
      .Boolean("HasBackgroundColor", false).Colour("BackgroundColor", 0xFFFFFF)
      .Boolean("MenuBarVisible", true).Boolean("LiveResize", false);
  return sheet;
}

const Sheet& EditField1Sheet() {
  // From 1 pixel outside the left and top edges to the right edge, its
  // bottom 3 pixels above the window's.
  static const Sheet sheet = Place(-1, -1, 551, 498, 0, false)
      .Boolean("TabStop", true).Boolean("Visible", true).Boolean("ReadOnly", false)
      .Boolean("Multiline", true).Boolean("AllowStyledText", true).Boolean("HasVerticalScrollbar", true)
      .Boolean("HasHorizontalScrollbar", false).Boolean("HasBorder", true).Boolean("HideSelection", true)
      .Boolean("AllowFocusRing", true).Boolean("Transparent", true).Colour("TextColor", 0x000000)
      .Colour("BackgroundColor", 0xFFFFFF).With(Font("System", 12, false)).Real("LineSpacing", 1.0)
      .Real("LineHeight", 0.0).Integer("TextAlignment", 0).Boolean("AllowTabs", false)
      .Boolean("AllowSpellChecking", false).Integer("MaximumCharactersAllowed", 0).Integer("UnicodeMode", 0)
      .Text("Format", "").Text("ValidationMask", "").With(NoDataBinding()).Text("Value", HelpDocument());
  return sheet;
}

}  // namespace

void helpWnd::Layout() {
  SetMenuBar(MenuBar1::Shared());
  SetProperties(*this, WindowSheet().Bytes());
}

void helpWnd::CreateControls() { CreateControls0(); }

void helpWnd::CreateControls0() {
  auto* area = new TextArea;
  AddControl("EditField1", area);
  SetProperties(*area, EditField1Sheet().Bytes());
  area->SetAccessibleText("Help", "The help document: the AIC, how to read the report, the literature");
  area->Open = [this, area] { EditField1_Open(*area); };
}

void helpWnd::AddMenuHandlers() {
  AddMenuHandler("ControlItem", [this] { return ControlItem_Action(); });
}

void helpWnd::EditField1_Open(TextArea& area) {
  area.SetTextFont("System");
  area.SetTextSize(0);
  StyledText& styled = area.GetStyledText();
  // Completes the legal notice's last sentence, which asks for the exact
  // wording of any error message.
  area.AppendText("Error message");
  styled.Bold(0, 4, true);
}

bool helpWnd::ControlItem_Action() {
  Implicit<ControlWnd>().Show();
  return true;
}

}  // namespace drav
