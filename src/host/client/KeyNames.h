// What the plug-in wrappers ask of the names on the keys, as cmake/juce-7.0.5 has them ask.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// A processor whose keys have names, which change.
class KeyNames {
 public:
  virtual ~KeyNames() = default;

  /// The name, in UTF-8, of what a key from 0 to 127 plays now; empty where it plays nothing. Not on the audio thread.
  virtual std::string keyName(int key) const = 0;

  /// The host has moved a parameter, by its index, in its window: where this may change a name, the message thread
  /// soon tells the listeners of the processor that its parameters have other texts. Not on the audio thread.
  virtual void hostMoved(int parameterIndex) = 0;

  /// True once after a name may have changed. By one thread at a time, the audio thread too.
  virtual bool takeNamesChanged() SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::vst
