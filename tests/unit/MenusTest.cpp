// Menus: the plugins' own numbers against the host's positions, what the host is told and answered, and
// handles, indices and moments that do not fit.
#include <climits>
#include <string>

#include "PluginFixture.h"
#include "VYRAMenusRecords.h"

namespace {

class Menus : public PluginFixture {
 protected:
  // Two plugins, 1 and 2, and a host that numbers menus from 100, "Plugins" first, and items from 1000.
  Menus() {
    gHost.services.CreateMenu = [](int parent, int item, const char* name) {
      trace.push_back(std::to_string(parent) + "/" + std::to_string(item) + " menu " + name);
      return nextMenu++;
    };
    gHost.services.AppendMenuItem = [](int menu, int position, const char* name, int flag) {
      trace.push_back(std::to_string(menu) + "/" + std::to_string(position) + " item " + name + " " +
                      std::to_string(flag));
      return nextItem++;
    };
    VYRAInitMenus();
    AddPlugin("a");
    AddPlugin("b");
    trace.clear();
  }

  static VYRAMenuID Create(VYRAPluginID plugin, VYRAMenuHandler_f handler = nullptr) {
    return RunAs(plugin, [&] { return VYRACreateMenu("M", nullptr, 0, handler, &nextMenu); });
  }
  static int Append(VYRAPluginID plugin, VYRAMenuID menu, const char* name) {
    return RunAs(plugin, [&] { return VYRAAppendMenuItem(menu, name, const_cast<char*>(name), 0); });
  }
  // What the host is answered; 77 when it is not.
  static int Checked(const VYRAMenuInfo_t* menu, int position) {
    int state = 77;
    const int result = VYRAHandleMenuItemCheck(menu->hostMenu, position, &state);
    EXPECT_EQ(result, state == 77 ? 1 : 0);
    return state;
  }

  static inline int nextMenu = 100, nextItem = 1000;
};

TEST_F(Menus, TopLevelMenuHangsFromAnItemOfThePluginsMenuAndOthersFromTheirParentsItem) {
  Append(1, VYRAFindPluginsMenu(), "x");
  RunAs(2, [] {
    const VYRAMenuID top = VYRACreateMenu("Fuel", nullptr, 9, nullptr, nullptr);
    EXPECT_EQ(VYRAAppendMenuSeparator(top), 0);
    EXPECT_EQ(VYRAAppendMenuItem(top, "Tanks", nullptr, 5), 1);
    VYRACreateMenu("Tanks", top, 1, nullptr, nullptr);
    VYRACreateMenu("None", top, 2, nullptr, nullptr);
  });
  EXPECT_EQ(trace, (Lines{"100/0 item x 0", "100/1 item Fuel 1", "100/1 menu Fuel", "101/0 item - 0",
                          "101/1 item Tanks 5", "101/1 menu Tanks", "101/-1 menu None"}));
  trace.clear();
  VYRAInitMenus();
  EXPECT_EQ(trace, Lines{"0/0 menu Plugins"});
  EXPECT_EQ(gMenus.size(), 1U) << "a second start knows no menu of the first";
}

TEST_F(Menus, PluginsCountTheirOwnItemsAndTheHostCountsAll) {
  const VYRAMenuID menu = Create(1);
  EXPECT_EQ(Append(1, menu, "a0"), 0);
  EXPECT_EQ(Append(2, menu, "b0"), 0);
  EXPECT_EQ(Append(1, menu, "a1"), 1);
  EXPECT_EQ(Append(2, menu, "b1"), 1);
  int check = 0;
  RunAs(2, [&] {
    VYRACheckMenuItem(menu, 1, VYRA_MENU_CHECKED);
    VYRACheckMenuItemState(menu, 1, &check);
    VYRAEnableMenuItem(menu, 0, 0);
  });
  RunAs(1, [&] {
    VYRARemoveMenuItem(menu, 2);
    VYRARemoveMenuItem(menu, 0);
    VYRASetMenuItemName(menu, 0, "A", 3);
    VYRASetMenuItemName(menu, 1, "lost", 0);
  });
  EXPECT_EQ(gHost.calls,
            (Lines{"RemoveMenuItem(101,0)", "SetMenuItemName(101|1|A|3)", "SetMenuItemName(101|-1|lost|0)"}));
  EXPECT_EQ(errors, Lines{"1: VYRARemoveMenuItem was passed an out of range item index."});
  EXPECT_EQ(VYRAHandleMenuItemEnable(101, 0), 0);
  EXPECT_EQ(Checked(menu, 2) + check, 1 + VYRA_MENU_CHECKED);
}

TEST_F(Menus, PickReachesTheMenusHandlerAsItsCreatorWhileBothAreEnabled) {
  const VYRAMenuID menu = Create(1, [](void* menuRef, void* item) {
    EXPECT_EQ(menuRef, &nextMenu);
    trace.push_back("picked " + std::string(static_cast<char*>(item)) + std::to_string(VYRAGetMyID()));
  });
  Append(2, menu, "x");
  trace.clear();
  const int item = nextItem - 1;
  EXPECT_EQ(VYRAHandleMenuItemPick(item), 0);
  RunAs(2, [&] { VYRAEnableMenuItem(menu, 0, 0); });
  EXPECT_EQ(VYRAHandleMenuItemPick(item), 0);
  RunAs(2, [&] { VYRAEnableMenuItem(menu, 0, 9); });
  EXPECT_EQ(VYRAHandleMenuItemEnable(101, 0), 9);
  Record(1).enabled = false;
  EXPECT_EQ(VYRAHandleMenuItemPick(item), 0);
  EXPECT_EQ(VYRAHandleMenuItemEnable(101, 0), 0);
  EXPECT_EQ(VYRAHandleMenuItemPick(1000), 0) << "in the menu Plugins, which has no handler";
  EXPECT_EQ(VYRAHandleMenuItemPick(12345), 1);
  EXPECT_EQ(trace, Lines{"picked x1"});
}

TEST_F(Menus, CheckMarksAreAnsweredOneLowerAndOddOnesNotAtAll) {
  const VYRAMenuID menu = Create(1);
  Append(1, menu, "x");
  for (const auto& [check, answer] : {std::pair{0, -1}, {1, 0}, {2, 1}, {3, 77}, {-1, 77}}) {
    RunAs(1, [&, mark = check] { VYRACheckMenuItem(menu, 0, mark); });
    EXPECT_EQ(Checked(menu, 0), answer);
  }
}

TEST_F(Menus, OnlyTheCreatorClearsAndDestroysAndTheHostKeepsBlankEntries) {
  const VYRAMenuID menu = Create(1);
  Append(2, menu, "x");
  Append(1, menu, "y");
  const auto clearAndDestroy = [&] {
    VYRAClearAllMenuItems(menu);
    VYRADestroyMenu(menu);
  };
  RunAs(2, clearAndDestroy);
  EXPECT_EQ(gHost.calls, Lines());
  RunAs(1, clearAndDestroy);
  RunAs(1, clearAndDestroy);
  EXPECT_EQ(gHost.calls,
            (Lines{"SetMenuItemName(101|0||0)", "SetMenuItemName(101|1||0)", "DestroyMenu(101)"}));
  EXPECT_EQ(VYRAHandleMenuItemPick(nextItem - 1), 1);
  EXPECT_EQ(VYRAFindPluginsMenu()->items.size(), 1U) << "the item that it hung from stays";
}

TEST_F(Menus, HandlesIndicesAndNamesThatFitNothingChangeNothing) {
  const VYRAMenuID menu = Create(1);
  Append(2, menu, "not mine");
  Append(1, menu, "mine");
  trace.clear();
  VYRAMenuInfo_t none;
  int check = 77;
  const auto use = [&](VYRAMenuID any, int index) {
    VYRACheckMenuItem(any, index, 1);
    VYRACheckMenuItemState(any, index, &check);
    VYRAEnableMenuItem(any, index, 0);
    VYRARemoveMenuItem(any, index);
  };
  RunAs(1, [&] {
    for (const int index : {1, 2, -1, INT_MIN, INT_MAX}) use(menu, index);
    EXPECT_EQ(errors.size(), 5U) << "one for each index that the plugin does not have";
    for (const VYRAMenuID unknown : {VYRAMenuID{nullptr}, &none}) {
      use(unknown, 0);
      VYRASetMenuItemName(unknown, 0, "x", 0);
      VYRAClearAllMenuItems(unknown);
      VYRADestroyMenu(unknown);
      EXPECT_EQ(VYRAAppendMenuSeparator(unknown), -1);
    }
    EXPECT_EQ(VYRACreateMenu("x", &none, 0, nullptr, nullptr), nullptr);
    EXPECT_EQ(VYRACreateMenu(nullptr, nullptr, 0, nullptr, nullptr), nullptr);
    EXPECT_EQ(VYRAAppendMenuItem(menu, nullptr, nullptr, 0), -1);
    VYRASetMenuItemName(menu, 0, nullptr, 0);
  });
  RunAs(2, [&] { VYRACheckMenuItemState(menu, 0, nullptr); });
  EXPECT_EQ(check, 77);
  EXPECT_EQ(trace.size() + gHost.calls.size(), 0U);
  EXPECT_EQ(VYRAHandleMenuItemCheck(101, 0, nullptr), 1);
  EXPECT_EQ(Checked(menu, 1), -1);
  for (const int position : {-1, 2, INT_MIN, INT_MAX}) {
    EXPECT_EQ(Checked(menu, position), 77);
    EXPECT_EQ(VYRAHandleMenuItemEnable(101, position), 1);
  }
}

TEST_F(Menus, DepartingPluginTakesItsMenusAndItsItemsOfThePluginsMenu) {
  const VYRAMenuID others = Create(2);
  Append(2, Create(1), "x");
  Append(1, others, "stays");
  Append(2, VYRAFindPluginsMenu(), "y");
  Append(1, VYRAFindPluginsMenu(), "z");
  VYRAMenuCleanupHook(1);
  EXPECT_EQ(gHost.calls, (Lines{"SetMenuItemName(102|0||0)", "DestroyMenu(102)", "RemoveMenuItem(100,3)",
                                "RemoveMenuItem(100,1)"}));
  EXPECT_EQ(gMenus.size(), 2U);
  EXPECT_EQ(VYRAFindPluginsMenu()->items.size(), 2U);
  EXPECT_EQ(others->items.size(), 1U);
  EXPECT_EQ(Append(1, others, "of a later plugin with the same ID"), 0);
}

TEST_F(Menus, HostThatCannotDestroyMenusIsNotAskedTo) {
  gHost.services.hostVersion = 567;
  const VYRAMenuID destroyed = Create(1);
  Append(1, Create(1), "x");
  RunAs(1, [&] { VYRADestroyMenu(destroyed); });
  VYRAMenuCleanupHook(1);
  EXPECT_EQ(gHost.CallsOf("DestroyMenu"), Lines());
  EXPECT_EQ(gMenus.size(), 1U);
  EXPECT_EQ(VYRAHandleMenuItemPick(nextItem - 1), 1);
}

TEST_F(Menus, HandlerMayThrowAndMayDestroyItsMenuAndLeave) {
  static VYRAMenuID menu;
  menu = Create(1, [](void*, void* item) {
    if (*static_cast<char*>(item) == 't') throw 1;
    VYRADestroyMenu(menu);
    VYRAMenuCleanupHook(VYRAGetMyID());
  });
  Append(1, menu, "throws");
  Append(1, menu, "leaves");
  EXPECT_THROW(VYRAHandleMenuItemPick(nextItem - 2), int);
  EXPECT_EQ(gDispatchDepth + VYRAGetMyID(), 0);
  EXPECT_EQ(VYRAHandleMenuItemPick(nextItem - 1), 0);
  EXPECT_EQ(gMenus.size(), 1U);
}

TEST_F(Menus, HostMayDestroyTheMenuThatItIsToldOf) {
  static VYRAMenuID menu;
  static const auto destroy = [] { RunAs(1, [] { VYRADestroyMenu(menu); }); };
  gHost.services.SetMenuItemName = [](int, int, const char*, int) { destroy(); };
  gHost.services.RemoveMenuItem = [](int, int) { destroy(); };
  const auto use = [](void (*function)(VYRAMenuID)) {
    menu = Create(1);
    Append(1, menu, "x");
    Append(1, menu, "y");
    RunAs(1, [&] { function(menu); });
  };
  use([](VYRAMenuID one) { VYRASetMenuItemName(one, 0, "z", 0); });
  use([](VYRAMenuID one) { VYRARemoveMenuItem(one, 1); });
  use(VYRAClearAllMenuItems);
  use(VYRADestroyMenu);
  use([](VYRAMenuID) { VYRAMenuCleanupHook(1); });
  EXPECT_EQ(gHost.CallsOf("DestroyMenu").size(), 5U) << "each menu once";

  gHost.services.AppendMenuItem = [](int, int, const char*, int) {
    RunAs(0, [] { VYRADestroyMenu(VYRAFindPluginsMenu()); });
    return 1;
  };
  EXPECT_EQ(Append(1, VYRAFindPluginsMenu(), "x"), -1);
  EXPECT_EQ(VYRAFindPluginsMenu(), nullptr);
  VYRAMenuCleanupHook(1);
  EXPECT_NE(Create(1), nullptr) << "in the menu bar itself";
}

}  // namespace
