#include "Hands.h"

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <utility>

#include "SimulatorRun.h"

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds kPatience{60};

// A panel that opens takes its size from what it shows, and has it a frame later.
constexpr int kFramesAtRest = 3;

std::vector<std::string> MoveTo(int x, int y) { return {"mousemove", std::to_string(x), std::to_string(y)}; }

// The window's file of widgets is asked for by the environment.
const fs::path& Announced(const fs::path& widgets) {
  setenv("VYRA_SIM_WIDGETS", widgets.c_str(), 1);
  return widgets;
}

}  // namespace

Hands::Hands(const OwnDisplay& display, const fs::path& systemFolder,
             const std::vector<std::string>& arguments)
    : widgets(Announced(systemFolder / "widgets")), flight(display, systemFolder, arguments) {
  unsetenv("VYRA_SIM_WIDGETS");
  if (!flight.WaitForWindow()) throw std::runtime_error("no window");
  MiddleOf("menu/View");
}

Hands::Seen Hands::See(const std::string& widget) const {
  std::istringstream lines(ReadFile(widgets));
  Seen seen;
  std::string name;
  lines >> name >> seen.frame;
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  while (lines >> left >> top >> right >> bottom && std::getline(lines >> std::ws, name)) {
    if (name != widget) continue;
    seen.middle = Corner{(left + right) / 2, (top + bottom) / 2};
    break;
  }
  return seen;
}

void Hands::AwaitThat(const std::string& what, const std::function<bool()>& isSo) const {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!isSo()) {
    if (std::chrono::steady_clock::now() > end)
      throw std::runtime_error("waited in vain: " + what + "\n" + Output() + ReadFile(widgets));
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

Hands::Corner Hands::MiddleOf(const std::string& widget) const {
  std::optional<Corner> middle;
  int since = 0;
  AwaitThat(widget, [&] {
    const Seen now = See(widget);
    if (now.middle != std::exchange(middle, now.middle)) since = now.frame;
    return middle && now.frame >= since + kFramesAtRest;
  });
  return *middle;
}

std::vector<std::string> Hands::MoveTo(const std::string& widget) const {
  const Corner middle = MiddleOf(widget);
  return ::MoveTo(middle.x, middle.y);
}

void Hands::AwaitGone(const std::string& widget) const {
  AwaitThat(widget + " to be gone", [&] { return !See(widget).middle; });
}

void Hands::Do(std::vector<std::string> deeds, const std::vector<std::string>& more) const {
  deeds.insert(deeds.end(), more.begin(), more.end());
  flight.Act(deeds);
}

void Hands::MoveMouse(int x, int y) const { flight.Act(::MoveTo(x, y)); }

void Hands::Press(const std::string& widget) const { Do(MoveTo(widget), {"mousedown", "1"}); }

void Hands::Release() const { flight.Act("mouseup 1"); }

void Hands::Click(const std::string& widget) const { Do(MoveTo(widget), {"click", "1"}); }

void Hands::ClickAndGoOn(const std::string& widget, int x, int y) const {
  std::vector<std::string> more = ::MoveTo(x, y);
  more.insert(more.begin(), {"click", "1"});
  more.insert(more.end(), {"click", "1"});
  Do(MoveTo(widget), more);
}

void Hands::Enter(const std::string& widget, const std::string& text) const {
  Do(MoveTo(widget), {"click", "1", "key", "ctrl+a", "type", "--delay", "1", text});
  // A value becomes a field only when it was clicked.
  const std::string field = widget.substr(0, widget.find('/')) + "/field" +
                            widget.substr(std::min(widget.find(' '), widget.size()));
  AwaitThat(widget + " with " + text,
            [&] { return See(widget + ": " + text).middle || See(field + ": " + text).middle; });
}

void Hands::Key(const std::string& key) const { flight.Act("key " + key); }

void Hands::Await(const std::string& text) {
  if (!flight.WaitFor(text)) throw std::runtime_error("not told: " + text);
}

int Hands::Close() {
  flight.Close();
  return flight.End();
}
