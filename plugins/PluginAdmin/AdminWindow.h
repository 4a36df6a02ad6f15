// PluginAdmin's window: the plugins with their states, and the hot keys. It is hidden at first; the menu item
// "Plugins/PluginAdmin/Show window" shows and hides it. What it makes is removed with its plugin.
#pragma once

void MakeAdminWindow();
