#include "shell/application.hpp"

#include <QDir>

#include "base/runtime_exception.hpp"
#include "shell/accessible_role.hpp"
#include "shell/alert_box.hpp"
#include "shell/qt_convert.hpp"

namespace drav {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  InstallAccessibleRoles();
  ShowFailure = [](const std::string& text) {
    AlertBox box(QMessageBox::Critical, ToQ(text), nullptr);
    box.exec();
  };
}

std::string Application::DescribeFailure(const std::exception& failure) {
  if (const auto* io = dynamic_cast<const IOException*>(&failure)) {
    const QString file = QDir::toNativeSeparators(ToQ(io->Path()));
    return "Drav could not read the file \xE2\x80\x9C" + FromQ(file) + "\xE2\x80\x9D.\n\n" + io->Reason() +
           " (error " + std::to_string(io->ErrorNumber()) + ").\n\nNothing has been changed.";
  }
  return std::string("Drav met an unexpected failure: ") + failure.what() + "\n\nNothing has been changed.";
}

std::string Application::DescribeUnknownFailure() {
  return "Drav met an unexpected failure.\n\nNothing has been changed.";
}

void Application::ReportUnhandled(const std::string& text) {
  // A failure while the alert of another is up is told once it is gone.
  if (reporting_) return;
  reporting_ = true;
  if (ShowFailure) ShowFailure(text);
  reporting_ = false;
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const EndException&) {
  } catch (const ThreadEndException&) {
  } catch (const std::exception& failure) {
    ReportUnhandled(DescribeFailure(failure));
  } catch (...) {
    ReportUnhandled(DescribeUnknownFailure());
  }
  return true;
}

}  // namespace drav
