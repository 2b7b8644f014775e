// Removes own sounds, and finds for each the factory wave that sounds most like it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>
#include <vector>

#include "content/measure/Picture.h"
#include "content/own/OwnContent.h"

namespace sivray::content {

/// Compares by D (Picture.h) within the sound's category, or with all factory waves if the category has none.
class StandIns {
 public:
  explicit StandIns(const OwnContent& own) : content(own) {}

  /// Returns the number of the factory wave that sounds most like it, from 0. `sound` must have samples.
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

/// Removes the sounds with these numbers, and returns them with their stand-ins. On an error undoes everything and
/// throws std::runtime_error or Interrupted.
std::vector<OwnSound> removeSounds(OwnContent& content, const std::set<std::int32_t>& numbers);

}  // namespace sivray::content
