// The program database of an instrument, with its banks by name.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "host/shell/BramelInstrument.h"
#include "viewmodels/IProgramListViewModelOwner.h"

namespace tesh::bramel {

class BXInstrumentProgramListViewModel : public virtual IProgramListViewModelOwner {
 public:
  explicit BXInstrumentProgramListViewModel(std::shared_ptr<vst::BramelInstrument> shell);

  void setListener(IProgramListViewModelListener* newListener) override;
  std::string getInstrumentName() const override;
  std::string getExportFileStem() const override;
  std::string getCurrentBank() const override;
  std::uint32_t getCurrentProgramIndex() const override;
  std::string getCurrentProgramName() const override;
  void renameCurrentProgram(const std::string& name) override;
  std::uint64_t getProgramCount(const std::string& bank) const override;
  std::string getProgramName(std::uint64_t index, const std::string& bank) const override;
  void selectProgram(std::uint64_t index, const std::string& bank) override;
  void saveProgramAs(const std::string& name) override;
  bool programExists(const std::string& bank, const std::string& name) const override;
  void overwriteCurrentProgram() override;
  void deleteProgram(std::uint64_t index, const std::string& bank) override;
  void moveProgram(std::uint64_t from, std::uint64_t to, const std::string& bank) override;
  bool isProgramListEnabled() const override;
  void importPrograms(const std::string& path) override;
  bool exportPrograms(const std::string& path) override;

  void programSaved(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) override;
  void programDeleted(const std::uint64_t* programIds, std::uint64_t count, const std::string& bankName) override;
  void programMoved(std::uint64_t from, std::uint64_t to, const std::string& bankName) override;

 private:
  template <typename Event, typename... Values>
  void tellListener(Event event, const Values&... values);

  std::weak_ptr<IProgramListViewModelListener> listener;
  const std::shared_ptr<vst::BramelInstrument> instrument;
};

}  // namespace tesh::bramel
