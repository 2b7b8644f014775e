// The files of a whole instrument for tests: a sample library and a description with a few macros and programs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "macro/MacroSetLinear.h"
#include "macro/MacroSetQuantized.h"
#include "macro/PluginMacroControllable.h"
#include "support/QuietGenerator.h"
#include "support/SampleFolder.h"

namespace support {

/// Eight pads with six macros each ("P1 Wave", Level, Pitch, Send, Decay, and Fine, which is hidden), then "FX Type"
/// (Bypass, Short Delay, Room Reverb), "FX Edit 1", "FX Edit 2" and "Master". Programs "Plain" and "Wet".
class KitFolder {
 public:
  static constexpr std::size_t kMacrosPerPad = 6;

  explicit KitFolder(const std::vector<Wave>& waves = assortedWaves(12, 9000)) : samples(waves) {
    buildMacros();
    const std::filesystem::path folder = commonFiles() / "Tesh/Bramel/Macro/Sivray";
    writeFile(folder / "readme.json", R"({"controller": {}, "processor": {"plugin_chunk": "",
        "macro_chunk": "macros.bin", "cc_map": "any", "automation": {"blacklist": [5, 11, 17, 23, 29, 35, 41, 47]}}})");
    writeFile(folder / "Sivray.ccmap", R"({"cc_map": {"7": 51}})");
    std::vector<std::uint8_t> chunk;
    processor.controller().writeChunk(chunk);
    writeFile(folder / "macros.bin", chunk);
    ::setenv("BRAMEL_DOCUMENTS", (commonFiles() / "documents").c_str(), 1);
  }

  /// Returns the common-files folder, which is removed with this object.
  std::filesystem::path commonFiles() const { return samples.pathOf("../../../..").lexically_normal(); }

 private:
  using Controller = tesh::vimo::MacroController<tesh::vimo::Generator<float>>;

  void add(const std::string& name, std::uint32_t target, std::unique_ptr<tesh::vimo::MacroSetBase> set, float value) {
    auto& macro = processor.controller().addMacro();
    macro.setName(name);
    set->setTargetId(target);
    macro.addSet(std::move(set));
    macro.storedValue = value;
  }

  void addLinear(const std::string& name, std::uint32_t target, float value) {
    add(name, target, std::make_unique<tesh::vimo::MacroSetLinear>(), value);
  }

  void buildMacros() {
    for (std::uint32_t pad = 0; pad < 8; ++pad) {
      const std::string prefix = std::string("P").append(std::to_string(pad + 1)).append(" ");
      const std::uint32_t group = pad << 4;
      addLinear(prefix + "Wave", group, static_cast<float>(pad) / 11.0F);
      addLinear(prefix + "Level", group | 8, 0.8F);
      addLinear(prefix + "Pitch", group | 4, 0.5F);
      addLinear(prefix + "Send", group | 13, 1.0F);
      addLinear(prefix + "Decay", group | 7, 1.0F);
      addLinear(prefix + "Fine", group | 5, 0.5F);
    }
    auto types = std::make_unique<tesh::vimo::MacroSetQuantized>();
    types->setValues({0.0F, 12.0F / 29.0F, 14.0F / 29.0F});
    add("FX Type", 0x100, std::move(types), 0.0F);
    addLinear("FX Edit 1", 0x102, 0.5F);
    addLinear("FX Edit 2", 0x103, 0.5F);
    addLinear("Master", 0x110, 0.75F);
    storeProgram("Plain");
    processor.controller().macroAt(kMacrosPerPad * 8)->storedValue = 1.0F;
    storeProgram("Wet");
  }

  void storeProgram(const char* name) {
    Controller& controller = processor.controller();
    controller.setProgramName(name);
    controller.programs().storeCurrent(tesh::vimo::Bank::factory);
    // The state has no selected program, so the first block selects the first one.
    controller.programs().setSelection(0, tesh::vimo::Bank::ghost);
  }

  SampleFolder samples;
  tesh::vimo::PluginMacroControllable<tesh::vimo::Generator<float>> processor{
      "Sivray", std::make_unique<tesh::vimo::QuietGenerator>()};
};

}  // namespace support
