#pragma once
#include <QApplication>
#include <exception>
#include <functional>
#include <memory>
#include <string>

namespace drav {

class MenuBar;

// The application object. Its notify is the unhandled path: an exception
// that leaves an event handler never ends the program. The user is told
// what failed, and the event loop goes on with every window as it was.
class Application : public QApplication {
 public:
  Application(int& argc, char** argv);

  static Application* Instance() { return static_cast<Application*>(QCoreApplication::instance()); }

  // The application-level menu bar; set once at start-up.
  std::shared_ptr<MenuBar> AppMenuBar;

  // How the unhandled path shows a failure: a modal alert by default.
  std::function<void(const std::string& text)> ShowFailure;

  // The alert's text for a failure: for a file, its name, the system's
  // reason and the error number.
  static std::string DescribeFailure(const std::exception& failure);
  static std::string DescribeUnknownFailure();

  // Tells the user; a failure while the alert of another is up is dropped.
  void ReportUnhandled(const std::string& text);

  // The last resort: failures that escape a handler's own guard.
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  bool reporting_ = false;
};

}  // namespace drav
