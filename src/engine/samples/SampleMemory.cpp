// Takes areas of whole pages, each in the first gap that is long enough.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/SampleMemory.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

#include "core/HeldByAll.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::size_t kFrameBytes = 2 * sizeof(std::int16_t);

/// Room for 4000 waves of six seconds. Frame numbers then stay below 2^30.
constexpr std::size_t kMostBytes = std::size_t{4} << 30;
constexpr std::size_t kLeastBytes = std::size_t{64} << 20;

}  // namespace

std::shared_ptr<SampleMemory> SampleMemory::ofProcess() {
  static cofu::core::HeldByAll<SampleMemory> held;
  return held.get([] { return std::make_shared<SampleMemory>(); });
}

SampleMemory::SampleMemory()
    : range(kMostBytes, kLeastBytes),
      vacant{{0, range.size()}},
      start(takeBytes(platform::AddressRange::pageBytes())) {}

std::int16_t* SampleMemory::takeBytes(std::size_t bytes) {
  const std::lock_guard lock(mutex);
  const auto gap = std::find_if(vacant.begin(), vacant.end(), [bytes](const auto& one) { return one.second >= bytes; });
  if (gap == vacant.end() || !range.open(gap->first, bytes)) {
    throw std::bad_alloc();
  }
  const auto [firstByte, gapBytes] = *gap;
  if (gapBytes > bytes) {
    vacant.emplace_hint(gap, firstByte + bytes, gapBytes - bytes);
  }
  vacant.erase(gap);
  return reinterpret_cast<std::int16_t*>(range.data() + firstByte);
}

void SampleMemory::giveBack(const std::int16_t* samples, std::size_t bytes) {
  const auto firstByte = static_cast<std::size_t>(reinterpret_cast<const std::uint8_t*>(samples) - range.data());
  const std::lock_guard lock(mutex);
  range.close(firstByte, bytes);
  auto gap = vacant.emplace(firstByte, bytes).first;
  if (const auto next = std::next(gap); next != vacant.end() && next->first == firstByte + bytes) {
    gap->second += next->second;
    vacant.erase(next);
  }
  if (gap != vacant.begin()) {
    if (const auto before = std::prev(gap); before->first + before->second == firstByte) {
      before->second += gap->second;
      vacant.erase(gap);
    }
  }
}

SampleMemory::Area SampleMemory::take(const std::shared_ptr<SampleMemory>& memory, std::size_t frames) {
  const std::size_t page = platform::AddressRange::pageBytes();
  Area area;
  area.bytes = (frames * kFrameBytes + page - 1) / page * page;
  area.start = memory->takeBytes(area.bytes);
  area.memory = memory;
  return area;
}

SampleMemory::Area::Area(Area&& other) noexcept
    : memory(std::move(other.memory)), start(std::exchange(other.start, nullptr)), bytes(other.bytes) {}

SampleMemory::Area& SampleMemory::Area::operator=(Area&& other) noexcept {
  std::swap(memory, other.memory);
  std::swap(start, other.start);
  std::swap(bytes, other.bytes);
  return *this;
}

SampleMemory::Area::~Area() {
  if (memory != nullptr) {
    memory->giveBack(start, bytes);
  }
}

void SampleMemory::Area::makePresent(std::size_t frames) const {
  const auto* const first = reinterpret_cast<const std::uint8_t*>(start);
  memory->range.makePresent(static_cast<std::size_t>(first - memory->range.data()),
                            std::min(frames * kFrameBytes, bytes));
}

}  // namespace tesh::bramel::plugin::sivray
