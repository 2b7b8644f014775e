// Notes between panel and instrument, and the scale that an on-screen keyboard plays.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "viewmodels/IPluginKeyboardViewModelListener.h"

namespace tesh::bramel {

/// Message thread only. Setting the present value again notifies nobody. Keys count the notes of the scale upwards from
/// 0.
class IPluginKeyboardViewModel {
 public:
  static constexpr std::int32_t kHighestOctave = 7;

  virtual ~IPluginKeyboardViewModel() = default;

  /// Null if there is none.
  virtual IPluginKeyboardViewModelListener* getListener() const = 0;
  /// The listener is held weakly, by its `getWeakSelf`. Null for none.
  virtual void setListener(IPluginKeyboardViewModelListener* listener) = 0;

  virtual bool getInstrumentFlag() const = 0;

  /// The root, in semitones.
  virtual std::int32_t getKey() const = 0;
  virtual void setKey(std::int32_t key) = 0;
  virtual std::int32_t getOctave() const = 0;
  /// Limited to 0 to kHighestOctave.
  virtual void setOctave(std::int32_t octave) = 0;
  virtual std::uint64_t getKeyRange() const = 0;
  /// 0 is ignored.
  virtual void setKeyRange(std::uint64_t range) = 0;
  virtual bool getChordMode() const = 0;
  virtual void setChordMode(bool isOn) = 0;

  // Stored for a view; no other effect.
  virtual bool getViewFlag() const = 0;
  virtual void setViewFlag(bool flag) = 0;
  virtual std::int64_t getViewValue() const = 0;
  virtual void setViewValue(std::int64_t value) = 0;
  virtual std::uint32_t getViewIndex() const = 0;
  virtual void setViewIndex(std::uint32_t index) = 0;

  virtual bool isKeyboardEnabled() const = 0;
  virtual std::int32_t noteForKey(std::int32_t key) const = 0;
  /// Note `voice` of the key's chord; 0 if it has fewer notes.
  virtual std::int32_t chordNote(std::int32_t key, std::uint32_t voice) const = 0;
  /// Keys per octave.
  virtual std::uint64_t getNoteCount() const = 0;
  /// Plays a message at once and sends it to the host too. Ignored while the host is not playing the instrument.
  virtual void sendMidi(const std::uint8_t* data, std::size_t size) = 0;
};

}  // namespace tesh::bramel
