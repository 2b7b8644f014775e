// The gains for each speaker position.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/Downmix.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace sivray::content {
namespace {

struct Gains {
  float left;
  float right;
};

constexpr float kLess = 1.0F / std::numbers::sqrt2_v<float>;  ///< -3 dB.

Gains gainsOf(Speaker speaker) {
  switch (speaker) {
    case Speaker::left:
      return {1.0F, 0.0F};
    case Speaker::right:
      return {0.0F, 1.0F};
    case Speaker::leftSide:
      return {kLess, 0.0F};
    case Speaker::rightSide:
      return {0.0F, kLess};
    case Speaker::low:
      return {0.0F, 0.0F};
    case Speaker::centre:
      break;
  }
  return {kLess, kLess};
}

std::vector<Speaker> usualOrder(std::size_t channels) {
  using enum Speaker;
  switch (channels) {
    case 4:
      return {left, right, leftSide, rightSide};
    case 5:
      return {left, right, centre, leftSide, rightSide};
    case 7:
      return {left, right, centre, low, centre, leftSide, rightSide};
    default: {
      std::vector<Speaker> order{left, right, centre, low, leftSide, rightSide, leftSide, rightSide};
      order.resize(channels, centre);
      return order;
    }
  }
}

}  // namespace

std::vector<Channel> mixedDown(const std::vector<Channel>& channels, const std::vector<Speaker>& speakers) {
  const std::vector<Speaker> places = speakers.size() == channels.size() ? speakers : usualOrder(channels.size());
  std::vector<Channel> sides(2, Channel(channels.front().size()));
  for (std::size_t channel = 0; channel < channels.size(); ++channel) {
    const auto [left, right] = gainsOf(places[channel]);
    for (std::size_t i = 0; i < channels[channel].size(); ++i) {
      sides[0][i] += left * channels[channel][i];
      sides[1][i] += right * channels[channel][i];
    }
  }
  float peak = 1.0F;
  for (const Channel& side : sides) {
    peak = std::accumulate(side.begin(), side.end(), peak,
                           [](float most, float sample) { return std::max(most, std::abs(sample)); });
  }
  for (Channel& side : sides) {
    std::ranges::transform(side, side.begin(), [peak](float sample) { return sample / peak; });
  }
  return sides;
}

}  // namespace sivray::content
