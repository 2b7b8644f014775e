// sivray-art: draws the pictures of the panel and packs them with the fonts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <iostream>
#include <stdexcept>

#include "Icon.h"
#include "PictureList.h"
#include "PngFile.h"
#include "ResourcePack.h"
#include "terminal/NamedFile.h"

namespace {

using namespace sivray::art;

constexpr const char* kUsage =
    "usage: sivray-art pack FONTS DISPLAY-FACE.ttf -o FOLDER\n"
    "           draws all pictures and packs them with the fonts: resources.bin and ResourceTable.cpp\n"
    "       sivray-art windows FONTS DISPLAY-FACE.ttf -o FOLDER\n"
    "           the same as files, and Resources.rc that names them to a Windows resource compiler\n"
    "       sivray-art pictures FONTS DISPLAY-FACE.ttf -o FOLDER\n"
    "           draws all pictures as files, the double set with _2X in its names\n"
    "       sivray-art icons -o FOLDER\n"
    "           draws the program's icon in all sizes as FOLDER/<side>x<side>/apps/sivray.png\n";

struct EmbeddedFont {
  const char* name;
  const char* file;
};
constexpr std::array<EmbeddedFont, 5> kFonts{{{"OPEN_SANS_BOLD", "open-sans/OpenSans-Bold.ttf"},
                                              {"OPEN_SANS_REGULAR", "open-sans/OpenSans-Regular.ttf"},
                                              {"OPEN_SANS_SEMIBOLD", "open-sans/OpenSans-SemiBold.ttf"},
                                              {"OSWALD_MEDIUM", "oswald/Oswald-Medium.ttf"},
                                              {"ROBOTO", "roboto/Roboto-Regular.ttf"}}};
constexpr const char* kDisplayFace = "PF_ARMA_FIVE";

void write(const juce::File& file, const void* data, std::size_t size) {
  if (!file.replaceWithData(data, size)) {
    throw std::runtime_error("cannot write " + file.getFullPathName().toStdString());
  }
}

std::vector<std::uint8_t> read(const juce::File& file) {
  juce::MemoryBlock block;
  if (!file.loadFileAsData(block)) {
    throw std::runtime_error("cannot read " + file.getFullPathName().toStdString());
  }
  const auto* bytes = static_cast<const std::uint8_t*>(block.getData());
  return {bytes, bytes + block.getSize()};
}

std::vector<Resource> pictures(const Lettering& lettering) {
  std::vector<Resource> resources;
  for (const Picture& picture : allPictures()) {
    resources.push_back({"PNG", picture.name, pngBytes(render(picture, lettering, 1))});
    resources.push_back({"PNG", picture.name + "_2X", pngBytes(render(picture, lettering, 2))});
  }
  for (const Strip& strip : allStrips()) {
    resources.push_back({"PNG", strip.name, pngBytes(render(strip, 1))});
    resources.push_back({"PNG", strip.name + "_2X", pngBytes(render(strip, 2))});
  }
  return resources;
}

void writeForWindows(const std::vector<Resource>& resources, const juce::File& folder) {
  for (const Resource& resource : resources) {
    const juce::File file = folder.getChildFile(juce::String(resourceFile(resource)));
    file.create();
    write(file, resource.bytes.data(), resource.bytes.size());
  }
  const std::string script = windowsScript(resources);
  write(folder.getChildFile("Resources.rc"), script.data(), script.size());
}

void run(const std::string& command, const juce::File& fonts, const juce::File& displayFace, const juce::File& folder) {
  std::vector<Resource> resources = pictures(Lettering(fonts, displayFace));
  if (!folder.createDirectory()) {
    throw std::runtime_error("cannot make the folder " + folder.getFullPathName().toStdString());
  }
  if (command == "pictures") {
    for (const Resource& picture : resources) {
      write(folder.getChildFile(juce::String(picture.name) + ".png"), picture.bytes.data(), picture.bytes.size());
    }
    return;
  }
  for (const EmbeddedFont& font : kFonts) {
    resources.push_back({"TTF", font.name, read(fonts.getChildFile(font.file))});
  }
  resources.push_back({"TTF", kDisplayFace, read(displayFace)});
  if (command == "windows") {
    writeForWindows(resources, folder);
    return;
  }
  const ResourcePack packed = pack(std::move(resources));
  write(folder.getChildFile("resources.bin"), packed.bytes.data(), packed.bytes.size());
  write(folder.getChildFile("ResourceTable.cpp"), packed.table.data(), packed.table.size());
}

void drawIcons(const juce::File& folder) {
  for (const int side : kIconSides) {
    const juce::String size(side);
    const juce::File file = folder.getChildFile(size + "x" + size + "/apps/sivray.png");
    if (!file.getParentDirectory().createDirectory()) {
      throw std::runtime_error("cannot make the folder " + file.getParentDirectory().getFullPathName().toStdString());
    }
    const auto bytes = pngBytes(drawIcon(side));
    write(file, bytes.data(), bytes.size());
  }
}

bool isPanelCommand(const std::string& word) { return word == "pack" || word == "pictures" || word == "windows"; }

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  const bool icons = words.size() == 3 && words[0] == "icons" && words[1] == "-o";
  const bool panel = words.size() == 5 && isPanelCommand(words[0]) && words[3] == "-o";
  if (!icons && !panel) {
    std::cerr << kUsage;
    return 2;
  }
  const juce::ScopedJuceInitialiser_GUI juceIsUp;
  try {
    if (icons) {
      drawIcons(sivray::namedFile(words[2]));
      return 0;
    }
    run(words[0], sivray::namedFile(words[1]), sivray::namedFile(words[2]), sivray::namedFile(words[4]));
  } catch (const std::exception& error) {
    std::cerr << "sivray-art: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
