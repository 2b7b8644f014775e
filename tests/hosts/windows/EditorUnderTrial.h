// A library of any form, as far as its panel is concerned, and of some forms their sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

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

  virtual void setState(std::vector<char> /*bytes*/) {}
  /// Four seconds of `noteOfBlock` in blocks of `kBlock` frames: left and right in turn. Nothing of a form that is not
  /// asked for its sound.
  virtual std::vector<float> renderNotes(float /*rate*/) { return {}; }
};

#ifdef _WIN32
/// Loads a VST 3 library, by its path in UTF-8, and makes an instance if it gives one.
std::unique_ptr<EditorUnderTrial> loadVst3(const std::string& path);
/// The same for a CLAP library.
std::unique_ptr<EditorUnderTrial> loadClap(const std::string& path);
#endif

}  // namespace sivray::trial
