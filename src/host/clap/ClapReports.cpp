// Keeps reports until the host may hear of them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/clap/ClapReports.h"

#include <algorithm>

#include "core/MidiStatus.h"
#include "host/clap/ClapKits.h"

namespace tesh::bramel::clap {

ClapReports::ClapReports(vst::BramelInstrument& ofInstrument, const ClapParameters& ofParameters,
                         const ClapHost& newHost)
    : instrument(ofInstrument), parameters(ofParameters), host(newHost) {}

void ClapReports::put(const Report& report) {
  {
    const std::lock_guard lock(writing);
    reports.put(report);
  }
  if (report.kind != Report::Kind::midi) {
    host.requestFlush();
  }
}

void ClapReports::beginEdit(std::uint64_t visibleIndex) {
  put({.kind = Report::Kind::gestureBegin, .index = static_cast<std::uint32_t>(visibleIndex)});
}

void ClapReports::endEdit(std::uint64_t visibleIndex) {
  put({.kind = Report::Kind::gestureEnd, .index = static_cast<std::uint32_t>(visibleIndex)});
}

void ClapReports::automate(std::uint64_t visibleIndex, float value) {
  instrument.setParameter(instrument.parameterId(visibleIndex), value);
  put({.kind = Report::Kind::value, .index = static_cast<std::uint32_t>(visibleIndex), .value = value});
}

void ClapReports::sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t /*deltaFrames*/) {
  if (!takesMidi || data == nullptr || size == 0 || data[0] < cofu::core::kMidiFirstStatus) {
    return;
  }
  Report report{.kind = Report::Kind::midi};
  std::copy_n(data, std::min(size, report.message.size()), report.message.begin());
  put(report);
}

void ClapReports::programChanged(vst::Origin origin) {
  if (origin == vst::Origin::panel) {
    isKitChosen = true;
  }
}

void ClapReports::parametersChanged() {
  isDirty = true;
  stateLoaded();
}

void ClapReports::stateLoaded() {
  haveValuesChanged = true;
  isRescanWanted = true;
  soundChanged();
  askForCall();
}

void ClapReports::askForCall() {
  if (isCallWanted.load(std::memory_order_relaxed) && isCallWanted.exchange(false)) {
    cofu::core::mayWait([this] { host.requestCallback(); });  // The host's code.
  }
}

void ClapReports::onMainThread() {
  // First, so that changes from here on request another call.
  const bool haveNames = haveNamesChanged.exchange(false);
  if (isRescanWanted.exchange(false)) {
    host.rescanValues();
  }
  if (isDirty.exchange(false)) {
    host.markDirty();
  }
  if (isKitChosen.exchange(false)) {
    tellKit(host, instrument);
  }
  if (haveNames) {
    host.noteNamesChanged();
  }
}

}  // namespace tesh::bramel::clap
