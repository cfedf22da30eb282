// SPDX-License-Identifier: MIT
import QtQuick

// The press feedback of a button that leads somewhere: down to 0.9 over
// 0.2 s, then back over 0.2 s. A second tap starts it again and it still
// ends at full size.
SequentialAnimation {
    id: feedback

    required property Item target

    NumberAnimation {
        target: feedback.target
        property: "scale"
        to: 0.9
        duration: 200
    }
    NumberAnimation {
        target: feedback.target
        property: "scale"
        to: 1
        duration: 200
    }
}
