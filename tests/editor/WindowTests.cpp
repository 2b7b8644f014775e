// The editor in a host's window: opening, closing in every order, scales, and keyboard focus.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <chrono>
#include <cmath>
#include <future>
#include <mutex>

#include "editor/EditorScene.h"
#include "host/editor/BramelVstEditorAdapter.h"
#include "host/editor/WindowKeys.h"
#include "host/vst/AudioEffectX.h"
#include "hosting/HostWindow.h"

namespace editor {
namespace {

using sivray::hosting::HostWindow;
using sivray::hosting::WindowSize;

constexpr WindowSize kPanel{768, 468};

class EditorWindowTest : public Editor {
 protected:
  void SetUp() override {
    if (!HostWindow::findServer()) {
      FAIL() << "no X server, and Xvfb cannot be started: is it installed?";
    }
    window = std::make_unique<HostWindow>();
    adapter = std::make_unique<BramelVstEditorAdapter>(&effect, editor);
  }
  static std::intptr_t SIVRAY_VST_CALL host(AEffect*, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                            void*, float) {
    if (opcode == audioMasterSizeWindow) {
      toldSize = {index, static_cast<int>(value)};
    }
    return 1;
  }
  WindowSize rectangle() {
    ERect* rect = nullptr;
    EXPECT_TRUE(adapter->getRect(&rect));
    return {rect->right, rect->bottom};
  }
  /// Two rounds, because a message may post another one.
  void letSettle() {
    for (int round = 0; round < 4; ++round) {
      onMessageThread([] {});
    }
  }

  /// The server answers within milliseconds, or later if other programs use all cores.
  template <typename Condition>
  static bool comesTrue(Condition condition) {
    for (int round = 0; round < 3000 && !condition(); ++round) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return condition();
  }

  static inline WindowSize toldSize;
  AudioEffectX effect{host, 0, 0};
  std::unique_ptr<HostWindow> window;
  std::unique_ptr<BramelVstEditorAdapter> adapter;
};

TEST_F(EditorWindowTest, OpensOnceAndComesAgainAfterEachClose) {
  EXPECT_EQ(rectangle(), kPanel);
  for (int round = 1; round <= 10; ++round) {
    EXPECT_TRUE(adapter->open(window->handle()));
    EXPECT_TRUE(adapter->open(window->handle()));
    EXPECT_EQ(window->childSize(), kPanel);
    EXPECT_EQ(provider->made, round);
    adapter->close();
    adapter->close();
    EXPECT_EQ(window->childSize(), WindowSize{});
    EXPECT_TRUE(provider->view.expired());
  }
}

TEST_F(EditorWindowTest, HearsNothingWithoutAView) {
  provider->givesView = false;
  adapter->open(window->handle());
  editor->midiReceived(std::array<std::uint8_t, 3>{0x90, 36, 100}.data(), 3);
  editor->programChanged();
  EXPECT_EQ(heard(), models::Log{});
  adapter->close();
}

TEST_F(EditorWindowTest, OutlivesTheHostsWindowAndClosesWithTheAdapter) {
  adapter->open(window->handle());
  window->destroy();
  onMessageThread([this] { provider->view.lock()->repaint(); });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // Time for drawing into a window that no longer exists.
  letSettle();
  EXPECT_FALSE(provider->view.expired());
  adapter.reset();
  EXPECT_TRUE(provider->view.expired());
}

TEST_F(EditorWindowTest, FollowsTheScreensScaleAndTakesTheLargerPicturesAboveThePanelsSize) {
  EXPECT_TRUE(adapter->setContentScale(1.25F));
  EXPECT_EQ(rectangle(), (WindowSize{960, 585}));
  EXPECT_EQ(toldSize, rectangle());
  adapter->open(window->handle());
  EXPECT_EQ(provider->lastImageScale, 2);
  for (const float scale : {1.5F, 2.0F, 1.25F, 1.1F}) {
    EXPECT_TRUE(adapter->setContentScale(scale));
    EXPECT_EQ(window->childSize(), rectangle());
    EXPECT_EQ(toldSize, rectangle());
  }
  EXPECT_EQ(provider->made, 1);
  EXPECT_TRUE(adapter->setContentScale(1.0F));
  EXPECT_EQ(provider->made, 2) << "the panel's own pictures";
  EXPECT_EQ(provider->lastImageScale, 1);
  for (const float scale : {0.0F, -1.0F, 100.0F, std::nanf("")}) {
    EXPECT_FALSE(adapter->setContentScale(scale));
  }
  EXPECT_EQ(window->childSize(), kPanel);
}

TEST_F(EditorWindowTest, TakesTheKeysForADialogInsideThePanelToo) {
  adapter->open(window->handle());
  letSettle();
  onMessageThread([this] {
    provider->view.lock()->enterModalState(false);
    provider->view.lock()->text.grabKeyboardFocus();
  });
  EXPECT_TRUE(comesTrue([this] { return window->doesChildTakeKeys(); }));
  onMessageThread([this] { provider->view.lock()->exitModalState(0); });
}

TEST_F(EditorWindowTest, LeavesTheKeysToTheHostUnlessATextFieldHasTheFocus) {
  VstKeyCode letter{'a', 0, 0};
  VstKeyCode shift{0, 0, 1};
  adapter->open(window->handle());
  letSettle();
  EXPECT_FALSE(window->doesChildTakeKeys());
  EXPECT_FALSE(adapter->onKeyDown(letter));

  onMessageThread([this] { provider->view.lock()->text.grabKeyboardFocus(); });
  EXPECT_TRUE(comesTrue([this] { return window->doesChildTakeKeys(); }));
  onMessageThread([&] {  // On another thread the answer would be late if all cores are busy.
    EXPECT_TRUE(adapter->onKeyDown(shift));
    EXPECT_TRUE(adapter->onKeyDown(letter));
    EXPECT_TRUE(adapter->onKeyUp(letter));
    EXPECT_TRUE(adapter->onKeyUp(shift));
  });
  VstKeyCode backspace{8, 0, 0};
  adapter->onKeyDown(letter);
  adapter->onKeyDown(backspace);
  onMessageThread([this] { EXPECT_EQ(provider->view.lock()->text.getText(), "a"); });

  onMessageThread([] { juce::Component::unfocusAllComponents(); });
  EXPECT_TRUE(comesTrue([this] { return !window->doesChildTakeKeys() && window->hasFocus(); }));
}

TEST_F(EditorWindowTest, GivesTheFocusBackToTheHostsWindowThatHadIt) {
  adapter->open(window->handle());
  letSettle();
  window->focusOwnChild();
  window->moveTo({20, 20});
  EXPECT_TRUE(comesTrue([this] {
    bool isOver = false;
    onMessageThread([&] { isOver = provider->view.lock()->isMouseOver(); });
    return isOver;
  }));
  onMessageThread([this] { provider->view.lock()->text.grabKeyboardFocus(); });
  EXPECT_TRUE(comesTrue([this] { return window->doesChildTakeKeys() && !window->hasOwnChildFocus(); }));
  onMessageThread([] { juce::Component::unfocusAllComponents(); });
  EXPECT_TRUE(comesTrue([this] { return window->hasOwnChildFocus(); }));
}

TEST_F(EditorWindowTest, TakesEventsThatCameAlongWithAnAnswerOfTheServer) {
  window->moveTo({kPanel.width + 9, 20});
  adapter->open(window->handle());
  letSettle();
  std::this_thread::sleep_for(std::chrono::milliseconds(200));  // Everything is painted, and no timer runs.
  const auto isOver = [this] { return provider->view.lock()->isMouseOver(); };
  onMessageThread([&] {
    EXPECT_FALSE(isOver());
    window->moveTo({20, 20});
    tesh::bramel::vst::hasKeyboardFocus(window->handle());
  });
  EXPECT_TRUE(comesTrue([&] {
    bool result = false;
    onMessageThread([&] { result = isOver(); });
    return result;
  }));
}

TEST_F(EditorWindowTest, ClosesLaterWhileTheMessageThreadWaitsForTheHost) {
  std::mutex hostsLock;
  std::promise<void> isWaiting;
  adapter->open(window->handle());
  std::unique_lock held(hostsLock);
  editor->messageThread()->callLater([&] {
    isWaiting.set_value();
    const std::lock_guard lock(hostsLock);
  });
  isWaiting.get_future().wait();
  adapter->close();
  EXPECT_FALSE(provider->view.expired());
  held.unlock();
  letSettle();
  EXPECT_TRUE(provider->view.expired());
}

TEST_F(EditorWindowTest, TakesItsMenusAlong) {
  adapter->open(window->handle());
  int answer = -1;
  onMessageThread([&] {
    juce::PopupMenu menu;
    menu.addItem(1, "one");
    menu.showMenuAsync({}, [&answer](int result) { answer = result; });
  });
  EXPECT_EQ(answer, -1);
  adapter->close();
  letSettle();
  onMessageThread([] { EXPECT_EQ(juce::Component::getNumCurrentlyModalComponents(), 0); });
  EXPECT_EQ(answer, 0);
}

}  // namespace
}  // namespace editor
