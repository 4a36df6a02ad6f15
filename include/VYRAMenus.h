/*
 * VYRAMenus.h: a plugin's menus in the host's menu bar.
 *
 * Several plugins may have items in one menu, above all in the menu "Plugins", from which each plugin's
 * menus hang. Each plugin counts its own items alone: the *item number* that functions take and give is
 * the item's place, from 0, among the calling plugin's items of that menu, and falls when one before it
 * is removed.
 *
 * A menu handle that is null, or none of a menu that exists now, may be passed everywhere: nothing
 * happens then, and results are null or -1. So it is with a null name.
 */
#ifndef VYRA_MENUS_H
#define VYRA_MENUS_H

#include "VYRADefs.h"

VYRA_BEGIN_DECLARATIONS

/* A menu. The handle is valid until the menu is destroyed, or the plugin that created it is unloaded. */
typedef struct VYRAMenuInfo_t* VYRAMenuID;

/**
 * Called when the user picks an item of a menu, with the plugin that created the menu as the calling
 * plugin, while that plugin is enabled and the item is too.
 *
 * menuRef: as given when the menu was created. itemRef: as given when the item was appended, by whichever
 * plugin. A handler may change and destroy menus, its own included.
 */
typedef void (*VYRAMenuHandler_f)(void* menuRef, void* itemRef);

/* The check mark of an item. */
#define VYRA_MENU_NO_CHECK 0  /* none, and no room for one: a new item */
#define VYRA_MENU_UNCHECKED 1 /* room for one */
#define VYRA_MENU_CHECKED 2   /* a check mark */

/* ---- Menus ------------------------------------------------------------------------------------------- */

/** The menu "Plugins" of the host's menu bar; null before the library was started. [always] */
VYRA_API VYRAMenuID VYRAFindPluginsMenu(void);

/**
 * Creates a menu of the calling plugin. It lives until it is destroyed or the plugin is unloaded.
 *
 * name: the menu's title. parent, parentItem: the menu hangs from this item of the calling plugin; -1 goes
 * to the host where the plugin has no such item there. With a null parent the library appends an item
 * called `name` to the menu "Plugins", as one of the calling plugin, and hangs the menu from that.
 * handler: called for picks in this menu, or null. menuRef: passed to it; what it points to belongs to
 * the plugin.
 *
 * Result: the handle, or null for a null name or a parent that does not exist.
 * [started]
 */
VYRA_API VYRAMenuID VYRACreateMenu(const char* name, VYRAMenuID parent, int parentItem,
                                   VYRAMenuHandler_f handler, void* menuRef);

/**
 * Destroys a menu that the calling plugin created, with all its items, also from inside its handler.
 * The item that it hung from stays. Menus of others: nothing happens.
 * [started]
 */
VYRA_API void VYRADestroyMenu(VYRAMenuID menu);

/**
 * Removes all items, those of other plugins too, from a menu that the calling plugin created. The host
 * keeps an entry without a name for each. Menus of others: nothing happens.
 * [started]
 */
VYRA_API void VYRAClearAllMenuItems(VYRAMenuID menu);

/* ---- Items ------------------------------------------------------------------------------------------- */

/**
 * Appends an item of the calling plugin to any menu, enabled and without a check mark. It stays until it
 * is removed or the menu goes; in the menu "Plugins" also no longer than its plugin.
 *
 * name: the item's text. itemRef: passed to the menu's handler; what it points to belongs to the plugin.
 * flag: passed on to the host, whose documentation says what it means.
 * Result: the item number, or -1 when there is no such menu or no name.
 * [started]
 */
VYRA_API int VYRAAppendMenuItem(VYRAMenuID menu, const char* name, void* itemRef, int flag);

/**
 * Appends a separator: an item called "-", with a null itemRef and flag 0. Result: its item number.
 * [started]
 */
VYRA_API int VYRAAppendMenuSeparator(VYRAMenuID menu);

/**
 * Removes one of the calling plugin's items.
 * Error: when the plugin has no item of this number in the menu, "VYRARemoveMenuItem was passed an out of
 * range item index."; nothing changes then.
 * [started]
 */
VYRA_API void VYRARemoveMenuItem(VYRAMenuID menu, int index);

/**
 * Renames one of the calling plugin's items. flag: as in VYRAAppendMenuItem. When the plugin has no item
 * of this number, the host is asked to rename item -1.
 * [started]
 */
VYRA_API void VYRASetMenuItemName(VYRAMenuID menu, int index, const char* name, int flag);

/**
 * Sets an item's check mark, VYRA_MENU_*. Nothing changes when the plugin has no item of this number.
 * [started]
 */
VYRA_API void VYRACheckMenuItem(VYRAMenuID menu, int index, int check);

/**
 * Reads an item's check mark as it was last set. *outCheck is left untouched when the plugin has no item
 * of this number; outCheck may be null.
 * [started]
 */
VYRA_API void VYRACheckMenuItemState(VYRAMenuID menu, int index, int* outCheck);

/**
 * Enables an item, or with 0 disables it: it then cannot be picked. Nothing changes when the plugin has no
 * item of this number.
 * [started]
 */
VYRA_API void VYRAEnableMenuItem(VYRAMenuID menu, int index, int enabled);

VYRA_END_DECLARATIONS

#endif
