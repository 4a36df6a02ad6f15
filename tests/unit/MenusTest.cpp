// Menus: the plugins' own numbers against the host's positions, what the host is told and answered, and
// handles, indices and moments that do not fit.
#include <climits>

#include "PluginFixture.h"
#include "VYRAMenusInternal.h"

namespace {

class Menus : public PluginFixture {
 protected:
  // Two plugins, 1 and 2, and a host that numbers menus from 100, "Plugins" first, and items from 1000.
  Menus() {
    gHost.Answer("CreateMenu", 100);
    VYRAInitMenus();
    for (const char* plugin : {"a", "b"}) AddPlugin(plugin);
    gHost.calls.clear();
  }

  static VYRAMenuID Create(VYRAPluginID plugin, VYRAMenuHandler_f handler = nullptr) {
    gHost.Answer("CreateMenu", nextMenu++);
    gHost.Answer("AppendMenuItem", nextItem++);
    return RunAs(plugin, [&] { return VYRACreateMenu("M", nullptr, 0, handler, &nextMenu); });
  }
  static int Append(VYRAPluginID plugin, VYRAMenuID menu, const char* name) {
    gHost.Answer("AppendMenuItem", nextItem++);
    return RunAs(plugin, [&] { return VYRAAppendMenuItem(menu, name, const_cast<char*>(name), 0); });
  }
  static void Destroy(VYRAPluginID plugin, VYRAMenuID menu) {
    RunAs(plugin, [&] { VYRADestroyMenu(menu); });
  }
  static int PickLatest() { return VYRAHandleMenuItemPick(nextItem - 1); }
  // What the host is answered; 77 when it is not.
  static int Checked(int position) {
    int state = 77;
    const int result = VYRAHandleMenuItemCheck(101, position, &state);
    EXPECT_EQ(result, state == 77 ? 1 : 0);
    return state;
  }

  static int CountMenus() {
    int count = 0;
    for (const VYRAMenuInfo_t* menu = gMenus.First(); menu != nullptr; menu = menu->listed.next) ++count;
    return count;
  }

  static inline int nextMenu = 101, nextItem = 1000;
};

TEST_F(Menus, TopLevelMenuHangsFromAnItemOfThePluginsMenuAndOthersFromTheirParentsItem) {
  Append(1, VYRAFindPluginsMenu(), "x");
  const StActAs asOther(2);
  gHost.Answer("CreateMenu", 101);
  const VYRAMenuID top = VYRACreateMenu("Fuel", nullptr, 9, nullptr, nullptr);
  EXPECT_EQ(VYRAAppendMenuSeparator(top), 0);
  EXPECT_EQ(VYRAAppendMenuItem(top, "Tanks", nullptr, 5), 1);
  VYRACreateMenu("Tanks", top, 1, nullptr, nullptr);
  VYRACreateMenu("None", top, 2, nullptr, nullptr);
  VYRAInitMenus();
  EXPECT_EQ(gHost.calls,
            (Lines{"AppendMenuItem(100|0|x|0)", "AppendMenuItem(100|1|Fuel|1)", "CreateMenu(100|1|Fuel)",
                   "AppendMenuItem(101|0|-|0)", "AppendMenuItem(101|1|Tanks|5)", "CreateMenu(101|1|Tanks)",
                   "CreateMenu(101|-1|None)", "CreateMenu(0|0|Plugins)"}));
  EXPECT_EQ(CountMenus(), 1) << "a second start knows no menu of the first";
}

TEST_F(Menus, PluginsCountTheirOwnItemsAndTheHostCountsAll) {
  const VYRAMenuID menu = Create(1);
  for (const int index : {0, 1}) {
    for (const VYRAPluginID plugin : {1, 2}) EXPECT_EQ(Append(plugin, menu, "x"), index);
  }
  gHost.calls.clear();
  RunAs(2, [&] {
    int check = 0;
    VYRACheckMenuItem(menu, 1, VYRA_MENU_CHECKED);
    VYRACheckMenuItemState(menu, 1, &check);
    EXPECT_EQ(check, VYRA_MENU_CHECKED);
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
  EXPECT_EQ(Checked(2), 1);
}

TEST_F(Menus, PickReachesTheMenusHandlerAsItsCreatorWhileBothAreEnabled) {
  const VYRAMenuID menu = Create(1, [](void* menuRef, void* item) {
    EXPECT_EQ(menuRef, &nextMenu);
    trace.push_back("picked " + std::string(static_cast<char*>(item)) + std::to_string(VYRAGetMyID()));
  });
  Append(2, menu, "x");
  for (const int enabled : {1, 0, 9}) {
    RunAs(2, [&] { VYRAEnableMenuItem(menu, 0, enabled); });
    EXPECT_EQ(PickLatest(), 0);
    EXPECT_EQ(VYRAHandleMenuItemEnable(101, 0), enabled);
  }
  VYRARegistrySetEnabled(1, false);
  EXPECT_EQ(PickLatest(), 0);
  EXPECT_EQ(VYRAHandleMenuItemEnable(101, 0), 0);
  EXPECT_EQ(VYRAHandleMenuItemPick(1000), 0) << "in the menu Plugins, which has no handler";
  EXPECT_EQ(VYRAHandleMenuItemPick(12345), 1);
  EXPECT_EQ(trace, Lines(2, "picked x1"));
}

TEST_F(Menus, OfItemsWithOneNumberOfTheHostTheFirstOfTheEarliestMenuIsPicked) {
  const VYRAMenuHandler_f note = [](void*, void* item) { trace.emplace_back(static_cast<char*>(item)); };
  const VYRAMenuID early = Create(1, note);
  const VYRAMenuID late = Create(1, note);
  for (const auto& [menu, name] : {std::pair{late, "late"}, {early, "first"}, {early, "second"}}) {
    nextItem = 5;
    Append(1, menu, name);
  }
  VYRAHandleMenuItemPick(5);
  RunAs(1, [&] { VYRARemoveMenuItem(early, 0); });
  VYRAHandleMenuItemPick(5);
  Destroy(1, early);
  VYRAHandleMenuItemPick(5);
  EXPECT_EQ(trace, (Lines{"first", "second", "late"}));
}

TEST_F(Menus, CheckMarksAreAnsweredOneLowerAndOddOnesNotAtAll) {
  const VYRAMenuID menu = Create(1);
  Append(1, menu, "x");
  for (const auto& [check, answer] : {std::pair{0, -1}, {1, 0}, {2, 1}, {3, 77}, {-1, 77}}) {
    menu->ItemAt(0)->check = check;
    EXPECT_EQ(Checked(0), answer);
  }
}

TEST_F(Menus, OnlyTheCreatorClearsAndDestroysAndTheHostKeepsBlankEntries) {
  const VYRAMenuID menu = Create(1);
  Append(2, menu, "x");
  Append(1, menu, "y");
  gHost.calls.clear();
  for (const VYRAPluginID plugin : {2, 1, 1}) {
    RunAs(plugin, [&] { VYRAClearAllMenuItems(menu); });
    Destroy(plugin, menu);
    EXPECT_EQ(gHost.calls.size(), plugin == 2 ? 0U : 3U);
  }
  EXPECT_EQ(gHost.calls,
            (Lines{"SetMenuItemName(101|0||0)", "SetMenuItemName(101|1||0)", "DestroyMenu(101)"}));
  EXPECT_EQ(PickLatest(), 1);
  EXPECT_EQ(VYRAFindPluginsMenu()->items.Count(), 1U) << "the item that it hung from stays";
}

TEST_F(Menus, HandlesIndicesAndNamesThatFitNothingChangeNothing) {
  const VYRAMenuID menu = Create(1);
  Append(2, menu, "not mine");
  Append(1, menu, "mine");
  gHost.calls.clear();
  VYRAMenuInfo_t none;
  int check = 77;
  const StActAs asCreator(1);
  const auto use = [&](VYRAMenuID any, int index) {
    VYRACheckMenuItem(any, index, 1);
    VYRACheckMenuItemState(any, index, &check);
    VYRAEnableMenuItem(any, index, 0);
    VYRARemoveMenuItem(any, index);
  };
  for (const int index : {1, -1, INT_MIN, INT_MAX}) use(menu, index);
  EXPECT_EQ(errors.size(), 4U) << "one for each index that the plugin does not have";
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
  VYRACheckMenuItemState(menu, 0, nullptr);
  EXPECT_EQ(check, 77);
  EXPECT_EQ(gHost.calls, Lines());
  EXPECT_EQ(VYRAHandleMenuItemCheck(101, 0, nullptr), 1);
  EXPECT_EQ(Checked(1), -1);
  for (const int position : {-1, 2, INT_MIN, INT_MAX}) {
    EXPECT_EQ(Checked(position), 77);
    EXPECT_EQ(VYRAHandleMenuItemEnable(101, position), 1);
  }
}

TEST_F(Menus, DepartingPluginTakesItsMenusAndItsItemsOfThePluginsMenu) {
  const VYRAMenuID others = Create(2);
  Append(2, Create(1), "x");
  Append(1, others, "stays");
  Append(2, VYRAFindPluginsMenu(), "y");
  Append(1, VYRAFindPluginsMenu(), "z");
  gHost.calls.clear();
  VYRAMenuCleanupHook(1);
  EXPECT_EQ(gHost.calls, (Lines{"SetMenuItemName(102|0||0)", "DestroyMenu(102)", "RemoveMenuItem(100,3)",
                                "RemoveMenuItem(100,1)"}));
  EXPECT_EQ(CountMenus(), 2);
  EXPECT_EQ(VYRAFindPluginsMenu()->items.Count(), 2U);
  EXPECT_EQ(others->items.Count(), 1U);
  EXPECT_EQ(Append(1, others, "of a later plugin with the same ID"), 0);
}

TEST_F(Menus, HostThatCannotDestroyMenusIsNotAskedTo) {
  gHost.services.hostVersion = 567;
  Destroy(1, Create(1));
  Append(1, Create(1), "x");
  VYRAMenuCleanupHook(1);
  EXPECT_EQ(gHost.CallsOf("DestroyMenu"), Lines());
  EXPECT_EQ(PickLatest(), 1);
}

TEST_F(Menus, HandlerMayThrowAndMayDestroyItsMenuAndLeave) {
  static VYRAMenuID menu;
  menu = Create(1, [](void*, void* item) {
    if (*static_cast<char*>(item) == 't') throw 1;
    VYRADestroyMenu(menu);
    VYRAMenuCleanupHook(VYRAGetMyID());
  });
  Append(1, menu, "throws");
  EXPECT_THROW(PickLatest(), int);
  EXPECT_EQ(VYRADispatchDepth(), 0);
  EXPECT_EQ(VYRAGetMyID(), VYRA_HOST_PLUGIN);
  Append(1, menu, "leaves");
  EXPECT_EQ(PickLatest(), 0);
  EXPECT_EQ(CountMenus(), 1);
}

TEST_F(Menus, HostMayDestroyTheMenuThatItIsToldOf) {
  static VYRAMenuID menu;
  gHost.services.SetMenuItemName = [](int, int, const char*, int) { Destroy(1, menu); };
  gHost.services.RemoveMenuItem = [](int, int) { Destroy(1, menu); };
  for (const auto function : {+[] { VYRASetMenuItemName(menu, 0, "z", 0); },
                              +[] { VYRARemoveMenuItem(menu, 1); }, +[] { VYRAClearAllMenuItems(menu); },
                              +[] { VYRADestroyMenu(menu); }, +[] { VYRAMenuCleanupHook(1); }}) {
    menu = Create(1);
    for (const char* name : {"x", "y"}) Append(1, menu, name);
    RunAs(1, function);
  }
  EXPECT_EQ(gHost.CallsOf("DestroyMenu").size(), 5U) << "each menu once";

  gHost.services.AppendMenuItem = [](int, int, const char*, int) {
    Destroy(0, VYRAFindPluginsMenu());
    return 1;
  };
  EXPECT_EQ(Append(1, VYRAFindPluginsMenu(), "x"), -1);
  EXPECT_EQ(VYRAFindPluginsMenu(), nullptr);
  VYRAMenuCleanupHook(1);
  EXPECT_NE(Create(1), nullptr) << "in the menu bar itself";
}

TEST_F(Menus, ItemOfAMenuThatTheHostDestroysMeanwhileDoesNotGoToTheNextMenu) {
  static VYRAMenuID menu, parent, next;
  parent = Create(1);
  menu = Create(1);
  gHost.services.AppendMenuItem = [](int, int, const char*, int) {
    VYRADestroyMenu(menu);
    next = VYRACreateMenu("next", parent, 0, nullptr, nullptr);
    return 1;
  };
  EXPECT_EQ(Append(1, menu, "x"), -1);
  EXPECT_EQ(next->items.Count(), 0U);
}

TEST_F(Menus, HandleOfADestroyedMenuIsNotThatOfTheNext) {
  const VYRAMenuID menu = Create(1);
  Destroy(1, menu);
  EXPECT_NE(Create(1), menu);
}

TEST_F(Menus, DepartureThatAServiceEndsByAnExceptionGoesOnWithTheNextMenu) {
  for (int i = 0; i < 3; ++i) Create(1);
  static int destroyed;
  gHost.services.DestroyMenu = [](int) {
    if (++destroyed == 1) throw 1;
  };
  EXPECT_THROW(VYRAMenuCleanupHook(1), int);
  VYRAMenuCleanupHook(1);
  EXPECT_EQ(destroyed, 3);
  EXPECT_EQ(CountMenus(), 1);
}

}  // namespace
