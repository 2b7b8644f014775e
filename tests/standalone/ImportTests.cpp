// Files dropped on the program: they play at once, are compared with a sound that stays, and can be undone.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <juce_audio_formats/juce_audio_formats.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "ProgramScene.h"
#include "host/shell/MissingSounds.h"
#include "host/standalone/ContentTool.h"
#include "host/standalone/ImportView.h"
#include "support/Hand.h"
#include "support/Sanitized.h"

namespace {

using namespace tesh::bramel;
using namespace tesh::bramel::standalone;
using testing::HasSubstr;

TEST(ContentTool, TakesInWhatTheProgramSaysOfFiles) {
  ToolResult result;
  EXPECT_EQ(takeToolLine("progress\t0.25", result), 0.25);
  EXPECT_EQ(takeToolLine("added\t/in/a b.wav\t17\tOak\t", result), -1.0);
  takeToolLine("known\t/in/c.wav\t18\tElm\t", result);
  takeToolLine("unused\t/in/d.txt\t0\t\tis no sound file", result);
  takeToolLine("done", result);
  takeToolLine("sivray-content: something", result);
  takeToolLine("", result);
  EXPECT_THAT(result.added(), testing::ElementsAre(17));
  EXPECT_THAT(result.usable(), testing::ElementsAre(17, 18));
  EXPECT_EQ(result.files[0].path, "/in/a b.wav");
  EXPECT_EQ(result.files[2].note, "is no sound file");
  EXPECT_EQ(result.lastLine, "something");
  result.isDone = true;
  EXPECT_EQ(summaryOf(result), "1 sound added, 1 was there already, 1 file not used");
}

class ImportTest : public sivray::test::ProgramScene {
 protected:
  ImportTest() {
    machine["JACK"]["system"] = {};
    for (const char* const name : {"BRAMEL_COMMON_FILES", "BRAMEL_DOCUMENTS", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
      const char* const value = std::getenv(name);
      before.emplace_back(name, value == nullptr ? "" : value);
    }
    ::unsetenv("BRAMEL_COMMON_FILES");
    ::setenv("BRAMEL_DOCUMENTS", place("documents").toRawUTF8(), 1);
    ::setenv("XDG_DATA_HOME", place("data").toRawUTF8(), 1);
    ::setenv("XDG_DATA_DIRS", SIVRAY_CONTENT_FOLDER, 1);
  }
  ~ImportTest() override {
    program.reset();
    folder.getFile().deleteRecursively();
    for (const auto& [name, value] : before) {
      value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
    }
  }
  void SetUp() override {
    ProgramScene::SetUp();
    if (!HasFatalFailure()) {
      start(folder.getFile().getChildFile("settings"));
    }
  }

  juce::String place(const char* name) const { return folder.getFile().getChildFile(name).getFullPathName(); }

  /// Writes a decaying tone of 0.2 s, different for each pitch.
  juce::String sound(const juce::String& name, int pitch) const {
    const juce::File file = folder.getFile().getChildFile("in").getChildFile(name);
    file.getParentDirectory().createDirectory();
    juce::AudioBuffer<float> samples(1, 8820);
    for (int i = 0; i < samples.getNumSamples(); ++i) {
      const auto time = static_cast<float>(i) / 44100.0F;
      samples.setSample(0, i, std::exp(-20.0F * time) * std::sin(6.2832F * static_cast<float>(pitch) * time));
    }
    std::unique_ptr<juce::AudioFormatWriter> writer(
        juce::WavAudioFormat().createWriterFor(new juce::FileOutputStream(file), 44100.0, 1, 16, {}, 0));
    writer->writeFromAudioSampleBuffer(samples, 0, samples.getNumSamples());
    return file.getFullPathName();
  }

  std::vector<float> values() {
    std::vector<float> all;
    for (const auto* const parameter : processor().getParameters()) {
      all.push_back(parameter->getValue());
    }
    return all;
  }

  void drop(const juce::StringArray& files, juce::Component& target) {
    juce::ComponentPeer::DragInfo info;
    info.files = files;
    info.position = window->getPeer()->getComponent().getLocalPoint(&target, target.getLocalBounds().getCentre());
    window->getPeer()->handleDragMove(info);
    window->getPeer()->handleDragDrop(info);
  }

  juce::TemporaryFile folder{"sivray-import"};
  std::vector<std::pair<std::string, std::string>> before;
};

TEST_F(ImportTest, PlaysFilesOnThePadAndTakesThemBack) {
  processor().getParameters()[1]->setValueNotifyingHost(0.25F);
  run(4);
  const std::vector<float> old = values();
  constexpr int kFiles = support::kIsSanitized ? 3 : 20;
  juce::StringArray files;
  for (int i = 0; i < kFiles; ++i) {
    files.add(sound("Sound " + juce::String(i) + ".wav", 100 + 10 * i));
  }
  loudest = 0.0F;
  const auto start = juce::Time::getMillisecondCounterHiRes();
  drop(files, button("Pad 3"));
  ASSERT_TRUE(comesTrue([this] { return strip() == juce::String(kFiles) + " sounds added"; })) << strip();
  const double milliseconds = juce::Time::getMillisecondCounterHiRes() - start;
  RecordProperty("milliseconds", static_cast<int>(milliseconds));
  std::printf("%d files play after %.0f ms\n", kFiles, milliseconds);

  constexpr std::size_t kThirdPad = 24;
  std::vector<float> expected = old;
  expected[kThirdPad] = 1.0F / 4088.0F;
  EXPECT_EQ(values(), expected) << "all but the pad's sample is as it was";
  const auto* const library = processor().instrument()->processorHandle()->generator().sampleLibrary();
  EXPECT_EQ(library->waveName(library->flatIndexOf(1)), "Sound 0");
  EXPECT_EQ(library->waveCategory(library->flatIndexOf(1)), 1) << "the pad's role";
  run(8);
  EXPECT_GT(loudest, 0.0F) << "and is heard";

  button("Sound and MIDI").click();
  ASSERT_NE(find<ImportView>(*window), nullptr);
  find<BWButtonBase>(*find<ImportView>(*window))->click();
  ASSERT_TRUE(comesTrue([&] { return values() == old; }));
  EXPECT_TRUE(comesTrue([this] { return strip() == "JACK: system, 44100 Hz, 256 frames"; })) << strip();
  EXPECT_EQ(processor().instrument()->processorHandle()->generator().sampleLibrary()->waveCount(), 512);
}

TEST_F(ImportTest, TellsWhatItCannotUseAndWhatIsMissing) {
  sound("Kicks/Oak.wav", 60);
  folder.getFile().getChildFile("in/Kicks/read me.txt").replaceWithText("no sound");
  drop(juce::StringArray(place("in")), button("Demo"));
  ASSERT_TRUE(comesTrue([this] { return find<ImportView>(*window) != nullptr; })) << strip();
  EXPECT_EQ(strip(), "1 sound added, 1 file not used");
  const auto* const library = processor().instrument()->processorHandle()->generator().sampleLibrary();
  EXPECT_EQ(library->waveCategory(library->flatIndexOf(1)), 0) << "by its folder's name";

  processor().getParameters()[12]->setValueNotifyingHost(1.0F / 4088.0F);
  processor().getParameters()[36]->setValueNotifyingHost(7.0F / 4088.0F);
  run(4);
  const auto missing = vst::missingSounds(*processor().instrument());
  ASSERT_EQ(missing.size(), 1U);
  EXPECT_EQ(missing.front().pad, 3U);
  EXPECT_EQ(vst::describeMissing(missing), "Pad 4 misses your sound no. 7: factory sounds play instead");
}

}  // namespace
