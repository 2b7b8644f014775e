// The meters of one pad as parameters that can only be read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "engine/voice/VoiceAllocator.h"
#include "parameters/Q57214DrumGenericParameter.h"

namespace tesh::bramel::plugin::sivray {

class ReadParameterDispatcher : public IParameter {
 public:
  ReadParameterDispatcher(const VoiceAllocator& voiceAllocator, unsigned padNumber)
      : pad(padNumber), group(kRows), allocator(voiceAllocator) {}

  int count() const override { return group.count(); }
  int setValue(int, std::int32_t*) override { return 0; }

  /// Index 0 is the left peak of the last render, 1 the right one, 0 to 32767; others give 0.
  std::int32_t value(int index) const override {
    return index == 0 || index == 1 ? allocator.padLevel(pad, static_cast<unsigned>(index)) : 0;
  }

  std::string format(int index, std::int32_t value) const override { return group.format(index, value); }
  const ParameterRow* info(int index) const override { return group.info(index); }
  int indexOf(std::string_view name) const override { return group.indexOf(name); }

 private:
  static constexpr std::array<ParameterRow, 2> kRows{{{"L Level", -32767, 32767, 0}, {"R Level", -32767, 32767, 0}}};

  unsigned pad;
  Q57214DrumGenericParameter group;
  const VoiceAllocator& allocator;
};

}  // namespace tesh::bramel::plugin::sivray
