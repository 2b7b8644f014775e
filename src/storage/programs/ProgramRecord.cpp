// New programs, and texts of fixed size.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ProgramRecord.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace tesh::vimo {

ProgramRecord::ProgramRecord(ProgramEntries programEntries)
    : time(static_cast<std::uint32_t>(std::time(nullptr))),
      id(cofu::core::makeUuid()),
      entries(std::move(programEntries)) {}

void ProgramRecord::setText(Text& field, std::string_view text) {
  const auto length = std::min(text.substr(0, text.find('\0')).size(), kTextBytes - 1);
  field.fill('\0');
  std::copy_n(text.begin(), length, field.begin());
}

std::string_view ProgramRecord::textOf(const Text& field) {
  return {field.data(), static_cast<std::size_t>(std::find(field.begin(), field.end(), '\0') - field.begin())};
}

}  // namespace tesh::vimo
