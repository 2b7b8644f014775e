// The panel has no JPEG pictures, and Debian has no libjpeg for its Windows compiler: files of this form are not
// understood. Compiled in the place of JUCE's file of this name, which cannot be left out.
// SPDX-License-Identifier: GPL-3.0-or-later
namespace juce {

JPEGImageFormat::JPEGImageFormat() : quality(-1.0F) {}
JPEGImageFormat::~JPEGImageFormat() = default;

void JPEGImageFormat::setQuality(float newQuality) { quality = newQuality; }
String JPEGImageFormat::getFormatName() { return "JPEG"; }
bool JPEGImageFormat::usesFileExtension(const File& /*file*/) { return false; }
bool JPEGImageFormat::canUnderstand(InputStream& /*stream*/) { return false; }
Image JPEGImageFormat::decodeImage(InputStream& /*stream*/) { return {}; }
bool JPEGImageFormat::writeImageToStream(const Image& /*image*/, OutputStream& /*stream*/) { return false; }

}  // namespace juce
