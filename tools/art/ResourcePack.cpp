// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResourcePack.h"

#include <algorithm>
#include <tuple>

namespace sivray::art {
namespace {

constexpr const char* kTableHead = R"(// Made by sivray-art.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstddef>

#include "platform/EmbeddedResources.h"

extern "C" const std::uint8_t sivrayResourceBytes[];

namespace tesh::bramel::platform {

std::span<const EmbeddedResource> embeddedResources() {
  static const std::array table{
)";

constexpr const char* kTableFoot = R"(  };
  return table;
}

}  // namespace tesh::bramel::platform
)";

constexpr std::size_t kAlignment = 16;

}  // namespace

ResourcePack pack(std::vector<Resource> resources) {
  std::sort(resources.begin(), resources.end(),
            [](const Resource& a, const Resource& b) { return std::tie(a.type, a.name) < std::tie(b.type, b.name); });
  ResourcePack result{{}, kTableHead};
  for (const Resource& resource : resources) {
    result.table += "      EmbeddedResource{\"" + resource.type + "\", \"" + resource.name +
                    "\", {sivrayResourceBytes + " + std::to_string(result.bytes.size()) + ", " +
                    std::to_string(resource.bytes.size()) + "}},\n";
    result.bytes.insert(result.bytes.end(), resource.bytes.begin(), resource.bytes.end());
    result.bytes.resize((result.bytes.size() + kAlignment - 1) / kAlignment * kAlignment);
  }
  result.table += kTableFoot;
  return result;
}

}  // namespace sivray::art
