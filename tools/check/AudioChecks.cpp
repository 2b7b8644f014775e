// Checks of the audio: rates, block sizes and partitions, the samples' values, and the cost of silence.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

#include "check/Check.h"
#include "check/GuardedBuffer.h"
#include "check/Process.h"
#include "check/Scene.h"
#include "check/SineContent.h"
#include "vsthost/Host.h"

namespace sivray::check {
namespace {

using hosting::HostedPlugin;

constexpr std::array<float, 16> kRates{8000.0F,    11025.0F,   16000.0F,   22050.0F,  32000.0F,  44100.0F,
                                       48000.0F,   88200.0F,   96000.0F,   176400.0F, 192000.0F, 384000.0F,
                                       1234.5678F, 12345.678F, 45678.901F, 123456.78F};
constexpr std::array<int, 18> kBlocks{0,   1,    10,   16,   17,   32,   64,   137,  256,
                                      512, 1024, 1536, 2027, 2048, 2049, 4096, 8192, 16384};
constexpr double kPitchTolerance = 1e-4;

/// Returns a tone's deviation from `hertz`. A rough value over a short stretch makes the phase over a long one
/// unambiguous.
double pitchError(const std::vector<float>& samples, double rate, double hertz) {
  const auto turned = [&](double seconds) {
    const double turns = phaseAt(samples, rate, hertz, 1.0 + seconds) - phaseAt(samples, rate, hertz, 1.0);
    return turns - std::round(turns);
  };
  const double rough = turned(0.25) / 0.25;
  const double fine = turned(3.0);
  return (fine + std::round(rough * 3.0 - fine)) / 3.0 / hertz;
}

/// Plays the sine at one rate after the other, changing the rate while a note sounds.
Verdict sampleRates(const CheckSettings& settings) {
  const SineContent sine;
  const auto library = settings.load();
  const auto host = library->makeInstance();
  playSineOn(*host);
  SoundFacts facts;
  double worst = 0.0;
  double worstWhole = 0.0;
  bool right = true;
  for (const float rate : kRates) {
    host->setSampleRate(rate);
    const std::vector<Hit> hit{{0, 36, 127}};
    const Sound sound = play(*host, hit, static_cast<int>(4.6F * rate), blocksOf(kPlainBlock));
    facts.add(sound);
    const double error = pitchError(sound.left, static_cast<double>(rate), SineContent::kHertz);
    // The converter truncates a rate to whole hertz, which matters only below 10 kHz.
    const double whole = error - (static_cast<double>(rate) / std::floor(static_cast<double>(rate)) - 1.0);
    right = right && std::abs(rate < 10000.0F ? whole : error) <= kPitchTolerance;
    worst = std::max(worst, rate < 10000.0F ? 0.0 : std::abs(error));
    worstWhole = std::max(worstWhole, std::abs(whole));
  }
  return verdict(right && facts.notNumbers == 0 && facts.subnormals == 0 && facts.isHeard(),
                 "%zu rates, worst pitch error %.4f %% (%.4f %% of the rate in whole hertz)", kRates.size(),
                 100.0 * worst, 100.0 * worstWhole);
}

/// Renders blocks of all sizes in buffers that start or end at a protected page.
Verdict blockSizes(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  if (settings.isVst2()) {
    static_cast<vsthost::Host&>(*host).call(tesh::bramel::vst::effSetBlockSize, 0, 64);
  }
  SoundFacts facts;
  Random random(5);
  std::vector<int> sizes(kBlocks.begin(), kBlocks.end());
  for (int i = 0; i < settings.count(20, 200); ++i) {
    sizes.push_back(random.below(16385));
  }
  for (const float rate : {kPlainRate, 48000.0F, 8000.0F}) {
    host->setSampleRate(rate);
    for (const int size : sizes) {
      for (const GuardedEnd end : {GuardedEnd::front, GuardedEnd::back}) {
        GuardedBuffer left(static_cast<std::size_t>(size), end);
        GuardedBuffer right(static_cast<std::size_t>(size), end);
        host->queueNote(36 + random.below(8), 100, size > 0 ? random.below(size) : 0);
        host->process(left.data(), right.data(), size);
        facts.add(left.data(), size);
        facts.add(right.data(), size);
      }
    }
  }
  return verdict(facts.notNumbers == 0 && facts.subnormals == 0 && facts.isHeard(),
                 "0 to 16384 frames and %zu random sizes at 3 rates, %d announced", sizes.size() - kBlocks.size(),
                 settings.isVst2() ? 64 : 16384);
}

Verdict partitions(const CheckSettings& settings) {
  const auto library = settings.load();
  constexpr int kFrames = 88200;
  const std::vector<Hit> hits = hitsOver(kFrames, 31);
  const auto hashOf = [&](const Partition& partition) {
    const auto host = library->makeInstance();
    warm(*host, PadSends::on);
    SoundFacts facts;
    facts.add(play(*host, hits, kFrames, partition));
    return facts.hash;
  };
  const std::uint64_t expected = hashOf(blocksOf(kPlainBlock));
  int count = 0;
  int different = 0;
  for (const int size : kBlocks) {
    if (size > 0) {
      ++count;
      different += hashOf(blocksOf(size)) == expected ? 0 : 1;
    }
  }
  for (int i = 0; i < settings.count(15, 100); ++i) {
    ++count;
    different += hashOf(randomBlocks(static_cast<std::uint32_t>(100 + i), 3000)) == expected ? 0 : 1;
  }
  return verdict(different == 0, "%d partitions of one scene, %d with another hash than %016llx", count, different,
                 static_cast<unsigned long long>(expected));
}

/// Renders the hits with the output buffers as inputs too.
SoundFacts playInPlace(vsthost::Host& host, const std::vector<Hit>& hits, int frames) {
  Sound sound{std::vector<float>(static_cast<std::size_t>(frames), 0.5F),
              std::vector<float>(static_cast<std::size_t>(frames), -0.5F)};
  tesh::bramel::vst::AEffect& effect = host.effect();
  vsthost::EventList events;
  auto hit = hits.begin();
  for (int start = 0; start < frames; start += kPlainBlock) {
    const int length = std::min(kPlainBlock, frames - start);
    for (; hit != hits.end() && hit->frame < start + length; ++hit) {
      const std::array<std::uint8_t, 3> bytes{0x90, static_cast<std::uint8_t>(hit->note),
                                              static_cast<std::uint8_t>(hit->velocity)};
      events.add(bytes, hit->frame - start);
    }
    std::array<float*, 2> channels{sound.left.data() + start, sound.right.data() + start};
    host.call(tesh::bramel::vst::effProcessEvents, 0, 0, events.head());
    effect.processReplacing(&effect, channels.data(), channels.data(), length);
    events.clear();
  }
  SoundFacts facts;
  facts.add(sound);
  return facts;
}

/// Plays all pads at full level with random settings, to test the limits of the output stage.
Verdict output(const CheckSettings& settings) {
  const auto library = settings.load();
  const auto host = library->makeInstance();
  const std::vector<std::uint8_t> state = host->chunk();
  SoundFacts all;
  int different = 0;
  Random random(17);
  for (int round = 0; round < settings.count(20, 200); ++round) {
    host->setChunk(state);
    for (int index = 0; index < host->parameterCount(); ++index) {
      if (random.below(3) == 0) {
        host->setParameter(index, random.unit());
      }
    }
    setNamed(*host, "Master Level", 1.0F);
    settle(*host);
    const std::vector<std::uint8_t> set = host->chunk();
    const std::vector<Hit> hits = hitsOver(44100, 200U + static_cast<std::uint32_t>(round), 100);
    std::array<std::uint64_t, 2> hashes{};
    for (const bool inPlace : {false, true}) {
      if (inPlace && !settings.isVst2()) {  // The other forms' host always renders in place.
        hashes[1] = hashes[0];
        continue;
      }
      const auto player = library->makeInstance();
      player->setChunk(set);
      settle(*player);
      SoundFacts facts;
      if (inPlace) {
        facts = playInPlace(static_cast<vsthost::Host&>(*player), hits, 44100);
      } else {
        facts.add(play(*player, hits, 44100, blocksOf(kPlainBlock)));
      }
      hashes[inPlace ? 1 : 0] = facts.hash;
      all.notNumbers += facts.notNumbers;
      all.subnormals += facts.subnormals;
      all.tooLoud += facts.tooLoud;
      all.peak = std::max(all.peak, facts.peak);
    }
    different += hashes[0] == hashes[1] ? 0 : 1;
  }
  return verdict(all.isSane() && all.isHeard() && different == 0,
                 "%lld not numbers, %lld subnormal, %lld above full scale, peak %.5f, %d differ in place",
                 static_cast<long long>(all.notNumbers), static_cast<long long>(all.subnormals),
                 static_cast<long long>(all.tooLoud), static_cast<double>(all.peak), different);
}

/// Returns the CPU seconds per second of audio, the least of three runs.
double costOf(HostedPlugin& host, const std::vector<Hit>& hits) {
  double least = 1e9;
  for (int i = 0; i < 3; ++i) {
    const double before = threadSeconds();
    play(host, hits, 44100, blocksOf(kPlainBlock));
    least = std::min(least, threadSeconds() - before);
  }
  return least;
}

Verdict silence(const CheckSettings& settings) {
  constexpr double kMostRatio = 1.2;
  const auto library = settings.load();
  const auto host = library->makeInstance();
  const std::vector<Hit> hits = hitsOver(44100, 41, 80);
  const int types = 26;
  double worst = 0.0;
  int worstType = 0;
  for (int type = 0; type < types; type += settings.full ? 1 : 5) {
    setNamed(*host, "FX Type", static_cast<float>(type) / static_cast<float>(types - 1));
    settle(*host);
    const double sounding = costOf(*host, hits);
    for (int second = 0; second < settings.count(2, 6); ++second) {
      const double ratio = costOf(*host, {}) / sounding;
      if (ratio > worst) {
        worst = ratio;
        worstType = type;
      }
    }
  }
#if defined(__x86_64__)
  constexpr unsigned kStickyBits = 0x3F;
  const unsigned before = _mm_getcsr() & ~kStickyBits;
  settle(*host);
  const bool kept = (_mm_getcsr() & ~kStickyBits) == before;
#else
  const bool kept = true;
#endif
  return verdict(kept && (isSanitized() || worst <= kMostRatio),
                 "silence costs at most %.2f of sound (effect step %d), floating-point flags %s", worst, worstType,
                 kept ? "kept" : "changed");
}

}  // namespace

std::vector<Check> audioChecks() {
  return {{"sample rates", sampleRates},
          {"block sizes", blockSizes},
          {"one scene, many partitions", partitions},
          {"output", output},
          {"silence and denormals", silence}};
}

}  // namespace sivray::check
