// The renderer from its command line to its files: sound, timing and error messages.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_audio_basics/juce_audio_basics.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <set>
#include <thread>

#include "RenderScene.h"
#include "engine/samples/SimilarWaves.h"
#include "render/PresetFile.h"
#include "render/SampleWords.h"
#include "vsthost/Host.h"

namespace sivray::render {
namespace {

TEST_F(Render, GivesTheSameSoundInBlocksOfEverySize) {
  writeScore({}, false);
  const Bytes expected = play({"--direct", "--block", "512"});
  ASSERT_NE(expected, Bytes(expected.size()));
  for (const char* block : {"1", "100", "4096"}) {
    EXPECT_TRUE(play({"--direct", "--block", block}) == expected) << block;
  }
}

TEST_F(Render, MovesTakeForceAtTheirFrames) {
  const Bytes plain = play({"--direct"});
  for (const char* move : {"master=10@0.4", "fx.type=Marlo Chorus@0.4"}) {
    const Bytes moved = play({"--direct", "--set", move});
    const auto difference = std::mismatch(plain.begin(), plain.end(), moved.begin()).first;
    const auto frame = static_cast<std::size_t>(difference - plain.begin()) / kFrameBytes;
    EXPECT_GE(frame, 17640U) << move;
    EXPECT_LT(frame, 17640U + 64U) << move;
  }
}

TEST_F(Render, ReadsMovesOutOfTheScore) {
  const Bytes asked = play({"--direct", "--set", "pad2.level=20", "--set", "pad3.pitch=30@0.4"});
  writeScore({"pad2.level=20", "pad3.pitch=30"});
  EXPECT_TRUE(play({"--direct"}) == asked);
}

TEST_F(Render, KeepsTheEnginesSixteenBits) {
  const Bytes wide = play({"--direct", "--bits", "24"});
  const Bytes narrow = play({"--direct", "--bits", "16"});
  ASSERT_EQ(wide.size() / 3, narrow.size() / 2);
  for (std::size_t i = 0; i < narrow.size() / 2; ++i) {
    ASSERT_EQ(wide[3 * i], 0) << i;
    ASSERT_TRUE(wide[3 * i + 1] == narrow[2 * i] && wide[3 * i + 2] == narrow[2 * i + 1]) << i;
  }
}

TEST(SampleWords, AreTheNearestNumbersWithinTheirBits) {
  for (const int bits : {16, 24}) {
    const float unit = std::ldexp(1.0F, 1 - bits);
    const int lowest = -(1 << (bits - 1));
    const std::vector<std::pair<float, int>> cases{{0.0F, 0},
                                                   {unit, 1},
                                                   {0.5F * unit, 0},
                                                   {1.5F * unit, 2},
                                                   {2.5F * unit, 2},
                                                   {-0.5F * unit, 0},
                                                   {-1.5F * unit, -2},
                                                   {0.75F * unit, 1},
                                                   {1.0F, -lowest - 1},
                                                   {-1.0F, lowest},
                                                   {100.0F, -lowest - 1},
                                                   {-100.0F, lowest},
                                                   {HUGE_VALF, -lowest - 1},
                                                   {NAN, lowest},
                                                   {0.25F, -lowest / 4}};
    std::vector<float> samples;
    for (const auto& [sample, word] : cases) {
      samples.push_back(sample);
    }
    std::vector<int> words(cases.size());
    toWords(samples.data(), static_cast<int>(samples.size()), bits, words.data());
    for (std::size_t i = 0; i < cases.size(); ++i) {
      EXPECT_EQ(words[i], cases[i].second * (1 << (32 - bits))) << cases[i].first << " in " << bits;
    }
  }
}

TEST_F(Render, ToursThroughAllEffects) {
  ASSERT_EQ(runProgram({at("in.mid"), "--fx-tour", at("tour"), "--direct", "--quiet", "--tail", "0"}, noCheck), 0);
  std::set<std::string> sounds;
  for (const auto& entry : fs::directory_iterator(at("tour"))) {
    if (entry.path().extension() == ".wav") {
      const Bytes sound = bytesIn(entry.path());
      sounds.emplace(sound.begin(), sound.end());
    }
  }
  EXPECT_EQ(sounds.size(), 30U);
  const Bytes picture = bytesIn(at("tour/effects.png"));
  ASSERT_GT(picture.size(), 10000U);
  EXPECT_EQ(picture[1], 'P');
}

TEST_F(Render, PlaysTheLibraryToTheBitLikeTheInstrumentItself) {
  const std::vector<Arguments> scenes{
      {},
      {"--block", "100", "--program", "Wet", "--edit1", "20"},
      {"--block", "5000", "--macro", "P3 Pitch=0.7@0.5", "--param", "P2 Level=0.1@0.61234", "--set", "fx.type=12@0.8"},
      {"--wave", "5=wave9", "--set", "pad3.pitchfine=150", "--set", "master=127@1"},
  };
  for (Arguments scene : scenes) {
    const Bytes plugin = play(scene);
    scene.emplace_back("--direct");
    EXPECT_TRUE(play(scene) == plugin) << scene.front();
  }
}

TEST_F(Render, WritesAFileForEachOutBesideTheSameMainOne) {
  Arguments scene{"--rate", "48000", "--program", "Wet", "--block", "333", "--macro", "P3 Pitch=0.7@0.5"};
  const Bytes plugin = play(scene);
  scene.emplace_back("--stems");
  EXPECT_TRUE(play(scene) == plugin);
  std::set<std::string> stems;
  for (const std::string& path : stemPaths(at("out.wav"))) {
    const Bytes stem = soundTakenFrom(path);
    stems.emplace(stem.begin(), stem.end());
  }
  EXPECT_EQ(stems.size(), 9U) << "each sounds otherwise";
}

TEST_F(Render, StartsFromProgramsAndStates) {
  const std::string state = at("wet.state");
  const Bytes plain = play({"--direct"});
  const Bytes wet = play({"--direct", "--program", "Wet"});
  EXPECT_NE(wet, plain);
  EXPECT_EQ(play({"--direct", "--program", "1"}), wet);
  EXPECT_EQ(play({"--direct", "--program", "0"}), plain);
  EXPECT_EQ(play({"--direct", "--fx", "room reverb"}), wet);
  EXPECT_EQ(play({"--direct", "--macro", "FX Type=1"}), wet);
  EXPECT_EQ(runProgram({"--direct", "--program", "Wet", "--save-state", state}, noCheck), 0);
  EXPECT_EQ(play({"--direct", "--state", state}), wet);
}

TEST_F(Render, WritesPresetFilesThatPlayLikeTheirKits) {
  ASSERT_EQ(runProgram({"--direct", "--quiet", "--save-kits", at("Presets")}, noCheck), 0);
  ASSERT_EQ(runProgram({"--library", SIVRAY_MODULE, "--program", "Wet", "--save-state", at("wet.FXP")}, noCheck), 0);
  const Bytes preset = bytesIn(at("Presets/Wet.fxp"));
  EXPECT_TRUE(bytesIn(at("wet.FXP")) == preset);
  for (const char* kit : {"Plain", "Wet"}) {
    const Bytes wanted = play({"--program", kit});
    EXPECT_TRUE(play({"--state", at("Presets/" + std::string(kit) + ".fxp")}) == wanted) << kit;
  }

  // The header as hosts read it, with the numbers that they compare with those of the plug-in.
  const vsthost::PluginLibrary library(SIVRAY_MODULE);
  vsthost::Host host(library);
  const auto number = [&](std::size_t at) {
    return static_cast<std::int32_t>(preset[at] << 24 | preset[at + 1] << 16 | preset[at + 2] << 8 | preset[at + 3]);
  };
  EXPECT_EQ(std::string(preset.begin(), preset.begin() + 4), "CcnK");
  EXPECT_EQ(number(4), static_cast<std::int32_t>(preset.size()) - 8);
  EXPECT_EQ(std::string(preset.begin() + 8, preset.begin() + 12), "FPCh");
  EXPECT_EQ(number(16), host.effect().uniqueID);
  EXPECT_EQ(number(20), host.effect().version);
  EXPECT_EQ(number(24), host.parameterCount());
  EXPECT_EQ(std::string(preset.begin() + 28, preset.begin() + 56), "Wet" + std::string(25, '\0'));
  EXPECT_EQ(number(56), static_cast<std::int32_t>(preset.size()) - 60);
}

TEST_F(Render, KeepsWholeCharactersOfLongPresetNames) {
  const std::string name = std::string(26, 'a') + "\xC3\xA9";
  const Bytes preset = packPreset(name, 0, {});
  EXPECT_EQ(std::string(preset.begin() + 28, preset.begin() + 56), std::string(26, 'a') + std::string(2, '\0'));
  EXPECT_EQ(presetFileName("A/B: \xC3\xA9"), "A-B- \xC3\xA9.fxp");
}

TEST_F(Render, RefusesDamagedPresetFiles) {
  ASSERT_EQ(runProgram({"--direct", "--save-state", at("good.fxp")}, noCheck), 0);
  const Bytes good = bytesIn(at("good.fxp"));
  struct Damage {
    std::size_t place;  ///< Of a byte that is replaced by 'x'.
    std::size_t length;
    const char* words;
  };
  const std::vector<Damage> cases{
      {0, good.size(), "no preset file"},   {0, 59, "no preset file"},
      {0, 0, "missing or empty"},           {8, good.size(), "parameters or a bank"},
      {16, good.size(), "another plug-in"}, {56, good.size(), "cut short"},
      {40, good.size() - 1, "cut short"},   {60, good.size(), "no state of this plug-in"},
  };
  for (const Damage& damage : cases) {
    Bytes bad = good;
    bad[damage.place] = 'x';
    bad.resize(damage.length);
    writeFile(at("bad.fxp"), bad);
    const std::string line = failure({at("in.mid"), "-o", at("out.wav"), "--direct", "--state", at("bad.fxp")});
    EXPECT_NE(line.find(damage.words), std::string::npos) << line;
  }
}

TEST_F(Render, AProgramInTheScorePlaysFromItsTimeOnUnlessAnotherIsAskedFor) {
  writeScore({}, false);
  const Bytes first = play({});
  const Bytes wet = play({"--program", "Wet"});
  writeScore({"program=Wet"}, false);
  EXPECT_EQ(play({}), wet);
  EXPECT_EQ(play({"--program", "0"}), first);
  writeScore({"program=Plain", "program=Wet"}, false);
  for (const Arguments& extra : {Arguments{}, Arguments{"--direct"}}) {
    const Bytes later = play(extra);
    const auto difference = std::mismatch(first.begin(), first.end(), later.begin()).first;
    EXPECT_GE(static_cast<std::size_t>(difference - first.begin()) / kFrameBytes, 17640U);
    EXPECT_NE(later, first);
  }
  writeScore({"program=Plain", "program=Nobody"}, false);
  EXPECT_NE(failure({at("in.mid"), "-o", at("out.wav"), "--direct"}).find("there is no program"), std::string::npos);
}

TEST_F(Render, SaysInOneLineWhatItCannotDo) {
  std::ofstream(at("empty.mid")) << "";
  std::ofstream(at("broken.mid")) << "MThd and nothing more";
  std::ofstream(at("broken.state")) << "MPck";
  const std::string in = at("in.mid");
  const std::string out = at("out.wav");
  ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
  const std::vector<std::pair<Arguments, const char*>> faults{
      {{at("none.mid"), "-o", out}, "no such file"},
      {{at("empty.mid"), "-o", out}, "is empty"},
      {{at("broken.mid"), "-o", out}, "broken"},
      {{in, "--direct", "-o", at("none/out.wav")}, "cannot write"},
      {{in, "--direct", "-o", at("pipe")}, "no file that can be replaced"},
      {{in, "-o", out, "--longest", "0.5"}, "and at most 0.5 s are played"},
      {{in, "-o", out, "--direct", "--state", at("broken.state")}, "no state"},
      {{"--direct", "--save-state", at("none/state")}, "cannot write the state"},
      {{"--direct", "--save-kits", at("in.mid/kits")}, "cannot make the folder"},
      {{in, "-o", out, "--library", at("none.so")}, "no such file"},
      {{in, "-o", out, "--library", in}, "no library"},
  };
  const std::vector<std::pair<Arguments, const char*>> wrongUsage{
      {{in}, "-o"},
      {{"-o", out}, "name a MIDI file"},
      {{in, "-o", out, "--blocks", "1"}, "unknown option"},
      {{in, "-o", out, "--block", "0"}, "takes a number"},
      {{in, "-o", out, "--block"}, "needs a value"},
      {{in, "-o", out, "--bits", "20"}, "16 or 24"},
      {{in, "-o", out, "--direct", "--rate", "48000"}, "44100"},
      {{in, "-o", out, "--direct", "--wave", "1=Nobody"}, "there is no wave 'Nobody'"},
      {{in, "-o", out, "--direct", "--wave", "0=wave1"}, "from 1 to 8"},
      {{in, "-o", out, "--direct", "--set", "pad0.level=1"}, "there is no engine parameter"},
      {{in, "-o", out, "--direct", "--set", "pad8.level=128"}, "from 0 to 127"},
      {{in, "-o", out, "--direct", "--fx", "Nothing"}, "there is no effect"},
      {{in, "-o", out, "--direct", "--program", "Nobody"}, "there is no program"},
      {{in, "-o", out, "--direct", "--program", "2"}, "there is no program"},
      {{in, "-o", out, "--direct", "--macro", "52=0"}, "there is no macro 52"},
      {{in, "-o", out, "--direct", "--macro", "0=1.5"}, "from 0 to 1"},
      {{in, "-o", out, "--direct", "--param", "44=0"}, "there is no parameter 44"},
      {{in, "-o", out, "--direct", "--param", "P1 Fine=0"}, "there is no parameter"},
      {{"--panel", at("panel.jpg")}, "ends with .png"},
      {{in, "-o", out, "--library", SIVRAY_MODULE, "--fx", "Drive"}, "use --direct"},
      {{in, "-o", out, "--library", SIVRAY_MODULE, "--macro", "P1 Fine=1@0.5"}, "hidden"},
  };
  for (const auto& [arguments, words] : faults) {
    EXPECT_NE(failure(arguments).find(words), std::string::npos) << words;
  }
  for (const auto& [arguments, words] : wrongUsage) {
    EXPECT_NE(failure(arguments, kWrongUsage).find(words), std::string::npos) << words;
  }
}

/// Returns a MIDI file of one track: notes 36 and 35, and text events of another program.
std::string rawScore(char type, int division) {
  const std::string track = std::string("\x00\x90\x24\x64", 4) + std::string("\x60\x90\x23\x64", 4) +
                            std::string("\x00\xFF\x01\x09tempo=\x1B[1", 13) +
                            std::string("\x00\xFF\x01\x0BVoice = two", 15) + std::string("\x60\xFF\x2F\x00", 4);
  return std::string("MThd\0\0\0\6\0", 9) + type + std::string("\0\1", 2) + static_cast<char>(division >> 8) +
         static_cast<char>(division & 0xFF) + std::string("MTrk\0\0\0", 7) + static_cast<char>(track.size()) + track;
}

TEST_F(Render, PlaysMidiFilesOfOthersAndSaysWhatItLeavesOut) {
  const auto write = [&](char type, int division) {
    std::ofstream(at("raw.mid"), std::ios::binary) << rawScore(type, division);
  };
  const Arguments arguments{at("raw.mid"), "-o", at("raw.wav"), "--direct", "--tail", "0"};
  struct Case {
    int division;
    const char* seconds;
  };
  // 192 ticks: at 96 per quarter note of half a second; at 25 and at 29.97 frames per second with 40 ticks each.
  for (const Case& scene :
       {Case{96, ": 1.000 s"}, Case{(256 - 25) << 8 | 40, ": 0.192 s"}, Case{(256 - 29) << 8 | 40, ": 0.160 s"}}) {
    write(0, scene.division);
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_EQ(runProgram(arguments, noCheck), 0);
    const std::string warning = testing::internal::GetCapturedStderr();
    const std::string line = testing::internal::GetCapturedStdout();
    EXPECT_NE(warning.find("2 texts in the MIDI file name no engine parameter and set nothing, first 'tempo=?[1'"),
              std::string::npos)
        << warning;
    EXPECT_NE(line.find(scene.seconds), std::string::npos) << line;
    EXPECT_NE(line.find("1 note has no pad"), std::string::npos) << line;
  }
  for (const int division : {0, (256 - 25) << 8, (256 - 26) << 8 | 40}) {
    write(0, division);
    EXPECT_NE(failure(arguments).find("how long a tick is"), std::string::npos) << division;
  }
  write(2, 96);
  EXPECT_NE(failure(arguments).find("type 2"), std::string::npos);
}

TEST_F(Render, PlaysDrumsThatHaveNoPadByANoteMap) {
  const auto write = [&](const std::vector<int>& notes, int controller) {
    juce::MidiMessageSequence track;
    double tick = kFirstTick;
    for (const int note : notes) {
      track.addEvent(juce::MidiMessage::controllerEvent(10, controller, 10), tick - 20.0);
      track.addEvent(juce::MidiMessage::noteOn(10, note, juce::uint8{100}), tick);
      track.addEvent(juce::MidiMessage::noteOff(10, note), tick + 100.0);
      tick += 200.0;
    }
    saveMidi(track);
  };
  constexpr int kNoMeaning = 119;
  write({36, 38, 41, 43, 40}, kNoMeaning);
  const Bytes expected = play({"--direct"});
  write({35, 40, 48, 46, 57}, kNoMeaning);
  EXPECT_TRUE(play({"--direct", "--notes", "general midi"}) == expected);
  EXPECT_FALSE(play({"--direct", "--notes=All_Drums"}) == expected) << "40 is the cymbal there";
  EXPECT_FALSE(play({"--direct"}) == expected);
  write({35, 40, 50, 42, 49}, 4);
  EXPECT_TRUE(play({"--direct", "--notes", "General MIDI"}) == expected) << "an open pedal opens the hat";

  write({54, 46, 36, 49, 54}, kNoMeaning);
  for (const auto& [map, line] :
       {std::pair{"Sivray", ", 4 notes have no pad: 46 49 54\n"}, {"General MIDI", ", 2 notes have no pad: 54\n"}}) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(runProgram({at("in.mid"), "-o", at("out.wav"), "--direct", "--notes", map}, noCheck), 0);
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(text.ends_with(line)) << text;
  }
  fs::remove(at("out.wav"));
  EXPECT_NE(failure({at("in.mid"), "-o", at("out.wav"), "--notes", "GM"}, kWrongUsage).find("General MIDI"),
            std::string::npos);
}

TEST_F(Render, PlaysByTheNotesThatTheProgramWasTaught) {
  ::setenv("XDG_CONFIG_HOME", folder.commonFiles().c_str(), 1);
  const Bytes expected = play({"--direct"});
  const fs::path file = folder.commonFiles() / "sivray/notes.txt";
  const auto refusal = [&](const std::string& name) {
    return failure({at("in.mid"), "-o", at("out.wav"), "--direct", "--notes", name}, kWrongUsage);
  };
  EXPECT_NE(refusal("Learn").find("has not been taught any note"), std::string::npos);
  fs::create_directories(file.parent_path());
  std::ofstream(file) << "# the pads turned by one\n36=37\n37=38\n38=39\n39=40\n40=41\n41=42\n42=43\n43=36\n";
  const Bytes turned = play({"--direct", "--notes", "learn"});
  EXPECT_FALSE(turned == expected);
  EXPECT_TRUE(turned == play({"--direct", "--notes", file.string()}));
  std::ofstream(file) << "60=36\n36=pad1\n";
  EXPECT_NE(refusal("Learn").find("line 2 of '"), std::string::npos);
  EXPECT_NE(refusal(file.parent_path()).find("or a file"), std::string::npos);
  ::unsetenv("XDG_CONFIG_HOME");
}

/// The first pad has a number between two factory waves, as in songs with own sounds.
TEST_F(Render, SaysWhichOwnSoundsASongMisses) {
  const auto warning = [&](const Arguments& values) {
    Arguments arguments{at("in.mid"), "-o", at("out.wav"), "--direct", "--quiet"};
    arguments.insert(arguments.end(), values.begin(), values.end());
    testing::internal::CaptureStderr();
    EXPECT_EQ(runProgram(arguments, noCheck), 0);
    return testing::internal::GetCapturedStderr();
  };
  EXPECT_EQ(warning({}), "");
  EXPECT_EQ(warning({"--macro", "P1 Wave=0.034090909"}),
            "sivray-render: warning: Pad 1 misses your sound no. 3: factory sounds play instead\n");
  ::setenv("XDG_DATA_HOME", folder.commonFiles().c_str(), 1);
  fs::create_directories(folder.commonFiles() / "sivray/content");
  std::ofstream(folder.commonFiles() / "sivray/content/ledger.txt") << "removed\t3\t1\t0\tOak Kick\t\n";
  EXPECT_EQ(warning({"--macro", "P1 Wave=0.034090909"}),
            "sivray-render: warning: Pad 1 misses \"Oak Kick\" (removed): factory sounds play instead\n");
  ::unsetenv("XDG_DATA_HOME");
}

TEST_F(Render, VariesAKitBySeed) {
  const Arguments varied{at("in.mid"), "-o", at("out.wav"), "--direct", "--vary", "1"};
  EXPECT_NE(failure(varied).find("sivray-content similar"), std::string::npos) << "nothing is known of the waves";
  std::vector<tesh::vimo::WaveKin> kins;
  for (std::int32_t wave = 0; wave < 12; ++wave) {
    kins.push_back({.wave = wave, .loudness = -20.0F, .nearest = {(wave + 1) % 12, (wave + 2) % 12}, .farthest = -1});
  }
  kins[3].loudness = -26.02F;
  const fs::path library = folder.commonFiles() / "Tesh/Bramel/Resource/SivrayPCM";
  const auto bytes = tesh::vimo::SimilarWaves::pack(kins, bytesIn(library / "drumparam_category.bin"));
  writeFile(library / "similar.bin", bytes);
  const Bytes own = play({"--direct"});
  std::vector<Bytes> sounds;
  for (const char* seed : {"1", "2", "3", "4294967295"}) {
    const Bytes sound = play({"--direct", "--vary", seed});
    EXPECT_TRUE(sound == play({"--vary", seed})) << "the same from the library";
    EXPECT_FALSE(sound == own);
    sounds.push_back(sound);
  }
  EXPECT_FALSE(sounds[0] == sounds[1] && sounds[1] == sounds[2] && sounds[2] == sounds[3]);
  Arguments waves{"--direct"};
  for (int pad = 1; pad <= 8; ++pad) {
    waves.insert(waves.end(),
                 {"--wave", std::to_string(pad) + "=wave5", "--set", "pad" + std::to_string(pad) + ".level=90"});
  }
  const Bytes plain = play(waves);
  waves.insert(waves.end(), {"--vary", "1"});
  EXPECT_TRUE(play(waves) == plain) << "what the command line sets comes last";
}

TEST_F(Render, LeavesNoFileAfterASignal) {
  const auto hasFile = [&] {
    return std::any_of(fs::directory_iterator(folder.commonFiles()), fs::directory_iterator(),
                       [](const auto& entry) { return entry.path().filename().string().starts_with("out"); });
  };
  const pid_t child = ::fork();
  if (child == 0) {
    std::signal(SIGHUP, SIG_IGN);
    runProgram({at("in.mid"), "-o", at("out.wav"), "--direct", "--quiet", "--tail", "3600"}, noCheck);
    std::_Exit(0);
  }
  for (int wait = 0; !hasFile() && wait < 3000; ++wait) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  ASSERT_TRUE(hasFile()) << "no temporary file";
  ::kill(child, SIGHUP);  // Ignored, as under nohup.
  ::kill(child, SIGTERM);
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
  EXPECT_FALSE(hasFile());
}

TEST_F(Render, ListsWhatItsOptionsTake) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(runProgram({"--direct", "--list-effects", "--list-waves", "--list-parameters"}, noCheck), 0);
  const std::string text = testing::internal::GetCapturedStdout();
  for (const char* line :
       {"  23  EQ                 2Band EQ     Low Gain   High Gain", "   3  Marlo Ensemble", "   9  wave9",
        "pad8.level       0 .. 127  43      P8 Level           36", "fx.edit2         0 .. 127"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << " in\n" << text;
  }
}

}  // namespace
}  // namespace sivray::render
