// Reading, writing and editing of the two halves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "macro/MacroSetTwoBinded.h"

#include "core/LittleEndian.h"
#include "macro/MacroSetLinear.h"

namespace tesh::vimo {
namespace {

/// The type of a missing half in a record.
constexpr std::uint32_t kNoHalf = 0xFFFFFFFFU;

constexpr std::uint32_t kPoints = 0;
constexpr std::uint32_t kSplit = 1;
constexpr std::uint32_t kFirstHalf = 2;
constexpr std::uint32_t kFirstHalfType = 4;
constexpr std::uint32_t kPropertyCount = 6;

std::unique_ptr<MacroSetBase> makeHalf(std::uint32_t type) {
  return type <= static_cast<std::uint32_t>(MacroSetType::biquadCurve) ? makeMacroSet(static_cast<MacroSetType>(type))
                                                                       : nullptr;
}

std::uint32_t sizeOf(const std::unique_ptr<MacroSetBase>& half) { return half ? half->byteSize() : 0; }

}  // namespace

std::uint32_t MacroSetTwoBinded::byteSize() const { return kRecordHeadBytes + sizeOf(halves[0]) + sizeOf(halves[1]); }

bool MacroSetTwoBinded::deserialize(std::span<const std::uint8_t> record) {
  if (record.size() < kRecordHeadBytes) {
    return false;
  }
  cofu::core::ByteReader head(record);
  const std::uint32_t id = head.word();
  points = {head.real(), head.real(), head.real()};
  setSplit(head.real());
  cofu::core::ByteReader body(record.subspan(kRecordHeadBytes));
  for (auto& half : halves) {
    half = makeHalf(head.word());
    const auto bytes = body.take(head.word());
    if (half && (body.hasFailed() || !half->deserialize(bytes))) {
      half.reset();
    }
  }
  setTargetId(id);
  return true;
}

void MacroSetTwoBinded::serialize(std::vector<std::uint8_t>& out) const {
  cofu::core::ByteWriter writer(out);
  writer.word(targetId());
  writer.real(points.minimum);
  writer.real(points.middle);
  writer.real(points.maximum);
  writer.real(split);
  for (const auto& half : halves) {
    writer.word(half ? static_cast<std::uint32_t>(half->type()) : kNoHalf);
    writer.word(sizeOf(half));
  }
  for (const auto& half : halves) {
    if (half) {
      half->serialize(out);
    }
  }
}

void MacroSetTwoBinded::setTargetId(std::uint32_t id) {
  MacroSetBase::setTargetId(id);
  for (const auto& half : halves) {
    if (half) {
      half->setTargetId(id);
    }
  }
}

float MacroSetTwoBinded::map(float x) const {
  const bool isFirst = x < split;
  const auto& half = halves[isFirst ? 0 : 1];
  const float inHalf = isFirst ? x / split : (x - split) / (1.0F - split);
  return half ? half->map(inHalf) : 0.0F;
}

BoxedValue MacroSetTwoBinded::property(std::uint32_t index) const {
  if (index == kPoints) {
    return cofu::core::boxed::makeBox(points);
  }
  if (index == kSplit) {
    return cofu::core::boxed::makeBox(split);
  }
  const auto& half = halves[index % 2];
  if (index >= kPropertyCount || !half) {
    return nullptr;
  }
  return index < kFirstHalfType ? half->property(0) : cofu::core::boxed::makeBox(half->type());
}

void MacroSetTwoBinded::setProperty(std::uint32_t index, BoxedValue value) {
  if (index == kPoints) {
    if (const auto* newPoints = cofu::core::boxed::valueIn<tmmm>(value)) {
      points = *newPoints;
    }
  } else if (index == kSplit) {
    if (const auto* newSplit = cofu::core::boxed::valueIn<float>(value)) {
      setSplit(*newSplit);
    }
  } else if (index >= kFirstHalf && index < kFirstHalfType) {
    if (halves[index % 2]) {
      halves[index % 2]->setProperty(0, std::move(value));
    }
  } else if (index < kPropertyCount) {
    if (const auto* type = cofu::core::boxed::valueIn<MacroSetType>(value)) {
      setHalf(index % 2, *type);
    }
  }
}

void MacroSetTwoBinded::setSplit(float x) { split = x > 0.0F && x < 1.0F ? x : 0.5F; }

void MacroSetTwoBinded::setHalf(std::size_t half, MacroSetType type) {
  auto made = makeHalf(static_cast<std::uint32_t>(type));
  if (!made) {
    return;
  }
  made->setTargetId(targetId());
  if (auto* ranged = dynamic_cast<MacroSetLinear*>(made.get())) {
    ranged->setRange(half == 0 ? tmm{points.minimum, points.middle} : tmm{points.middle, points.maximum});
  }
  halves[half] = std::move(made);
}

}  // namespace tesh::vimo
