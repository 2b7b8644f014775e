// Reads and writes macro records.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroParameterControl.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "core/LittleEndian.h"

namespace tesh::vimo {
namespace {

using cofu::core::ByteReader;
using cofu::core::ByteWriter;

constexpr std::string_view kCurrentTag = ".rev";
constexpr std::uint32_t kCurrentRevision = 256;
constexpr std::size_t kOlderSetBytes = 12;

bool isCurrentForm(std::span<const std::uint8_t> record) {
  return record.size() >= kCurrentTag.size() && std::equal(kCurrentTag.begin(), kCurrentTag.end(), record.begin());
}

}  // namespace

MacroParameterControl::MacroParameterControl(std::unique_ptr<MacroParameterControlTarget> valueTarget,
                                             MacroParameterControlListener* changeListener)
    : listener(changeListener), target(std::move(valueTarget)) {
  // The third word after the name is a float that is initially 1.0.
  constexpr std::array<std::uint8_t, 4> one{0x00, 0x00, 0x80, 0x3F};
  std::copy(one.begin(), one.end(), header.begin() + kNameBytes + 8);
}

void MacroParameterControl::addSet(std::unique_ptr<MacroSetBase> set) {
  const std::uint32_t id = set->targetId();
  const bool isTaken =
      std::any_of(ownSets.begin(), ownSets.end(), [id](const auto& other) { return other->targetId() == id; });
  if (isTaken) {
    return;
  }
  ownSets.push_back(std::move(set));
  if (listener) {
    listener->macrosChanged();
  }
}

void MacroParameterControl::sendToTarget(float value) const {
  if (!target) {
    return;
  }
  for (const auto& set : ownSets) {
    target->setValue(set->targetId(), set->map(value));
  }
}

void MacroParameterControl::readRecord(std::span<const std::uint8_t> record) {
  if (isCurrentForm(record)) {
    readCurrentForm(record);
  } else {
    readOlderForm(record);
  }
}

void MacroParameterControl::readCurrentForm(std::span<const std::uint8_t> record) {
  ByteReader reader(record.subspan(kCurrentTag.size()));
  const std::uint32_t revision = reader.word();
  const auto headerBytes = reader.take(kHeaderBytes);
  if (revision != kCurrentRevision || headerBytes.size() != kHeaderBytes) {
    return;
  }
  std::copy(headerBytes.begin(), headerBytes.end(), header.begin());
  const std::uint32_t count = reader.word();
  for (std::uint32_t i = 0; i < count && !reader.hasFailed(); ++i) {
    auto set = makeMacroSet(static_cast<MacroSetType>(reader.word()));
    const auto bytes = reader.take(reader.word());
    if (set && !reader.hasFailed() && set->deserialize(bytes)) {
      addSet(std::move(set));
    }
  }
}

void MacroParameterControl::readOlderForm(std::span<const std::uint8_t> record) {
  if (record.size() < kHeaderBytes || (record.size() - kHeaderBytes) % kOlderSetBytes != 0) {
    return;
  }
  std::copy_n(record.begin(), kNameBytes, header.begin());
  for (auto rest = record.subspan(kHeaderBytes); !rest.empty(); rest = rest.subspan(kOlderSetBytes)) {
    auto set = makeMacroSet(MacroSetType::linear);
    set->deserialize(rest.first(kOlderSetBytes));
    addSet(std::move(set));
  }
}

void MacroParameterControl::writeRecord(std::vector<std::uint8_t>& out) const {
  ByteWriter writer(out);
  writer.text(kCurrentTag);
  writer.word(kCurrentRevision);
  writer.bytes(header);
  writer.word(static_cast<std::uint32_t>(ownSets.size()));
  for (const auto& set : ownSets) {
    writer.word(static_cast<std::uint32_t>(set->type()));
    writer.word(set->byteSize());
    set->serialize(out);
  }
}

std::string MacroParameterControl::name() const {
  return {header.begin(), std::find(header.begin(), header.begin() + kNameBytes, std::uint8_t{0})};
}

void MacroParameterControl::setName(std::string_view text) {
  std::fill_n(header.begin(), kNameBytes, std::uint8_t{0});
  std::copy_n(text.begin(), std::min(text.size(), kNameBytes), header.begin());
}

float cleanMacroValue(float value) { return std::isfinite(value) ? std::clamp(value, 0.0F, 1.0F) : 0.0F; }

}  // namespace tesh::vimo
