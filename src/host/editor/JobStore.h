// What the view still has to hear: jobs on their way from the instrument to the message thread, in their order.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "core/MailServer.h"
#include "core/RealTime.h"
#include "host/editor/NoteHistory.h"
#include "viewmodels/IPluginEditViewModelOwner.h"

namespace tesh::bramel::vst {

/// Views ask for the value when they hear of a change, so that one waiting job a parameter is enough; the same holds
/// for a note. However long the message thread is busy elsewhere, only program notifications add up, and those are the
/// user's own doing. The sender's side is called by one thread at a time, the receiver's by the message thread.
class JobStore {
 public:
  using ProgramNews = std::function<void(IPluginEditViewModelOwner&)>;

  /// One call on the view model, or two for a note that was struck and released.
  struct Job {
    enum class Kind : std::uint8_t { parameter, allParameters, note, programs };

    Kind kind = Kind::parameter;
    NoteHistory notes;
    std::uint64_t number = 0;                 ///< A parameter's id or a note.
    std::unique_ptr<const ProgramNews> news;  ///< Null but for programs.

    void run(IPluginEditViewModelOwner& viewModel) const;
  };

  enum class Extent : std::uint8_t { released, all };

  /// `parameterCount` counts all, hidden ones included.
  explicit JobStore(std::uint64_t parameterCount);
  ~JobStore() { clear(); }
  JobStore(const JobStore&) = delete;
  JobStore& operator=(const JobStore&) = delete;

  // The sender's side. Numbers out of range are ignored.

  void putParameter(std::uint64_t id) SIVRAY_NONBLOCKING;
  void putNote(std::uint8_t note, bool isOn) SIVRAY_NONBLOCKING;
  void putAllParameters();
  void putNews(ProgramNews news);

  /// Lets the receiver have all that waits. False if nothing was added since the last time.
  bool release() SIVRAY_NONBLOCKING;

  // The receiver's side.

  /// The oldest job, or nothing.
  std::optional<Job> take(Extent extent);

  /// Forgets all jobs.
  void clear();

 private:
  static constexpr std::size_t kNotes = 128;

  /// A job on its way, plain enough for the mail of the audio thread.
  struct Letter {
    Job::Kind kind = Job::Kind::parameter;
    std::uint64_t number = 0;
    const ProgramNews* news = nullptr;  ///< Owned.
  };

  void post(const Letter& letter) SIVRAY_NONBLOCKING;

  std::vector<std::atomic<bool>> isParameterWaiting;
  std::array<std::atomic<NoteHistory>, kNotes> noteHistories{};
  std::atomic<bool> areAllWaiting = false;
  cofu::core::impl::Mailbox<Letter> mail;
  std::uint64_t posted = 0;  ///< The sender's, as counted from the beginning.
  std::atomic<std::uint64_t> released = 0;
  std::uint64_t taken = 0;  ///< The receiver's.
};

}  // namespace tesh::bramel::vst
