// A scene for the renderer's tests: an instrument on disk, a MIDI file, and the output.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <juce_audio_basics/juce_audio_basics.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "render/RenderProgram.h"
#include "support/KitFolder.h"
#include "support/Scratch.h"

namespace sivray::render {

namespace fs = std::filesystem;
using support::bytesIn;
using support::writeFile;
using Bytes = std::vector<std::uint8_t>;
using Arguments = std::vector<std::string>;

inline constexpr std::size_t kFrameBytes = 6;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;

/// The first note, in ticks: late enough that the first block, which applies program and effect, has ended at any block
/// size.
inline constexpr double kFirstTick = 200.0;

inline int noCheck(const Options&) { return 0; }

class Render : public testing::Test {
 protected:
  void SetUp() override { writeScore(); }

  std::string at(const std::string& name) const { return (folder.commonFiles() / name).string(); }

  /// Writes notes on all pads within a second, a tempo change, optionally a mapped controller (the master level), and
  /// moves as text events: the first at the start, the others at 0.4 s.
  void writeScore(const std::vector<const char*>& moves = {}, bool withController = true) const {
    juce::MidiMessageSequence track;
    track.addEvent(juce::MidiMessage::tempoMetaEvent(500000), 0.0);
    track.addEvent(juce::MidiMessage::tempoMetaEvent(400000), 960.0);
    for (int i = 0; i < 24; ++i) {
      track.addEvent(juce::MidiMessage::noteOn(10, 36 + i % 8, static_cast<juce::uint8>(60 + 2 * i)),
                     kFirstTick + i * 80.0);
      track.addEvent(juce::MidiMessage::noteOff(10, 36 + i % 8), kFirstTick + i * 80.0 + 40.0);
    }
    if (withController) {
      track.addEvent(juce::MidiMessage::controllerEvent(1, 7, 90), 1000.0);
    }
    for (const char* move : moves) {
      // 0.4 s are 768 ticks at the first tempo.
      track.addEvent(juce::MidiMessage::textMetaEvent(1, move), move == moves.front() ? 0.0 : 768.0);
    }
    saveMidi(track);
  }

  void saveMidi(const juce::MidiMessageSequence& track) const {
    juce::MidiFile midi;
    midi.setTicksPerQuarterNote(960);
    midi.addTrack(track);
    juce::MemoryOutputStream stream;
    midi.writeTo(stream);
    writeFile(at("in.mid"), std::string(static_cast<const char*>(stream.getData()), stream.getDataSize()));
  }

  /// Renders the score and returns the sample bytes.
  Bytes play(Arguments arguments) const {
    arguments.insert(arguments.begin(), {at("in.mid"), "-o", at("out.wav"), "--quiet", "--library", SIVRAY_MODULE});
    EXPECT_EQ(runProgram(arguments, noCheck), 0);
    return soundTakenFrom(at("out.wav"));
  }

  static Bytes soundTakenFrom(const std::string& path) {
    const Bytes file = bytesIn(path);
    fs::remove(path);
    const std::string mark = "data";
    const auto data = std::search(file.begin(), file.end(), mark.begin(), mark.end());
    EXPECT_GT(file.end() - data, 8) << path;
    return {data + std::min<std::ptrdiff_t>(file.end() - data, 8), file.end()};
  }

  /// Runs arguments that must fail with one line on standard error, this exit status, and no output file. Returns the
  /// line.
  std::string failure(const Arguments& arguments, int status = kFailed) const {
    testing::internal::CaptureStderr();
    EXPECT_EQ(runProgram(arguments, noCheck), status);
    std::string line = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
    EXPECT_FALSE(fs::exists(at("out.wav"))) << line;
    return line;
  }

  support::KitFolder folder;
};

}  // namespace sivray::render
