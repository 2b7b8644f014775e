// Turns a row of the panel's table into a control.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "viewmodels/resources/IBramelImageProvider.h"
#include "views/PanelTable.h"
#include "widgets/IBWControl.h"
#include "widgets/ProvidedResources.h"
#include "widgets/SpokenControl.h"

namespace tesh::bramel::plugin::sivray {

/// A control and what else it is; a stub is nothing else.
struct BuiltControl {
  std::shared_ptr<IBWControl> control;
  juce::Component* component = nullptr;
  SpokenControl* spoken = nullptr;
};

/// Holds the images that several controls share. Message thread only.
class PanelBuilder {
 public:
  explicit PanelBuilder(IBramelImageProvider& provider);

  /// A control of its kind with its images; `stepCount` is that of its parameter.
  BuiltControl make(panel::ControlKind kind, std::uint64_t stepCount) const;

 private:
  BuiltControl makeKnob(const ImageSet& strip) const;
  BuiltControl makeFader() const;

  ImageSet sweepStrip;
  ImageSet centredStrip;
  juce::Image faderHandle;
  std::array<ImageSet, panel::kStateImages.size()> stateImages;  ///< By the rows of the table.
};

}  // namespace tesh::bramel::plugin::sivray
