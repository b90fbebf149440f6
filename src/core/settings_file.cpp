// Sections are read line by line and written in one go, beside the old file. Values are checked for
// their form, never for their range: the place that uses a setting decides what an unknown value
// means, and which is the greatest.
#include <memory>
#include <string>

#include "core/lines.h"
#include "core/settings.h"
#include "core/settings_keys.h"
#include "platform/files.h"

namespace core {
namespace {

struct ListSection {
  std::u16string_view header;
  HistoryList CAppState::*list;
};

// No text of the program's comes near it, and a file of any size takes little memory.
constexpr size_t kLongestLine = 1 << 20;
constexpr char16_t kNoSeparator = u'\n';  // which no line holds

constexpr std::u16string_view kSystemHeader = u"[System]";

constexpr ListSection kListSections[] = {
    {u"[Place]", &CAppState::PlaceHistory},         {u"[Memo]", &CAppState::MemoHistory},
    {u"[Category1]", &CAppState::Category1History}, {u"[Category2]", &CAppState::Category2History},
    {u"[Find]", &CAppState::FindHistory},
};

void TakeSystemLine(CAppState& app, std::u16string_view line) {
  const size_t colon = line.find(u':');
  if (colon == std::u16string_view::npos) return;
  TakeSetting(app, line.substr(0, colon), line.substr(colon + 1));
}

// Knows the section that the next line belongs to: none, [System], or one of the lists. Kept on
// purpose: only an empty line ends a section; in one, a header is a line like any other.
class SectionReader {
 public:
  explicit SectionReader(CAppState& app) : app_(app) {}

  void TakeLine(std::u16string_view line) {
    if (line.empty()) {
      inSystem_ = false;
      list_ = nullptr;
    } else if (inSystem_) {
      TakeSystemLine(app_, line);
    } else if (list_ != nullptr) {
      list_->Set(position_++, line);
    } else {
      TakeHeader(line);
    }
  }

 private:
  // A list that stands twice in the file begins again at its top.
  void TakeHeader(std::u16string_view line) {
    inSystem_ = line == kSystemHeader;
    for (const ListSection& section : kListSections) {
      if (line == section.header) list_ = &(app_.*section.list);
    }
    position_ = 0;
  }

  CAppState& app_;
  bool inSystem_ = false;
  HistoryList* list_ = nullptr;
  size_t position_ = 0;
};

// The lines after the first.
bool WriteLines(const CAppState& app, platform::File& file) {
  const auto write = [&file](std::u16string_view line) { return WriteTextLine(file, line) == 0; };
  const bool keysWritten =
      EachSetting(app, [&](std::u16string_view key, std::u16string_view value) {
        return write(std::u16string(key) + u':' + std::u16string(value));
      });
  if (!keysWritten || !write(u"")) return false;
  for (const ListSection& section : kListSections) {
    if (!write(section.header)) return false;
    // Kept on purpose: nothing is escaped, a text with line breaks comes back as several.
    for (const std::u16string& entry : (app.*section.list).Entries()) {
      if (!write(entry)) return false;
    }
    if (!write(u"")) return false;
  }
  return true;
}

bool MayBeReplaced(std::u16string_view path) {
  constexpr uint32_t kRefused = platform::kAttributeReadOnly | platform::kAttributeDirectory;
  return (platform::files().Attributes(path).value_or(0) & kRefused) == 0;
}

// The whole file under a name of its own; 0, -1 if it cannot be created, -2 if its first line, -3
// if a later one or the way to the disk fails.
int WriteNewFile(const CAppState& app, std::u16string_view path) {
  const std::unique_ptr<platform::File> file = platform::files().CreateInPlace(path);
  if (!file) return -1;
  if (WriteTextLine(*file, kSystemHeader) != 0) return -2;
  return WriteLines(app, *file) && file->Sync() ? 0 : -3;
}

}  // namespace

int ReadSettings(CAppState& app, std::u16string_view path) {
  for (const ListSection& section : kListSections) (app.*section.list).Clear();
  app.DayVwPrtColWdh.fill(-1);
  app.DayVwLndColWdh.fill(-1);
  app.MapVwPrtColWdh.fill(-1);
  app.MapVwLndColWdh.fill(-1);
  const std::unique_ptr<platform::File> file = platform::files().OpenForReading(path);
  if (!file) return -1;
  LineReader lines(*file);
  lines.LimitFields(kNoSeparator, 1, kLongestLine);
  SectionReader sections(app);
  std::u16string line;
  size_t byteLength;
  int result;
  // Kept on purpose: a last line that is not ended is dropped.
  while ((result = lines.ReadTextLine(line, byteLength)) == 0) sections.TakeLine(line);
  return result == -1 ? 0 : -9;
}

// The old file stays until the new one is whole: a full disk or a crash costs the changes of this
// run and not the settings.
int WriteSettings(const CAppState& app, std::u16string_view path) {
  if (!MayBeReplaced(path)) return -1;
  const std::u16string newPath = std::u16string(path) + u".new";
  const int written = WriteNewFile(app, newPath);
  if (written == -1) return -1;
  const bool inPlace = written == 0 && platform::files().Rename(newPath, path);
  if (!inPlace) platform::files().Remove(newPath);
  if (written == -2) return -2;
  // Kept on purpose: a write that fails after the first line goes unreported.
  return inPlace || written == -3 ? 0 : -1;
}

}  // namespace core
