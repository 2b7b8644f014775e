// Running means, thresholds and band filters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Levels.h"

#include <algorithm>
#include <cmath>

#include "content/measure/Hit.h"
#include "content/synth/Filters.h"

namespace sivray::content {
namespace {

std::size_t framesAt(double milliseconds) {
  return static_cast<std::size_t>(std::lround(milliseconds * kMeasureRate / 1000.0));
}

double millisecondsOf(std::ptrdiff_t frames) { return static_cast<double>(frames) * 1000.0 / kMeasureRate; }

double powerDecibels(double power) { return 10.0 * std::log10(power + 1e-12); }

/// Two second-order filters with these qualities make a Butterworth filter of fourth order.
constexpr double kQualities[]{0.54119610, 1.30656296};

}  // namespace

std::vector<float> powerCourse(std::span<const float> samples, double milliseconds) {
  const std::size_t width = std::max<std::size_t>(framesAt(milliseconds), 1);
  const std::size_t half = width / 2;
  std::vector<float> course(samples.size());
  const auto powerAt = [&](std::size_t i) {
    return i < samples.size() ? static_cast<double>(samples[i]) * static_cast<double>(samples[i]) : 0.0;
  };
  double sum = 0.0;
  for (std::size_t i = 0; i < half; ++i) {
    sum += powerAt(i);
  }
  for (std::size_t i = 0; i < samples.size(); ++i) {
    sum += powerAt(i + half);
    sum -= i + half >= width ? powerAt(i + half - width) : 0.0;
    course[i] = static_cast<float>(std::max(sum, 0.0) / static_cast<double>(width));
  }
  return course;
}

double fallTime(std::span<const float> course, double decibels) {
  if (course.empty()) {
    return 0.0;
  }
  const auto peak = std::ranges::max_element(course);
  const float threshold = *peak * static_cast<float>(std::pow(10.0, -decibels / 10.0));
  auto last = course.end() - 1;
  while (last > peak && *last < threshold) {
    --last;
  }
  return millisecondsOf(last - peak);
}

double attackTime(std::span<const float> course) {
  if (course.empty()) {
    return 0.0;
  }
  const float peak = *std::ranges::max_element(course);
  const auto reaching = [&](float amplitude) {
    return std::ranges::find_if(course, [=](float power) { return power >= amplitude * amplitude * peak; });
  };
  return millisecondsOf(reaching(0.9F) - reaching(0.1F));
}

double meanPower(std::span<const float> samples, double from, double to) {
  const std::size_t first = framesAt(from);
  const std::size_t last = framesAt(to);
  double sum = 0.0;
  for (std::size_t i = first; i < std::min(last, samples.size()); ++i) {
    sum += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
  }
  return sum / static_cast<double>(last - first);
}

std::vector<float> bandOf(std::span<const float> samples, double lowHertz, double highHertz) {
  Biquad filters[]{Biquad::highPass(lowHertz, kQualities[0]), Biquad::highPass(lowHertz, kQualities[1]),
                   Biquad::lowPass(highHertz, kQualities[0]), Biquad::lowPass(highHertz, kQualities[1])};
  std::vector<float> band;
  band.reserve(samples.size());
  for (const float sample : samples) {
    double value = static_cast<double>(sample);
    for (Biquad& filter : filters) {
      value = filter.next(value);
    }
    band.push_back(static_cast<float>(value));
  }
  return band;
}

double rippleOf(std::span<const float> samples) {
  constexpr double kStep = 10.0;
  constexpr double kFirst = 20.0;
  constexpr double kLast = 200.0;
  std::vector<double> levels;
  for (double at = kFirst; at < kLast; at += kStep) {
    levels.push_back(powerDecibels(meanPower(samples, at, at + kStep)));
  }
  double sum = 0.0;
  for (std::size_t i = 1; i + 1 < levels.size(); ++i) {
    const double apart = levels[i] - 0.5 * (levels[i - 1] + levels[i + 1]);
    sum += apart * apart;
  }
  // The line between two rough neighbours is rough, too: 1 + 1/4 + 1/4 times the variance of one step.
  return std::sqrt(sum / (1.5 * static_cast<double>(levels.size() - 2)));
}

double echoesOf(std::span<const float> samples) {
  constexpr double kRise = 3.0;
  constexpr int kFirst = 4;
  constexpr int kLast = 30;
  double lowest = 200.0;
  double highest = -200.0;
  bool isRising = false;
  int count = 0;
  for (int at = kFirst; at < kLast; ++at) {
    const double level = powerDecibels(meanPower(samples, at, at + 1.0));
    lowest = std::min(lowest, level);
    highest = std::max(highest, level);
    if (!isRising && level >= lowest + kRise) {
      isRising = true;
      highest = level;
      ++count;
    } else if (isRising && level <= highest - kRise) {
      isRising = false;
      lowest = level;
    }
  }
  return count;
}

}  // namespace sivray::content
