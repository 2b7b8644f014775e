// What the shell and the macro layer know of a sound generator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/ProcessBlock.h"
#include "core/RealTime.h"
#include "engine/samples/SampleLibrary.h"

namespace tesh::vimo {

/// Told, on the audio thread, that a block brought automation.
class PluginListener {
 public:
  virtual ~PluginListener() = default;
  virtual void parametersArrived() SIVRAY_NONBLOCKING {}
};

/// Name and range of one engine parameter in normalised form.
struct GeneratorParameterInfo {
  std::array<char, 16> name{};  ///< Zero-terminated.
  float minimum = 0.0F;
  float maximum = 1.0F;
  float value = 0.5F;   ///< Current normalised value.
  float step = 0.001F;  ///< Distance between neighbouring integers of the parameter.
};

/// A sound generator. Its owner serialises `process`, `activate`, `deactivate`, `getState` and `setState`; the
/// operations that queue may come from any thread.
template <typename Sample>
class Generator {
 public:
  virtual ~Generator() = default;

  virtual int outputCount() const = 0;
  virtual int inputCount() const = 0;

  /// Takes in the block's MIDI and automation, and renders it. Audio thread.
  virtual void process(ProcessBlock& block) SIVRAY_NONBLOCKING = 0;

  /// 0 for a sound generator.
  virtual int kind() const = 0;

  virtual int parameterCount() const = 0;

  /// Queues a parameter for the start of the next `process`. Ignored while active.
  virtual void setParameter(std::uint32_t id, Sample value) = 0;

  /// The current normalised value, -1 for an unknown id.
  virtual Sample getParameter(std::uint32_t id) const = 0;
  virtual bool getParameterInfo(std::uint32_t id, GeneratorParameterInfo& info) const = 0;
  virtual std::string getParameterDisplay(std::uint32_t id) const = 0;

  /// Queues the tempo for the start of the next `process`.
  virtual void tempoChanged(double bpm) SIVRAY_NONBLOCKING = 0;
  virtual void setSampleRate(double rate) = 0;

  /// Start and end of playing; both silence everything that sounds.
  virtual void activate() SIVRAY_NONBLOCKING = 0;
  virtual void deactivate() SIVRAY_NONBLOCKING = 0;

  /// All settings as bytes, which stay good until the next call.
  virtual std::span<const std::uint8_t> getState() = 0;
  virtual void setState(std::span<const std::uint8_t> bytes) = 0;

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

  /// The sounds that a browser can show, or null.
  virtual SampleLibrary* sampleLibrary() { return nullptr; }
};

}  // namespace tesh::vimo
