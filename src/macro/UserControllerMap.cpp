// Edits the map as JSON, so that unknown members are preserved.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/UserControllerMap.h"

#include <stdexcept>
#include <vector>

#include "macro/Json.h"
#include "macro/MacroControllerBase.h"
#include "platform/Files.h"
#include "storage/paths/Paths.h"

namespace tesh::vimo {
namespace {

constexpr const char* kControllers = "cc_map";
constexpr const char* kPitchBend = "pitch_bend";

/// The active file, or the factory's if that is broken; null if neither can be read.
picojson::value activeFile(std::string_view name) {
  for (const std::string_view key : {bramel::kBramelPath_ActiveCCMap, bramel::kBramelPath_FactoryCCMap}) {
    picojson::value file = parseJson(bramel::readFile(bramel::pathFor(key, name)));
    if (file.is<picojson::object>() && file.get(kControllers).is<picojson::object>()) {
      return file;
    }
  }
  return {};
}

void setMember(picojson::object& object, const std::string& key, std::optional<std::uint64_t> macro) {
  if (macro) {
    object[key] = picojson::value(static_cast<double>(*macro));
  } else {
    object.erase(key);
  }
}

}  // namespace

ControllerMap activeControllerMap(std::string_view name) {
  const picojson::value file = activeFile(name);
  if (file.is<picojson::null>()) {
    return {};
  }
  const std::string text = file.serialize();
  return MacroControllerBase::ccMapIn({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

bool changeUserController(std::string_view name, std::uint8_t controller, std::optional<std::uint64_t> macro) {
  picojson::value file = activeFile(name);
  if (file.is<picojson::null>()) {
    file.set(picojson::object{{kControllers, picojson::value(picojson::object())}});
  }
  if (controller == MacroControllerBase::kPitchBendKey) {
    setMember(file.get<picojson::object>(), kPitchBend, macro);
  } else if (MacroControllerBase::canMove(controller)) {
    setMember(file.get<picojson::object>()[kControllers].get<picojson::object>(), std::to_string(controller), macro);
  } else {
    return false;
  }
  const std::string path = bramel::pathFor(bramel::kBramelPath_UserCCMap, name);
  bramel::platform::createFolders(path.substr(0, path.find_last_of("/\\")));
  const std::string text = file.serialize(true);
  return bramel::writeFile(path, text.data(), text.size());
}

}  // namespace tesh::vimo
