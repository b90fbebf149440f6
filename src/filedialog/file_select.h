// The program's own file dialog without its screen: it walks the host's folders by device paths,
// filters by extension, makes folders, renames and removes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace filedialog {

enum FileSelectMode { kSelectToSave = 1, kSelectToOpen = 2 };

struct FileSelectParams {
  int Mode = kSelectToOpen;
  std::u16string Caption;
  // Labels and patterns in turn, each ended by a vertical bar, the last pattern by the end of the
  // text: "CSV (*.csv)|*.csv|All (*.*)|*.*". At most 10 pairs count.
  std::u16string FilterText;
  // The root stands for no wish: where the last dialog of the session ended, and for the first one
  // the open diary's folder.
  std::u16string StartFolder = u"\\";
  std::u16string StartName;
};

// A pattern of names: "*" stands for any run of characters, "?" for one; ASCII letters without
// case. "*.*" matches every name.
bool MatchesPattern(std::u16string_view name, std::u16string_view pattern);

class CFileSelect {
 public:
  struct Filter {
    std::u16string label;
    std::u16string pattern;
  };

  // Nothing is read before Open.
  explicit CFileSelect(FileSelectParams params);

  // Reads the filter and lists the start folder. False after a message if the filter is at fault.
  bool Open();

  // What the screen shows.
  const std::u16string& Caption() const { return params_.Caption; }
  const std::u16string& StartName() const { return params_.StartName; }
  const std::vector<Filter>& Filters() const { return filters_; }
  const std::u16string& CurFolder() const { return CurFolder_; }
  // The folder could not be read: there are no lines.
  bool Unreadable() const { return unreadable_; }
  // Folders first, each group by name, hidden names last.
  int LineCount() const { return static_cast<int>(names_.size()); }
  bool IsFolder(int line) const { return line < FolderCount_; }
  const std::u16string& Name(int line) const { return names_[static_cast<size_t>(line)]; }
  // The mark "+" of a folder or a blank, and the name.
  std::u16string LineText(int line) const;
  int SelectedLine() const { return selectedLine_; }  // -1 for none

  // Commands. `line` is -1 for no line.
  void SelectLine(int line) { selectedLine_ = line; }
  // A folder is listed; of a file the name is answered, for the name field.
  std::optional<std::u16string> TapLine(int line);
  void GoUp();
  void ChooseFilter(int position);
  // The name goes through the checks of the mode. True ends the dialog: ResultPath is there. A name
  // with a slash is a path from the shown folder, the root, or ("~/") the user's home folder; a
  // folder so named is listed.
  bool OnOk(std::u16string_view name);
  // Each takes the name that the user typed.
  void MakeFolder(std::u16string_view name);
  void Rename(std::u16string_view name);
  // Asks, then removes the selected line's file or empty folder.
  void Delete();

  // The full path; none before OK and after a cancel, empty after a fault of the filter.
  const std::optional<std::u16string>& ResultPath() const { return ResultPath_; }

 private:
  bool ParseFilter();
  std::u16string FirstFolder() const;
  void ListFolder(std::u16string_view folder, std::u16string_view pattern);
  void ListAgain();
  void SelectName(std::u16string_view name);
  std::u16string PathOf(std::u16string_view name) const;
  std::u16string TypedPath(std::u16string_view name) const;

  FileSelectParams params_;
  std::vector<Filter> filters_;
  size_t CurPattern_ = 0;
  std::u16string CurFolder_;
  bool unreadable_ = false;
  std::vector<std::u16string> names_;
  int FolderCount_ = 0;
  int selectedLine_ = -1;
  std::optional<std::u16string> ResultPath_;
};

}  // namespace filedialog
