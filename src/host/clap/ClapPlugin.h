// The drum module as a CLAP plug-in: one instance, and the table of functions by which its host calls it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include "host/clap/ClapBlock.h"
#include "host/clap/ClapExtensions.h"
#include "host/clap/ClapHost.h"
#include "host/clap/ClapParameters.h"
#include "host/clap/ClapReports.h"
#include "host/editor/BramelInstrumentEditor.h"
#include "host/editor/EditorSession.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::clap {

/// Songs know the plug-in by its id, which therefore never changes.
inline constexpr const char* kPluginId = "tesh.sivray";

const Descriptor& pluginDescriptor();

/// The host owns it and deletes it by `destroy`. A call at the wrong time changes nothing. A debug build ends if a call
/// comes on a thread that is the wrong one by the host's own thread check. `init` fails if the instrument's files are
/// missing.
class ClapPlugin {
 public:
  /// Returns the record that the host calls; `host` outlives it.
  static const Plugin* make(const Host* host);

 private:
  friend struct ClapCalls;  ///< The functions of the record and of the extensions.

  explicit ClapPlugin(const Host* host);

  void fillRecord();
  bool init();
  bool activate(double sampleRate);
  void deactivate();
  std::int32_t process(const Process* given) SIVRAY_NONBLOCKING;
  void reset();
  bool save(const OutputStream* stream);
  bool load(const InputStream* stream);
  bool loadKit(std::uint32_t locationKind, const char* location, const char* loadKey);
  double valueOf(std::uint32_t index);

  Plugin record{};
  ClapHost host;
  std::shared_ptr<vst::BramelInstrument> instrument;  ///< Null until `init`, like all members below.
  std::shared_ptr<vst::BramelInstrumentEditor> panel;
  std::unique_ptr<ClapParameters> parameters;
  std::shared_ptr<ClapReports> reports;  ///< The instrument holds it weakly, as `panel`.
  std::unique_ptr<ClapBlock> block;
  std::unique_ptr<vst::EditorSession> session;  ///< Destroyed before everything that it shows.
  void* parentWindow = nullptr;                 ///< Of the host; null while it shows no panel.
  std::optional<std::uint32_t> timer;           ///< Of the host, while it has made a window.
  std::atomic<bool> isActive = false;
  std::atomic<std::uint32_t> latency = 0;  ///< Frames.
};

}  // namespace tesh::bramel::clap
