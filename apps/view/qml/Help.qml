// What the mouse and the keys do. The manual page and the guide have the same rows; a test compares them.
import QtQuick

Rectangle {
    id: help
    readonly property var rows: [
        ["Drag", "Turn around the object; on a ride, look around"],
        ["Shift and drag, or right button", "Move the view"],
        ["Wheel, + and -", "Nearer and farther; on a ride, its speed"],
        ["N and P", "Go to the next and the previous tunnel"],
        ["Arrows", "Turn; with Shift, move; on a ride, up and down set its speed"],
        ["Space", "Start and stop the ride along the track"],
        ["Esc", "Leave the ride"],
        ["F or Home", "Show the whole object"],
        ["B", "Show the backs of faces in red, or not at all"],
        ["S", "Save the picture"],
        ["O", "Open an object or a track"],
        ["F1", "Show the keys"],
        ["Ctrl+Q", "Close the window"],
    ]

    width: columns.width + 32
    height: columns.height + 24
    scale: Math.min(1, parent.width / width, parent.height / height)
    color: palette.window
    opacity: 0.95
    radius: 6

    SystemPalette { id: palette }
    Row {
        id: columns
        anchors.centerIn: parent
        spacing: 24
        Repeater {
            model: 2
            Text {
                required property int index
                text: help.rows.map(row => row[index]).join("\n")
                color: palette.windowText
                font.bold: index === 0
                lineHeight: 1.3
            }
        }
    }
}
