// The editor with real pointer events: every control and the host's notifications, pads, pop-ups, and random clicks.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef __linux__

#include <algorithm>
#include <array>
#include <map>

#include "check/EditorScene.h"
#include "views/PanelTable.h"

namespace sivray::check {
namespace {

using namespace tesh::bramel::panel;
using hosting::HostCall;
using hosting::HostCallKind;
using hosting::WindowPoint;
using tesh::bramel::PanelRect;

WindowPoint centreOf(const PanelRect& bounds, int column = 0) {
  return {bounds.x + bounds.width / 2 + column * kColumnWidth, bounds.y + bounds.height / 2};
}

bool isDragged(ControlKind kind) {
  return kind == ControlKind::sweepKnob || kind == ControlKind::centredKnob || kind == ControlKind::levelFader;
}

/// Whether the calls for one parameter are begin, changes and end, in order. A click makes one change. A switch reports
/// its change in a separate gesture before that of the press. LV2 reports changes only.
bool isOneGesture(const std::vector<HostCall>& calls, std::size_t index, bool isClick, hosting::Form form) {
  if (form == hosting::Form::lv2) {
    return !calls.empty() && std::all_of(calls.begin(), calls.end(), [index](const HostCall& call) {
      return call.kind == HostCallKind::automate && call.index == static_cast<int>(index);
    });
  }
  int depth = 0;
  int changes = 0;
  for (const HostCall& call : calls) {
    depth += call.kind == HostCallKind::beginEdit ? 1 : 0;
    depth -= call.kind == HostCallKind::endEdit ? 1 : 0;
    changes += call.kind == HostCallKind::automate && depth == 1 ? 1 : 0;
    if (call.index != static_cast<std::int32_t>(index) || depth < 0 || depth > 1) {
      return false;
    }
  }
  return depth == 0 && (isClick ? changes == 1 : changes >= 1);
}

/// Moves a control by the mouse. False unless the host got that gesture, has its last value, and got nothing else.
bool moveControl(EditorScene& scene, hosting::Form form, ControlKind kind, std::size_t index, WindowPoint centre) {
  std::vector<HostCall> calls;
  const auto hear = [&] {
    if (form == hosting::Form::lv2 || form == hosting::Form::clap) {
      scene.render();  // Changes arrive with the blocks.
    }
    for (const HostCall& call : scene.host.takeCalls()) {
      if (call.kind != HostCallKind::updateDisplay) {
        calls.push_back(call);
      }
    }
    return !calls.empty() && (calls.back().kind == HostCallKind::endEdit || form == hosting::Form::lv2);
  };
  if (isDragged(kind)) {
    scene.window.drag(centre, {0, -32});
  } else {
    scene.window.click(centre);
  }
  comesTrue(hear);
  scene.letSettle();
  scene.render();  // Empties the queue of changes, whose size is limited.
  hear();
  const auto last = std::find_if(calls.rbegin(), calls.rend(),
                                 [](const HostCall& call) { return call.kind == HostCallKind::automate; });
  return isOneGesture(calls, index, !isDragged(kind), form) &&
         scene.host.parameter(static_cast<int>(index)) == last->value;
}

Verdict everyControl(const CheckSettings& settings) {
  const auto library = settings.load();
  EditorScene scene(*library);
  scene.show();
  for (int index = 0; index < static_cast<int>(kEffectSwitchMacro); ++index) {
    scene.host.setParameter(index, 0.4F);
  }
  scene.render();
  scene.settledCalls();
  int moved = 0;
  std::string wrong;
  const auto move = [&](ControlKind kind, std::size_t index, WindowPoint centre) {
    ++moved;
    if (!moveControl(scene, settings.form, kind, index, centre)) {
      wrong += (wrong.empty() ? ", wrong: " : ", ") + scene.host.parameterName(static_cast<int>(index));
    }
  };
  for (std::size_t page = 0; page < kPageCount; ++page) {
    scene.showPage(page);
    for (const PadControl& row : kPadControls) {
      for (int pad = 0; row.kind != ControlKind::stub && row.page == page && pad < static_cast<int>(kPads); ++pad) {
        move(row.kind, padMacro(static_cast<std::size_t>(pad), row.macro), centreOf(row.bounds, pad));
      }
    }
  }
  for (const MasterControl& row : kMasterControls) {
    if (row.kind != ControlKind::stub) {
      move(row.kind, row.macro, centreOf(row.bounds));
    }
  }
  wrong.resize(std::min<std::size_t>(wrong.size(), 200));
  return verdict(wrong.empty(), "%d controls on 3 pages: begin, automation and end of the right parameter%s", moved,
                 wrong.c_str());
}

Verdict pads(const CheckSettings& settings) {
  using Message = std::array<std::uint8_t, 4>;
  const auto library = settings.load();
  EditorScene scene(*library);
  scene.show();
  scene.host.start(kPlainRate, kPlainBlock);
  if (settings.form == hosting::Form::lv2) {
    scene.awaitNewView();  // A change of rate makes a new instance.
  }
  scene.render();
  std::string wrong;
  int right = 0;
  for (std::size_t pad = 0; pad < kPads; ++pad) {
    const auto note = static_cast<std::uint8_t>(padNote(pad));
    const auto hears = [&](std::uint8_t velocity) {
      return comesTrue([&] {
        scene.render();
        const std::vector<Message> sent = scene.host.takeMidi();
        return std::any_of(sent.begin(), sent.end(), [&](const Message& message) {
          // VST 3 has no notes of velocity 0 but note-offs.
          const bool isOff = velocity == 0 && message[0] == 0x80;
          return message[1] == note && (isOff || (message[0] == 0x90 && message[2] == velocity));
        });
      });
    };
    scene.window.moveTo({kPadX[pad] + kPadSize / 2, kPadContainer.y + kPadSize / 3});
    scene.window.press();
    const bool isStruck = hears(100);
    scene.window.release();
    const bool isReleased = hears(0);
    right += isReleased && isStruck ? 1 : 0;
    if (!isReleased || !isStruck) {
      wrong.append(isStruck ? ", no note-off of " : ", no note-on of ").append(std::to_string(pad + 1));
    }
  }
  return verdict(right == static_cast<int>(kPads), "%d of 8 pads send their note on and off%s", right, wrong.c_str());
}

/// Opens a pop-up by a click, and closes it by one beside it. Returns whether the pop-up was visible, by the darkened
/// place of that click, and the panel looks as before afterwards.
bool opensAndCloses(EditorScene& scene, WindowPoint opener) {
  constexpr hosting::WindowArea kBeside{kNowhere.x - 2, kNowhere.y - 2, 4, 4};
  scene.window.moveTo(kNowhere);
  const std::uint64_t before = scene.settledPicture();
  const std::uint64_t bright = scene.window.picture(kBeside);
  scene.click(opener);
  const bool opened = comesTrue([&] { return scene.window.picture(kBeside) != bright; });
  scene.click(kNowhere);
  return opened && scene.settledPicture() == before;
}

/// Opens a list and clicks into it. The host must be notified of a change of `index` and of no other parameter.
bool choosesFrom(EditorScene& scene, WindowPoint opener, WindowPoint row, std::size_t index) {
  scene.host.setParameter(static_cast<int>(index), 0.0F);
  scene.render();
  scene.settledCalls();
  scene.click(opener);
  scene.click(row);
  scene.click(kNowhere);
  std::vector<HostCall> calls;
  const auto hear = [&] {
    scene.render();  // An LV2 tells of changes with the blocks.
    for (const HostCall& call : scene.settledCalls()) {
      if (call.kind == HostCallKind::automate) {
        calls.push_back(call);
      }
    }
    return !calls.empty();
  };
  comesTrue(hear);
  hear();
  return !calls.empty() && std::all_of(calls.begin(), calls.end(), [index](const HostCall& call) {
    return call.index == static_cast<std::int32_t>(index);
  });
}

Verdict popUps(const CheckSettings& settings) {
  struct PopUp {
    const char* name;
    PanelRect opener;
  };
  constexpr std::array<PopUp, 5> kPopUps{{{"samples", kDisplay},
                                          {"programs", kProgramButton},
                                          {"effects", kEffectButton},
                                          {"settings", kSettingsZone1},
                                          {"settings by the name", kSettingsZone2}}};
  constexpr WindowPoint kEffectRow{620, 220};
  constexpr WindowPoint kSampleRow{450, 220};
  const Sandbox sandbox;
  const auto library = settings.load();
  EditorScene scene(*library);
  scene.show();
  scene.render();
  std::string wrong;
  const auto judge = [&wrong](bool isRight, const char* what) {
    if (!isRight) {
      wrong += (wrong.empty() ? ", wrong: " : ", ") + std::string(what);
    }
  };
  for (const PopUp& popUp : kPopUps) {
    judge(opensAndCloses(scene, centreOf(popUp.opener)), popUp.name);
  }
  judge(choosesFrom(scene, centreOf(kEffectButton), kEffectRow, kEffectTypeMacro), "choice of an effect");
  judge(choosesFrom(scene, centreOf(kDisplay), kSampleRow, kSample), "choice of a sample");
  return verdict(wrong.empty(), "%zu opened and closed, an effect and a sample chosen%s", kPopUps.size(),
                 wrong.c_str());
}

/// A random action of a user: mostly clicks and drags, some wheel, keys and other buttons.
void doSomething(EditorScene& scene, Random& random) {
  const WindowPoint point{random.below(kPanelSize.width), random.below(kPanelSize.height)};
  switch (random.below(10)) {
    case 0:
      scene.window.drag(point, {random.below(121) - 60, random.below(121) - 60});
      break;
    case 1:
      scene.window.moveTo(point);
      scene.window.press(static_cast<unsigned int>(4 + random.below(2)));
      break;
    case 2:
      scene.window.click(point, 3);
      break;
    case 3:
      scene.window.strike('a' + static_cast<unsigned long>(random.below(26)));
      break;
    case 4:
      scene.window.moveTo(point);
      break;
    default:
      scene.window.click(point);
      break;
  }
  for (const unsigned int wheel : {4U, 5U}) {
    scene.window.release(wheel);
  }
}

/// For each parameter, every begin must have its end.
bool isBalanced(const std::vector<HostCall>& calls) {
  std::map<std::int32_t, int> depth;
  for (const HostCall& call : calls) {
    depth[call.index] += call.kind == HostCallKind::beginEdit ? 1 : 0;
    depth[call.index] -= call.kind == HostCallKind::endEdit ? 1 : 0;
  }
  return std::all_of(depth.begin(), depth.end(), [](const auto& entry) { return entry.second == 0; });
}

Verdict randomClicks(const CheckSettings& settings) {
  constexpr std::uint32_t kSeed = 20'000;
  constexpr int kEventsABlock = 20;
  const int events = settings.count(2000, 20'000);
  const Sandbox sandbox;
  const auto library = settings.load();
  EditorScene scene(*library);
  scene.open();
  Random random(kSeed);
  SoundFacts facts;
  for (int event = 0; event < events; ++event) {
    doSomething(scene, random);
    if (event % kEventsABlock == 0) {
      facts.add(play(scene.host, hitsOver(1000, 5), 1000, blocksOf(250)));
      scene.host.setParameter(random.below(scene.host.parameterCount()), random.unit());
      scene.host.chunk();
      scene.letSettle();
    }
  }
  scene.settledPicture();
  scene.close();
  const std::vector<HostCall> calls = scene.settledCalls();
  const bool balanced = isBalanced(calls);
  scene.open();
  const bool isShown = comesTrue([&] { return scene.window.childSize() == kPanelSize; });
  return verdict(balanced && isShown && facts.isSane(), "%d events with seed %u, %zu calls to the host, %s", events,
                 kSeed, calls.size(), balanced ? "every begin with its end" : "a begin without its end");
}

}  // namespace

std::vector<Check> editorMouseChecks() {
  return {{"editor's controls", everyControl},
          {"editor's pads", pads},
          {"editor's pop-ups", popUps},
          {"random clicks", randomClicks}};
}

}  // namespace sivray::check

#endif
