#include "store/trouble.h"

#include <cerrno>

namespace store {
namespace {

Trouble lastTrouble = Trouble::kUnknown;

}  // namespace

void NoteTrouble(Trouble trouble) {
  lastTrouble = trouble;
}

void NoteSystemError(int error) {
  const bool hasNoRoom = error == ENOSPC || error == EDQUOT || error == EFBIG;
  const bool isForbidden = error == EACCES || error == EPERM || error == EROFS;
  const bool isMissing = error == ENOENT || error == ENOTDIR;
  const bool isTooLong = error == ENAMETOOLONG;
  NoteTrouble(hasNoRoom     ? Trouble::kDiskFull
              : isForbidden ? Trouble::kForbidden
              : isMissing   ? Trouble::kNoFolder
              : isTooLong   ? Trouble::kTooLong
                            : Trouble::kUnknown);
}

Trouble LastTrouble() {
  return lastTrouble;
}

bool NeverReachedFile(Trouble trouble) {
  return trouble == Trouble::kDisplaced || trouble == Trouble::kExchanged ||
         trouble == Trouble::kBusy;
}

std::u16string_view TroubleText() {
  switch (lastTrouble) {
    case Trouble::kDiskFull:
      return u"保存先の空き容量が不足しています。";
    case Trouble::kDisk:
      return u"ディスクの読み書きに失敗しました。";
    case Trouble::kReadOnly:
      return u"データファイルまたはそのフォルダは書込み禁止になっています。";
    case Trouble::kBusy:
      return u"ほかのプログラムがデータファイルを使用中です。";
    case Trouble::kInUse:
      return u"別のフォルダから起動したMorvenlyがこのデータファイルを使用中です。";
    case Trouble::kNoFolder:
      return u"保存先のフォルダがありません。";
    case Trouble::kForbidden:
      return u"保存先のフォルダは書込み禁止になっています。";
    case Trouble::kTooLong:
      return u"名前が長すぎます。";
    case Trouble::kFolder:
      return u"同じ名前のフォルダがあります。";
    case Trouble::kTaken:
      return u"同じ名前のファイルまたはリンクがあります。";
    case Trouble::kNotOpened:
      return u"データファイルを読み取る権限がありません。";
    case Trouble::kDamaged:
      return u"データファイルが壊れています。";
    case Trouble::kForeignSql:
      return u"ビュー、トリガー、計算式などを含むファイルは使用できません。";
    case Trouble::kForeignLog:
      return u"別のデータファイルの書込み記録が残っています。";
    case Trouble::kDisplaced:
      return u"開いているデータファイルが元の場所にないため、書込みませんでした。";
    case Trouble::kExchanged:
      return u"置換されたファイルを開きました。再度操作してください。";
    case Trouble::kUnknown:
      break;
  }
  return {};
}

std::u16string WithReason(std::u16string text, HRESULT result) {
  const std::u16string_view reason = TroubleText();
  if (result != E_FAIL || reason.empty()) return text;
  return (text += u'\n') += reason;
}

}  // namespace store
