// What the panel costs: opening it, closing it, turning a knob. CPU time, and the memory that an open panel holds, on
// the content that BRAMEL_COMMON_FILES names.
//   bench_panel count SCALE OPENINGS  opens a panel at 100 or 200 %, for SCALE 1 or 2, and beside it that many further
//                                     ones, one after the other. Count the instructions of two runs with callgrind.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <benchmark/benchmark.h>
#include <juce_gui_basics/juce_gui_basics.h>
#include <malloc.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "host/shell/BramelInstrument.h"
#include "host/shell/Construction.h"
#include "support/ContentMain.h"
#include "viewmodels/IPluginEditViewModelOwner.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/SivrayTooltipProvider.h"
#include "views/BWPopupSlotView.h"
#include "views/SivrayEditView.h"
#include "views/SivrayEditorProvider.h"

namespace {

using namespace tesh::bramel;
using tesh::cofu::core::boxed::valueIn;

double heldMebibytes() {
  const struct mallinfo2 info = ::mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / (1024.0 * 1024.0);
}

std::shared_ptr<vst::BramelInstrument> makeInstrument() {
  auto instrument = std::make_shared<vst::BramelInstrument>(vst::makeProcessor());
  instrument->setTooltipProvider(std::make_unique<tooltip::SivrayTooltipProvider>());
  return instrument;
}

/// An open panel as the host's window shows it, painted once.
class OpenPanel {
 public:
  OpenPanel(const std::shared_ptr<vst::BramelInstrument>& instrument, int imageScale)
      : scale(imageScale),
        window(juce::Image::RGB, SivrayView::kWidth * imageScale, SivrayView::kHeight * imageScale, false) {
    plugin::sivray::SivrayEditorProvider provider;
    const auto parts = provider.createEditor(instrument, imageScale);
    component = *valueIn<std::shared_ptr<juce::Component>>(parts.view);
    model = *valueIn<std::shared_ptr<IPluginEditViewModelOwner>>(parts.viewModel);
    slot.setBounds(component->getLocalBounds());
    slot.addAndMakeVisible(*component);
    paint(slot.getLocalBounds());
  }

  /// Paints an area of the panel into the window.
  void paint(juce::Rectangle<int> part) {
    juce::Graphics graphics(window);
    graphics.addTransform(juce::AffineTransform::scale(static_cast<float>(scale)));
    graphics.reduceClipRegion(part);
    slot.paintEntireComponent(graphics, true);
  }

  juce::Rectangle<int> placeOf(std::uint64_t parameter) {
    juce::Component& control = *dynamic_cast<SivrayView&>(*component).getControl(parameter);
    return slot.getLocalArea(&control, control.getLocalBounds());
  }
  IPluginEditViewModelOwner& owner() { return *model; }

 private:
  using SivrayView = plugin::sivray::SivrayEditView;

  int scale;
  juce::Image window;
  std::shared_ptr<IPluginEditViewModelOwner> model;
  std::shared_ptr<juce::Component> component;
  BWPopupSlotView slot;
};

void openFirst(benchmark::State& state) {
  const auto instrument = makeInstrument();
  const double before = heldMebibytes();
  std::unique_ptr<OpenPanel> panel;
  for (auto _ : state) {
    panel = std::make_unique<OpenPanel>(instrument, static_cast<int>(state.range(0)));
  }
  state.counters["MiB"] = heldMebibytes() - before;
}
BENCHMARK(openFirst)->Arg(1)->Arg(2)->Iterations(1)->Unit(benchmark::kMillisecond);

void openAnother(benchmark::State& state) {
  const auto first = makeInstrument();
  const auto second = makeInstrument();
  const OpenPanel open(first, static_cast<int>(state.range(0)));
  const double before = heldMebibytes();
  std::unique_ptr<OpenPanel> panel;
  for (auto _ : state) {
    panel = std::make_unique<OpenPanel>(second, static_cast<int>(state.range(0)));
    state.PauseTiming();
    state.counters["MiB"] = heldMebibytes() - before;
    panel.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(openAnother)->Arg(1)->Arg(2)->Iterations(10)->Unit(benchmark::kMillisecond);

void close(benchmark::State& state) {
  const auto instrument = makeInstrument();
  for (auto _ : state) {
    state.PauseTiming();
    auto panel = std::make_unique<OpenPanel>(instrument, static_cast<int>(state.range(0)));
    state.ResumeTiming();
    panel.reset();
  }
}
BENCHMARK(close)->Arg(1)->Arg(2)->Iterations(10)->Unit(benchmark::kMillisecond);

/// The memory that remains after the first openings, once the messages that they posted have been handled.
void openAndClose(benchmark::State& state) {
  constexpr int kMessagesToArrive = 100;  ///< Milliseconds.
  const auto instrument = makeInstrument();
  { const OpenPanel panel(instrument, 1); }
  const double before = heldMebibytes();
  for (auto _ : state) {
    const OpenPanel panel(instrument, 1);
  }
  juce::MessageManager::getInstance()->runDispatchLoopUntil(kMessagesToArrive);
  state.counters["MiB"] = heldMebibytes() - before;
}
BENCHMARK(openAndClose)->Iterations(100)->Unit(benchmark::kMillisecond);

/// Moves a knob to its next frame and paints its area.
void turnKnob(benchmark::State& state) {
  const auto instrument = makeInstrument();
  OpenPanel panel(instrument, static_cast<int>(state.range(0)));
  const juce::Rectangle<int> place = panel.placeOf(panel::kPitch);
  bool up = false;
  for (auto _ : state) {
    up = !up;
    instrument->setParameter(panel::kPitch, up ? 0.75F : 0.25F);
    panel.owner().notifyParameterChanged(panel::kPitch);
    panel.paint(place);
  }
}
BENCHMARK(turnKnob)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  const juce::ScopedJuceInitialiser_GUI juce;
  if (argc == 4 && std::string_view(argv[1]) == "count") {
    const auto first = makeInstrument();
    const auto second = makeInstrument();
    const OpenPanel open(first, std::atoi(argv[2]));
    for (int opening = std::atoi(argv[3]); opening > 0; --opening) {
      const OpenPanel panel(second, std::atoi(argv[2]));
    }
    return 0;
  }
  return support::runOnContent("bench_panel", argc, argv);
}
