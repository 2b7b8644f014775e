// Ranges, texts and pages.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/clap/ClapParameters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

#include "host/clap/ClapText.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/ParameterSteps.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"
#include "viewmodels/texts/ValueOfText.h"

namespace tesh::bramel::clap {
namespace {

using namespace panel;

/// Hosts show a parameter of up to 40 values, such as the effect type, as a list. A longer range keeps a slider.
constexpr std::uint64_t kMostListed = 40;

struct PadPage {
  const char* name;
  PadMacro macro;
};

/// In the order of the panel's pages and rows.
constexpr std::array kPadPages{PadPage{"Level", kLevel},   PadPage{"Pitch", kPitch},    PadPage{"Decay", kEnvelopeTime},
                               PadPage{"Punch", kPunch},   PadPage{"Boost", kLowBoost}, PadPage{"Pan", kPan},
                               PadPage{"FX", kEffectSend}, PadPage{"Mute", kMute}};

constexpr std::array<std::size_t, 5> kMasterPage{kEffectTypeMacro, kEffectEdit1Macro, kEffectEdit2Macro,
                                                 kEffectSwitchMacro, kMasterLevelMacro};

/// The group that a host shows the parameter in: its pad's, or none.
std::string moduleOf(std::uint32_t id) {
  if (id < kEffectTypeMacro) {
    return "Pad " + std::to_string(id / kMacrosPerPad + 1);
  }
  if (id < kHiddenPadMacros) {
    return "Master";
  }
  constexpr std::size_t kHiddenPerPad = 4;
  const std::size_t pad = (id - kHiddenPadMacros) / kHiddenPerPad;
  return pad < kPads ? "Pad " + std::to_string(pad + 1) : std::string();
}

}  // namespace

ClapParameters::ClapParameters(vst::BramelInstrument& ofInstrument)
    : instrument(ofInstrument), indexOfId(static_cast<std::size_t>(ofInstrument.cachedParameterCount()), kNone) {
  const auto visible = static_cast<std::uint32_t>(instrument.parameterCount());
  for (std::uint32_t index = 0; index < visible; ++index) {
    const std::uint64_t id = instrument.parameterId(index);
    const std::uint64_t steps = instrument.parameterSteps(id);
    all.push_back(
        {static_cast<std::uint32_t>(id), steps > 1 && steps <= kMostListed ? static_cast<int>(steps) - 1 : 0});
    indexOfId[static_cast<std::size_t>(id)] = index;
  }
}

bool ClapParameters::describe(std::uint32_t index, ParamInfo& info) const {
  if (index >= all.size()) {
    return false;
  }
  const Parameter& parameter = all[index];
  const bool isStepped = !isModulatable(index);
  info = {};
  info.id = parameter.id;
  info.flags =
      ParamFlag::isAutomatable | (isStepped ? ParamFlag::isStepped | ParamFlag::isEnum : ParamFlag::isModulatable);
  info.cookie = reinterpret_cast<void*>(std::uintptr_t{index} + 1);  // NOLINT(performance-no-int-to-ptr): no address.
  copyText(instrument.parameterName(parameter.id), info.name);
  copyText(moduleOf(parameter.id), info.module);
  info.minimum = 0.0;
  info.maximum = isStepped ? parameter.lastState : 1.0;
  info.defaultValue = hostValue(index, instrument.parameterDefault(parameter.id));
  return true;
}

std::uint32_t ClapParameters::find(std::uint32_t id, const void* cookie) const {
  const std::uintptr_t hint = reinterpret_cast<std::uintptr_t>(cookie) - 1;
  if (hint < all.size() && all[hint].id == id) {
    return static_cast<std::uint32_t>(hint);
  }
  return id < indexOfId.size() ? indexOfId[id] : kNone;
}

float ClapParameters::normalised(std::uint32_t index, double value) const {
  const int last = all[index].lastState;
  const double top = last > 0 ? last : 1.0;
  const double limited = value > 0.0 ? std::min(value, top) : 0.0;  // NaN too is not above 0.
  return last > 0 ? normaliseState(static_cast<std::int32_t>(std::lround(limited)), last + 1, 0)
                  : static_cast<float>(limited);
}

double ClapParameters::hostValue(std::uint32_t index, float value) const {
  const int last = all[index].lastState;
  return last > 0 ? quantizeValue(value, last + 1, 0) : static_cast<double>(value);
}

std::string ClapParameters::textOf(std::uint32_t index, double value) const {
  tooltip::SivrayTooltipProvider texts;
  texts.setValue(all[index].id, normalised(index, value));
  return texts.getParameterText(all[index].id);
}

bool ClapParameters::valueOf(std::uint32_t index, const std::string& text, double& value) const {
  const auto found = tooltip::valueOfText(all[index].id, text);
  if (found) {
    value = hostValue(index, *found);
  }
  return found.has_value();
}

std::uint32_t ClapParameters::pageCount() const { return kPadPages.size() + 1; }

bool ClapParameters::describePage(std::uint32_t index, RemoteControlsPage& page) const {
  if (index >= pageCount()) {
    return false;
  }
  page = {};
  page.pageId = index;
  std::fill(std::begin(page.paramIds), std::end(page.paramIds), kInvalidId);
  if (index < kPadPages.size()) {
    copyText("Pads", page.sectionName);
    copyText(kPadPages[index].name, page.pageName);
    for (std::size_t pad = 0; pad < kPads; ++pad) {
      page.paramIds[pad] = static_cast<std::uint32_t>(padMacro(pad, kPadPages[index].macro));
    }
  } else {
    copyText("Master", page.sectionName);
    copyText("Effect and master", page.pageName);
    std::copy(kMasterPage.begin(), kMasterPage.end(), std::begin(page.paramIds));
  }
  return true;
}

}  // namespace tesh::bramel::clap
