#pragma once
// A second thread for work that the calling thread can also do alone. A
// system that has no thread to give (a process limit, too little address
// space for a stack) gets the work done on one thread rather than an
// abort: the results are the same either way, only slower.
#include <future>
#include <system_error>
#include <utility>

namespace drav::selection {

// `work` started on a thread of its own; a future that is not valid()
// where no thread could be started, and the caller does the work itself.
template <class Work>
auto StartBeside(Work&& work) -> std::future<decltype(work())> {
  try {
    return std::async(std::launch::async, std::forward<Work>(work));
  } catch (const std::system_error&) {
    return {};
  }
}

}  // namespace drav::selection
