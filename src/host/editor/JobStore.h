// A queue of jobs from the instrument to the message thread: reports for the view, in order.
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

/// Views read the current value when they are told of a change, so one waiting job per parameter is enough, and
/// likewise one per note. However long the message thread is busy, only program notifications can pile up, and the user
/// causes those one by one. One thread at a time calls the sender's side, the message thread the receiver's.
class JobStore {
 public:
  using ProgramNews = std::function<void(IPluginEditViewModelOwner&)>;

  /// One call on the view model, or two for a note that was struck and released.
  struct Job {
    enum class Kind : std::uint8_t { parameter, allParameters, note, programs };

    Kind kind = Kind::parameter;
    NoteHistory notes;
    std::uint64_t number = 0;                 ///< A parameter's id or a note.
    std::unique_ptr<const ProgramNews> news;  ///< Null unless the kind is `programs`.

    void run(IPluginEditViewModelOwner& viewModel) const;
  };

  enum class Extent : std::uint8_t { released, all };

  /// `parameterCount` includes hidden parameters.
  explicit JobStore(std::uint64_t parameterCount);
  ~JobStore() { clear(); }
  JobStore(const JobStore&) = delete;
  JobStore& operator=(const JobStore&) = delete;

  // The sender's side. Numbers out of range are ignored.

  void putParameter(std::uint64_t id) SIVRAY_NONBLOCKING;
  void putNote(std::uint8_t note, bool isOn) SIVRAY_NONBLOCKING;
  void putAllParameters();
  void putNews(ProgramNews news);

  /// Makes all waiting jobs available to the receiver. False if none was added since the last call.
  bool release() SIVRAY_NONBLOCKING;

  // The receiver's side.

  /// The oldest job, or nothing.
  std::optional<Job> take(Extent extent);

  /// Forgets all jobs.
  void clear();

 private:
  static constexpr std::size_t kNotes = 128;

  /// A queued job in a plain form, which the mailbox can copy on the audio thread.
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
  std::uint64_t posted = 0;  ///< Jobs posted since construction. Sender's side.
  std::atomic<std::uint64_t> released = 0;
  std::uint64_t taken = 0;  ///< Receiver's side.
};

}  // namespace tesh::bramel::vst
