// Decodes by libsndfile. On Windows uses own decoders, because Debian has no libsndfile for that compiler.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/SoundDecoder.h"

#ifdef _WIN32
#include <stdexcept>

#include "content/pack/PlainSound.h"
#include "platform/Files.h"
#else
#include <algorithm>

#include "content/pack/SoundStream.h"
#endif

namespace sivray::content {

#ifdef _WIN32

std::unique_ptr<SoundDecoder> openSound(const std::string& path) {
  auto bytes = tesh::bramel::platform::readWhole(path);
  if (!bytes) {
    throw std::runtime_error("cannot be read");
  }
  return openPlainSound(std::move(*bytes));
}

#else

namespace {

constexpr int kMpegFormat = 0x230000;  ///< SF_FORMAT_MPEG, which libsndfile has since 1.1.

Speaker speakerOf(int place) {
  switch (place) {
    case SF_CHANNEL_MAP_LEFT:
    case SF_CHANNEL_MAP_FRONT_LEFT:
    case SF_CHANNEL_MAP_FRONT_LEFT_OF_CENTER:
      return Speaker::left;
    case SF_CHANNEL_MAP_RIGHT:
    case SF_CHANNEL_MAP_FRONT_RIGHT:
    case SF_CHANNEL_MAP_FRONT_RIGHT_OF_CENTER:
      return Speaker::right;
    case SF_CHANNEL_MAP_REAR_LEFT:
    case SF_CHANNEL_MAP_SIDE_LEFT:
      return Speaker::leftSide;
    case SF_CHANNEL_MAP_REAR_RIGHT:
    case SF_CHANNEL_MAP_SIDE_RIGHT:
      return Speaker::rightSide;
    case SF_CHANNEL_MAP_LFE:
      return Speaker::low;
    default:
      return Speaker::centre;
  }
}

class LibrarySource final : public SoundDecoder {
 public:
  explicit LibrarySource(const std::string& path) : stream(path) {
    const SF_INFO& info = stream.info();
    told.channels = static_cast<std::size_t>(info.channels);
    told.rate = info.samplerate;
    // A FLAC file that was written to a pipe does not hold its length, and that of an MP3 file is an estimate.
    const bool isUnknown = info.frames == SF_COUNT_MAX || (info.format & SF_FORMAT_TYPEMASK) == kMpegFormat;
    told.frames = isUnknown ? 0 : std::max<std::int64_t>(info.frames, 0);
    told.isCutShort = stream.isCutShort();
    std::vector<int> places(told.channels);
    const auto bytes = static_cast<int>(places.size() * sizeof(int));
    if (sf_command(stream.sound(), SFC_GET_CHANNEL_MAP_INFO, places.data(), bytes) == SF_TRUE) {
      std::ranges::transform(places, std::back_inserter(told.speakers), speakerOf);
    }
  }

  std::vector<Channel> read(std::int64_t most) override {
    constexpr std::int64_t kPieceFrames = 16384;
    std::vector<Channel> channels(told.channels);
    std::vector<float> piece(told.channels * static_cast<std::size_t>(kPieceFrames));
    for (std::int64_t done = 0; done < most;) {
      const sf_count_t frames = sf_readf_float(stream.sound(), piece.data(), std::min(kPieceFrames, most - done));
      if (frames <= 0) {
        break;
      }
      for (std::size_t i = 0; i < static_cast<std::size_t>(frames) * told.channels; ++i) {
        channels[i % told.channels].push_back(piece[i]);
      }
      done += frames;
    }
    return channels;
  }

 private:
  SoundStream stream;
};

}  // namespace

std::unique_ptr<SoundDecoder> openSound(const std::string& path) { return std::make_unique<LibrarySource>(path); }

#endif

}  // namespace sivray::content
