// The interface of a sound generator, as the shell and the macro layer use it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/ProcessBlock.h"
#include "core/RealTime.h"
#include "engine/samples/SampleLibrary.h"

namespace tesh::vimo {

/// Implemented by the macro layer.
class PluginListener {
 public:
  virtual ~PluginListener() = default;

  /// A block has brought automation. Called once per block, on the audio thread.
  virtual void parametersArrived() SIVRAY_NONBLOCKING {}
};

/// An engine parameter's name, and its values on the scale of 0 to 1.
struct GeneratorParameterInfo {
  std::array<char, 16> name{};  ///< Zero-terminated.
  float minimum = 0.0F;
  float maximum = 1.0F;
  float value = 0.5F;   ///< The current value.
  float step = 0.001F;  ///< Distance between two neighbouring integers of the parameter.
};

/// A generator's state: the bytes of `changing`, followed by those of `constant`.
struct EngineSnapshot {
  std::vector<std::uint8_t> changing;      ///< A copy of the bytes that the next block may change.
  std::span<const std::uint8_t> constant;  ///< Never changes.
  std::shared_ptr<const void> held;        ///< Keeps `constant` in memory.
};

/// A sound generator. Of `process`, `activate`, `deactivate`, `getState` and `setState` only one may run at a time;
/// operations that queue something may be called on any thread.
template <typename Sample>
class Generator {
 public:
  virtual ~Generator() = default;

  virtual int outputCount() const = 0;
  virtual int inputCount() const = 0;

  /// Applies the block's MIDI and automation and renders the block. A block of 0 frames is only applied. Audio thread.
  virtual void process(ProcessBlock& block) SIVRAY_NONBLOCKING = 0;

  /// 0 for a sound generator.
  virtual int kind() const = 0;

  /// The highest parameter id plus 1; not every id below it names a parameter.
  virtual int parameterCount() const = 0;

  /// Queues a value of 0 to 1 for the start of the next `process`. Ignored while active: values then come as
  /// automation.
  virtual void setParameter(std::uint32_t id, Sample value) = 0;

  /// Whether a new value of the parameter may read a file.
  virtual bool readsFile(std::uint32_t id) const {
    static_cast<void>(id);
    return false;
  }

  /// Reads the data that the parameter needs at `value` from the disk, so that the audio thread finds it in memory.
  /// Waits for the disk. Any thread but the audio thread, also during a block.
  virtual void prepare(std::uint32_t id, Sample value) {
    static_cast<void>(id);
    static_cast<void>(value);
  }

  /// Returns the current value, 0 to 1; -1 for an unknown id.
  virtual Sample getParameter(std::uint32_t id) const = 0;

  /// Fills `info`. Returns false for an unknown id.
  virtual bool getParameterInfo(std::uint32_t id, GeneratorParameterInfo& info) const = 0;

  /// Returns the text of the current value; empty for an unknown id.
  virtual std::string getParameterDisplay(std::uint32_t id) const = 0;

  /// Queues the tempo, in beats per minute, for the start of the next `process`.
  virtual void tempoChanged(double bpm) SIVRAY_NONBLOCKING = 0;

  /// The host's rate in Hz. The engine's own rate does not depend on it.
  virtual void setSampleRate(double rate) = 0;

  /// Starts or ends playing. Both silence all sound.
  virtual void activate() SIVRAY_NONBLOCKING = 0;
  virtual void deactivate() SIVRAY_NONBLOCKING = 0;

  /// All settings as bytes, valid until the next `getState`. `setState` ignores bytes that it does not understand.
  virtual std::span<const std::uint8_t> getState() = 0;
  virtual void setState(std::span<const std::uint8_t> bytes) = 0;
  /// The bytes of `getState`, taken quickly enough that a block may wait for it.
  virtual EngineSnapshot snapshot() {
    const std::span<const std::uint8_t> bytes = getState();
    return {{bytes.begin(), bytes.end()}, {}, nullptr};
  }

  /// The engine's own programs, numbered from 0. Numbers out of range are ignored or give an empty name.
  virtual int currentProgram() const = 0;
  virtual int programCount() const = 0;
  virtual void storeProgram(int index) { static_cast<void>(index); }
  virtual void swapPrograms(int a, int b) { static_cast<void>(a + b); }
  virtual std::string programName() const { return {}; }
  virtual std::string programNameAt(int index) const {
    static_cast<void>(index);
    return {};
  }
  virtual void setProgramName(std::string_view name) { static_cast<void>(name); }

  /// The waves that a browser can show; null if there is no library.
  virtual SampleLibrary* sampleLibrary() { return nullptr; }
};

}  // namespace tesh::vimo
