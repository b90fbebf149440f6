// What is written to t_UserData while one lives can be taken back as one step. Within another one
// it's part of that. Harmless while no file is open. Interface thread only.
#pragma once

#include <string_view>

#include "store/session.h"

namespace store {

class WriteStep {
 public:
  // `title` says what is done, as "削除" does.
  WriteStep(StepKind kind, std::u16string_view title, std::u16string_view running = {}) {
    CUserDataTable* table = dbSession().UserTable.get();
    if (table != nullptr && table->Log().Begin(kind, title, running)) table_ = table;
  }
  ~WriteStep() {
    if (table_ != nullptr && table_ == dbSession().UserTable.get()) table_->Log().End();
  }
  WriteStep(const WriteStep&) = delete;
  WriteStep& operator=(const WriteStep&) = delete;

 private:
  CUserDataTable* table_ = nullptr;  // not owned
};

}  // namespace store
