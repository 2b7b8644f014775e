// Decodes FLAC: frames of predicted samples with Rice-coded residuals. Constants are those of the format (RFC 9639).
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <stdexcept>
#include <utility>

#include "content/pack/PlainSound.h"

namespace sivray::content {
namespace {

using Bytes = std::span<const std::uint8_t>;

/// Thrown for an invalid frame.
struct Damaged {};

/// Reads bits, from the highest of each byte down.
class BitReader {
 public:
  explicit BitReader(Bytes all) : bytes(all) {}

  /// Reads up to 32 bits as an unsigned number.
  std::uint32_t take(unsigned count) {
    while (held < count) {
      if (place == bytes.size()) {
        throw Damaged();
      }
      cache = cache << 8 | bytes[place++];
      held += 8;
    }
    held -= count;
    return static_cast<std::uint32_t>(cache >> held & ((std::uint64_t{1} << count) - 1));
  }

  /// Reads up to 33 bits in two's complement.
  std::int64_t takeSigned(unsigned count) {
    if (count == 0) {
      return 0;
    }
    std::int64_t value = -static_cast<std::int64_t>(take(1));
    for (unsigned left = count - 1; left > 0;) {
      const unsigned some = std::min(left, 32U);
      value = value * (std::int64_t{1} << some) + take(some);
      left -= some;
    }
    return value;
  }

  /// Reads a unary number: the number of zeros before a one.
  std::uint32_t takeZeros() {
    std::uint32_t zeros = 0;
    while (take(1) == 0) {
      ++zeros;
    }
    return zeros;
  }

  void toByte() { held -= held % 8; }
  /// Returns the offset of the next byte; only after `toByte`.
  std::size_t offset() const { return place - held / 8; }

 private:
  Bytes bytes;
  std::size_t place = 0;
  std::uint64_t cache = 0;
  unsigned held = 0;
};

std::uint16_t checkOf(Bytes bytes) {
  constexpr unsigned kPolynomial = 0x8005;
  unsigned check = 0;
  for (const std::uint8_t byte : bytes) {
    check ^= static_cast<unsigned>(byte) << 8;
    for (int bit = 0; bit < 8; ++bit) {
      check = (check & 0x8000U) != 0 ? check << 1 ^ kPolynomial : check << 1;
    }
    check &= 0xFFFFU;
  }
  return static_cast<std::uint16_t>(check);
}

using Samples = std::vector<std::int64_t>;

/// Reads the residuals: the prediction errors of the samples after the first `order`.
void takeResiduals(BitReader& bits, std::size_t order, Samples& samples) {
  const std::uint32_t method = bits.take(2);
  if (method > 1) {
    throw Damaged();
  }
  const unsigned parameterBits = method == 0 ? 4 : 5;
  const std::uint32_t parts = 1U << bits.take(4);
  if (samples.size() % parts != 0 || samples.size() / parts < order) {
    throw Damaged();
  }
  std::size_t at = order;
  for (std::uint32_t part = 1; part <= parts; ++part) {
    const std::size_t end = samples.size() / parts * part;
    const std::uint32_t parameter = bits.take(parameterBits);
    const bool isPlain = parameter == (1U << parameterBits) - 1;
    const unsigned plainBits = isPlain ? bits.take(5) : 0;
    for (; at < end; ++at) {
      if (isPlain) {
        samples[at] = bits.takeSigned(plainBits);
      } else {
        const std::uint64_t high = bits.takeZeros();
        const std::uint64_t folded = high << parameter | bits.take(parameter);
        samples[at] = static_cast<std::int64_t>(folded >> 1) ^ -static_cast<std::int64_t>(folded & 1U);
      }
    }
  }
}

/// Adds the prediction, a weighted sum of earlier samples; the first weight belongs to the latest.
void predict(std::span<const std::int64_t> factors, int shift, Samples& samples) {
  for (std::size_t at = factors.size(); at < samples.size(); ++at) {
    std::uint64_t sum = 0;  // Wraps where a damaged file overflows it.
    for (std::size_t i = 0; i < factors.size(); ++i) {
      sum += static_cast<std::uint64_t>(factors[i]) * static_cast<std::uint64_t>(samples[at - 1 - i]);
    }
    const std::uint64_t predicted = static_cast<std::uint64_t>(static_cast<std::int64_t>(sum) >> shift);
    samples[at] = static_cast<std::int64_t>(static_cast<std::uint64_t>(samples[at]) + predicted);
  }
}

void takeFixed(BitReader& bits, std::size_t order, unsigned width, Samples& samples) {
  constexpr std::array<std::array<std::int64_t, 4>, 5> kFactors{
      {{0, 0, 0, 0}, {1, 0, 0, 0}, {2, -1, 0, 0}, {3, -3, 1, 0}, {4, -6, 4, -1}}};
  if (order >= kFactors.size() || order > samples.size()) {
    throw Damaged();
  }
  std::generate_n(samples.begin(), order, [&] { return bits.takeSigned(width); });
  takeResiduals(bits, order, samples);
  predict(std::span(kFactors[order]).first(order), 0, samples);
}

void takePredicted(BitReader& bits, std::size_t order, unsigned width, Samples& samples) {
  constexpr std::uint32_t kNoPrecision = 15;
  if (order > samples.size()) {
    throw Damaged();
  }
  std::generate_n(samples.begin(), order, [&] { return bits.takeSigned(width); });
  const std::uint32_t precision = bits.take(4);
  const auto shift = static_cast<int>(bits.takeSigned(5));
  if (precision == kNoPrecision || shift < 0) {
    throw Damaged();
  }
  std::vector<std::int64_t> factors(order);
  std::ranges::generate(factors, [&] { return bits.takeSigned(precision + 1); });
  takeResiduals(bits, order, samples);
  predict(factors, shift, samples);
}

/// Decodes one channel of a frame, with samples of `width` bits.
void takeChannel(BitReader& bits, unsigned width, Samples& samples) {
  constexpr std::uint32_t kConstant = 0;
  constexpr std::uint32_t kVerbatim = 1;
  constexpr std::uint32_t kFixed = 8;
  constexpr std::uint32_t kPredicted = 32;
  if (bits.take(1) != 0) {
    throw Damaged();
  }
  const std::uint32_t kind = bits.take(6);
  const unsigned wasted = bits.take(1) != 0 ? bits.takeZeros() + 1 : 0;
  if (wasted >= width) {
    throw Damaged();
  }
  width -= wasted;
  if (kind == kConstant) {
    std::ranges::fill(samples, bits.takeSigned(width));
  } else if (kind == kVerbatim) {
    std::ranges::generate(samples, [&] { return bits.takeSigned(width); });
  } else if (kind >= kPredicted) {
    takePredicted(bits, kind - kPredicted + 1, width, samples);
  } else if (kind >= kFixed) {
    takeFixed(bits, kind - kFixed, width, samples);
  } else {
    throw Damaged();
  }
  for (std::int64_t& sample : samples) {
    sample = static_cast<std::int64_t>(static_cast<std::uint64_t>(sample) << wasted);
  }
}

/// How a frame stores its two channels.
enum class Pair { apart, leftAndSide, sideAndRight, middleAndSide };

void joinPair(Pair pair, Samples& first, Samples& second) {
  for (std::size_t i = 0; i < first.size(); ++i) {
    const auto a = static_cast<std::uint64_t>(first[i]);
    const auto b = static_cast<std::uint64_t>(second[i]);
    if (pair == Pair::leftAndSide) {
      second[i] = static_cast<std::int64_t>(a - b);
    } else if (pair == Pair::sideAndRight) {
      first[i] = static_cast<std::int64_t>(a + b);
    } else {
      const std::uint64_t sum = a << 1 | (b & 1U);
      first[i] = static_cast<std::int64_t>(sum + b) >> 1;
      second[i] = static_cast<std::int64_t>(sum - b) >> 1;
    }
  }
}

class FlacSource final : public SoundDecoder {
 public:
  explicit FlacSource(std::vector<std::uint8_t> bytes) : file(std::move(bytes)) {
    skipTags();
    readHead();
  }

  std::vector<Channel> read(std::int64_t most) override {
    std::vector<Channel> channels(told.channels);
    const Bytes all = file;
    try {
      while (place < all.size() && static_cast<std::int64_t>(channels.front().size()) < most) {
        place += takeFrame(all.subspan(place), channels);
      }
    } catch (const Damaged&) {  // The frames before it are used.
    }
    for (Channel& channel : channels) {
      channel.resize(std::min(channel.size(), static_cast<std::size_t>(most)));
    }
    return channels;
  }

 private:
  /// Skips an ID3 tag, which some programs write before the sound: its size is four bytes of 7 bits each.
  void skipTags() {
    constexpr std::size_t kTagHead = 10;
    if (file.size() < kTagHead || file[0] != 'I') {
      return;
    }
    std::size_t size = 0;
    for (std::size_t i = 6; i < kTagHead; ++i) {
      size = size << 7 | (file[i] & 0x7FU);
    }
    place = std::min(kTagHead + size, file.size());
  }

  void readHead() {
    const Bytes all = file;
    try {
      BitReader bits(all.subspan(place));
      constexpr std::uint32_t kMark = 0x664C6143;  // "fLaC"
      if (bits.take(32) != kMark) {
        throw Damaged();
      }
      bool isLast = bits.take(1) != 0;
      const std::uint32_t kind = bits.take(7);
      const std::uint32_t headSize = bits.take(24);
      if (kind != 0) {
        throw Damaged();
      }
      bits.take(32);  // The least and greatest sizes of blocks and frames.
      bits.take(32);
      bits.take(16);
      told.rate = bits.take(20);
      told.channels = bits.take(3) + 1;
      width = bits.take(5) + 1;
      told.frames = static_cast<std::int64_t>(std::uint64_t{bits.take(4)} << 32 | bits.take(32));
      constexpr std::size_t kBlockHead = 4;
      place += 4 + kBlockHead + headSize;
      while (!isLast) {
        if (place > all.size()) {
          throw Damaged();
        }
        BitReader block(all.subspan(place));
        isLast = block.take(1) != 0;
        block.take(7);
        place += kBlockHead + block.take(24);
      }
    } catch (const Damaged&) {
      throw std::runtime_error("cannot be read: it begins as no FLAC file does");
    }
  }

  static std::size_t blockSizeOf(std::uint32_t code, BitReader& bits) {
    switch (code) {
      case 0:
        throw Damaged();
      case 1:
        return 192;
      case 6:
        return bits.take(8) + std::size_t{1};
      case 7:
        return bits.take(16) + std::size_t{1};
      default:
        return code < 6 ? std::size_t{576} << (code - 2) : std::size_t{256} << (code - 8);
    }
  }

  /// Reads a number of variable length, coded as in UTF-8.
  static void skipNumber(BitReader& bits) {
    std::uint32_t first = bits.take(8);
    for (; (first & 0xC0U) == 0xC0U; first = first << 1 & 0xFFU) {
      bits.take(8);
    }
  }

  /// Returns the frame's bytes.
  std::size_t takeFrame(Bytes rest, std::vector<Channel>& channels) const {
    constexpr std::uint32_t kSync = 0x3FFE;
    constexpr std::uint32_t kPairs = 8;
    constexpr std::array<unsigned, 8> kWidths{0, 8, 12, 0, 16, 20, 24, 32};
    BitReader bits(rest);
    if (bits.take(14) != kSync) {
      throw Damaged();
    }
    bits.take(2);
    const std::uint32_t sizeCode = bits.take(4);
    const std::uint32_t rateCode = bits.take(4);
    const std::uint32_t assignment = bits.take(4);
    const unsigned frameWidth = kWidths[bits.take(3)];
    bits.take(1);
    skipNumber(bits);
    const std::size_t size = blockSizeOf(sizeCode, bits);
    bits.take(rateCode == 12 ? 8 : rateCode == 13 || rateCode == 14 ? 16 : 0);
    bits.take(8);  // The checksum of the frame's header.
    const std::size_t count = assignment < kPairs ? assignment + 1 : 2;
    if (count != told.channels || assignment > kPairs + 2 || (frameWidth != 0 && frameWidth != width)) {
      throw Damaged();
    }
    const auto pair = assignment < kPairs ? Pair::apart : static_cast<Pair>(assignment - kPairs + 1);
    std::vector<Samples> samples(count, Samples(size));
    for (std::size_t channel = 0; channel < count; ++channel) {
      const bool isSide = pair != Pair::apart && (channel == 0) == (pair == Pair::sideAndRight);
      takeChannel(bits, width + (isSide ? 1 : 0), samples[channel]);
    }
    bits.toByte();
    const std::size_t end = bits.offset();
    if (bits.take(16) != checkOf(rest.first(end))) {
      throw Damaged();
    }
    if (pair != Pair::apart) {
      joinPair(pair, samples[0], samples[1]);
    }
    const float full = static_cast<float>(std::uint64_t{1} << (width - 1));
    for (std::size_t channel = 0; channel < count; ++channel) {
      for (const std::int64_t sample : samples[channel]) {
        channels[channel].push_back(static_cast<float>(sample) / full);
      }
    }
    constexpr std::size_t kCheckBytes = 2;
    return end + kCheckBytes;
  }

  const std::vector<std::uint8_t> file;
  std::size_t place = 0;  ///< Offset of the next frame.
  unsigned width = 0;     ///< Bits of a sample.
};

}  // namespace

std::unique_ptr<SoundDecoder> openFlac(std::vector<std::uint8_t> file) {
  return std::make_unique<FlacSource>(std::move(file));
}

}  // namespace sivray::content
