// Any bytes are refused with the line that is wrong, or read as records that are good: sorted, with
// times and ids that a row may have. What is good in the third form comes back from a line of it,
// in UTF-8 to the character.
#include "core/action_id.h"
#include "core/text.h"
#include "exchange/action_lines.h"
#include "exchange/import_reader.h"
#include "input.h"
#include "one_file.h"
#include "platform/code_page.h"
#include "store/column.h"
#include "store/user_data_table.h"

namespace {

store::Action RowOf(const exchange::ImportRecord& record) {
  store::Action row;
  row[store::kActId] = record.ActId;
  row[store::kStaDateTime] = record.StaDateTime;
  row[store::kEndDateTime] = record.EndDateTime;
  if (record.Latitude != exchange::kNoPosition) {
    row[store::kLatitude] = core::FloatText(record.Latitude);
  }
  row[store::kPlace] = record.Place;
  row[store::kMemo] = record.Memo;
  row[store::kExtItems] = record.ExtItems;
  return row;
}

// The code page has several bytes for some characters, and a character alone for others.
std::u16string AsFileHasIt(std::u16string_view text) {
  return platform::DecodeCodePage(platform::EncodeCodePage(text));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static fuzz::OneFile file;
  platform::SetFiles(&file);
  if (size == 0) return 0;
  const int version = 1 + data[0] % 3;
  file.content = fuzz::AsBytes(data + 1, size - 1);

  exchange::ImportList list;
  int line = 0, detail = 0;
  const int result = exchange::ReadImportFile(list, u"\\x", version, line, detail);
  fuzz::Require(line >= 1 && (result == 0 || list.empty()));
  if (result != 0) {
    fuzz::Require(result == -111 || result == -112 || result == -113 || result == -14);
    fuzz::Require(result == -111 || detail < 0);
    return 0;
  }
  std::string again = exchange::HeaderBytes(exchange::kVer3);
  std::string inUtf8 = exchange::HeaderBytes(exchange::kVer3Utf8);
  std::string bytes;
  std::u16string_view former;
  for (const exchange::ImportRecord& record : list) {
    fuzz::Require(former <= record.StaDateTime);
    former = record.StaDateTime;
    const store::Action row = RowOf(record);
    fuzz::Require(store::CheckActionTimes(row) == 0);
    fuzz::Require(version == 1 || core::CheckActId(record.ActId) == 0);
    exchange::LineBytes(row, exchange::kVer3, bytes);
    again += bytes;
    fuzz::Require(exchange::LineBytes(row, exchange::kVer3Utf8, bytes));
    inUtf8 += bytes;
  }
  if (version != 3) return 0;
  for (const bool isUtf8 : {false, true}) {
    file.content = isUtf8 ? inUtf8 : again;
    exchange::ImportList reread;
    fuzz::Require(exchange::ReadImportFile(reread, u"\\x", 3, line, detail) == 0);
    fuzz::Require(reread.size() == list.size());
    for (size_t i = 0; i < list.size(); ++i) {
      const auto kept = [isUtf8](std::u16string_view text) {
        return isUtf8 ? std::u16string(text) : AsFileHasIt(text);
      };
      fuzz::Require(reread[i].Memo == kept(list[i].Memo));
      fuzz::Require(reread[i].Place == kept(list[i].Place));
    }
  }
  return 0;
}
