// A pad's level meters as a read-only parameter group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "core/FixedPoint.h"
#include "engine/voice/VoiceAllocator.h"
#include "parameters/Q57214DrumGenericParameter.h"

namespace tesh::bramel::plugin::sivray {

/// Setting a value does nothing.
class ReadParameterDispatcher : public IParameter {
 public:
  ReadParameterDispatcher(const VoiceAllocator& voiceAllocator, unsigned padNumber)
      : pad(padNumber), group(kRows), allocator(voiceAllocator) {}

  int count() const override { return group.count(); }
  int setValue(int, std::int32_t*) override { return 0; }

  /// Index 0 gives the left peak of the last render, index 1 the right one, 0 to 32767. Any other index gives 0.
  std::int32_t value(int index) const override {
    return index == 0 || index == 1 ? allocator.padLevel(pad, static_cast<unsigned>(index)) : 0;
  }

  std::string format(int index, std::int32_t value) const override { return group.format(index, value); }
  const ParameterRow* info(int index) const override { return group.info(index); }
  int indexOf(std::string_view name) const override { return group.indexOf(name); }

 private:
  static constexpr std::int32_t kFull = cofu::core::kFullScale;
  static constexpr std::array<ParameterRow, 2> kRows{{{"L Level", -kFull, kFull, 0}, {"R Level", -kFull, kFull, 0}}};

  unsigned pad;
  Q57214DrumGenericParameter group;
  const VoiceAllocator& allocator;
};

}  // namespace tesh::bramel::plugin::sivray
