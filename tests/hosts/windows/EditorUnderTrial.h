// A library of either form, as far as its panel is concerned.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

namespace sivray::trial {

/// One instance, whose library is loaded for as long as this lives.
class EditorUnderTrial {
 public:
  EditorUnderTrial() = default;
  virtual ~EditorUnderTrial() = default;
  EditorUnderTrial(const EditorUnderTrial&) = delete;
  EditorUnderTrial& operator=(const EditorUnderTrial&) = delete;

  virtual bool isThere() const = 0;
  /// Closes the instance; the library stays.
  virtual void closeInstance() = 0;

  virtual void openEditor(void* window) = 0;
  virtual void closeEditor() = 0;
  /// Returns whether the open editor takes the scale.
  virtual bool setScale(float scale) = 0;
  /// Since the last time: parameters that the panel moved.
  virtual int takeMoves() = 0;
};

#ifdef _WIN32
/// Loads a VST 3 library, by its path in UTF-8, and makes an instance if it gives one.
std::unique_ptr<EditorUnderTrial> loadVst3(const std::string& path);
#endif

}  // namespace sivray::trial
