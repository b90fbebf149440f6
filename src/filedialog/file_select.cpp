#include "filedialog/file_select.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <utility>

#include "core/app_state.h"
#include "core/characters.h"
#include "core/paths.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "store/session.h"

namespace filedialog {
namespace {

using platform::files;
using platform::Icon;
using platform::ShowNotice;

constexpr std::u16string_view kRoot = u"\\";
constexpr std::u16string_view kEveryName = u"*.*";
constexpr size_t kMaxPatterns = 10;

bool IsHidden(std::u16string_view name) {
  return name.starts_with(u'.');
}

// Hidden names last; without the case of ASCII letters, unless two names differ in nothing else.
bool StandsBefore(const std::u16string& a, const std::u16string& b) {
  if (IsHidden(a) != IsHidden(b)) return IsHidden(b);
  constexpr auto kFold = core::FoldAscii<char16_t>;
  if (std::ranges::lexicographical_compare(a, b, {}, kFold, kFold)) return true;
  return !std::ranges::lexicographical_compare(b, a, {}, kFold, kFold) && a < b;
}

bool IsFolderAt(std::u16string_view path) {
  return (files().Attributes(path).value_or(0) & platform::kAttributeDirectory) != 0;
}

// The open diary stays where it is: removed, it would be gone when the program ends; under another
// name, or in a folder of another name, no write into it would succeed.
bool IsDiary(std::u16string_view path) {
  const std::unique_ptr<store::Engine>& diary = store::dbSession().Session;
  return diary && diary->Keeps(path);
}

// The folder that a dialog of this session listed last.
std::u16string& LastFolder() {
  static std::u16string folder;
  return folder;
}

bool IsInHomeFolder(std::u16string_view typedName) {
  return typedName == u"~" || typedName.starts_with(u"~\\");
}

bool IsDots(std::u16string_view typedName) {
  return typedName == u"." || typedName == u"..";
}

bool IsBlank(std::u16string_view typedName) {
  return typedName.find_first_not_of(u" \u3000") == std::u16string_view::npos;
}

bool RefuseName(std::u16string why, std::u16string title = u"ファイル名不正") {
  ShowNotice(std::move(why), std::move(title), Icon::kWarning);
  return false;
}

// A name with a point keeps it; an extension with a star is none.
std::u16string WithExtension(const std::u16string& path, const std::u16string& extension) {
  const bool hasPoint = path.find(u'.', path.rfind(u'\\') + 1) != std::u16string::npos;
  const bool isNone = extension.empty() || extension.find(u'*') != std::u16string::npos;
  return hasPoint || isNone ? path : path + u'.' + extension;
}

bool IsGivenName(std::u16string_view name) {
  if (!name.empty()) return true;
  ShowNotice(u"名前が入力されていません。名前を指定してください。", u"名称未入力", Icon::kStop);
  return false;
}

}  // namespace

bool MatchesPattern(std::u16string_view name, std::u16string_view pattern) {
  if (pattern == kEveryName) return true;
  size_t at = 0, in = 0;
  size_t star = std::u16string_view::npos, resume = 0;
  while (at < name.size()) {
    if (in < pattern.size() && pattern[in] == u'*') {
      star = in++;
      resume = at;
    } else if (in < pattern.size() &&
               (pattern[in] == u'?' || core::FoldAscii(pattern[in]) == core::FoldAscii(name[at]))) {
      ++in;
      ++at;
    } else if (star != std::u16string_view::npos) {
      in = star + 1;  // the star takes one character more
      at = ++resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', in) == std::u16string_view::npos;
}

CFileSelect::CFileSelect(FileSelectParams params) : params_(std::move(params)) {}

bool CFileSelect::Open() {
  if (!ParseFilter()) {
    ShowNotice(u"内部エラー(ファイルフィルタの定義不正)", u"内部エラー", Icon::kStop);
    ResultPath_.emplace();
    return false;
  }
  ListFolder(FirstFolder(), filters_[CurPattern_].pattern);
  return true;
}

// A folder that has gone meanwhile would show nothing.
std::u16string CFileSelect::FirstFolder() const {
  if (params_.StartFolder != kRoot) return params_.StartFolder;
  if (IsFolderAt(LastFolder())) return LastFolder();
  std::u16string folder, name;
  if (core::g_App != nullptr) core::SplitPath(core::g_App->DataFile, folder, name);
  return IsFolderAt(folder) ? folder : params_.StartFolder;
}

bool CFileSelect::ParseFilter() {
  std::u16string_view rest = params_.FilterText;
  while (filters_.size() < kMaxPatterns) {
    const size_t labelEnd = rest.find(u'|');
    if (labelEnd == std::u16string_view::npos || labelEnd + 1 == rest.size()) return false;
    const std::u16string_view after = rest.substr(labelEnd + 1);
    const size_t patternEnd = after.find(u'|');
    filters_.push_back(
        {std::u16string(rest.substr(0, labelEnd)), std::u16string(after.substr(0, patternEnd))});
    if (patternEnd == std::u16string_view::npos) return true;
    rest = after.substr(patternEnd + 1);
  }
  return true;
}

// What would make a path that is too long is left out.
void CFileSelect::ListFolder(std::u16string_view folder, std::u16string_view pattern) {
  const platform::WaitCursor waiting;
  CurFolder_ = LastFolder() = std::u16string(folder);
  names_.clear();
  selectedLine_ = -1;
  auto entries = files().List(CurFolder_);
  unreadable_ = !entries;
  if (unreadable_) entries.emplace();
  std::vector<std::u16string> fileNames;
  const size_t before = PathOf({}).size();
  for (platform::FolderEntry& entry : *entries) {
    if (before + entry.name.size() > core::kMaxPath) continue;
    if (entry.isFolder) {
      names_.push_back(std::move(entry.name));
    } else if (MatchesPattern(entry.name, pattern)) {
      fileNames.push_back(std::move(entry.name));
    }
  }
  std::ranges::sort(names_, StandsBefore);
  std::ranges::sort(fileNames, StandsBefore);
  FolderCount_ = static_cast<int>(names_.size());
  std::ranges::move(fileNames, std::back_inserter(names_));
}

void CFileSelect::ListAgain() {
  ListFolder(CurFolder_, filters_[CurPattern_].pattern);
}

void CFileSelect::SelectName(std::u16string_view name) {
  const auto found = std::ranges::find(names_, name);
  selectedLine_ = found == names_.end() ? -1 : static_cast<int>(found - names_.begin());
}

std::u16string CFileSelect::PathOf(std::u16string_view name) const {
  std::u16string path = CurFolder_;
  if (!path.ends_with(u'\\')) path += u'\\';
  return path.append(name);
}

// Without a backslash at its end, and without "." and "..".
std::u16string CFileSelect::TypedPath(std::u16string_view name) const {
  const bool isRooted = name.starts_with(u'\\') || IsInHomeFolder(name);
  const std::u16string path =
      isRooted ? core::RootedPath(name).value_or(std::u16string(name)) : PathOf(name);
  // A name at the end, so that the end is the same whether or not a slash was typed.
  const std::filesystem::path host(platform::ToHostPath(path + u"\\x").value_or(""));
  return platform::FromHostPath(host.lexically_normal().parent_path().string()).value_or(path);
}

std::u16string CFileSelect::LineText(int line) const {
  return (IsFolder(line) ? u"+" : u" ") + Name(line);
}

std::optional<std::u16string> CFileSelect::TapLine(int line) {
  if (line < 0) return {};
  if (!IsFolder(line)) {
    selectedLine_ = line;
    return Name(line);
  }
  ListFolder(PathOf(Name(line)), filters_[CurPattern_].pattern);
  return {};
}

// The folder that was left is the one selected.
void CFileSelect::GoUp() {
  if (CurFolder_ == kRoot) return;
  std::u16string folder = CurFolder_;
  if (folder.ends_with(u'\\')) folder.pop_back();
  const size_t backslash = folder.rfind(u'\\');
  if (backslash == std::u16string::npos) return;
  const std::u16string left = folder.substr(backslash + 1);
  folder.resize(std::max<size_t>(backslash, 1));
  ListFolder(folder, filters_[CurPattern_].pattern);
  SelectName(left);
}

void CFileSelect::ChooseFilter(int position) {
  CurPattern_ = static_cast<size_t>(position);
  ListAgain();
}

bool CFileSelect::OnOk(std::u16string_view typedName) {
  std::u16string name = platform::FromTypedPath(typedName);
  if (IsBlank(name)) return RefuseName(u"ファイル名が指定されていません。", u"ファイル名未指定");
  const bool isPath =
      IsInHomeFolder(name) || IsDots(name) || name.find(u'\\') != std::u16string::npos;
  if (isPath && IsFolderAt(TypedPath(name))) {
    ListFolder(TypedPath(name), filters_[CurPattern_].pattern);
    return false;
  }
  name = WithExtension(name, core::FileExtension(filters_.front().pattern));
  std::u16string path = isPath ? TypedPath(name) : PathOf(name);
  if (isPath && !IsFolderAt(path.substr(0, path.rfind(u'\\') + 1))) {
    return RefuseName(u"指定されたフォルダは存在しません。");
  }
  if (params_.Mode == kSelectToOpen) {
    if (IsFolderAt(path)) return RefuseName(u"同名のフォルダが存在します。");
    if (!files().Exists(path)) return RefuseName(u"指定されたファイルは存在しません。");
  }
  ResultPath_ = std::move(path);
  return true;
}

void CFileSelect::MakeFolder(std::u16string_view typedName) {
  if (!IsGivenName(typedName)) return;
  const std::u16string name = platform::FromTypedPath(typedName);
  const std::u16string path = PathOf(name);
  if (files().Exists(path)) {
    ShowNotice(
        u"指定した名前のファイルまたはフォルダは既に存在します。別の名前を指定してください。",
        u"名称エラー", Icon::kStop);
    return;
  }
  if (!files().MakeFolder(path)) {
    ShowNotice(u"フォルダの作成に失敗しました。", u"名称エラー", Icon::kStop);
  }
  ListAgain();
  SelectName(name);
}

// Nothing that stands under the new name is replaced.
void CFileSelect::Rename(std::u16string_view typedName) {
  if (selectedLine_ < 0 || !IsGivenName(typedName)) return;
  const std::u16string name = platform::FromTypedPath(typedName);
  const std::u16string formerName = Name(selectedLine_);
  const std::u16string path = PathOf(name);
  const std::u16string formerPath = PathOf(formerName);
  const bool renamed = name == formerName || (!files().Exists(path) && !IsDiary(formerPath) &&
                                              files().RenameToFree(formerPath, path));
  if (!renamed) {
    ShowNotice(u"指定されたファイルまたはフォルダの名前の変更に失敗しました。", u"名称変更エラー",
               Icon::kStop);
  }
  ListAgain();
  SelectName(renamed ? name : formerName);
}

void CFileSelect::Delete() {
  if (selectedLine_ < 0) {
    ShowNotice(u"削除対象が選択されていません。", u"削除対象なし", Icon::kStop);
    return;
  }
  const std::u16string path = PathOf(Name(selectedLine_));
  if (!platform::AskYesNo(u'"' + path + u"\"を削除してもよろしいですか？", u"削除確認",
                          Icon::kQuestion, platform::kNoButton)) {
    return;
  }
  if (!files().Exists(path)) {
    ShowNotice(u"指定されたファイルまたはフォルダが存在しません。", u"削除エラー", Icon::kStop);
  } else if (IsFolderAt(path)) {
    if (!files().RemoveFolder(path)) {
      ShowNotice(u"指定されたフォルダの削除に失敗しました。", u"フォルダ削除エラー", Icon::kStop);
    }
  } else if (IsDiary(path) || !files().Remove(path)) {
    ShowNotice(u"指定されたファイルの削除に失敗しました。", u"ファイル削除エラー", Icon::kStop);
  }
  ListAgain();
}

}  // namespace filedialog
