// Kits in text form: syntax, positions of errors, and the resulting values.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/Kit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "content/factory/Bank.h"
#include "content/factory/MacroLayout.h"
#include "content/levels/Balance.h"
#include "effects/EffectTable.h"
#include "macro/MacroSetQuantized.h"
#include "support/Scratch.h"
#include "viewmodels/texts/EditScreenEffects.h"

namespace sivray::factory {
namespace {

std::string kitText(const std::string& extra = {}, int pads = 8, const std::string& name = "\"A Kit\"") {
  std::string text = "name " + name + "  # comment\nstyle Rock\neffect \"Room Reverb\" edit1=3 edit2=127\nmaster 90\n";
  for (int pad = 0; pad < pads; ++pad) {
    text += "pad " + std::to_string(36 + pad) + " \"Wave " + std::to_string(pad) +
            "\" level=" + std::to_string(100 + pad) + "\n";
  }
  return text + extra;
}

std::string errorOf(const std::string& text) {
  try {
    parseKit(text, "a.kit");
  } catch (const TextError& error) {
    return error.what();
  }
  return "no error";
}

TEST(Kit, TakesAllSettingsOfAPad) {
  const Kit kit = parseKit(kitText("pad 43 Hat level=0 pan=-63 pitch=+24 fine=-100 decay=1 punch=2 boost=3 group=B "
                                   "mode=gate send=on mute=on reverse=on\r\n",
                                   7),
                           "a.kit");
  EXPECT_EQ(kit.name, "A Kit");
  EXPECT_EQ(kit.effect, "Room Reverb");
  EXPECT_EQ(kit.edit2, 127);
  EXPECT_EQ(kit.master, 90);
  EXPECT_EQ(kit.pads[6].wave, "Wave 6");
  EXPECT_EQ(kit.pads[6].line, 11);
  const KitPad& pad = kit.pads[7];
  EXPECT_EQ(std::vector<int>({pad.level, pad.pan, pad.pitch, pad.fine, pad.decay, pad.punch, pad.boost}),
            std::vector<int>({0, -63, 24, -100, 1, 2, 3}));
  EXPECT_EQ(pad.group, ExclusiveGroup::b);
  EXPECT_TRUE(pad.gate && pad.send && pad.mute && pad.reverse);
}

TEST(Kit, TellsFileLineAndReasonOfAMistake) {
  const std::pair<std::string, std::string> cases[] = {
      {kitText("colour red\n"), "a.kit:13: unknown setting 'colour'"},
      {kitText("pad 36 Again level=1\n"), "a.kit:13: pad 36 stands twice"},
      {kitText("style Jazz\n"), "a.kit:13: 'style' stands twice"},
      {kitText("pad 44 Wave level=1\n", 7), "a.kit:12: 'pad' takes a whole number from 36 to 43, not '44'"},
      {kitText("pad 43 Wave level=128\n", 7), "a.kit:12: 'level' takes a whole number from 0 to 127, not '128'"},
      {kitText("pad 43 Wave level=1x\n", 7), "a.kit:12: 'level' takes a whole number from 0 to 127, not '1x'"},
      {kitText("pad 43 Wave group=C\n", 7), "a.kit:12: 'group' takes one of off, A, B, not 'C'"},
      {kitText("pad 43 Wave colour=1\n", 7), "a.kit:12: a pad has no setting 'colour'"},
      {kitText("pad 43 Wave level\n", 7), "a.kit:12: expected NAME=VALUE, not 'level'"},
      {kitText("pad 43 \"Wave level=1\n", 7), "a.kit:12: a quotation mark is not closed"},
      {kitText("", 7), "a.kit:11: pad 43 is missing"},
      {kitText("", 8, "A Kit"), "a.kit:1: 'name' takes one value; put words with blanks between quotation marks"},
      {kitText("", 8, "\"This name is far too long\""), "a.kit:12: a kit needs a name of 1 to 24 characters"},
      {kitText("master\n"), "a.kit:13: 'master' needs a value"},
  };
  for (const auto& [text, error] : cases) {
    EXPECT_EQ(errorOf(text), error);
  }
}

TEST(Kit, NamesTheLineOfAWaveOrEffectThatIsNotThere) {
  std::vector<std::string> waves;
  for (int i = 0; i < 8; ++i) {
    waves.push_back("Wave " + std::to_string(i));
  }
  Kit kit = parseKit(kitText(), "a.kit");
  EXPECT_EQ(macroValuesOf(kit, waves, "a.kit").size(), makeMacroLayout(8).size());
  waves[5] = "Other";
  const auto expectError = [&](const std::string& line) {
    try {
      macroValuesOf(kit, waves, "a.kit");
      ADD_FAILURE();
    } catch (const TextError& error) {
      EXPECT_TRUE(std::string(error.what()).starts_with(line)) << error.what();
    }
  };
  expectError("a.kit:10: there is no wave 'Wave 5'");
  kit.effect = "Sparkle";
  waves[5] = "Wave 5";
  expectError("a.kit:3: there is no effect 'Sparkle'");
}

TEST(Bank, FollowsItsListAndMissesNothing) {
  const support::Scratch folder;
  folder.write("b.kit", kitText("", 8, "B"));
  folder.write("a.kit", kitText("", 8, "A"));
  folder.write("bank.txt", "# order\n b  # first\n\na\n");
  const auto bank = readBank(folder.path());
  ASSERT_EQ(bank.size(), 2U);
  EXPECT_EQ(bank[0].kit.name, "B");
  for (const char* list : {"b\n", "b\na\nc\n", "b\na\nb\n"}) {
    folder.write("bank.txt", list);
    EXPECT_THROW(readBank(folder.path()), TextError) << list;
  }
  folder.write("a.kit", kitText("", 8, "B"));
  folder.write("bank.txt", "a\nb\n");
  EXPECT_THROW(readBank(folder.path()), TextError);
}

/// Returns the engine's integer for a normalised value, computed in single precision as in the engine.
int engineInteger(float value, int minimum, int maximum) {
  const auto range = static_cast<float>(maximum - minimum);
  return static_cast<int>(range * value + 0.5F) + minimum;
}

TEST(MacroLayout, LetsEveryWaveOfAnyLibraryThroughAsItself) {
  for (const int count : {1, 2, 3, 240, 512, 1000, 4096, 65536}) {
    const int highest = count - 1;
    for (int wave = 0; wave < count; ++wave) {
      const float value = static_cast<float>(wave) / static_cast<float>(std::max(highest, 1));
      ASSERT_EQ(engineInteger(value, 0, highest), wave) << count;
    }
  }
}

TEST(MacroLayout, LeadsEveryStepOfTheSelectorToItsEffect) {
  namespace effects = tesh::bramel::plugin::sivray::effects;
  const auto layout = makeMacroLayout(100);
  tesh::vimo::MacroSetQuantized set;
  set.setValues(layout[kEffectTypeMacro].steps);
  ASSERT_EQ(set.valueCount(), tesh::bramel::kEditScreenEffectCount);
  for (std::size_t step = 0; step < tesh::bramel::kEditScreenEffectCount; ++step) {
    const float position = static_cast<float>(step) / static_cast<float>(tesh::bramel::kEditScreenEffectCount - 1);
    EXPECT_EQ(engineInteger(set.map(position), 0, effects::kEffectTypeCount - 1), tesh::bramel::editScreenTypeId(step));
  }
}

TEST(MacroLayout, GivesEveryMacroATargetOfItsOwn) {
  const auto layout = makeMacroLayout(100);
  ASSERT_EQ(layout.size(), 133U);
  std::set<std::uint32_t> targets;
  for (const MacroRow& row : layout) {
    EXPECT_LE(row.name.size(), 15U);
    EXPECT_TRUE(targets.insert(row.targetId).second) << row.name;
  }
  EXPECT_EQ(layout[3 * kMacrosPerPad + kLevel].targetId, 0x38U);
  EXPECT_EQ(layout[kMasterLevelMacro].targetId, 0x110U);
}

TEST(Balance, PutsLevelsIntoTheLinesOfTheirPads) {
  const std::string text = kitText();
  const Kit kit = parseKit(text, "a.kit");
  const Kit moved = parseKit(content::withLevels(text, kit, {1, 2, 3, 4, 5, 6, 7, 127}), "a.kit");
  EXPECT_EQ(moved.pads[0].level, 1);
  EXPECT_EQ(moved.pads[7].level, 127);
  EXPECT_EQ(moved.pads[7].wave, "Wave 7");
}

}  // namespace
}  // namespace sivray::factory
