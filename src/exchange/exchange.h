// The exchange screen without its widgets: an export or an import, which it runs as often as its
// user likes. Interface thread.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "exchange/progress.h"
#include "filedialog/file_select.h"

namespace exchange {

enum class ExchangeKind { kExport = 1, kImport = 2 };

class CExchange {
 public:
  // With the last path of its kind.
  CExchange(core::CAppState& app, ExchangeKind kind);

  ExchangeKind Kind() const { return kind_; }
  std::u16string_view Title() const;  // also the text of the run button
  const std::u16string& Path() const { return path_; }
  int FormatVer() const { return formatVer_; }
  int ReadMode() const { return readMode_; }
  // A file without ids has nothing to replace by.
  bool IsReadModeEnabled() const;

  // As it was typed.
  void SetPath(std::u16string_view typed);
  void ChooseVersion(int version) { formatVer_ = version; }
  void ChooseReadMode(int mode) { readMode_ = mode; }
  // What the file dialog is opened with; its answer goes to SetPath.
  filedialog::FileSelectParams BrowseParams() const;
  // Asks once, then runs the export or the import.
  void OnRun(const Progress& progress);
  // The screen ends, however it does: its path is kept.
  void Close();

 private:
  void RunExportAsked(const Progress& progress);
  void RunImportAsked(const Progress& progress);

  core::CAppState& app_;
  ExchangeKind kind_;
  std::u16string path_;
  int formatVer_;
  int readMode_;
};

}  // namespace exchange
