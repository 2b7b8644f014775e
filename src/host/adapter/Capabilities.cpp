// The tables of abilities and vendor answers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/adapter/Capabilities.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace tesh::bramel::vst {
namespace {

constexpr std::string_view kExactAbility = "NKSCallbacks";

/// A text that begins with one of these is an ability, regardless of the rest.
constexpr std::array<std::string_view, 6> kAbilities{"sendVstEvents",    "sendVstMidiEvent",    "sendVstMidiEvents",
                                                     "receiveVstEvents", "receiveVstMidiEvent", "receiveVstTimeInfo"};

/// A vendor call that is answered with 1, and the little-endian bytes that are written before.
struct VendorAnswer {
  std::uint32_t question;
  bool needsPointer;  ///< Null is answered with 0; otherwise null is answered with 1 and nothing is written.
  std::size_t size;
  std::array<std::uint8_t, 9> bytes;
};

constexpr std::array<VendorAnswer, 6> kVendorAnswers{{
    {0x4E49000D, true, 4, {0}},                           // "NI", 13
    {0x4E49001C, true, 1, {1}},                           // "NI", 28
    {0x4E490020, true, 8, {1}},                           // "NI", 32
    {0x4E69000D, false, 9, {4, 0, 0, 0, 0, 0, 0, 0, 1}},  // "Ni", 13
    {0x4E69001C, false, 9, {1, 0, 0, 0, 0, 0, 0, 0, 0}},  // "Ni", 28
    {0x4E690020, false, 9, {8, 0, 0, 0, 0, 0, 0, 0, 1}},  // "Ni", 32
}};

/// "ni", 32: asks whether the value is the one that "Ni", 32 was answered with.
constexpr std::uint32_t kCheckQuestion = 0x6E690020;
constexpr std::intptr_t kCheckValue = 8;

}  // namespace

std::int32_t answerCanDo(const char* text) {
  if (text == nullptr) {
    return 0;
  }
  const std::string_view ability(text);
  const bool known = ability == kExactAbility ||
                     std::any_of(kAbilities.begin(), kAbilities.end(),
                                 [ability](std::string_view prefix) { return ability.starts_with(prefix); });
  return known ? 1 : 0;
}

std::intptr_t answerVendorQuestion(std::int32_t question, std::intptr_t value, void* answer) {
  const auto number = static_cast<std::uint32_t>(question);
  if (number == kCheckQuestion) {
    return answer != nullptr && value == kCheckValue ? 1 : 0;
  }
  const auto* const row =
      std::find_if(kVendorAnswers.begin(), kVendorAnswers.end(),
                   [number](const VendorAnswer& candidate) { return candidate.question == number; });
  if (row == kVendorAnswers.end() || (answer == nullptr && row->needsPointer)) {
    return 0;
  }
  if (answer != nullptr) {
    std::memcpy(answer, row->bytes.data(), row->size);
  }
  return 1;
}

}  // namespace tesh::bramel::vst
