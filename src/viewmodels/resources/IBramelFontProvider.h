// Provides the library's fonts by name.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/Boxed.h"

namespace tesh::bramel {

/// Message thread only.
class IBramelFontProvider {
 public:
  virtual ~IBramelFontProvider() = default;

  /// A boxed `juce::Font` of the given height (ascent plus descent, panel pixels). The default typeface for an unknown
  /// name.
  virtual cofu::core::boxed::Box getFont(const std::string& name, double height) = 0;
};

}  // namespace tesh::bramel
