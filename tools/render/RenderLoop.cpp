// Cuts the score into blocks and renders them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenderLoop.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>

#include "WavFile.h"
#include "core/MidiStatus.h"
#include "core/ProcessBlock.h"
#include "terminal/Interrupt.h"
#include "terminal/Printable.h"
#include "terminal/ProgressBar.h"
#include "viewmodels/texts/PanelMacros.h"

namespace sivray::render {
namespace {

using tesh::cofu::core::NoteMap;

std::int64_t frameAt(double seconds, double rate) { return std::llround(seconds * rate); }

/// Iterates over a list ordered by time.
template <typename Entry>
class Cursor {
 public:
  Cursor(const std::vector<Entry>& list, double sampleRate) : entries(list), rate(sampleRate) {}

  /// Calls `action(entry, frame)` for every remaining entry before `endFrame`.
  template <typename Action>
  void due(std::int64_t endFrame, Action action) {
    while (next < entries.size() && frameAt(entries[next].seconds, rate) < endFrame) {
      action(entries[next], frameAt(entries[next].seconds, rate));
      ++next;
    }
  }

 private:
  const std::vector<Entry>& entries;
  double rate;
  std::size_t next = 0;
};

/// Whether a message can move macros: controllers and pitch bends do, and macros change at the start of a block only.
bool movesMacros(const ScoreMessage& message) {
  const int status = message.bytes[0] & 0xF0;
  return status == 0xB0 || status == 0xE0;
}

/// Returns the frames at which a block must start, in ascending order.
std::vector<std::int64_t> blockStarts(const MidiScore& score, const std::vector<Move>& moves, double rate) {
  std::vector<std::int64_t> starts;
  for (const ScoreTempo& tempo : score.tempos) {
    starts.push_back(frameAt(tempo.seconds, rate));
  }
  for (const Move& move : moves) {
    starts.push_back(frameAt(move.seconds, rate));
  }
  for (const ScoreMessage& message : score.messages) {
    if (movesMacros(message)) {
      starts.push_back(frameAt(message.seconds, rate));
    }
  }
  std::sort(starts.begin(), starts.end());
  return starts;
}

bool isStrike(const ScoreMessage& message) { return (message.bytes[0] & 0xF0) == 0x90 && message.bytes[2] > 0; }

/// Plays a score's messages through a note map, and counts the notes that have no pad.
class MappedNotes {
 public:
  MappedNotes(const NoteMap& map, RenderTarget& newTarget, RenderResult& newResult)
      : target(newTarget), result(newResult) {
    translator.setMap(map);
  }

  void send(ScoreMessage message, int frame) {
    const std::span bytes(message.bytes.data(), static_cast<std::size_t>(message.size));
    const std::uint8_t note = message.bytes[1];
    const auto verdict = translator.translate(bytes);
    if (verdict.padToEnd) {
      const std::array<std::uint8_t, 3> end{tesh::cofu::core::kMidiNoteOff, *verdict.padToEnd, 0};
      target.sendMidi(end, frame);
    }
    if (!verdict.isPlayed) {
      return;
    }
    if (isStrike(message) && !tesh::bramel::panel::padOfNote(message.bytes[1])) {
      ++result.notesWithoutPad;
      result.numbersWithoutPad.insert(note);
    }
    target.sendMidi(bytes, frame);
  }

 private:
  tesh::cofu::core::NoteTranslator translator;
  RenderTarget& target;
  RenderResult& result;
};

/// The channels of a block: two, or those of all outputs.
class Channels {
 public:
  Channels(bool hasOuts, int frames)
      : samples(hasOuts ? tesh::vimo::kAllChannels : tesh::vimo::kMainChannels,
                std::vector<float>(static_cast<std::size_t>(frames))) {
    for (std::vector<float>& channel : samples) {
      pointers.push_back(channel.data());
    }
  }

  void render(RenderTarget& target, int frames) {
    if (pointers.size() > tesh::vimo::kMainChannels) {
      target.processOuts(pointers, frames);
    } else {
      target.process(pointers[0], pointers[1], frames);
    }
  }

  const float* operator[](std::size_t channel) const { return pointers[channel]; }

 private:
  std::vector<std::vector<float>> samples;
  std::vector<float*> pointers;
};

/// A file for each output other than the main one.
class StemFiles {
 public:
  StemFiles(const std::vector<std::string>& paths, double rate, int bits) {
    for (const std::string& path : paths) {
      files.push_back(std::make_unique<WavFile>(path, rate, bits));
    }
  }

  void write(const Channels& channels, int frames) {
    for (std::size_t out = 0; out < files.size(); ++out) {
      const std::size_t channel = tesh::vimo::kMainChannels + 2 * out;
      files[out]->write(channels[channel], channels[channel + 1], frames);
    }
  }

  void finish() {
    for (const auto& file : files) {
      file->finish();
    }
  }

 private:
  std::vector<std::unique_ptr<WavFile>> files;
};

double lengthOf(const MidiScore& score, const std::vector<Move>& moves) {
  return moves.empty() ? score.lengthSeconds : std::max(score.lengthSeconds, moves.back().seconds);
}

}  // namespace

RenderResult renderScore(const MidiScore& score, const std::vector<Move>& moves, RenderTarget& target,
                         const RenderSettings& settings, const std::string& outputPath, const BlockListener& listener) {
  using Clock = std::chrono::steady_clock;
  const double rate = target.sampleRate();
  RenderResult result;
  result.sampleRate = rate;
  MappedNotes notes(settings.notes, target, result);
  WavFile wav(outputPath, rate, settings.bits);
  ProgressBar progress(settings.quiet);
  Cursor messages(score.messages, rate);
  Cursor tempos(score.tempos, rate);
  Cursor dueMoves(moves, rate);
  const std::vector<std::int64_t> starts = blockStarts(score, moves, rate);

  const int block = std::max(settings.blockFrames, 1);
  Channels channels(settings.stems, block);
  StemFiles stems(settings.stems ? stemPaths(outputPath) : std::vector<std::string>(), rate, settings.bits);
  const auto total = static_cast<std::int64_t>(std::ceil((lengthOf(score, moves) + settings.tailSeconds) * rate));
  target.start(block);
  for (std::int64_t ahead = frameAt(settings.prerollSeconds, rate); ahead > 0; ahead -= block) {
    InterruptWatch::check();
    channels.render(target, static_cast<int>(std::min<std::int64_t>(ahead, block)));
  }
  for (std::int64_t start = 0; start < total;) {
    InterruptWatch::check();
    const auto cut = std::upper_bound(starts.begin(), starts.end(), start);
    const std::int64_t end = std::min({start + block, total, cut == starts.end() ? total : *cut});
    const int frames = static_cast<int>(end - start);
    tempos.due(start + 1, [&](const ScoreTempo& tempo, std::int64_t) { target.setTempo(tempo.beatsPerMinute); });
    dueMoves.due(start + 1, [&](const Move& move, std::int64_t) { target.move(move); });
    messages.due(end, [&](const ScoreMessage& message, std::int64_t frame) {
      notes.send(message, static_cast<int>(frame - start));
    });

    const auto before = Clock::now();
    channels.render(target, frames);
    result.secondsSpent += std::chrono::duration<double>(Clock::now() - before).count();

    wav.write(channels[0], channels[1], frames);
    stems.write(channels, frames);
    result.levels.add(channels[0], channels[1], frames);
    if (listener) {
      listener(channels[0], channels[1], frames);
    }
    start = end;
    progress.show(static_cast<double>(start) / static_cast<double>(total));
  }
  wav.finish();
  stems.finish();
  return result;
}

std::vector<std::string> stemPaths(const std::string& outputPath) {
  const std::filesystem::path path(outputPath);
  const std::string stem = (path.parent_path() / path.stem()).string();
  std::vector<std::string> paths;
  for (std::size_t pad = 1; pad <= tesh::bramel::panel::kPads; ++pad) {
    paths.push_back(stem + "-pad" + std::to_string(pad) + path.extension().string());
  }
  paths.push_back(stem + "-effect" + path.extension().string());
  return paths;
}

std::string describe(const RenderResult& result, const std::string& outputPath) {
  const double seconds = static_cast<double>(result.levels.frames()) / result.sampleRate;
  const double factor = seconds / std::max(result.secondsSpent, 1e-9);
  std::vector<char> line(outputPath.size() + 200);
  std::snprintf(line.data(), line.size(), "%s: %.3f s at %.0f Hz, peak %.2f dBFS, RMS %.2f dBFS, %.0f times real time",
                outputPath.c_str(), seconds, result.sampleRate, result.levels.peakDecibels(),
                result.levels.rmsDecibels(), factor);
  std::string text = line.data();
  if (result.notesWithoutPad > 0) {
    text += ", " + counted(static_cast<std::size_t>(result.notesWithoutPad), "note has", "notes have") + " no pad:";
    for (const std::uint8_t number : result.numbersWithoutPad) {
      text += " " + std::to_string(number);
    }
  }
  return text;
}

}  // namespace sivray::render
