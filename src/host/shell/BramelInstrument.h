// The shell of one instrument, which lies between a plug-in format and the engine. Adapters and view models talk to
// this class and never to the engine.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/Boxed.h"
#include "core/RealTime.h"
#include "host/shell/BramelInstrumentBase.h"
#include "host/shell/BramelInstrumentCallbacks.h"
#include "macro/PluginMacroControllable.h"
#include "viewmodels/texts/BramelTooltipProvider.h"

namespace tesh::bramel::vst {

struct VstEvents;

/// Any thread may call any operation; a lock serialises them, and `process` holds it for a whole block. A parameter has
/// two numbers: its id, which counts all parameters, and its visible index, which counts those that the host sees. An
/// id or index out of range reads as 0 or the empty string and changes nothing.
class BramelInstrument : public BramelInstrumentBase {
 public:
  using Processor = vimo::PluginMacroControllable<vimo::Generator<float>>;
  using Property = cofu::core::boxed::Box;

  static constexpr std::uint64_t kNoParameter = ~std::uint64_t{0};

  /// A null processor is allowed: the instrument is then silent and has no parameters and programs.
  explicit BramelInstrument(std::unique_ptr<Processor> processor);
  ~BramelInstrument() override;
  BramelInstrument(const BramelInstrument&) = delete;
  BramelInstrument& operator=(const BramelInstrument&) = delete;

  // Hooks for instruments whose host sees other steps or values than the engine. Here they return their argument.

  virtual std::uint64_t mapParameterSteps(std::uint64_t index, std::uint64_t steps) const;
  virtual float mapValueToHost(std::uint64_t index, float value) const SIVRAY_NONBLOCKING;
  virtual float mapValueFromHost(std::uint64_t index, float value) const SIVRAY_NONBLOCKING;

  // Audio and time, in frames of the host. The audio thread calls the first two, and tells tempo and transport.

  /// Renders one block. Null inputs are silence; does nothing if an output is null.
  void process(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  /// The same with outs beside the main one: `outputs` has vimo::kAllChannels channels, two for each pad and two for
  /// the effect behind the main ones, null where nobody listens. They carry sound before the master level, at full
  /// scale 1.0, and leave the main out as it is.
  void processOuts(std::span<float*> outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  /// Takes the memory that outs need where the host's rate is not the engine's: until then they are silent there. Not
  /// on the audio thread; waits for a block.
  void makeOuts();
  /// Messages are delivered in the order of their arrival, so that one with a frame far ahead would delay all later
  /// ones: callers drop those beyond this. No host's block is as long.
  static constexpr std::int32_t kFarthestFrames = 1 << 20;
  /// Queues a MIDI message for the next block, `deltaFrames` from its start. `resume` drops messages that no block has
  /// fetched. Takes the lock only for controllers, pitch bends and exclusive messages, and when very many wait.
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) SIVRAY_NONBLOCKING;
  /// The same for the MIDI messages of a host's list, in their order; takes the lock at most once. Skips other events,
  /// null ones and those beyond kFarthestFrames.
  void sendEvents(const VstEvents& events) SIVRAY_NONBLOCKING;
  /// Queues a message of the on-screen keyboard and sends it to the host as well. Ignored while not active.
  void sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames);
  /// A rate that is not above 0 or not finite is ignored.
  void setSampleRate(float rate);
  void setTempo(float bpm) SIVRAY_NONBLOCKING;
  /// The same for a host's number. One that no float can hold is ignored.
  void setHostTempo(double bpm) SIVRAY_NONBLOCKING;
  /// The host's transport has started or stopped: sends the MIDI message for it, at the start of the next block.
  void setTransport(bool moves) SIVRAY_NONBLOCKING;
  void resume();
  void suspend();
  bool isActive() const;

  // Parameters. Values are normalised, 0 to 1.

  /// The number of visible parameters.
  std::uint64_t parameterCount() const;
  /// The number of all parameters.
  std::uint64_t cachedParameterCount() const;
  /// Returns kNoParameter out of range.
  std::uint64_t parameterId(std::uint64_t visibleIndex) const SIVRAY_NONBLOCKING;
  std::string parameterName(std::uint64_t id) const;
  /// The text of the value that was written last.
  std::string parameterDisplay(std::uint64_t id) const;
  std::uint64_t parameterSteps(std::uint64_t id) const;
  float parameterDefault(std::uint64_t id) const;
  /// The value that was written last, also while no audio runs.
  float parameterValue(std::uint64_t id);
  /// The same without waiting for anything: what was written last, or what the last block left. Inside a block too.
  float latestValue(std::uint64_t id) const SIVRAY_NONBLOCKING;
  /// A write by the host that `setParameters` will bring: `latestValue` gives it from now on.
  void announceParameter(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  std::uint64_t parameterInteger(std::uint64_t id);
  /// What the engine has in force, by the engine's own number: -1 for an unknown one, 0 without a processor.
  float engineParameter(std::uint64_t engineId) const;
  /// A write by the host, which takes force with the next block. A value outside 0 to 1 is ignored. Of more than 511
  /// writes between two blocks, older ones are dropped in favour of newer ones to the same parameter.
  void setParameter(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  /// The same for several writes, in their order. `values` is at least as long as `ids`.
  void setParameters(std::span<const std::uint64_t> ids, std::span<const float> values) SIVRAY_NONBLOCKING;
  /// A write by the editor. The host is told to automate a visible parameter, and writes it in turn.
  void setParameterFromEditor(std::uint64_t id, float value);
  void setParameterInteger(std::uint64_t id, std::uint64_t value);
  /// The editor's writes between these two are one gesture to the host.
  void beginGesture(std::uint64_t id);
  void endGesture(std::uint64_t id);

  // Identity.

  /// "Error" without a processor.
  std::string productName() const;
  int inputCount() const;
  int outputCount() const;
  bool isSynth() const;
  /// Returns null without a processor.
  Processor* processorHandle() const;

  /// Lets MIDI controllers move other parameters from now on: ids by controller, as MacroControllerBase::ccMap has
  /// them.
  void setControllers(std::map<std::uint8_t, std::uint64_t> ids);

  // Keys and properties. Key states have a lock of their own and never wait for a block.

  /// `note` is 0 to 127.
  std::uint32_t keyState(int note) const;
  void setKeyState(int note, std::uint32_t state);
  void setAllKeyStates(std::uint32_t state);
  /// Returns a copy of the value, or null.
  Property property(const std::string& name) const;
  /// Stores a copy of the value; null empties the property.
  void setProperty(const std::string& name, const Property& value);

  // Programs. Banks: 0 factory, 1 second factory, 2 ghost, 3 and above user. Every change of a bank writes the user's
  // program file before the editor is told; blocks do not wait for the disk. Deleting, overwriting and importing first
  // keep a dated copy of that file, and so does every change if the file cannot be read or holds more macros.

  std::uint64_t currentProgram();
  std::uint64_t currentBank() const;
  std::string currentProgramName();
  std::uint64_t programCount(std::uint64_t bank) const;
  std::string programName(std::uint64_t bank, std::uint64_t index) const;
  /// Selects a program at once, also while no audio runs, and tells the editor and then the host.
  void setProgram(std::uint64_t bank, std::uint64_t index, Origin origin = Origin::panel);
  /// Stores the current values as the last program of the bank; the next block selects it.
  void saveProgramAs(std::uint64_t bank, const std::string& name);
  /// Stores the current values into the selected program.
  void overwriteProgram();
  void deleteProgram(std::uint64_t bank, std::uint64_t index);
  void moveProgram(std::uint64_t bank, std::uint64_t from, std::uint64_t to);
  /// Names the current values; the name is stored with them by saveProgramAs or overwriteProgram.
  void renameCurrentProgram(const std::string& name);
  /// Appends the programs of an exported file to the user bank. Another file adds nothing.
  void importPrograms(const std::string& path);
  /// False if the file could not be written.
  bool exportPrograms(const std::string& path);
  /// False from a change of a bank that did not reach the disk until the next one that does. Any thread.
  bool areProgramsWritten() const;

  // State.

  /// A value by the parameter's id, which the state is to hold in place of the present one.
  struct StateValue {
    std::uint64_t id = 0;
    float value = 0.0F;
  };
  /// The bytes that a host keeps in its song; empty without a processor.
  std::vector<std::uint8_t> getState(std::span<const StateValue> replaced = {});
  /// Restores a state that getState returned. Returns false for other bytes, which change nothing.
  bool setState(const void* data, std::size_t size);

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
