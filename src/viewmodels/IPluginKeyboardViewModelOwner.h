// The interface of a keyboard view model for incoming notes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "viewmodels/IPluginKeyboardViewModel.h"

namespace tesh::bramel {

/// Each function notifies the listener, if there is one. `note` is 0 to 127.
class IPluginKeyboardViewModelOwner : public virtual IPluginKeyboardViewModel {
 public:
  virtual void noteOn(std::int32_t note) = 0;
  virtual void noteOff(std::int32_t note) = 0;
};

}  // namespace tesh::bramel
