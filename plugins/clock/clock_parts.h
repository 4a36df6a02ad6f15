/*
 * What the parts of the plugin clock know of each other: the clock itself (clock.c), its window and the hot
 * key that shows and hides it (clock_window.c), and its menu (clock_menu.c).
 */
#ifndef CLOCK_PARTS_H
#define CLOCK_PARTS_H

/* The clock. The label is the time as a text; the string stays the clock's. */
char* ClockLabel(void);
double ClockSeconds(void);
void ClockSetToZero(void);

/* The window. */
void ClockCreateWindow(void);
void ClockToggleWindow(void);
int ClockIsWindowShown(void);

/* The menu, which needs the window. */
void ClockCreateMenu(void);
void ClockMarkMenu(void); /* to be called when the window was shown or hidden */

#endif
