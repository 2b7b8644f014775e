// Collects all checks of the editor, or one line for each if there is no screen to run them on.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Check.h"
#ifdef __linux__
#include "check/EditorScene.h"
#endif

namespace sivray::check {

#ifdef __linux__

std::vector<Check> editorChecks() {
  const bool isThere = hosting::HostWindow::findServer();
  std::vector<Check> all;
  for (const auto& group : {editorLifeChecks(), editorRealTimeChecks(), editorMouseChecks(), editorProgramChecks(),
                            editorResourceChecks()}) {
    for (Check check : group) {
      if (!isThere) {
        check.body = [](const CheckSettings&) { return Verdict{false, "not run: there is no X server (Xvfb)", false}; };
      }
      all.push_back(check);
    }
  }
  return all;
}

#else

std::vector<Check> editorChecks() {
  return {{"editor", [](const CheckSettings&) { return Verdict{false, "not run: no X on this system", false}; }}};
}

#endif

}  // namespace sivray::check
