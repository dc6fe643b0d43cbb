// Asks a window to close as a window manager does: close_window NUMBER
#include <X11/Xlib.h>

#include <cstdlib>

int main(int, char** arguments) {
    Display* const display = XOpenDisplay(nullptr);
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = std::strtoul(arguments[1], nullptr, 10);
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", 0);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", 0));
    XSendEvent(display, event.xclient.window, 0, NoEventMask, &event);
    return XCloseDisplay(display);
}
