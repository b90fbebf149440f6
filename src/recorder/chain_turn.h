// The recorder's chain when one of its steps is taken back or done again: what "<=" does, and its
// opposite. Interface thread only.
#pragma once

#include <string>

#include "core/app_state.h"
#include "store/undo_log.h"

namespace recorder {

class ChainTurn {
 public:
  explicit ChainTurn(core::CAppState& app);

  // Writes what the chain is after the turn, if the step is one of the recorder's. kRefused if the
  // chain has gone on otherwise meanwhile, kFailed if it can't be read or written.
  store::TurnResult Write(store::Turn turn, const store::UndoStep& step);
  // An Action has been deleted: the chain names it no longer, nor do its rows in the file. False if
  // they can't be written.
  bool Forget(std::u16string_view id);
  // After the commit: the application object follows, also where only a start has changed.
  void Show();

 private:
  bool Follow(store::Turn turn, const store::UndoStep& step);
  bool TakeOff(const store::UndoStep& step, const std::u16string& id);
  bool PutOn(const store::UndoStep& step, const std::u16string& id);
  bool Move(const store::UndoStep& step, store::Turn turn, const std::u16string& id);
  std::u16string Newest() const;
  bool Holds(std::u16string_view id) const;

  core::CAppState& app_;
  core::TextList history_;
  std::u16string running_;
  bool isRead_ = false;
};

}  // namespace recorder
