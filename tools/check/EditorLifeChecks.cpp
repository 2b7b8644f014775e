// Opens and closes the editor: often, at odd moments, in two instances, before unloading, and at every scale.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <algorithm>
#include <memory>

#include "check/EditorScene.h"
#include "check/Process.h"

namespace sivray::check {
namespace {

constexpr std::int64_t kLeakKiB = 256;
constexpr std::int64_t kLeakOfPagesKiB = 512;

/// CPU milliseconds of all threads of this process during an action; other programs do not count.
template <typename Action>
double millisecondsFor(Action action) {
  const double before = processSeconds();
  action();
  return 1000.0 * (processSeconds() - before);
}

double medianOf(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

/// Waits for a panel of this size; a size of 0 means that it must disappear.
bool isThere(const EditorScene& scene, hosting::WindowSize size = kPanelSize) {
  return comesTrue([&] { return scene.window.childSize() == size; });
}

/// The very first opening: nothing of the editor has been loaded into this process yet.
Verdict openAndClose(const CheckSettings& settings) {
  constexpr double kMostForFirst = 200.0;
  constexpr double kMostForLater = 30.0;
  constexpr double kMostForClosing = 5.0;
  constexpr std::int64_t kMostKiB = 40 * 1024;
  const auto library = settings.load();
  EditorScene scene(*library);
  const ProcessUse before = processUse();
  const double first = millisecondsFor([&] { scene.open(); });
  const std::int64_t panelKiB = processUse().residentKiB - before.residentKiB;
  bool isShown = isThere(scene);
  scene.close();
  std::vector<double> openings;
  std::vector<double> closings;
  GrowthWatch growth;
  const int cycles = settings.count(100, 100);
  for (int cycle = 1; cycle < cycles; ++cycle) {
    openings.push_back(millisecondsFor([&] { scene.open(); }));
    isShown = isShown && isThere(scene);
    closings.push_back(millisecondsFor([&] { scene.close(); }));
    isShown = isShown && isThere(scene, {});
    growth.look();
  }
  const bool flat = growth.threads() <= 0 && growth.files() <= 0;
  const bool quick = isSanitized() || (first <= kMostForFirst && medianOf(openings) <= kMostForLater &&
                                       medianOf(closings) <= kMostForClosing);
  const bool small =
      isSanitized() || (growth.heapKiB() <= kLeakKiB && growth.pagesKiB() <= kLeakOfPagesKiB && panelKiB <= kMostKiB);
  return verdict(isShown && flat && quick && small,
                 "%d cycles, first in %.0f ms and %lld KiB, then in %.1f ms, closed in %.1f ms, %+lld KiB of heap, "
                 "%+lld of pages, "
                 "%+d threads, %+d files",
                 cycles, first, static_cast<long long>(panelKiB), medianOf(openings), medianOf(closings),
                 static_cast<long long>(growth.heapKiB()), static_cast<long long>(growth.pagesKiB()), growth.threads(),
                 growth.files());
}

/// Calls of hosts out of order. Each scene leaves its editor as it is, and effClose has to cope with that.
Verdict oddMoments(const CheckSettings& settings) {
  const auto library = settings.load();
  SoundFacts facts;
  int moments = 0;
  const auto tryOut = [&](const std::function<void(EditorScene&)>& moment) {
    EditorScene scene(*library);
    moment(scene);
    facts.add(play(scene.host, hitsOver(5000, 3), 5000, blocksOf(100)));
    ++moments;
  };
  const auto openAtRate = [](float rate) {
    return [rate](EditorScene& scene) {
      scene.host.setSampleRate(rate);
      scene.open();
      scene.host.setParameter(1, 0.25F);
      scene.letSettle();
      scene.host.setSampleRate(kPlainRate);
    };
  };
  tryOut(openAtRate(0.0F));
  tryOut(openAtRate(-1.0F));
  tryOut([](EditorScene& scene) {  // Before resume, which the first block makes.
    scene.open();
    scene.open();
    scene.letSettle();
  });
  tryOut([](EditorScene& scene) {
    scene.close();
    scene.open();
    scene.window.destroy();
    scene.host.setParameter(1, 0.25F);
    scene.render();
    scene.letSettle();
    scene.close();
  });
  tryOut([](EditorScene& scene) {
    scene.open();
    scene.window.destroy();
    scene.render();
  });
  tryOut([](EditorScene& scene) {
    scene.host.openEditor(nullptr);
    scene.render();
    scene.close();
    scene.close();
    scene.open();
    scene.host.restart();
  });
  return verdict(facts.isSane() && facts.isHeard(),
                 "%d moments: rates of 0, before resume, without and after its window, twice", moments);
}

Verdict twoEditors(const CheckSettings& settings) {
  constexpr std::int64_t kMostKiB = 8 * 1024;
  const auto library = settings.load();
  bool isShown = true;
  std::int64_t furtherKiB = 0;
  for (const bool isFirstEndedFirst : {true, false}) {
    auto first = std::make_unique<EditorScene>(*library);
    auto second = std::make_unique<EditorScene>(*library);
    first->open();
    const ProcessUse before = processUse();
    second->open();
    furtherKiB = std::max(furtherKiB, processUse().residentKiB - before.residentKiB);
    auto& ended = isFirstEndedFirst ? first : second;
    const auto& kept = isFirstEndedFirst ? second : first;
    isShown = isShown && isThere(*ended);
    ended.reset();
    kept->render();
    kept->letSettle();
    isShown = isShown && isThere(*kept) && comesTrue([&] { return kept->window.isPainted(); });
    kept->close();
    kept->open();
    isShown = isShown && isThere(*kept);
  }
  return verdict(isShown && (isSanitized() || furtherKiB <= kMostKiB),
                 "ended in both orders, a second panel takes %lld KiB", static_cast<long long>(furtherKiB));
}

Verdict unloading(const CheckSettings& settings) {
  // Each load starts threads, and the allocator keeps an arena per thread.
  constexpr std::int64_t kLeakOfThreadsPagesKiB = 2048;
  const std::int64_t mostHeap = settings.full ? 8 * kLeakKiB : kLeakKiB;  // In ten times as many cycles.
  const int cycles = isSanitized() ? GrowthWatch::kWarmCycles + 2 : settings.count(100, 1000);
  int leftBehind = 0;
  GrowthWatch growth;
  for (int cycle = 0; cycle < cycles; ++cycle) {
    {
      const auto library = settings.load();
      EditorScene scene(*library);
      scene.open();
      scene.close();
    }
    leftBehind += isMapped(settings.moduleName()) ? 1 : 0;
    growth.look();
  }
  const bool gone =
      isSanitized() || (leftBehind == 0 && growth.heapKiB() <= mostHeap && growth.pagesKiB() <= kLeakOfThreadsPagesKiB);
  return verdict(gone && growth.threads() <= 0 && growth.files() <= 0,
                 "%d cycles of load, open, close and unload: %d stayed mapped, %+lld KiB of heap, %+lld of pages, "
                 "%+d threads, %+d files",
                 cycles, leftBehind, static_cast<long long>(growth.heapKiB()),
                 static_cast<long long>(growth.pagesKiB()), growth.threads(), growth.files());
}

Verdict sizes(const CheckSettings& settings) {
  const auto library = settings.load();
  EditorScene scene(*library);
  bool isRight = !settings.isVst2() || scene.host.editorSize() == kPanelSize;
  scene.open();
  isRight = isRight && isThere(scene);
  std::string wrong;
  for (const float scale : {2.0F, 1.25F, 1.5F, 1.0F}) {
    scene.host.takeCalls();
    const hosting::WindowSize expected{static_cast<int>(768.0F * scale), static_cast<int>(468.0F * scale)};
    isRight = isRight && scene.host.setEditorScale(scale);
    comesTrue([&] { return scene.window.childSize() == expected; });
    const auto calls = scene.host.takeCalls();
    const hosting::WindowSize told = calls.empty() ? hosting::WindowSize{} : calls.back().size;
    const hosting::WindowSize shown = scene.window.childSize();
    // VST 2 tells its host once. JUCE's host may hear of one change several times.
    const bool isTold = told == expected && (calls.size() == 1 || !settings.isVst2());
    if (!isTold || scene.host.editorSize() != expected || shown != expected) {
      isRight = false;
      for (const auto& text : {std::string("; at "), std::to_string(scale), std::string(" told "),
                               std::to_string(told.width), std::string(", shown "), std::to_string(shown.width)}) {
        wrong += text;
      }
    }
  }
  return verdict(isRight, "768 x 468, and 125, 150 and 200 %% of it: rectangle, window and what the host is told%s",
                 wrong.c_str());
}

}  // namespace

std::vector<Check> editorLifeChecks() {
  return {{"editor opened and closed", openAndClose},
          {"editor in odd moments", oddMoments, CheckedForms::vst2},
          {"two editors", twoEditors},
          {"editor and unloading", unloading},
          {"editor's size", sizes}};
}

}  // namespace sivray::check

#endif
