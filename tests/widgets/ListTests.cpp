// Lists, texts, pages and grids.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/Hand.h"
#include "viewmodels/resources/ResourceStore.h"
#include "widgets/BWCollectionView.h"
#include "widgets/BWGradationView.h"
#include "widgets/BWSimpleListView.h"
#include "widgets/BWStackingView.h"
#include "widgets/PanelLookAndFeel.h"
#include "widgets/PanelText.h"
#include "widgets/Text.h"

namespace tesh::bramel {
namespace {

using sivray::test::Hand;
using sivray::test::RepaintCounter;
using testing::ElementsAre;
using testing::IsEmpty;

class ListLog : public IBWSimpleListViewListener {
 public:
  std::vector<std::string> lines;
  void listRowSelected(BWSimpleListView& /*list*/, int row) override {
    lines.push_back("selected " + std::to_string(row));
  }
  void listRowClicked(BWSimpleListView& /*list*/, int row, const juce::MouseEvent& event) override {
    lines.push_back((event.mods.isRightButtonDown() ? "right click " : "click ") + std::to_string(row));
  }
};

class SimpleList : public testing::Test {
 protected:
  SimpleList() {
    list.setSize(200, 4 * BWSimpleListView::kRowHeight);
    list.setListener(&log);
    list.setItems({"001 : Attic", "002 : Basement", "003 : Barn", "004 : Cellar", "005 : Den", "006 : Eaves"});
  }
  int topRow() { return dynamic_cast<juce::ListBox&>(*list.getChildComponent(0)).getRowContainingPosition(1, 1); }

  ListLog log;
  BWSimpleListView list;
};

TEST_F(SimpleList, AHandSelectsAndTells) {
  Hand(list).click(50, 30);
  EXPECT_EQ(list.getSelectedRow(), 1);
  EXPECT_THAT(log.lines, ElementsAre("selected 1", "click 1"));
  Hand(list).rightButton().click(50, 60);
  EXPECT_EQ(log.lines.back(), "right click 2");
}

TEST_F(SimpleList, AClickTellsTheMarkedRowIfItIsToButNotADoubleClickTwice) {
  list.selectRow(1);
  const auto told = [this](int clicks) {
    log.lines.clear();
    Hand(list).press(50, 30, clicks).release();
    return log.lines;
  };
  EXPECT_THAT(told(1), ElementsAre("click 1"));
  list.setTellsMarkedRow(true);
  EXPECT_THAT(told(1), ElementsAre("selected 1", "click 1"));
  EXPECT_THAT(told(2), ElementsAre("click 1")) << "the second half of a double click";
  Hand(list).click(50, 2);
  auto& box = dynamic_cast<juce::ListBox&>(*list.getChildComponent(0));
  box.keyPressed(juce::KeyPress(juce::KeyPress::downKey));
  EXPECT_THAT(told(1), ElementsAre("selected 1", "click 1")) << "what a key has selected is told by then";
  log.lines.clear();
  Hand(list).rightButton().click(50, 30);
  EXPECT_THAT(log.lines, ElementsAre("right click 1"));
}

TEST_F(SimpleList, TintsTheRowUnderTheMouse) {
  const auto pixel = [this](int y) { return list.createComponentSnapshot(list.getLocalBounds()).getPixelAt(150, y); };
  const juce::Colour plain = pixel(40);
  Hand(list).move(50, 30);
  EXPECT_NE(pixel(40), plain);
  EXPECT_EQ(pixel(70), plain);
  RepaintCounter repaints(list);
  Hand(list).move(60, 35);
  EXPECT_EQ(repaints.take(), 0);
  Hand(list).move(50, 60);
  EXPECT_EQ(repaints.takeArea(), juce::Rectangle<int>(0, 28, 200, 56));
  list.setCachedComponentImage(nullptr);
  Hand(list).move(50, 60).leave();
  EXPECT_EQ(pixel(70), plain);
}

TEST_F(SimpleList, AProgramSelectsInSilenceAndScrollsToTheRow) {
  list.selectRow(5);
  EXPECT_EQ(list.getSelectedRow(), 5);
  EXPECT_EQ(topRow(), 2);
  list.selectRow(-1);
  EXPECT_EQ(list.getSelectedRow(), -1);
  list.selectRow(3);
  list.setItems({"one"});
  EXPECT_EQ(list.getSelectedRow(), -1);
  EXPECT_THAT(log.lines, IsEmpty());
  Hand(list).click(50, 5);
  EXPECT_EQ(log.lines.front(), "selected 0");
}

TEST_F(SimpleList, ReadsRowsThatAreNotUtf8AsLatin1) {
  list.setItems({"001 : \xc3\xa9", "002 : \xe9", "", "004 : " + std::string(94, 'a') + "\xc3"});
  EXPECT_EQ(list.getNameForRow(0), list.getNameForRow(1).replace("002", "001"));
  EXPECT_EQ(list.getNameForRow(1).length(), 7);
  EXPECT_TRUE(list.getNameForRow(2).isEmpty());
  EXPECT_EQ(list.getNameForRow(3).length(), 6 + 94) << "a character that the length of a name has cut";
}

TEST(Text, LeavesOutACharacterThatTheLengthOfANameHasCut) {
  const std::string plain(94, 'a');
  EXPECT_EQ(textFrom(plain + "\xc3"), juce::String(plain.c_str()));
  EXPECT_EQ(textFrom("01:" + plain.substr(3) + "\xe3\x83").length(), 94);
  EXPECT_EQ(textFrom(plain + "\xc3\xa9").length(), 95);
  EXPECT_EQ(textFrom("Caf\xe9"), juce::String::fromUTF8("Caf\xc3\xa9")) << "Latin-1";
  EXPECT_EQ(textFrom("\xe9" + plain + "\xe9").length(), 96);
}

TEST_F(SimpleList, BringsARowOffTheScreenToItsMiddle) {
  list.setSize(200, 3 * BWSimpleListView::kRowHeight);
  list.selectRow(2);
  EXPECT_EQ(topRow(), 0);
  list.selectRow(4);
  EXPECT_EQ(topRow(), 3);
  list.selectRow(1);
  EXPECT_EQ(topRow(), 0);
}

TEST_F(SimpleList, KeepsItsRowInViewWhenItShrinks) {
  list.selectRow(3);
  list.setSize(200, BWSimpleListView::kRowHeight);
  EXPECT_EQ(topRow(), 3);
}

TEST_F(SimpleList, ItsScrollBarLiesOverTheRowsAndShowsOnlyIfNeeded) {
  auto& box = dynamic_cast<juce::ListBox&>(*list.getChildComponent(0));
  auto& bar = dynamic_cast<juce::ScrollBar&>(*list.getChildComponent(1));
  EXPECT_EQ(box.getRowPosition(0, true).getWidth(), 200);
  EXPECT_TRUE(bar.isVisible());
  list.selectRow(5);
  EXPECT_EQ(bar.getCurrentRangeStart(), 2 * BWSimpleListView::kRowHeight);
  bar.setCurrentRangeStart(BWSimpleListView::kRowHeight, juce::sendNotificationSync);
  EXPECT_EQ(topRow(), 1);
  list.setItems({"one", "two"});
  EXPECT_FALSE(bar.isVisible());
}

TEST_F(SimpleList, LeavesLettersWithAModifierOtherThanShiftToOthers) {
  const auto press = [this](int modifiers) {
    return list.keyPressed(juce::KeyPress('b', juce::ModifierKeys(modifiers), 'b'));
  };
  EXPECT_FALSE(press(juce::ModifierKeys::ctrlModifier));
  EXPECT_FALSE(press(juce::ModifierKeys::altModifier));
  EXPECT_EQ(list.getSelectedRow(), -1);
  EXPECT_TRUE(press(juce::ModifierKeys::shiftModifier));
  EXPECT_EQ(list.getSelectedRow(), 1);
}

TEST_F(SimpleList, AsksItsListenerBeforeItSearchesForALetter) {
  struct Taker final : IBWSimpleListViewListener {
    void listRowSelected(BWSimpleListView&, int) override {}
    bool listKeyPressed(BWSimpleListView&, int row, const juce::KeyPress& key) override {
      takenAt = row;
      return key.getTextCharacter() == 'D';
    }
    int takenAt = -2;
  } taker;
  list.setListener(&taker);
  list.selectRow(2);
  EXPECT_TRUE(list.keyPressed(juce::KeyPress('d', juce::ModifierKeys(juce::ModifierKeys::shiftModifier), 'D')));
  EXPECT_EQ(list.getSelectedRow(), 2);
  EXPECT_EQ(taker.takenAt, 2);
  EXPECT_TRUE(list.keyPressed(juce::KeyPress('d', juce::ModifierKeys(), 'd')));
  EXPECT_EQ(list.getSelectedRow(), 4);
  list.setListener(nullptr);
}

TEST_F(SimpleList, TypedLettersSelectAndTell) {
  EXPECT_TRUE(list.keyPressed(juce::KeyPress('d', juce::ModifierKeys(), 'd')));
  EXPECT_THAT(log.lines, ElementsAre("selected 4"));
  EXPECT_FALSE(list.keyPressed(juce::KeyPress('a', juce::ModifierKeys(juce::ModifierKeys::ctrlModifier), 'a')));
  EXPECT_FALSE(list.keyPressed(juce::KeyPress(juce::KeyPress::spaceKey, juce::ModifierKeys(), ' ')));
}

TEST(TypeAheadRows, AreFoundByNameOrNumberAndByLongerWords) {
  const std::vector<juce::String> rows{"001 : Attic", "002 : Basement", "003 : Barn", "004 : Cellar hollow",
                                       "010 : Bath"};
  const auto textOf = [&rows](int row) { return rows[static_cast<std::size_t>(row)]; };
  TypeAhead typed;
  int row = -1;
  std::uint32_t now = 5000;
  const auto type = [&](char letter, std::uint32_t after) {
    return row = typed.find(static_cast<juce::juce_wchar>(letter), now += after, row, 5, textOf);
  };
  EXPECT_EQ(type('b', 0), 1);
  EXPECT_EQ(type('B', 100), 2);  // The same letter again selects its next row.
  EXPECT_EQ(type('b', 100), 4);
  EXPECT_EQ(type('b', 2000), 1);
  EXPECT_EQ(type('a', 100), 1);
  EXPECT_EQ(type('t', 100), 4);
  EXPECT_EQ(type('a', 2000), 0);
  EXPECT_EQ(type('0', 2000), 1);
  EXPECT_EQ(type('1', 100), 4);
  EXPECT_EQ(type('x', 2000), -1);
  EXPECT_EQ(type('h', 2000), 3) << "a word within the name";
  EXPECT_EQ(type('o', 100), 3);
  EXPECT_EQ(type('t', 2000), -1) << "within a word";
  EXPECT_EQ(TypeAhead().find('a', 0, -1, 0, textOf), -1);
}

TEST(ListRows, AreDrawnWithALineAboveAllButTheFirst) {
  const BWSimpleListViewDefaultRenderer renderer;
  const auto paint = [&renderer](int row, bool selected) {
    juce::Image image(juce::Image::ARGB, 40, 28, true);
    juce::Graphics graphics(image);
    renderer.paintRow("", row, graphics, 40, 28, selected);
    return image;
  };
  EXPECT_EQ(paint(0, false).getPixelAt(20, 0).getAlpha(), 0);
  EXPECT_NEAR(paint(1, false).getPixelAt(20, 0).getAlpha(), 128, 1) << "half a pixel, all of it inside the row";
  EXPECT_EQ(paint(0, true).getPixelAt(20, 14).getAlpha(), 0xe6);
}

/// Returns the leftmost column and the rows with non-background pixels.
juce::Rectangle<int> ink(const juce::Image& image) {
  juce::RectangleList<int> found;
  for (int y = 0; y < image.getHeight(); ++y) {
    for (int x = 0; x < image.getWidth(); ++x) {
      if (image.getPixelAt(x, y).getAlpha() > 0) {
        found.add(x, y, 1, 1);
      }
    }
  }
  return found.getBounds();
}

TEST(Text, KeepsItsHeightAndMovesByWholePixels) {
  const auto draw = [](int width, int height, float fontHeight) {
    PanelText text;
    text.setText("Hill");
    text.setFont(juce::Font(fontHeight));
    text.setSize(width, height);
    return text.createComponentSnapshot(text.getLocalBounds());
  };
  const juce::Image even = draw(100, 40, 16.0F);
  const juce::Image odd = draw(101, 40, 16.0F);
  const juce::Rectangle<int> area = ink(even);
  ASSERT_FALSE(area.isEmpty());
  // One more pixel of width moves the text by 0 or 1 pixel and changes none of its pixels.
  const int shift = ink(odd).getX() - area.getX();
  EXPECT_TRUE(shift == 0 || shift == 1);
  for (int x = area.getX(); x < area.getRight(); ++x) {
    EXPECT_EQ(even.getPixelAt(x, area.getCentreY()), odd.getPixelAt(x + shift, area.getCentreY()));
  }
  EXPECT_EQ(ink(draw(100, 14, 16.0F)).getWidth(), area.getWidth());
  const int squeezed = area.getWidth() * 9 / 10;
  EXPECT_NEAR(ink(draw(squeezed, 40, 16.0F)).getWidth(), squeezed, 2) << "and no letter is lost";
}

TEST(Text, CentresTheInkOfTheDisplayFaceAndLeavesWordsThatTheFaceLacksToTheDefaultFace) {
  ResourceStore store;
  store.addFont("PF Arma Five");
  const auto box = store.getFont("PF Arma Five", 13.0);
  const juce::Font face = *tesh::cofu::core::boxed::valueIn<juce::Font>(box);
  const auto draw = [](const juce::String& words, auto setFont) {
    PanelText text;
    setFont(text);
    text.setText(words);
    text.setSize(100, 20);
    return ink(text.createComponentSnapshot(text.getLocalBounds()));
  };
  const auto display = [&face](PanelText& text) { text.setDisplayFont(face); };
  const auto inDefaultFace = [](PanelText& text) { text.setFont(juce::Font(13.0F)); };
  // Four columns of pixels, a blank one and four more make 9 of 100.
  EXPECT_EQ(draw("HH", display).getX(), 46);
  EXPECT_EQ(draw("HH", display).getWidth(), 9);
  const juce::String omega = juce::String::charToString(0x3a9);
  EXPECT_EQ(draw("H" + omega, display), draw("H" + omega, inDefaultFace));
  EXPECT_NE(draw(juce::String::fromUTF8("H\u00e4"), display), draw(juce::String::fromUTF8("H\u00e4"), inDefaultFace));
}

TEST(Text, LeavesNothingOfTheTextBefore) {
  const auto drawLast = [](const std::vector<const char*>& texts) {
    PanelText text;
    text.setSize(100, 20);
    for (const char* const words : texts) {
      text.setText(words);
    }
    return ink(text.createComponentSnapshot(text.getLocalBounds()));
  };
  EXPECT_EQ(drawLast({"Long Hall", "Room"}), drawLast({"Room"}));
  EXPECT_TRUE(drawLast({"Room", ""}).isEmpty());
}

TEST(Text, RepaintsOnlyForAChange) {
  PanelText text;
  text.setSize(100, 20);
  text.setText("Room");
  RepaintCounter repaints(text);
  text.setText("Room");
  text.setColour(juce::Colours::black);
  EXPECT_EQ(repaints.take(), 0);
  text.setText("Hall");
  EXPECT_EQ(repaints.take(), 1);
}

TEST(Gradation, RunsFromTheBottomLeftToTheTopRight) {
  BWGradationView view;
  view.setColours(juce::Colours::black, juce::Colours::white);
  view.setSize(300, 50);
  const juce::Image image = view.createComponentSnapshot(view.getLocalBounds());
  // The diagonal from top left to bottom right has one colour, the middle one.
  EXPECT_NEAR(image.getPixelAt(1, 0).getRed(), 128, 3);
  EXPECT_NEAR(image.getPixelAt(298, 49).getRed(), 128, 3);
  EXPECT_LT(image.getPixelAt(1, 49).getRed(), 10);
  EXPECT_GT(image.getPixelAt(298, 0).getRed(), 245);
}

std::shared_ptr<juce::Component> item(int width) {
  auto component = std::make_shared<juce::Component>();
  component->setSize(width, 24);
  return component;
}

TEST(StackingView, ShowsTheTopPageBelowItsBars) {
  BWStackingView stack;
  stack.setSize(280, 420);
  auto first = std::make_shared<BWStackingPageView>();
  for (int i = 0; i < 4; ++i) {
    first->addRightItem(item(60));
  }
  stack.pushPage(first);
  EXPECT_EQ(stack.getLocalArea(first.get(), first->getLocalBounds()), juce::Rectangle<int>(0, 40, 280, 380));
  const auto rightBar = [&stack](BWStackingPageView& page) {
    return stack.getLocalArea(&page.getRightBar(), page.getRightBar().getLocalBounds());
  };
  EXPECT_EQ(rightBar(*first), juce::Rectangle<int>(8, 8, 264, 24));
  first->clearRightItems();
  first->addRightItem(item(60));
  EXPECT_EQ(rightBar(*first), juce::Rectangle<int>(212, 8, 60, 24));

  auto second = std::make_shared<BWStackingPageView>();
  second->addLeftItem(item(60));
  const std::weak_ptr<BWStackingPageView> watch = second;
  stack.pushPage(std::move(second));
  EXPECT_EQ(stack.getTopPage()->getLeftBar().getX() + stack.getTopPage()->getLeftBar().getParentComponent()->getX(), 8);
  EXPECT_EQ(first->getParentComponent(), nullptr);
  stack.popPage();
  EXPECT_TRUE(watch.expired());
  EXPECT_EQ(stack.getTopPage(), first.get());
  stack.popPage();
  stack.popPage();
  EXPECT_EQ(stack.getTopPage(), nullptr);
  EXPECT_EQ(first->getStackingView(), nullptr);
}

class Grid : public testing::Test, protected IBWCollectionViewDataSource {
 protected:
  Grid() {
    view.setLookAndFeel(&look);
    view.setSize(404 + look.getDefaultScrollbarWidth(), 404);
    view.setDataSource(this);
  }
  ~Grid() override { view.setLookAndFeel(nullptr); }

  int getCellCount(BWCollectionView& /*view*/) override { return count; }
  juce::Point<int> getCellSize(BWCollectionView& /*view*/) override { return {101, 101}; }
  std::shared_ptr<BWCollectionViewCell> makeCell(BWCollectionView& /*view*/) override {
    return cells.emplace_back(std::make_shared<BWCollectionViewCell>());
  }
  void fillCell(BWCollectionView& /*view*/, BWCollectionViewCell& /*cell*/, int index) override { filled = index; }
  void cellSelected(BWCollectionView& chosen) override { told.push_back(chosen.getSelected()); }

  int count = 43;
  int filled = -1;
  std::vector<int> told;
  std::vector<std::shared_ptr<BWCollectionViewCell>> cells;
  PanelLookAndFeel look;
  BWCollectionView view;
};

TEST_F(Grid, StandsInLinesOfFour) {
  EXPECT_EQ(cells.size(), 43U);
  EXPECT_EQ(filled, 42);
  EXPECT_EQ(cells[42]->getBounds(), juce::Rectangle<int>(202, 1010, 101, 101));
  view.scrollToCell(17);
  EXPECT_EQ(view.getViewport().getViewPositionY(), 404);
  cells.clear();
  view.setSize(100, 404);
  EXPECT_THAT(cells, IsEmpty());
}

TEST_F(Grid, AHandAndKeysSelectAndTellAndASetterDoesNot) {
  view.setSelected(3);
  EXPECT_TRUE(cells[3]->isSelected());
  Hand(view).click(150, 150);
  EXPECT_EQ(view.getSelected(), 5);
  EXPECT_FALSE(cells[3]->isSelected());
  EXPECT_TRUE(cells[5]->isSelected());
  view.keyPressed(juce::KeyPress(juce::KeyPress::pageDownKey));
  EXPECT_EQ(view.getViewport().getViewPositionY(), 6 * 101 - 404);
  view.keyPressed(juce::KeyPress(juce::KeyPress::upKey));
  view.keyPressed(juce::KeyPress(juce::KeyPress::endKey));
  EXPECT_THAT(told, ElementsAre(5, 21, 17, 42));
}

}  // namespace
}  // namespace tesh::bramel
