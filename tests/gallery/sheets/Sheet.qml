import QtQuick
import Velmora.Kit

/// A page of specimens, each row under its caption.
Column {
    spacing: 20
}
