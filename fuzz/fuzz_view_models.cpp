// Fuzzes the view models with random calls in any order: reported values stay in range, the view is not notified of its
// own setters, and a chosen sample is read back. Each call is a kind and its numbers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdlib>
#include <memory>
#include <string>

#include "FuzzInput.h"
#include "support/DrumModule.h"
#include "support/QuietSides.h"
#include "viewmodels/BXInstrumentEditViewModel.h"
#include "viewmodels/BXSivrayEditViewModel.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace {

using namespace tesh::bramel;
using fuzz::Input;
using fuzz::require;

/// Sends automation back to the instrument.
struct Host final : support::QuietHost {
  explicit Host(vst::BramelInstrument& shell) : instrument(shell) {}
  void automate(std::uint64_t index, float value) override {
    instrument.setParameter(instrument.parameterId(index), value);
  }
  vst::BramelInstrument& instrument;
};

/// Reads every value that it is notified of, as the real views do.
struct View final : IPluginEditViewModelListener {
  void onAllParametersChanged(IPluginEditViewModel& model) override { onParameterChanged(model, 0); }
  void onParameterChanged(IPluginEditViewModel& model, std::uint64_t index) override {
    ++heard;
    const float value = model.getParameterValue(index);
    require(value >= 0.0F && value <= 1.0F);
    model.getTooltipViewModel()->onValueChanged(index, value);
    model.getTooltipViewModel()->getText(index);
    model.getTooltipViewModel()->getName(index);
  }
  int heard = 0;
};

/// One instrument for all inputs; view models and view are created for each.
class Panel {
 public:
  Panel() { instrument->setHostCallback(host); }

  void open() {
    instrument->suspend();
    for (std::uint64_t bank : {0U, 3U}) {
      const std::uint64_t kept = bank == 0 ? 1 : 0;
      while (instrument->programCount(bank) > kept) {
        instrument->deleteProgram(bank, instrument->programCount(bank) - 1);
      }
    }
    const auto none = [](std::string_view, std::string_view) { return std::span<const std::uint8_t>{}; };
    model = std::make_shared<plugin::sivray::BXSivrayEditViewModel>(
        std::make_shared<BXInstrumentEditViewModel>(instrument, none));
    model->setTooltipProvider(std::make_shared<tooltip::SivrayTooltipProvider>());
    view = std::make_shared<View>();
    model->setListener(view);
  }

  void call(Input& input) {
    switch (input.number<std::uint8_t>() % 8) {
      case 0:
        editParameter(input);
        break;
      case 1:
        chooseSample(input);
        break;
      case 2:
        useProgram(input);
        break;
      case 3:
        playKeyboard(input);
        break;
      case 4:
        chooseScale(input);
        break;
      case 5:
        notify(input);
        break;
      case 6:
        input.number<std::uint8_t>() % 2 == 0 ? instrument->resume() : view.reset();
        break;
      default:
        play();
    }
  }

 private:
  void editParameter(Input& input) {
    const int before = view ? view->heard : 0;
    const auto index = static_cast<std::uint64_t>(input.number<std::int8_t>());
    switch (input.number<std::uint8_t>() % 4) {
      case 0:
        model->setParameterValue(index, input.number<float>());
        break;
      case 1:
        model->setParameterIntegerValue(index, input.number<std::uint64_t>());
        break;
      case 2:
        model->beginParameterGesture(index);
        break;
      default:
        model->endParameterGesture(index);
    }
    model->getEngineParameterValue(index);
    require(!view || view->heard == before);
  }

  void chooseSample(Input& input) {
    const auto samples = model->getSampleSelectorViewModel();
    const std::uint64_t part = input.number<std::uint8_t>();
    const std::int64_t category = input.number<std::int8_t>();
    const std::int64_t index = input.number<std::int8_t>();
    samples->selectSample(part, category, index);
    if (part < 8 && index >= 0 && index < samples->getSampleCount(category)) {
      require(samples->getCategoryIndex(part) == category && samples->getSampleIndex(part) == index);
    }
    require(model->getSampleName(part).size() <= 12);
  }

  void useProgram(Input& input) {
    constexpr std::array kBanks{"Factory", "Factory2", "Ghost", "User", "?"};
    const std::string bank = kBanks[input.number<std::uint8_t>() % kBanks.size()];
    const auto index = static_cast<std::uint64_t>(input.number<std::int8_t>());
    const auto programs = model->getProgramListViewModel();
    switch (input.number<std::uint8_t>() % 8) {
      case 0:
        programs->saveProgramAs(std::to_string(index));
        break;
      case 1:
        programs->deleteProgram(index, bank);
        break;
      case 2:
        programs->moveProgram(index, static_cast<std::uint64_t>(input.number<std::int8_t>()), bank);
        break;
      case 3:
        programs->overwriteCurrentProgram();
        break;
      case 4:
        model->selectNextProgram();
        break;
      case 5:
        model->selectPreviousProgram();
        break;
      case 6:
        programs->renameCurrentProgram(bank);
        break;
      default:
        programs->selectProgram(index, bank);
    }
    programs->programExists(bank, programs->getCurrentProgramName());
    require(programs->getProgramName(programs->getProgramCount(bank), bank).empty());
  }

  void playKeyboard(Input& input) {
    const auto keyboard = model->getKeyboardViewModel();
    keyboard->setKey(input.number<std::int32_t>());
    keyboard->setOctave(input.number<std::int8_t>());
    keyboard->setKeyRange(input.number<std::uint8_t>());
    keyboard->setChordMode(input.number<std::uint8_t>() % 2 == 0);
    const auto key = input.number<std::int32_t>();
    keyboard->noteForKey(key);
    keyboard->chordNote(key, input.number<std::uint8_t>());
    const auto message = input.bytes(3);
    keyboard->sendMidi(message.data(), message.size());
    require(keyboard->getOctave() >= 0 && keyboard->getOctave() <= 7);
  }

  void chooseScale(Input& input) {
    const auto scales = model->getScaleSelectorViewModel();
    scales->setScale(input.number<std::int8_t>());
    scales->setNoteCount(input.number<std::uint8_t>());
    require(scales->getNoteCount() >= 1 && scales->getNoteCount() <= scales->getMaxNoteCount());
    model->getKeyboardViewModel()->noteForKey(input.number<std::int32_t>());
  }

  void notify(Input& input) {
    const auto index = static_cast<std::uint64_t>(input.number<std::int8_t>());
    model->notifyParameterChanged(index);
    model->notifyAllParametersChanged();
    model->notifyProgramMoved(index, 0, "User");
    model->getKeyboardViewModelOwner()->noteOn(input.number<std::int8_t>());
    for (std::uint8_t note = 36; note < 44; ++note) {
      require(model->getKeyState(note) != 17);
    }
  }

  void play() {
    std::array<float, 16> samples{};
    std::array<float*, 2> outputs{samples.data(), samples.data()};
    instrument->process(nullptr, outputs.data(), static_cast<std::int32_t>(samples.size()));
  }

  struct Folder : support::SampleFolder {
    Folder() : SampleFolder(support::categorisedWaves()) {
      ::setenv("BRAMEL_DOCUMENTS", pathOf("documents").c_str(), 1);
    }
  };

  const Folder folder;
  std::shared_ptr<vst::BramelInstrument> instrument = support::makeInstrument(folder);
  std::shared_ptr<Host> host = std::make_shared<Host>(*instrument);
  std::shared_ptr<plugin::sivray::BXSivrayEditViewModel> model;
  std::shared_ptr<View> view;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Panel panel;
  panel.open();
  Input input(data, size);
  while (!input.isEmpty()) {
    panel.call(input);
  }
  return 0;
}
