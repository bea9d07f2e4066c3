import QtQuick
import QtQuick.Templates as T
import Velmora.Kit

Sheet {
    Specimen {
        caption: "VLogo"

        VLogo { size: 18 }
        VLogo { size: 28 }
        VLogo { size: 44 }
        VLogo { size: 72 }
        VLogo { size: 72; radius: 36; bars: [10, 24, 40, 52, 40, 24, 10] }
    }
    Specimen {
        caption: "VBrandWordmark"

        VLogo { size: 28 }
        VBrandWordmark { size: 20 }
    }
    Specimen {
        caption: "AsanaMark, GoogleDriveMark"

        AsanaMark {}
        GoogleDriveMark {}
        AsanaMark { size: 32 }
        GoogleDriveMark { size: 32 }
    }
    Specimen {
        caption: "VTrafficLights"

        VTrafficLights {}
    }
    Specimen {
        caption: "VScrollBar"

        VScrollBar { size: 0.3; position: 0.2; height: 80; policy: T.ScrollBar.AlwaysOn }
        VScrollBar { size: 0.3; position: 0.5; width: 120; orientation: Qt.Horizontal; policy: T.ScrollBar.AlwaysOn }
    }
}
