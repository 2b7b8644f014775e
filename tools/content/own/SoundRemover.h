// Removes own sounds, and finds for each the factory wave that sounds most like it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>
#include <vector>

#include "content/measure/Picture.h"
#include "content/own/OwnContent.h"

namespace sivray::content {

/// Compares by D (Picture.h) within the sound's category; where the factory has none of it, within all.
class StandIns {
 public:
  explicit StandIns(const OwnContent& own) : content(own) {}

  /// Returns the number of the factory wave, from 0. `sound` has samples.
  std::int32_t nearestTo(const OwnSound& sound);

 private:
  struct Choice {
    std::int32_t wave = 0;
    Picture picture;
  };

  const std::vector<Choice>& choicesOf(int category);
  Picture pictureAt(const OwnStretch& stretch);

  const OwnContent& content;
  PictureMaker maker;
  std::map<int, std::vector<Choice>> choices;
};

/// Removes the sounds with these numbers, and returns them with their stand-ins. Takes everything back and throws
/// std::runtime_error or Interrupted if it fails.
std::vector<OwnSound> removeSounds(OwnContent& content, const std::set<std::int32_t>& numbers);

}  // namespace sivray::content
