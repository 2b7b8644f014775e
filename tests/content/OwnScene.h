// A factory library of three waves, a folder for own sounds, and sound files to add.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "content/Files.h"
#include "content/library/LibraryWriter.h"
#include "content/own/OwnChange.h"
#include "content/own/SoundAdder.h"
#include "content/own/SoundRemover.h"
#include "engine/samples/PcmFile.h"
#include "engine/samples/SivraySampleLibrary.h"
#include "support/Scratch.h"

namespace sivray::content {

/// Writes a mono sound whose samples all have one value, by which it is recognised.
inline std::string writeConstant(const std::string& path, std::int16_t value, int frames = 50, int channels = 1,
                                 int rate = 44100) {
  std::filesystem::create_directories(pathOf(path).parent_path());
  SF_INFO info{};
  info.samplerate = rate;
  info.channels = channels;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
  EXPECT_NE(file, nullptr) << sf_strerror(nullptr);
  const std::vector<short> samples(static_cast<std::size_t>(frames * channels), value);
  EXPECT_EQ(sf_writef_short(file, samples.data(), frames), frames);
  sf_close(file);
  return path;
}

class OwnSounds : public testing::Test {
 protected:
  static constexpr std::int32_t kWaves = 3;
  static constexpr std::size_t kRoom = 14;

  OwnSounds() {
    writeFactory(1000);
    ::setenv("XDG_DATA_HOME", scratch.path("data").c_str(), 1);
    ::setenv("BRAMEL_COMMON_FILES", scratch.path("installed").c_str(), 1);
  }
  ~OwnSounds() override { ::unsetenv("XDG_DATA_HOME"); }

  /// Writes the factory's kick, snare and second kick (9000 frames long), whose samples have the values `first` and the
  /// two after it.
  void writeFactory(std::int16_t first) const {
    const auto samples = [](int value, std::size_t frames = 60) {
      return std::vector<std::int16_t>(frames, static_cast<std::int16_t>(value));
    };
    const std::vector<Wave> waves{{"Kick", 0, 44100, samples(first), {}},
                                  {"Snare", 1, 44100, samples(first + 1), samples(first + 1)},
                                  {"Kick 2", 0, 44100, samples(first + 2, 9000), {}}};
    writeLibrary(scratch.path("installed/Tesh/Bramel/Resource/SivrayPCM"), waves);
    scratch.write("installed/Tesh/Bramel/Macro/Sivray/readme.json", "{}");
  }

  std::string root() const { return scratch.path("data/sivray/content"); }

  /// Opens the content. Its messages go to `lines`.
  OwnContent open() {
    return OwnContent([this](const std::string& line) { lines.push_back(line); });
  }

  /// Adds files and returns the numbers of the usable ones, by name. `onProgress` may throw.
  std::map<std::string, std::int32_t> add(
      const std::vector<std::string>& paths, std::optional<int> category = {},
      const std::function<void(double)>& onProgress = [](double) {}) {
    std::map<std::string, std::int32_t> numbers;
    OwnContent content = open();
    outcomes.clear();
    addSounds(content, {paths, category},
              {[&](const FileOutcome& outcome) {
                 outcomes.push_back(outcome);
                 if (outcome.kind != FileOutcome::Kind::unused) {
                   numbers[textOf(pathOf(outcome.path).stem())] = outcome.sound.number;
                 }
               },
               onProgress});
    return numbers;
  }

  std::map<std::string, std::int32_t> remove(const std::set<std::int32_t>& numbers) {
    OwnContent content = open();
    std::map<std::string, std::int32_t> standIns;
    for (const OwnSound& sound : removeSounds(content, numbers)) {
      standIns[sound.name] = sound.standIn;
    }
    return standIns;
  }

  /// Returns the first sample that a plug-in reads for a number; 0 if the files are invalid.
  std::int16_t heard(std::int32_t number) const {
    ::setenv("BRAMEL_COMMON_FILES", root().c_str(), 1);
    tesh::bramel::plugin::sivray::PcmFile file("SivrayPCM");
    ::setenv("BRAMEL_COMMON_FILES", scratch.path("installed").c_str(), 1);
    const auto info = file.database().lookup(number);
    std::vector<std::int16_t> frame(2);
    if (auto data = file.open()) {
      using tesh::bramel::plugin::sivray::Reading;
      tesh::bramel::plugin::sivray::PcmFile::readPart(*data, {{info.leftStart, info.rightStart}, 1}, frame.data(), 0, 1,
                                                      Reading::waits);
    }
    return frame[0];
  }

  /// Returns the name that the browser shows for a number.
  std::string shown(std::int32_t number) const {
    tesh::vimo::SivraySampleLibrary library;
    library.load(root() + "/Tesh/Bramel/Resource/SivrayPCM/drumparam_category.bin");
    return library.waveName(library.flatIndexOf(number));
  }

  /// Returns the bytes of the content's files.
  std::map<std::string, std::string> contents() const {
    std::map<std::string, std::string> files;
    for (const auto& [name, size] : snapshot()) {
      files[name] = readText(root() + "/" + name);
    }
    return files;
  }

  /// Returns the size and hash of every file in the folder of own sounds, except the lock.
  std::map<std::string, std::pair<std::size_t, std::size_t>> snapshot() const {
    std::map<std::string, std::pair<std::size_t, std::size_t>> files;
    if (!std::filesystem::exists(root())) {
      return files;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root())) {
      if (entry.is_regular_file() && entry.path().filename() != "lock") {
        const std::string text = readText(entry.path().string());
        files[entry.path().lexically_relative(root()).string()] = {text.size(), std::hash<std::string>()(text)};
      }
    }
    return files;
  }

  support::Scratch scratch;
  std::vector<std::string> lines;
  std::vector<FileOutcome> outcomes;
};

}  // namespace sivray::content
