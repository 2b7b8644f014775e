// The two interfaces that the shell calls: the host's side and the editor's. The shell holds both by weak pointers and
// skips calls to one that no longer exists.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Who has chosen a program: the host, or the user on the panel.
enum class Origin { host, panel };

/// Calls to the host. No lock of the instrument is held, except in two cases: a block holds the main lock while it
/// sends MIDI or reports a sound, and key states are reported under a lock of their own. `visibleIndex` is the host's
/// number of a parameter.
class BramelInstrumentHostCallback {
 public:
  virtual ~BramelInstrumentHostCallback() = default;
  virtual void beginEdit(std::uint64_t visibleIndex) = 0;
  virtual void endEdit(std::uint64_t visibleIndex) = 0;

  /// Sets the parameter in the way that the host does, and tells the host.
  virtual void automate(std::uint64_t visibleIndex, float value) = 0;

  /// Sends a message to the host. On the audio thread if it comes from a block; the host's code may then wait.
  virtual void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) = 0;

  /// Another program is selected and all parameters may have changed. The shell calls `programChanged`, then
  /// `parametersChanged`, because some hosts react to the first only, others to the second only.
  virtual void programChanged(Origin origin) = 0;
  virtual void parametersChanged() = 0;
  virtual void keyStateChanged(int note) = 0;

  /// A block has changed a parameter that chooses a pad's sound: the pad's key may have another name. Audio thread.
  virtual void soundChanged() SIVRAY_NONBLOCKING {}
};

/// Reports to the editor, one at a time. The audio thread waits for each, so the receiver must queue and return. The
/// marked operations come on the audio thread, in every block, and on a thread that flushes.
class BramelInstrumentUICallback {
 public:
  virtual ~BramelInstrumentUICallback() = default;

  /// Updates are held until they are released. A block reports its changes, releases them, and holds again.
  virtual void holdUpdates() SIVRAY_NONBLOCKING = 0;
  virtual void releaseUpdates() SIVRAY_NONBLOCKING = 0;

  // `programIds` holds `count` program numbers.
  virtual void programSaved(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) = 0;
  virtual void programDeleted(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) = 0;
  virtual void programMoved(const std::string& bankName, std::uint64_t fromIndex, std::uint64_t toIndex) = 0;

  /// Another program or state was set: all values may have changed.
  virtual void programChanged() = 0;
  /// The parameter was written, or the engine moved it. Once per parameter and block, in ascending order.
  virtual void parameterChanged(std::uint64_t parameterId) SIVRAY_NONBLOCKING = 0;
  /// A message from the host in the form that the engine gets: notes, controllers and pitch bend without their channel.
  virtual void midiReceived(const std::uint8_t* data, std::size_t size) SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::vst
