// The converter allocates nothing while it plays.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CountedMemory.h"

#if !defined(SIVRAY_FIXED_OPERATORS)

#include <gtest/gtest.h>

#include "ConverterScene.h"

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
    const int before = support::memoryCalls();
    for (const std::int32_t frames : {1, 512, 20000, 64}) {
      converter.processEvents(record);
      converter.process(buffers.data(), buffers.data(), frames);
      converter.process(nullptr, buffers.data(), frames);
    }
    EXPECT_EQ(support::memoryCalls(), before) << rate;
  }
}

}  // namespace
}  // namespace tesh::bramel::vst

#endif
