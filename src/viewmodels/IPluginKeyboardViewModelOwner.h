// The side of a keyboard view model on which the host's notes come in.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "viewmodels/IPluginKeyboardViewModel.h"

namespace tesh::bramel {

/// Each tells the listener; without one it does nothing. `note` is 0 to 127.
class IPluginKeyboardViewModelOwner : public virtual IPluginKeyboardViewModel {
 public:
  virtual void noteOn(std::int32_t note) = 0;
  virtual void noteOff(std::int32_t note) = 0;
};

}  // namespace tesh::bramel
