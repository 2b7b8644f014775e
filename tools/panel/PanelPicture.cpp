// Creates instrument and panel, opens the wanted page and pop-up, and saves the picture.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PanelPicture.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>

#include "core/Boxed.h"
#include "core/Text.h"
#include "host/shell/BramelInstrument.h"
#include "host/shell/Construction.h"
#include "terminal/NamedFile.h"
#include "viewmodels/IPluginEditViewModelOwner.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"
#include "views/BWPopupSlotView.h"
#include "views/BWProgramListView.h"
#include "views/SivrayEditView.h"
#include "views/SivrayEditorProvider.h"
#include "widgets/BWStackingView.h"

namespace sivray::panel {
namespace {

using tesh::bramel::vst::BramelInstrument;
using tesh::cofu::core::boxed::valueIn;
namespace sivray_plugin = tesh::bramel::plugin::sivray;

std::shared_ptr<BramelInstrument> makeInstrument(std::span<const std::uint8_t> state) {
  auto instrument = std::make_shared<BramelInstrument>(tesh::bramel::vst::makeProcessor());
  instrument->setTooltipProvider(std::make_unique<tesh::bramel::tooltip::SivrayTooltipProvider>());
  instrument->setState(state.data(), state.size());
  return instrument;
}

/// An open panel: the view inside the component to which pop-ups attach.
class OpenPanel {
 public:
  OpenPanel(const std::shared_ptr<BramelInstrument>& instrument, int imageScale) {
    sivray_plugin::SivrayEditorProvider provider;
    const auto parts = provider.createEditor(instrument, imageScale);
    component = *valueIn<std::shared_ptr<juce::Component>>(parts.view);
    model = *valueIn<std::shared_ptr<tesh::bramel::IPluginEditViewModelOwner>>(parts.viewModel);
    slot.setBounds(component->getLocalBounds());
    slot.addAndMakeVisible(*component);
  }

  sivray_plugin::SivrayEditView& view() { return dynamic_cast<sivray_plugin::SivrayEditView&>(*component); }
  tesh::bramel::IPluginEditViewModelOwner& owner() { return *model; }

  juce::Image picture(double scale) {
    return slot.createComponentSnapshot(slot.getLocalBounds(), true, static_cast<float>(scale));
  }

 private:
  std::shared_ptr<tesh::bramel::IPluginEditViewModelOwner> model;
  std::shared_ptr<juce::Component> component;
  tesh::bramel::BWPopupSlotView slot;
};

void showPage(OpenPanel& panel, const std::string& page) {
  constexpr std::array<const char*, 3> kPages{"sound", "character", "mix"};
  const auto* const found = std::find(kPages.begin(), kPages.end(), page);
  if (found == kPages.end()) {
    throw std::invalid_argument("--page takes sound, character or mix, not '" + page + "'");
  }
  panel.view().selectPage(static_cast<std::uint64_t>(found - kPages.begin()));
}

/// Returns the number after `prefix`; nothing if `text` has another form.
std::optional<std::uint64_t> numberBehind(const std::string& text, const std::string& prefix) {
  return text.starts_with(prefix) ? tesh::cofu::core::readNumber<std::uint64_t>(text.substr(prefix.size()))
                                  : std::nullopt;
}

void openSaveAs(OpenPanel& panel) {
  auto& bar = panel.view().programBar();
  bar.openList();
  if (auto* const list = dynamic_cast<tesh::bramel::BWProgramListView*>(bar.listStack()->getTopPage())) {
    list->openSaveAs();
  }
}

void openOn(OpenPanel& panel, const std::string& what) {
  const auto pad = numberBehind(what, "samples=");
  const auto parameter = numberBehind(what, "tooltip=");
  if (pad && *pad >= 1 && *pad <= tesh::bramel::panel::kPads) {
    panel.view().openSampleSelector(*pad - 1);
  } else if (parameter && panel.view().getControl(*parameter) != nullptr) {
    panel.view().showTooltip(*parameter);
  } else if (what == "programs") {
    panel.view().programBar().openList();
  } else if (what == "save-as") {
    openSaveAs(panel);
  } else if (what == "effects") {
    panel.view().openEffectList();
  } else if (what == "settings") {
    panel.view().openSettings();
  } else if (!what.empty()) {
    throw std::invalid_argument("--open takes " + std::string(kOpenForms) + ", not '" + what + "'");
  }
}

void lightPads(OpenPanel& panel, const std::vector<int>& pads) {
  for (const int pad : pads) {
    panel.owner().getKeyboardViewModelOwner()->noteOn(tesh::bramel::panel::kFirstPadNote + pad - 1);
  }
}

void writePicture(const juce::Image& picture, const std::string& path) {
  const juce::File file = namedFile(path);
  file.deleteFile();
  juce::FileOutputStream stream(file);
  if (!stream.openedOk() || !juce::PNGImageFormat().writeImageToStream(picture, stream)) {
    throw std::runtime_error("cannot write the picture '" + path + "': check that its folder exists and is writable");
  }
}

}  // namespace

void drawPanel(std::span<const std::uint8_t> state, const PanelPictureSettings& settings) {
#ifdef __linux__
  // Pictures need no X server. If JUCE connected to one and that ended, so would the program.
  ::setenv("DISPLAY", "none", 1);
#endif
  const juce::ScopedJuceInitialiser_GUI gui;
  OpenPanel panel(makeInstrument(state), settings.scale > 1.0 ? 2 : 1);
  showPage(panel, settings.page);
  lightPads(panel, settings.litPads);
  openOn(panel, settings.open);
  writePicture(panel.picture(settings.scale), settings.outputPath);
}

}  // namespace sivray::panel
