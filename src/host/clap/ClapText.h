// Texts in the fixed arrays of CLAP's records.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "core/Utf8.h"

namespace tesh::bramel::clap {

/// Copies as many whole characters as fit into `capacity` bytes with the closing zero. Nothing without capacity.
inline void copyText(std::string_view text, char* to, std::size_t capacity) {
  if (capacity == 0) {
    return;
  }
  const std::string_view fitting = cofu::core::utf8Start(text, capacity - 1);
  std::copy(fitting.begin(), fitting.end(), to);
  to[fitting.size()] = '\0';
}

template <std::size_t kCapacity>
void copyText(std::string_view text, char (&to)[kCapacity]) {
  copyText(text, to, kCapacity);
}

}  // namespace tesh::bramel::clap
