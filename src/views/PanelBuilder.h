// Makes a control from a row of the panel's table.
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

/// A control, with the same object as component and for screen readers; both are null for a stub.
struct BuiltControl {
  std::shared_ptr<IBWControl> control;
  juce::Component* component = nullptr;
  SpokenControl* spoken = nullptr;
};

/// Holds the images that controls share. Message thread only.
class PanelBuilder {
 public:
  explicit PanelBuilder(IBramelImageProvider& provider);

  /// Makes a control of this kind with its images; `stepCount` is its parameter's.
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
