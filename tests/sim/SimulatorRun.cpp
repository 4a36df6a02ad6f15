#include "SimulatorRun.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

constexpr unsigned kMostSeconds = 60;

fs::path MakeFolder() {
  std::string pattern = (fs::temp_directory_path() / "vyra-sim-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for a test");
  return pattern;
}

// In the child: becomes the program, or ends.
[[noreturn]] void Become(const std::vector<std::string>& arguments, const fs::path& files) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  const int output = open((files / "output").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  const int error = open((files / "error").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(output, STDOUT_FILENO);
  dup2(error, STDERR_FILENO);
  setenv("XDG_STATE_HOME", files.c_str(), 1);
  const rlimit noCore = {0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  alarm(kMostSeconds);
  execv(pointers.front(), pointers.data());
  _exit(127);
}

}  // namespace

SimulatorRun RunSimulator(std::vector<std::string> arguments) {
  const fs::path files = MakeFolder();
  if (!arguments.empty() && arguments.front() == "run")
    arguments.insert(arguments.end(), {"--log", files / "log", "--report", files / "report"});
  arguments.insert(arguments.begin(), VYRA_SIM_PROGRAM);
  const pid_t child = fork();
  if (child == 0) Become(arguments, files);
  int status = 0;
  waitpid(child, &status, 0);

  SimulatorRun run;
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  run.output = ReadFile(files / "output");
  run.error = ReadFile(files / "error");
  run.log = ReadFile(files / "log");
  run.report = nlohmann::json::parse(ReadFile(files / "report"), nullptr, false);
  if (run.report.is_discarded()) run.report = nullptr;
  fs::remove_all(files);
  return run;
}

std::string ReadFile(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

void ExpectSchemaHolds(const nlohmann::json& schema, const nlohmann::json& value) {
  const fs::path files = MakeFolder();
  std::ofstream(files / "schema") << schema.dump();
  std::ofstream(files / "value") << value.dump();
  // Debian's own, as another Python may stand first in the path and not have it.
  const std::string command = "/usr/bin/python3 /usr/bin/jsonschema -i " + (files / "value").string() + " " +
                              (files / "schema").string() + " 2> " + (files / "errors").string();
  EXPECT_EQ(std::system(command.c_str()), 0) << ReadFile(files / "errors");
  fs::remove_all(files);
}

SimulatorFolder::SimulatorFolder() : root(MakeFolder()) {
  fs::create_directories(root / "Resources/plugins");
}

SimulatorFolder::~SimulatorFolder() { fs::remove_all(root); }

std::string SimulatorFolder::Path(const std::string& place) const { return (root / place).string(); }

std::string SimulatorFolder::Install(const std::string& module, const std::string& place) const {
  const fs::path target = Plugins(place);
  fs::create_directories(target.parent_path());
  fs::copy_file(fs::path(VYRA_SIM_TEST_MODULES) / (module + ".vyp"), target);
  return target.string();
}

std::string SimulatorFolder::Bytes(const std::string& module) {
  return ReadFile(fs::path(VYRA_SIM_TEST_MODULES) / (module + ".vyp"));
}

std::string SimulatorFolder::Write(const std::string& text, const std::string& place) const {
  const fs::path target = Plugins(place);
  fs::create_directories(target.parent_path());
  std::ofstream(target) << text;
  return target.string();
}

SimulatorRun SimulatorFolder::Fly(int frames, const std::vector<std::string>& arguments) const {
  std::vector<std::string> all{"run",    "--system", root.string(), "--frames", std::to_string(frames),
                               "--rate", "60"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunSimulator(std::move(all));
}

SimulatorRun SimulatorFolder::FlyFile(int frames, const nlohmann::json& flight,
                                      const std::vector<std::string>& arguments) const {
  const std::string file = Path("flight.json");
  std::ofstream(file) << flight.dump(2);
  std::vector<std::string> all{"--flight", file};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return Fly(frames, all);
}
