// Sets the look-and-feel for the first panel and removes it after the last.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/PanelLook.h"

#include "core/HeldByAll.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel {
namespace {

constexpr const char* kDefaultFace = "Roboto";
constexpr double kAnyHeight = 14.0;

}  // namespace

std::shared_ptr<PanelLook> PanelLook::acquire(IBramelFontProvider& fonts) {
  static cofu::core::HeldByAll<PanelLook> held;
  return held.get([&fonts] { return std::make_shared<PanelLook>(fonts); });
}

PanelLook::PanelLook(IBramelFontProvider& fonts) {
  look.setDefaultFace(fontNamed(fonts, kDefaultFace, kAnyHeight).getTypefacePtr());
  juce::LookAndFeel::setDefaultLookAndFeel(&look);
}

PanelLook::~PanelLook() { juce::LookAndFeel::setDefaultLookAndFeel(nullptr); }

}  // namespace tesh::bramel
