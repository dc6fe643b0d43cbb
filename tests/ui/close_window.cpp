// Asks a window to close as a window manager does: close_window NUMBER
#include <X11/Xlib.h>

#include <cstdlib>

int main(int, char** arguments) {
    Display* const display = XOpenDisplay(nullptr);
    XClientMessageEvent event{};
    event.type = ClientMessage;
    event.window = std::strtoul(arguments[1], nullptr, 10);
    event.message_type = XInternAtom(display, "WM_PROTOCOLS", 0);
    event.format = 32;
    event.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", 0));
    XSendEvent(display, event.window, 0, NoEventMask, reinterpret_cast<XEvent*>(&event));
    return XCloseDisplay(display);
}
