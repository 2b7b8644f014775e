// Connects the drum module's view model and view to its instrument.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/SivrayEditorProvider.h"

#include "viewmodels/BXInstrumentEditViewModel.h"
#include "viewmodels/BXSivrayEditViewModel.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"
#include "views/PanelTable.h"
#include "views/SivrayEditView.h"

namespace tesh::bramel::plugin::sivray {
namespace {

using FamilyModel = std::shared_ptr<BXInstrumentEditViewModel>;
using OwnerModel = std::shared_ptr<IPluginEditViewModelOwner>;

OwnerModel drumModelOn(const FamilyModel& family) {
  auto model = std::make_shared<BXSivrayEditViewModel>(family);
  model->setTooltipProvider(std::make_shared<tooltip::SivrayTooltipProvider>());
  return model;
}

/// Null if `base` is an instrument of another kind.
FamilyModel familyModelOf(const std::shared_ptr<vst::BramelInstrumentBase>& base) {
  auto instrument = std::dynamic_pointer_cast<vst::BramelInstrument>(base);
  return instrument == nullptr ? nullptr : std::make_shared<BXInstrumentEditViewModel>(std::move(instrument));
}

}  // namespace

cofu::core::boxed::Box SivrayEditorProvider::createViewModel(
    const std::shared_ptr<vst::BramelInstrumentBase>& instrument) {
  const FamilyModel family = familyModelOf(instrument);
  return family == nullptr ? nullptr : cofu::core::boxed::makeBox(drumModelOn(family));
}

vst::InstrumentEditorParts SivrayEditorProvider::createEditor(
    const std::shared_ptr<vst::BramelInstrumentBase>& instrument, int imageScale) {
  const FamilyModel family = familyModelOf(instrument);
  if (family == nullptr) {
    return {};
  }
  family->addFont(panel::kCaptionFace);
  family->addFont(panel::kDisplayFace);
  family->setImageScale(imageScale);
  const OwnerModel model = drumModelOn(family);
  const auto view = std::make_shared<SivrayEditView>();
  model->setListener(view);
  view->setViewModel(model);
  return {cofu::core::boxed::makeBox(std::shared_ptr<juce::Component>(view)), cofu::core::boxed::makeBox(model)};
}

}  // namespace tesh::bramel::plugin::sivray
