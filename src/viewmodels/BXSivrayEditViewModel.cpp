// Sets key states by the category of each pad's sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXSivrayEditViewModel.h"

#include <array>
#include <utility>

#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr std::uint8_t kNotes = 128;

/// For notes without a pad, and for samples of an unknown category.
constexpr std::uint32_t kNoSound = 17;

/// By category: kick, snare, clap, closed and open hi-hat, tom, cymbal, percussion, effects, hits.
constexpr std::array<std::uint32_t, 10> kStateOfCategory{0, 3, 15, 8, 8, 1, 7, 1, 10, 10};

const vimo::SampleLibrary* libraryOf(const IPluginEditViewModelOwner& model) {
  auto* const processor = model.getMacroController();
  return processor == nullptr ? nullptr : processor->generator().sampleLibrary();
}

}  // namespace

BXSivrayEditViewModel::BXSivrayEditViewModel(std::shared_ptr<IPluginEditViewModelOwner> family)
    : BXPluginEditViewModelProxy(std::move(family)),
      sampleSelector(std::make_shared<SivraySampleSelectorViewModel>(wrappedModel(), libraryOf(wrappedModel()))),
      sampleFinder(std::make_shared<SivraySampleFinder>(wrappedModel(), libraryOf(wrappedModel()), sampleSelector)) {
  updateKeyStates();
}

std::shared_ptr<ISampleSelectorViewModel> BXSivrayEditViewModel::getSampleSelectorViewModel() const {
  return sampleSelector;
}

std::shared_ptr<SivraySampleFinder> BXSivrayEditViewModel::getSampleFinder() const { return sampleFinder; }

std::string BXSivrayEditViewModel::getSampleName(std::uint64_t part) const {
  return sampleSelector->getSampleName(sampleSelector->getCategoryIndex(part), sampleSelector->getSampleIndex(part));
}

void BXSivrayEditViewModel::notifyAllParametersChanged() {
  BXPluginEditViewModelProxy::notifyAllParametersChanged();
  updateKeyStates();
}

void BXSivrayEditViewModel::notifyParameterChanged(std::uint64_t index) {
  BXPluginEditViewModelProxy::notifyParameterChanged(index);
  if (panel::choosesSound(index)) {
    updateKeyStates();
  }
}

void BXSivrayEditViewModel::updateKeyStates() {
  for (std::uint8_t note = 0; note < kNotes; ++note) {
    std::uint32_t state = kNoSound;
    if (const auto pad = panel::padOfNote(note)) {
      const auto category = static_cast<std::uint64_t>(sampleSelector->getCategoryIndex(*pad));
      state = category < kStateOfCategory.size() ? kStateOfCategory[static_cast<std::size_t>(category)] : kNoSound;
    }
    wrappedModel().setKeyState(note, state);
  }
}

}  // namespace tesh::bramel::plugin::sivray
