// Marks symbols that a library exports to its host.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#ifdef _WIN32
#define SIVRAY_EXPORT __declspec(dllexport)
#else
#define SIVRAY_EXPORT __attribute__((visibility("default")))
#endif
