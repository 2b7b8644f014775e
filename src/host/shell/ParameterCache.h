// A copy of all parameters, which host and editor read without the engine, with the texts of the latest values.
#pragma once

#include <atomic>
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

/// The properties of a parameter that never change.
struct ParameterInfo {
  std::string name;
  std::uint64_t steps = 0;
  float defaultValue = 0.0F;
};

/// Any thread. Reads take no lock, except those of texts.
class ParameterCache {
 public:
  using Controller = vimo::MacroController<vimo::Generator<float>>;

  /// Copies all parameters. Must be called before any other operation.
  void fill(const Controller& controller);
  /// Copies the values of all parameters, and for their texts too.
  void refresh(const Controller& controller) SIVRAY_NONBLOCKING;
  /// Copies the values for the texts only.
  void refreshTexts(const Controller& controller);
  /// Stores the writes of a block. Audio thread.
  void store(const ChangeList& changes) SIVRAY_NONBLOCKING;

  std::uint64_t count() const SIVRAY_NONBLOCKING { return parameters.size(); }
  /// A property of a parameter; zero or empty out of range.
  template <typename Field>
  Field fact(std::uint64_t id, Field ParameterInfo::*field) const {
    return id < count() ? parameters[static_cast<std::size_t>(id)].*field : Field{};
  }

  /// The normalised value as the last block left it; 0 out of range.
  float value(std::uint64_t id) const SIVRAY_NONBLOCKING {
    return id < count() ? values[static_cast<std::size_t>(id)].normalised.load(std::memory_order_relaxed) : 0.0F;
  }
  /// The value that was written since, else that of the last block; 0 out of range.
  float latest(std::uint64_t id) const SIVRAY_NONBLOCKING {
    return id < count() ? values[static_cast<std::size_t>(id)].coming.load(std::memory_order_relaxed) : 0.0F;
  }
  /// The value of a parameter that holds an integer; 0 out of range.
  std::uint64_t integer(std::uint64_t id) const SIVRAY_NONBLOCKING {
    return id < count() ? values[static_cast<std::size_t>(id)].integer.load(std::memory_order_relaxed) : 0;
  }

  /// Makes `latest` return the value of a write that waits for a block. Does not change the text.
  void setComing(std::uint64_t id, float value) SIVRAY_NONBLOCKING {
    if (id < count()) {
      values[static_cast<std::size_t>(id)].coming.store(value, std::memory_order_relaxed);
    }
  }

  void setTooltipProvider(std::unique_ptr<tooltip::BramelTooltipProvider> provider);
  /// The text of the value that was written last; empty without a provider.
  std::string display(std::uint64_t id) const;
  /// The same as `setComing`, and for the text too. Audio thread safe.
  void noteValue(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  /// Sets the text's value of a parameter that holds an integer.
  void noteInteger(std::uint64_t id, std::uint64_t value);
  /// Calls `noteEach(note)`. Each `note(id, value)` in it acts as noteValue; the lock is taken once for all.
  template <typename NoteEach>
  void noteAll(NoteEach noteEach) SIVRAY_NONBLOCKING {
    const cofu::core::RealTimeLock lock(mutex);
    noteEach([this](std::uint64_t id, float value) {
      setComing(id, value);
      noteText(id, value);
    });
  }

 private:
  struct Value {
    std::atomic<float> normalised = 0.0F;
    std::atomic<float> coming = 0.0F;
    std::atomic<std::uint64_t> integer = 0;

    void setBoth(float value) SIVRAY_NONBLOCKING {
      normalised.store(value, std::memory_order_relaxed);
      coming.store(value, std::memory_order_relaxed);
    }
  };

  void noteText(std::uint64_t id, float value) SIVRAY_NONBLOCKING;

  std::vector<ParameterInfo> parameters;
  std::unique_ptr<Value[]> values;  // One per parameter.

  mutable std::mutex mutex;                                  ///< Guards the texts.
  std::unique_ptr<tooltip::BramelTooltipProvider> tooltips;  ///< May be null.
};

}  // namespace tesh::bramel::vst
