// Gives out the library's images by name.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/Boxed.h"

namespace tesh::bramel {

/// Message thread only.
class IBramelImageProvider {
 public:
  virtual ~IBramelImageProvider() = default;

  /// A boxed `juce::Image`, or null if there is none of this name. Blanks count as underscores, letter case does not
  /// matter. Images of an editor above 100 % have twice the pixels of their place on the panel.
  virtual cofu::core::boxed::Box getImage(const std::string& name) = 0;
};

}  // namespace tesh::bramel
