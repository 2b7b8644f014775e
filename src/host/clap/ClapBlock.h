// A block as a CLAP host gives it: values, tempo and transport take force at their own frames, by cutting the block
// there; notes and MIDI messages go to the shell; reports and the ends of notes go back.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/ProcessBlock.h"
#include "core/RealTime.h"
#include "host/clap/ClapParameters.h"
#include "host/clap/ClapRecords.h"
#include "host/clap/ClapReports.h"
#include "host/shell/BramelInstrument.h"
#include "host/shell/HostWrites.h"

namespace tesh::bramel::clap {

/// Events that are out of order count at the earliest frame that is still to come, later ones at the last. Unknown
/// ones, and those that are shorter than their type, are skipped. Audio thread, except for `value` and `flush` while no
/// block runs.
class ClapBlock {
 public:
  /// All outlive this object.
  ClapBlock(const std::shared_ptr<vst::BramelInstrument>& instrument, const ClapParameters& parameters,
            ClapReports& reports);

  /// Returns a ProcessStatus.
  std::int32_t process(const Process& block) SIVRAY_NONBLOCKING;

  /// Takes values and gives reports without sound.
  void flush(const InputEvents* in, const OutputEvents* out) SIVRAY_NONBLOCKING;

  /// Whether the host listens to an out, 0 to vst::kOutCount - 1, other than the main one; true at first. Any thread.
  void setOutActive(std::size_t out, bool isActive) SIVRAY_NONBLOCKING;

  /// Forgets which keys are held.
  void reset() SIVRAY_NONBLOCKING;

  /// The value that the host or the panel set last, without its modulation; `isModulated` is false where the
  /// instrument itself has it, as with all values of a kit or a state until the next block. Any thread.
  bool isModulated(std::uint32_t index) const { return values[index].offset != 0.0F && !reports.areValuesNew(); }
  float baseOf(std::uint32_t index) const { return values[index].base; }

 private:
  static constexpr std::size_t kKeys = 128;

  struct Value {
    std::atomic<float> base = 0.0F;
    std::atomic<float> offset = 0.0F;  ///< Of the modulation, added to the base.
    std::uint64_t writtenAt = 0;       ///< By the host, in `renders`: the instrument has the value only after the next.
  };

  /// A key that is held by a note event.
  struct HeldKey {
    bool isHeld = false;
    std::int32_t noteId = -1;
    std::int16_t port = 0;
    std::int16_t channel = 0;
  };

  void takeOutputs(const Process& block) SIVRAY_NONBLOCKING;
  void takeEvent(const EventHeader& event, std::int32_t frame) SIVRAY_NONBLOCKING;
  void takeValue(const ParamEvent& event) SIVRAY_NONBLOCKING;
  void takeNoteOn(const NoteEvent& event, std::int32_t frame) SIVRAY_NONBLOCKING;
  void takeNoteOff(const NoteEvent& event, std::int32_t frame) SIVRAY_NONBLOCKING;
  void takeTransport(const TransportEvent& event) SIVRAY_NONBLOCKING;
  void readBase(std::uint32_t index) SIVRAY_NONBLOCKING;
  void write(std::uint32_t index) SIVRAY_NONBLOCKING;
  void restoreModulation() SIVRAY_NONBLOCKING;
  void handOver() SIVRAY_NONBLOCKING;
  void sendNote(std::uint8_t status, std::size_t key, std::uint8_t velocity, std::int32_t frame) SIVRAY_NONBLOCKING;
  void endNote(std::size_t key, std::int32_t frame) SIVRAY_NONBLOCKING;
  void render(std::uint32_t from, std::uint32_t to) SIVRAY_NONBLOCKING;
  void giveReports(const OutputEvents* out, std::uint32_t last) SIVRAY_NONBLOCKING;

  const std::shared_ptr<vst::BramelInstrument> owned;
  vst::BramelInstrument& instrument;
  const ClapParameters& parameters;
  ClapReports& reports;
  vst::HostWrites writes;
  std::vector<Value> values;  ///< By index.
  std::array<HeldKey, kKeys> held{};
  std::atomic<std::uint32_t> activeOuts = ~0U;  ///< A bit for each.
  /// Of the block that runs; beyond the main ones only where the host listens to another out, and null where not.
  std::array<float*, vimo::kAllChannels> channels{};
  bool hasOuts = false;
  const OutputEvents* noteEnds = nullptr;  ///< Of the block that runs.
  std::uint64_t renders = 1;
  std::uint32_t renderedFrames = 0;  ///< Of the block that runs, as the next one.
  std::uint32_t lastEnd = 0;         ///< The frame at which the last note ended.
  bool isMoving = false;             ///< The host's transport.
};

}  // namespace tesh::bramel::clap
