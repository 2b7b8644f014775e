// The sample browser and pop-ups under a simulated mouse: the targets of clicks, and repaints.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/SimilarWaves.h"
#include "storage/paths/Paths.h"
#include "support/Sanitized.h"
#include "support/Screen.h"
#include "views/BWSampleSelectorView.h"
#include "views/FinderMenus.h"
#include "views/MenuPlace.h"
#include "views/PanelScene.h"
#include "widgets/BWSimpleListView.h"

namespace views {
namespace {

/// A library whose second category has more samples than the list has room for.
std::vector<support::Wave> manySnares() {
  std::vector<support::Wave> waves = support::categorisedWaves();
  for (int i = 0; i < 20; ++i) {
    waves.push_back(waves[2]);
    waves.back().name = "snare" + std::to_string(i);
  }
  return waves;
}

constexpr juce::Point<int> kBrowser{194, 44};
constexpr int kCategoryRow = kBrowser.x + 20;
constexpr int kSampleRow = kBrowser.x + 153 + 20;
constexpr int rowY(int row) { return kBrowser.y + 76 + 28 * row + 10; }

class Browser : public Panel {
 protected:
  Browser() : Panel(manySnares()) {}
  void clickDisplay(int pad) { hand().click(28 + 92 * pad + 30, 145 + 15); }
  BWSampleSelectorView& open(int pad) {
    clickDisplay(pad);
    return *topPopup<BWSampleSelectorView>();
  }
  void clickTab(int tab) { hand().click(kBrowser.x + 47 * tab + 20, kBrowser.y + 20); }
  std::string sampleOf(std::uint64_t pad) {
    return std::dynamic_pointer_cast<plugin::sivray::ISivrayEditViewModel>(owner)->getSampleName(pad);
  }
};

TEST_F(Browser, GivesASampleToThePadOfTheClickedDisplay) {
  EXPECT_EQ(open(4).getParentComponent()->getBounds(), juce::Rectangle<int>(194, 44, 380, 380));
  EXPECT_EQ(takeHostLog(), Log{}) << "opening and showing a selection gives no sample";
  hand().click(kCategoryRow, rowY(1));
  EXPECT_EQ(takeHostLog(), Log{});
  hand().click(kSampleRow, rowY(1));
  EXPECT_EQ(takeHostLog(), (Log{"begin 48", "automate 48", "end 48"}));
  EXPECT_EQ(sampleOf(4), "wave6");
}

TEST_F(Browser, GivesTheSampleToThePadOfTheTabAndBeginsEachCategoryAtItsTop) {
  open(4);
  clickTab(6);
  hand().click(kCategoryRow, rowY(1));
  hand().click(kSampleRow, rowY(8));
  EXPECT_EQ(takeHostLog(), (Log{"begin 72", "automate 72", "end 72"}));
  EXPECT_EQ(sampleOf(6), "snare6");
  automate(72, 26.0F / 30.0F);
  hand().click(kCategoryRow, rowY(1));  // Scrolls the list to the new sample, which is far below.
  automate(72, 0.0F);
  hand().click(kCategoryRow, rowY(1));
  hand().click(kSampleRow, rowY(0));
  EXPECT_EQ(sampleOf(6), "wave2");
}

TEST_F(Browser, TakesAChangeFromElsewhereWithTheTabThatIsOn) {
  BWSampleSelectorView& browser = open(0);
  auto& categories = dynamic_cast<BWSimpleListView&>(*named(browser, "Categories")->getParentComponent());
  EXPECT_EQ(categories.getSelectedRow(), 9);
  automate(kSample, 1.0F / 30.0F);
  clickTab(0);
  EXPECT_EQ(categories.getSelectedRow(), 0);
}

/// One pad, and as many categories of one sample each as a test needs.
struct FewCategories : ISampleSelectorViewModel {
  explicit FewCategories(std::int64_t categories) : count(categories) {}
  std::int32_t getPartCount() const override { return 1; }
  std::int64_t getCategoryIndex(std::uint64_t) const override { return 0; }
  std::int64_t getSampleIndex(std::uint64_t) const override { return 0; }
  void selectSample(std::uint64_t, std::int64_t, std::int64_t) override {}
  std::int64_t getCategoryCount() const override { return count; }
  std::string getCategoryName(std::int64_t) const override { return "Kick"; }
  std::int64_t getSampleCount(std::int64_t) const override { return 1; }
  std::string getSampleName(std::int64_t, std::int64_t) const override { return "Boom"; }
  std::int64_t count;
};

TEST_F(Browser, FindsSimilarSamplesByAMenu) {
  const std::vector<tesh::vimo::WaveKin> kins{{.wave = 2, .nearest = {6, 11}, .farthest = 11},
                                              {.wave = 6, .nearest = {2}, .farthest = 11}};
  const auto bytes = tesh::vimo::SimilarWaves::pack(kins, readFile(folder.pathOf("drumparam_category.bin").string()));
  folder.writeFile("similar.bin", std::string(bytes.begin(), bytes.end()));
  const auto model = std::dynamic_pointer_cast<plugin::sivray::ISivrayEditViewModel>(owner);
  const FinderModels models{model->getSampleSelectorViewModel(), model->getSampleFinder()};
  models.selector->selectSample(3, 1, 1);
  int calls = 0;
  const auto itemsOf = [&](const juce::PopupMenu& menu) {
    std::vector<std::string> texts;
    for (juce::PopupMenu::MenuItemIterator item(menu); item.next();) {
      texts.push_back(item.getItem().text.toStdString() + (item.getItem().isEnabled ? "" : " -"));
    }
    return texts;
  };
  const auto choose = [&](const char* text) {
    const juce::PopupMenu menu = similarMenu(models, 3, 1, 0, [&] { ++calls; });
    for (juce::PopupMenu::MenuItemIterator item(menu); item.next();) {
      if (item.getItem().text == text) {
        item.getItem().action();
      }
    }
    return sampleOf(3);
  };
  EXPECT_EQ(itemsOf(similarMenu(models, 3, 1, 0, {})),
            (std::vector<std::string>{"Similar", "wave6", "snare0", "", "Something else", "Back"}));
  EXPECT_EQ(choose("snare0"), "snare0");
  EXPECT_EQ(choose("wave6"), "wave6");
  EXPECT_EQ(choose("Something else"), "snare0");
  EXPECT_EQ(choose("Back"), "wave6");
  EXPECT_EQ(calls, 4);
  EXPECT_EQ(itemsOf(similarMenu(models, 0, 0, 0, {})),
            (std::vector<std::string>{"Similar", "", "Something else -", "Back -"}))
      << "nothing is known of wave 1";
  EXPECT_EQ(itemsOf(varyMenu(models.finder)), (std::vector<std::string>{"Vary", "Back -"}));
}

TEST_F(Browser, LeavesAnItemThatWasChosenUndoneIfThePanelGoesFirst) {
  auto model = std::dynamic_pointer_cast<plugin::sivray::ISivrayEditViewModel>(owner);
  model->getSampleSelectorViewModel()->selectSample(3, 1, 1);
  std::vector<std::function<void()>> chosen;
  for (const juce::PopupMenu& menu :
       {similarMenu({model->getSampleSelectorViewModel(), model->getSampleFinder()}, 3, 1, 0, {}),
        varyMenu(model->getSampleFinder())}) {
    for (juce::PopupMenu::MenuItemIterator item(menu); item.next();) {
      chosen.push_back(item.getItem().action);
    }
  }
  model.reset();
  component.reset();
  owner.reset();
  takeHostLog();
  for (const auto& act : chosen) {
    if (act) {
      act();
    }
  }
  EXPECT_EQ(takeHostLog(), Log{});
}

TEST_F(Browser, OpensTheMenuOfAKeyBesideTheListOfSamples) {
  auto& list = dynamic_cast<BWSimpleListView&>(*named(open(0), "Samples")->getParentComponent());
  const auto place = menuPlaceBeside(list, list.rowBounds(0));
  const juce::Rectangle<int> menu = place.getTargetScreenArea().withSize(place.getMinimumWidth(), 300);
  EXPECT_FALSE(menu.intersects(list.getScreenBounds())) << menu.toString();
  EXPECT_EQ(menu.getY(), list.getScreenY() + list.rowBounds(0).getY());
}

TEST_F(Browser, NeedsNoCategoriesIfThereIsOne) {
  for (const std::int64_t categories : {1, 2}) {
    BWSampleSelectorView browser;
    browser.setSize(380, 380);
    browser.setSelector(std::make_shared<FewCategories>(categories));
    browser.setFontProvider(owner);
    browser.setPart(0);
    EXPECT_EQ(named(browser, "Samples")->getParentComponent()->getX(), categories == 1 ? 0 : 153);
    EXPECT_EQ(named(browser, "Samples")->getParentComponent()->getWidth(), categories == 1 ? 380 : 227);
    EXPECT_EQ(named(browser, "Categories")->getParentComponent()->isVisible(), categories == 2);
  }
}

// Pop-ups.

TEST_F(Browser, IsPaintedByItsPartsAsAWhole) {
  for (const float scale : {1.25F, 1.0F, 1.5F, 2.0F}) {
    if (support::kIsSanitized && scale != 1.25F) {
      break;
    }
    clickDisplay(4);  // A tooltip of the previous round may cover it.
    sivray::test::Screen screen(slot, scale);
    const auto expectWhole = [&](const char* after) { EXPECT_EQ(screen.update(), 0) << after << " at " << scale; };
    hand().click(kCategoryRow, rowY(1));
    expectWhole("a category");
    hand().click(kSampleRow, rowY(3));
    expectWhole("a sample");
    clickTab(5);
    expectWhole("a tab");
    for (const juce::Point<int> row :
         {juce::Point<int>(kSampleRow, rowY(0)), juce::Point<int>(kCategoryRow, rowY(2))}) {
      slot.getComponentAt(row)->repaint();
      expectWhole("a row");
    }
    hand().click(10, 460);
    slot.repaint();
    const juce::Point<int> knob = middleOf(kPitch);
    hand().press(knob.x, knob.y).drag(knob.x, knob.y - 30).release();
    expectWhole("a tooltip");
    hand().click(41 + 70, 81 + 10);  // The kit display, under the tooltip.
    expectWhole("a list");
    automate(kPitch, scale / 4.0F);
    expectWhole("a knob under a list");
    hand().click(10, 460);
  }
}

TEST_F(Browser, IgnoresTheSecondPressOfTheDoubleClickThatOpensIt) {
  const juce::Point<int> display(28 + 92 * 4 + 30, 145 + 15);  // Above the list of samples.
  const auto mouse = juce::Desktop::getInstance().getMainMouseSource().getScreenPosition().roundToInt();
  slot.setTopLeftPosition(mouse - display);
  open(4);
  hand().press(display.x + 2, display.y, 2).release();
  EXPECT_EQ(takeHostLog(), Log{});
  hand().click(display.x, display.y - 28);
  EXPECT_EQ(takeHostLog().size(), 3U) << "elsewhere at once";
  juce::Thread::sleep(juce::MouseEvent::getDoubleClickTimeout() + 10);
  hand().click(display.x, display.y);
  EXPECT_EQ(takeHostLog().size(), 3U);
}

TEST_F(Browser, ClosesWithEscapeAsAnyPopupDoes) {
  const auto press = [this](int key) {
    auto& popup = dynamic_cast<juce::KeyListener&>(*slot.getChildComponent(slot.getNumChildComponents() - 1));
    return popup.keyPressed(juce::KeyPress(key), &slot);
  };
  for (const juce::Point<int> place : {juce::Point<int>(40, 30), {111, 91}, {387, 91}, {58, 160}}) {
    hand().click(place.x, place.y);
    ASSERT_EQ(slot.getNumChildComponents(), 2);
    EXPECT_FALSE(press('a'));
    EXPECT_TRUE(press(juce::KeyPress::escapeKey));
    EXPECT_EQ(slot.getNumChildComponents(), 1);
  }
}

}  // namespace
}  // namespace views
