import QtQuick
import Velmora.Kit

/// Connects the online storage.
VButton {
    mark: GoogleDriveMark {}
}
