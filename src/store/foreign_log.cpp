// A file is in the log's form from before the log's first frame to after its end, and bears the
// stamp (PRAGMA user_version) that its session's first frame repeats. A log that has begun again
// from its top may hold no such frame: of that one there's no telling.
#include "store/foreign_log.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>

#include "core/text.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"

namespace store {
namespace {

using Text = std::u16string;

constexpr size_t kFileHeader = 100;
constexpr size_t kReadVersion = 19;  // in the file's header: 1 the rollback form, 2 the log's
constexpr char kLogForm = 2;
constexpr size_t kStamp = 60;
constexpr size_t kLogHeader = 32;
constexpr uint32_t kLogMagic = 0x377F0682;  // its lowest bit is the checksums' order of bytes
constexpr size_t kLogPageSize = 8;
constexpr size_t kLogSalts = 16;
constexpr size_t kFrameHeader = 24;  // the page's number first
constexpr size_t kFrameSalts = 8;
constexpr size_t kSaltsSize = 8;
constexpr int kAsideNames = 100;

uint32_t Number(const char* bytes) {
  uint32_t number = 0;
  for (int i = 0; i < 4; ++i) number = number << 8 | static_cast<unsigned char>(bytes[i]);
  return number;
}

// The file that is opened is the one that a link leads to, and the log lies beside that.
Text RealPath(std::u16string_view path) {
  return platform::files().FollowLink(path).value_or(Text(path));
}

std::ifstream OpenFile(const Text& path) {
  return std::ifstream(platform::ToHostPath(path).value_or(""), std::ios::binary);
}

template <size_t kSize>
bool Read(std::ifstream& file, std::array<char, kSize>& bytes) {
  return static_cast<bool>(file.read(bytes.data(), kSize));
}

// Whether none of the first pages in the log bears the stamp, and there is one.
bool BearsOtherStamps(std::ifstream& log, const std::array<char, kLogHeader>& header,
                      uint32_t stamp) {
  std::array<char, kFrameHeader> frame;
  std::array<char, kFileHeader> page;
  const auto pageSize = static_cast<std::streamoff>(Number(header.data() + kLogPageSize));
  bool other = false;
  while (Read(log, frame) &&
         std::memcmp(frame.data() + kFrameSalts, header.data() + kLogSalts, kSaltsSize) == 0) {
    const std::streamoff next = log.tellg() + pageSize;
    if (Number(frame.data()) == 1 && Read(log, page)) {
      if (Number(page.data() + kStamp) == stamp) return false;
      other = true;
    }
    log.seekg(next);
  }
  return other;
}

}  // namespace

bool HasForeignLog(std::u16string_view path) {
  const Text file = RealPath(path);
  std::ifstream log = OpenFile(file + u"-wal");
  std::array<char, kLogHeader> logHeader;
  std::array<char, kFrameHeader> firstFrame;
  const bool holdsFrames = Read(log, logHeader) && (Number(logHeader.data()) & ~1u) == kLogMagic &&
                           Read(log, firstFrame);
  std::ifstream data = OpenFile(file);
  std::array<char, kFileHeader> header;
  if (!holdsFrames || !Read(data, header)) return false;
  if (header[kReadVersion] != kLogForm) return true;
  log.seekg(kLogHeader);
  return BearsOtherStamps(log, logHeader, Number(header.data() + kStamp));
}

bool SetLogAside(std::u16string_view path) {
  const Text log = RealPath(path) + u"-wal";
  Text aside;
  for (int i = 0; i < kAsideNames && (aside.empty() || platform::files().Exists(aside)); ++i) {
    aside = log + u'.' + core::ZeroPadded(i, 2);
  }
  const Text question = u"データファイル '" + Text(path) +
                        u"' のそばに、別のデータファイルの書込み記録 '" + log +
                        u"' が残っています。\n"
                        u"データファイルが置換されたと思われます。\n"
                        u"記録を '" +
                        aside + u"' に移し、データファイルをそのまま開きますか。";
  if (!platform::AskYesNo(question, u"データファイル確認", platform::Icon::kWarning,
                          platform::kNoButton) ||
      platform::files().Exists(aside) || !platform::files().RenameToFree(log, aside)) {
    return false;
  }
  platform::files().Remove(RealPath(path) + u"-shm");
  return true;
}

}  // namespace store
