// A head, the four lists, the odd texts and a sum over all of it: what a full disk or a power cut
// leaves of it is known by that.
#include "store/kept_index.h"

#include <algorithm>
#include <array>
#include <bit>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"

namespace store {
namespace {

constexpr uint64_t kForm = 0x4d6f7256496478'01;  // the last byte is the version
constexpr uint64_t kLongestOdd = 1 << 20;        // characters; those of a column are fewer

struct Head {
  uint64_t form;
  FileMark mark;
  uint64_t count;
};

std::u16string NameOf(std::u16string_view path) {
  return std::u16string(path) + u"-index";
}

// Every number counts, and its place. Four sums side by side, as each step waits for the one
// before.
class Sum {
 public:
  // What comes in pieces is summed as if it came at once.
  void Add(std::span<const uint64_t> numbers) {
    const size_t begun = std::min((sums_.size() - lane_) % sums_.size(), numbers.size());
    for (const uint64_t number : numbers.first(begun)) AddOne(number);
    numbers = numbers.subspan(begun);
    for (; numbers.size() >= sums_.size(); numbers = numbers.subspan(sums_.size())) {
      for (size_t lane = 0; lane < sums_.size(); ++lane) Mix(sums_[lane], numbers[lane]);
    }
    for (const uint64_t number : numbers) AddOne(number);
  }
  uint64_t Value() const {
    uint64_t value = kForm;
    for (const uint64_t sum : sums_) Mix(value, sum);
    return value;
  }

 private:
  static void Mix(uint64_t& sum, uint64_t number) {
    sum = std::rotl((sum ^ number) * 0x9e3779b97f4a7c15, 29);
  }

  void AddOne(uint64_t number) {
    Mix(sums_[lane_], number);
    lane_ = (lane_ + 1) % sums_.size();
  }

  std::array<uint64_t, 4> sums_{};
  size_t lane_ = 0;  // of the next number
};

class Writer {
 public:
  explicit Writer(platform::File& file) : file_(file) {}

  void Put(std::span<const uint64_t> numbers) {
    sum_.Add(numbers);
    const auto* bytes = reinterpret_cast<const char*>(numbers.data());
    isWhole_ = isWhole_ && file_.Write({bytes, numbers.size_bytes()});
  }
  void Put(uint64_t number) { Put({&number, 1}); }
  void Put(const core::NumberList& list) {
    for (size_t block = 0; block < list.Blocks(); ++block) Put(list.Block(block));
  }
  // Of a text, a number for each character.
  void Put(std::span<const std::u16string> texts) {
    Put(texts.size());
    for (const std::u16string& text : texts) {
      Put(text.size());
      Put(std::vector<uint64_t>(text.begin(), text.end()));
    }
  }
  bool End() {
    Put(sum_.Value());
    return isWhole_;
  }

 private:
  platform::File& file_;
  Sum sum_;
  bool isWhole_ = true;
};

class Reader {
 public:
  explicit Reader(platform::File& file) : file_(file) {}

  bool Take(std::span<uint64_t> numbers) {
    auto* to = reinterpret_cast<char*>(numbers.data());
    size_t left = numbers.size_bytes();
    while (left > 0) {
      const int64_t read = file_.Read(to, left);
      if (read <= 0) return false;
      to += read;
      left -= static_cast<size_t>(read);
    }
    sum_.Add(numbers);
    return true;
  }
  bool Take(uint64_t& number) { return Take({&number, 1}); }
  bool Take(uint64_t count, core::NumberList& list) {
    constexpr size_t kBlock = core::NumberList::kBlockSize;
    std::vector<uint64_t> blocks(64 * kBlock);  // read at once
    while (list.Count() < count) {
      const uint64_t left = count - list.Count();
      auto part =
          std::span(blocks).first(static_cast<size_t>(std::min<uint64_t>(blocks.size(), left)));
      if (!Take(part)) return false;
      for (; !part.empty(); part = part.subspan(std::min(kBlock, part.size()))) {
        list.AppendBlock(part.first(std::min(kBlock, part.size())));
      }
    }
    return true;
  }
  bool Take(std::vector<std::u16string>& texts) {
    uint64_t count = 0, length = 0;
    if (!Take(count)) return false;
    while (texts.size() < count) {
      if (!Take(length) || length > kLongestOdd) return false;
      std::vector<uint64_t> characters(static_cast<size_t>(length));
      if (!Take(characters)) return false;
      texts.emplace_back(characters.begin(), characters.end());
    }
    return true;
  }
  bool End() {
    const uint64_t expected = sum_.Value();
    uint64_t found = 0;
    return Take(found) && found == expected;
  }

 private:
  platform::File& file_;
  Sum sum_;
};

bool HasItsTexts(const core::NumberList& list, size_t texts) {
  for (size_t block = 0; block < list.Blocks(); ++block) {
    if (list.Greatest(block) >= core::kOddText + texts) return false;
  }
  return true;
}

bool Take(Reader& reader, uint64_t count, core::TextList& list) {
  core::NumberList packed;
  std::vector<std::u16string> odd;
  const bool isWhole =
      reader.Take(count, packed) && reader.Take(odd) && HasItsTexts(packed, odd.size());
  if (isWhole) list = core::TextList(std::move(packed), std::move(odd));
  return isWhole;
}

bool Write(platform::File& file, const FileMark& mark, const IndexRows& rows) {
  Writer writer(file);
  const Head head{kForm, mark, rows.rowIds.Count()};
  writer.Put(std::bit_cast<std::array<uint64_t, sizeof(Head) / 8>>(head));
  for (const core::TextList* list : {&rows.ids, &rows.starts, &rows.ends}) {
    writer.Put(list->Packed());
    writer.Put(list->Odd());
  }
  writer.Put(rows.rowIds);
  return writer.End();
}

}  // namespace

std::optional<IndexRows> ReadKeptIndex(std::u16string_view path, const FileMark& mark) {
  const auto file = platform::files().OpenForReading(NameOf(path));
  if (!file) return {};
  Reader reader(*file);
  std::array<uint64_t, sizeof(Head) / 8> words;
  if (!reader.Take(words)) return {};
  const auto head = std::bit_cast<Head>(words);
  if (head.form != kForm || head.mark != mark) return {};
  IndexRows rows;
  const bool isWhole =
      Take(reader, head.count, rows.ids) && Take(reader, head.count, rows.starts) &&
      Take(reader, head.count, rows.ends) && reader.Take(head.count, rows.rowIds) && reader.End();
  return isWhole ? std::optional(std::move(rows)) : std::nullopt;
}

void KeepIndex(std::u16string_view path, const FileMark& mark, const IndexRows& rows) {
  const std::u16string name = NameOf(path);
  auto file = platform::files().CreateInPlace(name);
  if (!file) return;
  const bool isWhole = Write(*file, mark, rows);
  file.reset();
  if (!isWhole) platform::files().Remove(name);
}

}  // namespace store
