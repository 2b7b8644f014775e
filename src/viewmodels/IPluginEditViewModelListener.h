// What the one view that listens to an edit view model hears.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel {

class IPluginEditViewModel;

/// Called on the message thread. The values have changed already: the view asks the model for them.
class IPluginEditViewModelListener {
 public:
  virtual ~IPluginEditViewModelListener() = default;
  virtual void onAllParametersChanged(IPluginEditViewModel& model) { static_cast<void>(model); }
  virtual void onParameterChanged(IPluginEditViewModel& model, std::uint64_t index) {
    static_cast<void>(model);
    static_cast<void>(index);
  }
  virtual void onKeyboardStateChanged(IPluginEditViewModel& model) { static_cast<void>(model); }
};

}  // namespace tesh::bramel
