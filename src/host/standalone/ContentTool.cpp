// Reads the tool's output lines on a thread of its own.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/ContentTool.h"

#include <juce_events/juce_events.h>

#include <array>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/SpecialFolders.h"

namespace tesh::bramel::standalone {
namespace {

#ifdef _WIN32
constexpr const char* kProgram = "sivray-content.exe";
constexpr std::size_t kPiece = 32;  ///< Small, because JUCE waits until it has as many bytes as were asked for.
#else
constexpr const char* kProgram = "sivray-content";
constexpr std::size_t kPiece = 4096;
#endif

std::vector<std::string> fieldsOf(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char letter : line) {
    if (letter == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += letter;
    }
  }
  return fields;
}

std::vector<int> numbersOf(const ToolResult& result, bool withKnown) {
  using Kind = ToolResult::File::Kind;
  std::vector<int> numbers;
  for (const ToolResult::File& file : result.files) {
    if (file.kind == Kind::added || (withKnown && file.kind == Kind::known)) {
      numbers.push_back(file.number);
    }
  }
  return numbers;
}

}  // namespace

std::vector<int> ToolResult::added() const { return numbersOf(*this, false); }
std::vector<int> ToolResult::usable() const { return numbersOf(*this, true); }

double takeToolLine(const std::string& line, ToolResult& result) {
  constexpr std::array<const char*, 3> kKinds{"added", "known", "unused"};
  const std::vector<std::string> fields = fieldsOf(line);
  if (fields.front() == "progress" && fields.size() == 2) {
    return std::strtod(fields[1].c_str(), nullptr);
  }
  for (std::size_t kind = 0; kind < kKinds.size() && fields.size() == 5; ++kind) {
    if (fields.front() == kKinds[kind]) {
      result.files.push_back({static_cast<ToolResult::File::Kind>(kind), fields[1],
                              static_cast<int>(std::strtol(fields[2].c_str(), nullptr, 10)), fields[3], fields[4]});
    }
  }
  if (fields.size() <= 2 && !fields.back().empty() && fields.front() != "done") {
    constexpr std::string_view kSpeaker = "sivray-content: ";
    result.lastLine = fields.back().substr(fields.back().starts_with(kSpeaker) ? kSpeaker.size() : 0);
  }
  return -1.0;
}

/// Owned by the tool and, until the tool's process ends, by the calls of the reading thread.
class ContentTool::Run : public std::enable_shared_from_this<Run> {
 public:
  Run(std::function<void(double)> progress, std::function<void(const ToolResult&)> done)
      : onProgress(std::move(progress)), onDone(std::move(done)) {}

  bool start(const juce::StringArray& command) {
    if (!process.start(command, juce::ChildProcess::wantStdOut | juce::ChildProcess::wantStdErr)) {
      return false;
    }
    reader = std::thread([this] { read(); });
    return true;
  }

  void stop() {
    onProgress = nullptr;
    onDone = nullptr;
    process.kill();
    if (reader.joinable()) {
      reader.join();
    }
  }

  /// Called once the reading thread has read everything.
  void finish() {
    if (reader.joinable()) {
      reader.join();
    }
    if (onDone) {
      onDone(result);
    }
  }

  std::function<void(double)> onProgress;
  std::function<void(const ToolResult&)> onDone;
  std::function<void()> onEnd;

 private:
  void read() {
    std::string line;
    std::array<char, kPiece> bytes{};
    for (int count = 1; count > 0;) {
      count = process.readProcessOutput(bytes.data(), static_cast<int>(bytes.size()));
      for (int i = 0; i < count; ++i) {
        const char letter = bytes[static_cast<std::size_t>(i)];
        if (letter != '\n') {
          line += letter;
        } else {
          take(std::exchange(line, {}));
        }
      }
    }
    constexpr int kMilliseconds = 5000;
    process.waitForProcessToFinish(kMilliseconds);
    result.isDone = process.getExitCode() == 0;
    juce::MessageManager::callAsync([weak = weak_from_this()] {
      if (const auto self = weak.lock(); self != nullptr && self->onEnd) {
        self->onEnd();
      }
    });
  }

  void take(const std::string& line) {
    const double progress = takeToolLine(line, result);
    if (progress >= 0.0) {
      juce::MessageManager::callAsync([weak = weak_from_this(), progress] {
        if (const auto self = weak.lock(); self != nullptr && self->onProgress) {
          self->onProgress(progress);
        }
      });
    }
  }

  juce::ChildProcess process;
  std::thread reader;
  ToolResult result;  ///< Used by the reading thread until it ends.
};

ContentTool::ContentTool() {
  const juce::File folder(juce::String::fromUTF8(platform::moduleFolder().c_str()));
  program = folder.getChildFile(kProgram);
  if (!program.existsAsFile()) {
    program = folder.getSiblingFile("bin").getChildFile(kProgram);
  }
}

ContentTool::~ContentTool() {
  if (run != nullptr) {
    run->stop();
  }
}

void ContentTool::start(const juce::StringArray& arguments, std::function<void(double)> onProgress,
                        std::function<void(const ToolResult&)> onDone) {
  juce::StringArray command(program.getFullPathName());
  command.addArray(arguments);
  run = std::make_shared<Run>(std::move(onProgress), std::move(onDone));
  run->onEnd = [this] { std::exchange(run, nullptr)->finish(); };
  if (!run->start(command)) {
    const auto failed = std::exchange(run, nullptr);
    failed->finish();
  }
}

}  // namespace tesh::bramel::standalone
