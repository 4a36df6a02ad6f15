#include "ShownWindow.h"

#include <X11/Xlib.h>

#include <stdexcept>

namespace {

// A window may be gone before it was asked about.
int PassOverError(Display* /*server*/, XErrorEvent* /*error*/) { return 0; }

class Connection {
 public:
  explicit Connection(const std::string& name) : server(XOpenDisplay(name.c_str())) {
    if (server == nullptr) throw std::runtime_error("no display " + name);
    XSetErrorHandler(PassOverError);
  }
  ~Connection() { XCloseDisplay(server); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  Display* Server() const { return server; }

 private:
  Display* server;
};

Window FindShown(Display* server) {
  Window root = 0;
  Window parent = 0;
  Window* children = nullptr;
  unsigned int count = 0;
  XQueryTree(server, DefaultRootWindow(server), &root, &parent, &children, &count);
  Window found = 0;
  for (unsigned int index = 0; index < count; ++index) {
    XWindowAttributes attributes{};
    XGetWindowAttributes(server, children[index], &attributes);
    if (attributes.map_state == IsViewable) found = children[index];
  }
  if (children != nullptr) XFree(children);
  return found;
}

}  // namespace

unsigned long FindShownWindow(const std::string& display) { return FindShown(Connection(display).Server()); }

void PressCloseButton(const std::string& display) {
  const Connection connection(display);
  Display* const server = connection.Server();
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = FindShown(server);
  event.xclient.message_type = XInternAtom(server, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(server, "WM_DELETE_WINDOW", False));
  XSendEvent(server, event.xclient.window, False, NoEventMask, &event);
  XSync(server, False);
}
