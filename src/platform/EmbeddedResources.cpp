// Finds an embedded resource in the sorted table by binary search.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef _WIN32

#include "platform/EmbeddedResources.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tesh::bramel::platform {

std::span<const std::uint8_t> findEmbeddedResource(std::string_view type, std::string_view name) {
  // Names are ASCII. Does not use std::toupper, whose result depends on the locale.
  std::string upper(name);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  const std::pair<std::string_view, std::string_view> wanted(type, upper);
  const auto key = [](const EmbeddedResource& resource) { return std::pair(resource.type, resource.name); };
  const auto all = embeddedResources();
  const auto found = std::ranges::lower_bound(all, wanted, {}, key);
  if (found == all.end() || key(*found) != wanted) {
    return {};
  }
  return found->bytes;
}

}  // namespace tesh::bramel::platform

#endif
