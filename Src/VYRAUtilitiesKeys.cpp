// Simulated keys and buttons, the names of keys, versions, and what else the host answers.
#include "VYRAUtilitiesKeys.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "VYRAAtEnd.h"
#include "VYRAHostServices.h"
#include "VYRAUtilities.h"

std::vector<int> gButtons;
std::vector<int> gRepeatedButtons;  // memory for the list that is handed to the host, kept between passes

namespace {

constexpr int kLibraryVersion = 210;

struct KeyName {
  unsigned char key;
  const char* name;
};

// clang-format off
constexpr KeyName kKeyNameTable[] = {
    {0x08, "Backspace"}, {0x09, "Tab"},     {0x0C, "Clear"},   {0x0D, "Return"},   {0x1B, "Escape"},
    {0x20, "Space"},     {0x21, "Page Up"}, {0x22, "Page Down"}, {0x23, "End"},    {0x24, "Home"},
    {0x25, "Left"},      {0x26, "Up"},      {0x27, "Right"},   {0x28, "Down"},     {0x29, "Select"},
    {0x2A, "Print"},     {0x2B, "Execute"}, {0x2C, "Snapshot"}, {0x2D, "Insert"},  {0x2E, "Delete"},
    {0x2F, "Help"},

    {0x30, "0"}, {0x31, "1"}, {0x32, "2"}, {0x33, "3"}, {0x34, "4"},
    {0x35, "5"}, {0x36, "6"}, {0x37, "7"}, {0x38, "8"}, {0x39, "9"},

    {0x41, "A"}, {0x42, "B"}, {0x43, "C"}, {0x44, "D"}, {0x45, "E"}, {0x46, "F"}, {0x47, "G"},
    {0x48, "H"}, {0x49, "I"}, {0x4A, "J"}, {0x4B, "K"}, {0x4C, "L"}, {0x4D, "M"}, {0x4E, "N"},
    {0x4F, "O"}, {0x50, "P"}, {0x51, "Q"}, {0x52, "R"}, {0x53, "S"}, {0x54, "T"}, {0x55, "U"},
    {0x56, "V"}, {0x57, "W"}, {0x58, "X"}, {0x59, "Y"}, {0x5A, "Z"},

    {0x60, "Numpad-0"}, {0x61, "Numpad-1"}, {0x62, "Numpad-2"}, {0x63, "Numpad-3"}, {0x64, "Numpad-4"},
    {0x65, "Numpad-5"}, {0x66, "Numpad-6"}, {0x67, "Numpad-7"}, {0x68, "Numpad-8"}, {0x69, "Numpad-9"},
    {0x6A, "Numpad-*"}, {0x6B, "Numpad-+"}, {0x6D, "Numpad--"}, {0x6E, "Numpad-."}, {0x6F, "Numpad-/"},

    {0x70, "F1"},  {0x71, "F2"},  {0x72, "F3"},  {0x73, "F4"},  {0x74, "F5"},  {0x75, "F6"},
    {0x76, "F7"},  {0x77, "F8"},  {0x78, "F9"},  {0x79, "F10"}, {0x7A, "F11"}, {0x7B, "F12"},
    {0x7C, "F13"}, {0x7D, "F14"}, {0x7E, "F15"}, {0x7F, "F16"}, {0x80, "F17"}, {0x81, "F18"},
    {0x82, "F19"}, {0x83, "F20"}, {0x84, "F21"}, {0x85, "F22"}, {0x86, "F23"}, {0x87, "F24"},

    {0xB0, "="}, {0xB1, "-"}, {0xB2, "]"}, {0xB3, "["}, {0xB4, "'"}, {0xB5, ";"}, {0xB6, "\\"},
    {0xB7, ","}, {0xB8, "/"}, {0xB9, "."}, {0xBA, "`"},
    {0xBB, "Enter"}, {0xBC, "Numpad-Enter"}, {0xBD, "Numpad-="},
};
// clang-format on
static_assert(std::size(kKeyNameTable) == 110);

// The host takes every change of a button in two passes.
void ChangeButton(int button, int up) {
  const int buttons[] = {button, 0};
  gHooks->CommandButtonPress(buttons, up, 0);
  gHooks->CommandButtonPress(buttons, up, 1);
}

}  // namespace

void VYRASimulateKeyPress(int keyType, int key) { gHooks->SimulateKeyPress(keyType, key); }

void VYRASpeakString(const char* text) { gHooks->SpeakString(text); }

void VYRACommandKeyStroke(int key) { gHooks->CommandKeyStroke(key); }

// Kept: who pressed a button is not noted, so nobody releases those of a plugin that leaves. A plugin may
// release what another one holds, and count on what it pressed before a reload.
void VYRACommandButtonPress(int button) {
  ChangeButton(button, 0);
  // A 0 would end the host's list in front of the buttons behind it, which are held by others.
  if (button != 0) gButtons.push_back(button);
}

void VYRACommandButtonRelease(int button) {
  // Also when the host's call leads to an exception: it has been told of the release.
  const StAtEnd release([&] {
    const auto held = std::find(gButtons.begin(), gButtons.end(), button);
    if (held != gButtons.end()) gButtons.erase(held);
  });
  ChangeButton(button, 1);
}

void VYRADoRepeatedButtons() {
  if (gButtons.empty()) return;
  // A copy, as the host's call may lead to presses and releases, and to a pass inside this one.
  std::vector<int> buttons = std::exchange(gRepeatedButtons, {});
  buttons.assign(gButtons.begin(), gButtons.end());
  buttons.push_back(0);
  gHooks->CommandButtonPress(buttons.data(), 0, 1);
  gRepeatedButtons = std::move(buttons);
}

void VYRAReloadScenery(void) { gHooks->ReloadScenery(); }

const char* VYRAGetVirtualKeyDescription(char virtualKey) {
  const auto key = static_cast<unsigned char>(virtualKey);
  const auto* const row = std::find_if(std::begin(kKeyNameTable), std::end(kKeyNameTable),
                                       [&](const KeyName& candidate) { return candidate.key == key; });
  return row != std::end(kKeyNameTable) ? row->name : "Unknown";
}

void VYRAGetVersions(int* outHostVersion, int* outLibraryVersion, int* outHostId) {
  int hostVersion = 0;
  int hostId = 0;
  gHooks->GetVersions(&hostVersion, &hostId);
  if (outHostId != nullptr) *outHostId = hostId;
  if (outHostVersion != nullptr) *outHostVersion = hostVersion;
  if (outLibraryVersion != nullptr) *outLibraryVersion = kLibraryVersion;
}

int VYRAGetLanguage(void) { return gHooks->GetLanguage(); }

void* VYRAFindSymbol(const char* name) { return gHooks->FindSymbol(name); }
