import QtQuick
import Vorq

Grid {
    columns: 3
    columnSpacing: 28
    rowSpacing: 22

    FormField { width: 280; label: "Rest"; placeholder: "name@example.org" }
    FormField { objectName: "want:hover"; width: 280; label: "Hover"; placeholder: "name@example.org" }
    FormField { objectName: "want:focus"; width: 280; label: "Focus"; text: "mira@example.org" }
    FormField { width: 280; label: "With a hint"; placeholder: "name@example.org"; hint: "Your sign-in link goes there." }
    FormField { width: 280; label: "Error"; text: "mira@example"; error: "Enter a valid email address" }
    FormField { width: 280; enabled: false; label: "Disabled"; text: "mira@example.org" }
    FormField { width: 280; label: "Password"; isPassword: true; text: "correct horse" }
    FormField { width: 280; label: "Password, shown"; isPassword: true; isRevealed: true; text: "correct horse" }
    FormField { objectName: "want:focus"; width: 280; label: "Error with focus"; isPassword: true; text: "abc"; error: "Too short" }
    FormField {
        width: 280
        label: "A label of many words, which wraps because a label is never cut"
        text: "what stands in the field scrolls, however long it is"
        error: "And what is wrong is said in full, on as many lines as it takes to say it."
    }
    FormField { width: 280; label: "Long placeholder"; placeholder: "A placeholder that is longer than its field is wide" }
}
