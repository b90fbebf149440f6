#include "exchange/export.h"

#include <memory>
#include <string>

#include "core/text.h"
#include "exchange/action_lines.h"
#include "platform/files.h"
#include "platform/host.h"
#include "store/session.h"

namespace exchange {
namespace {

using platform::Icon;
using platform::ShowNotice;

constexpr int kFailed = -1;
constexpr int kRowsASignal = 100;

int TellOpenFailed(std::u16string_view path) {
  ShowNotice(u"ファイル" + std::u16string(path) +
                 u"のオープンに失敗しました。ファイル名を見直してください。",
             u"オープンエラー", Icon::kStop);
  return kFailed;
}

int TellWriteFailed(std::u16string_view path, int code) {
  ShowNotice(u"ファイル" + std::u16string(path) + u"の書込みに失敗(" + core::ZeroPadded(code, 1) +
                 u")しました。メモリの空き容量を確認してください。",
             u"書込みエラー", Icon::kStop);
  return kFailed;
}

// The lines of the whole index. How many, or the negative result of the write that failed.
int WriteActions(const core::CAppState& app, platform::File& file, int version, int& unkept,
                 const Progress& progress) {
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  if (table == nullptr) return 0;
  const store::ReadView view(*store::dbSession().Session);
  store::Action action;
  std::string line;
  int done = 0;
  for (; done < app.IndexCount; ++done) {
    if (done % kRowsASignal == 0) {
      platform::host().SignalActivity();
      if (progress) progress(done, app.IndexCount);
    }
    const store::HRESULT read = table->ReadById(app.ActIds.At(static_cast<size_t>(done)), action);
    if (store::Failed(read)) break;  // kept on purpose: it ends the file, which counts as complete
    if (!LineBytes(action, version, line)) ++unkept;
    if (!file.Write(line)) return kFailed;
  }
  if (progress) progress(done, app.IndexCount);
  return done;
}

int Export(const core::CAppState& app, std::u16string_view path, int version, int& unkept,
           const Progress& progress) {
  // The diary itself is chosen with one tap in the file dialog.
  const std::unique_ptr<store::Engine>& diary = store::dbSession().Session;
  if (diary && diary->Keeps(path)) return TellOpenFailed(path);
  const std::unique_ptr<platform::File> file = platform::files().Create(path);
  if (file == nullptr) return TellOpenFailed(path);
  unkept = 0;
  int result = file->Write(HeaderBytes(version)) ? 0 : kFailed;
  if (result == 0) result = WriteActions(app, *file, version, unkept, progress);
  // A disk that fails late must not be reported as success.
  if (result >= 0 && !file->Sync()) result = kFailed;
  return result < 0 ? TellWriteFailed(path, result) : result;
}

}  // namespace

int ExportVer1(const core::CAppState& app, std::u16string_view path, int& unkept,
               const Progress& progress) {
  return Export(app, path, kVer1, unkept, progress);
}

int ExportVer2(const core::CAppState& app, std::u16string_view path, int& unkept,
               const Progress& progress) {
  return Export(app, path, kVer2, unkept, progress);
}

int ExportVer3(const core::CAppState& app, std::u16string_view path, int& unkept,
               const Progress& progress) {
  return Export(app, path, kVer3, unkept, progress);
}

int ExportVer3Utf8(const core::CAppState& app, std::u16string_view path, int& unkept,
                   const Progress& progress) {
  return Export(app, path, kVer3Utf8, unkept, progress);
}

int RunExport(const core::CAppState& app, std::u16string_view path, int version,
              const Progress& progress) {
  int unkept = 0;
  const auto write = version == kVer1   ? ExportVer1
                     : version == kVer2 ? ExportVer2
                     : version == kVer3 ? ExportVer3
                                        : ExportVer3Utf8;
  const int result = write(app, path, unkept, progress);
  // Kept on purpose: the writer has shown a message of its own by now.
  if (result < 0) {
    ShowNotice(u"エクスポートに失敗しました。(" + core::ZeroPadded(result, 1) + u")",
               u"エクスポート失敗", Icon::kStop);
  } else {
    std::u16string text = u"エクスポートが完了しました。";
    if (unkept > 0) {
      text += u'\n' + core::ZeroPadded(unkept, 1) +
              u"個のアクションに、この形式では残せない文字があります。";
    }
    ShowNotice(text, u"エクスポート完了", Icon::kInformation);
  }
  return result;
}

}  // namespace exchange
