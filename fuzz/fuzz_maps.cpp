// Fuzzes both controller maps: any text either fails with the library's error or fills the map within its bounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "macro/Json.h"
#include "macro/PluginMacroControllable.h"
#include "support/QuietGenerator.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesh::vimo;
  PluginMacroControllable<Generator<float>> processor("Sivray", std::make_unique<QuietGenerator>());
  try {
    processor.controller().readCcMap({data, size});
  } catch (const std::runtime_error&) {
  }
  if (processor.controller().ccMap.contains(127)) {
    std::abort();
  }
  const picojson::value map = parseJson({data, size});  // Does not throw.
  try {
    processor.controller().nativeModeMap.read(map);
  } catch (const std::runtime_error&) {
  }
  return processor.controller().nativeModeMap.layoutType > 5 ? std::abort(), 0 : 0;
}
