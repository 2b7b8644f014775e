// Songs that were saved before any sound was added play the same samples when own sounds are beside the factory's.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <bit>
#include <cstdint>
#include <memory>

#include "OwnScene.h"
#include "content/library/LibraryReader.h"
#include "content/own/Conversion.h"
#include "host/shell/BramelInstrument.h"
#include "host/shell/Construction.h"
#include "support/Sanitized.h"

namespace sivray::content {
namespace {

using tesh::bramel::vst::BramelInstrument;
using State = std::vector<std::uint8_t>;

std::shared_ptr<BramelInstrument> makeRunning() {
  auto instrument = tesh::bramel::vst::makeInstrument();
  instrument->setSampleRate(44100.0F);
  instrument->resume();
  return instrument;
}

/// Returns a hash of the sound of each state when all pads are hit.
std::vector<std::uint64_t> renderAll(const std::vector<State>& states) {
  constexpr int kFrames = 512;
  constexpr int kBlocks = 4;
  const auto instrument = makeRunning();
  std::vector<std::uint64_t> hashes;
  for (const State& state : states) {
    instrument->setState(state.data(), state.size());
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (int block = 0; block < kBlocks; ++block) {
      for (std::uint8_t pad = 0; pad < 8; ++pad) {
        const std::array<std::uint8_t, 3> note{0x90, static_cast<std::uint8_t>(36 + pad), 100};
        if (pad / 2 == block) {
          instrument->sendMidi(note.data(), note.size(), pad);
        }
      }
      std::array<float, 2 * kFrames> samples{};
      std::array<float*, 2> outputs{samples.data(), samples.data() + kFrames};
      instrument->process(nullptr, outputs.data(), kFrames);
      for (const float sample : samples) {
        hash = (hash ^ std::bit_cast<std::uint32_t>(sample)) * 0x100000001B3U;
      }
    }
    hashes.push_back(hash);
  }
  return hashes;
}

TEST(OwnSoundsBesideTheFactory, ChangeNothingInSongsMadeBefore) {
  const support::Scratch scratch;
  ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
  ::setenv("BRAMEL_DOCUMENTS", scratch.path().c_str(), 1);
  ::setenv("XDG_DATA_HOME", scratch.path("data").c_str(), 1);
  std::vector<State> states;
  {
    const auto instrument = makeRunning();
    for (std::uint64_t kit = 0; kit < instrument->programCount(0); kit += SIVRAY_KIT_STRIDE) {
      instrument->setProgram(0, kit);
      states.push_back(instrument->getState());
    }
  }
  const std::vector<std::uint64_t> before = renderAll(states);
  EXPECT_EQ(std::set(before.begin(), before.end()).size(), before.size()) << "each kit sounds";

  // Waves are compared with all others. A sanitizer build compares fewer, which is the same code on shorter lists.
  constexpr std::size_t kRoom = support::kIsSanitized ? 150 : 3577;
  std::vector<std::string> files;
  for (std::size_t i = 0; i < kRoom; ++i) {
    files.push_back(
        writeConstant(scratch.path("in/" + std::to_string(i) + ".wav"), static_cast<std::int16_t>(i + 1), 8));
  }
  const auto change = [](const std::function<void(OwnContent&)>& work) {
    OwnContent content([](const std::string&) {});
    work(content);
  };
  const auto playOwn = [&] {
    ::setenv("BRAMEL_COMMON_FILES", scratch.path("data/sivray/content").c_str(), 1);
    auto hashes = renderAll(states);
    ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
    return hashes;
  };
  for (const std::size_t count : {std::size_t{1}, std::size_t{100}, kRoom}) {
    change([&](OwnContent& content) {
      const std::vector<std::string> some(files.begin(), files.begin() + static_cast<std::ptrdiff_t>(count));
      EXPECT_EQ(addSounds(content, {some, {}}, {[](const FileOutcome&) {}, [](double) {}}), count);
    });
    EXPECT_EQ(playOwn(), before) << count;
  }
  change([&](OwnContent& content) {
    std::set<std::int32_t> all;
    for (const OwnSound& sound : content.ledger().sounds) {
      all.insert(sound.number);
    }
    EXPECT_EQ(removeSounds(content, all).size(), kRoom);
  });
  EXPECT_EQ(playOwn(), before) << "after they were removed";
  ::unsetenv("XDG_DATA_HOME");
}

/// A song made with packed content of 515 waves chooses three of them by values that occur in no other content.
TEST(OwnSoundsBesideTheFactory, KeepWhatSongsOfPackedContentMean) {
  const support::Scratch scratch;
  ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);
  ::setenv("BRAMEL_DOCUMENTS", scratch.path().c_str(), 1);
  ::setenv("XDG_DATA_HOME", scratch.path("data").c_str(), 1);
  const std::string resources = "/Tesh/Bramel/Resource/SivrayPCM";
  std::vector<Wave> waves = readLibrary(SIVRAY_CONTENT_FOLDER + resources);
  for (int i = 0; i < 3; ++i) {
    waves.push_back(
        {"Mine " + std::to_string(i), 5, 44100, std::vector<std::int16_t>(400, static_cast<short>(7 + i)), {}});
  }
  const std::string packed = scratch.path("packed");
  std::filesystem::create_directories(packed + "/Tesh/Bramel");
  std::filesystem::copy(SIVRAY_CONTENT_FOLDER "/Tesh/Bramel/Macro", packed + "/Tesh/Bramel/Macro",
                        std::filesystem::copy_options::recursive);
  writeLibrary(packed + resources, waves);

  constexpr std::array<int, 8> kChosen{0, 512, 77, 513, 300, 514, 511, 4};
  State old;
  State factory;
  {
    const auto instrument = makeRunning();
    factory = instrument->getState();
    for (std::size_t pad = 0; pad < kChosen.size(); ++pad) {
      instrument->setParameter(12 * pad, static_cast<float>(kChosen[pad]) / 514.0F);
    }
    old = instrument->getState();
  }
  ::setenv("BRAMEL_COMMON_FILES", packed.c_str(), 1);
  const auto before = renderAll({old});
  ::setenv("BRAMEL_COMMON_FILES", SIVRAY_CONTENT_FOLDER, 1);

  OwnContent content([](const std::string&) {});
  const Conversion conversion(content, packed, {[](const FileOutcome&) {}, [](double) {}});
  ASSERT_EQ(content.ledger().sounds.size(), 3U);
  EXPECT_EQ(content.ledger().sounds.front().name, "Mine 0");
  EXPECT_EQ(content.ledger().sounds.front().category, 5);
  State converted = old;
  EXPECT_EQ(conversion.convert(converted), 8U);
  State untouched = factory;
  EXPECT_EQ(conversion.convert(untouched), 0U) << "a song of the factory's own content";
  EXPECT_EQ(untouched, factory);
  State cut(old.begin(), old.begin() + 3000);
  conversion.convert(cut);
  ::setenv("BRAMEL_COMMON_FILES", scratch.path("data/sivray/content").c_str(), 1);
  EXPECT_EQ(renderAll({converted}), before);
  ::unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace sivray::content
