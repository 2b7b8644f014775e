// Queues jobs without allocating and merges repeated ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/JobStore.h"

#include <utility>

namespace tesh::bramel::vst {
namespace {

/// Twice the number of jobs: the nodes of a fetched batch are freed only at its end, and by then as many jobs may wait
/// again.
std::size_t nodesFor(std::uint64_t parameterCount, std::size_t noteCount) {
  return 2 * (static_cast<std::size_t>(parameterCount) + noteCount + 1);
}

void tellNote(IPluginEditViewModelOwner& viewModel, std::uint64_t number, NoteHistory history) {
  const auto keyboard = viewModel.getKeyboardViewModelOwner();
  if (keyboard == nullptr) {
    return;
  }
  const auto note = static_cast<std::int32_t>(number);
  const auto tell = [&](bool isOn) { isOn ? keyboard->noteOn(note) : keyboard->noteOff(note); };
  if (history.length == 2) {
    tell(!history.isLastOn);
  }
  tell(history.isLastOn);
}

}  // namespace

void JobStore::Job::run(IPluginEditViewModelOwner& viewModel) const {
  switch (kind) {
    case Kind::parameter:
      viewModel.notifyParameterChanged(number);
      break;
    case Kind::allParameters:
      viewModel.notifyAllParametersChanged();
      break;
    case Kind::note:
      tellNote(viewModel, number, notes);
      break;
    case Kind::programs:
      (*news)(viewModel);
      break;
  }
}

JobStore::JobStore(std::uint64_t parameterCount)
    : isParameterWaiting(static_cast<std::size_t>(parameterCount)),
      mail(std::make_shared<cofu::core::impl::MailServer<Letter>>(nodesFor(parameterCount, kNotes))) {}

void JobStore::post(const Letter& letter) {
  cofu::core::vouchFor([&] { mail.post(letter); });  // There is a node for each job that can wait.
  ++posted;
}

void JobStore::putParameter(std::uint64_t id) {
  if (id < isParameterWaiting.size() && !isParameterWaiting[static_cast<std::size_t>(id)].exchange(true)) {
    post({Job::Kind::parameter, id});
  }
}

void JobStore::putNote(std::uint8_t note, bool isOn) {
  if (note >= kNotes) {
    return;
  }
  std::atomic<NoteHistory>& history = noteHistories[note];
  NoteHistory known = history.load();
  while (!history.compare_exchange_weak(known, known.followedBy(isOn))) {
  }
  if (known.length == 0) {
    post({Job::Kind::note, note});
  }
}

void JobStore::putAllParameters() {
  if (!areAllWaiting.exchange(true)) {
    post({Job::Kind::allParameters});
  }
}

void JobStore::putNews(ProgramNews news) {
  auto own = std::make_unique<const ProgramNews>(std::move(news));
  post({Job::Kind::programs, 0, own.get()});
  static_cast<void>(own.release());
  areAllWaiting = false;  // A later change of program must come after these news.
}

bool JobStore::release() { return released.exchange(posted) != posted; }

std::optional<JobStore::Job> JobStore::take(Extent extent) {
  if (extent == Extent::released && taken == released.load()) {
    return std::nullopt;
  }
  const std::optional<Letter> letter = mail.receive();
  if (!letter) {
    return std::nullopt;
  }
  ++taken;
  Job job{letter->kind, {}, letter->number, std::unique_ptr<const ProgramNews>(letter->news)};
  // The view reads the value after this point, so a later change needs a new job.
  switch (job.kind) {
    case Job::Kind::parameter:
      isParameterWaiting[static_cast<std::size_t>(job.number)] = false;
      break;
    case Job::Kind::allParameters:
      areAllWaiting = false;
      break;
    case Job::Kind::note:
      job.notes = noteHistories[static_cast<std::size_t>(job.number)].exchange({});
      break;
    case Job::Kind::programs:
      break;
  }
  return job;
}

void JobStore::clear() {
  while (take(Extent::all)) {
  }
}

}  // namespace tesh::bramel::vst
