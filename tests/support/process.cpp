#include "support/process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>
#include <utility>

namespace testing_support {
namespace {

bool WaitFor(std::chrono::seconds limit, const std::function<bool()>& done) {
  const auto giveUp = std::chrono::steady_clock::now() + limit;
  while (!done()) {
    if (std::chrono::steady_clock::now() > giveUp) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

std::string Quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

}  // namespace

Process::Process(const std::vector<std::string>& argv, const std::string& output) {
  std::vector<char*> words;
  for (const std::string& word : argv) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  pid_ = fork();
  if (pid_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(file, STDOUT_FILENO);
  dup2(file, STDERR_FILENO);
  execvp(words[0], words.data());
  _exit(127);
}

Process& Process::operator=(Process&& other) noexcept {
  Kill();
  pid_ = std::exchange(other.pid_, -1);
  status_ = other.status_;
  return *this;
}

bool Process::Running() {
  int status = 0;
  if (pid_ > 0 && waitpid(pid_, &status, WNOHANG) == pid_) {
    pid_ = -1;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  return pid_ > 0;
}

void Process::Signal(int signal) {
  if (pid_ > 0) kill(pid_, signal);
}

int Process::Wait() {
  return WaitFor(std::chrono::seconds(60), [this] { return !Running(); }) ? status_ : -1000;
}

void Process::Kill() {
  Signal(SIGKILL);
  Wait();
}

int InACopy(const std::function<int()>& run) {
  const pid_t copy = fork();
  if (copy == 0) _exit(run());
  int status = 0;
  if (waitpid(copy, &status, 0) != copy) return -1000;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string OutputOf(const std::vector<std::string>& argv) {
  std::string command;
  for (const std::string& word : argv) command += Quoted(word) + " ";
  FILE* pipe = popen((command + "2>/dev/null").c_str(), "r");
  std::string output;
  for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) output += static_cast<char>(c);
  return pclose(pipe) == 0 ? output : std::string();
}

bool WaitUntil(const std::function<bool()>& done) {
  return WaitFor(std::chrono::seconds(30), done);
}

}  // namespace testing_support
