// Sample libraries: engine and browser read the written files, and folders of sound files become a library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>
#include <sndfile.h>
#include <unistd.h>

#include <cstdlib>

#include "content/Files.h"
#include "content/library/LibraryReader.h"
#include "content/library/LibraryWriter.h"
#include "content/pack/Categories.h"
#include "content/pack/KitMaker.h"
#include "content/pack/Packer.h"
#include "content/pack/WaveNames.h"
#include "engine/samples/PcmFile.h"
#include "engine/samples/SivraySampleLibrary.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
using Samples = std::vector<std::int16_t>;

TEST(Library, IsReadBackByTheEngineAndTheBrowser) {
  const support::Scratch scratch;
  const std::string folder = scratch.path("Tesh/Bramel/Resource/SivrayPCM");
  const std::vector<Wave> waves{{"Kick", 0, 44100, {1, -2, 0x1234}, {}},
                                {"Twelve Chars", 9, 22050, {-32768, 32767}, {5, 6}},
                                {"Kick 2", 0, 48000, {7}, {}}};
  writeLibrary(folder, waves);
  ::setenv("BRAMEL_COMMON_FILES", scratch.path().c_str(), 1);

  tesh::bramel::plugin::sivray::PcmFile file("SivrayPCM");
  ASSERT_EQ(file.database().waveCount(), 3);
  auto data = file.open();
  ASSERT_TRUE(data);
  for (std::size_t i = 0; i < waves.size(); ++i) {
    const auto info = file.database().lookup(static_cast<std::int64_t>(i));
    const Wave& wave = waves[i];
    EXPECT_EQ(info.name, wave.name);
    EXPECT_EQ(info.type, wave.right.empty() ? 1U : 2U);
    EXPECT_EQ(info.sampleRate, static_cast<float>(wave.sampleRate));
    ASSERT_EQ(info.leftEnd - info.leftStart + 1, wave.left.size());
    Samples frames(2 * wave.left.size());
    ASSERT_TRUE(tesh::bramel::plugin::sivray::PcmFile::readPart(
        *data, {{info.leftStart, info.rightStart}, wave.left.size()}, frames.data(), 0, wave.left.size(),
        tesh::bramel::plugin::sivray::Reading::waits));
    for (std::size_t frame = 0; frame < wave.left.size(); ++frame) {
      EXPECT_EQ(frames[2 * frame], wave.left[frame]);
      EXPECT_EQ(frames[2 * frame + 1], wave.right.empty() ? wave.left[frame] : wave.right[frame]);
    }
  }

  tesh::vimo::SivraySampleLibrary browser;
  ASSERT_TRUE(browser.load(folder + "/drumparam_category.bin"));
  EXPECT_EQ(browser.categorySize(0), 2);
  EXPECT_EQ(browser.waveName(1), "Kick 2");
  EXPECT_EQ(browser.waveId(2), 1);
  EXPECT_EQ(browser.waveCategory(2), 9);
}

TEST(Library, RefusesWavesThatTheFormatCannotHold) {
  for (const Wave& wave : std::vector<Wave>{{"", 0, 44100, {1}, {}},
                                            {"Thirteen Char", 0, 44100, {1}, {}},
                                            {"Empty", 0, 44100, {}, {}},
                                            {"Uneven", 0, 44100, {1, 2}, {1}},
                                            {"Rate", 0, 0, {1}, {}},
                                            {"Category", 10, 44100, {1}, {}}}) {
    EXPECT_THROW(makeLibrary({&wave, 1}), std::invalid_argument) << wave.name;
  }
}

TEST(WaveNames, AreCutInTheMiddleAndNeverTwice) {
  WaveNames names;
  names.reserve("Snare Hard");
  EXPECT_EQ(names.take("Acoustic Kick 12 - hard 03"), "Acou hard 03");  // Different layers keep different names.
  EXPECT_EQ(names.take("Acoustic Kick 12 - soft 03"), "Acou soft 03");
  EXPECT_EQ(names.take("Acoustic Kick 14 - soft 03"), "Ac soft 03 2");
  EXPECT_EQ(names.take("Bassdrumfourmics"), "Bassdr rmics");
  EXPECT_EQ(names.take("Snare Hard"), "Snare Hard 2");
  EXPECT_EQ(names.take("Short"), "Short");
  EXPECT_EQ(names.take("Short"), "Short 2");
  EXPECT_EQ(names.take("elevenchars\xC3\xA9"), "eleven ars\xC3\xA9");  // No multi-byte character is split.
  for (int i = 0; i < 200; ++i) {
    EXPECT_LE(names.take("Short").size(), kLongestWaveName);
  }
}

/// A user's sound files. libsndfile writes them and the packer reads them.
class Pack : public testing::Test {
 protected:
  template <typename Format>
  void writeFile(const std::string& name, double rate, int bits, const juce::AudioBuffer<float>& sound) const {
    const juce::File file(scratch.path(name));
    file.getParentDirectory().createDirectory();
    file.deleteFile();
    std::unique_ptr<juce::AudioFormatWriter> writer(Format().createWriterFor(
        new juce::FileOutputStream(file), rate, static_cast<unsigned>(sound.getNumChannels()), bits, {}, 0));
    ASSERT_NE(writer, nullptr);
    ASSERT_TRUE(writer->writeFromAudioSampleBuffer(sound, 0, sound.getNumSamples()));
  }

  /// Writes 2000 frames at 44100 Hz through libsndfile, with a constant on each channel.
  void writeSound(const std::string& folder, const std::string& name, int format, const std::vector<float>& values) {
    fs::create_directories(scratch.path(folder));
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = static_cast<int>(values.size());
    info.format = format;
    SNDFILE* const file = sf_open(scratch.path(folder + "/" + name).c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
    for (int frame = 0; frame < 2000; ++frame) {
      ASSERT_EQ(sf_writef_float(file, values.data(), 1), 1);
    }
    sf_close(file);
  }

  static juce::AudioBuffer<float> constant(int channels, int frames, float value) {
    juce::AudioBuffer<float> sound(channels, frames);
    for (int channel = 0; channel < channels; ++channel) {
      juce::FloatVectorOperations::fill(sound.getWritePointer(channel), channel == 0 ? value : -value, frames);
    }
    return sound;
  }

  PackResult pack() {
    return packFolder(
        scratch.path(), {},
        {[this](const std::string& line) { lines.push_back(line); }, [this](double done) { lastProgress = done; }},
        scratch.path("out/Tesh"));
  }

  support::Scratch scratch;
  std::vector<std::string> lines;
  double lastProgress = 0.0;
};

TEST_F(Pack, KeepsRatesSidesAndSamplesOfPlainFormats) {
  writeFile<juce::WavAudioFormat>("snare/b.wav", 22050, 24, constant(1, 10, 0.5F));
  writeFile<juce::WavAudioFormat>("Snare/loud.wav", 48000, 32, constant(2, 5, 1.5F));  // Floats above full scale.
  writeFile<juce::AiffAudioFormat>("Kick/a.aiff", 44100, 16, constant(2, 7, 0.25F));
  writeSound("Close HH", "c.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, {-0.125F});
  const PackResult result = pack();
  EXPECT_EQ(result.unusable, 0U);
  EXPECT_EQ(lastProgress, 1.0);
  ASSERT_EQ(result.waves.size(), 4U);
  const auto expect = [&](std::size_t at, const char* name, int category, int rate, const Samples& left,
                          const Samples& right) {
    const Wave& wave = result.waves[at].wave;
    EXPECT_EQ(wave.name, name);
    EXPECT_EQ(wave.category, category) << name;
    EXPECT_EQ(wave.sampleRate, rate) << name;
    EXPECT_EQ(wave.left, left) << name;
    EXPECT_EQ(wave.right, right) << name;
  };
  expect(0, "a", 0, 44100, Samples(7, 8192), Samples(7, -8192));
  const std::size_t b =
      result.waves[1].wave.name == "b" ? 1 : 2;  // The order of folders depends on the case of their names.
  expect(b, "b", 1, 22050, Samples(10, 16384), {});
  expect(3 - b, "loud", 1, 48000, Samples(5, 32767), Samples(5, -32768));
  expect(3, "c", 3, 44100, Samples(2000, -4096), {});
}

TEST_F(Pack, SaysWhyAFileIsNotUsedAndWhatIsCut) {
  writeFile<juce::WavAudioFormat>("Kick/long.wav", 8000, 16, constant(1, 7 * 8000, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/six.wav", 44100, 16, constant(1, 6 * 44100, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/dense.wav", 96000, 16, constant(1, 5 * 96000, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/high.wav", 88200, 24, constant(2, 7 * 88200, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/wide.wav", 44100, 16, constant(9, 5, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/empty.wav", 44100, 16, constant(1, 0, 0.0F));
  scratch.write("Kick/fake.wav", "RIFF but no more than that");
  writeFile<juce::WavAudioFormat>("Kick/short.wav", 44100, 16, constant(1, 500, 0.1F));
  scratch.write("Kick/short.wav", readText(scratch.path("Kick/short.wav")).substr(0, 600));
  scratch.write("Kick/notes.txt", "text");
  scratch.write("Kick/.hidden", "");
  const PackResult result = pack();
  ASSERT_EQ(result.waves.size(), 4U);
  EXPECT_EQ(result.waves[0].wave.left.size(), 5U * 48000U);
  EXPECT_EQ(result.waves[0].wave.sampleRate, 48000);
  EXPECT_NEAR(result.waves[0].wave.left[120000], 3277, 2);
  EXPECT_EQ(result.waves[1].wave.sampleRate, 44100);
  EXPECT_EQ(result.waves[1].wave.right.size(), 264600U);
  EXPECT_EQ(result.waves[2].wave.left.size(), 6U * 8000U);
  EXPECT_EQ(result.waves[3].wave.left.size(), 264600U);
  EXPECT_EQ(result.unusable, 5U);
  std::string all;
  for (const std::string& line : lines) {
    all += line + "\n";
  }
  for (const char* piece : {"long.wav: Kick \"long\"; it is longer", "first 6.00 of 7.00 s",
                            "dense.wav: Kick \"dense\"\n", "wide.wav: not used: it has 9 channels without",
                            "empty.wav: not used: it holds no samples", "fake.wav: not used: it is no sound file",
                            "short.wav: not used: it breaks off", "notes.txt: not used: it is no sound file"}) {
    EXPECT_NE(all.find(piece), std::string::npos) << piece << " in\n" << all;
  }
  EXPECT_EQ(lines.size(), 9U) << all;
}

TEST_F(Pack, TakesOtherFormatsAndMixesChannelsDown) {
  struct Case {
    const char* name;
    int format;
    float tolerance;  ///< Of full scale.
  };
  for (const Case& scene : {Case{"double.wav", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 0.0F},
                            Case{"law.wav", SF_FORMAT_WAV | SF_FORMAT_ULAW, 0.01F},
                            Case{"swapped.aifc", SF_FORMAT_AIFF | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE, 0.0F},
                            Case{"float.aif", SF_FORMAT_AIFF | SF_FORMAT_FLOAT, 0.0F},
                            Case{"coded.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.02F}}) {
    writeSound("Kick", scene.name, scene.format, {0.25F});
    const PackResult result = pack();
    ASSERT_EQ(result.waves.size(), 1U) << scene.name << ": " << lines.back();
    EXPECT_EQ(result.waves.front().wave.left.size(), 2000U) << scene.name;
    EXPECT_NEAR(result.waves.front().wave.left[1000], 8192, 32768 * scene.tolerance) << scene.name;
    fs::remove(scratch.path("Kick/" + std::string(scene.name)));
  }
  writeSound("Kick", "guessed.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, {0.25F});
  EXPECT_EQ(pack().waves.size(), 1U) << lines.back();
  fs::remove(scratch.path("Kick/guessed.mp3"));
  // Left, right, centre, low, rear left and right: 0.2 + (0.1 + 0.3) / sqrt 2, and 0.4 + (0.1 + 0.5) / sqrt 2.
  writeSound("Kick", "six.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, {0.2F, 0.4F, 0.1F, 1.0F, 0.3F, 0.5F});
  const Wave six = pack().waves.at(0).wave;
  EXPECT_NEAR(six.left[9], 15822, 1);
  EXPECT_NEAR(six.right[9], 27009, 1);
  EXPECT_THAT(lines.back(), testing::HasSubstr("it has 6 channels, which are mixed down to two"));
}

TEST_F(Pack, TakesWhatWasWrittenToAPipe) {
  writeSound("Kick", "whole.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, {0.25F});
  const std::string whole = readText(scratch.path("Kick/whole.wav"));
  fs::remove(scratch.path("Kick/whole.wav"));
  const std::size_t sizePlace = whole.find("data") + 4;
  const auto withSizes = [&](const std::string& all, const std::string& sound) {
    std::string text = whole;
    scratch.write("Kick/piped.wav", text.replace(4, 4, all).replace(sizePlace, 4, sound));
    return pack();
  };
  const std::string none(4, '\0');
  const std::string most(4, '\xFF');
  const std::string half("\xFF\xFF\xFF\x7F");
  for (const auto& [all, sound] : {std::pair{none, none}, {most, most}, {half, half}, {most, none}}) {
    const PackResult result = withSizes(all, sound);
    ASSERT_EQ(result.waves.size(), 1U) << lines.back();
    EXPECT_EQ(result.waves.front().wave.left, Samples(2000, 8192));
  }
  EXPECT_EQ(withSizes(whole.substr(4, 4), none).waves.size(), 0U) << "an empty sound is no pipe's";
  EXPECT_EQ(withSizes(none, std::string("\xA1\x0F\0\0", 4)).waves.size(), 0U);
  EXPECT_THAT(lines.back(), testing::HasSubstr("breaks off"));
}

TEST_F(Pack, PassesOverClosedFoldersAndItsOwnOutputAndNamesThatMoveTheCursor) {
  writeSound("Kick", "one.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, {0.25F});
  writeSound("Kick", "\x1B[2J.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, {0.25F});
  writeSound("out/Tesh/Bramel", "ours.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, {0.25F});
  scratch.write("Closed/two.wav", "");
  fs::permissions(scratch.path("Closed"), fs::perms::none);
  const bool isClosedToUs = ::geteuid() != 0;
  const PackResult result = pack();
  fs::permissions(scratch.path("Closed"), fs::perms::owner_all);
  ASSERT_EQ(result.waves.size(), 2U);
  EXPECT_EQ(result.waves[0].wave.name, "?[2J");
  EXPECT_EQ(result.unusable, 1U);
  EXPECT_THAT(lines,
              testing::Contains(testing::HasSubstr(isClosedToUs ? "Closed: not used: it cannot be read: Permission"
                                                                : "two.wav: not used: it is no sound file")));
}

TEST_F(Pack, FailsOnAFolderThatIsNotThere) {
  EXPECT_THROW(packFolder(scratch.path("nowhere"), {}, {[](const std::string&) {}, [](double) {}}), std::runtime_error);
}

TEST(Categories, AreToldByTheWordsThatPeopleUse) {
  const auto nameOf = [](const char* text) {
    const auto match = categoryIn(text);
    return match ? std::string(kCategoryNames[static_cast<std::size_t>(match->category)]) : "";
  };
  const std::pair<const char*, const char*> cases[] = {
      {"Kicks", "Kick"},          {"bd_03", "Kick"},         {"Bass Drum 22in", "Kick"},
      {"softkick", "Kick"},       {"HH closed", "Close HH"}, {"ClosedHat2", "Close HH"},
      {"hihat", "Close HH"},      {"Hats", "Close HH"},      {"OpenHat", "Open HH"},
      {"hi-hat open", "Open HH"}, {"OHH 1", "Open HH"},      {"half-open hat", "Open HH"},
      {"Snr brush", "Snare"},     {"SD-rim", "Perc"},        {"rimshots", "Snare"},
      {"CP 909", "Clap"},         {"Crashes", "Cymbal"},     {"ride bell", "Cymbal"},
      {"floor tom", "Tom"},       {"Congas", "Perc"},        {"SFX", "FX"},
      {"orch stab", "Hit"},       {"Tombola", ""},           {"12 x", ""},
  };
  for (const auto& [text, category] : cases) {
    EXPECT_EQ(nameOf(text), category) << text;
  }
}

TEST_F(Pack, TellsCategoriesFromFoldersAndNamesAtAnyDepth) {
  for (const char* name : {"Hats/Maple/01.wav", "Hats/Maple/02 open.wav", "Kicks/snap it.wav", "Room Kit/kick.wav",
                           "Room Kit/snare.wav", "Room Kit/hat.wav", "Odd/thing.wav"}) {
    writeFile<juce::WavAudioFormat>(name, 44100, 16, constant(1, 40, 0.1F));
  }
  std::string told;
  for (const PackedWave& packed : pack().waves) {
    told += packed.wave.name + "=" + std::string(kCategoryNames[static_cast<std::size_t>(packed.wave.category)]) + " ";
  }
  EXPECT_EQ(told, "snap it=Kick kick=Kick snare=Snare 01=Close HH hat=Close HH 02 open=Open HH thing=Perc ");
  EXPECT_THAT(lines, testing::Contains(testing::EndsWith("since neither its name nor its folder's names a category")));
}

/// Returns a wave of 0.1 s in a folder below "/all".
PackedWave waveIn(const char* folder, const char* name, int category, std::int16_t level = 1000) {
  return {{name, category, 44100, std::vector<std::int16_t>(4410, level), {}}, std::filesystem::path("/all") / folder};
}

TEST(KitMaker, MakesAKitOfEachFolderWithEnough) {
  const std::vector<PackedWave> waves{
      waveIn("Oak/close", "kick", 0),  waveIn("Oak", "snare", 1),     waveIn("Oak", "snare loud", 1, 2000),
      waveIn("Oak/hats", "closed", 3), waveIn("Oak/hats", "open", 4), waveIn("More", "other kick", 0),
      waveIn("More", "conga", 7)};
  const std::vector<factory::Kit> kits = makeKits(waves, "/all", {"Oak"});
  ASSERT_EQ(kits.size(), 1U);
  const factory::Kit& oak = kits.front();
  EXPECT_EQ(oak.name, "Oak 2");
  std::string pads;
  for (const factory::KitPad& pad : oak.pads) {
    pads += pad.wave + ", ";
  }
  // The second snare is on the side stick's pad; stand-ins fill the remaining pads.
  EXPECT_EQ(pads, "kick, snare, snare loud, snare loud, open, kick, closed, open, ");
  EXPECT_EQ(oak.pads[6].group, factory::ExclusiveGroup::a);
  EXPECT_EQ(oak.pads[7].group, factory::ExclusiveGroup::a);
  const factory::Kit again = factory::parseKit(textOf(oak), "oak.kit");
  EXPECT_EQ(textOf(again), textOf(oak));

  const auto all = makeKits({waveIn("Kicks", "a", 0), waveIn("Kicks", "b", 0)}, "/all", {});
  ASSERT_EQ(all.size(), 1U);  // Too few waves for a kit, but a bank needs at least one.
  EXPECT_EQ(all.front().name, "all");
  EXPECT_EQ(all.front().pads[3].wave, "a");
}

/// The written library is read as in a later run of the packer.
TEST(Library, IsReadBackWhole) {
  const support::Scratch scratch;
  const std::vector<Wave> waves{{"Open", 4, 44100, {1, 2}, {}}, {"Kick", 0, 22050, {-32768, 32767}, {5, 6}}};
  writeLibrary(scratch.path(), waves);
  const std::vector<Wave> again = readLibrary(scratch.path());
  ASSERT_EQ(again.size(), waves.size());
  for (std::size_t i = 0; i < waves.size(); ++i) {
    EXPECT_EQ(std::tie(again[i].name, again[i].category, again[i].sampleRate, again[i].left, again[i].right),
              std::tie(waves[i].name, waves[i].category, waves[i].sampleRate, waves[i].left, waves[i].right));
  }
  scratch.write("drumdata.bin", "short");
  EXPECT_THROW(readLibrary(scratch.path()), std::runtime_error);
}

}  // namespace
}  // namespace sivray::content
