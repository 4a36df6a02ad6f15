// Plugins' windows from the front, and their hot keys, which can be bound to other keys.
#include <fmt/format.h>
#include <imgui.h>

#include <nlohmann/json.hpp>
#include <string>

#include "VYRAPlugin.h"
#include "host/HotKeys.h"
#include "host/InputServices.h"
#include "host/Inventory.h"
#include "host/PluginList.h"
#include "window/Ask.h"
#include "window/KeyCapture.h"
#include "window/Panel.h"
#include "window/Search.h"
#include "window/WidgetPlaces.h"
#include "window/Widgets.h"

namespace sim {
namespace {

constexpr const char* kPanel = "Windows and keys";
constexpr ImGuiTableFlags kTable =
    ImGuiTableFlags_RowBg | ImGuiTableFlags_Resizable | ImGuiTableFlags_BordersInnerV;

std::string gProblem;
VYRAHotKeyID gAwaitsKey = nullptr;  // while a key is captured for it

void BeginColumns(std::initializer_list<const char*> names) {
  for (const char* const name : names) ImGui::TableSetupColumn(name);
  ImGui::TableHeadersRow();
}

// ---- Windows ----------------------------------------------------------------------------------------------

void DrawWindow(const VYRAWindowInfo& window) {
  ImGui::TableNextRow();
  TextCell(OwnerOf(window.plugin));
  TextCell(fmt::format("{}, {} to {}, {}", window.left, window.bottom, window.right, window.top));
  TextCell(window.isShown != 0 ? "shown" : "hidden");
  TextCell(window.hasKeyboardFocus != 0 ? "has focus" : "");
  TextCell(window.holdsMouse != 0 ? "holds mouse" : "");
}

void DrawWindows() {
  if (!ImGui::CollapsingHeader("Windows, the front-most first", ImGuiTreeNodeFlags_DefaultOpen)) return;
  if (!ImGui::BeginTable("windows", 5, kTable)) return;
  BeginColumns({"plugin", "left, bottom to right, top", "", "keyboard", "mouse"});
  for (const VYRAWindowInfo& window : PluginWindows()) DrawWindow(window);
  ImGui::EndTable();
}

// ---- Hot keys ---------------------------------------------------------------------------------------------

void Bind(const HotKeyName& name, const NamedKey& key, int flags) {
  nlohmann::json bind = {{"of", name.signature}, {"to", key.name}};
  if (!name.description.empty()) bind["description"] = name.description;
  if (name.number != 1) bind["number"] = name.number;
  for (const std::string_view modifier : ModifierNames())
    if ((flags & ModifierFlags({std::string(modifier)})) != 0) bind["modifiers"].push_back(modifier);
  Ask({{"bindHotKey", bind}}, gProblem);
}

void AwaitKey(const HotKeyInfo& hotKey) {
  gAwaitsKey = hotKey.hotKey;
  CaptureKey([name = NameOf(hotKey)](const NamedKey& key, int flags) { Bind(name, key, flags); });
}

void DrawHotKey(const HotKeyInfo& hotKey) {
  const bool isAwaiting = gAwaitsKey == hotKey.hotKey && IsCapturingKey();
  ImGui::PushID(hotKey.hotKey);
  ImGui::TableNextRow();
  TextCell(isAwaiting ? "press a key" : CombinationText(hotKey.virtualKey, hotKey.flags));
  TextCell(hotKey.description);
  TextCell(OwnerOf(hotKey.plugin));
  TextCell(VYRAIsPluginEnabled(hotKey.plugin) != 0 ? "enabled" : "disabled");
  ImGui::TableNextColumn();
  if (ImGui::SmallButton(isAwaiting ? "Cancel" : "Rebind")) {
    if (isAwaiting)
      EndKeyCapture();
    else
      AwaitKey(hotKey);
  }
  MarkWidget(kPanel, fmt::format("rebind {}: {}", OwnerOf(hotKey.plugin), hotKey.description));
  ImGui::PopID();
}

void DrawHotKeys() {
  if (!ImGui::CollapsingHeader("Hot keys of plugins", ImGuiTreeNodeFlags_DefaultOpen)) return;
  if (!ImGui::BeginTable("hot keys", 5, kTable)) return;
  BeginColumns({"key", "description", "plugin", "", " "});
  for (const HotKeyInfo& hotKey : ListHotKeys()) DrawHotKey(hotKey);
  ImGui::EndTable();
}

void DrawBindings() {
  if (!ImGui::CollapsingHeader("Keys of the simulator, where no plugin takes them")) return;
  if (!ImGui::BeginTable("bindings", 2, kTable)) return;
  BeginColumns({"key", "command"});
  for (const Binding& binding : KeyBindings()) {
    ImGui::TableNextRow();
    TextCell(binding.keyName);
    TextCell(binding.command);
  }
  ImGui::EndTable();
}

void Draw() {
  DrawProblem(gProblem);
  DrawWindows();
  DrawHotKeys();
  DrawBindings();
}

void SetShown(bool isShown) {
  if (!isShown) EndKeyCapture();
}

}  // namespace

const Panel kWindowsPanel{.name = kPanel, .key = 4, .draw = Draw, .setShown = SetShown};

}  // namespace sim
