// Turns a row of the panel's table into a control.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include "viewmodels/resources/IBramelImageProvider.h"
#include "views/PanelTable.h"
#include "widgets/IBWControl.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel::plugin::sivray {

/// Holds the images that several controls share. Message thread only.
class PanelBuilder {
 public:
  explicit PanelBuilder(IBramelImageProvider& provider);

  /// A control of its kind with its images; `stepCount` is that of its parameter. All but stubs are components.
  std::shared_ptr<IBWControl> make(panel::ControlKind kind, std::uint64_t stepCount) const;

 private:
  std::shared_ptr<IBWControl> makeKnob(const ImageSet& strip) const;
  std::shared_ptr<IBWControl> makeFader() const;
  std::shared_ptr<IBWControl> makeButton(const panel::StateImages& row) const;
  std::shared_ptr<IBWControl> makeSwitch(const panel::StateImages& row) const;

  IBramelImageProvider& images;
  ImageSet sweepStrip;
  ImageSet centredStrip;
};

}  // namespace tesh::bramel::plugin::sivray
