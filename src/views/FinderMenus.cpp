// JUCE runs a chosen item after its menu has closed. If the panel no longer exists by then, the item must do nothing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/FinderMenus.h"

#include <optional>
#include <utility>

#include "widgets/Text.h"

namespace tesh::bramel {
namespace {

/// The action of an item: `act(model)`, or nothing if the model no longer exists.
template <typename Model, typename Act>
std::function<void()> actionOn(const std::shared_ptr<Model>& model, Act act) {
  return [watched = std::weak_ptr<Model>(model), act] {
    if (const auto held = watched.lock()) {
      act(*held);
    }
  };
}

}  // namespace

juce::PopupMenu similarMenu(const FinderModels& models, std::uint64_t part, std::int64_t category, std::int64_t index,
                            std::function<void()> chosen) {
  const auto tell = [told = std::move(chosen)] {
    if (told) {
      told();
    }
  };
  const auto give = [&](const SivraySampleFinder::Sample& sample) {
    return actionOn(models.selector, [part, sample, tell](ISampleSelectorViewModel& selector) {
      selector.selectSample(part, sample.category, sample.index);
      tell();
    });
  };
  juce::PopupMenu menu;
  menu.addSectionHeader("Similar");
  for (const SivraySampleFinder::Sample& sample : models.finder->similarTo(category, index)) {
    menu.addItem(textFrom(sample.name), give(sample));
  }
  menu.addSeparator();
  const std::optional<SivraySampleFinder::Sample> other = models.finder->somethingElse(category, index);
  menu.addItem("Something else", other.has_value(), false, give(other.value_or(SivraySampleFinder::Sample{})));
  const auto goBack = actionOn(models.finder, [part, tell](SivraySampleFinder& finder) {
    finder.goBack(part);
    tell();
  });
  menu.addItem("Back", models.finder->previousOf(part).has_value(), false, goBack);
  return menu;
}

juce::PopupMenu varyMenu(const std::shared_ptr<SivraySampleFinder>& finder) {
  const auto vary = [](SivraySampleFinder& held) {
    held.vary(static_cast<std::uint32_t>(juce::Random::getSystemRandom().nextInt()));
  };
  juce::PopupMenu menu;
  menu.addItem("Vary", finder->canVary(), false, actionOn(finder, vary));
  menu.addItem("Back", finder->canUndoVary(), false,
               actionOn(finder, [](SivraySampleFinder& held) { held.undoVary(); }));
  return menu;
}

}  // namespace tesh::bramel
