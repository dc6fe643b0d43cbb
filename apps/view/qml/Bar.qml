// Text on a plain ground, in the colours of the desktop.
import QtQuick

Rectangle {
    property alias text: label.text
    property bool isWarning: false

    SystemPalette { id: palette }
    implicitWidth: label.implicitWidth + 24
    implicitHeight: label.implicitHeight + 8
    color: isWarning ? "#b00020" : palette.window
    opacity: 0.92
    Text {
        id: label
        anchors { fill: parent; leftMargin: 12; rightMargin: 12 }
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        color: parent.isWarning ? "white" : palette.windowText
    }
}
