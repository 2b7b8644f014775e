// The keyboard and the scale selector: their notifications, and the scale that persists after they are destroyed.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModelScene.h"

namespace models {
namespace {

class Keyboard : public ViewModels {
 protected:
  std::shared_ptr<IPluginKeyboardViewModel> keyboard = model->getKeyboardViewModel();
  std::shared_ptr<IScaleSelectorViewModel> scales = model->getScaleSelectorViewModel();
};

TEST_F(Keyboard, NotifiesChangesAndNothingElse) {
  keyboard->setOctave(9);
  keyboard->setOctave(9);
  keyboard->setOctave(-1);
  EXPECT_EQ(takeTold(), (Log{"octave 7", "octave 0"}));
  keyboard->setKey(0);
  keyboard->setKey(5);
  keyboard->setKeyRange(0);
  keyboard->setKeyRange(3);
  keyboard->setKeyRange(3);
  EXPECT_EQ(takeTold(), (Log{"layout", "layout"}));
  keyboard->setChordMode(false);
  keyboard->setChordMode(true);
  EXPECT_EQ(takeTold(), (Log{"keyboard", "chords"}));
  keyboard->setViewFlag(true);
  keyboard->setViewValue(-3);
  keyboard->setViewIndex(4);
  EXPECT_TRUE(keyboard->getViewFlag());
  EXPECT_EQ(keyboard->getViewValue(), -3);
  EXPECT_EQ(keyboard->getViewIndex(), 4U);
  EXPECT_EQ(takeTold(), Log{});
}

TEST_F(Keyboard, PlaysTheScaleThatTheSelectorChooses) {
  EXPECT_EQ(scales->getScaleName(scales->getScaleIndex()), "Dorian");
  EXPECT_EQ(scales->getNoteCount(), 7U);
  EXPECT_EQ(keyboard->noteForKey(9), 15);  // The third of the second octave.
  EXPECT_EQ(keyboard->chordNote(0, 1), 7);
  EXPECT_EQ(keyboard->chordNote(0, 4), 0);
  for (const std::int32_t ignored : {-1, 35, 2}) {
    scales->setScale(ignored);
  }
  scales->setNoteCount(0);
  scales->setNoteCount(7);
  EXPECT_EQ(takeTold(), Log{});
  scales->setScale(34);
  EXPECT_EQ(scales->getMaxNoteCount(), 1U);
  scales->setScale(0);
  scales->setNoteCount(5);
  EXPECT_EQ(takeTold(), (Log{"layout", "layout", "layout"}));
  EXPECT_EQ(scales->getMaxNoteCount(), 12U);
  EXPECT_EQ(keyboard->getNoteCount(), 5U);
  scales->setKey(2);
  EXPECT_EQ(keyboard->noteForKey(0), 2);
  EXPECT_EQ(scales->getScaleCount(), 35);
}

TEST_F(Keyboard, LeavesTheScaleWithTheInstrument) {
  scales->setScale(5);
  model.reset();
  takeTold();
  keyboard->setChordMode(true);  // Its edit view model no longer exists.
  EXPECT_EQ(takeTold(), Log{"chords"});
  const auto again = makeModel(instrument);
  EXPECT_EQ(again->getScaleSelectorViewModel()->getScaleIndex(), 5);
  EXPECT_TRUE(again->getKeyboardViewModel()->getChordMode());
  const auto other = makeModel(makeInstrument(folder));
  EXPECT_EQ(other->getScaleSelectorViewModel()->getScaleIndex(), 2);
}

TEST_F(Keyboard, PassesNotesBothWays) {
  const std::array<std::uint8_t, 3> pressed{0x90, 36, 100};
  keyboard->sendMidi(pressed.data(), pressed.size());
  EXPECT_EQ(takeHostLog(), Log{});  // Not active yet.
  instrument->resume();
  keyboard->sendMidi(pressed.data(), pressed.size());
  EXPECT_EQ(takeHostLog(), Log{"midi 902464@0"});

  const auto owner = model->getKeyboardViewModelOwner();
  owner->noteOn(36);
  owner->noteOff(36);
  EXPECT_EQ(takeTold(), (Log{"on 36", "off 36"}));
  EXPECT_EQ(keyboard->getListener(), pads.get());
  pads.reset();
  EXPECT_EQ(keyboard->getListener(), nullptr);
  owner->noteOn(36);
  keyboard->setListener(nullptr);
  owner->noteOff(36);
  EXPECT_EQ(takeTold(), Log{});
}

}  // namespace
}  // namespace models
