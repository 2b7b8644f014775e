// Prints the measurements of kits and marks those that break a rule.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "content/measure/KitSound.h"
#include "content/measure/Statistics.h"

namespace sivray::content {
namespace {

constexpr double kLoudnessRoom = 1.5;  ///< The largest difference between two kits, in dB.
constexpr double kEffectRoom = 3.0;
constexpr double kHighestTruePeak = -0.5;
constexpr double kBalanceRoom = 6.0;
constexpr float kKitTwins = 4.0F;

struct Sum {
  int unlike = 0, effects = 0, peaks = 0, balance = 0;
};

std::string number(double value, bool isBad) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%7.1f%c", value, isBad ? '*' : ' ');
  return text.data();
}

/// The median balance of each pad over all kits.
std::array<double, factory::kPads> rolesOf(const std::vector<KitSound>& kits) {
  std::array<double, factory::kPads> roles{};
  for (std::size_t pad = 0; pad < roles.size(); ++pad) {
    std::vector<double> values;
    std::ranges::transform(kits, std::back_inserter(values), [=](const KitSound& kit) { return balanceOf(kit)[pad]; });
    roles[pad] = medianOf(values);
  }
  return roles;
}

void printKit(std::ostream& out, const KitSound& kit, double middle, const std::array<double, factory::kPads>& roles,
              Sum& sum) {
  const bool isUnlike = std::abs(kit.loudness - middle) > kLoudnessRoom / 2.0;
  const bool isChanged = std::abs(kit.effectChange) > kEffectRoom;
  const bool isHigh = kit.truePeak > kHighestTruePeak;
  sum.unlike += isUnlike ? 1 : 0;
  sum.effects += isChanged ? 1 : 0;
  sum.peaks += isHigh ? 1 : 0;
  std::string name(kit.name);
  name.resize(24, ' ');
  out << name << number(kit.loudness, isUnlike) << number(kit.effectChange, isChanged) << number(kit.wet, false)
      << number(kit.truePeak, isHigh);
  const auto balance = balanceOf(kit);
  for (std::size_t pad = 0; pad < roles.size(); ++pad) {
    const double over = balance[pad] - roles[pad];
    const bool isOff = std::abs(over) > kBalanceRoom;
    sum.balance += isOff ? 1 : 0;
    out << number(over, isOff);
  }
  out << '\n';
}

int printTwins(std::ostream& out, const std::vector<KitSound>& kits) {
  int pairs = 0;
  for (std::size_t a = 0; a < kits.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      const float apart = distance(kits[a], kits[b]);
      if (apart < kKitTwins) {
        ++pairs;
        out << number(static_cast<double>(apart), false) << " " << kits[b].name << ", " << kits[a].name << '\n';
      }
    }
  }
  out << pairs << " pairs of kits are closer than D" << number(static_cast<double>(kKitTwins), false) << '\n';
  return pairs;
}

}  // namespace

int printKits(std::ostream& out, const std::vector<KitSound>& kits) {
  std::vector<double> loudness;
  std::ranges::transform(kits, std::back_inserter(loudness), &KitSound::loudness);
  const double middle = medianOf(loudness);
  const auto roles = rolesOf(kits);
  out << "kit                       LUFS   effect   wet dB    dBTP    pads 36 to 43 over their roles, dB\n";
  out << "the roles, dB over the mean" << std::string(29, ' ');
  for (const double role : roles) {
    out << number(role, false);
  }
  out << '\n';
  Sum sum;
  for (const KitSound& kit : kits) {
    printKit(out, kit, middle, roles, sum);
  }
  out << kits.size() << " kits, middle " << number(middle, false) << "LUFS; breaking a rule: " << sum.unlike
      << " in loudness, " << sum.effects << " by their effect, " << sum.peaks << " in true peak; " << sum.balance
      << " pads off their roles\n";
  return sum.unlike + sum.effects + sum.peaks + sum.balance + printTwins(out, kits);
}

}  // namespace sivray::content
