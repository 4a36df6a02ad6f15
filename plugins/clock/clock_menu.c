/*
 * The clock's menu: an item with a check mark that shows and hides the window, and one that sets the clock to
 * zero. An item's reference is the function that carries it out.
 */
#include "VYRAMenus.h"
#include "clock_parts.h"

typedef struct Item {
  const char* name;
  void (*carryOut)(void);
} Item;

/* Not const: the menu's handler gets them as the plugin's own memory. */
static Item gShow = {"Show window", ClockToggleWindow};
static Item gZero = {"Set to zero", ClockSetToZero};

static VYRAMenuID gMenu;
static int gShowNumber;

static void OnPick(void* menuRef, void* itemRef) {
  (void)menuRef;
  const Item* const item = itemRef;
  item->carryOut();
}

static int Append(Item* item) { return VYRAAppendMenuItem(gMenu, item->name, item, 0); }

void ClockMarkMenu(void) {
  VYRACheckMenuItem(gMenu, gShowNumber, ClockIsWindowShown() ? VYRA_MENU_CHECKED : VYRA_MENU_UNCHECKED);
}

void ClockCreateMenu(void) {
  gMenu = VYRACreateMenu("Clock", NULL, 0, OnPick, NULL); /* hangs from the menu "Plugins" */
  gShowNumber = Append(&gShow);
  VYRAAppendMenuSeparator(gMenu);
  Append(&gZero);
  ClockMarkMenu();
}
