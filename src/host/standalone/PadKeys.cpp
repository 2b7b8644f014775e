// Compares the keys that are down with those that were down before.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/PadKeys.h"

#include <algorithm>
#include <cstddef>

namespace tesh::bramel::standalone {

bool PadKeys::isPadKey(int key) {
  constexpr int kToLower = 'a' - 'A';
  const int lower = key >= 'A' && key <= 'Z' ? key + kToLower : key;
  return std::find(kKeys.begin(), kKeys.end(), lower) != kKeys.end();
}

void PadKeys::keysMoved(const std::function<bool(int key)>& isDown, bool mayStrike) {
  for (std::size_t pad = 0; pad < kKeys.size(); ++pad) {
    const bool wasDown = keys[pad].isDown;
    keys[pad].isDown = isDown(kKeys[pad]);
    if (keys[pad].isDown && !wasDown && mayStrike) {
      keys[pad].isSounding = true;
      strike(panel::padNote(pad), true);
    } else if (!keys[pad].isDown) {
      end(pad);
    }
  }
}

void PadKeys::releaseAll() {
  for (std::size_t pad = 0; pad < kKeys.size(); ++pad) {
    end(pad);
    keys[pad].isDown = false;
  }
}

void PadKeys::end(std::size_t pad) {
  if (keys[pad].isSounding) {
    keys[pad].isSounding = false;
    strike(panel::padNote(pad), false);
  }
}

}  // namespace tesh::bramel::standalone
