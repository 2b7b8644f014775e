// A word that one thread writes while another reads it. The effects' single settings use it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace tesh::bramel::plugin::sivray::effects {

/// A machine word with relaxed loads and stores, which cost no more than those of a plain variable. It does not order
/// other accesses: another thread may see the new value of one word and the old value of another. A copy holds the
/// value at the time of copying.
template <typename T>
class Relaxed {
 public:
  constexpr Relaxed(T value = T{}) : word(value) {}
  Relaxed(const Relaxed& other) : word(other.load()) {}
  Relaxed& operator=(const Relaxed& other) { return *this = other.load(); }

  Relaxed& operator=(T value) {
    word.store(value, std::memory_order_relaxed);
    return *this;
  }

  T load() const { return word.load(std::memory_order_relaxed); }
  operator T() const { return load(); }

 private:
  static_assert(std::atomic<T>::is_always_lock_free);
  std::atomic<T> word;
};

}  // namespace tesh::bramel::plugin::sivray::effects
