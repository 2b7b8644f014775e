// The audio thread's side of the master effect asks for no memory.
// SPDX-License-Identifier: GPL-3.0-or-later
// The thread sanitizer brings its own operators, which cannot be replaced.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define SIVRAY_FIXED_OPERATORS
#endif
#endif
#if !defined(SIVRAY_FIXED_OPERATORS)

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "effects/SivrayMultiEffector.h"
#include "effects_interfaces/EffectScene.h"

namespace {

std::atomic<int> allocations{0};

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) {
    return memory;
  }
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace tesh::bramel::plugin::sivray::effects {

TEST(MultiEffector, AllocatesNothingWhileItPlaysAndChangesType) {
  SivrayMultiEffector master;
  scene::Dice dice(4);
  scene::Stereo s = dice.input(512);
  StereoBlock block = s.block();
  const int before = allocations;
  for (int type = 0; type < kEffectTypeCount; ++type) {
    master.setValue(0, type);
    master.setValue(2, type * 4);
    master.setValue(1, type % 3);
    master.process(block, 512);
    master.transport(3);
    master.setTempo(600 + 50 * type);
    master.process(block, 512);
    master.reset();
  }
  EXPECT_EQ(allocations, before);
}

}  // namespace tesh::bramel::plugin::sivray::effects

#endif
