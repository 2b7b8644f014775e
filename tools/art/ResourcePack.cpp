// Joins the resources' bytes and writes the source text of their table.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResourcePack.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace sivray::art {
namespace {

constexpr const char* kTableHead = R"(// Made by sivray-art.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstddef>

#include "platform/EmbeddedResources.h"

extern "C" const std::uint8_t sivrayResourceBytes[)";

constexpr const char* kTableMiddle = R"(];

namespace tesh::bramel::platform {

std::span<const EmbeddedResource> embeddedResources() {
  static constexpr std::array<EmbeddedResource, )";

constexpr const char* kTableFoot = R"(  }};
  return table;
}

}  // namespace tesh::bramel::platform
)";

constexpr std::size_t kAlignment = 16;

}  // namespace

std::string resourceFile(const Resource& resource) { return "files/" + resource.name + "." + resource.type; }

std::string windowsScript(const std::vector<Resource>& resources) {
  std::string script = "// Made by sivray-art.\n";
  for (const Resource& resource : resources) {
    script += resource.name + " " + resource.type + " \"" + resourceFile(resource) + "\"\n";
  }
  return script;
}

ResourcePack pack(std::vector<Resource> resources) {
  std::sort(resources.begin(), resources.end(),
            [](const Resource& a, const Resource& b) { return std::tie(a.type, a.name) < std::tie(b.type, b.name); });
  std::vector<std::uint8_t> bytes;
  std::string rows;
  for (const Resource& resource : resources) {
    rows += "      EmbeddedResource{\"" + resource.type + "\", \"" + resource.name + "\", {sivrayResourceBytes + " +
            std::to_string(bytes.size()) + ", " + std::to_string(resource.bytes.size()) + "}},\n";
    bytes.insert(bytes.end(), resource.bytes.begin(), resource.bytes.end());
    bytes.resize((bytes.size() + kAlignment - 1) / kAlignment * kAlignment);
  }
  const std::string table = kTableHead + std::to_string(bytes.size()) + kTableMiddle +
                            std::to_string(resources.size()) + "> table{{\n" + rows + kTableFoot;
  return {std::move(bytes), table};
}

}  // namespace sivray::art
