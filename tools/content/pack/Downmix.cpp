// The gains of each speaker's place.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/Downmix.h"

#include <sndfile.h>

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

constexpr float kLess = 1.0F / std::numbers::sqrt2_v<float>;  ///< 3 dB.

Gains gainsOf(int speaker) {
  switch (speaker) {
    case SF_CHANNEL_MAP_LEFT:
    case SF_CHANNEL_MAP_FRONT_LEFT:
    case SF_CHANNEL_MAP_FRONT_LEFT_OF_CENTER:
      return {1.0F, 0.0F};
    case SF_CHANNEL_MAP_RIGHT:
    case SF_CHANNEL_MAP_FRONT_RIGHT:
    case SF_CHANNEL_MAP_FRONT_RIGHT_OF_CENTER:
      return {0.0F, 1.0F};
    case SF_CHANNEL_MAP_REAR_LEFT:
    case SF_CHANNEL_MAP_SIDE_LEFT:
      return {kLess, 0.0F};
    case SF_CHANNEL_MAP_REAR_RIGHT:
    case SF_CHANNEL_MAP_SIDE_RIGHT:
      return {0.0F, kLess};
    case SF_CHANNEL_MAP_LFE:
      return {0.0F, 0.0F};
    default:
      return {kLess, kLess};
  }
}

std::vector<int> usualOrder(std::size_t channels) {
  constexpr int kLeft = SF_CHANNEL_MAP_LEFT;
  constexpr int kRight = SF_CHANNEL_MAP_RIGHT;
  constexpr int kCentre = SF_CHANNEL_MAP_CENTER;
  constexpr int kLow = SF_CHANNEL_MAP_LFE;
  constexpr int kRearLeft = SF_CHANNEL_MAP_REAR_LEFT;
  constexpr int kRearRight = SF_CHANNEL_MAP_REAR_RIGHT;
  switch (channels) {
    case 4:
      return {kLeft, kRight, kRearLeft, kRearRight};
    case 5:
      return {kLeft, kRight, kCentre, kRearLeft, kRearRight};
    case 7:
      return {kLeft,
              kRight,
              kCentre,
              kLow,
              SF_CHANNEL_MAP_REAR_CENTER,
              SF_CHANNEL_MAP_SIDE_LEFT,
              SF_CHANNEL_MAP_SIDE_RIGHT};
    default: {
      std::vector<int> order{
          kLeft, kRight, kCentre, kLow, kRearLeft, kRearRight, SF_CHANNEL_MAP_SIDE_LEFT, SF_CHANNEL_MAP_SIDE_RIGHT};
      order.resize(channels, SF_CHANNEL_MAP_CENTER);
      return order;
    }
  }
}

}  // namespace

std::vector<Channel> mixedDown(const std::vector<Channel>& channels, const std::vector<int>& speakers) {
  const std::vector<int> places = speakers.size() == channels.size() ? speakers : usualOrder(channels.size());
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
