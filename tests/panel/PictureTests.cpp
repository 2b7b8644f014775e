// Pictures of the panel's pages and pop-ups, compared with those of the manual, which scripts/pictures.sh draws.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

#include "panel/PanelPicture.h"
#include "render/Session.h"

namespace {

struct Shot {
  const char* name;
  const char* page = "sound";
  const char* open = "";
  std::vector<int> lit = {};
};

void PrintTo(const Shot& shot, std::ostream* out) { *out << shot.name; }

const std::vector<Shot> kShots{
    {"sound", "sound", "", {1, 7}},    {"character", "character"},       {"mix", "mix"},
    {"samples", "sound", "samples=7"}, {"effects", "sound", "effects"},  {"programs", "sound", "programs"},
    {"save-as", "sound", "save-as"},   {"settings", "sound", "settings"}};

/// Returns the state of an instrument with the kit of the manual's pictures.
const std::vector<std::uint8_t>& state() {
  static const std::vector<std::uint8_t> bytes = [] {
    sivray::render::Options options;
    options.direct = true;
    options.program = "Deep House";
    sivray::render::Session session(options);
    session.prepare({});
    return session.state();
  }();
  return bytes;
}

juce::File drawn(const Shot& shot, double scale) {
  const juce::File folder(SIVRAY_PICTURES);
  folder.createDirectory();
  juce::File file = folder.getChildFile(juce::String(shot.name) + (scale > 1.0 ? "-200.png" : ".png"));
  sivray::panel::drawPanel(state(), {.outputPath = file.getFullPathName().toStdString(),
                                     .page = shot.page,
                                     .open = shot.open,
                                     .scale = scale,
                                     .litPads = shot.lit});
  return file;
}

/// The mean colour of a square of `size` pixels.
struct Mean {
  int red = 0, green = 0, blue = 0;
};

Mean meanAt(const juce::Image::BitmapData& pixels, int left, int top, int size) {
  Mean sum;
  for (int y = top; y < top + size; ++y) {
    for (int x = left; x < left + size; ++x) {
      const juce::Colour colour = pixels.getPixelColour(x, y);
      sum.red += colour.getRed();
      sum.green += colour.getGreen();
      sum.blue += colour.getBlue();
    }
  }
  return {sum.red / (size * size), sum.green / (size * size), sum.blue / (size * size)};
}

/// Returns the number of squares of `size` pixels of `one` whose mean differs by more than `tolerance` in a channel
/// from that in `other`, which is `scale` times as large.
int differences(const juce::Image& one, const juce::Image& other, int scale, int size, int tolerance) {
  const juce::Image::BitmapData a(one, juce::Image::BitmapData::readOnly);
  const juce::Image::BitmapData b(other, juce::Image::BitmapData::readOnly);
  int count = 0;
  for (int y = 0; y + size <= one.getHeight(); y += size) {
    for (int x = 0; x + size <= one.getWidth(); x += size) {
      const Mean p = meanAt(a, x, y, size);
      const Mean q = meanAt(b, x * scale, y * scale, size * scale);
      const int distance = std::max({std::abs(p.red - q.red), std::abs(p.green - q.green), std::abs(p.blue - q.blue)});
      count += distance > tolerance ? 1 : 0;
    }
  }
  return count;
}

class Pictures : public testing::TestWithParam<Shot> {
 protected:
  static void SetUpTestSuite() {
    ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
    ::setenv("BRAMEL_DOCUMENTS", SIVRAY_PICTURES "/documents", 1);
  }
};

TEST_P(Pictures, AreThoseOfTheManual) {
  const juce::File file = drawn(GetParam(), 1.0);
  const juce::Image picture = juce::ImageFileFormat::loadFrom(file);
  const juce::Image expected =
      juce::ImageFileFormat::loadFrom(juce::File(SIVRAY_MANUAL_PICTURES).getChildFile(file.getFileName()));
  ASSERT_TRUE(expected.isValid());
  ASSERT_EQ(picture.getBounds(), expected.getBounds());
  constexpr int kRounding = 8;
  const int different = differences(picture, expected, 1, 1, kRounding);
  EXPECT_EQ(different, 0) << "look at " << file.getFullPathName() << "; scripts/pictures.sh accepts it";
  if (different == 0) {
    file.deleteFile();
  }
}

TEST_P(Pictures, ShowTheSameAtTwiceTheSize) {
  const juce::File file = drawn(GetParam(), 2.0);
  const juce::Image large = juce::ImageFileFormat::loadFrom(file);
  const juce::Image small = juce::ImageFileFormat::loadFrom(
      juce::File(SIVRAY_MANUAL_PICTURES).getChildFile(GetParam().name).withFileExtension("png"));
  ASSERT_TRUE(small.isValid());
  ASSERT_EQ(large.getBounds(), small.getBounds() * 2);
  constexpr int kSquare = 12;
  constexpr int kTolerance = 12;
  const int different = differences(small, large, 2, kSquare, kTolerance);
  EXPECT_EQ(different, 0) << "look at " << file.getFullPathName();
  if (different == 0) {
    file.deleteFile();
  }
}

INSTANTIATE_TEST_SUITE_P(Panel, Pictures, testing::ValuesIn(kShots),
                         [](const auto& shot) { return juce::String(shot.param.name).replace("-", "").toStdString(); });

}  // namespace
