import QtQuick
import Velmora.Kit

/// Connects the task tracker, or sends tasks to it.
VButton {
    mark: AsanaMark {}
}
