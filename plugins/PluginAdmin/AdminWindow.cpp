#include "AdminWindow.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "VYRAMenus.h"
#include "VYRAPlugin.h"
#include "VYRAUtilities.h"

namespace {

constexpr int kLeft = 400;
constexpr int kTop = 700;
constexpr int kWidth = 420;
constexpr int kRowHeight = 20;
constexpr int kMargin = 6;
constexpr int kStateColumn = 300;
constexpr int kFont = 0;
constexpr char kEscape = 0x1B;

// The simulator's flags of a keystroke.
constexpr int kShift = 1;
constexpr int kControl = 2;
constexpr int kAlt = 4;
constexpr int kReleased = 8;

VYRAWindowID gWindow = nullptr;
VYRAMenuID gMenu = nullptr;
VYRAHotKeyID gRebound = nullptr;  // takes the next key that is pressed; null for none

// What a row shows, and what a click on it does.
struct Row {
  enum Kind { kTitle, kPlugin, kReload, kHotKey } kind;
  std::string text;
  std::string state;
  VYRAPluginID plugin = VYRA_NO_PLUGIN;
  VYRAHotKeyID hotKey = nullptr;
};

Row PluginRow(VYRAPluginID plugin) {
  char name[VYRA_PLUGIN_INFO_SIZE] = "";
  VYRAGetPluginInfo(plugin, name, nullptr, nullptr, nullptr);
  return {Row::kPlugin, name, VYRAIsPluginEnabled(plugin) != 0 ? "enabled" : "disabled", plugin};
}

std::string KeyText(char key, int flags) {
  std::string text = VYRAGetVirtualKeyDescription(key);
  if ((flags & kAlt) != 0) text.insert(0, "alt+");
  if ((flags & kControl) != 0) text.insert(0, "control+");
  if ((flags & kShift) != 0) text.insert(0, "shift+");
  return text;
}

Row HotKeyRow(VYRAHotKeyID hotKey) {
  char key = 0;
  int flags = 0;
  char description[VYRA_HOT_KEY_DESCRIPTION_SIZE] = "";
  VYRAGetHotKeyInfo(hotKey, &key, &flags, description, nullptr);
  return {Row::kHotKey, description, hotKey == gRebound ? "press a key" : KeyText(key, flags), VYRA_NO_PLUGIN,
          hotKey};
}

// Made anew each time: plugins and hot keys come and go.
std::vector<Row> Rows() {
  std::vector<Row> rows{{Row::kTitle, "PLUGINS", ""}};
  for (int index = 0; index < VYRACountPlugins(); ++index) {
    const VYRAPluginID plugin = VYRAGetNthPlugin(index);
    if (plugin != VYRA_HOST_PLUGIN) rows.push_back(PluginRow(plugin));
  }
  rows.push_back({Row::kReload, "Reload all plugins", ""});
  rows.push_back({Row::kTitle, "HOT KEYS", ""});
  for (int index = 0; index < VYRACountHotKeys(); ++index) rows.push_back(HotKeyRow(VYRAGetNthHotKey(index)));
  return rows;
}

void Draw(VYRAWindowID window, void* /*refcon*/) {
  std::vector<Row> rows = Rows();
  int left = 0;
  int top = 0;
  VYRAGetWindowGeometry(window, &left, &top, nullptr, nullptr);
  const int bottom = top - kRowHeight * static_cast<int>(rows.size()) - kMargin;
  VYRASetWindowGeometry(window, left, top, left + kWidth, bottom);
  VYRADrawTranslucentDarkBox(left, top, left + kWidth, bottom);
  std::array<float, 3> white{1.0F, 1.0F, 1.0F};
  std::array<float, 3> yellow{1.0F, 0.9F, 0.4F};
  int y = top - kRowHeight + kMargin;
  for (Row& row : rows) {
    float* const colour = row.kind == Row::kTitle ? yellow.data() : white.data();
    VYRADrawString(colour, left + kMargin, y, row.text.data(), nullptr, kFont);
    VYRADrawString(colour, left + kStateColumn, y, row.state.data(), nullptr, kFont);
    y -= kRowHeight;
  }
}

// This plugin stays enabled: a person could not get it back.
void Toggle(VYRAPluginID plugin) {
  if (plugin == VYRAGetMyID()) return;
  if (VYRAIsPluginEnabled(plugin) != 0)
    VYRADisablePlugin(plugin);
  else if (VYRAEnablePlugin(plugin) == 0)
    VYRADebugString("PluginAdmin: a plugin refuses to be enabled\n");
}

void Act(const Row& row) {
  gRebound = row.hotKey;
  if (row.kind == Row::kPlugin) Toggle(row.plugin);
  if (row.kind == Row::kReload) VYRAReloadPlugins();  // at the end of the next pass
}

int Click(VYRAWindowID window, int /*x*/, int y, int mouseStatus, void* /*refcon*/) {
  if (mouseStatus != VYRA_MOUSE_DOWN) return 1;
  VYRABringWindowToFront(window);
  int top = 0;
  VYRAGetWindowGeometry(window, nullptr, &top, nullptr, nullptr);
  const auto index = static_cast<std::size_t>((top - y) / kRowHeight);
  const std::vector<Row> rows = Rows();
  if (index < rows.size()) Act(rows[index]);
  return 1;
}

// Sees keys before hot keys do, so that a hot key can be bound to one that is another's by now.
int SniffKey(char /*key*/, int flags, char virtualKey, void* /*refcon*/) {
  if (gRebound == nullptr || (flags & kReleased) != 0) return 1;
  if (virtualKey != kEscape) VYRASetHotKeyCombination(gRebound, virtualKey, flags);
  gRebound = nullptr;
  return 0;
}

void OnMenu(void* /*menuRef*/, void* /*itemRef*/) {
  const bool isShown = VYRAGetWindowIsVisible(gWindow) == 0;
  gRebound = nullptr;
  VYRASetWindowIsVisible(gWindow, isShown ? 1 : 0);
  if (isShown) VYRABringWindowToFront(gWindow);
  VYRACheckMenuItem(gMenu, 0, isShown ? VYRA_MENU_CHECKED : VYRA_MENU_UNCHECKED);
}

}  // namespace

void MakeAdminWindow() {
  gRebound = nullptr;
  VYRAWindowCreateParams params{};
  params.structSize = sizeof(params);
  params.left = kLeft;
  params.top = kTop;
  params.right = kLeft + kWidth;
  params.bottom = kTop - kRowHeight;
  params.draw = Draw;
  params.handleMouseClick = Click;
  gWindow = VYRACreateWindowEx(&params);
  VYRARegisterKeySniffer(SniffKey, 1, nullptr);
  gMenu = VYRACreateMenu("PluginAdmin", nullptr, 0, OnMenu, nullptr);
  VYRAAppendMenuItem(gMenu, "Show window", nullptr, 0);
  VYRACheckMenuItem(gMenu, 0, VYRA_MENU_UNCHECKED);
}
