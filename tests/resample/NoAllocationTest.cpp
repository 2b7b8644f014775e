// A running converter asks for no memory.
// SPDX-License-Identifier: GPL-3.0-or-later
// The sanitizers bring their own operators, which cannot be replaced or must not be mixed with ours.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer) || __has_feature(address_sanitizer)
#define SIVRAY_FIXED_OPERATORS
#endif
#endif
#if !defined(SIVRAY_FIXED_OPERATORS)

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "ConverterScene.h"

namespace {

std::atomic<int> allocations{0};

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) {
    return memory;
  }
  throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace tesh::bramel::vst {
namespace {

TEST(Converter, AllocatesNothingWhilePlaying) {
  CFsConvListener engine;
  CFsConverterWrapper converter(engine);
  scene::Events events;
  for (std::int32_t i = 0; i < 2048; ++i) {
    events.add(i, {0x90, 36, 1});
  }
  const VstEvents& record = events.record();
  std::vector<float> samples(2 * 20000);
  std::array<float*, 2> buffers{samples.data(), samples.data() + 20000};
  for (const float rate : {44100.0F, 48000.0F, 192000.0F}) {
    converter.setSampleRate(rate);
    const int before = allocations;
    for (const std::int32_t frames : {1, 512, 20000, 64}) {
      converter.processEvents(record);
      converter.process(buffers.data(), buffers.data(), frames);
      converter.process(nullptr, buffers.data(), frames);
    }
    EXPECT_EQ(allocations, before) << rate;
  }
}

}  // namespace
}  // namespace tesh::bramel::vst

#endif
