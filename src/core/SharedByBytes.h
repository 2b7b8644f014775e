// Objects that are made out of bytes, one for all who make them out of the same bytes: what every instance reads from
// the same files is read once, and held once.
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

/// Any thread but the audio thread. Whoever has an object may read it on any thread.
template <typename Made>
class SharedByBytes {
 public:
  /// Returns the object that was made out of equal bytes, if anybody still holds it, else what `make(bytes)` returns.
  /// What `make` throws goes through.
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
