// Decodes a sound file through JUCE, brings high rates down, and converts to 16 bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/AudioFile.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>

#include "content/RateConverter.h"
#include "engine/SivrayPlugin.h"

namespace sivray::content {
namespace {

constexpr int kLongestSeconds = 6;

/// The frames that a pad's sample memory holds.
constexpr std::int64_t kMostFrames = tesh::bramel::plugin::sivray::kSlotFrames;

constexpr int kPieceFrames = 16384;

std::unique_ptr<juce::AudioFormatReader> openReader(const juce::File& file) {
  juce::WavAudioFormat wav;
  juce::AiffAudioFormat aiff;
  juce::FlacAudioFormat flac;
  for (juce::AudioFormat* format : {static_cast<juce::AudioFormat*>(&wav), static_cast<juce::AudioFormat*>(&aiff),
                                    static_cast<juce::AudioFormat*>(&flac)}) {
    if (!format->canHandleFile(file)) {
      continue;
    }
    auto stream = file.createInputStream();
    if (stream == nullptr) {
      throw std::runtime_error("cannot be read");
    }
    std::unique_ptr<juce::AudioFormatReader> reader(format->createReaderFor(stream.release(), true));
    if (reader == nullptr) {
      throw std::runtime_error("is no valid " + format->getFormatName().toStdString());
    }
    return reader;
  }
  throw std::runtime_error("is no WAV, AIFF or FLAC file");
}

/// Returns whether an uncompressed file is shorter than its header says; the reader would pad it with silence.
bool isCutShort(const juce::AudioFormatReader& reader, const juce::File& file) {
  constexpr int kBitsPerByte = 8;
  const std::int64_t frameBits = std::int64_t{reader.numChannels} * reader.bitsPerSample;
  const bool isCompressed = file.hasFileExtension("flac");
  return !isCompressed && reader.lengthInSamples > file.getSize() * kBitsPerByte / std::max<std::int64_t>(frameBits, 1);
}

using Channel = std::vector<float>;

/// Rounds to 16 bits, with the ends as limits. What is no number becomes 0.
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

/// A sample as JUCE's reader returns it: integers left-aligned in a word, floats as their bits.
float sampleOf(int word, bool isFloat) {
  constexpr double kFullScale = 2147483648.0;
  if (!isFloat) {
    return static_cast<float>(word / kFullScale);
  }
  float value = 0.0F;
  static_assert(sizeof value == sizeof word);
  std::memcpy(&value, &word, sizeof value);
  return value;
}

/// Reads `frames` frames of every channel in pieces. Returns false if the file ends early.
bool readChannels(juce::AudioFormatReader& reader, std::int64_t frames, std::vector<Channel>& channels) {
  std::vector<std::vector<int>> pieces(channels.size(), std::vector<int>(kPieceFrames));
  std::vector<int*> places;
  std::ranges::transform(pieces, std::back_inserter(places), [](auto& piece) { return piece.data(); });
  for (std::int64_t start = 0; start < frames; start += kPieceFrames) {
    const int count = static_cast<int>(std::min<std::int64_t>(kPieceFrames, frames - start));
    if (!reader.read(places.data(), static_cast<int>(places.size()), start, count, false)) {
      return false;
    }
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
      std::transform(places[channel], places[channel] + count, std::back_inserter(channels[channel]),
                     [&reader](int word) { return sampleOf(word, reader.usesFloatingPointData); });
    }
  }
  return true;
}

/// A wave keeps rates up to 48000 Hz. Multiples of 44100 Hz come down to that, others to 48000 Hz, so that six seconds
/// fit into a pad.
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
  const auto place = juce::File::getCurrentWorkingDirectory().getChildFile(juce::String::fromUTF8(path.c_str()));
  const auto reader = openReader(place);
  const auto channelCount = static_cast<int>(reader->numChannels);
  if (channelCount < 1 || channelCount > 2) {
    throw std::runtime_error("has " + std::to_string(channelCount) + " channels; a wave has one or two");
  }
  const double rate = reader->sampleRate;
  if (!(rate >= 1.0) || rate > static_cast<double>(std::numeric_limits<int>::max())) {
    throw std::runtime_error("has no usable sample rate");
  }
  const std::int64_t all = reader->lengthInSamples;
  if (all < 1) {
    throw std::runtime_error("holds no samples");
  }
  if (isCutShort(*reader, place)) {
    throw std::runtime_error("breaks off before its end");
  }
  const double outRate = keptRate(rate);
  const auto most = static_cast<std::int64_t>(static_cast<double>(kMostFrames) * rate / outRate);
  const std::int64_t kept = std::min({all, most, static_cast<std::int64_t>(rate * kLongestSeconds)});

  std::vector<Channel> channels(static_cast<std::size_t>(channelCount));
  if (!readChannels(*reader, kept, channels)) {
    throw std::runtime_error("breaks off before its end");
  }
  if (outRate != rate) {
    std::ranges::transform(channels, channels.begin(),
                           [&](const Channel& channel) { return atRate(channel, outRate / rate, RateQuality::best); });
  }
  AudioFile file;
  file.wave.sampleRate = static_cast<int>(std::lround(outRate));
  file.wave.left = wordsOf(channels.front());
  if (channelCount == 2) {
    file.wave.right = wordsOf(channels.back());
  }
  if (kept < all) {
    file.note = cutNote(kept, all, rate);
  }
  return file;
}

}  // namespace sivray::content
