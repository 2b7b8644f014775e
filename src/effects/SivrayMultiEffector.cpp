// Applies changes of type and switch, crossfades between two effects, and mixes with the dry sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/SivrayMultiEffector.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

using cofu::core::kFullScale;
using cofu::core::saturate;

namespace {

constexpr int kParameterCount = 4;

/// Decrease of the crossfade position per sample: a crossfade lasts 45 samples.
constexpr int kFadeStep = 743;

/// Samples that a new effect stays in immediate mode, rounded up to the block.
constexpr int kImmediateSamples = 44;

/// Transport messages in the event stream.
enum : int { kRestartRhythmic = 2, kRestartAny = 3 };

constexpr bool isRhythmic(int type) { return type == kTypePump || type == kTypeSlicer || type == kTypeGrainShifter; }

constexpr bool isParameter(int index) { return index >= 0 && index < kParameterCount; }

/// Multiplies by the full-scale gain: (x * 32767) >> 15 is one less for positive samples, and one more for -32768.
void scaleByFullGain(StereoBlock from, StereoBlock to, int count) {
  const auto scaled = [](std::int16_t sample) {
    return std::max(static_cast<std::int16_t>(sample - (sample > 0 ? 1 : 0)), std::int16_t{-kFullScale});
  };
  std::transform(from.left, from.left + count, to.left, scaled);
  std::transform(from.right, from.right + count, to.right, scaled);
}

void copy(StereoBlock from, StereoBlock to, int count) {
  std::copy_n(from.left, count, to.left);
  std::copy_n(from.right, count, to.right);
}

/// A crossfade: `a` times its gain plus `b` times the remainder of full scale.
constexpr std::int16_t blend(std::int32_t a, std::int32_t b, std::int32_t gainOfA) {
  return static_cast<std::int16_t>(saturate(((a * gainOfA) >> 15) + ((b * (kFullScale - gainOfA)) >> 15)));
}

}  // namespace

SivrayMultiEffector::SivrayMultiEffector() : effects(makeEffects(memory)), buffers(std::make_unique<Buffers>()) {
  SivrayFx& first = *effectOf(kTypeShortDelay);
  current = &first;
  first.wake();
  first.setParameter(kEdit1, 0);
  first.setParameter(kEdit2, 0);
}

SivrayMultiEffector::~SivrayMultiEffector() = default;

SivrayFx* SivrayMultiEffector::effectOf(int type) const {
  return type >= 0 && type < kEffectTypeCount ? effects[static_cast<std::size_t>(type)].get() : nullptr;
}

int SivrayMultiEffector::setValue(int index, int value) {
  if (!isParameter(index)) {
    return 0;
  }
  values[static_cast<std::size_t>(index)] = value;
  if (index == kEffectType) {
    if (value != pendingType.peek()) {
      pendingType.post(value);
    }
  } else if (index == kEffectSwitch) {
    pendingSwitch.post(value == 1);
  } else if (SivrayFx* const effect = current) {
    effect->setParameter(static_cast<unsigned>(index), values[static_cast<std::size_t>(index)]);
  }
  return value;
}

int SivrayMultiEffector::value(int index) const {
  return isParameter(index) ? values[static_cast<std::size_t>(index)].load() : 0;
}

void SivrayMultiEffector::setTempo(int tempoTenths) {
  tempo = tempoTenths;
  if (SivrayFx* const effect = current) {
    effect->setTempo(tempoTenths);
  }
}

void SivrayMultiEffector::notify(int code) {
  if (SivrayFx* const effect = current) {
    effect->notify(code);
  }
}

void SivrayMultiEffector::transport(int message) {
  if (message == kRestartAny || (message == kRestartRhythmic && isRhythmic(values[kEffectType]))) {
    notify(kRestart);
  }
}

void SivrayMultiEffector::reset() {
  fading = false;
  wetTarget = pendingSwitch.peek() ? kFullScale : 0;
  wetState = wetTarget << 15;
  for (const std::unique_ptr<SivrayFx>& effect : effects) {
    const bool awake = effect->isAwake();
    if (!awake) {
      effect->wake();
    }
    effect->reset();
    if (!awake) {
      effect->sleep();
    }
  }
}

void SivrayMultiEffector::takeSwitch() {
  if (bool isOn = false; pendingSwitch.takeInto(isOn)) {
    wetTarget = isOn ? kFullScale : 0;
  }
}

void SivrayMultiEffector::takeType() {
  int type = 0;
  if (!pendingType.takeInto(type)) {
    return;
  }
  // If a crossfade is still running, its old effect is dropped without `sleep`.
  SivrayFx* const next = effectOf(type);
  previous = current;
  current = next;
  fadePosition = kFullScale;
  fading = true;
  immediateCounter = 0;
  if (next == nullptr) {
    return;
  }
  next->wake();
  next->reset();
  bringUpToDate(*next);
  next->setImmediate(true);
}

/// Sends all values to an effect that has just become the current one. If another thread changes a value meanwhile, it
/// is sent again, so that the newest value arrives last.
void SivrayMultiEffector::bringUpToDate(SivrayFx& effect) {
  const auto send = [](const std::atomic<int>& value, auto&& take) {
    int sent = 0;
    do {
      sent = value;
      take(sent);
    } while (value != sent);
  };
  send(values[kEdit1], [&](int edit) { effect.setParameter(kEdit1, edit); });
  send(values[kEdit2], [&](int edit) { effect.setParameter(kEdit2, edit); });
  send(tempo, [&](int tenths) { effect.setTempo(tenths); });
}

void SivrayMultiEffector::process(StereoBlock& block, int count) {
  if (count > kMaxBlock) {
    return;
  }
  takeSwitch();
  takeType();
  if (count <= 0) {
    return;
  }
  const bool onlyWet = !fading && wetTarget == kFullScale && (wetState >> 15) == kFullScale;
  if (onlyWet) {
    // At full wet the dry sound is not needed, so the effect may overwrite it.
    runEffect(block, count);
    scaleByFullGain(block, block, count);
  } else {
    copy(block, buffers->work.from(0), count);
    crossfade(count);
    mix(block, count);
  }
  countImmediate(count);
}

bool SivrayMultiEffector::skip(int count) {
  const bool changes = pendingSwitch.waits() || pendingType.waits() || immediateCounter >= 0;
  if (changes || fading || (wetState >> 15) != wetTarget) {
    return false;
  }
  SivrayFx* const effect = current;
  return effect == nullptr || effect->skip(static_cast<unsigned>(count));
}

void SivrayMultiEffector::runEffect(StereoBlock block, int count) {
  if (SivrayFx* const effect = current) {
    effect->process(block, static_cast<unsigned>(count));
  }
}

void SivrayMultiEffector::crossfade(int count) {
  Buffers& b = *buffers;
  if (fading) {
    copy(b.work.from(0), b.oldPath.from(0), count);
    copy(b.work.from(0), b.newPath.from(0), count);
  }
  int done = 0;
  while (fading && done < count) {
    // Deliberately longer than the crossfade: the rest of the block still passes through `blend`, which rounds.
    const int run = std::min(count - done, (std::max(fadePosition / kFadeStep, 1) + 1) * kFadeStep);
    fadeRun(done, run);
    done += run;
  }
  if (done < count) {
    runEffect(b.work.from(done), count - done);
  }
}

void SivrayMultiEffector::fadeRun(int start, int length) {
  StereoBlock oldPath = buffers->oldPath.from(start);
  const StereoBlock newPath = buffers->newPath.from(start);
  const StereoBlock out = buffers->work.from(start);
  if (previous != nullptr) {
    previous->process(oldPath, static_cast<unsigned>(length));
  }
  runEffect(newPath, length);
  for (int i = 0; i < length; ++i) {
    const std::int32_t oldGain = (fadePosition * fadePosition) >> 15;
    out.left[i] = blend(oldPath.left[i], newPath.left[i], oldGain);
    out.right[i] = blend(oldPath.right[i], newPath.right[i], oldGain);
    fadePosition = std::max(fadePosition - kFadeStep, 0);
  }
  if (fadePosition >= 1) {
    return;
  }
  fading = false;
  if (previous != nullptr) {
    previous->sleep();
  }
}

void SivrayMultiEffector::mix(StereoBlock block, int count) {
  const int glided = glideMix(block, count);
  const StereoBlock rest{block.left + glided, block.right + glided};
  scaleByFullGain(wetTarget == 0 ? rest : buffers->work.from(glided), rest, count - glided);
}

/// Mixes while the wet factor moves to its target. Returns the number of frames until it has arrived.
int SivrayMultiEffector::glideMix(StereoBlock block, int count) {
  const StereoBlock wet = buffers->work.from(0);
  int i = 0;
  for (; i < count && (wetState >> 15) != wetTarget; ++i) {
    wetState += (wetTarget - (wetState >> 15)) * kGlide;
    const std::int32_t gain = wetState >> 15;
    block.left[i] = blend(wet.left[i], block.left[i], gain);
    block.right[i] = blend(wet.right[i], block.right[i], gain);
  }
  return i;
}

void SivrayMultiEffector::countImmediate(int count) {
  if (immediateCounter < 0) {
    return;
  }
  immediateCounter += count;
  if (immediateCounter < kImmediateSamples) {
    return;
  }
  immediateCounter = -1;
  if (SivrayFx* const effect = current) {
    effect->setImmediate(false);
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
