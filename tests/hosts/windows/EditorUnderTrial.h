// A library of any form, with its panel, and for some forms its sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace sivray::trial {

/// One instance. Its library is loaded while this object exists.
class EditorUnderTrial {
 public:
  EditorUnderTrial() = default;
  virtual ~EditorUnderTrial() = default;
  EditorUnderTrial(const EditorUnderTrial&) = delete;
  EditorUnderTrial& operator=(const EditorUnderTrial&) = delete;

  virtual bool isThere() const = 0;
  /// Closes the instance; the library stays loaded.
  virtual void closeInstance() = 0;

  virtual void openEditor(void* window) = 0;
  virtual void closeEditor() = 0;
  /// Returns whether the open editor accepts the scale.
  virtual bool setScale(float scale) = 0;
  /// Returns the number of parameters that the panel has moved since the last call.
  virtual int takeMoves() = 0;

  virtual void setState(std::vector<char> /*bytes*/) {}
  /// Renders four seconds of `noteOfBlock` in blocks of `kBlock` frames, interleaved; empty for a form whose sound is
  /// not tested.
  virtual std::vector<float> renderNotes(float /*rate*/) { return {}; }
};

#ifdef _WIN32
/// Loads a VST 3 library from its UTF-8 path, and creates an instance if it offers one.
std::unique_ptr<EditorUnderTrial> loadVst3(const std::string& path);
/// As above for a CLAP library.
std::unique_ptr<EditorUnderTrial> loadClap(const std::string& path);
#endif

}  // namespace sivray::trial
