// Notifications of an edit view model to its only view.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel {

class IPluginEditViewModel;

/// Called on the message thread after the values have changed; the view reads them from the model.
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
