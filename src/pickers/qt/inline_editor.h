// What a screen opens in place of one of its fields: a list with a line to type in, a month
// calendar, or an edit of several lines. One of them is open at a time. It gives the focus back to
// its field.
#pragma once

#include <QObject>
#include <QRect>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace pickers {

class InlineEditor : public QObject {
  Q_OBJECT

 public:
  // The editors become children of `screen`, each when it first opens, and leave `keys` at its
  // bottom uncovered.
  InlineEditor(QWidget* screen, const QWidget* keys);

  // Which editor of which field.
  struct Target {
    int which;  // the screen's own number for it, above 0
    int id;     // of the editor's control; targets that share it open the same kind of editor
    QWidget* field;
  };
  struct ListContent {
    std::vector<std::u16string> rows;
    int row;  // that the list opens at, -1 for none
    std::u16string text;
    int longest;  // that the line takes, in 16-bit units
    bool isTime;
  };

  // The open editor's number, 0 for none.
  int Which() const { return which_; }
  // Each opens over `target.field` and closes what was open.
  void OpenList(const Target& target, const ListContent& content);
  // A date as yyyy/mm/dd; today for any other text.
  void OpenCalendar(const Target& target, std::u16string_view date);
  void OpenLines(const Target& target, std::u16string_view text);
  void Close();
  // Once more, after the screen has been laid out: the list and the lines over the field, the
  // calendar below or above it.
  void Place();

 signals:
  // What the open editor holds has changed: a text was typed, a row or a day walked to.
  void TextChanged(const std::u16string& text);
  // The user is done: Enter, or a tap on a row or a day.
  void Chosen();

 private:
  // Where an editor lies, of its field's place and the area that it may cover.
  using Placing = std::function<void(const QRect& field, const QRect& area)>;

  template <typename Editor>
  Editor* Known(int id) const;
  template <typename Editor>
  Editor* Adopt(int id, Editor* editor);
  void Open(const Target& target, QWidget* editor, Placing placing);

  QWidget* screen_;
  const QWidget* keys_;
  std::map<int, QWidget*> editors_;  // by id
  int which_ = 0;
  QWidget* field_ = nullptr;
  QWidget* open_ = nullptr;
  Placing placing_;
};

}  // namespace pickers
