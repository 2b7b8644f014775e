// Prints a report as indented text or as JSON.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/inspect/Report.h"

#include <juce_core/juce_core.h>
#include <picojson.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace sivray::content {
namespace {

constexpr std::size_t kIndent = 2;

/// The texts come from binary files: invalid UTF-8 and control characters are replaced by question marks.
std::string printable(std::string_view characters) {
  std::string text(characters);
  const bool isUtf8 = juce::CharPointer_UTF8::isValidString(text.data(), static_cast<int>(text.size()));
  std::ranges::replace_if(
      text, [isUtf8](unsigned char c) { return c < 0x20 || c == 0x7F || (!isUtf8 && c >= 0x80); }, '?');
  return text;
}

}  // namespace

Report Report::text(std::string_view characters) {
  Report report(Kind::text);
  report.words = printable(characters);
  return report;
}

Report Report::number(std::uint64_t value) {
  Report report(Kind::number);
  report.words = std::to_string(value);
  return report;
}

Report Report::real(double value) {
  constexpr int kDigits = 9;  // Enough to tell any two floats apart.
  std::array<char, 32> digits{};
  std::snprintf(digits.data(), digits.size(), "%.*g", kDigits, value);
  Report report(Kind::number);
  report.words = digits.data();
  return report;
}

Report& Report::add(std::string_view name, Report value) {
  names.emplace_back(name);
  return members.emplace_back(std::move(value));
}

bool Report::fitsOnALine() const {
  return kind == Kind::list && std::ranges::all_of(members, [](const Report& item) { return item.isLeaf(); });
}

void Report::print(std::string& out, std::size_t depth) const {
  if (isLeaf()) {
    out.append(" ").append(words).append("\n");
    return;
  }
  if (fitsOnALine()) {
    for (const Report& item : members) {
      out.append(" ").append(item.words);
    }
    out.append("\n");
    return;
  }
  out.append("\n");
  for (std::size_t i = 0; i < members.size(); ++i) {
    const std::string name = kind == Kind::list ? std::to_string(i) : names[i];
    out.append(depth * kIndent, ' ').append(name).append(":");
    members[i].print(out, depth + 1);
  }
}

std::string Report::toText() const {
  std::string out;
  print(out, 0);
  return out.substr(1);
}

void Report::printJson(std::string& out) const {
  if (isLeaf()) {
    const bool isFinite = words.find_first_of("ni") == std::string::npos;
    out += kind == Kind::text ? picojson::value(words).serialize() : isFinite ? words : "null";
    return;
  }
  out += kind == Kind::list ? '[' : '{';
  for (std::size_t i = 0; i < members.size(); ++i) {
    out += i == 0 ? "" : ",";
    if (kind == Kind::object) {
      out.append(picojson::value(names[i]).serialize()).append(":");
    }
    members[i].printJson(out);
  }
  out += kind == Kind::list ? ']' : '}';
}

std::string Report::toJson() const {
  std::string out;
  printJson(out);
  return out + "\n";
}

}  // namespace sivray::content
