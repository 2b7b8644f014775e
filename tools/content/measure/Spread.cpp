// Distances within a group and to recordings, and the votes of the nearest recordings.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Spread.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "content/measure/Statistics.h"

namespace sivray::content {
namespace {

constexpr std::size_t kVoters = 5;

/// Returns the drum without its source: the acoustic group for a machine's.
Group drumOf(Group group) {
  const auto kin = kinOf(group);
  const bool isMachine = group >= Group::machineKick && group <= Group::machineTom;
  return isMachine && kin ? *kin : group;
}

std::vector<const MeasuredWave*> wavesOf(std::span<const MeasuredWave> waves, Group group) {
  std::vector<const MeasuredWave*> chosen;
  for (const MeasuredWave& wave : waves) {
    if (wave.group == group) {
      chosen.push_back(&wave);
    }
  }
  return chosen;
}

/// Returns the least of `count` randomly chosen distances, averaged over all choices. `count` is at most their number.
double nearestOfSome(std::vector<double> distances, std::size_t count) {
  std::ranges::sort(distances);
  double mean = 0.0;
  double left = 1.0;  // The probability that none of the nearer ones is chosen.
  for (std::size_t i = 0; i < distances.size() && left > 0.0; ++i) {
    const double chosen = left * std::min(static_cast<double>(count) / static_cast<double>(distances.size() - i), 1.0);
    mean += chosen * distances[i];
    left -= chosen;
  }
  return mean;
}

struct Unseen {
  double ours = 0.0;  ///< Median distance from a recorded hit to our nearest wave.
  double real = 0.0;  ///< Median distance to the nearest one of as many recordings.
};

Unseen unseenOf(const std::vector<const MeasuredWave*>& waves, std::span<const Reference> references, Group group,
                Half half) {
  const Half other = half == Half::both ? Half::both : half == Half::tune ? Half::judge : Half::tune;
  const auto others = referencesOf(references, group, other);
  std::vector<double> ours;
  std::vector<double> real;
  for (const Reference* hit : referencesOf(references, group, half)) {
    std::vector<double> toWaves;
    std::vector<double> toHits;
    std::ranges::transform(waves, std::back_inserter(toWaves), [&](const MeasuredWave* wave) {
      return static_cast<double>(distance(wave->picture, hit->picture));
    });
    for (const Reference* one : others) {
      if (one->set != hit->set) {
        toHits.push_back(static_cast<double>(distance(one->picture, hit->picture)));
      }
    }
    const std::size_t count = std::min(toWaves.size(), toHits.size());
    if (count > 0) {
      ours.push_back(nearestOfSome(std::move(toWaves), count));
      real.push_back(nearestOfSome(std::move(toHits), count));
    }
  }
  return {medianOf(ours), medianOf(real)};
}

/// Returns the group that most of the five nearest recordings belong to, leaving out the set `without`. In a tie, the
/// group of the nearest recording.
std::optional<Group> readAs(const Picture& picture, std::span<const Reference> references, Half half,
                            const std::string& without) {
  std::vector<std::pair<float, Group>> nearest;
  for (const Reference& reference : references) {
    if ((half == Half::both || reference.half == half) && reference.set != without) {
      nearest.emplace_back(distance(picture, reference.picture), drumOf(reference.group));
    }
  }
  const std::size_t voters = std::min(kVoters, nearest.size());
  std::ranges::partial_sort(nearest, nearest.begin() + static_cast<std::ptrdiff_t>(voters));
  std::array<int, kGroups> votes{};
  for (std::size_t i = 0; i < voters; ++i) {
    ++votes[static_cast<std::size_t>(nearest[i].second)];
  }
  const int most = *std::ranges::max_element(votes);
  for (std::size_t i = 0; i < voters; ++i) {
    if (votes[static_cast<std::size_t>(nearest[i].second)] == most) {
      return nearest[i].second;
    }
  }
  return std::nullopt;
}

double percentOf(std::size_t some, std::size_t all) {
  return all == 0 ? 0.0 : 100.0 * static_cast<double>(some) / static_cast<double>(all);
}

template <typename Things, typename Condition>
double shareOf(const Things& things, Condition condition) {
  return percentOf(static_cast<std::size_t>(std::ranges::count_if(things, condition)), things.size());
}

std::vector<double> valuesOf(const std::vector<Figures>& all, Figure figure) {
  std::vector<double> values;
  std::ranges::transform(all, std::back_inserter(values),
                         [=](const Figures& figures) { return figures[static_cast<std::size_t>(figure)]; });
  return values;
}

std::vector<Figures> figuresOf(const std::vector<const MeasuredWave*>& waves) {
  std::vector<Figures> figures;
  std::ranges::transform(waves, std::back_inserter(figures), &MeasuredWave::figures);
  return figures;
}

std::vector<Figures> figuresOf(const std::vector<const Reference*>& hits) {
  FigureMeter meter;
  std::vector<Figures> figures;
  std::ranges::transform(hits, std::back_inserter(figures),
                         [&](const Reference* hit) { return meter.figuresOf(hit->hit); });
  return figures;
}

/// Returns the share of all pairs in which the first value is higher.
double shareHigher(const std::vector<double>& some, const std::vector<double>& others) {
  double higher = 0.0;
  for (const double one : some) {
    for (const double other : others) {
      higher += one > other ? 1.0 : one == other ? 0.5 : 0.0;
    }
  }
  return higher / static_cast<double>(some.size() * others.size());
}

}  // namespace

double apart(std::span<const Picture* const> pictures) {
  std::vector<double> distances;
  for (std::size_t a = 0; a < pictures.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      distances.push_back(static_cast<double>(distance(*pictures[a], *pictures[b])));
    }
  }
  return medianOf(distances);
}

double apartOf(std::span<const Reference* const> hits) {
  std::vector<double> distances;
  for (std::size_t a = 0; a < hits.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      if (hits[a]->set != hits[b]->set) {
        distances.push_back(static_cast<double>(distance(hits[a]->picture, hits[b]->picture)));
      }
    }
  }
  return medianOf(distances);
}

void printSpread(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                 Half half) {
  out << "ours / recorded        rise, ms      crest, dB     two apart     unseen to nearest    read as it    stereo, "
         "lost\n";
  for (std::size_t index = 0; index < kGroups; ++index) {
    const auto group = static_cast<Group>(index);
    const auto ours = wavesOf(waves, group);
    const auto hits = referencesOf(references, group, half);
    if (ours.empty() || hits.empty()) {
      continue;
    }
    const std::vector<Figures> figures = figuresOf(ours);
    const std::vector<Figures> recorded = figuresOf(hits);
    std::vector<const Picture*> pictures;
    double lost = 0.0;
    for (const MeasuredWave* wave : ours) {
      pictures.push_back(&wave->picture);
      lost = std::max(lost, wave->monoLoss.value_or(0.0));
    }
    const Unseen unseen = unseenOf(ours, references, group, half);
    const auto isRead = [&](const Picture& picture, const std::string& set) {
      return readAs(picture, references, half, set) == drumOf(group);
    };
    const double twoOfOurs = apart(pictures);
    const double twoRecorded = apartOf(hits);
    out << formatted("%-22s", std::string(kGroupNames[index]).c_str())
        << formatted(" %4.1f / %4.1f   %4.1f / %4.1f", medianOf(valuesOf(figures, Figure::rise)),
                     medianOf(valuesOf(recorded, Figure::rise)), medianOf(valuesOf(figures, Figure::crest)),
                     medianOf(valuesOf(recorded, Figure::crest)))
        << formatted("   %4.1f / %4.1f   %4.1f / %4.1f = %4.2f", twoOfOurs, twoRecorded, unseen.ours, unseen.real,
                     unseen.real > 0.0 ? unseen.ours / unseen.real : 0.0)
        << formatted("   %3.0f / %3.0f %%",
                     shareOf(ours, [&](const MeasuredWave* wave) { return isRead(wave->picture, {}); }),
                     shareOf(hits, [&](const Reference* hit) { return isRead(hit->picture, hit->set); }))
        << formatted("   %3.0f / %3.0f %%, %.1f dB\n",
                     shareOf(ours, [](const MeasuredWave* wave) { return wave->monoLoss.has_value(); }),
                     shareOf(hits, [](const Reference* hit) { return hit->monoLoss.has_value(); }), lost);
  }
}

void printTells(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                Half half) {
  constexpr double kFew = 0.2;
  for (std::size_t index = 0; index < kFigureGroups; ++index) {
    const auto group = static_cast<Group>(index);
    const auto ours = wavesOf(waves, group);
    const auto hits = referencesOf(references, group, half);
    if (ours.empty() || hits.empty()) {
      continue;
    }
    const std::vector<Figures> figures = figuresOf(ours);
    const std::vector<Figures> recorded = figuresOf(hits);
    out << kGroupNames[index] << ", told by:";
    for (std::size_t figure = 0; figure < kFigures; ++figure) {
      const auto values = valuesOf(figures, static_cast<Figure>(figure));
      const auto others = valuesOf(recorded, static_cast<Figure>(figure));
      const double higher = shareHigher(values, others);
      if (isTelling(group, figure) && (higher < kFew || higher > 1.0 - kFew)) {
        out << formatted(" %s %.2f (%.4g / %.4g),", std::string(kFigureNames[figure].name).c_str(), higher,
                         medianOf(values), medianOf(others));
      }
    }
    out << '\n';
  }
}

}  // namespace sivray::content
