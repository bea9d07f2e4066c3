import QtQuick
import Velmora.Kit

/// The dictation key, lit while it is heard.
VKeyCap {
    required property string label
    property bool lit: false

    text: label
    gradient: lit
    fontSize: label.length > 9 ? 13 : label.length > 4 ? 17 : 22
}
