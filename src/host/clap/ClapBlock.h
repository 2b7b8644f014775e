// Renders a block of a CLAP host. Cuts it where a value, the tempo or the transport changes, so that each takes effect
// at its own frame; passes notes and MIDI messages to the shell; returns reports and note ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/ProcessBlock.h"
#include "core/RealTime.h"
#include "host/clap/ClapParameters.h"
#include "host/clap/ClapRecords.h"
#include "host/clap/ClapReports.h"
#include "host/shell/BramelInstrument.h"
#include "host/shell/HostWrites.h"

namespace tesh::bramel::clap {

/// An event that comes out of order takes effect at the next frame to be rendered; one beyond the block, at its last
/// frame. Unknown events, and those shorter than their type's record, are skipped. Audio thread, except where an
/// operation says otherwise.
class ClapBlock {
 public:
  /// All outlive this object.
  ClapBlock(vst::BramelInstrument& instrument, const ClapParameters& parameters, ClapReports& reports);

  /// Returns a ProcessStatus.
  std::int32_t process(const Process& block) SIVRAY_NONBLOCKING;

  /// Takes values and gives reports without rendering. Audio thread, or the main thread while the plug-in is not
  /// active.
  void flush(const InputEvents* in, const OutputEvents* out) SIVRAY_NONBLOCKING;

  /// Whether the host listens to an out other than the main one, 1 to vst::kOutCount - 1; true at first. Any thread.
  void setOutActive(std::size_t out, bool isActive) SIVRAY_NONBLOCKING;

  /// Forgets which keys are held.
  void reset() SIVRAY_NONBLOCKING;

  /// Whether modulation is added to the parameter's value, so that `baseOf` is the value that host or panel set last.
  /// False after a kit or a state until the next block: until then the instrument has the unmodulated values. Any
  /// thread.
  bool isModulated(std::uint32_t index) const { return values[index].offset != 0.0F && !reports.areValuesNew(); }
  float baseOf(std::uint32_t index) const { return values[index].base; }

 private:
  static constexpr std::size_t kKeys = 128;

  struct Value {
    std::atomic<float> base = 0.0F;
    std::atomic<float> offset = 0.0F;  ///< Modulation, added to the base.
    /// Value of `renders` at the host's last write, which reaches the instrument with the next render.
    std::uint64_t writtenAt = 0;
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

  vst::BramelInstrument& instrument;
  const ClapParameters& parameters;
  ClapReports& reports;
  vst::HostWrites writes;
  std::vector<Value> values;  ///< By index.
  std::array<HeldKey, kKeys> held{};
  std::atomic<std::uint32_t> activeOuts = ~0U;  ///< One bit per out.
  /// Of the running block: the main out's two. Those of the other outs only if the host listens to any, and null for
  /// outs that it does not listen to.
  std::array<float*, vimo::kAllChannels> channels{};
  bool hasOuts = false;
  const OutputEvents* noteEnds = nullptr;  ///< Of the running block.
  std::uint64_t renders = 1;
  std::uint32_t renderedFrames = 0;  ///< Frames of the running block rendered so far.
  std::uint32_t lastEnd = 0;         ///< The frame at which the last note ended.
  bool isMoving = false;             ///< The host's transport.
};

}  // namespace tesh::bramel::clap
