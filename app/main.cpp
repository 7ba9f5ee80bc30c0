// Drav's start-up: --help, --version and the want of a display answered on
// the terminal; then the file type, the application object with its version
// data and menu bar, then the splash panel as the first and only window.
#include <QApplication>
#include <iostream>

#include "app/console_answers.hpp"
#include "app/drav_app.hpp"
#include "app/file_types1.hpp"
#include "shell/implicit.hpp"
#include "windows/about_wnd.hpp"

namespace drav::internal {

// The first window of a run is the splash panel; it shows itself, since its
// sheet says Visible, and the toolkit keeps it alive.
void MakeDefaultView() { Implicit<AboutWnd>(); }

}  // namespace drav::internal

int main(int argc, char** argv) {
  if (const auto status = drav::AnswerOnTheTerminal(argc, argv, std::cout, std::cerr)) return *status;
  drav::FileTypes1::internal::Initialize();
  drav::Drav app(argc, argv);
  drav::internal::MakeDefaultView();
  const int status = drav::Drav::exec();
  // Windows still open or hidden when the loop ends go with the program.
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->parent() == nullptr) delete window;
  }
  return status;
}
