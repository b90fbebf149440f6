// t_SysInfo, t_TextData and t_LongData: values that belong to the data file, by name. Names are cut
// to 20 characters and texts to 500.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "store/engine.h"
#include "store/hresult.h"

namespace store {

class CNamedValueTable {
 public:
  CNamedValueTable(Engine& session, std::u16string_view tableName)
      : Session(session), tableName_(tableName) {}

  // Updates the row of that name, or inserts it.
  HRESULT SetText(std::u16string_view key, std::u16string_view text);
  // DB_E_NOTFOUND if there is no such row. A NULL value succeeds with an empty text.
  HRESULT GetText(std::u16string_view key, std::u16string& text);
  HRESULT SetLong(std::u16string_view key, int32_t value);
  HRESULT GetLong(std::u16string_view key, int32_t& value);

 private:
  HRESULT Set(std::u16string_view key, const Field& value);
  HRESULT Get(std::u16string_view key, std::u16string_view column, std::u16string& value);

  Engine& Session;  // not owned
  std::u16string tableName_;
};

}  // namespace store
