// Decodes OGG Vorbis by stb_vorbis, on Windows.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32
#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

#include "content/pack/PlainSound.h"

#define STB_VORBIS_NO_STDIO
#define STB_VORBIS_NO_PUSHDATA_API
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wshadow"
#include <stb/stb_vorbis.h>
#pragma GCC diagnostic pop

namespace sivray::content {
namespace {

/// The order of channels, which differs from that of WAV.
std::vector<Speaker> speakersOf(std::size_t channels) {
  using enum Speaker;
  switch (channels) {
    case 3:
      return {left, centre, right};
    case 4:
      return {left, right, leftSide, rightSide};
    case 5:
      return {left, centre, right, leftSide, rightSide};
    case 6:
      return {left, centre, right, leftSide, rightSide, low};
    case 7:
      return {left, centre, right, leftSide, rightSide, centre, low};
    case 8:
      return {left, centre, right, leftSide, rightSide, leftSide, rightSide, low};
    default:
      return {};
  }
}

class VorbisSource final : public SoundDecoder {
 public:
  explicit VorbisSource(std::vector<std::uint8_t> bytes) : file(std::move(bytes)) {
    int error = 0;
    const auto size = std::min<std::size_t>(file.size(), std::numeric_limits<int>::max());
    decoder.reset(stb_vorbis_open_memory(file.data(), static_cast<int>(size), &error, nullptr));
    if (decoder == nullptr) {
      throw std::runtime_error("cannot be read: it is no OGG file of Vorbis sound");
    }
    const stb_vorbis_info info = stb_vorbis_get_info(decoder.get());
    told.channels = static_cast<std::size_t>(info.channels);
    told.rate = info.sample_rate;
    told.speakers = speakersOf(told.channels);
    told.frames = stb_vorbis_stream_length_in_samples(decoder.get());
  }

  std::vector<Channel> read(std::int64_t most) override {
    std::vector<Channel> channels(told.channels);
    while (static_cast<std::int64_t>(channels.front().size()) < most) {
      float** output = nullptr;
      const int frames = stb_vorbis_get_frame_float(decoder.get(), nullptr, &output);
      if (frames <= 0) {
        break;
      }
      for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        channels[channel].insert(channels[channel].end(), output[channel], output[channel] + frames);
      }
    }
    for (Channel& channel : channels) {
      channel.resize(std::min(channel.size(), static_cast<std::size_t>(most)));
    }
    return channels;
  }

 private:
  struct Close {
    void operator()(stb_vorbis* opened) const { stb_vorbis_close(opened); }
  };

  const std::vector<std::uint8_t> file;
  std::unique_ptr<stb_vorbis, Close> decoder;
};

}  // namespace

std::unique_ptr<SoundDecoder> openVorbis(std::vector<std::uint8_t> file) {
  return std::make_unique<VorbisSource>(std::move(file));
}

}  // namespace sivray::content
#endif
