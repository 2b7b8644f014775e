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

/// Any thread may call any operation. A lock serialises the calls; `process` holds it for a whole block. A parameter
/// has two numbers: its id, which counts all parameters, and its visible index, which counts those that the host sees.
/// For an id or index out of range, reads return 0 or an empty string, and writes change nothing.
class BramelInstrument : public BramelInstrumentBase {
 public:
  using Processor = vimo::PluginMacroControllable<vimo::Generator<float>>;
  using Property = cofu::core::boxed::Box;

  static constexpr std::uint64_t kNoParameter = ~std::uint64_t{0};

  /// `processor` may be null: the instrument is then silent and has neither parameters nor programs.
  explicit BramelInstrument(std::unique_ptr<Processor> processor);
  ~BramelInstrument() override;
  BramelInstrument(const BramelInstrument&) = delete;
  BramelInstrument& operator=(const BramelInstrument&) = delete;

  // Hooks for instruments whose host sees other steps or values than the engine has. The base class returns the
  // argument.

  virtual std::uint64_t mapParameterSteps(std::uint64_t index, std::uint64_t steps) const;
  virtual float mapValueToHost(std::uint64_t index, float value) const SIVRAY_NONBLOCKING;
  virtual float mapValueFromHost(std::uint64_t index, float value) const SIVRAY_NONBLOCKING;

  // Audio and time, in host frames. The audio thread calls `process`, `processOuts`, `setTempo`, `setHostTempo` and
  // `setTransport`.

  /// Renders one block. Null inputs are silence; does nothing if an output is null.
  void process(float** inputs, float** outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  /// As above, with outs beside the main one. `outputs` has vimo::kAllChannels channels: the main two, two for each pad
  /// and two for the effect; null for outs that nobody listens to. The other outs carry the sound before the master
  /// level, with a full scale of 1.0, and do not change the main out.
  void processOuts(std::span<float*> outputs, std::int32_t frames) SIVRAY_NONBLOCKING;
  /// Allocates the memory that the other outs need at host rates other than 44100 Hz; until then they are silent there.
  /// Waits for a running block; not on the audio thread.
  void makeOuts();
  /// The largest frame of a message that callers may pass. Messages are delivered in order of arrival, so one far ahead
  /// would delay all later ones. No host's block is as long.
  static constexpr std::int32_t kFarthestFrames = 1 << 20;
  /// Queues a MIDI message for the next block, `deltaFrames` after its start. `resume` drops messages that no block has
  /// fetched. Takes the main lock only for controllers, pitch bends and system exclusive messages, and when more than
  /// 256 messages wait.
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) SIVRAY_NONBLOCKING;
  /// As above, for all MIDI messages of a host's list, in order; takes the lock at most once. Skips other events, null
  /// pointers, and messages beyond kFarthestFrames.
  void sendEvents(const VstEvents& events) SIVRAY_NONBLOCKING;
  /// Queues a message of the on-screen keyboard and sends it to the host as well. Ignored while not active.
  void sendKeyboardMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames);
  /// A rate that is not above 0 or not finite is ignored.
  void setSampleRate(float rate);
  void setTempo(float bpm) SIVRAY_NONBLOCKING;
  /// As above, for a double. Ignores a number that no float can hold.
  void setHostTempo(double bpm) SIVRAY_NONBLOCKING;
  /// Tells that the host's transport has started or stopped: the next block begins with the matching MIDI message.
  void setTransport(bool moves) SIVRAY_NONBLOCKING;
  void resume();
  void suspend();
  bool isActive() const;

  // Parameters. Values are normalised, 0 to 1.

  /// The number of visible parameters.
  std::uint64_t parameterCount() const;
  /// The number of all parameters.
  std::uint64_t cachedParameterCount() const;
  /// kNoParameter out of range.
  std::uint64_t parameterId(std::uint64_t visibleIndex) const SIVRAY_NONBLOCKING;
  std::string parameterName(std::uint64_t id) const;
  /// The text of the value that was written last.
  std::string parameterDisplay(std::uint64_t id) const;
  std::uint64_t parameterSteps(std::uint64_t id) const;
  float parameterDefault(std::uint64_t id) const;
  /// The value that was written last, also while no audio runs.
  float parameterValue(std::uint64_t id);
  /// As above, without waiting: the value that was written last, or the one that the last block left. Also inside a
  /// block.
  float latestValue(std::uint64_t id) const SIVRAY_NONBLOCKING;
  /// Makes `latestValue` return `value` at once, for a write that `setParameters` will bring.
  void announceParameter(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  std::uint64_t parameterInteger(std::uint64_t id);
  /// The engine's current value, by the engine's own parameter number: -1 for an unknown number, 0 without a processor.
  float engineParameter(std::uint64_t engineId) const;
  /// A write by the host, which takes effect with the next block. Ignores a value outside 0 to 1. If more than 511
  /// writes wait, older ones are dropped whose parameter has a newer one.
  void setParameter(std::uint64_t id, float value) SIVRAY_NONBLOCKING;
  /// As above, for several writes, in their order. `values` is at least as long as `ids`.
  void setParameters(std::span<const std::uint64_t> ids, std::span<const float> values) SIVRAY_NONBLOCKING;
  /// A write by the editor. For a visible parameter the shell asks the host to automate it, and the host then writes
  /// it.
  void setParameterFromEditor(std::uint64_t id, float value);
  void setParameterInteger(std::uint64_t id, std::uint64_t value);
  /// The host records the editor's writes between these two as one gesture.
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

  /// Replaces the map of MIDI controllers: parameter ids by controller number, in the form of
  /// MacroControllerBase::ccMap.
  void setControllers(std::map<std::uint8_t, std::uint64_t> ids);

  // Keys and properties. Key states have a lock of their own and never wait for a block.

  /// `note` is 0 to 127.
  std::uint32_t keyState(int note) const;
  void setKeyState(int note, std::uint32_t state);
  void setAllKeyStates(std::uint32_t state);
  /// Returns a copy of the value, or null.
  Property property(const std::string& name) const;
  /// Stores a copy of the value; null removes it.
  void setProperty(const std::string& name, const Property& value);

  // Programs. Banks: 0 factory, 1 second factory, 2 ghost, 3 and above user. Every change of a bank writes the user's
  // program file before the editor is told; blocks do not wait for the disk. Deleting, overwriting and importing first
  // keep a dated copy of that file, and so does every change if the file cannot be read or holds macros that this
  // version lacks.

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
  /// Appends the programs of an exported file to the user bank. A file of another kind adds nothing.
  void importPrograms(const std::string& path);
  /// False if the file could not be written.
  bool exportPrograms(const std::string& path);
  /// Whether all changes of the user bank have reached the disk. Any thread.
  bool areProgramsWritten() const;

  // State.

  /// A parameter's id and the value that the state is to hold instead of the current one.
  struct StateValue {
    std::uint64_t id = 0;
    float value = 0.0F;
  };
  /// The bytes that a host keeps in its song; empty without a processor.
  std::vector<std::uint8_t> getState(std::span<const StateValue> replaced = {});
  /// Restores a state that getState returned. Other bytes change nothing and return false.
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
