// Measures a hit's levels over time, the energy of its bands, and the peaks of its spectrum.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Figures.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "content/measure/Levels.h"

namespace sivray::content {
namespace {

constexpr int kWholeOrder = 16;
constexpr int kStartOrder = 13;
constexpr int kLateOrder = 15;
constexpr int kMomentOrder = 11;

constexpr double kLevelMilliseconds = 5.0;
constexpr double kAttackMilliseconds = 1.0;
constexpr double kRiseMilliseconds = 0.5;
constexpr double kCrestMilliseconds = 50.0;

/// The value for silence, in dB.
constexpr double kLeastDecibels = -100.0;

double& at(Figures& figures, Figure figure) { return figures[static_cast<std::size_t>(figure)]; }

double ratioInDecibels(double power, double reference) {
  return reference > 0.0 && power > 0.0 ? std::max(10.0 * std::log10(power / reference), kLeastDecibels)
                                        : kLeastDecibels;
}

/// A range of a spectrum's bins. `size` is that of its transform.
std::span<const float> binsBetween(std::span<const float> power, std::size_t size, double low, double high) {
  const auto bin = [&](double hertz) {
    return std::min(static_cast<std::size_t>(std::ceil(hertz * static_cast<double>(size) / kMeasureRate)),
                    power.size());
  };
  return power.subspan(bin(low), bin(high) - bin(low));
}

double sumOf(std::span<const float> bins) { return std::accumulate(bins.begin(), bins.end(), 0.0); }

/// The bin of the highest power between two frequencies.
std::size_t strongestBin(std::span<const float> power, std::size_t size, double low, double high) {
  const auto bins = binsBetween(power, size, low, high);
  return static_cast<std::size_t>(&*std::ranges::max_element(bins) - power.data());
}

double peakOverMedian(std::span<const float> bins) {
  std::vector<float> sorted(bins.begin(), bins.end());
  const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
  std::ranges::nth_element(sorted, middle);
  return -ratioInDecibels(*middle, *std::max_element(middle, sorted.end()));
}

/// The mean frequency by energy, in Hz; 0 for silence. `size` is that of the transform.
double centroidOf(std::span<const float> power, std::size_t size) {
  double weighted = 0.0;
  for (std::size_t i = 0; i < power.size(); ++i) {
    weighted += static_cast<double>(i) * static_cast<double>(power[i]);
  }
  const double total = sumOf(power);
  return total > 0.0 ? weighted / total * kMeasureRate / static_cast<double>(size) : 0.0;
}

double flatnessOf(std::span<const float> bins) {
  constexpr double kLeastPower = 1e-20;
  double logarithms = 0.0;
  for (const float bin : bins) {
    logarithms += std::log10(static_cast<double>(bin) + kLeastPower);
  }
  const auto count = static_cast<double>(bins.size());
  return 10.0 * (logarithms / count - std::log10(sumOf(bins) / count + kLeastPower));
}

/// The highest sample over the loudest stretch.
double crestOf(const Hit& hit) {
  float peak = 0.0F;
  for (const float sample : hit) {
    peak = std::max(peak, std::abs(sample));
  }
  // Zeros before the hit, so that a stretch which begins with it counts as a whole.
  const auto half = static_cast<std::size_t>(kCrestMilliseconds * kMeasureRate / 2000.0);
  std::vector<float> padded(half, 0.0F);
  padded.insert(padded.end(), hit.begin(), hit.end());
  padded.insert(padded.end(), half, 0.0F);
  const std::vector<float> course = powerCourse(padded, kCrestMilliseconds);
  return ratioInDecibels(static_cast<double>(peak) * static_cast<double>(peak), *std::ranges::max_element(course));
}

double countPeaks(std::span<const float> bins, double threshold) {
  int count = 0;
  for (std::size_t i = 1; i + 1 < bins.size(); ++i) {
    const float here = bins[i];
    count += here > bins[i - 1] && here >= bins[i + 1] && static_cast<double>(here) >= threshold ? 1 : 0;
  }
  return count;
}

}  // namespace

const std::array<FigureName, kFigures> kFigureNames{
    {{"attack", "ms"},        {"to -20 dB", "ms"},   {"to -60 dB", "ms"},    {"40-250 to -20", "ms"},
     {"250-2k to -20", "ms"}, {"2-8k to -20", "ms"}, {"8-18k to -20", "ms"}, {"tail", "dB"},
     {"<60", "dB"},           {"60-120", "dB"},      {"120-250", "dB"},      {"250-2k", "dB"},
     {"2-6k", "dB"},          {"6-12k", "dB"},       {">12k", "dB"},         {"centroid", "Hz"},
     {"peak", "Hz"},          {"tone T60", "ms"},    {"second mode", "dB"},  {"peaks to 4k", ""},
     {"ring 0.3-3k", "dB"},   {"ring 3-12k", "dB"},  {"ripple", "dB"},       {"echoes", ""},
     {"body", "dB"},          {"rise", "ms"},        {"crest", "dB"},        {"late centroid", "Hz"},
     {"flatness", "dB"}}};

FigureMeter::FigureMeter()
    : whole(kWholeOrder, Spectrum::Window::none),
      start(kStartOrder, Spectrum::Window::fall),
      late(kLateOrder, Spectrum::Window::none),
      moment(kMomentOrder, Spectrum::Window::hann) {}

Figures FigureMeter::figuresOf(const Hit& hit) {
  Figures figures{};
  if (!hit.empty()) {
    measureLevels(hit, figures);
    measureSpectrum(hit, figures);
    measureLateSpectrum(hit, figures);
    measurePeaks(hit, figures);
  }
  return figures;
}

void FigureMeter::measureLevels(const Hit& hit, Figures& figures) {
  const std::vector<float> course = powerCourse(hit, kLevelMilliseconds);
  at(figures, Figure::attack) = attackTime(powerCourse(hit, kAttackMilliseconds));
  at(figures, Figure::rise) = attackTime(powerCourse(hit, kRiseMilliseconds));
  at(figures, Figure::crest) = crestOf(hit);
  at(figures, Figure::fall20) = fallTime(course, 20.0);
  at(figures, Figure::fall60) = fallTime(course, 60.0);
  at(figures, Figure::tail) = ratioInDecibels(meanPower(hit, 250.0, 500.0), *std::ranges::max_element(course));
  at(figures, Figure::echoes) = echoesOf(hit);

  const auto fallOf = [](const std::vector<float>& band) {
    return fallTime(powerCourse(band, kLevelMilliseconds), 20.0);
  };
  at(figures, Figure::lowFall20) = fallOf(bandOf(hit, 40.0, 250.0));
  at(figures, Figure::airFall20) = fallOf(bandOf(hit, 8000.0, 18000.0));
  const std::vector<float> middle = bandOf(hit, 250.0, 2000.0);
  const std::vector<float> high = bandOf(hit, 2000.0, 8000.0);
  at(figures, Figure::midFall20) = fallOf(middle);
  at(figures, Figure::highFall20) = fallOf(high);
  at(figures, Figure::ripple) = rippleOf(high);
  const auto energyBetween = [&](double from, double to) {
    return (to - from) * (meanPower(middle, from, to) + meanPower(high, from, to));
  };
  at(figures, Figure::body) = ratioInDecibels(energyBetween(5.0, 50.0), energyBetween(0.0, 5.0));
}

void FigureMeter::measureSpectrum(const Hit& hit, Figures& figures) {
  struct Band {
    Figure figure;
    double low, high;
  };
  constexpr Band kBands[]{{Figure::energySub, 20.0, 60.0},      {Figure::energyBass, 60.0, 120.0},
                          {Figure::energyLow, 120.0, 250.0},    {Figure::energyMid, 250.0, 2000.0},
                          {Figure::energyHigh, 2000.0, 6000.0}, {Figure::energyBright, 6000.0, 12000.0},
                          {Figure::energyAir, 12000.0, 22000.0}};
  const auto power = whole.of(hit);
  const double total = sumOf(power);
  for (const Band& band : kBands) {
    at(figures, band.figure) = ratioInDecibels(sumOf(binsBetween(power, whole.size(), band.low, band.high)), total);
  }
  at(figures, Figure::centroid) = centroidOf(power, whole.size());
  at(figures, Figure::flatness) = flatnessOf(binsBetween(power, whole.size(), 2000.0, 12000.0));
}

void FigureMeter::measureLateSpectrum(const Hit& hit, Figures& figures) {
  constexpr double kFrom = 0.2;
  constexpr double kTo = 0.8;
  const std::span<const float> all(hit);
  const std::size_t first = std::min(static_cast<std::size_t>(kFrom * kMeasureRate), hit.size());
  const std::size_t last = std::min(static_cast<std::size_t>(kTo * kMeasureRate), hit.size());
  const auto power = late.of(all.subspan(first, last - first));
  at(figures, Figure::lateCentroid) = centroidOf(power, late.size());
}

void FigureMeter::measurePeaks(const Hit& hit, Figures& figures) {
  constexpr double kPeakRange = 1.0e-3;  // 30 dB.
  const auto power = start.of(hit);
  const std::size_t size = start.size();
  const double binHertz = kMeasureRate / static_cast<double>(size);
  const std::size_t strongest = strongestBin(power, size, 30.0, 20000.0);
  const std::size_t tone = strongestBin(power, size, 30.0, 2000.0);
  const double toneHertz = static_cast<double>(tone) * binHertz;
  at(figures, Figure::peakHertz) = static_cast<double>(strongest) * binHertz;
  at(figures, Figure::secondMode) =
      ratioInDecibels(power[strongestBin(power, size, 1.25 * toneHertz, 3.3 * toneHertz)], power[tone]);
  at(figures, Figure::peaks) = countPeaks(binsBetween(power, size, 30.0, 4000.0), kPeakRange * power[strongest]);
  at(figures, Figure::ringing) = peakOverMedian(binsBetween(power, size, 300.0, 3000.0));
  at(figures, Figure::ringingHigh) = peakOverMedian(binsBetween(power, size, 3000.0, 12000.0));
  at(figures, Figure::toneFall60) = toneFall(hit, toneHertz);
}

/// The time follows from the slope of a line through the levels of the tone, from the highest down to 30 dB below it.
double FigureMeter::toneFall(const Hit& hit, double hertz) {
  constexpr std::size_t kStep = 441;  // 10 ms.
  constexpr double kRange = 30.0;
  constexpr double kLongest = 20000.0;
  std::vector<double> levels;
  for (std::size_t first = 0; first < hit.size() && levels.size() < 200; first += kStep) {
    const auto power = moment.of(std::span(hit).subspan(first));
    const auto bin = static_cast<std::size_t>(std::lround(hertz * static_cast<double>(moment.size()) / kMeasureRate));
    levels.push_back(10.0 * std::log10(static_cast<double>(power[bin]) + 1e-12));
  }
  const auto highest = std::ranges::max_element(levels);
  const auto end = std::find_if(highest, levels.end(), [=](double level) { return level < *highest - kRange; });
  const auto count = static_cast<double>(end - highest);
  if (count < 2.0) {
    return 0.0;
  }
  const double middle = (count - 1.0) / 2.0;
  const double mean = std::accumulate(highest, end, 0.0) / count;
  double slope = 0.0;
  for (auto level = highest; level < end; ++level) {
    slope += (static_cast<double>(level - highest) - middle) * (*level - mean);
  }
  slope *= 12.0 / (count * (count * count - 1.0));  // In dB a step.
  return slope < 0.0 ? std::min(-60.0 / slope * 1000.0 * kStep / kMeasureRate, kLongest) : kLongest;
}

}  // namespace sivray::content
