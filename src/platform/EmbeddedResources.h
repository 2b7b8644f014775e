// The images and fonts that are linked into the library; on Windows true resources. They are found by type and name.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tesh::bramel::platform {

/// One resource. Names are stored in upper case.
struct EmbeddedResource {
  std::string_view type;  ///< "PNG" or "TTF".
  std::string_view name;
  std::span<const std::uint8_t> bytes;
};

/// All resources, sorted by type and then by name. The build generates the source file with its definition. Not on
/// Windows.
std::span<const EmbeddedResource> embeddedResources();

/// The bytes of a resource, valid while the library is loaded; empty if there is none. Case-insensitive. Any thread;
/// allocates.
std::span<const std::uint8_t> findEmbeddedResource(std::string_view type, std::string_view name);

}  // namespace tesh::bramel::platform
