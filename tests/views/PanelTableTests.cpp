// The images that the panel's table names.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <string>
#include <vector>

#include "viewmodels/resources/ResourceStore.h"
#include "views/PanelTable.h"

namespace tesh::bramel::panel {
namespace {

struct NamedSize {
  std::string name;
  PanelSize size;
};

std::vector<NamedSize> namesOfTheTable() {
  std::vector<NamedSize> names{{kBackgroundImage, {kPanelWidth, kPanelHeight}},
                               {kFaderHandle, kFaderHandleSize},
                               {kPadOff, {kPadSize, kPadSize}},
                               {kPadOn, {kPadSize, kPadSize}},
                               {kDisplayImage, {kDisplay.width, kDisplay.height}},
                               {kPreviousImage, {kPreviousProgram.width, kPreviousProgram.height}},
                               {kNextImage, {kNextProgram.width + 1, kNextProgram.height}}};
  for (const char* const page : kPageImages) {
    names.push_back({page, {kPageBounds.width, kPageBounds.height}});
  }
  for (const ButtonRow& row : kPageButtons) {
    names.push_back({row.off, {row.bounds.width, row.bounds.height}});
    names.push_back({row.on, {row.bounds.width, row.bounds.height}});
  }
  for (const PadControl& control : kPadControls) {
    for (const StateImages& row : kStateImages) {
      for (const char* const name : row.names) {
        if (row.kind == control.kind && name != nullptr) {
          names.push_back({name, {control.bounds.width, control.bounds.height}});
        }
      }
    }
  }
  const PanelRect knob = kMasterControls.back().bounds;
  for (const char* const strip : {kSweepStrip, kCentredStrip}) {
    for (int frame = 0; frame < kStripFrames; ++frame) {
      names.push_back({std::string(strip) + "_" + std::to_string(frame), {knob.width, knob.height}});
    }
  }
  return names;
}

TEST(PanelTable, NamesImagesThatAreThereInBothSetsAndFillTheirPlaces) {
  ResourceStore store;
  for (const auto& [name, size] : namesOfTheTable()) {
    for (const int scale : {1, 2}) {
      const auto box = store.getImage(name, scale);
      const auto* const image = cofu::core::boxed::valueIn<juce::Image>(box);
      ASSERT_NE(image, nullptr) << name << " at scale " << scale;
      EXPECT_EQ(image->getBounds(), juce::Rectangle<int>(size.width * scale, size.height * scale)) << name;
    }
  }
}

}  // namespace
}  // namespace tesh::bramel::panel
