// Shares objects that are built from bytes: equal bytes give the same object, so that all instances together read equal
// files once and hold the result once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <mutex>
#include <span>
#include <utility>
#include <vector>

namespace tesh::cofu::core {

/// Any thread but the audio thread. A shared object may be read on any thread.
template <typename Made>
class SharedByBytes {
 public:
  /// Returns the existing object for equal bytes, or builds one by `make(bytes)`. An exception of `make` passes
  /// through.
  template <typename Make>
  std::shared_ptr<const Made> get(std::span<const std::uint8_t> bytes, Make make) {
    const std::lock_guard lock(mutex);
    std::erase_if(known, [](const auto& one) { return one.expired(); });
    for (const auto& one : known) {
      if (auto held = one.lock(); held != nullptr && isOf(*held, bytes)) {
        return {held, &held->made};
      }
    }
    auto one = std::make_shared<const Entry>(Entry{{bytes.begin(), bytes.end()}, make(bytes)});
    known.push_back(one);
    return {one, &one->made};
  }

 private:
  struct Entry {
    std::vector<std::uint8_t> bytes;
    Made made;
  };

  static bool isOf(const Entry& entry, std::span<const std::uint8_t> bytes) {
    return entry.bytes.size() == bytes.size() &&
           (bytes.empty() || std::memcmp(entry.bytes.data(), bytes.data(), bytes.size()) == 0);
  }

  std::mutex mutex;
  std::vector<std::weak_ptr<const Entry>> known;
};

}  // namespace tesh::cofu::core
