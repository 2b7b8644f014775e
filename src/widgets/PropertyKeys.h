// The names of the properties that views set on controls.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::keys {

/// The parameter that the control is bound to: `std::uint64_t`.
inline constexpr const char* kIndex = "index";

/// The pad, 0 to 7, whose sample the display shows: `std::uint64_t`.
inline constexpr const char* kSample = "sample";

}  // namespace tesh::bramel::keys
