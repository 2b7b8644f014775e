// Measures waves and prints the tables.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Report.h"

#include <algorithm>
#include <array>
#include <limits>

#include "content/Parallel.h"
#include "content/measure/Spread.h"
#include "content/measure/Statistics.h"

namespace sivray::content {
namespace {

/// Returns the distance of each recording to the nearest one of `others` that is of another set.
std::vector<double> distancesBetween(std::span<const Reference* const> some, std::span<const Reference* const> others) {
  std::vector<double> distances;
  for (const Reference* reference : some) {
    const Nearest nearest = nearestOf(reference->picture, others, reference->set);
    if (nearest.reference != nullptr) {
      distances.push_back(static_cast<double>(nearest.distance));
    }
  }
  return distances;
}

/// Returns the distances of the other half's recordings to those of this one; empty for both halves.
std::vector<double> distancesAcross(std::span<const Reference> references, Group group, Half half) {
  if (half == Half::both) {
    return {};
  }
  const Half other = half == Half::tune ? Half::judge : Half::tune;
  return distancesBetween(referencesOf(references, group, other), referencesOf(references, group, half));
}

std::string distanceText(const std::vector<double>& distances, double part) {
  return distances.empty() ? "   -" : formatted("%4.1f", quantile(distances, part));
}

std::array<std::vector<Figures>, kGroups> figuresByGroup(std::span<const Reference> references) {
  FigureMeter meter;
  std::array<std::vector<Figures>, kGroups> figures;
  for (const Reference& reference : references) {
    figures[static_cast<std::size_t>(reference.group)].push_back(meter.figuresOf(reference.hit));
  }
  return figures;
}

std::vector<double> valuesOf(const std::vector<Figures>& hits, std::size_t figure) {
  std::vector<double> values;
  std::ranges::transform(hits, std::back_inserter(values), [=](const Figures& hit) { return hit[figure]; });
  return values;
}

/// Returns the goal as text: the median D of a group's acoustic waves to recordings may be a little above the D between
/// recordings. Groups of machines have no goal.
std::string goalText(Group group, const std::vector<double>& between) {
  constexpr double kRoom = 1.3;
  constexpr double kMost = 6.5;
  if (between.empty() || (group >= Group::machineKick && group <= Group::machineTom)) {
    return "   -";
  }
  const double goal = kRoom * quantile(between, 0.5);
  return formatted("%4.1f", static_cast<std::size_t>(group) < kFigureGroups ? std::min(goal, kMost) : goal);
}

}  // namespace

std::vector<MeasuredWave> measureWaves(std::span<const SourceWave> waves) {
  std::vector<MeasuredWave> measured(waves.size());
  onAllCores(waves.size(), [&] {
    return [&, pictures = PictureMaker(), meter = FigureMeter()](std::size_t i) mutable {
      MeasuredWave& wave = measured[i];
      wave.name = waves[i].wave.name;
      wave.category = waves[i].wave.category;
      wave.group = waves[i].group;
      wave.monoLoss = monoLossOf(waves[i].wave);
      wave.hit = hitOf(waves[i].wave);
      wave.picture = pictures.pictureOf(wave.hit);
      wave.figures = meter.figuresOf(wave.hit);
    };
  });
  return measured;
}

Nearest nearestOf(const Picture& picture, std::span<const Reference* const> references, const std::string& without) {
  Nearest nearest{nullptr, std::numeric_limits<float>::max()};
  for (const Reference* reference : references) {
    if (reference->set == without) {
      continue;
    }
    const float apart = distance(picture, reference->picture);
    if (apart < nearest.distance) {
      nearest = {reference, apart};
    }
  }
  return nearest;
}

void printWave(std::ostream& out, const MeasuredWave& wave, std::span<const Reference> references, Half half) {
  out << wave.name << ": "
      << (wave.group ? kGroupNames[static_cast<std::size_t>(*wave.group)] : std::string_view("in no group"));
  if (wave.group) {
    const Nearest nearest = nearestOf(wave.picture, referencesOf(references, *wave.group, half));
    if (nearest.reference != nullptr) {
      out << ", D " << formatted("%.1f", static_cast<double>(nearest.distance)) << " to " << nearest.reference->set
          << "/" << nearest.reference->file;
    }
    out << ", " << countOutside(wave.figures, *wave.group) << " figures outside";
  }
  out << '\n';
  for (std::size_t figure = 0; figure < kFigures; ++figure) {
    const auto& [name, unit] = kFigureNames[figure];
    out << formatted("  %-15s%9.1f %-3s", std::string(name).c_str(), wave.figures[figure], std::string(unit).c_str());
    if (wave.group && static_cast<std::size_t>(*wave.group) < kFigureGroups) {
      const Range& range = kTargets[static_cast<std::size_t>(*wave.group)][figure];
      out << formatted("%9.1f ..%9.1f /%9.1f /%9.1f ..%9.1f%s", range.lowest, range.quarter, range.middle,
                       range.threeQuarters, range.highest,
                       isOutside(wave.figures, figure, *wave.group) ? "  <-- outside" : "");
    }
    out << '\n';
  }
}

void printGroups(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                 Half half) {
  out << "group                  hits  real  goal  across  waves  D middle  best  six or more outside\n";
  for (std::size_t index = 0; index < kGroups; ++index) {
    const auto group = static_cast<Group>(index);
    const auto judged = referencesOf(references, group, half);
    std::vector<double> distances;
    int count = 0;
    int many = 0;
    for (const MeasuredWave& wave : waves) {
      if (wave.group != group) {
        continue;
      }
      ++count;
      many += countOutside(wave.figures, group) >= kManyOutside ? 1 : 0;
      if (!judged.empty()) {
        distances.push_back(static_cast<double>(nearestOf(wave.picture, judged).distance));
      }
    }
    const auto all = referencesOf(references, group, Half::both);
    const auto between = distancesBetween(all, all);
    out << formatted("%-23s%4zu  %s  %s    %s  %5d      %s  %s  %3.0f %%\n", std::string(kGroupNames[index]).c_str(),
                     judged.size(), distanceText(between, 0.5).c_str(), goalText(group, between).c_str(),
                     distanceText(distancesAcross(references, group, half), 0.5).c_str(), count,
                     distanceText(distances, 0.5).c_str(), distanceText(distances, 0.0).c_str(),
                     count == 0 ? 0.0 : 100.0 * many / count);
  }
}

void printTwins(std::ostream& out, std::span<const MeasuredWave> waves) {
  int count = 0;
  for (std::size_t a = 0; a < waves.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      const float apart = distance(waves[a].picture, waves[b].picture);
      if (apart < kTwins) {
        ++count;
        out << formatted("%4.1f  ", static_cast<double>(apart)) << waves[b].name << ", " << waves[a].name << '\n';
      }
    }
  }
  out << count << " pairs of waves are closer than D " << formatted("%.1f", static_cast<double>(kTwins)) << '\n';
}

void printTargets(std::ostream& out, std::span<const Reference> references) {
  const auto figures = figuresByGroup(references);
  for (std::size_t index = 0; index < kFigureGroups; ++index) {
    const std::vector<Figures>& own = figures[index];
    std::vector<Figures> drum = own;
    if (const auto other = kinOf(static_cast<Group>(index))) {
      const std::vector<Figures>& more = figures[static_cast<std::size_t>(*other)];
      drum.insert(drum.end(), more.begin(), more.end());
    }
    out << "    // " << kGroupNames[index] << ", " << own.size() << " hits of " << drum.size() << "\n    {{";
    for (std::size_t figure = 0; figure < kFigures; ++figure) {
      const std::vector<double> inner = valuesOf(own, figure);
      const std::vector<double> outer = valuesOf(drum, figure);
      out << (figure == 0 ? "{" : "      {")
          << formatted("%.4g, %.4g, %.4g, %.4g, %.4g}", quantile(outer, 0.05), quantile(inner, 0.25),
                       quantile(inner, 0.5), quantile(inner, 0.75), quantile(outer, 0.95))
          << (figure + 1 == kFigures ? "}},\n" : ",\n");
    }
  }
  out << "    // D of two hits of different sets, by group\n    {";
  for (std::size_t index = 0; index < kFigureGroups; ++index) {
    const double middle = apartOf(referencesOf(references, static_cast<Group>(index), Half::both));
    out << (index == 0 ? "" : ", ") << formatted("%.1f", middle);
  }
  out << "}\n";
}

}  // namespace sivray::content
