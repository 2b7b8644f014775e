// Ranges, names and display texts of the master effect's parameters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/MultiEffectorParam.h"

#include <algorithm>
#include <array>

#include "effects/EffectTable.h"
#include "effects/SivrayMultiEffector.h"
#include "effects/interfaces/TempoTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

constexpr std::size_t kRowCount = 4;
using Rows = std::array<ParameterRow, kRowCount>;

constexpr Rows kTemplate{
    {{"Type", 0, 29, 0}, {"Switch", 0, 1, 1}, {"Edit1", 0, kTopKnob, 100}, {"Edit2", 0, kTopKnob, 100}}};

constexpr const char* labelOr(const char* label, const char* fallback) { return *label == '\0' ? fallback : label; }

constexpr Rows rowsOf(const EffectType& type) {
  Rows rows = kTemplate;
  rows[0].name = "Effect Type";
  rows[1].name = "Effect Switch";
  rows[2].name = labelOr(type.edit1Label, kTemplate[2].name);
  rows[3].name = labelOr(type.edit2Label, kTemplate[3].name);
  return rows;
}

/// The rows of every type, and last those for a type outside the table.
constexpr auto kRowsByType = [] {
  std::array<Rows, kEffectTypeCount + 1> all{};
  std::transform(kEffectTypes.begin(), kEffectTypes.end(), all.begin(), rowsOf);
  all.back() = rowsOf({"", "", ""});
  return all;
}();

constexpr bool isRow(int index) { return index >= 0 && index < static_cast<int>(kRowCount); }

/// Distance from the knob's centre, always with a sign.
std::string signedText(std::int32_t value) {
  const std::int64_t offset = std::int64_t{value} - 64;
  std::string text = std::to_string(offset);
  if (offset >= 0) {
    text.insert(text.begin(), '+');
  }
  return text;
}

std::string edit1Text(int type, std::int32_t value) {
  switch (type) {
    case kTypePump:
    case kTypeSlicer:
      return kNoteNames[lfoNoteIndex(value)];
    case kTypeBpmDelay:
      return kNoteNames[delayNoteIndex(value)];
    case kTypeEqualizer:
      return signedText(value);
    default:
      return std::to_string(value);
  }
}

std::string edit2Text(int type, std::int32_t value) {
  return type == kTypeEqualizer || type == kTypePeakingEq ? signedText(value) : std::to_string(value);
}

std::string switchText(std::int32_t value) {
  if (value == 0) {
    return "Off";
  }
  return value == 1 ? "On" : "";
}

}  // namespace

int MultiEffectorParam::count() const { return static_cast<int>(kRowCount); }

int MultiEffectorParam::setValue(int index, std::int32_t* value) {
  if (isRow(index)) {
    const ParameterRow& row = kTemplate[static_cast<std::size_t>(index)];
    *value = std::clamp(*value, row.minimum, row.maximum);
  }
  return owner.setValue(index, *value);
}

std::int32_t MultiEffectorParam::value(int index) const { return owner.value(index); }

std::string MultiEffectorParam::format(int index, std::int32_t value) const {
  switch (index) {
    case 0:
      return effectTypeName(value);
    case 1:
      return switchText(value);
    case 2:
      return edit1Text(owner.value(0), value);
    case 3:
      return edit2Text(owner.value(0), value);
    default:
      return {};
  }
}

const ParameterRow* MultiEffectorParam::info(int index) const {
  if (!isRow(index)) {
    return &kNoParameterRow;
  }
  const int type = owner.value(0);
  const int known = type >= 0 && type < kEffectTypeCount ? type : kEffectTypeCount;
  return &kRowsByType[static_cast<std::size_t>(known)][static_cast<std::size_t>(index)];
}

int MultiEffectorParam::indexOf(std::string_view name) const {
  for (int i = 0; i < count(); ++i) {
    if (kTemplate[static_cast<std::size_t>(i)].name == name) {
      return i;
    }
  }
  return -1;
}

}  // namespace tesh::bramel::plugin::sivray::effects
