// Tries what is promised of files that are damaged or somebody else's: no crash, no wait of more
// than a second without a wait cursor, bounded memory, and no change by looking.
//
//   hostile [--every N] [--seed N] [--only WORD] [--without WORD]
//     every Nth damage, those whose names hold a word, those whose names don't
//   hostile --large [--only WORD] [--without WORD]
//     texts of 100 MB, two million Actions
//
// A program of its own, as it runs under the sanitizers, too. Exit status 1 after a finding, each
// of which is printed.
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>

#include "reliability/hostile_damage.h"
#include "reliability/hostile_look.h"

namespace {

using namespace reliability;
namespace fs = std::filesystem;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif
constexpr rlim_t kMostMemory = rlim_t{1} << 30;    // of addresses
constexpr rlim_t kMostForLarge = rlim_t{4} << 30;  // for a diary of 1 GB
constexpr long kMostKept = 200 << 10;              // KiB in memory, for a diary of ordinary size
constexpr double kLongestBareStep = kIsSanitized ? 5.0 : 1.0;

struct Ended {
  int signal = 0;
  long memory = 0;  // KiB, at most
};

struct Totals {
  long cases = 0, opened = 0, refused = 0, written = 0, findings = 0;
  long memory = 0;
  double slowest = 0, slowestBare = 0;
  std::string largest, slow, slowBare;
};

fs::path root;
Outcome* outcome;  // of the running child; shared
Totals totals;

void Finding(const Damage& damage, const std::string& what) {
  ++totals.findings;
  std::printf("FOUND %s: %s\n", damage.name.c_str(), what.c_str());
  std::fflush(stdout);
}

Ended InChild(const Damage& damage, const std::function<void()>& work) {
  new (outcome) Outcome;
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    const rlim_t seconds = damage.isLarge || kIsSanitized ? 300 : 5;
    const rlimit time{seconds, seconds};
    setrlimit(RLIMIT_CPU, &time);
    alarm(static_cast<unsigned>(10 * seconds));  // it waits, or the machine is busy
    const rlim_t most = damage.isLarge ? kMostForLarge : kMostMemory;
    const rlimit memory{most, most}, core{0, 0};
    if (!kIsSanitized) setrlimit(RLIMIT_AS, &memory);
    setrlimit(RLIMIT_CORE, &core);
    work();
    _exit(0);
  }
  int status = 0;
  rusage usage;
  wait4(child, &status, 0, &usage);
  const int sanitizers = WIFEXITED(status) && WEXITSTATUS(status) != 0 ? SIGABRT : 0;
  return {WIFSIGNALED(status) ? WTERMSIG(status) : sanitizers, usage.ru_maxrss};
}

// But for what is kept of a large diary's index, which a look may make.
std::map<std::string, std::string> FilesIn(const fs::path& folder, bool diaryAlone) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = fs::relative(entry.path(), folder).string();
    const bool isOther = name == "user.sdf-index" || (diaryAlone && name != "user.sdf");
    if (!entry.is_regular_file() || isOther) continue;
    files[name] = BytesOf(entry.path());
  }
  return files;
}

void Count(const Damage& damage, const Ended& ended) {
  if (ended.memory > totals.memory) {
    totals.memory = ended.memory;
    totals.largest = damage.name;
  }
  if (outcome->slowest > totals.slowest) {
    totals.slowest = outcome->slowest;
    totals.slow = damage.name + ", " + outcome->slowestStep.data();
  }
  if (outcome->slowestBare > totals.slowestBare) {
    totals.slowestBare = outcome->slowestBare;
    totals.slowBare = damage.name + ", " + outcome->slowestBareStep.data();
  }
}

// A refusal has a message, and so has a program that doesn't open its diary.
void Look(const Damage& damage, const fs::path& folder) {
  const auto before = FilesIn(folder, damage.mendsBeside);
  const Ended ended = InChild(damage, [&] { LookAtEverything(folder, *outcome); });
  Count(damage, ended);
  ++totals.cases;
  ++(outcome->opened ? totals.opened : totals.refused);
  if (ended.signal != 0) Finding(damage, "signal " + std::to_string(ended.signal));
  if (!outcome->opened && outcome->messages == 0) Finding(damage, "refused without a message");
  if (FilesIn(folder, damage.mendsBeside) != before) Finding(damage, "changed by a look");
  if (outcome->slowestBare > kLongestBareStep) {
    Finding(damage, std::string(outcome->slowestBareStep.data()) + " takes " +
                        std::to_string(outcome->slowestBare) + " s without a wait cursor");
  }
  if (!kIsSanitized && !damage.isLarge && ended.memory > kMostKept) {
    Finding(damage, "takes " + std::to_string(ended.memory >> 10) + " MiB");
  }
}

void TryToWrite(const Damage& damage, const fs::path& folder) {
  const std::string before = BytesOf(folder / "user.sdf");
  const Ended ended = InChild(damage, [&] { Write(folder, *outcome); });
  totals.written += outcome->wrote;
  if (ended.signal != 0) Finding(damage, "at a write signal " + std::to_string(ended.signal));
  if (outcome->finding[0] != '\0') Finding(damage, outcome->finding.data());
  if (!outcome->wrote && outcome->messages == 0) Finding(damage, "no write and no message");
  if (damage.isForeign && BytesOf(folder / "user.sdf") != before) {
    Finding(damage, "written to, though it isn't ours");
  }
}

void Try(const Damage& damage, const fs::path& good) {
  const fs::path folder = root / "damaged";
  fs::remove_all(folder);
  fs::copy(good, folder, fs::copy_options::recursive);
  damage.make(folder);
  Look(damage, folder);
  TryToWrite(damage, folder);
}

// Every Nth of them.
void Take(std::vector<Damage> from, size_t every, std::vector<Damage>& damages) {
  for (size_t n = 0; n < from.size(); n += every) damages.push_back(std::move(from[n]));
}

const char* Option(int argc, char** argv, const char* name, const char* otherwise) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], name) == 0) return i + 1 < argc ? argv[i + 1] : "";
  }
  return otherwise;
}

void Report() {
  std::printf("%ld damages: %ld opened, %ld refused, %ld written to; %ld findings\n", totals.cases,
              totals.opened, totals.refused, totals.written, totals.findings);
  std::printf("slowest step %.2f s (%s), without a wait cursor %.2f s (%s)\n", totals.slowest,
              totals.slow.c_str(), totals.slowestBare, totals.slowBare.c_str());
  std::printf("most memory %ld MiB (%s)\n", totals.memory >> 10, totals.largest.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  const auto every =
      static_cast<size_t>(std::max(1L, std::atol(Option(argc, argv, "--every", "1"))));
  const auto seed = static_cast<unsigned>(std::atol(Option(argc, argv, "--seed", "1")));
  const bool large = Option(argc, argv, "--large", nullptr) != nullptr;
  const std::string only = Option(argc, argv, "--only", "");
  const std::string without = Option(argc, argv, "--without", "\n");  // which no name holds
  char folder[] = "/dev/shm/morvenly-hostile-XXXXXX";
  if (mkdtemp(folder) == nullptr) return 2;
  root = folder;
  outcome = static_cast<Outcome*>(
      mmap(nullptr, sizeof(Outcome), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  const fs::path good = root / "good";
  fs::create_directory(good);
  MakeDiary(good);
  const std::string diary = BytesOf(good / "user.sdf");

  std::vector<Damage> damages;
  Take(ByteDamages(diary, seed), every, damages);
  Take(SqlDamages(), large ? 1 : every, damages);
  Take(SettingsDamages(BytesOf(good / "Morvenly.dat")), every, damages);
  Take(ImportDamages(good, seed), every, damages);
  const fs::path plain = root / "plain";
  fs::create_directory(plain);
  fs::copy(good / "user.sdf", plain / "user.sdf");
  fs::copy(good / "Morvenly.dat", plain / "Morvenly.dat");
  for (const Damage& damage : damages) {
    const bool isAsked = damage.name.find(only) != std::string::npos &&
                         damage.name.find(without) == std::string::npos;
    if (isAsked && damage.isLarge == large) Try(damage, plain);
  }
  fs::remove_all(root);
  Report();
  return totals.findings == 0 ? 0 : 1;
}
