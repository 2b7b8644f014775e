// Packs the resources into one file of bytes, and writes the C++ table of their positions.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sivray::art {

struct Resource {
  std::string type;  ///< "PNG" or "TTF".
  std::string name;  ///< Upper case.
  std::vector<std::uint8_t> bytes;
};

struct ResourcePack {
  std::vector<std::uint8_t> bytes;
  std::string table;  ///< Source text that defines tesh::bramel::platform::embeddedResources().
};

/// Source text for a Windows resource compiler: each resource is in the file `resourceFile`, relative to the text's
/// folder.
std::string windowsScript(const std::vector<Resource>& resources);
std::string resourceFile(const Resource& resource);

/// Sorts by type and name. The table refers to the bytes by the symbol sivrayResourceBytes.
ResourcePack pack(std::vector<Resource> resources);

}  // namespace sivray::art
