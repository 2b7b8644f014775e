// A process-wide object that exists while somebody holds it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>

namespace tesh::cofu::core {

/// Holds the object weakly: the object is destroyed with its last holder, not when the library is unloaded. Any thread
/// but the audio thread.
template <typename Object>
class HeldByAll {
 public:
  /// Returns the existing object, or makes one by `make()`. An exception of `make` passes through.
  template <typename Make>
  std::shared_ptr<Object> get(Make make) {
    const std::lock_guard lock(mutex);
    std::shared_ptr<Object> held = present.lock();
    if (held == nullptr) {
      held = make();
      present = held;
    }
    return held;
  }

 private:
  std::mutex mutex;
  std::weak_ptr<Object> present;
};

}  // namespace tesh::cofu::core
