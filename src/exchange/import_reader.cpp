// A line is split into slots, which are numbered alike for all versions: a file without ids begins
// at slot 1. What stands after the last slot of its version is dropped.
#include "exchange/import_reader.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

#include "core/action_id.h"
#include "core/lines.h"
#include "core/text.h"
#include "exchange/action_lines.h"
#include "platform/files.h"
#include "store/column.h"
#include "store/user_data_table.h"

namespace exchange {
namespace {

constexpr int kLinesAStep = 1000;
// More than any column keeps, a memo all of escapes included.
constexpr size_t kLongestField = 16384;

struct Version {
  size_t firstSlot;
  size_t lastSlot;     // takes the text up to the next separator
  size_t minimumSlot;  // that a line must reach
};

using Slots = std::array<std::u16string_view, store::kActionColumnCount>;

// Slots of the first two versions; those of the third are the table's columns.
enum ShortSlot {
  kSlotId,
  kSlotStartDate,
  kSlotStartTime,
  kSlotEndDate,
  kSlotEndTime,
  kSlotPlace,
  kSlotCategory1,
  kSlotCategory2,
  kSlotMemo
};

// In the order of the versions.
constexpr Version kVersions[] = {{kSlotStartDate, kSlotMemo, kSlotCategory1},
                                 {kSlotId, kSlotMemo, kSlotCategory1},
                                 {store::kActId, store::kActionColumnCount - 1, store::kLatitude}};
static_assert([] {
  for (size_t i = 0; i < std::size(kVersions); ++i) {
    const size_t fields = kVersions[i].lastSlot - kVersions[i].firstSlot + 1;
    if (fields != static_cast<size_t>(kFieldCounts[i])) return false;
  }
  return true;
}());

// The last slot that the line reaches; one past the version's last if there is more of it.
size_t Split(std::u16string_view line, const Version& version, Slots& slots) {
  slots.fill({});
  for (size_t slot = version.firstSlot;; ++slot) {
    const size_t end = line.find(kExchangeSeparator);
    slots[slot] = line.substr(0, end);
    if (end == std::u16string_view::npos) return slot;
    if (slot == version.lastSlot) return slot + 1;
    line.remove_prefix(end + 1);
  }
}

std::u16string Moment(std::u16string_view date, std::u16string_view time,
                      std::u16string_view seconds) {
  return std::u16string(date) + u' ' + std::u16string(time) + std::u16string(seconds);
}

ImportRecord TakeShort(const Slots& slots, std::u16string_view seconds) {
  ImportRecord record;
  record.ActId = slots[kSlotId];
  record.StaDateTime = Moment(slots[kSlotStartDate], slots[kSlotStartTime], seconds);
  record.EndDateTime = Moment(slots[kSlotEndDate], slots[kSlotEndTime], seconds);
  record.Place = slots[kSlotPlace];
  record.Category1 = slots[kSlotCategory1];
  record.Category2 = slots[kSlotCategory2];
  record.Memo = slots[kSlotMemo];
  return record;
}

// A memo without its first quote is taken as it stands; a lone quote is an empty one.
std::u16string ReadMemo(std::u16string_view field) {
  if (!field.starts_with(u'"')) return std::u16string(field);
  field.remove_prefix(1);
  if (field.ends_with(u'"')) field.remove_suffix(1);
  return core::UnescapeText(field);
}

// Kept on purpose: what is no number is no position, without a word.
double ReadPosition(std::u16string_view field) {
  return store::ParseFloat(field).value_or(kNoPosition);
}

ImportRecord TakeVer3(const Slots& slots) {
  static_assert(store::kExtItems + 1 == store::kActionColumnCount, "a field for each column");
  ImportRecord record;
  record.ActId = slots[store::kActId];
  record.StaDateTime = slots[store::kStaDateTime];
  record.EndDateTime = slots[store::kEndDateTime];
  record.Latitude = ReadPosition(slots[store::kLatitude]);
  record.Longitude = ReadPosition(slots[store::kLongitude]);
  record.Subject = slots[store::kSubject];
  record.Place = slots[store::kPlace];
  record.Category1 = slots[store::kCategory1];
  record.Category2 = slots[store::kCategory2];
  record.Memo = ReadMemo(slots[store::kMemo]);
  if (!slots[store::kExtItems].empty()) record.ExtItems = slots[store::kExtItems];
  return record;
}

int CheckTimes(const ImportRecord& record) {
  store::Action action;
  action[store::kStaDateTime] = record.StaDateTime;
  action[store::kEndDateTime] = record.EndDateTime;
  return store::CheckActionTimes(action);
}

// 0 and a good record, or the result and detail of what is wrong with the line.
int ReadRecord(std::u16string_view line, int version, ImportRecord& record, int& detail) {
  const Version& columns = kVersions[version - kVer1];
  Slots slots;
  const size_t last = Split(line, columns, slots);
  if (last < columns.minimumSlot) {
    detail = static_cast<int>(last);
    return kTooFewColumns;
  }
  record = version == kVer3 ? TakeVer3(slots) : TakeShort(slots, version == kVer1 ? u":00" : u"");
  detail = CheckTimes(record);
  if (detail != 0) return kBadTimes;
  if (version != kVer1) detail = core::CheckActId(record.ActId);
  return detail == 0 ? 0 : kBadActId;
}

int ReadRecords(core::LineReader& reader, ImportList& list, int version, int& lineNumber,
                int& detail, const Progress& progress) {
  std::u16string line;
  size_t byteLength = 0;
  // Kept on purpose: nobody looks at the header line.
  if (version == kVer3) detail = reader.ReadTextLine(line, byteLength);
  if (detail == kCannotRead) return kCannotRead;
  for (;; ++lineNumber) {
    if (progress && lineNumber % kLinesAStep == 0) progress(lineNumber, 0);
    detail = reader.ReadTextLine(line, byteLength);
    if (detail == kCannotRead || detail == kBadBytes) return detail;
    if (line.empty()) return 0;  // also the end of the file; kept on purpose: whatever follows
    ImportRecord record;
    const int result = ReadRecord(line, version, record, detail);
    if (result != 0) return result;
    list.push_back(std::move(record));
  }
}

// Goes through the file twice: what its bytes mean shows only at its end.
int ReadWhole(std::u16string_view path, ImportList& list, int version, int& lineNumber, int& detail,
              const Progress& progress) {
  const std::unique_ptr<platform::File> first = platform::files().OpenForReading(path);
  if (first == nullptr) return kCannotOpen;
  lineNumber = 1;
  if (progress) progress(0, 0);
  const std::optional<core::Encoding> encoding = core::EncodingOf(*first);
  if (!encoding) return detail = kCannotRead;
  const std::unique_ptr<platform::File> second = platform::files().OpenForReading(path);
  if (second == nullptr) return detail = kCannotRead;
  core::LineReader reader(*second);
  reader.LimitFields(kExchangeSeparator, store::kActionColumnCount + 1, kLongestField);
  reader.ReadStrictly(*encoding);
  return ReadRecords(reader, list, version, lineNumber, detail, progress);
}

}  // namespace

int ReadImportFile(ImportList& list, std::u16string_view path, int version, int& lineNumber,
                   int& detail, const Progress& progress) {
  list.clear();
  lineNumber = detail = 0;
  const int result = ReadWhole(path, list, version, lineNumber, detail, progress);
  if (result != 0) {
    list.clear();
    return result;
  }
  const auto earlier = [](const ImportRecord& a, const ImportRecord& b) {
    return a.StaDateTime < b.StaDateTime;
  };
  // An export comes sorted.
  if (!std::is_sorted(list.begin(), list.end(), earlier)) {
    std::stable_sort(list.begin(), list.end(), earlier);
  }
  return 0;
}

}  // namespace exchange
