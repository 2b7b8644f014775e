// Chooses the decoder, and decodes WAV and AIFF.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/PlainSound.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace sivray::content {
namespace {

using Bytes = std::span<const std::uint8_t>;

std::string_view textOf(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

bool hasText(Bytes bytes, std::size_t place, std::string_view text) {
  return bytes.size() >= place + text.size() && textOf(bytes.subspan(place, text.size())) == text;
}

/// Reads a number of up to 8 bytes.
std::uint64_t numberIn(Bytes bytes, bool isHighFirst) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    number = number << 8 | bytes[isHighFirst ? i : bytes.size() - 1 - i];
  }
  return number;
}

/// Reads AIFF's sample rate, an 80-bit floating-point number: a sign and 15 bits of exponent, then 64 bits of mantissa.
double extendedIn(Bytes bytes) {
  constexpr int kBias = 16383 + 63;
  const auto exponent = static_cast<int>(numberIn(bytes.first(2), true) & 0x7FFFU);
  return std::ldexp(static_cast<double>(numberIn(bytes.subspan(2, 8), true)), exponent - kBias);
}

/// The format of a file's samples.
struct Packing {
  std::size_t bytes = 0;
  bool isFloat = false;
  bool isHighFirst = false;
  bool isUnsigned = false;  ///< As in WAV files of 8 bits.

  float sampleIn(Bytes place) const {
    const std::uint64_t bits = numberIn(place.first(bytes), isHighFirst);
    if (isFloat) {
      return bytes == 4 ? std::bit_cast<float>(static_cast<std::uint32_t>(bits))
                        : static_cast<float>(std::bit_cast<double>(bits));
    }
    const std::uint64_t signs = std::uint64_t{1} << (8 * bytes - 1);
    const auto offset = static_cast<std::int64_t>(isUnsigned ? bits : bits ^ signs);
    return static_cast<float>(offset - static_cast<std::int64_t>(signs)) / static_cast<float>(signs);
  }
};

std::vector<Speaker> speakersOf(std::uint64_t mask, std::size_t channels) {
  // In the order of the mask's bits.
  constexpr std::array kPlaces{Speaker::left,     Speaker::right,     Speaker::centre,   Speaker::low,
                               Speaker::leftSide, Speaker::rightSide, Speaker::left,     Speaker::right,
                               Speaker::centre,   Speaker::leftSide,  Speaker::rightSide};
  std::vector<Speaker> speakers;
  for (std::size_t bit = 0; bit < kPlaces.size() && speakers.size() < channels; ++bit) {
    if ((mask >> bit & 1U) != 0) {
      speakers.push_back(kPlaces[bit]);
    }
  }
  return speakers.size() == channels ? speakers : std::vector<Speaker>();
}

class WaveSource final : public SoundDecoder {
 public:
  explicit WaveSource(std::vector<std::uint8_t> bytes) : file(std::move(bytes)), isAiff(hasText(file, 0, "FORM")) {
    findChunks();
    const std::size_t frameBytes = told.channels * packing.bytes;
    if (!hasSound || frameBytes == 0) {
      throw std::runtime_error(isPacked ? "is packed in a way that is not read here" : "holds no samples");
    }
    told.frames = static_cast<std::int64_t>(sound.size() / frameBytes);
  }

  std::vector<Channel> read(std::int64_t most) override {
    std::vector<Channel> channels(told.channels);
    for (std::int64_t frame = 0; frame < std::min(most, told.frames); ++frame) {
      for (std::size_t channel = 0; channel < told.channels; ++channel) {
        const std::size_t sample = static_cast<std::size_t>(frame) * told.channels + channel;
        channels[channel].push_back(packing.sampleIn(sound.subspan(sample * packing.bytes)));
      }
    }
    return channels;
  }

 private:
  std::uint64_t number(Bytes bytes, std::size_t place, std::size_t size) const {
    return bytes.size() >= place + size ? numberIn(bytes.subspan(place, size), isAiff) : 0;
  }

  void findChunks() {
    constexpr std::size_t kFileHead = 12;
    constexpr std::size_t kChunkHead = 8;
    const Bytes all = file;
    for (std::size_t place = kFileHead; place + kChunkHead <= all.size() && !hasSound;) {
      const auto size = static_cast<std::size_t>(number(all, place + 4, 4));
      const std::string_view name = textOf(all.subspan(place, 4));
      place += kChunkHead;
      const Bytes chunk = all.subspan(place, std::min(size, all.size() - place));
      if (name == "fmt ") {
        takeFormat(chunk);
      } else if (name == "COMM") {
        takeCommon(chunk);
      } else if (name == (isAiff ? "SSND" : "data")) {
        takeSound(all.subspan(place), size, number(all, 4, 4) + kChunkHead <= place);
      }
      place += std::min(size + size % 2, all.size() - place);
    }
  }

  void takeFormat(Bytes chunk) {
    constexpr std::uint64_t kWholeNumbers = 1;
    constexpr std::uint64_t kFloatingPoint = 3;
    constexpr std::uint64_t kExtensible = 0xFFFE;
    told.channels = static_cast<std::size_t>(number(chunk, 2, 2));
    told.rate = static_cast<double>(number(chunk, 4, 4));
    std::uint64_t format = number(chunk, 0, 2);
    if (format == kExtensible) {
      told.speakers = speakersOf(number(chunk, 20, 4), told.channels);
      format = number(chunk, 24, 2);
    }
    if (format != kWholeNumbers && format != kFloatingPoint) {
      isPacked = true;
      return;
    }
    const std::uint64_t bits = number(chunk, 14, 2);
    setPacking(bits, format == kFloatingPoint);
    packing.isUnsigned = packing.bytes == 1;
  }

  void takeCommon(Bytes chunk) {
    constexpr std::size_t kRatePlace = 8;
    constexpr std::size_t kRateBytes = 10;
    told.channels = static_cast<std::size_t>(number(chunk, 0, 2));
    if (chunk.size() >= kRatePlace + kRateBytes) {
      told.rate = extendedIn(chunk.subspan(kRatePlace, kRateBytes));
    }
    const std::string_view kind =
        hasText(file, 8, "AIFC") && chunk.size() >= 22 ? textOf(chunk.subspan(18, 4)) : std::string_view("NONE");
    const bool isFloat = kind == "fl32" || kind == "FL32" || kind == "fl64" || kind == "FL64";
    isPacked = !isFloat && kind != "NONE" && kind != "twos" && kind != "sowt";
    if (!isPacked) {
      setPacking(isFloat ? (kind.ends_with("64") ? 64 : 32) : number(chunk, 6, 2), isFloat);
      packing.isHighFirst = kind != "sowt";
    }
  }

  void setPacking(std::uint64_t bits, bool isFloat) {
    const auto bytes = static_cast<std::size_t>((bits + 7) / 8);
    const bool isKnown = isFloat ? bytes == 4 || bytes == 8 : bytes >= 1 && bytes <= 4;
    isPacked = !isKnown;
    packing = {isKnown ? bytes : 0, isFloat};
  }

  /// `rest` begins with the samples. Programs that write to a pipe put no size, or one from 0x7F000000 up, into the
  /// header.
  void takeSound(Bytes rest, std::size_t size, bool isHeadUnwritten) {
    constexpr std::size_t kOpenSize = 0x7F000000;
    constexpr std::size_t kAiffOffset = 8;
    const bool isOpen = size >= kOpenSize || (size == 0 && isHeadUnwritten);
    told.isCutShort = !isOpen && size > rest.size();
    sound = rest.first(isOpen ? rest.size() : std::min(size, rest.size()));
    sound = sound.subspan(isAiff ? std::min(kAiffOffset, sound.size()) : 0);
    hasSound = true;
  }

  const std::vector<std::uint8_t> file;
  const bool isAiff;
  Packing packing;
  Bytes sound;
  bool hasSound = false;
  bool isPacked = false;
};

}  // namespace

std::unique_ptr<SoundDecoder> openWave(std::vector<std::uint8_t> file) {
  return std::make_unique<WaveSource>(std::move(file));
}

std::unique_ptr<SoundDecoder> openPlainSound(std::vector<std::uint8_t> file) {
  const bool isWave = hasText(file, 0, "RIFF") && hasText(file, 8, "WAVE");
  const bool isAiff = hasText(file, 0, "FORM") && (hasText(file, 8, "AIFF") || hasText(file, 8, "AIFC"));
  if (isWave || isAiff) {
    return openWave(std::move(file));
  }
  if (hasText(file, 0, "fLaC") || hasText(file, 0, "ID3")) {
    return openFlac(std::move(file));
  }
#ifdef _WIN32
  if (hasText(file, 0, "OggS")) {
    return openVorbis(std::move(file));
  }
#endif
  throw std::runtime_error("is no sound file of a known format: WAV, AIFF, FLAC or OGG");
}

}  // namespace sivray::content
