#include "WindowedFlight.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "ShownWindow.h"

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds kPatience{30};

std::string TextOf(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

template <class Condition>
bool Wait(const Condition& condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

// In a child: becomes the program, or ends. It does not outlive the test.
[[noreturn]] void Become(const std::vector<std::string>& words) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  execvp(pointers.front(), pointers.data());
  _exit(127);
}

void Redirect(int descriptor, const fs::path& file) {
  const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(opened, descriptor);
}

int WaitForChild(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

// ---- Display --------------------------------------------------------------------------------------------

OwnDisplay::OwnDisplay(int itsWidth, int itsHeight) : width(itsWidth), height(itsHeight) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  server = fork();
  if (server == 0) {
    close(ends[0]);
    Redirect(STDOUT_FILENO, "/dev/null");
    Redirect(STDERR_FILENO, "/dev/null");
    Become({"Xvfb", "-displayfd", std::to_string(ends[1]), "-nolisten", "tcp", "-noreset", "-screen", "0",
            std::to_string(width) + "x" + std::to_string(height) + "x24"});
  }
  close(ends[1]);
  // It writes its number, and a line end behind it, once it takes connections.
  char character = '\0';
  while (read(ends[0], &character, 1) == 1 && character != '\n') name += character;
  close(ends[0]);
  if (character != '\n') throw std::runtime_error("Xvfb does not start. On Debian: apt-get install xvfb");
}

OwnDisplay::~OwnDisplay() {
  kill(server, SIGTERM);
  WaitForChild(server);
}

// ---- Flight ---------------------------------------------------------------------------------------------

WindowedFlight::WindowedFlight(const OwnDisplay& ofDisplay, const fs::path& systemFolder,
                               const std::vector<std::string>& arguments)
    : display(ofDisplay), files(systemFolder / "told") {
  fs::create_directories(files);
  std::vector<std::string> words{VYRA_SIM_PROGRAM,
                                 "run",
                                 "--window",
                                 "--system",
                                 systemFolder,
                                 "--size",
                                 std::to_string(display.Width()) + "x" + std::to_string(display.Height()),
                                 "--log",
                                 files / "log",
                                 "--report",
                                 files / "report",
                                 "--state",
                                 systemFolder / "state"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  fs::remove(files / "log");
  simulator = fork();
  if (simulator != 0) return;
  setenv("DISPLAY", display.Name().c_str(), 1);
  setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
  Redirect(STDOUT_FILENO, files / "output");
  Redirect(STDERR_FILENO, files / "error");
  Become(words);
}

WindowedFlight::~WindowedFlight() {
  if (simulator == 0) return;
  kill(simulator, SIGTERM);
  WaitForChild(simulator);
}

bool WindowedFlight::WaitFor(const std::string& text) {
  const auto find = [&](const std::string& told, std::size_t& seen) {
    const std::size_t place = told.find(text, std::min(seen, told.size()));
    if (place == std::string::npos) return false;
    seen = place + text.size();
    return true;
  };
  if (Wait([&] { return find(Output(), outputSeen) || find(Log(), logSeen); })) return true;
  ADD_FAILURE() << "not told: " << text << "\n" << Told();
  return false;
}

bool WindowedFlight::WaitForWindow() {
  if (!Wait([&] { return Window() != 0; })) {
    ADD_FAILURE() << "there is no window\n" << Told();
    return false;
  }
  Act("mousemove " + std::to_string(display.Width() / 2) + " " + std::to_string(display.Height() / 4) +
      " windowfocus " + std::to_string(Window()));
  return true;
}

void WindowedFlight::Act(const std::string& words) const {
  std::istringstream stream(words);
  std::vector<std::string> split;
  for (std::string word; stream >> word;) split.push_back(word);
  Act(split);
}

void WindowedFlight::Act(std::vector<std::string> words) const {
  words.insert(words.begin(), "xdotool");
  const pid_t child = fork();
  if (child == 0) {
    setenv("DISPLAY", display.Name().c_str(), 1);
    Become(words);
  }
  const int result = WaitForChild(child);
  EXPECT_EQ(result, 0) << (result == 127 ? "no xdotool. On Debian: apt-get install xdotool"
                                         : testing::PrintToString(words));
}

void WindowedFlight::Close() const { PressCloseButton(display.Name()); }

int WindowedFlight::End() {
  int status = 0;
  const bool hasEnded = Wait([&] { return waitpid(simulator, &status, WNOHANG) == simulator; });
  EXPECT_TRUE(hasEnded) << "the flight goes on\n" << Told();
  if (!hasEnded) return -1;
  simulator = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string WindowedFlight::Output() const { return TextOf(files / "output"); }

std::string WindowedFlight::Log() const { return TextOf(files / "log"); }

std::string WindowedFlight::Told() const {
  return Output() + "---- standard error\n" + TextOf(files / "error") + "---- log\n" + Log();
}

unsigned long WindowedFlight::Window() const { return FindShownWindow(display.Name()); }
