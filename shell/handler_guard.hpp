#pragma once
#include <functional>

namespace drav::internal {

// Runs an event handler of the program. A failure that leaves it goes to the
// application's unhandled path here, at the edge of the program's own code,
// so that it never unwinds through Qt's event delivery (whose frames are not
// exception-safe). True when the handler ran to its end.
bool GuardHandler(const std::function<void()>& handler);

}  // namespace drav::internal
