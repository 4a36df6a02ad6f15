/*
 * VYRAWatch.h: for simulators: which plugin runs now, a watcher that is told of every call into one, and the
 * windows, datarefs and command handlers of all plugins.
 *
 * With it a simulator names the plugin behind a crash, a stall or an exception, knows what each plugin costs,
 * and sees what lies on its screen. The rest of the library does not depend on it: a host that never calls
 * these functions loses nothing and pays nothing.
 *
 *   VYRARunningCall calls[VYRA_MOST_RUNNING_CALLS];
 *   int count = VYRAGetRunningCalls(calls, VYRA_MOST_RUNNING_CALLS);
 *   if (count > 0) printf("%s, in its %s\n", calls[0].name, VYRAGetCallKindName(calls[0].kind));
 */
#ifndef VYRA_WATCH_H
#define VYRA_WATCH_H

#include "VYRADataAccess.h"
#include "VYRADefs.h"
#include "VYRADisplay.h"
#include "VYRAUtilities.h"

VYRA_BEGIN_DECLARATIONS

/* What a plugin is called for. */
enum {
  VYRA_CALL_OPENING = 1,   /* its module is opened: its constructors run */
  VYRA_CALL_START,         /* VyPluginStart */
  VYRA_CALL_ENABLE,        /* VyPluginEnable */
  VYRA_CALL_DISABLE,       /* VyPluginDisable */
  VYRA_CALL_STOP,          /* VyPluginStop */
  VYRA_CALL_CLOSING,       /* its module is closed: its destructors run */
  VYRA_CALL_MESSAGE,       /* VyPluginReceiveMessage */
  VYRA_CALL_FLIGHT_LOOP,   /* a flight loop */
  VYRA_CALL_DRAW_CALLBACK, /* a draw callback of a phase */
  VYRA_CALL_WINDOW_DRAW,   /* a window's drawing */
  VYRA_CALL_WINDOW_MOUSE,  /* a window's press, drag or release of the mouse */
  VYRA_CALL_WINDOW_KEY,    /* a window's key, or its loss of keyboard focus */
  VYRA_CALL_WINDOW_CURSOR, /* a window's answer to the cursor over it */
  VYRA_CALL_WINDOW_WHEEL,  /* a window's turn of the mouse wheel */
  VYRA_CALL_KEY_SNIFFER,   /* a key sniffer */
  VYRA_CALL_HOT_KEY,       /* a hot key */
  VYRA_CALL_CAMERA,        /* a camera control */
  VYRA_CALL_MENU,          /* a menu's handler */
  VYRA_CALL_COMMAND,       /* a command's handler */
  VYRA_CALL_PLANES,        /* the news that the AI planes are free */
  VYRA_CALL_OBJECT,        /* a scenery object that was loaded in the background */
  VYRA_CALL_SHARED_DATA,   /* the news that shared data was written */
  VYRA_CALL_DATAREF,       /* an accessor of a dataref */
  VYRA_CALL_ENUMERATOR,    /* an enumerator, of features or of library objects */
  VYRA_CALL_ERROR          /* the error callback */
};

/* A call into a plugin, or into the host where the host owns what is called (a dataref, a message). The
 * texts belong to the library, are never null and stay as they are for the life of the process. */
typedef struct {
  VYRAPluginID plugin;   /* while its module is opened: the number that it will get if it starts */
  int kind;              /* one of VYRA_CALL_... */
  const char* name;      /* "" for the host, and before the plugin's start has ended */
  const char* signature; /* "" for the host, and before the plugin's start has ended */
  const char* path;      /* of its module; "" for the host */
} VYRARunningCall;

/* How many calls VYRAGetRunningCalls knows: the innermost ones, should more be on the stack. */
#define VYRA_MOST_RUNNING_CALLS 64

/* Writes the calls that are on the main thread's stack now, the innermost first, to outCalls, which has room
 * for `capacity` records, and returns how many it wrote: 0 while no plugin runs, or for a null outCalls. The
 * first one's code is the code that runs, unless that has called the library or one of the host's services.
 *
 * May be called at any time, before the start too, from a signal handler and from another thread: it takes
 * no lock, allocates nothing and reads only memory that never moves. In another thread each record is whole,
 * but the stack goes on changing while it is read.
 * [any thread]
 */
VYRA_API int VYRAGetRunningCalls(VYRARunningCall* outCalls, int capacity);

/* The spelling of a kind of call, "flight loop" for VYRA_CALL_FLIGHT_LOOP; "" for a number that is none. The
 * text is the library's and stays. May be called at any time, from a signal handler and another thread too.
 * [any thread]
 */
VYRA_API const char* VYRAGetCallKindName(int kind);

/* The functions of a watcher. `call` is valid during the function only, its texts for the life of the
 * process. They are called on the main thread, close around the plugin's own code, so what they cost is added
 * to every call. They must not throw, and must call no function of the library other than those of this
 * header. */
typedef void (*VYRAWatch_f)(const VYRARunningCall* call, void* refcon);

/* A watcher: two functions, and how much they want to be told. */
typedef struct {
  int structSize;     /* sizeof(VYRAWatcher) */
  int wantsAccessors; /* other than 0: also told of accessors of datarefs, thousands in a frame */
  VYRAWatch_f begin;  /* before the call */
  VYRAWatch_f end;    /* after it, also when it ends by an exception, which is then being handled */
  void* refcon;       /* passed to both */
} VYRAWatcher;

/* Sets the watcher, of which there is one, in place of the one before; null takes it away. The record is
 * copied. Returns 1, or 0 and changes nothing when structSize is not sizeof(VYRAWatcher) or a function is
 * null.
 *
 * The watcher is told of every call into a plugin, never of calls into the host. Begins and ends nest, and
 * each begin has its end, whatever happens in the call: an exception, its own plugin's unloading. A watcher
 * that is set inside a call is not told of that call's end, and one that is taken away is told of nothing
 * more. When a module's file is there and is opened, the library tells of VYRA_CALL_OPENING with the file's
 * path; how it ended stands in the log, or shows in the VYRA_CALL_START that follows.
 *
 * Main thread only; at any time, before the start too, and from inside a plugin's call.
 * [host]
 */
VYRA_API int VYRASetWatcher(const VYRAWatcher* watcher);

/* A plugin's window. Edges in screen pixels, y upward, as the plugin set them: nothing orders them. */
typedef struct {
  VYRAWindowID window;  /* its handle */
  VYRAPluginID plugin;  /* whose it is */
  int left;             /* the left edge */
  int top;              /* the upper edge */
  int right;            /* the right edge */
  int bottom;           /* the lower edge */
  int isShown;          /* it is visible and its plugin is enabled: it is drawn, and under the mouse */
  int hasKeyboardFocus; /* keys go to it */
  int holdsMouse;       /* the mouse went down on it and is not yet up again */
} VYRAWindowInfo;

/* Writes the windows of all plugins, hidden ones too, the front-most first, to outWindows, which has room for
 * `capacity` records, and returns how many there are, which may be more. outWindows may be null when capacity
 * is 0. Main thread only, once the library was started; in a frame, not between drawing step 20 and the
 * cursor query that follows it.
 * [host]
 */
VYRA_API int VYRAGetWindows(VYRAWindowInfo* outWindows, int capacity);

/* The window whose draw callback runs, or runs further out on the stack; null while none does. So a host's
 * drawing services know for which window they are called. Main thread only, at any time.
 * [host]
 */
VYRA_API VYRAWindowID VYRAGetDrawnWindow(void);

/* A published dataref. */
typedef struct {
  const char* name;     /* the library's, for the life of the process */
  VYRADataTypeID types; /* the type bits that the owner declared */
  int isWritable;       /* others may write it */
  VYRAPluginID owner;   /* who publishes it */
} VYRADataRefInfo;

/* Writes the datarefs that are published now, in the order of their names, to outDataRefs, which has room for
 * `capacity` records, and returns how many there are, which may be more. outDataRefs may be null when
 * capacity is 0. Main thread only; at any time, before the start too.
 * [host]
 */
VYRA_API int VYRAGetDataRefs(VYRADataRefInfo* outDataRefs, int capacity);

/* A plugin's handler of a command. */
typedef struct {
  VYRAPluginID plugin; /* whose it is */
  int isBefore;        /* it is called before the host acts on the command, and may keep it from that */
} VYRACommandHandlerInfo;

/* Writes the handlers of a command, in the order in which they are called, to outHandlers, which has room for
 * `capacity` records, and returns how many there are, which may be more. outHandlers may be null when
 * capacity is 0. Any pointer may be given: one that is no command has no handlers. Main thread only, at any
 * time.
 * [host]
 */
VYRA_API int VYRAGetCommandHandlers(VYRACommandRef command, VYRACommandHandlerInfo* outHandlers,
                                    int capacity);

VYRA_END_DECLARATIONS

#endif
