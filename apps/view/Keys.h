// What the mouse and the keys do. The manual page and the guide have the same rows; a test compares them.
#pragma once

namespace boreforge {

struct KeyHelp {
    const char* keys;
    const char* effect;
};

inline constexpr KeyHelp kKeyHelp[] = {
    {"Drag", "Turn around the object; on a ride, look around"},
    {"Shift and drag, or right button", "Move the view"},
    {"Wheel, + and -", "Nearer and farther; on a ride, its speed"},
    {"N and P", "Go to the next and the previous tunnel"},
    {"Arrows", "Turn; with Shift, move; on a ride, up and down set its speed"},
    {"Space", "Start and stop the ride along the track"},
    {"Esc", "Leave the ride"},
    {"F or Home", "Show the whole object"},
    {"B", "Show the backs of faces in red, or not at all"},
    {"S", "Save the picture"},
    {"O", "Open an object or a track"},
    {"F1", "Show the keys"},
    {"Ctrl+Q", "Close the window"},
};

}  // namespace boreforge
