// The two interfaces that the shell calls: the host's side and the editor's. It holds both weakly and skips calls to
// one that is gone.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Who has chosen a program: the host, or the user on the panel.
enum class Origin { host, panel };

/// Calls to the host, with no lock of the instrument held but in two places: a block holds the main lock while it sends
/// MIDI or reports a sound, and key states are reported under a lock of their own. `visibleIndex` is the host's number
/// of a parameter.
class BramelInstrumentHostCallback {
 public:
  virtual ~BramelInstrumentHostCallback() = default;
  virtual void beginEdit(std::uint64_t visibleIndex) = 0;
  virtual void endEdit(std::uint64_t visibleIndex) = 0;

  /// Sets the parameter by the host's route and tells the host.
  virtual void automate(std::uint64_t visibleIndex, float value) = 0;

  /// A message for the host's MIDI input. On the audio thread if a block sends it; the host's code may then wait.
  virtual void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) = 0;

  /// Another program is selected and all parameters may have changed: `programChanged`, then `parametersChanged`, for
  /// hosts that take the one and hosts that take the other.
  virtual void programChanged(Origin origin) = 0;
  virtual void parametersChanged() = 0;
  virtual void keyStateChanged(int note) = 0;

  /// A block has changed a parameter that chooses a pad's sound: the pad's key may have another name. Audio thread.
  virtual void soundChanged() SIVRAY_NONBLOCKING {}
};

/// Reports to the editor, one at a time; the audio waits for each. The marked operations come on the audio thread, in
/// every block, and on the thread of whoever flushes: the receiver queues and returns.
class BramelInstrumentUICallback {
 public:
  virtual ~BramelInstrumentUICallback() = default;

  /// Updates wait until they are released. A block reports its changes, releases, and holds again.
  virtual void holdUpdates() SIVRAY_NONBLOCKING = 0;
  virtual void releaseUpdates() SIVRAY_NONBLOCKING = 0;

  // `programIds` holds `count` program numbers.
  virtual void programSaved(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) = 0;
  virtual void programDeleted(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) = 0;
  virtual void programMoved(const std::string& bankName, std::uint64_t fromIndex, std::uint64_t toIndex) = 0;

  /// Another program, or another state: all values may have changed.
  virtual void programChanged() = 0;
  /// A write or a movement of the engine: once per parameter and block, in ascending order.
  virtual void parameterChanged(std::uint64_t parameterId) SIVRAY_NONBLOCKING = 0;
  /// A message from the host, as the engine gets it: notes, controllers and pitch bend without their channel.
  virtual void midiReceived(const std::uint8_t* data, std::size_t size) SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::vst
