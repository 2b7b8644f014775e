// Finds the hits of drum sets, by their descriptions or by the names of their files, and reads them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/References.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <stdexcept>

#include "content/Files.h"
#include "content/pack/AudioFile.h"
#include "content/pack/Categories.h"
#include "terminal/NamedFile.h"

namespace sivray::content {
namespace {

struct HitFile {
  std::string drum;
  juce::File file;
  double hardest = 1.0;  ///< The highest velocity of its layer, 0 to 1.
};

std::string standardText(const juce::String& text) { return text.toStdString(); }

/// Sets of machines and electronic sounds, by words in their names.
SoundSource sourceOf(const std::string& set) {
  std::string small(set);
  std::ranges::transform(small, small.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  constexpr std::string_view kWords[]{"electr", "emulation", "machine", "synth",     "808",
                                      "909",    "beat",      "break",   "audiophob", "rumpf"};
  const bool isMachine =
      std::ranges::any_of(kWords, [&](std::string_view word) { return small.find(word) != std::string::npos; });
  return isMachine ? SoundSource::machine : SoundSource::acoustic;
}

/// Appends the files below an instrument or one of its components.
void addLayers(const juce::XmlElement& element, const std::string& drum, const juce::File& folder,
               std::vector<HitFile>& files) {
  const juce::String name = element.getChildElementAllSubText("filename", {});
  if (name.isNotEmpty()) {
    files.push_back({drum, folder.getChildFile(name), element.getChildElementAllSubText("max", "1").getDoubleValue()});
  }
  for (const auto* child : element.getChildIterator()) {
    if (child->hasTagName("layer") || child->hasTagName("instrumentComponent")) {
      addLayers(*child, drum, folder, files);
    }
  }
}

/// Keeps the harder half of a drum's layers, at least one.
void keepHard(std::vector<HitFile>& layers) {
  std::ranges::stable_sort(layers, std::greater{}, &HitFile::hardest);
  layers.resize((layers.size() + 1) / 2);
}

std::vector<HitFile> filesOfDescription(const juce::File& description) {
  std::vector<HitFile> files;
  const auto root = juce::parseXML(description);
  const auto* list = root == nullptr ? nullptr : root->getChildByName("instrumentList");
  if (list == nullptr) {
    return files;
  }
  for (const auto* instrument : list->getChildWithTagNameIterator("instrument")) {
    std::vector<HitFile> layers;
    addLayers(*instrument, standardText(instrument->getChildElementAllSubText("name", {})),
              description.getParentDirectory(), layers);
    keepHard(layers);
    files.insert(files.end(), layers.begin(), layers.end());
  }
  return files;
}

/// Without a description, each file counts as a drum; the name of its folder also helps to find its group.
std::vector<HitFile> filesOfNames(const juce::File& folder) {
  std::vector<HitFile> files;
  for (const auto& file : folder.findChildFiles(juce::File::findFiles, true, "*.wav;*.aif;*.aiff;*.flac")) {
    files.push_back({standardText(file.getParentDirectory().getFileName()), file, 1.0});
  }
  std::ranges::sort(files, {}, [](const HitFile& hit) { return standardText(hit.file.getFullPathName()); });
  return files;
}

/// Returns the group that fits both names, of the drum and of the file.
std::optional<Group> groupOf(const HitFile& hit, SoundSource source) {
  const std::string file = standardText(hit.file.getFileNameWithoutExtension());
  auto match = categoryIn(hit.drum);
  if (!match) {
    match = categoryIn(file);
  }
  return match && match->isSure ? groupOf(match->category, hit.drum + " " + file, source) : std::nullopt;
}

class Reader {
 public:
  explicit Reader(std::vector<Reference>& known) : references(known) {}

  /// Reads the sets in a folder. If no half is given, the sets belong to the two halves alternately.
  void readSets(const std::string& folder, std::optional<Half> half) {
    const auto place = namedFile(folder);
    auto sets = place.findChildFiles(juce::File::findDirectories, false);
    std::ranges::sort(sets, {}, [](const juce::File& set) { return standardText(set.getFileName().toLowerCase()); });
    const std::size_t before = references.size();
    std::array<Half, 2> inTurn{Half::tune, Half::tune};  // The half of the next set, by source.
    for (const auto& set : sets) {
      const SoundSource source = sourceOf(standardText(set.getFileName()));
      Half& next = inTurn[static_cast<std::size_t>(source)];
      if (readSet(set, source, half.value_or(next))) {
        next = next == Half::tune ? Half::judge : Half::tune;
      }
    }
    if (references.size() == before) {
      throw std::runtime_error(folder + ": there is no drum set in it; each has a folder of its own here");
    }
  }

 private:
  /// Reads a set. Returns whether it holds a hit of a group.
  bool readSet(const juce::File& folder, SoundSource source, Half half) {
    const std::string set = standardText(folder.getFileName());
    const juce::File description = folder.getChildFile("drumkit.xml");
    const std::size_t before = references.size();
    for (const HitFile& file : description.existsAsFile() ? filesOfDescription(description) : filesOfNames(folder)) {
      if (const auto group = groupOf(file, source)) {
        add(file, {set, standardText(file.file.getFileName()), file.drum, *group, half, {}, {}, {}});
      }
    }
    return references.size() > before;
  }

  void add(const HitFile& file, Reference reference) {
    try {
      const Wave wave = readAudioFile(standardText(file.file.getFullPathName())).wave;
      reference.hit = hitOf(wave);
      reference.monoLoss = monoLossOf(wave);
    } catch (const std::runtime_error&) {
      return;
    }
    if (reference.hit.empty()) {
      return;
    }
    reference.picture = pictures.pictureOf(reference.hit);
    if (!isDouble(reference)) {
      references.push_back(std::move(reference));
    }
  }

  bool isDouble(const Reference& reference) const {
    constexpr float kSameRecording = 0.5F;
    return std::ranges::any_of(references, [&](const Reference& other) {
      return other.group == reference.group && distance(other.picture, reference.picture) < kSameRecording;
    });
  }

  std::vector<Reference>& references;
  PictureMaker pictures;
};

}  // namespace

std::vector<Reference> readReferences(const std::string& folder) {
  std::vector<Reference> references;
  Reader(references).readSets(folder, std::nullopt);
  return references;
}

void addReferences(std::vector<Reference>& references, const std::string& folder, Half half) {
  Reader(references).readSets(folder, half);
}

std::vector<const Reference*> referencesOf(std::span<const Reference> references, Group group, Half half) {
  std::vector<const Reference*> chosen;
  for (const Reference& reference : references) {
    if (reference.group == group && (half == Half::both || reference.half == half)) {
      chosen.push_back(&reference);
    }
  }
  return chosen;
}

}  // namespace sivray::content
