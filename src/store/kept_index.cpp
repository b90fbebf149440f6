// The file: a head, a directory of the blocks of the four lists, the odd texts, and a checksum of
// all of these; then the blocks, whose own checksums stand in the directory. They show what a full
// disk or a power cut has left unfinished.
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

constexpr uint64_t kForm = 0x4d6f7256496478'02;  // the last byte is the version
constexpr uint64_t kLongestOdd = 1 << 20;        // characters; those of a column are fewer

struct Head {
  uint64_t form;
  FileMark mark;
  uint64_t count;
};

std::u16string NameOf(std::u16string_view path) {
  return std::u16string(path) + u"-index";
}

// Of a block, in the order of the blocks in the file: how many numbers it has, the greatest of
// them, and its checksum.
struct Entry {
  uint64_t count, greatest, sum;
};

template <typename Value>
std::span<uint64_t> WordsOf(std::span<Value> values) {
  static_assert(sizeof(Value) % sizeof(uint64_t) == 0);
  return {reinterpret_cast<uint64_t*>(values.data()), values.size_bytes() / sizeof(uint64_t)};
}

// A checksum of numbers and their order. Four sums side by side, because each step of one waits for
// the step before.
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

uint64_t SumOf(std::span<const uint64_t> numbers) {
  Sum sum;
  sum.Add(numbers);
  return sum.Value();
}

class Writer {
 public:
  explicit Writer(platform::File& file) : file_(file) {}

  void Put(std::span<const uint64_t> numbers) {
    sum_.Add(numbers);
    const auto* bytes = reinterpret_cast<const char*>(numbers.data());
    isWhole_ = isWhole_ && file_.Write({bytes, numbers.size_bytes()});
  }
  void Put(uint64_t number) { Put({&number, 1}); }
  void PutEntries(const core::NumberList& list) {
    std::vector<Entry> entries;
    for (size_t block = 0; block < list.Blocks(); ++block) {
      const std::span<const uint64_t> numbers = list.Block(block);
      entries.push_back({numbers.size(), list.Greatest(block), SumOf(numbers)});
    }
    Put(entries.size());
    Put(WordsOf(std::span(entries)));
  }
  // A number for each character of a text.
  void PutTexts(std::span<const std::u16string> texts) {
    Put(texts.size());
    for (const std::u16string& text : texts) {
      Put(text.size());
      Put(std::vector<uint64_t>(text.begin(), text.end()));
    }
  }
  void PutSum() { Put(sum_.Value()); }
  void PutBlocks(const core::NumberList& list) {
    for (size_t block = 0; block < list.Blocks(); ++block) Put(list.Block(block));
  }
  bool IsWhole() const { return isWhole_; }

 private:
  platform::File& file_;
  Sum sum_;
  bool isWhole_ = true;
};

bool ReadAll(platform::File& file, std::span<uint64_t> numbers) {
  auto* to = reinterpret_cast<char*>(numbers.data());
  size_t left = numbers.size_bytes();
  while (left > 0) {
    const int64_t read = file.Read(to, left);
    if (read <= 0) return false;
    to += read;
    left -= static_cast<size_t>(read);
  }
  return true;
}

class Reader {
 public:
  explicit Reader(platform::File& file) : file_(file) {}

  bool Take(std::span<uint64_t> numbers) {
    if (!ReadAll(file_, numbers)) return false;
    sum_.Add(numbers);
    length_ += numbers.size_bytes();
    return true;
  }
  bool Take(uint64_t& number) { return Take({&number, 1}); }
  // Of a list of `count` numbers. Takes no more memory than the file has bytes, whatever it says,
  // and stops at the first of the zeros that it may be made of.
  bool TakeEntries(uint64_t count, std::vector<Entry>& entries) {
    constexpr uint64_t kAtOnce = 4'096;
    uint64_t blocks = 0;
    if (!Take(blocks)) return false;
    while (entries.size() < blocks) {
      const size_t taken = entries.size();
      entries.resize(taken + std::min(kAtOnce, blocks - taken));
      if (!Take(WordsOf(std::span(entries).subspan(taken)))) return false;
      for (size_t i = taken; i < entries.size(); ++i) {
        const uint64_t most = std::min<uint64_t>(count, core::NumberList::kBlockSize);
        if (entries[i].count == 0 || entries[i].count > most) return false;
        count -= entries[i].count;
      }
    }
    return count == 0;
  }
  // Of a list of `rows` numbers. More than twice as many texts are mostly those of removed rows,
  // which only reading all rows gets rid of.
  bool TakeTexts(uint64_t rows, std::vector<std::u16string>& texts) {
    uint64_t count = 0, length = 0;
    if (!Take(count) || count / 2 > rows) return false;
    while (texts.size() < count) {
      if (!Take(length) || length > kLongestOdd) return false;
      std::vector<uint64_t> characters(static_cast<size_t>(length));
      if (!Take(characters)) return false;
      texts.emplace_back(characters.begin(), characters.end());
    }
    return true;
  }
  bool TakeSum() {
    const uint64_t expected = sum_.Value();
    uint64_t found = 0;
    return Take(found) && found == expected;
  }
  uint64_t Length() const { return length_; }  // bytes taken

 private:
  platform::File& file_;
  Sum sum_;
  uint64_t length_ = 0;
};

class BlocksOfFile : public KeptBlocks {
 public:
  BlocksOfFile(std::unique_ptr<platform::File> file, uint64_t begin)
      : file_(std::move(file)), end_(begin) {}

  // The block after those that were added; its name.
  size_t Add(const Entry& entry) {
    blocks_.push_back({entry, end_});
    end_ += entry.count * sizeof(uint64_t);
    return blocks_.size() - 1;
  }

  void Read(size_t name, std::span<uint64_t> numbers) override {
    const auto& [entry, begin] = blocks_[name];
    const bool isWhole = file_->Seek(begin) && ReadAll(*file_, numbers) &&
                         std::ranges::max(numbers) == entry.greatest && SumOf(numbers) == entry.sum;
    if (isWhole) return;
    hasFailed_ = true;
    std::ranges::fill(numbers, 0);
  }

 private:
  struct Block {
    Entry entry;
    uint64_t begin;  // bytes from the beginning of the file
  };

  std::unique_ptr<platform::File> file_;
  uint64_t end_;
  std::vector<Block> blocks_;
};

core::NumberList ListOf(const std::vector<Entry>& entries,
                        const std::shared_ptr<BlocksOfFile>& blocks) {
  core::NumberList list;
  for (const Entry& entry : entries) {
    list.AppendUnread(blocks, blocks->Add(entry), static_cast<size_t>(entry.count), entry.greatest);
  }
  return list;
}

struct Directory {
  std::array<std::vector<Entry>, 4> entries;       // ids, starts, ends, row ids
  std::array<std::vector<std::u16string>, 3> odd;  // texts of the first three
};

bool HasItsTexts(const std::vector<Entry>& entries, size_t texts) {
  return std::ranges::all_of(
      entries, [&](const Entry& entry) { return entry.greatest < core::kOddText + texts; });
}

bool Take(Reader& reader, const FileMark& mark, Directory& directory) {
  std::array<uint64_t, sizeof(Head) / 8> words;
  if (!reader.Take(words)) return false;
  const auto head = std::bit_cast<Head>(words);
  if (head.form != kForm || head.mark != mark) return false;
  for (auto& entries : directory.entries) {
    if (!reader.TakeEntries(head.count, entries)) return false;
  }
  for (auto& texts : directory.odd) {
    if (!reader.TakeTexts(head.count, texts)) return false;
  }
  if (!reader.TakeSum()) return false;
  return std::ranges::equal(directory.odd, std::span(directory.entries).first<3>(),
                            [](const auto& texts, const std::vector<Entry>& entries) {
                              return HasItsTexts(entries, texts.size());
                            });
}

bool Write(platform::File& file, const FileMark& mark, const IndexRows& rows) {
  const std::array lists{&rows.ids.Packed(), &rows.starts.Packed(), &rows.ends.Packed(),
                         &rows.rowIds};
  Writer writer(file);
  const Head head{kForm, mark, rows.rowIds.Count()};
  writer.Put(std::bit_cast<std::array<uint64_t, sizeof(Head) / 8>>(head));
  for (const core::NumberList* list : lists) writer.PutEntries(*list);
  for (const core::TextList* list : {&rows.ids, &rows.starts, &rows.ends}) {
    writer.PutTexts(list->Odd());
  }
  writer.PutSum();
  for (const core::NumberList* list : lists) writer.PutBlocks(*list);
  return writer.IsWhole();
}

}  // namespace

size_t IndexRows::ReadAhead(size_t most) const {
  size_t read = 0;
  for (const core::NumberList* list : {&ids.Packed(), &starts.Packed(), &ends.Packed(), &rowIds}) {
    read += list->ReadAhead(most - read);
  }
  return read;
}

std::optional<KeptIndex> OpenKeptIndex(std::u16string_view path, const FileMark& mark) {
  auto file = platform::files().OpenForReading(NameOf(path));
  if (!file) return {};
  Reader reader(*file);
  Directory directory;
  if (!Take(reader, mark, directory)) return {};
  const auto blocks = std::make_shared<BlocksOfFile>(std::move(file), reader.Length());
  KeptIndex kept{{}, blocks};
  size_t next = 0;
  for (core::TextList* list : {&kept.rows.ids, &kept.rows.starts, &kept.rows.ends}) {
    *list = core::TextList(ListOf(directory.entries[next], blocks), std::move(directory.odd[next]));
    ++next;
  }
  kept.rows.rowIds = ListOf(directory.entries.back(), blocks);
  return kept;
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
