// t_UserData: every read and write of Actions goes through here.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"
#include "store/action.h"
#include "store/rowset_table.h"
#include "store/undo_log.h"

namespace store {

class CUserDataTable : public CRowsetTable {
 public:
  explicit CUserDataTable(Engine& session) : CRowsetTable(session) {}
  using CRowsetTable::GetNextRS;

  // Notes what the three writes below change.
  UndoLog& Log() { return log_; }

  // GetRS with all twelve columns.
  HRESULT Select(std::u16string_view sql);
  HRESULT GetNextRS(Action& action);
  // One Action by the index. DB_E_NOTFOUND and an empty row if there is none.
  HRESULT ReadById(std::u16string_view id, Action& action);
  // Some columns of it, in the order of their names. `row` is written on success only.
  HRESULT ReadById(std::u16string_view id, std::span<const std::u16string_view> columns,
                   ColumnTexts row);

  // Stamps kLastUpdate, and makes an id if kActId is none. E_INVALIDARG if the id or the times are
  // refused; E_ABORT, after a message that says why, if no id could be made. On a failure nothing
  // is written and a made id is taken out again.
  HRESULT Insert(Action& action);
  // Writes all columns but the id, which never changes. DB_E_NOTFOUND if there is no such row.
  HRESULT Update(std::u16string_view id, Action& action);
  HRESULT Delete(std::u16string_view id);

  // At most 50 draws; E_ABORT if none of them gave a free id, another failure if that can't be
  // looked up. `id` is written on success only.
  using MadeId = std::optional<std::u16string>;
  HRESULT MakeUniqueActId(MadeId& id);
  // For many ids in a row: a second has only a hundred. They are of `moment`, which begins
  // at the clock; a draw that is taken moves it back by a second. The seconds to come are left to
  // the Actions that their user makes then.
  HRESULT MakeUniqueActId(platform::LocalTime& moment, MadeId& id);

 private:
  HRESULT TakeIfFree(std::u16string id, MadeId& made);

  UndoLog log_{Session};
};

// 0, or the code of the first test that fails:
// -107, -108 start, end absent; -109, -110 their length is not 19; -101, -102 their date is no
// date; -103, -104 the end's, the start's time is no time; -105 "24:00:00" with a start other
// than 00:00:00; -106 the end lies before the start.
int CheckActionTimes(const Action& action);

// A text as it may stand between the quotes of a literal, every single quote doubled. An id needs
// it too: of an imported one only the length and the first letters are known.
std::u16string SqlQuote(std::u16string_view text);

// "select * from t_UserData where f_nchActId = '<id>'".
std::u16string SelectByIdSql(std::u16string_view id);

}  // namespace store
