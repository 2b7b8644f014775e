// Names, finds and deletes the copies. The name of a copy is the file's name followed by the time in UTC:
// "Sivray_User.prog.2031-05-14T18-30-00.250Z".
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ProgramFileCopies.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "platform/Files.h"

namespace tesh::vimo {
namespace {

namespace fs = std::filesystem;
namespace platform = bramel::platform;
using std::chrono::milliseconds;

using SystemTime = std::chrono::sys_time<milliseconds>;

constexpr std::string_view kEndingLikeThis = ".2031-05-14T18-30-00.250Z";

std::string endingOf(CopyTime time) {
  const SystemTime point{milliseconds(time)};
  const auto day = std::chrono::floor<std::chrono::days>(point);
  const std::chrono::year_month_day date(day);
  const auto ofDay = static_cast<int>((point - day).count());
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), ".%04d-%02u-%02uT%02d-%02d-%02d.%03dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), ofDay / 3'600'000,
                ofDay / 60'000 % 60, ofDay / 1000 % 60, ofDay % 1000);
  return text.data();
}

/// Nothing for an ending of another format. `ending` has the right length.
std::optional<CopyTime> timeOf(std::string_view ending) {
  const auto number = [ending](std::size_t from, std::size_t digits) {
    int value = 0;
    std::from_chars(ending.data() + from, ending.data() + from + digits, value);
    return value;
  };
  const std::chrono::year_month_day date(std::chrono::year(number(1, 4)),
                                         std::chrono::month(static_cast<unsigned>(number(6, 2))),
                                         std::chrono::day(static_cast<unsigned>(number(9, 2))));
  if (!date.ok()) {
    return std::nullopt;
  }
  const SystemTime point = std::chrono::sys_days(date) + std::chrono::hours(number(12, 2)) +
                           std::chrono::minutes(number(15, 2)) + std::chrono::seconds(number(18, 2)) +
                           milliseconds(number(21, 3));
  const CopyTime time = point.time_since_epoch().count();
  return endingOf(time) == ending ? std::optional(time) : std::nullopt;
}

fs::path nativePath(const std::string& path) { return platform::NativePath(path).text(); }

}  // namespace

CopyTime copyTimeNow() {
  return std::chrono::floor<milliseconds>(std::chrono::system_clock::now()).time_since_epoch().count();
}

std::vector<ProgramFileCopy> programFileCopies(const std::string& file) {
  const fs::path native = nativePath(file);
  std::vector<ProgramFileCopy> copies;
  std::error_code error;
  for (fs::directory_iterator entry(native.parent_path(), error), end; !error && entry != end; entry.increment(error)) {
    const auto name = entry->path().filename().native();
    if (name.size() != native.filename().native().size() + kEndingLikeThis.size()) {
      continue;
    }
    const std::string ending(name.end() - static_cast<std::ptrdiff_t>(kEndingLikeThis.size()), name.end());
    const auto time = timeOf(ending);
    if (time && nativePath(file + ending).filename().native() == name) {
      copies.push_back({file + ending, *time});
    }
  }
  std::ranges::sort(copies, std::ranges::greater(), &ProgramFileCopy::time);
  return copies;
}

bool keepProgramFileCopy(const std::string& file, CopyTime now) {
  const auto bytes = platform::readWhole(file);
  if (!bytes) {
    return !platform::exists(file);
  }
  std::vector<ProgramFileCopy> copies = programFileCopies(file);
  if (!copies.empty() && platform::readWhole(copies.front().path) == bytes) {
    return true;
  }
  // Later than all other copies, even if the clock was set back.
  const CopyTime time = copies.empty() ? now : std::max(now, copies.front().time + 1);
  const std::string path = file + endingOf(time);
  if (!platform::writeAtomically(path, *bytes)) {
    return false;
  }
  std::error_code ignored;
  fs::permissions(nativePath(path), fs::status(nativePath(file), ignored).permissions(), ignored);
  for (std::size_t i = kMostProgramFileCopies - 1; i < copies.size(); ++i) {
    fs::remove(nativePath(copies[i].path), ignored);
  }
  return true;
}

bool restoreProgramFileCopy(const std::string& file, const ProgramFileCopy& copy, CopyTime now) {
  // Read first, because keeping a copy of `file` may delete this one.
  const auto bytes = platform::readWhole(copy.path);
  return bytes && keepProgramFileCopy(file, now) && platform::writeAtomically(file, *bytes);
}

}  // namespace tesh::vimo
