// Tries what is promised of the diary.
//
//   reliability fail [--every N] [--from N] [--call NAME]   every Nth call fails once
//   reliability kill [--count N] [--seed N]                 the program is killed at N moments
//   reliability cut [--count N] [--seed N]                  the power goes at N moments
//
// Exit status 1 after a finding, each of which is printed.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "reliability/calls.h"
#include "reliability/diary_week.h"
#include "reliability/power_cut.h"
#include "store/session.h"

namespace {

using namespace reliability;
namespace fs = std::filesystem;
using Pictures = std::vector<Picture>;  // before each step, and after the last

fs::path root;              // of the diaries of this run
std::string importFile;     // its bytes
int* returned = nullptr;    // steps that the running child has finished; shared
const std::string* moment;  // what is tried just now
long findings = 0;

void Finding(const std::string& what) {
  std::printf("FOUND %s: %s\n", moment->c_str(), what.c_str());
  std::fflush(stdout);
}

fs::path FreshFolder(const char* name) {
  const fs::path folder = root / name;
  fs::remove_all(folder);
  fs::create_directory(folder);
  std::ofstream(folder / "in.csv", std::ios::binary) << importFile;
  return folder;
}

void Run(const Step& step, Program& program) {
  const Armed armed;
  step.run(program);
}

// Two Actions as an exchange file, under ids that nobody else is given.
std::string MakeImportFile() {
  const fs::path folder = FreshFolder("import");
  Host host(folder);
  Program program(folder, host);
  for (const Step& step : Week(3).first(3)) step.run(program);
  Week(3)[kExport].run(program);
  std::ifstream file(folder / "out.csv", std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  for (size_t id; (id = bytes.find("ID2010")) != bytes.npos;) bytes.replace(id, 6, "ID2009");
  return bytes;
}

// A week in which nothing happens, counted.
Pictures LivePeacefully(unsigned variation) {
  const fs::path folder = FreshFolder("peace");
  Host host(folder);
  Program program(folder, host);
  calls() = {};
  Pictures pictures{program.Look()};
  for (const Step& step : Week(variation)) {
    Run(step, program);
    pictures.push_back(program.Look());
  }
  return pictures;
}

// The lines of `a` that `b` lacks.
std::string Missing(const char* word, const Picture& a, const Picture& b) {
  Picture missing;
  std::ranges::set_difference(a, b, std::inserter(missing, missing.end()));
  std::string text;
  for (const std::string& line : missing) {
    text += std::string("\n    ") + word + ": " +
            line.substr(0, std::min<size_t>(line.find('\n'), 120));
  }
  return text;
}

// What a killed command leaves; the next of its kind replaces it.
bool IsUnfinished(const std::string& line) {
  const std::string name = line.substr(0, line.find(' ', 5));
  return line.starts_with("file ") &&
         (name.find(".new") != name.npos || name.find(".restore") != name.npos ||
          name.find("$$Tmp") != name.npos);
}

bool IsExported(const std::string& line) {
  return line.starts_with("file out.csv");
}

// The recorder names an Action of its chain, and the running one, in commits of their own; one that
// is gone it passes over.
bool NamesOneOf(const Picture& actions, const std::string& line) {
  if (!line.starts_with("chain ") && !line.starts_with("running ")) return false;
  const size_t words = line.starts_with("chain ") ? line.find(' ', 6) : line.find(' ');
  const std::string named = line.substr(words + 1);
  return named == "gone" || actions.contains("Action " + named);
}

// What no step was about to change is there, and nothing that none of them has made; an export
// leaves what it wrote until it ended.
std::string Between(const Picture& before, const Picture& after, Picture found, bool killed) {
  Picture least, most;
  std::ranges::set_intersection(before, after, std::inserter(least, least.end()));
  std::ranges::set_union(before, after, std::inserter(most, most.end()));
  const std::string lost = Missing("lost", least, found);
  std::erase_if(found, [&](const auto& line) {
    const bool isPart = IsExported(line) && std::ranges::none_of(before, IsExported);
    return isPart || NamesOneOf(most, line) || (killed && IsUnfinished(line));
  });
  return lost + Missing("strange", found, most);
}

// How a child ended: its exit status, or 100 and the signal.
int InChild(const std::function<int()>& work) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    alarm(120);
    _exit(work());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? 100 + WTERMSIG(status) : WEXITSTATUS(status);
}

// Opens what an ended program has left after `steps` steps.
int Recover(const fs::path& folder, const Pictures& pictures, size_t steps) {
  calls() = {};
  Host host(folder);
  host.isNew = steps == 0;
  Program program(folder, host);
  if (!program.Start()) {
    Finding("doesn't start after step " + std::to_string(steps) +
            (host.messages.empty() ? "" : ": " + host.messages.back()));
    return 1;
  }
  const size_t next = std::min(steps + 1, pictures.size() - 1);
  const std::string wrong =
      Between(pictures[steps], pictures[next], program.Look(), /*killed=*/true);
  if (!wrong.empty()) Finding("after step " + std::to_string(steps) + wrong);
  const auto countActions = [&program] {
    return std::ranges::count_if(program.Look(),
                                 [](const auto& line) { return line.starts_with("Action "); });
  };
  const auto before = countActions();
  host.messages.clear();
  Week(1)[kNew].run(program);
  Week(1)[kFirstTap].run(program);
  const bool goesOn = countActions() == before + 2 && host.messages.empty();
  if (!goesOn) {
    Finding("can't be written to" + (host.messages.empty() ? "" : ": " + host.messages.front()));
  }
  return wrong.empty() && goesOn ? 0 : 1;
}

// ---- Every call fails once.

// Kept on purpose: the recorder has no way back over its several writes, so that a tap that failed
// half-way closes its Action once more, and its movement is noted twice.
bool IsRecorders(const Step& step) {
  return step.name.starts_with("recorder");
}

// Kept on purpose: what an import has added stays when it breaks off, and comes again with the
// next.
bool IsAdding(const Step& step) {
  return step.name == "import, add";
}

// After a failed step its user has been told, has lost nothing, and can do it again.
bool TryAgain(const Step& step, Program& program, const Pictures& pictures, size_t done) {
  Host& host = program.TheHost();
  std::string wrong;
  // Kept on purpose: failed writes of the settings and some of the recorder's go unreported.
  if (host.messages.empty() && step.name != "settings" && !IsRecorders(step)) {
    wrong = "nobody was told";
  }
  const std::string said = host.messages.empty() ? "" : "\n    " + host.messages.front();
  program.Start();
  wrong += Between(pictures[done], pictures[done + 1], program.Look(), /*killed=*/false);
  host.messages.clear();
  Run(step, program);
  if (!IsRecorders(step)) {
    const Picture now = program.Look();
    std::string different = Missing("lost at last", pictures[done + 1], now);
    if (!IsAdding(step)) different += Missing("strange at last", now, pictures[done + 1]);
    if (!different.empty()) wrong += "not done again" + different;
  } else if (!host.messages.empty()) {
    wrong += "not done again: " + host.messages.front();
  }
  if (!wrong.empty() && !host.messages.empty()) wrong += "\n    " + host.messages.front();
  if (!wrong.empty()) Finding(std::string(step.name) + ": " + wrong + said);
  return wrong.empty();
}

// How a life with a fault ended.
enum Lived { kWell, kBadly, kOtherwise };

Lived LiveWithAFault(const fs::path& folder, const Pictures& pictures, unsigned variation) {
  Host host(folder);
  Program program(folder, host);
  for (const Step& step : Week(variation)) {
    const auto done = static_cast<size_t>(*returned);
    host.isNew = done == 0;
    host.messages.clear();
    Run(step, program);
    if (program.Look() != pictures[done + 1]) {
      if (!calls().came || !TryAgain(step, program, pictures, done)) return kBadly;
      if (IsRecorders(step) || IsAdding(step)) return kOtherwise;
    }
    ++*returned;
  }
  return kWell;
}

long FailEvery(long every, long first, const std::string& only) {
  constexpr unsigned kVariation = 5;
  const Pictures pictures = LivePeacefully(kVariation);
  const auto counts = calls().counts;
  long runs = 0, ended = 0;
  for (size_t kind = 0; kind < kCallNames.size(); ++kind) {
    if (!only.empty() && kCallNames[kind] != only) continue;
    long tried = 0;
    for (long nth = first; nth < counts[kind]; nth += every, ++tried) {
      const std::string now = std::string(kCallNames[kind]) + " " + std::to_string(nth);
      moment = &now;
      const fs::path folder = FreshFolder("fault");
      *returned = 0;
      const int result = InChild([&] {
        calls() = {};
        calls().fate = Calls::Fate::kFail;
        calls().kind = static_cast<Call>(kind);
        calls().nth = nth;
        return LiveWithAFault(folder, pictures, kVariation);
      });
      // Without memory a program may end; it doesn't go on with half of what it wanted.
      const bool hasEnded = result == 100 + SIGABRT && static_cast<Call>(kind) == Call::kAllocate;
      ended += hasEnded;
      if (result > 100 && !hasEnded) Finding("signal " + std::to_string(result - 100));
      if (result == kOtherwise) continue;
      const int recovered =
          InChild([&] { return Recover(folder, pictures, static_cast<size_t>(*returned)); });
      findings += (result != kWell && !hasEnded) || recovered != 0;
    }
    std::printf("%s: %ld calls, %ld failed once each\n", std::string(kCallNames[kind]).c_str(),
                counts[kind], tried);
    runs += tried;
  }
  std::printf("%ld runs, %ld ended by want of memory, %ld findings\n", runs, ended, findings);
  return findings;
}

// ---- Every moment ends it.

long KillAt(long count, unsigned seed) {
  std::minstd_rand chance(seed);
  Pictures pictures;
  long changes = 0;
  for (long run = 0; run < count; ++run) {
    const auto variation = seed + static_cast<unsigned>(run / 50);
    if (run % 50 == 0) {
      pictures = LivePeacefully(variation);
      changes = calls().changes;
    }
    const long nth = static_cast<long>(chance()) % changes;
    const std::string now =
        "kill at change " + std::to_string(nth) + " of variation " + std::to_string(variation);
    moment = &now;
    const fs::path folder = FreshFolder("killed");
    *returned = 0;
    InChild([&] {
      calls() = {};
      calls().fate = Calls::Fate::kDie;
      calls().nth = nth;
      return LiveWithAFault(folder, pictures, variation);
    });
    findings +=
        InChild([&] { return Recover(folder, pictures, static_cast<size_t>(*returned)); }) != 0;
  }
  std::printf("%ld kills, %ld findings\n", count, findings);
  return findings;
}

// ---- The power goes.

long CutAt(long count, unsigned seed) {
  std::minstd_rand chance(seed);
  const long perWeek = std::min(count, 100L);
  for (long run = 0; run < count; run += perWeek) {
    const auto variation = seed + static_cast<unsigned>(run / perWeek);
    const Pictures pictures = LivePeacefully(variation);
    const fs::path folder = FreshFolder("cut");
    EventLog log(folder.string() + "/");
    *returned = 0;
    InChild([&] {
      calls() = {};
      SetEventLog(&log);
      Host host(folder);
      Program program(folder, host);
      for (const Step& step : Week(variation)) {
        Run(step, program);
        program.Look();
        log.Append({Event::kMark, static_cast<uint64_t>(++*returned), 0, {}, {}});
      }
      return 0;
    });
    long events = 0;
    log.Each([&](const Event&) { return ++events > 0; });
    for (long cut = run; cut < std::min(count, run + perWeek); ++cut) {
      const long at = static_cast<long>(chance()) % (events + 1);
      const std::string now = "cut after event " + std::to_string(at) + " of " +
                              std::to_string(events) + ", variation " + std::to_string(variation);
      moment = &now;
      const fs::path left = FreshFolder("left");
      const uint64_t mark = CutPower(log, at, chance, left);
      findings += InChild([&] { return Recover(left, pictures, mark); }) != 0;
    }
  }
  std::printf("%ld power cuts, %ld findings\n", count, findings);
  return findings;
}

const char* Option(int argc, char** argv, const char* name, const char* otherwise) {
  for (int i = 2; i + 1 < argc; ++i) {
    if (std::strcmp(argv[i], name) == 0) return argv[i + 1];
  }
  return otherwise;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  // In memory: what a kill leaves is the system's, and a power cut is played from a log.
  char folder[] = "/dev/shm/morvenly-reliability-XXXXXX";
  if (mkdtemp(folder) == nullptr) return 2;
  root = folder;
  returned = static_cast<int*>(
      mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  importFile = MakeImportFile();
  const long count = std::atol(Option(argc, argv, "--count", "1000"));
  const auto seed = static_cast<unsigned>(std::atol(Option(argc, argv, "--seed", "1")));
  long found = -1;
  if (mode == "fail") {
    found =
        FailEvery(std::max(1L, std::atol(Option(argc, argv, "--every", "1"))),
                  std::atol(Option(argc, argv, "--from", "0")), Option(argc, argv, "--call", ""));
  }
  if (mode == "kill") found = KillAt(count, seed);
  if (mode == "cut") found = CutAt(count, seed);
  fs::remove_all(root);
  if (found < 0) std::fprintf(stderr, "Usage: reliability fail|kill|cut [--every N] [--count N]\n");
  return found == 0 ? 0 : found < 0 ? 2 : 1;
}
