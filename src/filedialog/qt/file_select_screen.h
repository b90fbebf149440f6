// The program's own file dialog. A tap enters a folder or takes a file's name; tap and hold opens
// the menu of what can be done with an entry.
#pragma once

#include <QAbstractListModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <functional>
#include <optional>
#include <string>

#include "filedialog/file_select.h"
#include "platform/qt/choice_box.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"

class QVBoxLayout;

namespace filedialog {

class CFileSelectDlg : public platform::qt::ModalScreen {
 public:
  CFileSelectDlg(QWidget* over, FileSelectParams params);
  ~CFileSelectDlg() override;

  // kResultOk if a path was chosen.
  int RunModal();
  // The full path; none after a cancel.
  const std::optional<std::u16string>& ResultPath() const { return select_.ResultPath(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Lines;

  void MakeHeader(QVBoxLayout& rows);
  void MakeFolderRow(QVBoxLayout& rows);
  void MakeList(QVBoxLayout& rows);
  void MakeNameRows(QVBoxLayout& rows);
  void MakeMenus();
  QPushButton* AddButton(const char* name, const QString& text, int units,
                         std::function<void()> onClick);

  // Shows the folder again; the list stays scrolled as it was if the folder is the same.
  void ShowFolder();
  void PressLine(QPoint point);
  void TapLine(int line);
  bool TakeKey(int key);
  void ShowHoldMenu(QPoint point);
  void GoUp();
  void NewFolder();
  void Rename();
  void Delete();
  void Accept();
  std::optional<std::u16string> AskName(std::u16string title, std::u16string first);

  CFileSelect select_;
  Lines* lines_;
  QLineEdit* folder_;
  QListView* list_;
  QLabel* unreadable_;
  QLineEdit* name_;
  platform::qt::ChoiceBox* filter_;
  platform::qt::SoftKeyBar* keys_;
  QMenu* holdMenu_;
};

}  // namespace filedialog
