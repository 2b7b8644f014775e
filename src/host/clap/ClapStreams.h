// Whole states through a CLAP host's streams, which take or give any number of bytes at a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/clap/ClapExtensions.h"

namespace tesh::bramel::clap {

/// False if the host did not take all.
bool writeAll(const OutputStream* stream, std::span<const std::uint8_t> bytes);

/// All bytes up to the stream's end; nothing if the host reports an error, or if there are more than a state can have.
std::optional<std::vector<std::uint8_t>> readAll(const InputStream* stream);

}  // namespace tesh::bramel::clap
