// A copy of all parameters that host and editor read without the engine, with the texts of the latest values.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "core/RealTime.h"
#include "core/RealTimeLock.h"
#include "host/shell/ChangeList.h"
#include "macro/MacroController.h"
#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel::vst {

struct ParameterInfo {
  std::string name;
  std::uint64_t steps = 0;
  float defaultValue = 0.0F;
  float value = 0.0F;              ///< Normalised; the last one that reached a block.
  std::uint64_t integerValue = 0;  ///< Of parameters that carry an integer.
};

/// Any thread; a lock of its own serialises the operations. Names, steps and defaults never change once they are filled
/// in, and are read without it.
class ParameterCache {
 public:
  using Controller = vimo::MacroController<vimo::Generator<float>>;

  /// Copies all parameters.
  void fill(const Controller& controller);
  /// Copies the values of all parameters, also for their texts.
  void refresh(const Controller& controller) SIVRAY_NONBLOCKING;
  /// Copies the values for the texts alone.
  void refreshTexts(const Controller& controller);
  /// Stores the writes of a block. Audio thread.
  void store(const ChangeList& changes) SIVRAY_NONBLOCKING;

  std::uint64_t count() const { return parameters.size(); }
  /// A field that never changes; zero or empty out of range.
  template <typename Field>
  Field fact(std::uint64_t id, Field ParameterInfo::*field) const {
    return id < parameters.size() ? parameters[static_cast<std::size_t>(id)].*field : Field{};
  }
  /// The same for a value.
  template <typename Field>
  Field read(std::uint64_t id, Field ParameterInfo::*field) const {
    const std::lock_guard lock(mutex);
    return fact(id, field);
  }

  /// The values of several parameters, 0 for an id out of range. Audio thread safe.
  void readValues(std::span<const std::uint64_t> ids, std::span<float> values) const SIVRAY_NONBLOCKING;

  void setTooltipProvider(std::unique_ptr<tooltip::BramelTooltipProvider> provider);
  /// The text of the value that was written last; empty without a provider.
  std::string display(std::uint64_t id) const;
  /// Stores a value for its text alone; `read` changes with the next block. Audio thread safe.
  void noteValue(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  /// Calls `noteEach(note)`, in which `note(id, value)` is noteValue with the lock taken once.
  template <typename NoteEach>
  void noteAll(NoteEach noteEach) SIVRAY_NONBLOCKING {
    const cofu::core::RealTimeLock lock(mutex);
    noteEach([this](std::uint64_t id, float value) { noteText(id, value); });
  }

 private:
  void noteText(std::uint64_t id, float value) SIVRAY_NONBLOCKING;

  mutable std::recursive_mutex mutex;
  std::vector<ParameterInfo> parameters;
  std::unique_ptr<tooltip::BramelTooltipProvider> tooltips;  ///< May be null.
};

}  // namespace tesh::bramel::vst
