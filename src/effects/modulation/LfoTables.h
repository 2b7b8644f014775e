// The speeds of the free-running oscillators by knob, which follow no single formula, and the lead of the right
// oscillator.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Lead of the right channel's phase over the left one's: 17.5 degrees of a cycle of 2^32.
inline constexpr std::int32_t kRightPhaseLead = 208732160;

/// Phase steps per sample of a 32-bit phase that wraps: value * 44100 / 2^32 Hz. At knob 0 the oscillator stops.
inline constexpr std::array<std::uint32_t, 128> lfoTable{
    0,        1,        6,        13,       25,       68,       103,      151,      295,      396,      522,
    676,      1083,     1345,     1651,     2007,     2888,     3423,     4031,     4715,     6342,     7298,
    8358,     9530,     12237,    13789,    15484,    17331,    21516,    23872,    26416,    29158,    35278,
    38675,    42313,    46202,    50352,    59485,    64492,    69808,    81419,    87740,    94423,    108924,
    116772,   125035,   133730,   152473,   162550,   173119,   184195,   207933,   220628,   233895,   262215,
    277303,   293033,   309422,   344254,   362734,   381947,   422654,   444186,   466531,   489708,   538642,
    564441,   591156,   647418,   677010,   707604,   771892,   805631,   840464,   913507,   951764,   1073768,
    1116929,  1254244,  1302712,  1456568,  1566451,  1682436,  1804747,  1933608,  2069249,  2211905,  2361812,
    2519213,  2684354,  2705732,  2769866,  2876757,  3026404,  3218808,  3453968,  3731884,  4052556,  4415985,
    4822171,  5271112,  5762810,  6297264,  6874475,  7494442,  8157165,  8862645,  9610881,  10401873, 11235622,
    12112127, 13031388, 13993406, 14998180, 16045710, 17135997, 18269040, 19444839, 20663395, 21924707, 23228775,
    24575600, 25965181, 27397518, 28872612, 30390462, 31951069, 33554432,
};

}  // namespace tesh::bramel::plugin::sivray::effects
