// The file of taught notes: it is read as it was written, and an invalid edit costs only its line.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/notes/TaughtNotes.h"

#include <gtest/gtest.h>

namespace tesh::bramel {
namespace {

TEST(TaughtNotes, ComeBackAndSayWhichLineDoesNotHold) {
  const TaughtNotes notes{{22, 42}, {0, 127}, {127, 0}};
  const TaughtNotesText same = readTaughtNotes(textOf(notes));
  EXPECT_EQ(same.notes, notes);
  EXPECT_EQ(same.faultyLine, 0);
  EXPECT_EQ(readTaughtNotes("\xEF\xBB\xBF"
                            "22=42")
                .notes,
            (TaughtNotes{{22, 42}}))
      << "as some editors write";
  EXPECT_EQ(readTaughtNotes(" 22 = 42 \r\n\r\n\t# mine\n22=43").notes, (TaughtNotes{{22, 43}}));
  for (const char* line : {"128=36", "-1=36", "22=", "=36", "22 36", "22=36x", "22=36=1", "22=256", "kick=36"}) {
    const TaughtNotesText text = readTaughtNotes("60=36\n" + std::string(line) + "\n61=37\nx\n");
    EXPECT_EQ(text.faultyLine, 2) << line;
    EXPECT_EQ(text.notes, (TaughtNotes{{60, 36}, {61, 37}})) << line;
  }
  const auto map = noteMapOf({{60, 36}});
  EXPECT_EQ(map.notes[60], 36);
  EXPECT_EQ(map.notes[40], 38) << "the rest is General MIDI's";
  EXPECT_TRUE(map.hasHatPedal);
}

}  // namespace
}  // namespace tesh::bramel
