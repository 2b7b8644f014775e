// Objects that an instrument keeps while its editor is closed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "core/Boxed.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel {

/// The shared `T` that the instrument keeps under `key`. If there is none, makes it by `make` and keeps it. Message
/// thread.
template <typename T, typename Make>
std::shared_ptr<T> sharedProperty(vst::BramelInstrument& instrument, const std::string& key, Make make) {
  using Shared = std::shared_ptr<T>;
  const auto kept = instrument.property(key);
  if (const Shared* const shared = cofu::core::boxed::valueIn<Shared>(kept); shared != nullptr && *shared != nullptr) {
    return *shared;
  }
  Shared made = make();
  instrument.setProperty(key, cofu::core::boxed::makeBox(made));
  return made;
}

}  // namespace tesh::bramel
