// Compares a form with VST 2: parameters, samples, programs, latency, and both in one process.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <memory>
#include <thread>

#include "check/Check.h"
#include "check/Scene.h"
#include "check/SineContent.h"
#include "formhost/FormFile.h"
#include "render/PluginModel.h"

namespace sivray::check {
namespace {

using hosting::HostedPlugin;
using Bytes = std::vector<std::uint8_t>;

/// The form and VST 2, one instance of each.
struct Pair {
  explicit Pair(const CheckSettings& settings)
      : formFile(settings.load()),
        vst2File(settings.loadVst2()),
        form(formFile->makeInstance()),
        vst2(vst2File->makeInstance()) {}

  std::unique_ptr<hosting::PluginFile> formFile;
  std::unique_ptr<hosting::PluginFile> vst2File;
  std::unique_ptr<HostedPlugin> form;
  std::unique_ptr<HostedPlugin> vst2;
};

/// Sets each parameter in both forms, and lets VST 2 load the form's state: that the host remembers its own values
/// proves nothing.
Verdict sameParameters(const CheckSettings& settings) {
  Pair pair(settings);
  int missing = 0;
  int otherTexts = 0;
  int otherValues = 0;
  for (const float value : {0.0F, 0.25F, 0.5F, 0.7F, 1.0F}) {
    for (int index = 0; index < pair.vst2->parameterCount(); ++index) {
      pair.form->setParameter(index, value);
      pair.vst2->setParameter(index, pair.form->settable(index, value));
      missing += pair.form->parameterName(index).empty() ? 1 : 0;
      otherTexts += pair.form->parameterText(index) == pair.vst2->parameterText(index) ? 0 : 1;
    }
    settle(*pair.form);
    const auto reader = pair.vst2File->makeInstance();
    reader->setChunk(pair.form->chunk());
    for (int index = 0; index < reader->parameterCount(); ++index) {
      otherValues += reader->parameter(index) == pair.form->settable(index, value) ? 0 : 1;
    }
  }
  // LV2 has no texts but those of a parameter's steps.
  const bool hasTexts = settings.form != hosting::Form::lv2;
  return verdict(missing == 0 && otherValues == 0 && (otherTexts == 0 || !hasTexts),
                 "%d parameters: %d missing, %d with another text, %d with another value", pair.vst2->parameterCount(),
                 missing, otherTexts, otherValues);
}

/// Invalid values must not change anything.
Verdict valuesOutside(const CheckSettings& settings) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const auto file = settings.load();
  const auto plugin = file->makeInstance();
  int wrong = 0;
  settle(*plugin);
  const Bytes before = plugin->chunk();
  for (const float value : {kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN(), -0.5F, 1.5F}) {
    for (int index = 0; index < plugin->parameterCount(); ++index) {
      plugin->setParameter(index, value);
    }
    SoundFacts facts = playPlain(*plugin, 22050);
    wrong += facts.isSane() ? 0 : 1;
  }
  plugin->setChunk(before);
  settle(*plugin);
  const bool isHeard = playPlain(*plugin, 22050).isHeard();
  return verdict(wrong == 0 && isHeard, "5 values that are none, %d harm the sound, then %s", wrong,
                 isHeard ? "a sound" : "silence");
}

/// Plays the same blocks with the same notes and moves. Returns whether any frame differs.
bool playsOtherwise(HostedPlugin& form, HostedPlugin& vst2, int frames, std::uint32_t seed) {
  Random random(seed);
  std::array<Sound, 2> sounds;
  for (Sound& sound : sounds) {
    sound.left.resize(static_cast<std::size_t>(frames));
    sound.right.resize(static_cast<std::size_t>(frames));
  }
  for (int start = 0; start < frames;) {
    const int length = std::min(1 + random.below(1024), frames - start);
    std::vector<Hit> hits(static_cast<std::size_t>(random.below(5)));
    for (Hit& hit : hits) {
      hit = {random.below(length), 36 + random.below(8), random.below(128)};
    }
    // JUCE's host sorts a block's messages by their frames.
    std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.frame < b.frame; });
    const int index = random.below(form.parameterCount());
    const float value = random.unit();
    for (std::size_t which = 0; which < sounds.size(); ++which) {
      HostedPlugin& plugin = which == 0 ? form : vst2;
      for (const Hit& hit : hits) {
        plugin.queueNote(hit.note, hit.velocity, hit.frame);
      }
      plugin.setParameter(index, form.settable(index, value));
      plugin.process(sounds[which].left.data() + start, sounds[which].right.data() + start, length);
    }
    start += length;
  }
  SoundFacts facts;
  facts.add(sounds[0]);
  return sounds[0].left != sounds[1].left || sounds[0].right != sounds[1].right || !facts.isHeard();
}

Verdict sameSamples(const CheckSettings& settings) {
  int scenes = 0;
  int different = 0;
  std::string where;
  for (const float rate : {kPlainRate, 48000.0F, 96000.0F, 22050.0F, 192000.0F}) {
    for (int round = 0; round < settings.count(2, 20); ++round) {
      Pair pair(settings);
      pair.form->start(rate, 1024);
      pair.vst2->start(rate, 1024);
      pair.form->setChunk(pair.vst2->chunk());
      warm(*pair.form, PadSends::on);
      warm(*pair.vst2, PadSends::on);
      if (playsOtherwise(*pair.form, *pair.vst2, 44100, 400U + static_cast<std::uint32_t>(scenes))) {
        ++different;
        where.append(" ").append(std::to_string(static_cast<int>(rate)));
      }
      ++scenes;
    }
  }
  return verdict(different == 0, "%d scenes at 5 rates, %d with other samples than VST 2%s%s", scenes, different,
                 where.empty() ? "" : ", at Hz", where.c_str());
}

/// Each host program must set the values of the kit of that name.
Verdict programs(const CheckSettings& settings) {
  Pair pair(settings);
  settle(*pair.vst2);
  render::PluginModel model;
  if (!model.takeIn(pair.vst2->chunk())) {
    return verdict(false, "the plug-in gives a state that cannot be read");
  }
  constexpr int kEachTold = 8;
  const int step = isSanitized() ? 9 : 1;
  constexpr std::chrono::milliseconds kTold{130};
  const int count = pair.form->programCount();
  int tried = 0;
  int found = 0;
  int wrong = 0;
  std::string names;
  for (int index = 0; index < count; index += step) {
    const std::string name = pair.form->programName(index);
    ++tried;
    const auto kits = model.programs();
    const auto kit = std::find_if(kits.begin(), kits.end(), [&](const auto& each) { return each.name == name; });
    if (kit == kits.end()) {
      names.append(", no kit ").append(name);
      continue;
    }
    ++found;
    model.selectProgram(kit->number);
    // The plug-in reports a program to its host a little later. A program chosen in between must keep its own values.
    if (index % kEachTold == 0) {
      formhost::rest(kTold);
    }
    pair.form->selectProgram(index);
    settle(*pair.form);
    const auto expected = pair.vst2File->makeInstance();
    const auto reader = pair.vst2File->makeInstance();
    expected->setChunk(model.state());
    reader->setChunk(pair.form->chunk());
    bool isEqual = true;
    for (int parameter = 0; parameter < reader->parameterCount(); ++parameter) {
      isEqual = isEqual && reader->parameter(parameter) == expected->parameter(parameter);
    }
    if (!isEqual) {
      ++wrong;
      names.append(", ").append(name);
    }
  }
  return verdict(count > 1 && found == tried && wrong == 0,
                 "%d of %d host programs, %d of them kits, %d with other values%s", tried, count, found, wrong,
                 names.c_str());
}

/// Returns by how many seconds a tone is late, from its phase: it starts with a note at frame 0.
double delayOf(HostedPlugin& plugin, double rate) {
  const std::vector<Hit> hit{{0, 36, 127}};
  const Sound sound = play(plugin, hit, static_cast<int>(1.6 * rate), blocksOf(kPlainBlock));
  return -phaseAt(sound.left, rate, SineContent::kHertz, 1.0) / SineContent::kHertz;
}

/// Compares the reported latency with that of a tone's phase, both relative to the engine's own rate.
Verdict latency(const CheckSettings& settings) {
  const SineContent sine;
  const auto file = settings.load();
  const auto plugin = file->makeInstance();
  const double period = 1.0 / SineContent::kHertz;
  constexpr double kMostApart = 1.0;
  constexpr int kMostLooks =
      400;  // The host hears of a new latency through two message threads, late on a busy machine.
  double engineDelay = 0.0;
  double worst = 0.0;  // In frames of the host, or of the engine where those are longer.
  float worstRate = 0.0F;
  int rates = 0;
  for (const float rate : {kPlainRate, 22050.0F, 32000.0F, 48000.0F, 88200.0F, 96000.0F, 192000.0F}) {
    plugin->start(rate, kPlainBlock);
    playSineOn(*plugin);
    settle(*plugin);
    const double delay = delayOf(*plugin, static_cast<double>(rate));
    if (rates++ == 0) {
      engineDelay = delay;
    }
    const auto look = [&] {
      const double told = plugin->latencyFrames() / static_cast<double>(rate);
      return std::remainder(delay - engineDelay - told, period) * static_cast<double>(std::min(rate, kPlainRate));
    };
    double apart = look();
    for (int looks = 1; looks < kMostLooks && std::abs(apart) > kMostApart; ++looks) {
      apart = look();
    }
    if (std::abs(apart) > std::abs(worst)) {
      worst = apart;
      worstRate = rate;
    }
  }
  return verdict(std::abs(worst) <= kMostApart, "%d rates: what is told is at most %.2f frames off (at %.0f Hz)", rates,
                 worst, static_cast<double>(worstRate));
}

/// Both forms at once, each on its own thread, must sound as they do alone.
Verdict twoForms(const CheckSettings& settings) {
  constexpr int kFrames = 88200;
  const std::vector<Hit> hits = hitsOver(kFrames, 9);
  Pair alone(settings);
  std::array<SoundFacts, 2> expected;
  for (std::size_t which = 0; which < expected.size(); ++which) {
    HostedPlugin& plugin = which == 0 ? *alone.form : *alone.vst2;
    settle(plugin);
    expected[which].add(play(plugin, hits, kFrames, blocksOf(256)));
  }
  int right = 0;
  for (int round = 0; round < settings.count(3, 20); ++round) {
    Pair pair(settings);
    settle(*pair.form);
    settle(*pair.vst2);
    std::array<SoundFacts, 2> facts;
    std::thread other([&] { facts[1].add(play(*pair.vst2, hits, kFrames, blocksOf(256))); });
    facts[0].add(play(*pair.form, hits, kFrames, blocksOf(256)));
    other.join();
    right += facts[0].hash == expected[0].hash && facts[1].hash == expected[1].hash && facts[0].isHeard() ? 1 : 0;
  }
  const int rounds = settings.count(3, 20);
  return verdict(right == rounds && expected[0].hash == expected[1].hash, "%d of %d rounds sound as each form alone",
                 right, rounds);
}

}  // namespace

std::vector<Check> formChecks() {
  return {{"same parameters as VST 2", sameParameters, CheckedForms::others},
          {"values outside", valuesOutside, CheckedForms::others},
          {"same samples as VST 2", sameSamples, CheckedForms::others},
          {"host programs", programs, CheckedForms::others},
          {"latency", latency, CheckedForms::others},
          {"two forms in one process", twoForms, CheckedForms::others}};
}

}  // namespace sivray::check
