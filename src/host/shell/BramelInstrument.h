// The host-neutral shell of one instrument: all that lies between a plug-in format and the engine. Adapters and view
// models talk to this class and never to the engine.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/Boxed.h"
#include "core/RealTime.h"
#include "host/shell/BramelInstrumentBase.h"
#include "host/shell/BramelInstrumentCallbacks.h"
#include "macro/PluginMacroControllable.h"
#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel::vst {

/// Any thread may call any operation; a lock serialises them, and `process` holds it for a whole block. A parameter has
/// two numbers: its id, which counts all, and its visible index, which counts those that the host sees. What is out of
/// range reads as 0 or the empty string and changes nothing.
class BramelInstrument : public BramelInstrumentBase {
 public:
  using Processor = vimo::PluginMacroControllable<vimo::Generator<float>>;
  using Property = cofu::core::boxed::Box;

  static constexpr std::uint64_t kNoParameter = ~std::uint64_t{0};

  /// Without a processor the instrument is silent, and all that is asked of it empty.
  explicit BramelInstrument(std::unique_ptr<Processor> processor);
  ~BramelInstrument() override;
  BramelInstrument(const BramelInstrument&) = delete;
  BramelInstrument& operator=(const BramelInstrument&) = delete;

  // How an instrument differs from its host's view of it.

  virtual std::uint64_t mapParameterSteps(std::uint64_t index, std::uint64_t steps) const;
  virtual float mapValueToHost(std::uint64_t index, float value) const;
  virtual float mapValueFromHost(std::uint64_t index, float value) const SIVRAY_NONBLOCKING;

  // Audio and time, in frames of the host. The audio thread calls the first two and `setTempo`.

  /// One block. Null inputs stand for silence; with a null output nothing happens.
  void process(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  /// A MIDI message for the next block, `deltaFrames` from its start.
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) SIVRAY_NONBLOCKING;
  /// A message of the on-screen keyboard; it goes out to the host as well. Ignored while not active.
  void sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames);
  /// A rate that is not above 0 or not finite is ignored.
  void setSampleRate(float rate);
  void setTempo(float bpm) SIVRAY_NONBLOCKING;
  void resume();
  void suspend();
  bool isActive() const;

  // Parameters. Values are normalised, 0 to 1; ids count hidden ones.

  /// Of the visible ones.
  std::uint64_t parameterCount() const;
  /// Of all.
  std::uint64_t cachedParameterCount() const;
  /// kNoParameter out of range.
  std::uint64_t parameterId(std::uint64_t visibleIndex) const SIVRAY_NONBLOCKING;
  std::string parameterName(std::uint64_t id) const;
  /// The text of the value that was given last.
  std::string parameterDisplay(std::uint64_t id) const;
  std::uint64_t parameterSteps(std::uint64_t id) const;
  float parameterDefault(std::uint64_t id) const;
  /// What was written last, also while no audio runs.
  float parameterValue(std::uint64_t id);
  std::uint64_t parameterInteger(std::uint64_t id);
  /// What the engine has in force, by the engine's own number: -1 for an unknown one, 0 without a processor.
  float engineParameter(std::uint64_t engineId) const;
  /// The host's route. A value outside 0 to 1 is ignored.
  void setParameter(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  /// The editor's route: by way of the host where the host sees the parameter.
  void setParameterFromEditor(std::uint64_t id, float value);
  void setParameterInteger(std::uint64_t id, std::uint64_t value);
  /// Between these the editor's writes are one gesture to the host.
  void beginGesture(std::uint64_t id);
  void endGesture(std::uint64_t id);

  // Identity.

  /// "Error" without a processor.
  std::string productName() const;
  int inputCount() const;
  int outputCount() const;
  bool isSynth() const;
  /// Null without a processor.
  Processor* processorHandle() const;

  // Keys and properties. Key states do not wait for a block.

  /// `note` is 0 to 127.
  std::uint32_t keyState(int note) const;
  void setKeyState(int note, std::uint32_t state);
  void setAllKeyStates(std::uint32_t state);
  /// A copy, null for no value.
  Property property(const std::string& name) const;
  /// Keeps a copy; null empties it.
  void setProperty(const std::string& name, const Property& value);

  // Programs. Banks: 0 factory, 1 second factory, 2 ghost, 3 and above user. Every change of a bank writes the user's
  // program file.

  std::uint64_t currentProgram();
  std::uint64_t currentBank() const;
  std::string currentProgramName();
  std::uint64_t programCount(std::uint64_t bank) const;
  std::string programName(std::uint64_t bank, std::uint64_t index) const;
  void setProgram(std::uint64_t bank, std::uint64_t index);
  /// Stores the current values as a new last program, and selects it with the next block.
  void saveProgramAs(std::uint64_t bank, const std::string& name);
  /// Stores the current values into the selected program.
  void overwriteProgram();
  void deleteProgram(std::uint64_t bank, std::uint64_t index);
  void moveProgram(std::uint64_t bank, std::uint64_t from, std::uint64_t to);
  /// Reaches the disk with the next store.
  void renameCurrentProgram(const std::string& name);
  /// Adds the programs of an exported file to the user bank.
  void importPrograms(const std::string& path);
  void exportPrograms(const std::string& path);

  // State.

  /// What a host keeps in its song; empty without a processor.
  std::vector<std::uint8_t> getState();
  /// Takes back what getState gave. Other bytes change nothing.
  void setState(const void* data, std::size_t size);

  // Wiring.

  void setHostCallback(std::weak_ptr<BramelInstrumentHostCallback> callback);
  void setUICallback(std::weak_ptr<BramelInstrumentUICallback> callback);
  void setHostKind(int kind);
  void setHostVendor(const std::string& vendor);
  void setTooltipProvider(std::unique_ptr<tooltip::BramelTooltipProvider> provider);

 private:
  class Impl;
  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
