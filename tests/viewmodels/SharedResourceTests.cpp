// The store of fonts and images that all instruments of a process share.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <juce_gui_basics/juce_gui_basics.h>

#include "ViewModelScene.h"
#include "support/NotedResources.h"

namespace models {
namespace {

using support::NotedResources;
using tesh::cofu::core::boxed::valueIn;

class SharedResources : public testing::Test {
 protected:
  using Model = BXInstrumentEditViewModel;

  static std::weak_ptr<Model::SharedImpl> storeOf(BramelInstrument& instrument) {
    const auto box = instrument.property(Model::kSharedImplKey);
    return *valueIn<std::shared_ptr<Model::SharedImpl>>(box);
  }

  const juce::ScopedJuceInitialiser_GUI juce;
  NotedResources resources;
};

TEST_F(SharedResources, ServeAllInstrumentsAndEndWithTheLast) {
  resources.add("TTF", "ROBOTO", NotedResources::face("roboto/Roboto-Regular.ttf"));
  auto first = std::make_shared<BramelInstrument>(nullptr);
  auto model = std::make_unique<Model>(first, resources.lookup());
  const std::vector<std::string> familyFonts{"TTF Roboto",
                                             "TTF Open_Sans_Regular",
                                             "OTF Open_Sans_Regular",
                                             "TTF Open_Sans_SemiBold",
                                             "OTF Open_Sans_SemiBold",
                                             "TTF Open_Sans_Bold",
                                             "OTF Open_Sans_Bold"};
  EXPECT_EQ(std::exchange(resources.asked, {}), familyFonts);
  const auto store = storeOf(*first);
  model.reset();  // The instrument keeps the store after its editor has closed.
  ASSERT_FALSE(store.expired());

  auto second = std::make_shared<BramelInstrument>(nullptr);
  model = std::make_unique<Model>(second, resources.lookup());
  EXPECT_EQ(resources.asked.front(), "TTF Open_Sans_Regular");  // Roboto is available.
  EXPECT_EQ(storeOf(*second).lock(), store.lock());
  first.reset();
  const auto font = model->getFont("Roboto", 9);
  EXPECT_TRUE(valueIn<juce::Font>(font)->getTypefaceName().startsWith("Roboto"));
  model.reset();
  second.reset();
  EXPECT_TRUE(store.expired());

  resources.asked.clear();
  Model(std::make_shared<BramelInstrument>(nullptr), resources.lookup());
  EXPECT_EQ(resources.asked, familyFonts);
}

TEST_F(SharedResources, ComeInTheScaleOfTheirEditor) {
  resources.add("PNG", "PAD", NotedResources::png(4, 4));
  resources.add("PNG", "PAD_2X", NotedResources::png(8, 8));
  resources.add("TTF", "ROBOTO", NotedResources::face("roboto/Roboto-Regular.ttf"));
  const auto instrument = std::make_shared<BramelInstrument>(nullptr);
  const auto family = std::make_shared<Model>(instrument, resources.lookup());
  BXSivrayEditViewModel model(family);
  const auto width = [](const tesh::cofu::core::boxed::Box& box) { return valueIn<juce::Image>(box)->getWidth(); };
  EXPECT_EQ(width(model.getImage("Pad")), 4);
  model.setImageScale(5);
  EXPECT_EQ(width(model.getImage("Pad")), 8);
  model.setImageScale(0);
  EXPECT_EQ(width(model.getImage("Pad")), 4);
  EXPECT_EQ(model.getImage("None"), nullptr);
  resources.add("TTF", "OSWALD_MEDIUM", NotedResources::face("oswald/Oswald-Medium.ttf"));
  family->addFont("Oswald Medium");
  EXPECT_TRUE(valueIn<juce::Font>(model.getFont("Oswald Medium", 9))->getTypefaceName().startsWith("Oswald"));
}

}  // namespace
}  // namespace models
