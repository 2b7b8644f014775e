// Packs and unpacks the envelope with msgpack.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/state/EditBufferRecord.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <msgpack.hpp>

#include "core/LittleEndian.h"

namespace tesh::bramel::vst {
namespace {

/// Limits on members of a map or array, and on levels, above those of any valid state.
constexpr std::size_t kMostMembers = 64;
constexpr std::size_t kDeepestNesting = 8;

/// Appends the bytes that msgpack packs.
struct Appender {
  std::vector<std::uint8_t>& out;
  void write(const char* bytes, std::size_t count) {
    cofu::core::ByteWriter(out).bytes({reinterpret_cast<const std::uint8_t*>(bytes), count});
  }
};

/// Makes msgpack refer to texts and binaries in the input instead of copying them.
bool referInput(msgpack::type::object_type, std::size_t, void*) { return true; }

bool hasKey(const msgpack::object_kv& member, const char* key) {
  const msgpack::object& name = member.key;
  return name.type == msgpack::type::STR && name.via.str.size == std::strlen(key) &&
         std::memcmp(name.via.str.ptr, key, name.via.str.size) == 0;
}

const msgpack::object* find(const msgpack::object_map& map, const char* key) {
  const msgpack::object_kv* begin = map.ptr;
  const msgpack::object_kv* end = begin + map.size;
  const auto* member = std::find_if(begin, end, [key](const msgpack::object_kv& kv) { return hasKey(kv, key); });
  return member == end ? nullptr : &member->val;
}

std::optional<std::vector<std::uint8_t>> contentOf(const msgpack::object& value) {
  if (value.type == msgpack::type::BIN) {
    return std::vector<std::uint8_t>(value.via.bin.ptr, value.via.bin.ptr + value.via.bin.size);
  }
  if (value.type == msgpack::type::STR) {
    return std::vector<std::uint8_t>(value.via.str.ptr, value.via.str.ptr + value.via.str.size);
  }
  return std::nullopt;
}

std::optional<EditBufferRecord> recordOf(const msgpack::object& object) {
  if (object.type != msgpack::type::MAP) {
    return std::nullopt;
  }
  const msgpack::object* name = find(object.via.map, "name");
  const msgpack::object* version = find(object.via.map, "version");
  const msgpack::object* content = find(object.via.map, "content");
  if (name == nullptr || version == nullptr || content == nullptr || name->type != msgpack::type::STR ||
      version->type != msgpack::type::POSITIVE_INTEGER ||
      version->via.u64 > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())) {
    return std::nullopt;
  }
  std::optional<std::vector<std::uint8_t>> bytes = contentOf(*content);
  if (!bytes) {
    return std::nullopt;
  }
  return EditBufferRecord{std::string(name->via.str.ptr, name->via.str.size),
                          static_cast<std::int32_t>(version->via.u64), std::move(*bytes)};
}

}  // namespace

std::vector<std::uint8_t> packState(const EditBufferRecord& record) {
  if (record.content.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw msgpack::container_size_overflow("container size overflow");
  }
  constexpr std::size_t kEnvelopeBytes = 128;
  std::vector<std::uint8_t> state;
  state.reserve(record.content.size() + record.name.size() + kEnvelopeBytes);
  Appender buffer{state};
  buffer.write(kStateTag.data(), kStateTag.size());
  msgpack::packer<Appender> packer(buffer);
  packer.pack_map(3);
  packer.pack("content");
  packer.pack_bin(static_cast<std::uint32_t>(record.content.size()));
  packer.pack_bin_body(reinterpret_cast<const char*>(record.content.data()),
                       static_cast<std::uint32_t>(record.content.size()));
  packer.pack("name");
  packer.pack(record.name);
  packer.pack("version");
  packer.pack(record.version);
  return state;
}

std::optional<EditBufferRecord> unpackState(std::span<const std::uint8_t> bytes) {
  if (bytes.size() <= kStateTag.size() || !std::equal(kStateTag.begin(), kStateTag.end(), bytes.begin())) {
    return std::nullopt;
  }
  const std::span<const std::uint8_t> packed = bytes.subspan(kStateTag.size());
  try {
    const msgpack::unpack_limit limit(kMostMembers, kMostMembers, packed.size(), packed.size(), packed.size(),
                                      kDeepestNesting);
    std::size_t offset = 0;
    const msgpack::object_handle handle = msgpack::unpack(reinterpret_cast<const char*>(packed.data()), packed.size(),
                                                          offset, referInput, nullptr, limit);
    return recordOf(handle.get());
  } catch (const std::exception&) {
    // msgpack throws on malformed bytes, which are no state.
    return std::nullopt;
  }
}

}  // namespace tesh::bramel::vst
