// The one open data file: its engine, the five table objects that hang from it, and what the Action
// index is made from. They live from ConnectDataFile or CreateDataFile to DisconnectDataFile; a
// pointer is null while no file is open.
#pragma once

#include <memory>
#include <string_view>

#include "store/engine.h"
#include "store/hresult.h"
#include "store/named_value_table.h"
#include "store/rcdr_data_table.h"
#include "store/sorted_starts.h"
#include "store/user_data_table.h"

namespace store {

struct CDbSession {
  // Both are kept from one file to the next. What every engine asks whose file is displaced.
  bool (*SettleDisplaced)() = nullptr;
  // What every engine calls at the beginning of a write.
  void (*BeforeWrite)(Engine&) = nullptr;
  std::unique_ptr<Engine> Session;
  std::unique_ptr<CUserDataTable> UserTable;
  std::unique_ptr<CNamedValueTable> LongTable;
  std::unique_ptr<CNamedValueTable> TextTable;
  std::unique_ptr<CNamedValueTable> SysInfoTable;
  std::unique_ptr<CRcdrDataTable> RcdrTable;
  std::unique_ptr<SortedStarts> Starts;
};

CDbSession& dbSession();

// Opens an existing file. Whether it is one of ours shows at the first read.
HRESULT ConnectDataFile(std::u16string_view path);
// Replaces whatever stands at `path`, and what an unclosed file left beside it, by a new file with
// the five empty tables, and opens it. The callers ask before. A failure leaves no session.
HRESULT CreateEmptyDataFile(std::u16string_view path);
// Harmless when nothing is open. The closed file is one file, complete in itself.
void DisconnectDataFile();

// The open engine and its tables leave their file for another one. E_FAIL if that cannot be opened:
// then nothing is, but the tables stay.
HRESULT MoveToDataFile(std::u16string_view path);

// Does ahead of the first write what that would wait for: the journal is switched, and the starts
// are brought up to date. Harmless when nothing is open.
void PrepareToWrite();

// Brings t_UserData of an older format to the present columns.
HRESULT AlterUserData();

}  // namespace store
