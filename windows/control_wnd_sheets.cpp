#include "windows/control_wnd_sheets.hpp"

#include "windows/common_sheets.hpp"
#include "windows/credits.hpp"

namespace drav::control_wnd_sheets {
namespace {

Sheet Field(const char* value, bool border, std::int64_t alignment, std::int64_t maxChars, const char* mask,
            bool readOnly) {
  return Sheet()
      .Text("Value", value).Colour("TextColor", 0x000000).Colour("BackgroundColor", 0xFFFFFF)
      .Boolean("HasBorder", border).Boolean("Transparent", true).Integer("TextAlignment", alignment)
      .Integer("MaximumCharactersAllowed", maxChars).Text("ValidationMask", mask).Boolean("ReadOnly", readOnly)
      .Boolean("AllowTabs", false).Boolean("Password", false).Text("Hint", "").Text("Format", "")
      .Boolean("Visible", true);
}

Sheet Button(const char* caption) {
  return Sheet()
      .Text("Caption", caption).Boolean("Default", true).Boolean("Cancel", false).Integer("MacButtonStyle", 0)
      .Boolean("Transparent", true).Boolean("Visible", true).Boolean("TabStop", false)
      .With(Font("System", 12, false)).With(NoDataBinding());
}

}  // namespace

const Sheet& Window() {
  static const Sheet sheet = Sheet()
      .Text("Title", "Drav").Integer("Width", 700).Integer("Height", 600)
      .Integer("MinimumWidth", 64).Integer("MinimumHeight", 64)
      .Integer("MaximumWidth", 32000).Integer("MaximumHeight", 32000)
      .Integer("Type", 0).Boolean("Resizeable", false)
      .Boolean("HasCloseButton", true).Boolean("HasMinimizeButton", true)
      .Boolean("HasMaximizeButton", false).Boolean("HasFullScreenButton", false).Boolean("FullScreen", false)
      .Boolean("Composite", false).Integer("MacProcID", 0).Integer("DefaultLocation", 0)
      .Boolean("Visible", true).Boolean("HasBackgroundColor", true).Colour("BackgroundColor", 0xFFFFFF)
      .Boolean("MenuBarVisible", true).Boolean("LiveResize", true);
  return sheet;
}

const Sheet& pFld() {
  static const Sheet sheet = Place(220, 141, 50, 22, 0, false)
      .Boolean("TabStop", true).Boolean("AllowFocusRing", true).Boolean("AllowSpellChecking", false)
      .With(Font("System", 12, false)).With(Field("", true, 2, 2, "##", false)).With(NoDataBinding());
  return sheet;
}

const Sheet& clearBtn() {
  static const Sheet sheet = Place(300, 531, 100, 50, 4, false).With(Button("Clear"));
  return sheet;
}

const Sheet& helpBtn() {
  static const Sheet sheet = Place(554, 531, 100, 50, 5, false).With(Button("Information"));
  return sheet;
}

const Sheet& calcBtn() {
  static const Sheet sheet = Place(46, 530, 125, 50, 6, false).With(Button("Load Data"));
  return sheet;
}

const Sheet& ResultsFld() {
  static const Sheet sheet = Place(45, 187, 600, 325, 9, true)
      .Boolean("TabStop", false).Boolean("AllowFocusRing", false).Boolean("AllowSpellChecking", true)
      .With(Font("System", 12, false))
      .Text("Value", "").Colour("TextColor", 0x000000).Colour("BackgroundColor", 0xFFFFFF)
      .Boolean("HasBorder", true).Boolean("Transparent", true).Integer("TextAlignment", 0)
      .Integer("MaximumCharactersAllowed", 0).Text("ValidationMask", "").Boolean("ReadOnly", false)
      .Boolean("AllowTabs", false).Text("Format", "").Boolean("Multiline", true)
      .Boolean("HasVerticalScrollbar", true).Boolean("HasHorizontalScrollbar", false)
      .Boolean("AllowStyledText", true).Boolean("HideSelection", true).Real("LineHeight", 0)
      .Real("LineSpacing", 1.0).Integer("UnicodeMode", 0)
      // The report area is hidden until there is a report.
      .Boolean("Visible", false).With(NoDataBinding());
  return sheet;
}

const Sheet& Label1() {
  static const Sheet sheet = Place(20, 70, 660, 20, 12, true)
      .Boolean("TabStop", false).Text("Value", ByLine).With(Font("System", 11, false))
      .Colour("TextColor", 0x3D0002).Integer("TextAlignment", 2).Boolean("Multiline", false)
      .Boolean("Selectable", false).Boolean("Transparent", true).Boolean("Visible", true).With(NoDataBinding());
  return sheet;
}

const Sheet& TextField1() {
  static const Sheet sheet = Place(45, 144, 166, 22, 13, true)
      .Boolean("TabStop", false).Boolean("AllowFocusRing", false).Boolean("AllowSpellChecking", false)
      .With(Font("System", 12, true)).With(Field("Number of Models (2-99):", false, 1, 0, "", true))
      .With(NoDataBinding());
  return sheet;
}

const Sheet& Canvas1() {
  static const Sheet sheet = Place(225, 5, 250, 70, 14, true)
      .Boolean("TabStop", false).Boolean("AllowFocus", false).Boolean("AllowFocusRing", true)
      .Boolean("AllowTabs", false).Boolean("Transparent", true).Boolean("DoubleBuffer", false)
      .Boolean("Visible", true).Text("InitialParent", "");
  return sheet;
}

const Sheet& RoundRectangle1() {
  // A 5-pixel bar whose 16-pixel corners are clipped to its height.
  static const Sheet sheet = Place(45, 170, 600, 5, 15, true)
      .Colour("FillColor", 0x800002).Colour("BorderColor", 0x000000).Real("BorderThickness", 1.0)
      .Real("CornerHeight", 16.0).Real("CornerWidth", 16.0).Boolean("Transparent", false)
      .Boolean("Visible", true).Text("InitialParent", "");
  return sheet;
}

}  // namespace drav::control_wnd_sheets
