#include "windows/control_wnd.hpp"

#include "analysis/analysis_run.hpp"
#include "analysis/locale_date_text.hpp"
#include "base/text.hpp"
#include "shell/implicit.hpp"
#include "shell/qt_run_host.hpp"
#include "shell/runtime.hpp"
#include "windows/about_wnd.hpp"
#include "windows/control_wnd_ops.hpp"
#include "windows/control_wnd_sheets.hpp"
#include "windows/credits.hpp"
#include "windows/help_wnd.hpp"
#include "windows/menu_bar1.hpp"
#include "windows/pictures.hpp"

namespace drav {

namespace sheets = control_wnd_sheets;

void ControlWnd::Layout() {
  SetMenuBar(MenuBar1::Shared());
  SetProperties(*this, sheets::Window().Bytes());
}

void ControlWnd::CreateControls() { CreateControls0(); }

void ControlWnd::CreateControls0() {
  auto* field = new TextField;
  AddControl("pFld", field);
  SetProperties(*field, sheets::pFld().Bytes());
  field->KeyDown = [this, field](const std::string& key) { return pFld_KeyDown(*field, key); };
  field->Open = [this, field] { pFld_Open(*field); };

  auto* clear = new PushButton;
  AddControl("clearBtn", clear);
  SetProperties(*clear, sheets::clearBtn().Bytes());
  clear->SetAccessibleText("Clear", "Empties the number of models and the report");
  clear->MouseDown = [this, clear](std::int64_t x, std::int64_t y) { return clearBtn_MouseDown(*clear, x, y); };

  auto* help = new PushButton;
  AddControl("helpBtn", help);
  SetProperties(*help, sheets::helpBtn().Bytes());
  help->SetAccessibleText("Information", "Opens the help document");
  help->MouseDown = [this, help](std::int64_t x, std::int64_t y) { return helpBtn_MouseDown(*help, x, y); };

  auto* calc = new PushButton;
  AddControl("calcBtn", calc);
  SetProperties(*calc, sheets::calcBtn().Bytes());
  calc->SetAccessibleText("Load Data", "Asks for the file of models and adds its report below the others");
  calc->MouseDown = [this, calc](std::int64_t x, std::int64_t y) { return calcBtn_MouseDown(*calc, x, y); };

  auto* results = new TextArea;
  AddControl("ResultsFld", results);
  SetProperties(*results, sheets::ResultsFld().Bytes());
  results->SetAccessibleText("Report", "The reports of this session, the newest last");
  results->KeyDown = [this, results](const std::string& key) { return ResultsFld_KeyDown(*results, key); };
  results->Open = [this, results] { ResultsFld_Open(*results); };

  auto* byLine = new Label;
  AddControl("Label1", byLine);
  SetProperties(*byLine, sheets::Label1().Bytes());
  byLine->SetAccessibleText(ByLine, "What Drav does, and by whom");
  byLine->Open = [this, byLine] { Label1_Open(*byLine); };

  auto* prompt = new TextField;
  AddControl("TextField1", prompt);
  SetProperties(*prompt, sheets::TextField1().Bytes());
  prompt->ReadAsCaption();
  // The caption beside the count is its label, and a screen reader names
  // the count by it.
  field->SetAccessibleText(prompt->Text(), "The number of models in the set, 2 to 99");
  prompt->Open = [this, prompt] { TextField1_Open(*prompt); };

  auto* title = new Canvas;
  AddControl("Canvas1", title);
  title->SetBackdrop(_x_Dravtitle());
  SetProperties(*title, sheets::Canvas1().Bytes());
  title->SetAccessibleText("Drav", "The program's title picture");

  auto* rule = new RoundRectangle;
  AddControl("RoundRectangle1", rule);
  SetProperties(*rule, sheets::RoundRectangle1().Bytes());
  rule->SetAccessibleText("Rule", "Divides the number of models from the report");
}

void ControlWnd::AddMenuHandlers() {
  AddMenuHandler("FileQuit", [this] { return FileQuit_Action(); });
  AddMenuHandler("InfoItem", [this] { return InfoItem_Action(); });
  AddMenuHandler("AboutItem", [this] { return AboutItem_Action(); });
}

// Every key typed into the count blanks the report first, accepted or not.
bool ControlWnd::pFld_KeyDown(TextField&, const std::string& key) {
  ResultsFld().SetText("");
  const std::int64_t code = Asc(key);
  if ((code > 47 && code < 58) || code == 8 || code == 9 || code == 127 || code == 28 || code == 29) return false;
  Beep();
  return true;
}

void ControlWnd::pFld_Open(TextField& field) {
  field.SetTextFont("System");
  field.SetTextSize(12);
}

bool ControlWnd::clearBtn_MouseDown(PushButton&, std::int64_t, std::int64_t) {
  pFld().SetText("");
  ResultsFld().SetText("");
  ResultsFld().SetVisible(false);
  pFld().SetFocus();
  return false;
}

bool ControlWnd::helpBtn_MouseDown(PushButton&, std::int64_t, std::int64_t) {
  Implicit<helpWnd>().Show();
  return false;
}

bool ControlWnd::calcBtn_MouseDown(PushButton&, std::int64_t, std::int64_t) {
  ControlWndOps window(*this);
  QtAlert alert(this);
  QtOpenFileDialog dialog(this);
  const LocaleDateText dates;
  RunAnalysis({window, alert, dialog, dates});
  return false;
}

// The report can be edited by hand: letters, digits, full stop, space,
// return, backspace and forward delete; the arrows and punctuation beep.
bool ControlWnd::ResultsFld_KeyDown(TextArea&, const std::string& key) {
  const std::int64_t code = Asc(key);
  if ((code > 47 && code < 123) || code == 8 || code == 9 || code == 127 || code == 13 || code == 46 || code == 32) {
    return false;
  }
  Beep();
  return true;
}

void ControlWnd::ResultsFld_Open(TextArea& area) {
  area.SetTextFont("System");
  area.SetTextSize(12);
}

void ControlWnd::Label1_Open(Label& label) { label.SetTextSize(9); }

void ControlWnd::TextField1_Open(TextField& field) {
  field.SetTextFont("System");
  field.SetBold(true);
  field.SetTextSize(0);
}

// Closing the main window always ends the program.
void ControlWnd::Event_Close() { Quit(0); }

bool ControlWnd::FileQuit_Action() {
  Quit(0);
  return true;
}

bool ControlWnd::InfoItem_Action() {
  Implicit<helpWnd>().Show();
  return true;
}

bool ControlWnd::AboutItem_Action() {
  Implicit<AboutWnd>().Show();
  return true;
}

}  // namespace drav
