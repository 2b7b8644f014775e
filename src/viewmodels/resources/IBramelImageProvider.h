// Provides the library's images by name.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/Boxed.h"

namespace tesh::bramel {

/// Message thread only.
class IBramelImageProvider {
 public:
  virtual ~IBramelImageProvider() = default;

  /// A boxed `juce::Image`, or null for an unknown name. Spaces count as underscores, and case does not matter. Above
  /// 100 %, images have twice the width and height of their place on the panel.
  virtual cofu::core::boxed::Box getImage(const std::string& name) = 0;
};

}  // namespace tesh::bramel
