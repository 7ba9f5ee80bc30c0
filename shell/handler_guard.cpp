#include "shell/handler_guard.hpp"

#include <cstdio>

#include "base/runtime_exception.hpp"
#include "shell/application.hpp"

namespace drav::internal {
namespace {

void Report(const std::string& text) {
  if (auto* app = dynamic_cast<Application*>(QCoreApplication::instance())) {
    app->ReportUnhandled(text);
  } else {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
}

}  // namespace

bool GuardHandler(const std::function<void()>& handler) {
  try {
    handler();
    return true;
  } catch (const EndException&) {
  } catch (const ThreadEndException&) {
  } catch (const std::exception& failure) {
    Report(Application::DescribeFailure(failure));
  } catch (...) {
    Report(Application::DescribeUnknownFailure());
  }
  return false;
}

}  // namespace drav::internal
