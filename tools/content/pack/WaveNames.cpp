// Shortens names in their middle, at whole UTF-8 characters, and numbers names that are already taken.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/WaveNames.h"

#include <algorithm>

#include "content/library/Wave.h"
#include "core/Utf8.h"

namespace sivray::content {
namespace {

/// Returns the last words of a name, at most `size` bytes: they distinguish names with the same start.
std::string_view lastWords(std::string_view text, std::size_t size) {
  constexpr std::string_view kGaps = " _-";
  std::size_t begin = text.size();
  while (begin > 0) {
    const std::size_t gap = text.find_last_of(kGaps, begin - 1);
    const std::size_t word = gap == std::string_view::npos ? 0 : gap + 1;
    if (word == 0 || text.size() - word > size) {
      break;
    }
    begin = gap;
  }
  if (begin < text.size()) {
    return text.substr(begin + 1);
  }
  begin = text.size() - std::min(text.size(), size - 2);  // The name ends with one long word.
  while (begin < text.size() && tesh::cofu::core::isUtf8Continuation(text[begin])) {
    ++begin;
  }
  return text.substr(begin);
}

/// Returns a name of at most `size` bytes, shortened in its middle.
std::string shortened(std::string_view text, std::size_t size) {
  constexpr std::size_t kTail = 7;
  if (text.size() <= size) {
    return nameWithin(text, size);
  }
  const std::string_view tail = lastWords(text, kTail);
  return nameWithin(text, size - 1 - tail.size()) + " " + std::string(tail);
}

}  // namespace

std::string nameWithin(std::string_view text, std::size_t size) {
  text = tesh::cofu::core::utf8Start(text, size);
  const std::size_t last = text.find_last_not_of(' ');
  return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string WaveNames::take(const std::string& wish) {
  std::string name = shortened(wish, kLongestWaveName);
  for (int number = 2; name.empty() || taken.contains(name); ++number) {
    const std::string suffix = std::string(" ").append(std::to_string(number));
    name = shortened(wish, kLongestWaveName - suffix.size()) + suffix;
  }
  taken.insert(name);
  return name;
}

}  // namespace sivray::content
