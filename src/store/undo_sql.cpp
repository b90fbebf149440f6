// The rows of both tables are compared and copied by their columns' names, within the engine.
#include "store/undo_sql.h"

#include "core/date_time.h"
#include "platform/host.h"
#include "platform/utf.h"
#include "store/action.h"
#include "store/user_data_table.h"

namespace store::undo_sql {
namespace {

using Text = std::u16string;

constexpr std::u16string_view kRowBytes = u"100";  // what a row takes besides its texts

// Of every column what `make` makes of its name, `between` them.
template <typename Make>
Text ForColumns(size_t first, std::u16string_view between, Make make) {
  Text all;
  for (size_t i = first; i < kActionColumns.size(); ++i) {
    if (!all.empty()) all += between;
    all += make(Text(kActionColumns[i]));
  }
  return all;
}

const Text& AllColumns() {
  static const Text columns = ForColumns(kActId, u",", [](const Text& column) { return column; });
  return columns;
}

// The bytes of a row's texts.
const Text& TextBytes() {
  static const Text bytes = ForColumns(kSubject, u"+", [](const Text& column) {
    return u"coalesce(length(cast(" + column + u" as blob)),0)";
  });
  return bytes;
}

// The row of t_UserData is what `was` holds, but for the time of its last write.
const Text& IsWhatItWas() {
  static const Text same = ForColumns(kStaDateTime, u" and ", [](const Text& column) {
    return u"t_UserData." + column + u" is was." + column;
  });
  return same;
}

// `id` as it stands in a statement.
Text FirstRowWith(const Text& id) {
  return u"(select one.rowid from t_UserData one where one.f_nchActId=" + id + u" limit 1)";
}

Text FirstRowOf(std::u16string_view id) {
  return FirstRowWith(Quoted(id));
}

// Mostly they follow one another.
Text Among(std::span<const int64_t> rows) {
  if (rows.back() - rows.front() == static_cast<int64_t>(rows.size()) - 1) {
    return u" between " + Quoted(rows.front()) + u" and " + Quoted(rows.back());
  }
  Text list;
  for (const int64_t row : rows) list.append(list.empty() ? u" in (" : u",").append(Quoted(row));
  return list + u')';
}

Text Now() {
  return Quoted(core::MomentOf(platform::host().Now()));
}

}  // namespace

Text Quoted(int64_t number) {
  Text digits;
  for (const char c : std::to_string(number)) digits += static_cast<char16_t>(c);
  return u'\'' + digits + u'\'';
}

Text Quoted(std::u16string_view text) {
  return u'\'' + SqlQuote(text) + u'\'';
}

Text Head(int64_t former, int64_t step, int kind, std::u16string_view title,
          std::u16string_view running) {
  const Text number = Quoted(former + 1);
  return u"insert into t_UndoData (f_i4No,f_i4Head,f_i4Step,f_i4Count,f_i8Bytes,f_i4Kind,"
         u"f_i4Undone,f_nvcTitle,f_nvcRunning) select " +
         number + u"," + number + u"," + Quoted(step) +
         u",'0',coalesce((select f_i8Bytes from t_UndoData where f_i4No=" + Quoted(former) +
         u"),0)," + Quoted(int64_t{kind}) + u",'0'," + Quoted(title) + u"," + Quoted(running);
}

const std::string& Row() {
  static const std::string statement = platform::ToUtf8(
      u"insert into t_UndoData (f_i4No,f_i4Head,f_i4Step,f_i4Count,f_i8Bytes,f_i4Kind,f_i4Row," +
      AllColumns() + u") select ?1,?2,?3,?4,(select f_i8Bytes from t_UndoData where f_i4No=?1-1)+" +
      Text(kRowBytes) + u"+" + TextBytes() + u",?5,rowid," + AllColumns() +
      u" from t_UserData where rowid=" + FirstRowWith(u"?6"));
  return statement;
}

// To read the sum before them here would be to read the table that is written, for which the engine
// copies every row once more.
Text Rows(int64_t head, int64_t step, int64_t count, int64_t before, int change,
          std::span<const int64_t> rows) {
  return u"insert into t_UndoData (f_i4Head,f_i4Step,f_i4Count,f_i8Bytes,f_i4Kind,f_i4Row," +
         AllColumns() + u") select " + Quoted(head) + u"," + Quoted(step) + u"," + Quoted(count) +
         u"," + Quoted(before) + u"+" + Text(kRowBytes) + u"+" + TextBytes() + u"," +
         Quoted(int64_t{change}) + u",rowid," + AllColumns() + u" from t_UserData where rowid" +
         Among(rows);
}

Text SumUpTo(int64_t newest, int64_t before, int64_t count) {
  const Text sum = Quoted(before);
  return u"update t_UndoData set f_i8Bytes=" + sum + u"+(select sum(f_i8Bytes-" + sum +
         u") from t_UndoData where f_i4No>" + Quoted(newest - count) + u") where f_i4No=" +
         Quoted(newest);
}

Text Replace(std::u16string_view id, int64_t former, int64_t latter) {
  static const Text taken = ForColumns(
      kStaDateTime, u",", [](const Text& column) { return column + u"=then_." + column; });
  return u"update t_UserData set f_dtLastUpdate=" + Now() + u"," + taken +
         u" from t_UndoData then_, t_UndoData was where then_.f_i4No=" + Quoted(latter) +
         u" and was.f_i4No=" + Quoted(former) + u" and t_UserData.rowid=" + FirstRowOf(id) +
         u" and " + IsWhatItWas();
}

Text Remove(std::u16string_view id, int64_t number) {
  return u"delete from t_UserData where rowid=" + FirstRowOf(id) +
         u" and exists (select 1 from t_UndoData was where was.f_i4No=" + Quoted(number) +
         u" and " + IsWhatItWas() + u")";
}

// At its old place, as Actions of one start stand in the order of their rows.
Text Add(std::u16string_view id, int64_t number) {
  static const Text rest =
      ForColumns(kStaDateTime, u",", [](const Text& column) { return column; });
  return u"insert into t_UserData (rowid," + AllColumns() +
         u") select case when exists (select 1 from t_UserData where rowid=f_i4Row) then null else "
         u"f_i4Row end,f_nchActId," +
         Now() + u"," + rest + u" from t_UndoData where f_i4No=" + Quoted(number) +
         u" and not exists (select 1 from t_UserData one where one.f_nchActId=" + Quoted(id) + u")";
}

}  // namespace store::undo_sql
