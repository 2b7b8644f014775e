// The view models of a drum module on a small sample library, and a host and a view that record their calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "shell/ShellScene.h"
#include "support/DrumModule.h"
#include "viewmodels/BXInstrumentEditViewModel.h"
#include "viewmodels/BXSivrayEditViewModel.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace models {

using namespace tesh::bramel;
using plugin::sivray::BXSivrayEditViewModel;
using shell::Log;
using support::kCategoryOfWave;
using support::kHidden;
using support::kMacros;
using support::makeInstrument;
using support::targetOf;
using vst::BramelInstrument;

/// The listeners append a line for each call to the test's list.
struct NotingView : IPluginEditViewModelListener {
  explicit NotingView(Log& list) : told(list) {}
  void onAllParametersChanged(IPluginEditViewModel&) override { told.emplace_back("all"); }
  void onParameterChanged(IPluginEditViewModel& model, std::uint64_t index) override {
    told.push_back("parameter " + std::to_string(index) + ", key 39 " + std::to_string(model.getKeyState(39)));
  }
  void onKeyboardStateChanged(IPluginEditViewModel&) override { told.emplace_back("keyboard"); }
  Log& told;
};

struct NotingPads : IPluginKeyboardViewModelListener, std::enable_shared_from_this<NotingPads> {
  explicit NotingPads(Log& list) : told(list) {}
  std::weak_ptr<IPluginKeyboardViewModelListener> getWeakSelf() override { return weak_from_this(); }
  void onKeyboardLayoutChanged(IPluginKeyboardViewModel&) override { told.emplace_back("layout"); }
  void onOctaveChanged(IPluginKeyboardViewModel& model) override {
    told.push_back("octave " + std::to_string(model.getOctave()));
  }
  void onChordModeChanged(IPluginKeyboardViewModel&) override { told.emplace_back("chords"); }
  void onNoteOn(IPluginKeyboardViewModel&, std::int32_t note) override { told.push_back("on " + std::to_string(note)); }
  void onNoteOff(IPluginKeyboardViewModel&, std::int32_t note) override {
    told.push_back("off " + std::to_string(note));
  }
  Log& told;
};

struct NotingList : IProgramListViewModelListener, std::enable_shared_from_this<NotingList> {
  explicit NotingList(Log& list) : told(list) {}
  std::weak_ptr<IProgramListViewModelListener> getWeakSelf() override { return weak_from_this(); }
  void onProgramSaved(IProgramListViewModel&, const std::uint64_t* ids, std::uint64_t count,
                      const std::string& bank) override {
    told.push_back("saved " + bank + shell::NotingEditor::list(ids, count));
  }
  void onProgramDeleted(IProgramListViewModel&, const std::uint64_t* ids, std::uint64_t count,
                        const std::string& bank) override {
    told.push_back("deleted " + bank + shell::NotingEditor::list(ids, count));
  }
  void onProgramMoved(IProgramListViewModel&, std::uint64_t from, std::uint64_t to, const std::string& bank) override {
    told.push_back("moved " + bank + " " + std::to_string(from) + " " + std::to_string(to));
  }
  Log& told;
};

class ViewModels : public testing::Test {
 protected:
  explicit ViewModels(const std::vector<support::Wave>& waves = support::categorisedWaves()) : folder(waves) {
    ::setenv("BRAMEL_DOCUMENTS", (folder.pathOf("documents")).c_str(), 1);
    instrument = makeInstrument(folder);
    host = std::make_shared<shell::NotingHost>(*instrument);
    instrument->setHostCallback(host);
    model = makeModel(instrument);
    model->setTooltipProvider(std::make_shared<tooltip::SivrayTooltipProvider>());
    model->setListener(view);
    model->getKeyboardViewModel()->setListener(pads.get());
    model->getProgramListViewModel()->setListener(list.get());
    host->log.clear();
  }

  /// Without fonts or images.
  static std::shared_ptr<BXSivrayEditViewModel> makeModel(const std::shared_ptr<BramelInstrument>& instrument) {
    const auto none = [](std::string_view, std::string_view) { return std::span<const std::uint8_t>{}; };
    return std::make_shared<BXSivrayEditViewModel>(std::make_shared<BXInstrumentEditViewModel>(instrument, none));
  }

  /// Renders a block, in which the engine applies pending changes.
  void run() {
    std::array<float, 64> samples{};
    std::array<float*, 2> outputs{samples.data(), samples.data()};
    instrument->process(nullptr, outputs.data(), static_cast<std::int32_t>(samples.size()));
  }

  /// Returns the calls to the listeners since the last call of this.
  Log takeTold() { return std::exchange(told, {}); }

  /// Returns the calls to the host since the last call of this, without key lights.
  Log takeHostLog() {
    Log log = std::exchange(host->log, {});
    std::erase_if(log, [](const std::string& line) { return line.starts_with("key "); });
    return log;
  }

  const support::SampleFolder folder;
  std::shared_ptr<BramelInstrument> instrument;
  std::shared_ptr<shell::NotingHost> host;
  Log told;
  std::shared_ptr<NotingView> view = std::make_shared<NotingView>(told);
  std::shared_ptr<NotingPads> pads = std::make_shared<NotingPads>(told);
  std::shared_ptr<NotingList> list = std::make_shared<NotingList>(told);
  std::shared_ptr<BXSivrayEditViewModel> model;
};

}  // namespace models
