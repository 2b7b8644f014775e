// Decoding of PNG pictures by stb_image, which is one header: Debian has no libpng for its Windows compiler, and its
// JUCE comes without its own. Compiled in the place of JUCE's file of this name.
// SPDX-License-Identifier: GPL-3.0-or-later
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_HDR
#define STBI_NO_THREAD_LOCALS  // With a destructor they would keep the library in memory.
JUCE_BEGIN_IGNORE_WARNINGS_GCC_LIKE("-Wunused-function")
#include <stb/stb_image.h>
JUCE_END_IGNORE_WARNINGS_GCC_LIKE

namespace juce {

PNGImageFormat::PNGImageFormat() = default;
PNGImageFormat::~PNGImageFormat() = default;

String PNGImageFormat::getFormatName() { return "PNG"; }
bool PNGImageFormat::usesFileExtension(const File& file) { return file.hasFileExtension("png"); }

bool PNGImageFormat::canUnderstand(InputStream& stream) {
  constexpr unsigned char kSignature[] = {0x89, 'P', 'N', 'G'};
  unsigned char head[sizeof(kSignature)] = {};
  return stream.read(head, sizeof(head)) == sizeof(head) && std::equal(std::begin(head), std::end(head), kSignature);
}

/// An image of premultiplied pixels, the same as JUCE's own decoder gives; null for bytes that are no PNG.
Image PNGImageFormat::decodeImage(InputStream& stream) {
  constexpr int kChannels = 4;
  MemoryBlock bytes;
  stream.readIntoMemoryBlock(bytes);
  int width = 0;
  int height = 0;
  int channels = 0;
  const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
      stbi_load_from_memory(static_cast<const stbi_uc*>(bytes.getData()), static_cast<int>(bytes.getSize()), &width,
                            &height, &channels, kChannels),
      stbi_image_free);
  if (pixels == nullptr) {
    return {};
  }
  const bool hasAlpha = channels == 2 || channels == kChannels;
  Image image(hasAlpha ? Image::ARGB : Image::RGB, width, height, hasAlpha, SoftwareImageType());
  image.getProperties()->set("originalImageHadAlpha", hasAlpha);
  const Image::BitmapData target(image, Image::BitmapData::writeOnly);
  const stbi_uc* source = pixels.get();
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x, source += kChannels) {
      if (hasAlpha) {
        PixelARGB pixel(source[3], source[0], source[1], source[2]);
        pixel.premultiply();
        reinterpret_cast<PixelARGB*>(target.getPixelPointer(x, y))->set(pixel);
      } else {
        reinterpret_cast<PixelRGB*>(target.getPixelPointer(x, y))->setARGB(255, source[0], source[1], source[2]);
      }
    }
  }
  return image;
}

bool PNGImageFormat::writeImageToStream(const Image& /*image*/, OutputStream& /*stream*/) { return false; }

}  // namespace juce
