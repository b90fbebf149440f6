// Nothing in the file keeps a name from standing there twice; it stands there once because every
// write goes through Set.
#include "store/named_value_table.h"

#include <array>

#include "core/text.h"
#include "store/schema.h"

namespace store {

HRESULT CNamedValueTable::Set(std::u16string_view key, const Field& value) {
  const Field item{kItemColumn, key};
  const HRESULT updated = Session.UpdateFirst(tableName_, item, {&value, 1});
  if (updated != DB_E_NOTFOUND) return updated;
  return Session.Insert(tableName_, std::array<Field, 2>{item, value});
}

HRESULT CNamedValueTable::Get(std::u16string_view key, std::u16string_view column,
                              std::u16string& value) {
  std::optional<std::u16string> text;
  const HRESULT result =
      Session.ReadFirst(tableName_, {kItemColumn, key}, {&column, 1}, {&text, 1});
  if (!Failed(result)) value = text ? std::move(*text) : std::u16string();
  return result;
}

HRESULT CNamedValueTable::SetText(std::u16string_view key, std::u16string_view text) {
  return Set(key, {kTextValueColumn, text});
}

HRESULT CNamedValueTable::GetText(std::u16string_view key, std::u16string& text) {
  return Get(key, kTextValueColumn, text);
}

HRESULT CNamedValueTable::SetLong(std::u16string_view key, int32_t value) {
  const std::u16string number = core::ZeroPadded(value, 1);
  return Set(key, {kLongValueColumn, number});
}

HRESULT CNamedValueTable::GetLong(std::u16string_view key, int32_t& value) {
  std::u16string number;
  const HRESULT result = Get(key, kLongValueColumn, number);
  if (!Failed(result)) value = core::ToInt32(number);
  return result;
}

}  // namespace store
