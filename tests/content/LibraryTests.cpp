// Sample libraries: engine and browser read what the writer wrote, and folders of sound files become a library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>

#include <cstdlib>

#include "Scratch.h"
#include "content/library/LibraryWriter.h"
#include "content/pack/Packer.h"
#include "content/pack/WaveNames.h"
#include "engine/samples/PcmFile.h"
#include "engine/samples/SivraySampleLibrary.h"

namespace sivray::content {
namespace {

using Samples = std::vector<std::int16_t>;

TEST(Library, IsReadBackByTheEngineAndTheBrowser) {
  const Scratch scratch;
  const std::string folder = scratch.path("Tesh/Bramel/Resource/SivrayPCM");
  const std::vector<Wave> waves{{"Kick", 0, 44100, {1, -2, 0x1234}, {}},
                                {"Twelve Chars", 9, 22050, {-32768, 32767}, {5, 6}},
                                {"Kick 2", 0, 48000, {7}, {}}};
  writeLibrary(folder, waves);
  ::setenv("BRAMEL_COMMON_FILES", scratch.path().c_str(), 1);

  tesh::bramel::plugin::sivray::PcmFile file("SivrayPCM");
  ASSERT_EQ(file.database().waveCount(), 3);
  for (std::size_t i = 0; i < waves.size(); ++i) {
    const auto info = file.database().lookup(static_cast<std::int64_t>(i));
    const Wave& wave = waves[i];
    EXPECT_EQ(info.name, wave.name);
    EXPECT_EQ(info.type, wave.right.empty() ? 1U : 2U);
    EXPECT_EQ(info.sampleRate, static_cast<float>(wave.sampleRate));
    ASSERT_EQ(info.leftEnd - info.leftStart + 1, wave.left.size());
    Samples frames(2 * wave.left.size());
    const std::array<std::uint32_t, 2> offsets{info.leftStart, info.rightStart};
    file.read(frames.data(), offsets, wave.left.size(), wave.left.size());
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

TEST(WaveNames, AreCutAndNeverTwice) {
  WaveNames names;
  EXPECT_EQ(names.take("A long name of a kick"), "A long name");
  EXPECT_EQ(names.take("A long name of a drum"), "A long nam 2");
  EXPECT_EQ(names.take("Short"), "Short");
  EXPECT_EQ(names.take("Short"), "Short 2");
  EXPECT_EQ(names.take("elevenchars\xC3\xA9"), "elevenchars");  // Twelve bytes would end inside the last character.
  for (int i = 0; i < 200; ++i) {
    EXPECT_LE(names.take("Short").size(), kLongestWaveName);
  }
}

/// A user's sound files, written with the library that reads them.
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

  static juce::AudioBuffer<float> constant(int channels, int frames, float value) {
    juce::AudioBuffer<float> sound(channels, frames);
    for (int channel = 0; channel < channels; ++channel) {
      juce::FloatVectorOperations::fill(sound.getWritePointer(channel), channel == 0 ? value : -value, frames);
    }
    return sound;
  }

  PackResult pack() {
    return packFolder(scratch.path(), {[this](const std::string& line) { lines.push_back(line); },
                                       [this](double done) { lastProgress = done; }});
  }

  Scratch scratch;
  std::vector<std::string> lines;
  double lastProgress = 0.0;
};

TEST_F(Pack, KeepsRatesSidesAndSamplesOfAllThreeFormats) {
  writeFile<juce::WavAudioFormat>("snare/b.wav", 22050, 24, constant(1, 10, 0.5F));
  writeFile<juce::WavAudioFormat>("Snare/loud.wav", 48000, 32, constant(2, 5, 1.5F));  // Floats beyond full scale.
  writeFile<juce::AiffAudioFormat>("Kick/a.aiff", 44100, 16, constant(2, 7, 0.25F));
  writeFile<juce::FlacAudioFormat>("Close HH/c.flac", 96000, 16, constant(1, 9, -0.125F));
  const PackResult result = pack();
  EXPECT_EQ(result.unusable, 0U);
  EXPECT_EQ(lastProgress, 1.0);
  ASSERT_EQ(result.waves.size(), 4U);
  const auto expect = [&](std::size_t at, const char* name, int category, int rate, const Samples& left,
                          const Samples& right) {
    const Wave& wave = result.waves[at];
    EXPECT_EQ(wave.name, name);
    EXPECT_EQ(wave.category, category) << name;
    EXPECT_EQ(wave.sampleRate, rate) << name;
    EXPECT_EQ(wave.left, left) << name;
    EXPECT_EQ(wave.right, right) << name;
  };
  expect(0, "a", 0, 44100, Samples(7, 8192), Samples(7, -8192));
  const std::size_t b = result.waves[1].name == "b" ? 1 : 2;  // The folders' order depends on the case of their names.
  expect(b, "b", 1, 22050, Samples(10, 16384), {});
  expect(3 - b, "loud", 1, 48000, Samples(5, 32767), Samples(5, -32768));
  expect(3, "c", 3, 96000, Samples(9, -4096), {});
}

TEST_F(Pack, SaysWhyAFileIsNotUsedAndWhatIsCut) {
  writeFile<juce::WavAudioFormat>("Kick/long.wav", 8000, 16, constant(1, 7 * 8000, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/six.wav", 44100, 16, constant(1, 6 * 44100, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/dense.wav", 96000, 16, constant(1, 5 * 96000, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/wide.wav", 44100, 16, constant(3, 5, 0.1F));
  writeFile<juce::WavAudioFormat>("Kick/empty.wav", 44100, 16, constant(1, 0, 0.0F));
  scratch.write("Kick/fake.wav", "RIFF but no more than that");
  writeFile<juce::WavAudioFormat>("Kick/short.wav", 44100, 16, constant(1, 500, 0.1F));
  scratch.write("Kick/short.wav", readText(scratch.path("Kick/short.wav")).substr(0, 600));
  scratch.write("Kick/notes.txt", "text");
  scratch.write("Kick/.hidden", "");
  scratch.write("Kick/deeper/x.wav", "");
  scratch.write("Drums/x.wav", "");
  scratch.write("stray.wav", "");
  const PackResult result = pack();
  ASSERT_EQ(result.waves.size(), 3U);
  EXPECT_EQ(result.waves[0].left.size(), 264600U);
  EXPECT_EQ(result.waves[1].left.size(), 6U * 8000U);
  EXPECT_EQ(result.waves[2].left.size(), 264600U);
  EXPECT_EQ(result.unusable, 8U);
  std::string all;
  for (const std::string& line : lines) {
    all += line + "\n";
  }
  for (const char* piece : {"long.wav: is longer", "first 6.00 of 7.00 s", "dense.wav: is longer",
                            "wide.wav: has 3 channels", "empty.wav: holds no samples", "fake.wav: is no valid WAV",
                            "short.wav: breaks off", "notes.txt: is no WAV, AIFF or FLAC", "deeper: is no file",
                            "Drums: is no category", "stray.wav: lies in no category"}) {
    EXPECT_NE(all.find(piece), std::string::npos) << piece << " in\n" << all;
  }
  EXPECT_EQ(lines.size(), 10U) << all;
}

TEST_F(Pack, FailsOnAFolderThatIsNotThere) {
  EXPECT_THROW(packFolder(scratch.path("nowhere"), {[](const std::string&) {}, [](double) {}}), std::runtime_error);
}

}  // namespace
}  // namespace sivray::content
