// JUCE's WAV writer on a temporary file, which replaces the target at the end.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "WavFile.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <array>
#include <filesystem>
#include <system_error>
#include <vector>

#include "RenderError.h"
#include "SampleWords.h"
#include "terminal/NamedFile.h"

namespace sivray::render {

struct WavFile::Impl {
  std::string path;
  juce::TemporaryFile temporary;
  std::unique_ptr<juce::AudioFormatWriter> writer;
  int bits;
  std::array<std::vector<int>, 2> words;

  explicit Impl(const juce::File& target, int bitsPerSample) : temporary(target), bits(bitsPerSample) {}
};

WavFile::WavFile(const std::string& path, double sampleRate, int bits) {
  const juce::File target = namedFile(path).getLinkedTarget();
  std::error_code error;
  if (target.exists() && !std::filesystem::is_regular_file(target.getFullPathName().toStdString(), error)) {
    throw RenderError("cannot write '" + path + "': it is no file that can be replaced");
  }
  impl = std::make_unique<Impl>(target, bits);
  impl->path = path;
  auto stream = std::make_unique<juce::FileOutputStream>(impl->temporary.getFile());
  if (!stream->openedOk()) {
    throw RenderError("cannot write '" + path + "': check that its folder exists and is writable");
  }
  impl->writer.reset(juce::WavAudioFormat().createWriterFor(stream.get(), sampleRate, 2, bits, {}, 0));
  if (impl->writer == nullptr) {
    throw RenderError("cannot write '" + path + "' at " + std::to_string(sampleRate) + " Hz and " +
                      std::to_string(bits) + " bits");
  }
  static_cast<void>(stream.release());  // Now owned by the writer.
}

WavFile::~WavFile() = default;

void WavFile::write(const float* left, const float* right, int frames) {
  const std::array<const float*, 2> channels{left, right};
  for (std::size_t channel = 0; channel < channels.size(); ++channel) {
    impl->words[channel].resize(static_cast<std::size_t>(frames));
    toWords(channels[channel], frames, impl->bits, impl->words[channel].data());
  }
  std::array<const int*, 2> words{impl->words[0].data(), impl->words[1].data()};
  if (!impl->writer->write(words.data(), frames)) {
    throw RenderError("cannot write '" + impl->path + "': the disk may be full");
  }
}

void WavFile::finish() {
  impl->writer.reset();
  if (!impl->temporary.overwriteTargetFileWithTemporary()) {
    throw RenderError("cannot write '" + impl->path + "': it cannot be replaced");
  }
}

}  // namespace sivray::render
