#include "reliability/hostile_damage.h"

#include <fstream>
#include <iterator>
#include <random>
#include <utility>

#include "core/settings.h"
#include "core/text.h"
#include "exchange/action_lines.h"
#include "exchange/export.h"
#include "platform/device_paths.h"
#include "platform/utf.h"
#include "recorder/recording.h"
#include "reliability/diary_week.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/write_burst.h"

namespace reliability {
namespace {

namespace fs = std::filesystem;
using Text = std::u16string;

constexpr int kActions = 600;
constexpr size_t kFileHeader = 100;

size_t Number(const std::string& bytes, size_t at) {
  return size_t{static_cast<unsigned char>(bytes[at])} << 8 |
         static_cast<unsigned char>(bytes[at + 1]);
}

store::Action MakeAction(int n) {
  store::Action action;
  const Text day = u"2010/0" + core::ZeroPadded(5 + n / 300, 1) + u"/" +
                   core::ZeroPadded(1 + n / 10 % 30, 2) + u" ";
  action[store::kActId] = u"ID20100501" + core::ZeroPadded(n, 8);
  action[store::kStaDateTime] = day + core::ZeroPadded(9 + n % 10, 2) + u":00:00";
  action[store::kEndDateTime] = day + core::ZeroPadded(9 + n % 10, 2) + u":45:00";
  action[store::kPlace] = n % 3 == 0 ? u"会社" : u"自宅→駅";
  action[store::kCategory1] = u"仕事";
  action[store::kMemo] = Text(n % 120 == 7 ? 2000 : n % 50, u'長');
  if (n % 4 == 0) {
    action[store::kLatitude] = u"35.681";
    action[store::kLongitude] = u"139.767";
  }
  if (n % 5 == 0) action[store::kExtItems] = u"Cost:int:1200;Note:str:\"昼食\";";
  return action;
}

Damage WithBytes(std::string name, std::string bytes, const char* file = "user.sdf") {
  return {std::move(name), [bytes = std::move(bytes), file](const fs::path& folder) {
            PutBytes(folder / file, bytes);
          }};
}

// Made when it's asked for, so that the children's memory is their own.
Damage WithMany(std::string name, size_t count, char byte, const char* file) {
  return {std::move(name), [count, byte, file](const fs::path& folder) {
            PutBytes(folder / file, std::string(count, byte));
          }};
}

// The byte at `at`, by each of the masks.
void AddFlips(const std::string& diary, size_t at, std::initializer_list<int> masks,
              std::vector<Damage>& damages) {
  for (const int mask : masks) {
    damages.push_back({"byte " + std::to_string(at) + " xor " + std::to_string(mask),
                       [&diary, at, mask](const fs::path& folder) {
                         std::string bytes = diary;
                         bytes[at] = static_cast<char>(bytes[at] ^ mask);
                         PutBytes(folder / "user.sdf", bytes);
                       }});
  }
}

void Scribble(std::string& bytes, std::mt19937& random) {
  for (auto left = 1 + random() % 8; left > 0; --left) {
    bytes[random() % bytes.size()] = static_cast<char>(random());
  }
}

}  // namespace

std::string BytesOf(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void PutBytes(const fs::path& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), std::ssize(bytes));
}

void MakeDiary(const fs::path& folder) {
  Host host(folder);
  Program program(folder, host);
  program.Start();
  program.App().AutoBackup = 0;
  {
    const store::WriteBurst burst(*store::dbSession().Session);
    for (int n = 0; n < kActions; ++n) {
      store::Action action = MakeAction(n);
      store::dbSession().UserTable->Insert(action);
    }
  }
  store::ReloadActionIndex(program.App());
  for (int hour = 20; hour < 23; ++hour) {
    host.now.hour = hour;
    recorder::CRecorder recorder(program.App());
    recorder.Open();
    recorder.fields.place = u"道" + core::ZeroPadded(hour, 1);
    recorder.OnBtnRec();
    recorder.Close();
  }
  core::SaveSettings(program.App());
  for (int version = exchange::kVer1; version <= exchange::kVer3Utf8; ++version) {
    const Text name = u"in" + core::ZeroPadded(version, 1) + u".csv";
    exchange::RunExport(program.App(), program.Path(name), version);
  }
}

std::vector<Damage> ByteDamages(const std::string& diary, unsigned seed) {
  std::vector<Damage> damages;
  const size_t pageSize = Number(diary, 16);
  for (size_t at = 0; at < kFileHeader; ++at) {
    AddFlips(diary, at, {0xff, 1, 2, 4, 8, 16, 32, 64, 128}, damages);
  }
  for (size_t page = 0; page < diary.size(); page += pageSize) {
    const size_t head = page == 0 ? kFileHeader : page;
    for (size_t at = head; at < head + 12; ++at) {
      AddFlips(diary, at, {0xff, 1, 2, 4, 8, 16, 32, 64, 128}, damages);
    }
    const int kind = diary[head];
    const bool isTree = kind == 2 || kind == 5 || kind == 10 || kind == 13;
    const size_t cells = isTree ? Number(diary, head + 3) : 0;
    for (size_t at = head + 12; at < head + 12 + 2 * cells && at < page + pageSize; ++at) {
      AddFlips(diary, at, {0xff, 1}, damages);
    }
  }
  for (size_t size = 0; size < diary.size(); size += 512) {
    damages.push_back({"cut at " + std::to_string(size), [&diary, size](const fs::path& folder) {
                         PutBytes(folder / "user.sdf", std::string_view(diary).substr(0, size));
                       }});
  }
  for (unsigned n = 0; n < 2000; ++n) {
    damages.push_back(
        {"scribble " + std::to_string(seed + n), [&diary, n, seed](const auto& folder) {
           std::mt19937 random(seed + n);
           std::string bytes = diary;
           Scribble(bytes, random);
           PutBytes(folder / "user.sdf", bytes);
         }});
  }
  return damages;
}

// Each key's line gets every value; the others stay.
std::vector<Damage> SettingsDamages(const std::string& settings) {
  static const std::pair<const char*, std::string> kValues[] = {
      {"empty", ""},
      {"-1", "-1"},
      {"0", "0"},
      {"INT_MAX", "2147483647"},
      {"INT_MIN", "-2147483648"},
      {"beyond", std::string(30, '9')},
      {"long", std::string(65536, 'x')},
      {"long digits", std::string(65536, '7')},
      {"NUL", std::string("1\0002", 3)},
      {"half a character", "1\x81"},
      {"bytes of no code page", "\xff\xfe\xa0\xfd"},
      {"long Japanese", [] {
         std::string text;
         for (int n = 0; n < 20000; ++n) text += "\x82\xa0";
         return text;
       }()}};
  std::vector<Damage> damages;
  for (size_t begin = settings.find("\r\n") + 2; settings[begin] != '\r';) {
    const size_t end = settings.find("\r\n", begin);
    const std::string key = settings.substr(begin, settings.find(':', begin) - begin);
    const auto with = [&](const std::string& line) {
      return settings.substr(0, begin) + line + settings.substr(end + (line.empty() ? 2 : 0));
    };
    damages.push_back(WithBytes(key + " missing", with(""), "Morvenly.dat"));
    for (const auto& [name, value] : kValues) {
      damages.push_back(WithBytes(key + " " + name, with(key + ":" + value), "Morvenly.dat"));
    }
    begin = end + 2;
  }
  std::string history;
  for (const char* section : {"[Place]", "[Memo]", "[Category1]", "[Category2]", "[Find]"}) {
    history += std::string(section) + "\r\n";
    for (int n = 0; n < 100000; ++n) history += std::to_string(n) + " \x82\xa0\xff\r\n";
    history += "\r\n";
  }
  damages.push_back(WithBytes("long histories", settings + history, "Morvenly.dat"));
  damages.push_back(WithMany("no settings", 1 << 20, '\0', "Morvenly.dat"));
  damages.push_back(WithMany("one line", 64 << 20, 'x', "Morvenly.dat"));
  return damages;
}

std::vector<Damage> ImportDamages(const fs::path& folder, unsigned seed) {
  std::vector<Damage> damages;
  for (const char* file : {"in1.csv", "in2.csv", "in3.csv", "in4.csv"}) {
    const std::string good = BytesOf(folder / file);
    const std::string head = good.substr(0, good.find('\n', good.size() / 20) + 1);
    for (unsigned n = 0; n < 250; ++n) {
      std::mt19937 random(seed + n);
      std::string bytes = head;
      Scribble(bytes, random);
      if (n % 5 == 0) bytes.resize(random() % bytes.size());
      damages.push_back(
          WithBytes(std::string(file) + " " + std::to_string(seed + n), std::move(bytes), file));
    }
    damages.push_back(WithMany(std::string(file) + " one line", 8 << 20, 'x', file));
    damages.push_back(WithMany(std::string(file) + " tabs", 8 << 20, '\t', file));
  }
  return damages;
}

}  // namespace reliability
