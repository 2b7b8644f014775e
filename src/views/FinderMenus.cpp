// Each item keeps what it needs, since the panel may go while its menu is open.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/FinderMenus.h"

#include <optional>
#include <utility>

#include "widgets/Text.h"

namespace tesh::bramel {

juce::PopupMenu similarMenu(const FinderModels& models, std::uint64_t part, std::int64_t category, std::int64_t index,
                            std::function<void()> chosen) {
  const auto tell = [told = std::move(chosen)] {
    if (told) {
      told();
    }
  };
  const auto give = [selector = models.selector, part, tell](const SivraySampleFinder::Sample& sample) {
    return [=] {
      selector->selectSample(part, sample.category, sample.index);
      tell();
    };
  };
  juce::PopupMenu menu;
  menu.addSectionHeader("Similar");
  for (const SivraySampleFinder::Sample& sample : models.finder->similarTo(category, index)) {
    menu.addItem(textFrom(sample.name), give(sample));
  }
  menu.addSeparator();
  const std::optional<SivraySampleFinder::Sample> other = models.finder->somethingElse(category, index);
  menu.addItem("Something else", other.has_value(), false, give(other.value_or(SivraySampleFinder::Sample{})));
  const auto goBack = [finder = models.finder, part, tell] {
    finder->goBack(part);
    tell();
  };
  menu.addItem("Back", models.finder->previousOf(part).has_value(), false, goBack);
  return menu;
}

juce::PopupMenu varyMenu(const std::shared_ptr<SivraySampleFinder>& finder) {
  juce::PopupMenu menu;
  menu.addItem("Vary", finder->canVary(), false,
               [finder] { finder->vary(static_cast<std::uint32_t>(juce::Random::getSystemRandom().nextInt())); });
  menu.addItem("Back", finder->canUndoVary(), false, [finder] { finder->undoVary(); });
  return menu;
}

}  // namespace tesh::bramel
