// Images, fonts and pages that are linked into the library, found by type and name as the resources of a module are on
// Windows.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tesh::bramel::platform {

/// One resource. Names are stored in upper case.
struct EmbeddedResource {
  std::string_view type;  ///< "PNG", "TTF", "OTF".
  std::string_view name;
  std::span<const std::uint8_t> bytes;
};

/// All resources, sorted by type and then by name. Defined by the library that holds them, which the build generates.
std::span<const EmbeddedResource> embeddedResources();

/// The bytes of a resource, which live as long as the library is loaded; empty if there is none. Letter case of `name`
/// does not matter. Any thread.
std::span<const std::uint8_t> findEmbeddedResource(std::string_view type, std::string_view name);

}  // namespace tesh::bramel::platform
