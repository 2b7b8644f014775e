// Walks through the chunks of a file, and gives libsndfile a corrected length where the header has none.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/SoundStream.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "content/Files.h"

namespace sivray::content {
namespace {

constexpr std::int64_t kChunkHead = 8;  ///< Bytes of a chunk's name and size.
constexpr std::int64_t kFileHead = 12;  ///< Bytes of "RIFF" or "FORM", the size, and "WAVE" or "AIFF".

/// Programs that write to a pipe put a size of at least this, or 0, into the header.
constexpr std::uint32_t kOpenSize = 0x7F000000;

/// AIFF files store sizes with the high byte first.
std::uint32_t sizeIn(std::string_view field, bool isHighFirst) {
  std::uint32_t size = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    size = size << 8 | static_cast<unsigned char>(field[isHighFirst ? i : 3 - i]);
  }
  return size;
}

/// Returns nothing for other kinds of files and for files without sound.
std::optional<SoundChunk> findSound(std::ifstream& stream, std::int64_t size) {
  std::array<char, kFileHead> head{};
  if (!stream.seekg(0) || !stream.read(head.data(), kFileHead)) {
    return std::nullopt;
  }
  const std::string_view text(head.data(), head.size());
  const bool isAiff = text.starts_with("FORM") && text.substr(8, 3) == "AIF";
  if (!isAiff && !(text.starts_with("RIFF") && text.ends_with("WAVE"))) {
    return std::nullopt;
  }
  const std::uint32_t whole = sizeIn(text.substr(4, 4), isAiff);
  std::int64_t place = kFileHead;
  while (stream.seekg(place) && stream.read(head.data(), kChunkHead)) {
    place += kChunkHead;
    const std::uint32_t told = sizeIn(text.substr(4, 4), isAiff);
    if (text.starts_with(isAiff ? "SSND" : "data")) {
      const bool isUnwritten = told == 0 && (whole + kChunkHead <= place || whole >= kOpenSize);
      return SoundChunk{place, told, size - place, isUnwritten || told >= kOpenSize};
    }
    place += static_cast<std::int64_t>(told) + told % 2;
  }
  return std::nullopt;
}

std::string reasonFor(int error) {
  if (error == SF_ERR_UNRECOGNISED_FORMAT) {
    return "is no sound file of a known format, such as WAV, AIFF, FLAC or OGG";
  }
  std::string reason = sf_strerror(nullptr);
  while (reason.ends_with('.') || reason.ends_with('\n')) {
    reason.pop_back();
  }
  return "cannot be read: " + reason;
}

}  // namespace

SoundStream::SoundStream(const std::string& path) : stream(pathOf(path), std::ios::binary) {
  if (!stream) {
    throw std::runtime_error(std::string("cannot be read: ") + std::strerror(errno));
  }
  stream.seekg(0, std::ios::end);
  size = stream.tellg();
  chunk = findSound(stream, size);
  static SF_VIRTUAL_IO calls{
      [](void* self) -> sf_count_t { return static_cast<SoundStream*>(self)->size; },
      [](sf_count_t offset, int whence, void* self) { return static_cast<SoundStream*>(self)->seek(offset, whence); },
      [](void* bytes, sf_count_t count, void* self) {
        return static_cast<SoundStream*>(self)->read(static_cast<char*>(bytes), count);
      },
      nullptr, [](void* self) -> sf_count_t { return static_cast<SoundStream*>(self)->position; }};
  file.reset(sf_open_virtual(&calls, SFM_READ, &soundInfo, this));
  if (!file) {
    throw std::runtime_error(reasonFor(sf_error(nullptr)));
  }
}

bool SoundStream::isCutShort() const { return chunk && !chunk->isLengthOpen && chunk->told > chunk->there; }

sf_count_t SoundStream::read(char* bytes, sf_count_t count) {
  stream.clear();
  stream.seekg(position);
  stream.read(bytes, count);
  const std::int64_t taken = stream.gcount();
  if (chunk && chunk->isLengthOpen && chunk->told == 0) {
    // libsndfile reads a size of 0 as silence.
    for (std::int64_t i = 0; i < 4; ++i) {
      const std::int64_t place = chunk->place - 4 + i - position;
      if (place >= 0 && place < taken) {
        bytes[place] = static_cast<char>(0xFF);
      }
    }
  }
  position += taken;
  return taken;
}

sf_count_t SoundStream::seek(sf_count_t offset, int whence) {
  const std::int64_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? position : size;
  position = std::clamp<std::int64_t>(from + offset, 0, size);
  return position;
}

}  // namespace sivray::content
