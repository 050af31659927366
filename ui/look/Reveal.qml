import QtQuick
import Tessary.Look

// A part that comes and goes with `shown`: its room opens and closes while it fades, or slides in from and out to
// the leading edge. Gone means gone for the mouse, the keyboard and screen readers too.
Item {
    id: reveal

    default property alias content: holder.data
    property bool shown: true
    property bool slides: false
    property alias response: spring.response
    property real gap: 0 ///< above it, closed with it
    readonly property alias amount: spring.value

    implicitHeight: (holder.childrenRect.height + gap) * amount
    visible: amount > 0 || shown
    enabled: shown

    SpringValue {
        id: spring

        animated: Look.animations
        goal: reveal.shown ? 1 : 0
    }

    Item {
        id: holder

        readonly property real side: reveal.LayoutMirroring.enabled ? 1 : -1

        x: reveal.slides ? side * (1 - reveal.amount) * (reveal.width + 2 * Look.padding) : 0
        y: reveal.gap
        width: reveal.width
        height: childrenRect.height
        opacity: reveal.slides ? 1 : Math.min(reveal.amount, 1)
    }
}
