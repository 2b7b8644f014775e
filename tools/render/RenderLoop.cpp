// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenderLoop.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "ProgressBar.h"
#include "WavFile.h"

namespace sivray::render {
namespace {

/// Walks one list of the score; `due` hands out what falls before a frame.
template <typename Entry>
class ScoreCursor {
 public:
  ScoreCursor(const std::vector<Entry>& list, double sampleRate) : entries(list), rate(sampleRate) {}

  /// Calls `action(entry, frame)` for every entry before `endFrame`.
  template <typename Action>
  void due(std::int64_t endFrame, Action action) {
    while (next < entries.size() && frameOf(entries[next]) < endFrame) {
      action(entries[next], frameOf(entries[next]));
      ++next;
    }
  }

 private:
  std::int64_t frameOf(const Entry& entry) const { return std::llround(entry.seconds * rate); }

  const std::vector<Entry>& entries;
  double rate;
  std::size_t next = 0;
};

}  // namespace

RenderResult renderScore(const MidiScore& score, RenderTarget& target, const RenderSettings& settings,
                         const std::string& outputPath) {
  using Clock = std::chrono::steady_clock;
  RenderResult result;
  result.sampleRate = target.sampleRate();
  WavFile wav(outputPath, result.sampleRate, settings.bits);
  ProgressBar progress(settings.quiet);
  ScoreCursor messages(score.messages, result.sampleRate);
  ScoreCursor tempos(score.tempos, result.sampleRate);
  ScoreCursor moves(score.moves, result.sampleRate);

  const int block = std::clamp(settings.blockFrames, 1, target.longestBlock());
  std::vector<float> left(static_cast<std::size_t>(block));
  std::vector<float> right(static_cast<std::size_t>(block));
  const std::int64_t total = std::llround(std::ceil((score.lengthSeconds + settings.tailSeconds) * result.sampleRate));
  for (std::int64_t start = 0; start < total;) {
    const int frames = static_cast<int>(std::min<std::int64_t>(block, total - start));
    const std::int64_t end = start + frames;
    const auto inBlock = [start](std::int64_t frame) { return static_cast<int>(std::max(frame - start, INT64_C(0))); };
    tempos.due(end, [&](const ScoreTempo& tempo, std::int64_t) { target.setTempo(tempo.beatsPerMinute); });
    moves.due(end, [&](const ScoreMove& move, std::int64_t at) { target.move(move.name, move.value, inBlock(at)); });
    messages.due(end, [&](const ScoreMessage& message, std::int64_t at) {
      target.sendMidi({message.bytes.data(), static_cast<std::size_t>(message.size)}, inBlock(at));
    });

    const auto before = Clock::now();
    target.process(left.data(), right.data(), frames);
    result.secondsSpent += std::chrono::duration<double>(Clock::now() - before).count();

    wav.write(left.data(), right.data(), frames);
    result.levels.add(left.data(), right.data(), frames);
    start = end;
    progress.show(static_cast<double>(start) / static_cast<double>(total));
  }
  wav.finish();
  return result;
}

std::string describe(const RenderResult& result, const std::string& outputPath) {
  const double seconds = static_cast<double>(result.levels.frames()) / result.sampleRate;
  const double factor = seconds / std::max(result.secondsSpent, 1e-9);
  std::vector<char> line(outputPath.size() + 200);
  std::snprintf(line.data(), line.size(), "%s: %.3f s at %.0f Hz, peak %.2f dBFS, RMS %.2f dBFS, %.0f times real time",
                outputPath.c_str(), seconds, result.sampleRate, result.levels.peakDecibels(),
                result.levels.rmsDecibels(), factor);
  return line.data();
}

}  // namespace sivray::render
