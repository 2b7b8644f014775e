// The content of a host's state: a header of four words and three sections. The first section is the run flags.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tesh::bramel::vst {

/// The first word of the header; the sizes of the three sections follow.
inline constexpr std::uint32_t kContentLayout = 0;
inline constexpr std::size_t kContentHeadBytes = 16;

/// The sections in order. They refer to bytes that are owned elsewhere.
struct StateContent {
  std::span<const std::uint8_t> runFlags;
  std::span<const std::uint8_t> engine;  ///< The engine's own state; may be empty.
  std::span<const std::uint8_t> macros;  ///< The macro chunk; may be empty.
};

/// Nothing if the layout is unknown, or the sections do not fill the bytes exactly.
std::optional<StateContent> readStateContent(std::span<const std::uint8_t> bytes);

/// The header for sections of these sizes.
std::array<std::uint8_t, kContentHeadBytes> contentHead(std::size_t flagBytes, std::size_t engineBytes,
                                                        std::size_t macroBytes);

/// Appends header and sections to `out`.
void appendStateContent(std::vector<std::uint8_t>& out, const StateContent& content);

/// Two switches of the processor. The factory's description has them in a separate file, a state in its first section.
struct RunFlags {
  bool running = true;             ///< False: the input passes through and the engine does not run.
  bool storesEngineChunk = false;  ///< True: a host's state also sets the engine's own values.
};

inline constexpr std::string_view kRunFlagsTag = "csim";
inline constexpr std::uint32_t kRunFlagsVersion = 512;
inline constexpr std::uint32_t kRunningOnlyVersion = 256;  ///< Without the second flag, which then reads as false.

/// Nothing if there are too few bytes, or if tag or version are unknown. Ignores bytes after the flags.
std::optional<RunFlags> readRunFlags(std::span<const std::uint8_t> bytes);

/// Appends 16 bytes of the newest version to `out`.
void appendRunFlags(std::vector<std::uint8_t>& out, RunFlags flags);

}  // namespace tesh::bramel::vst
