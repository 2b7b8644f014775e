// A VST 2 library in a minimal host, from the same source on Linux and on Windows.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "EditorUnderTrial.h"
#include "host/vst/VstRecords.h"

namespace sivray::trial {

/// One instance. The host tells its version, the rate and the time, and counts the plug-in's reports.
class PluginUnderTrial final : public EditorUnderTrial {
 public:
  /// Loads the library from its UTF-8 path, and creates an instance if it offers one.
  explicit PluginUnderTrial(const std::string& path);
  /// Closes the instance and unloads the library.
  ~PluginUnderTrial() override;

  bool isThere() const override { return effect != nullptr; }
  void closeInstance() override;
  void openEditor(void* window) override;
  void closeEditor() override;
  bool setScale(float scale) override;
  int takeMoves() override;

  std::intptr_t call(std::int32_t opcode, std::int32_t index = 0, std::intptr_t value = 0, void* ptr = nullptr,
                     float opt = 0.0F);
  void setState(std::vector<char> bytes) override;
  std::vector<float> renderNotes(float sampleRate) override { return render(sampleRate, false); }

  /// As `renderNotes`, optionally with a parameter moved in each block.
  std::vector<float> render(float sampleRate, bool isMoving);

  /// Whether this library is loaded into the process.
  static bool isLoaded(const std::string& path);

 private:
  static std::intptr_t SIVRAY_VST_CALL answer(tesh::bramel::vst::AEffect* effect, std::int32_t opcode,
                                              std::int32_t index, std::intptr_t value, void* ptr, float opt);

  void* library = nullptr;
  tesh::bramel::vst::AEffect* effect = nullptr;
};

}  // namespace sivray::trial
