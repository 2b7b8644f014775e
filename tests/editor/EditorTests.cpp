// From the instrument's reports to the view model: on the message thread, in whole blocks, and only while a view is
// open. No screen is needed.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <future>
#include <thread>

#include "editor/EditorScene.h"

namespace editor {
namespace {

using models::Log;

TEST_F(Editor, DeliversABlockTogetherOnTheMessageThread) {
  instrument->setUICallback(editor);
  openView();
  run();
  heard();
  editor->parameterChanged(4);
  EXPECT_EQ(heard(), Log{}) << "waits for the block's end";
  instrument->setParameter(9, 0.5F);
  instrument->setParameter(2, 0.75F);
  run();
  EXPECT_EQ(heard(), (Log{parameter(4), parameter(2), parameter(9)}));
  closeView();
}

TEST_F(Editor, DropsReportsWhileClosedAndDeliversAtCloseWhatWaits) {
  editor->messageThread();
  editor->parameterChanged(1);
  editor->programChanged();
  openView();
  EXPECT_EQ(heard(), Log{});
  editor->holdUpdates();
  editor->parameterChanged(2);
  const std::array<std::uint64_t, 2> ids{3, 4};
  editor->programSaved("User", ids.data(), ids.size());
  closeView();
  EXPECT_EQ(heard(), (Log{parameter(2), "saved User 3 4"}));
  EXPECT_TRUE(provider->view.expired());
  editor->releaseUpdates();
  editor->parameterChanged(5);
  openView();
  EXPECT_EQ(heard(), Log{});
  closeView();
}

TEST_F(Editor, HearsNotesAndNothingElseOfMidi) {
  openView();
  const auto receive = [this](std::initializer_list<std::uint8_t> bytes) {
    editor->midiReceived(std::data(bytes), bytes.size());
  };
  editor->holdUpdates();
  receive({0x93, 36, 100});
  receive({0x90, 37, 0});
  receive({0x80, 36, 64});
  receive({0xB0, 38, 100});
  receive({0xFA});
  editor->releaseUpdates();
  EXPECT_EQ(heard(), (Log{"on 36", "off 36", "off 37"}));
  closeView();
}

TEST_F(Editor, IsForgottenByAThreadThatWasWokenForIt) {
  const auto thread = MessageThread::acquire(MessageThread::Kind::own);
  provider->givesView = false;
  openView();
  std::promise<void> isBusy;
  std::promise<void> mayGoOn;
  thread->callLater([&] {
    isBusy.set_value();
    mayGoOn.get_future().wait();
  });
  isBusy.get_future().wait();
  editor->parameterChanged(1);
  editor.reset();
  mayGoOn.set_value();
  thread->callAndWait([] {});
  EXPECT_EQ(takeTold(), Log{});
}

TEST(MessageThreadOfTheProcess, StartsAndEndsWithItsUsersInWhateverOrder) {
  std::array<std::thread, 4> users;
  for (std::thread& user : users) {
    user = std::thread([] {
      for (int round = 0; round < 10; ++round) {
        const auto held = MessageThread::acquire(MessageThread::Kind::own);
        ASSERT_NE(held, nullptr);
        bool isThere = false;
        held->callAndWait([&] { held->callAndWait([&] { isThere = MessageThread::isCurrent(); }); });
        EXPECT_TRUE(isThere);
        EXPECT_FALSE(MessageThread::isCurrent());
      }
    });
  }
  for (std::thread& user : users) {
    user.join();
  }
}

TEST(MessageThreadOfTheProcess, WakesListenersWhereJuceRunsAlready) {
  const juce::ScopedJuceInitialiser_GUI juce;
  auto thread = MessageThread::acquire(MessageThread::Kind::running);
  ASSERT_NE(thread, nullptr);
  EXPECT_TRUE(MessageThread::isCurrent());
  const auto counter = std::make_shared<WakeUpCounter>();
  thread->addListener(counter);
  std::thread([thread] { thread->wakeUp(); }).join();
  for (int round = 0; round < 1000 && counter->count == 0; ++round) {
    juce::MessageManager::getInstance()->runDispatchLoopUntil(1);
  }
  EXPECT_EQ(counter->count, 1);
  // The last reference may be released on any thread.
  std::thread([own = std::move(thread)] { own->wakeUp(); }).join();
  juce::MessageManager::getInstance()->runDispatchLoopUntil(20);
  EXPECT_EQ(counter->count, 1);
}

TEST(MessageThreadOfTheProcess, LetsACallerGoThatWillNotWait) {
  const auto thread = MessageThread::acquire(MessageThread::Kind::own);
  std::promise<void> mayGoOn;
  thread->callLater([&] { mayGoOn.get_future().wait(); });
  const auto isDone = std::make_shared<std::atomic<bool>>(false);
  EXPECT_FALSE(thread->callAndWait([isDone] { *isDone = true; }, std::chrono::milliseconds(20)));
  mayGoOn.set_value();
  thread->callAndWait([] {});
  EXPECT_TRUE(*isDone);
}

}  // namespace
}  // namespace editor
