/*
 * The clock's window: draws the time as a text, and after a click on it as seconds with a decimal. The hot
 * key C shows and hides it. The library removes both with the plugin.
 */
#include "VYRADisplay.h"
#include "VYRAGraphics.h"
#include "clock_parts.h"

enum { LEFT = 20, TOP = 780, RIGHT = 140, BOTTOM = 740, MARGIN = 12, NO_FLAGS = 0, FONT = 0 };

static VYRAWindowID gWindow;
static int gShowsSeconds;

static void Draw(VYRAWindowID window, void* refcon) {
  (void)refcon;
  int left = 0, top = 0, right = 0, bottom = 0;
  VYRAGetWindowGeometry(window, &left, &top, &right, &bottom);
  VYRADrawTranslucentDarkBox(left, top, right, bottom);
  float white[3] = {1.0F, 1.0F, 1.0F};
  if (gShowsSeconds)
    VYRADrawNumber(white, left + MARGIN, bottom + MARGIN, ClockSeconds(), 6, 1, 0, FONT);
  else
    VYRADrawString(white, left + MARGIN, bottom + MARGIN, ClockLabel(), NULL, FONT);
}

static int Click(VYRAWindowID window, int x, int y, int mouseStatus, void* refcon) {
  (void)window, (void)x, (void)y, (void)refcon;
  if (mouseStatus == VYRA_MOUSE_DOWN) gShowsSeconds = !gShowsSeconds;
  return 1; /* the click is for this window and none behind it */
}

static void OnHotKey(void* refcon) {
  (void)refcon;
  ClockToggleWindow();
}

void ClockCreateWindow(void) {
  const VYRAWindowCreateParams params = {.structSize = (int)sizeof(params),
                                         .left = LEFT,
                                         .top = TOP,
                                         .right = RIGHT,
                                         .bottom = BOTTOM,
                                         .visible = 1,
                                         .draw = Draw,
                                         .handleMouseClick = Click};
  gWindow = VYRACreateWindowEx(&params);
  VYRARegisterHotKey('C', NO_FLAGS, "Show or hide the clock", OnHotKey, NULL);
}

int ClockIsWindowShown(void) { return VYRAGetWindowIsVisible(gWindow); }

void ClockToggleWindow(void) {
  VYRASetWindowIsVisible(gWindow, !ClockIsWindowShown());
  ClockMarkMenu();
}
