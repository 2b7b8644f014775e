// Makes an instrument's view model, and the view that shows it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "core/Boxed.h"
#include "host/shell/BramelInstrumentBase.h"

namespace tesh::bramel::vst {

/// A view and its view model. Each box is null if there is none.
struct InstrumentEditorParts {
  cofu::core::boxed::Box view;       ///< Holds a `std::shared_ptr<juce::Component>` of 768 by 468.
  cofu::core::boxed::Box viewModel;  ///< Holds a `std::shared_ptr<IPluginEditViewModelOwner>`.
};

/// Message thread only. `instrument` is a BramelInstrument; for another kind the boxes are null.
class BramelInstrumentEditorProvider {
 public:
  virtual ~BramelInstrumentEditorProvider() = default;

  /// Makes a view model only, boxed as in InstrumentEditorParts.
  virtual cofu::core::boxed::Box createViewModel(const std::shared_ptr<BramelInstrumentBase>& instrument) = 0;

  /// `imageScale` is the set of images to draw with: 1 at the panel's own size, 2 at twice that size.
  virtual InstrumentEditorParts createEditor(const std::shared_ptr<BramelInstrumentBase>& instrument,
                                             int imageScale) = 0;
};

}  // namespace tesh::bramel::vst
