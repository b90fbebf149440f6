// A small second recorder for the model test: plain maps and lists instead of tables, and each
// operation written down once more from its description. It shares no code with the program but the
// text forms of numbers and dates.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/date_time.h"
#include "core/text.h"
#include "platform/host.h"

namespace recorder_test {

using Text = std::u16string;

inline const Text kMark = u"<現在時刻>";

struct Row {
  Text start, end, place, category1, category2, latitude;  // latitude "-" for none
  bool operator==(const Row&) const = default;
  bool IsAllDay() const { return start.substr(11) == u"00:00:00" && end.substr(11) == u"24:00:00"; }
  Text Line(const Text& mark) const {
    return start.substr(0, 10) + u' ' + (IsAllDay() ? Text(u"終日") : start.substr(11, 5)) + u"::" +
           place + mark + category1 + u"::" + category2;
  }
};

struct Fields {
  Text time = kMark, latitude, place, category1, category2;
  bool operator==(const Fields&) const = default;
};

// What the data file holds.
struct Disk {
  std::map<Text, Row> actions;
  int count = 0;
  Text running;
  std::vector<Text> positions;  // t_RcdrData, never shortened
  Fields captured;
  bool operator==(const Disk&) const = default;
};

class Model {
 public:
  Disk disk;
  bool loaded = false;
  std::vector<Text> history;
  Text running;
  Fields captured;
  // The screen.
  Fields fields;
  std::vector<Text> lines;
  std::set<size_t> selected;
  bool canGoBack = false, canStop = false, showsRunning = false;
  std::vector<Text> messages;  // title and text
  Text separator = u"－＞";
  platform::LocalTime now;
  Text nextId;                          // of the next new Action
  bool yes = false;                     // the answer to the next question
  std::vector<Disk>* writes = nullptr;  // the file after each write, if wanted

  void Record() {
    const auto tap = Tap();
    if (!tap) return;
    std::optional<Text> closedLine;
    if (running.empty()) {
      history.clear();
      WriteCount();
      lines.clear();
      selected.clear();
    } else if (const auto closed = CloseRunning(*tap)) {
      closedLine = closed->Line(u"::");
    }
    Row row{*tap, *tap, fields.place, fields.category1, fields.category2, u"-"};
    if (fields.latitude == u"35/30/0.0") row.latitude = u"35.500000";
    disk.actions[nextId] = row;
    Wrote();
    running = nextId;
    history.push_back(running);
    WriteCount();
    disk.positions.resize(std::max(disk.positions.size(), history.size()));
    disk.positions[history.size() - 1] = running;
    Wrote();
    WriteRunning();
    if (closedLine && !lines.empty()) lines.back() = *closedLine;
    lines.push_back(row.Line(u"...::"));
    selected = {lines.size() - 1};
    NewMoment();
    Buttons(true, true);
  }

  void StopButton() {
    if (running.empty()) return Reopen();
    const auto tap = Tap();
    if (!tap) return;
    CloseRunning(*tap);
    running.clear();
    WriteRunning();
    FillList();
    NewMoment();
    Buttons(!history.empty(), false);
  }

  void Back() {
    if (history.empty()) return Say(u"戻し不可", u"これ以上、戻せません。");
    Say(u"アクション削除の確認", u"最後のアクションを削除しますが、よろしいですか？");
    if (!yes) return;
    disk.actions.erase(history.back());
    Wrote();
    history.pop_back();
    WriteCount();
    running = history.empty() ? Text() : history.back();
    WriteRunning();
    if (!running.empty() && disk.actions.contains(running)) {
      Row& row = disk.actions[running];
      row.end = row.IsAllDay() ? row.start.substr(0, 11) + u"24:00:00" : row.start;
      CutMovement(row);
      Wrote();
    } else if (!running.empty()) {
      Say(u"レコーダー停止", u"ひとつ前のアクションが見つかりません。記録を停止します。");
      running.clear();
      WriteRunning();
    }
    NewMoment();
    FillList();
  }

  void Clear() {
    running.clear();
    WriteRunning();
    history.clear();
    WriteCount();
    lines.clear();
    selected.clear();
    fields = {};
    Buttons(false, false);
  }

  void Delete() {
    if (selected.empty()) return Say(u"削除不可", u"有効なアクションが選択されていません。");
    Say(u"アクションの削除の確認",
        selected.size() == 1
            ? Text(u"このアクションを削除しますか？")
            : u"これらの " + core::ZeroPadded(static_cast<int>(selected.size()), 1) +
                  u"個のアクションを削除しますか？");
    if (!yes) return;
    for (auto line = selected.rbegin(); line != selected.rend(); ++line) {
      if (*line >= history.size()) continue;
      if (disk.actions.erase(history[*line]) == 0) {
        return Say(u"ERROR", u"CRecorderDlg::FxBtnDelete Delete Err (ln=5272, hr=80040e19)");
      }
      Wrote();
    }
    FillList();
  }

  void OpenScreen() {
    fields = {kMark, captured.latitude, captured.place, captured.category1, captured.category2};
    lines.clear();
    selected.clear();
    Buttons(false, false);
    if (!loaded) {
      running = disk.running;
      const auto rows = disk.positions.size();
      history.assign(disk.positions.begin(),
                     disk.positions.begin() +
                         static_cast<ptrdiff_t>(std::min(rows, static_cast<size_t>(disk.count))));
      fields = captured = disk.captured;
      loaded = true;
    }
    FillList();
  }

  void CloseScreen() { captured = fields; }
  void EndOrderly() {
    if (loaded) disk.captured = captured;
    EndByKill();
  }
  void EndByKill() {
    loaded = false;
    captured = {};
  }

  void FillList() {
    lines.clear();
    selected.clear();
    for (size_t i = 0; i < history.size();) {
      const auto row = disk.actions.find(history[i]);
      if (row == disk.actions.end()) {
        history.erase(history.begin() + static_cast<ptrdiff_t>(i));
        continue;
      }
      const bool marked = i + 1 == history.size() && !running.empty();
      lines.push_back(row->second.Line(marked ? u"...::" : u"::"));
      i++;
    }
    if (disk.count != static_cast<int>(history.size())) WriteCount();
    if (!lines.empty()) selected = {lines.size() - 1};
    if (!running.empty() && !disk.actions.contains(running)) {
      running.clear();
      WriteRunning();
    }
    Buttons(!running.empty() || !history.empty(), !running.empty());
  }

 private:
  std::optional<Text> Tap() {
    const Text day = core::FormatDate(now.year, now.month, now.day) + u' ';
    if (fields.time == kMark) return day + core::FormatTime(now.hour, now.minute, now.second);
    if (fields.time.size() == 5 && fields.time < u"24") return day + fields.time + u":00";
    Say(u"入力値不正", u"入力した時刻の値が不正です。入力値を見直してください。");
    return {};
  }

  // The Action as the closing wrote it, its place not yet cut to the column; none if it is gone.
  std::optional<Row> CloseRunning(const Text& tap) {
    if (!disk.actions.contains(running)) {
      Say(u"アクション修正不可",
          u"直前のアクションが見つかりません。手動にて場所および終了日時を修正してください。");
      return {};
    }
    Row& row = disk.actions[running];
    row.end = row.IsAllDay() ? std::max(row.start, tap).substr(0, 11) + u"24:00:00"
                             : std::max(row.start, tap);
    if (row.place != fields.place) row.place += separator + fields.place;
    const Row written = row;
    row.place = row.place.substr(0, 500);
    Wrote();
    return written;
  }

  void Reopen() {
    if (history.empty()) {
      return Say(u"レコーダー再開不可",
                 u"再開する記録がありません。新規に記録を開始してください。");
    }
    const auto row = disk.actions.find(history.back());
    if (row == disk.actions.end()) {
      return Say(u"レコーダー再開不可",
                 u"直前のアクションが見つかりません。新規に記録を開始してください。");
    }
    if (CutMovement(row->second)) Wrote();
    running = history.back();
    WriteRunning();
    FillList();
  }

  bool CutMovement(Row& row) const {
    const auto at = separator.empty() ? Text::npos : row.place.rfind(separator);
    if (at == Text::npos || at == 0) return false;
    row.place = row.place.substr(0, at);
    return true;
  }

  void WriteCount() {
    disk.count = static_cast<int>(history.size());
    Wrote();
  }
  void WriteRunning() {
    disk.running = running;
    Wrote();
  }
  void Wrote() {
    if (writes != nullptr) writes->push_back(disk);
  }
  void Say(const Text& title, const Text& text) { messages.push_back(title + u'|' + text); }
  void Buttons(bool enabled, bool isRunning) {
    canGoBack = canStop = enabled;
    showsRunning = isRunning;
  }
  void NewMoment() {
    fields.time = kMark;
    fields.latitude.clear();
  }
};

}  // namespace recorder_test
