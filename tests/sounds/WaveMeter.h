// Measures waves: by frequency band, over time, and in comparison with each other.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <map>
#include <numbers>
#include <numeric>
#include <vector>

namespace support {

inline double decibels(double power) { return 10.0 * std::log10(power + 1e-15); }

/// The power spectrum of the first 1.5 seconds.
class Spectrum {
 public:
  explicit Spectrum(const std::vector<std::int16_t>& samples) {
    const std::size_t frames = std::min<std::size_t>(samples.size(), 65536);
    std::vector<std::complex<double>> bins(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(frames));
    const std::size_t size = std::bit_ceil(std::max<std::size_t>(frames, 2));
    bins.resize(size);
    transform(bins);
    for (std::size_t i = 0; i < size / 2; ++i) {
      power.push_back(std::norm(bins[i]));
    }
    whole = std::accumulate(power.begin(), power.end(), 1e-9);
    binHertz = 44100.0 / static_cast<double>(size);
  }

  /// Returns the power between two frequencies relative to the whole, in dB.
  double share(double low, double high) const {
    const auto binFrom = [this](double hertz) {
      return power.begin() + std::min(std::ssize(power), static_cast<std::ptrdiff_t>(std::ceil(hertz / binHertz)));
    };
    return decibels(std::accumulate(binFrom(low), binFrom(high), 0.0) / whole);
  }

  double strongestHertz() const {
    return static_cast<double>(std::max_element(power.begin(), power.end()) - power.begin()) * binHertz;
  }

 private:
  /// Transforms in place; the size must be a power of two.
  static void transform(std::vector<std::complex<double>>& bins) {
    const std::size_t size = bins.size();
    for (std::size_t i = 1, j = 0; i < size; ++i) {
      std::size_t bit = size / 2;
      for (; (j & bit) != 0; bit /= 2) {
        j ^= bit;
      }
      j ^= bit;
      if (i < j) {
        std::swap(bins[i], bins[j]);
      }
    }
    const std::vector<std::complex<double>>& turns = turnsOf(size);
    for (std::size_t half = 1; half < size; half *= 2) {
      for (std::size_t first = 0; first < size; first += 2 * half) {
        for (std::size_t i = 0; i < half; ++i) {
          const std::complex<double> turn = turns[i * (size / 2 / half)];
          const std::complex<double> odd = bins[first + half + i];
          const std::complex<double> turned{odd.real() * turn.real() - odd.imag() * turn.imag(),
                                            odd.real() * turn.imag() + odd.imag() * turn.real()};
          bins[first + half + i] = bins[first + i] - turned;
          bins[first + i] += turned;
        }
      }
    }
  }

  /// Returns the roots of unity for the first half of a turn in `size` steps. Cached for the next spectrum of that
  /// size.
  static const std::vector<std::complex<double>>& turnsOf(std::size_t size) {
    static std::map<std::size_t, std::vector<std::complex<double>>> known;
    std::vector<std::complex<double>>& turns = known[size];
    for (std::size_t i = turns.size(); i < size / 2; ++i) {
      turns.push_back(std::polar(1.0, -2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size)));
    }
    return turns;
  }

  std::vector<double> power;
  double whole = 0.0;
  double binHertz = 0.0;
};

/// Returns the RMS of each section of `seconds`.
inline std::vector<double> courseOf(const std::vector<std::int16_t>& samples, double seconds) {
  const auto hop = static_cast<std::size_t>(seconds * 44100.0);
  std::vector<double> course((samples.size() + hop - 1) / hop);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    course[i / hop] += static_cast<double>(samples[i]) * samples[i] / static_cast<double>(hop);
  }
  std::transform(course.begin(), course.end(), course.begin(), [](double x) { return std::sqrt(x); });
  return course;
}

/// Returns the time after which nothing is louder than 20 dB below the loudest section.
inline double lengthOf(const std::vector<std::int16_t>& samples) {
  const std::vector<double> course = courseOf(samples, 0.005);
  const double threshold = 0.1 * *std::max_element(course.begin(), course.end());
  const auto last = std::find_if(course.rbegin(), course.rend(), [=](double x) { return x > threshold; });
  return 0.005 * static_cast<double>(course.rend() - last);
}

/// Returns the correlation, -1 to 1, of two sounds that start together.
inline double correlation(const std::vector<std::int16_t>& a, const std::vector<std::int16_t>& b) {
  double both = 0.0;
  double first = 1e-9;
  double second = 1e-9;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    both += static_cast<double>(a[i]) * b[i];
    first += static_cast<double>(a[i]) * a[i];
    second += static_cast<double>(b[i]) * b[i];
  }
  return both / std::sqrt(first * second);
}

/// Returns the levels of a sound's bands over time, in dB. Similar sounds have similar levels, even if their noise
/// differs.
inline std::vector<double> fingerprintOf(const std::vector<std::int16_t>& samples) {
  constexpr double kEnds[]{0.01, 0.03, 0.08, 0.2, 0.5, 6.0};
  std::vector<double> print;
  std::size_t first = 0;
  for (const double end : kEnds) {
    const auto last = std::min(samples.size(), static_cast<std::size_t>(end * 44100.0));
    const std::vector<std::int16_t> stretch(samples.begin() + static_cast<std::ptrdiff_t>(std::min(first, last)),
                                            samples.begin() + static_cast<std::ptrdiff_t>(last));
    const double level = decibels(std::inner_product(stretch.begin(), stretch.end(), stretch.begin(), 0.0) / 1e9 /
                                  std::max(1.0, static_cast<double>(stretch.size())));
    const Spectrum spectrum(stretch);
    for (double hertz = 40.0; hertz < 16000.0; hertz *= 1.6) {
      print.push_back(std::max(level + spectrum.share(hertz, hertz * 1.6), -65.0));
    }
    first = last;
  }
  return print;
}

inline double distance(const std::vector<double>& a, const std::vector<double>& b) {
  double sum = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    sum += (a[i] - b[i]) * (a[i] - b[i]);
  }
  return std::sqrt(sum / static_cast<double>(a.size()));
}

}  // namespace support
