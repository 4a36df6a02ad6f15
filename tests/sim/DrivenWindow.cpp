#include "DrivenWindow.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace fs = std::filesystem;

namespace {

using std::chrono::milliseconds;

constexpr std::chrono::seconds kPatience{60};
// Nothing has moved for so long that a few frames of a slow machine were drawn: a list that a search narrows,
// or a panel that opens, has come to rest.
constexpr milliseconds kAtRest{250};

fs::path MakeFolder() {
  std::string pattern = (fs::temp_directory_path() / "vyra-window-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for a test");
  return pattern;
}

// In the child.
[[noreturn]] void Become(const std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  execvp(pointers.front(), pointers.data());
  _exit(127);
}

void AwaitThat(const std::string& what, const std::function<bool()>& isSo) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!isSo()) {
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("waited in vain: " + what);
    std::this_thread::sleep_for(milliseconds(20));
  }
}

std::string MoveTo(int x, int y) { return "mousemove " + std::to_string(x) + " " + std::to_string(y); }

void Stop(pid_t child) {
  if (child == 0) return;
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
}

}  // namespace

DrivenWindow::DrivenWindow(const SimulatorFolder& folder, const std::vector<std::string>& arguments)
    : files(MakeFolder()) {
  StartDisplay();
  Fly(folder, arguments);
  MiddleOf("menu/View");
}

DrivenWindow::~DrivenWindow() {
  Stop(simulator);
  Stop(server);
  fs::remove_all(files);
}

// The server chooses a display that is free, and writes its number.
void DrivenWindow::StartDisplay() {
  const fs::path number = files / "display";
  server = fork();
  if (server == 0) {
    const int descriptor = open(number.c_str(), O_WRONLY | O_CREAT, 0600);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDERR_FILENO);
    Become({"Xvfb", "-displayfd", std::to_string(descriptor), "-screen", "0", "1280x800x24", "-nolisten",
            "tcp"});
  }
  AwaitThat("a display; Debian has Xvfb in its package xvfb",
            [&] { return ReadFile(number).ends_with('\n'); });
  display = ":" + ReadFile(number);
  display.pop_back();
}

// The window is as large as the display, so that its pixels are the display's.
void DrivenWindow::Fly(const SimulatorFolder& folder, std::vector<std::string> arguments) {
  std::vector<std::string> all{VYRA_SIM_PROGRAM, "run",      "--window",      "--system", folder.Path(""),
                               "--size",         "1280x800", "--state",       "",         "--log",
                               files / "log",    "--report", files / "report"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  simulator = fork();
  if (simulator != 0) return;
  dup2(open((files / "output").c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
  dup2(open((files / "error").c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
  setenv("DISPLAY", display.c_str(), 1);
  setenv("VYRA_SIM_WIDGETS", (files / "widgets").c_str(), 1);
  Become(all);
}

std::optional<DrivenWindow::Corner> DrivenWindow::Find(const std::string& widget) const {
  std::istringstream lines(ReadFile(files / "widgets"));
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  std::string name;
  while (lines >> left >> top >> right >> bottom && std::getline(lines >> std::ws, name))
    if (name == widget) return Corner{(left + right) / 2, (top + bottom) / 2};
  return std::nullopt;
}

DrivenWindow::Corner DrivenWindow::MiddleOf(const std::string& widget) const {
  std::optional<Corner> middle;
  auto since = std::chrono::steady_clock::now();
  AwaitThat(widget, [&] {
    const std::optional<Corner> now = Find(widget);
    if (now != std::exchange(middle, now)) since = std::chrono::steady_clock::now();
    return middle && std::chrono::steady_clock::now() - since > kAtRest;
  });
  return *middle;
}

std::string DrivenWindow::MoveTo(const std::string& widget) const {
  const Corner middle = MiddleOf(widget);
  return ::MoveTo(middle.x, middle.y);
}

void DrivenWindow::AwaitGone(const std::string& widget) const {
  AwaitThat(widget + " to be gone", [&] { return !Find(widget); });
}

void DrivenWindow::Do(const std::string& deeds) const {
  const std::string command = "DISPLAY=" + display + " xdotool " + deeds;
  if (std::system(command.c_str()) != 0) throw std::runtime_error("cannot do: " + command);
}

void DrivenWindow::MoveMouse(int x, int y) const { Do(::MoveTo(x, y)); }

void DrivenWindow::Press(const std::string& widget) const { Do(MoveTo(widget) + " mousedown 1"); }

void DrivenWindow::Release() const { Do("mouseup 1"); }

void DrivenWindow::Click(const std::string& widget) const { Do(MoveTo(widget) + " click 1"); }

void DrivenWindow::ClickAndGoOn(const std::string& widget, int x, int y) const {
  Do(MoveTo(widget) + " click 1 " + ::MoveTo(x, y) + " click 1");
}

void DrivenWindow::Enter(const std::string& widget, const std::string& text) const {
  Do(MoveTo(widget) + " click 1 key ctrl+a type --delay 1 '" + text + "'");
}

void DrivenWindow::Key(const std::string& key) const { Do("key " + key); }

void DrivenWindow::Await(const std::string& text) {
  AwaitThat(text + ", told:\n" + ReadFile(files / "output") + ReadFile(files / "error"), [&] {
    const std::size_t place = ReadFile(files / "output").find(text, seen);
    if (place == std::string::npos) return false;
    seen = place + text.size();
    return true;
  });
}

SimulatorRun DrivenWindow::Close() {
  kill(simulator, SIGINT);
  int status = 0;
  waitpid(simulator, &status, 0);
  simulator = 0;
  SimulatorRun run;
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  run.output = ReadFile(files / "output");
  run.error = ReadFile(files / "error");
  run.log = ReadFile(files / "log");
  run.report = nlohmann::json::parse(ReadFile(files / "report"), nullptr, false);
  return run;
}
