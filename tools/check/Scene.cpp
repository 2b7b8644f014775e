// Random drum hits and the loop that renders them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Scene.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>
#include <utility>

#include "viewmodels/texts/PanelMacros.h"

namespace sivray::check {
namespace {

constexpr int kFirstNote = tesh::bramel::panel::kFirstPadNote;
constexpr auto kPads = static_cast<int>(tesh::bramel::panel::kPads);

}  // namespace

std::vector<Hit> hitsOver(int frames, std::uint32_t seed, int density) {
  Random random(seed);
  std::vector<Hit> hits;
  const int count = std::max(1, static_cast<int>(static_cast<std::int64_t>(frames) * density / 44100));
  for (int i = 0; i < count; ++i) {
    const int note = kFirstNote + random.below(kPads);
    hits.push_back({random.below(frames), note, i % 4 == 3 ? 0 : 1 + random.below(127)});
  }
  std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.frame < b.frame; });
  hits.front() = {hits.front().frame, kFirstNote, 127};
  return hits;
}

Partition blocksOf(int frames) {
  return [frames] { return frames; };
}

Partition randomBlocks(std::uint32_t seed, int longest) {
  return [random = std::make_shared<Random>(seed), longest] { return 1 + random->below(longest); };
}

Sound play(hosting::HostedPlugin& host, const std::vector<Hit>& hits, int frames, const Partition& partition) {
  Sound sound{std::vector<float>(static_cast<std::size_t>(frames)),
              std::vector<float>(static_cast<std::size_t>(frames))};
  auto hit = hits.begin();
  for (int start = 0; start < frames;) {
    const int length = std::min(partition(), frames - start);
    for (; hit != hits.end() && hit->frame < start + length; ++hit) {
      host.queueNote(hit->note, hit->velocity, hit->frame - start);
    }
    host.process(sound.left.data() + start, sound.right.data() + start, length);
    start += length;
  }
  return sound;
}

SoundFacts playPlain(hosting::HostedPlugin& host, int frames, std::uint32_t seed) {
  SoundFacts facts;
  facts.add(play(host, hitsOver(frames, seed), frames, blocksOf(kPlainBlock)));
  return facts;
}

void settle(hosting::HostedPlugin& host) {
  Sound ignored{std::vector<float>(kPlainBlock), std::vector<float>(kPlainBlock)};
  host.process(ignored.left.data(), ignored.right.data(), kPlainBlock);
}

void warm(hosting::HostedPlugin& host, PadSends sends) {
  for (const char* send : {"P1 FX Send", "P2 FX Send", "P3 FX Send", "P4 FX Send", "P5 FX Send", "P6 FX Send",
                           "P7 FX Send", "P8 FX Send"}) {
    setNamed(host, send, sends == PadSends::on ? 1.0F : 0.0F);
  }
  settle(host);
  for (int round = 0; round < 2; ++round) {
    for (int pad = 0; pad < kPads; ++pad) {
      host.queueNote(kFirstNote + pad, 100, pad);
    }
    settle(host);
  }
}

void playSineOn(hosting::HostedPlugin& host) {
  for (const auto& [name, value] :
       {std::pair("P1 Pitch", 0.5F), std::pair("P1 Fine", 0.5F), std::pair("P1 Sample", 0.0F),
        std::pair("P1 EG Mode", 0.0F), std::pair("P1 EG Time", 1.0F), std::pair("P1 FX Send", 0.0F),
        std::pair("P1 Reverse", 0.0F)}) {
    setNamed(host, name, value);
  }
}

double phaseAt(const std::vector<float>& samples, double rate, double hertz, double centre) {
  const auto first = static_cast<int>((centre - 0.5) * rate);
  const auto count = static_cast<int>(rate);
  const float* const around = samples.data() + first;
  std::complex<double> sum;
  for (int i = 0; i < count; ++i) {
    const double window = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * (i + 0.5) / count);
    const double angle = -2.0 * std::numbers::pi * hertz * (first + i) / rate;
    sum += static_cast<double>(around[i]) * window * std::polar(1.0, angle);
  }
  return std::arg(sum) / (2.0 * std::numbers::pi);
}

bool choosesWave(int index) { return tesh::bramel::panel::choosesSound(static_cast<std::uint64_t>(index)); }

int indexOf(hosting::HostedPlugin& host, const char* name) {
  for (int index = 0; index < host.parameterCount(); ++index) {
    if (host.parameterName(index) == name) {
      return index;
    }
  }
  return -1;
}

void setNamed(hosting::HostedPlugin& host, const char* name, float value) {
  if (const int index = indexOf(host, name); index >= 0) {
    host.setParameter(index, value);
  }
}

}  // namespace sivray::check
