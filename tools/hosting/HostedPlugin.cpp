// Records the plug-in's calls of its host, for all forms alike.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "hosting/HostedPlugin.h"

#include <algorithm>

namespace sivray::hosting {
namespace {

constexpr std::size_t kMostRecords = 65536;

/// Returns and clears the records; keeps their memory.
template <typename Record>
std::vector<Record> takeAll(std::mutex& mutex, std::vector<Record>& records) {
  const std::lock_guard lock(mutex);
  std::vector<Record> taken(records);
  records.clear();
  return taken;
}

template <typename Record>
void add(std::mutex& mutex, std::vector<Record>& records, const Record& record) {
  const std::lock_guard lock(mutex);
  if (records.size() < kMostRecords) {
    records.push_back(record);
  }
}

}  // namespace

HostedPlugin::HostedPlugin() {
  calls.reserve(kMostRecords);
  midiOut.reserve(kMostRecords);
}

std::vector<HostCall> HostedPlugin::takeCalls() { return takeAll(recordMutex, calls); }

std::vector<MidiBytes> HostedPlugin::takeMidi() { return takeAll(recordMutex, midiOut); }

void HostedPlugin::record(const HostCall& call) { add(recordMutex, calls, call); }

void HostedPlugin::recordMidi(std::span<const std::uint8_t> message) {
  MidiBytes bytes{};
  std::copy_n(message.begin(), std::min(message.size(), bytes.size()), bytes.begin());
  add(recordMutex, midiOut, bytes);
}

}  // namespace sivray::hosting
