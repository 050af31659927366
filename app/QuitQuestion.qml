import QtQuick
import Tessary.Look

// Asks whether what is under way may be lost.
QuestionSheet {
    required property AppWindow asker

    objectName: "quitQuestion"
    enabled: !asker.questionIsVoid
    opacity: enabled ? 1 : 0
    question: qsTr("Quit while an upload is under way?")
    explanation: asker.quitExplanation
    yes: qsTr("Quit")
    no: qsTr("Keep Uploading")
    onAnswered: yes => asker.answer(yes)
}
