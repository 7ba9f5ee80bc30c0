#pragma once
#include "shell/sheet.hpp"

namespace drav::control_wnd_sheets {

// The design-time properties of the main window and its nine controls.
const Sheet& Window();
const Sheet& pFld();
const Sheet& clearBtn();
const Sheet& helpBtn();
const Sheet& calcBtn();
const Sheet& ResultsFld();
const Sheet& Label1();
const Sheet& TextField1();
const Sheet& Canvas1();
const Sheet& RoundRectangle1();

}  // namespace drav::control_wnd_sheets
