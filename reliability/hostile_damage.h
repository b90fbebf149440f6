// What may have become of the files that the program reads.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace reliability {

struct Damage {
  std::string name;
  std::function<void(const std::filesystem::path& folder)> make;
  bool isForeign = false;    // the schema isn't ours: never written to
  bool isLarge = false;      // for runs by hand
  bool mendsBeside = false;  // the engine clears away what is no journal of the file
};

// A diary of some hundred Actions, with long memos, positions, extended items and a running
// recorder, its settings, and an export of each form, in the empty `folder`.
void MakeDiary(const std::filesystem::path& folder);

// Bytes of the diary's file: those of each page's head and of the cell pointers, some others, and
// cuts.
std::vector<Damage> ByteDamages(const std::string& diary, unsigned seed);
// What a statement makes of the diary.
std::vector<Damage> SqlDamages();
std::vector<Damage> SettingsDamages(const std::string& settings);
// `folder` holds the good files.
std::vector<Damage> ImportDamages(const std::filesystem::path& folder, unsigned seed);

std::string BytesOf(const std::filesystem::path& path);
void PutBytes(const std::filesystem::path& path, std::string_view bytes);

}  // namespace reliability
