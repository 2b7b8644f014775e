// Cuts names at whole UTF-8 characters and numbers the ones that are taken.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/WaveNames.h"

#include <string_view>

#include "content/library/Wave.h"

namespace sivray::content {
namespace {

/// Returns at most `size` bytes of a text, without a partial character or a blank at the end.
std::string cut(std::string_view text, std::size_t size) {
  if (text.size() > size) {
    const auto isContinuation = [&](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U; };
    while (size > 0 && isContinuation(size)) {
      --size;
    }
    text = text.substr(0, size);
  }
  const std::size_t last = text.find_last_not_of(' ');
  return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

}  // namespace

std::string WaveNames::take(const std::string& wish) {
  std::string name = cut(wish, kLongestWaveName);
  for (int number = 2; name.empty() || taken.contains(name); ++number) {
    const std::string suffix = std::string(" ").append(std::to_string(number));
    name = cut(wish, kLongestWaveName - suffix.size()) + suffix;
  }
  taken.insert(name);
  return name;
}

}  // namespace sivray::content
