// A block's reports allocate nothing, even while the message thread is busy for long.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CountedMemory.h"

#include <future>

#include "editor/EditorScene.h"

namespace editor {
namespace {

#if !defined(SIVRAY_FIXED_OPERATORS)
TEST_F(Editor, AsksForNoMemoryInABlock) {
  openView();
  std::promise<void> isBusy;
  std::promise<void> mayGoOn;
  auto stay = mayGoOn.get_future();
  editor->messageThread()->callLater([&] {
    isBusy.set_value();
    stay.wait();
  });
  isBusy.get_future().wait();
  const int before = support::memoryCalls();
  for (int block = 0; block < 100; ++block) {
    for (std::uint64_t id = 0; id < models::kMacros; ++id) {
      editor->parameterChanged(id);
    }
    const std::array<std::uint8_t, 3> note{0x90, 36, static_cast<std::uint8_t>(block % 2)};
    editor->midiReceived(note.data(), note.size());
    editor->releaseUpdates();
    editor->holdUpdates();
  }
  EXPECT_EQ(support::memoryCalls(), before);
  mayGoOn.set_value();
  EXPECT_EQ(heard().size(), models::kMacros + 2);
  closeView();
}
#endif

}  // namespace
}  // namespace editor
