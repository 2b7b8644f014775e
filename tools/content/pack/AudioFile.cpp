// Decodes a sound file, mixes it down to two channels, reduces high sample rates, and converts to 16 bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/AudioFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "content/RateConverter.h"
#include "content/pack/Downmix.h"
#include "content/pack/SoundDecoder.h"
#include "engine/SivrayPlugin.h"

namespace sivray::content {
namespace {

constexpr int kLongestSeconds = 6;

/// The number of frames that fit into a pad's sample memory.
constexpr std::int64_t kMostFrames = tesh::bramel::plugin::sivray::kSlotFrames;

constexpr const char* kBreaksOff = "breaks off before its end";

/// Rounds to 16 bits and saturates. NaN and infinities become 0.
std::vector<std::int16_t> wordsOf(const Channel& channel) {
  constexpr double kFullScale = 32768.0;
  constexpr double kHighest = 32767.0;
  std::vector<std::int16_t> words;
  words.reserve(channel.size());
  for (const float sample : channel) {
    const double word = std::isfinite(sample) ? std::floor(static_cast<double>(sample) * kFullScale + 0.5) : 0.0;
    words.push_back(static_cast<std::int16_t>(std::clamp(word, -kFullScale, kHighest)));
  }
  return words;
}

/// Returns the rate to convert to: rates up to 48000 Hz stay; higher multiples of 44100 Hz become 44100 Hz, others
/// 48000 Hz, so that six seconds fit into a pad.
double keptRate(double rate) {
  constexpr double kHighestRate = 48000.0;
  using tesh::cofu::core::kEngineRate;
  if (rate <= kHighestRate) {
    return rate;
  }
  return std::fmod(rate, kEngineRate) == 0.0 ? kEngineRate : kHighestRate;
}

std::string cutNote(std::int64_t kept, std::int64_t all, double rate) {
  std::array<char, 128> text{};
  std::snprintf(text.data(), text.size(), "is longer than a pad holds: the first %.2f of %.2f s are used",
                static_cast<double>(kept) / rate, static_cast<double>(all) / rate);
  return text.data();
}

}  // namespace

AudioFile readAudioFile(const std::string& path) {
  const std::unique_ptr<SoundDecoder> decoder = openSound(path);
  const SoundFormat& format = decoder->format();
  const std::size_t channelCount = format.channels;
  if (channelCount > kMostMixedChannels && format.speakers.empty()) {
    throw std::runtime_error("has " + std::to_string(channelCount) +
                             " channels without a word where they belong; up to " + std::to_string(kMostMixedChannels) +
                             " are mixed down");
  }
  if (format.isCutShort) {
    throw std::runtime_error(kBreaksOff);
  }
  const double rate = format.rate;
  if (!(rate >= 1.0)) {
    throw std::runtime_error("has no usable sample rate");
  }
  const double outRate = keptRate(rate);
  const std::int64_t most = std::min(static_cast<std::int64_t>(static_cast<double>(kMostFrames) * rate / outRate),
                                     static_cast<std::int64_t>(rate * kLongestSeconds));
  std::vector<Channel> channels = decoder->read(most);
  const auto kept = static_cast<std::int64_t>(channels.front().size());
  if (kept < 1) {
    throw std::runtime_error("holds no samples");
  }
  const std::int64_t all = format.frames < 1 ? kept : format.frames;
  if (kept < std::min(all, most)) {
    throw std::runtime_error(kBreaksOff);
  }
  AudioFile file;
  if (channelCount > 2) {
    channels = mixedDown(channels, format.speakers);
    file.note = "has " + std::to_string(channelCount) + " channels, which are mixed down to two";
  }
  if (outRate != rate) {
    std::ranges::transform(channels, channels.begin(),
                           [&](const Channel& channel) { return atRate(channel, outRate / rate, RateQuality::best); });
  }
  file.wave.sampleRate = static_cast<int>(std::lround(outRate));
  file.wave.left = wordsOf(channels.front());
  if (channels.size() == 2) {
    file.wave.right = wordsOf(channels.back());
  }
  if (kept < all) {
    file.note += (file.note.empty() ? "" : ", and ") + cutNote(kept, all, rate);
  }
  return file;
}

}  // namespace sivray::content
