pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The five-page introduction shown as a sheet. Only "Get Started" records that it was seen;
// setting isPresented to false asks the presenter to close the sheet.
Item {
    id: root
    // The tour's sheet, to a screen reader a dialog named by what it is.
    Accessible.role: Accessible.Dialog
    Accessible.name: "Tutorial"
    property bool isPresented: true
    property int currentPage: 0
    readonly property int lastPage: pages.length - 1

    readonly property var pages: [
        {
            icon: "internaldrive.fill", iconColor: Theme.accentGradientStart,
            title: "Welcome to Ravelinth", subtitle: "Version 6.0",
            description: AppContext.words("A powerful tool to find and clean up large files on your Mac. Reclaim valuable disk space in minutes!"),
            features: []
        },
        {
            icon: "magnifyingglass", iconColor: Theme.blue,
            title: "Find Large Files", subtitle: "Scan any folder",
            description: "Ravelinth scans your folders and identifies files that are taking up the most space.",
            features: [
                { icon: "folder.fill", text: AppContext.words("Scan any folder on your Mac") },
                { icon: "slider.horizontal.3", text: "Set minimum file size threshold" },
                { icon: "speedometer", text: "Fast async scanning" }
            ]
        },
        {
            icon: "chart.pie.fill", iconColor: Theme.purple,
            title: "Categorize & Analyze", subtitle: "Understand your storage",
            description: "Files are automatically categorized so you can quickly identify what's using space.",
            features: [
                { icon: "externaldrive.badge.plus", text: "Installers (.dmg, .pkg) - Usually safe to delete" },
                { icon: "doc.zipper", text: "Archives (.zip, .tar) - Check if extracted" },
                { icon: "film", text: "Videos, Images, Documents & more" }
            ]
        },
        {
            icon: "trash.fill", iconColor: Theme.red,
            title: "Clean Up Safely", subtitle: "Free up space",
            description: "Move files to Trash with a single click. Files marked as \"Safe to Delete\" can usually be removed without worry.",
            features: [
                { icon: "checkmark.seal.fill", text: "Safe-to-delete detection" },
                { icon: "folder.badge.questionmark", text: AppContext.words("Reveal files in Finder to verify") },
                { icon: "arrow.uturn.backward", text: "Easy undo via Trash" }
            ]
        },
        {
            icon: "sparkles", iconColor: Theme.yellow,
            title: "Ready to Start!", subtitle: AppContext.words("Let's clean up your Mac"),
            description: "Click 'Get Started' to begin. Select a folder from the sidebar or use Quick Scan buttons.",
            features: [
                { icon: "house.fill", text: "Home - Scan your entire home folder" },
                { icon: "arrow.down.circle.fill", text: "Downloads - Find old installers" },
                { icon: "square.grid.2x2.fill", text: "Applications - Check app sizes" }
            ]
        }
    ]

    // Each showing starts on the first page.
    onIsPresentedChanged: if (isPresented) currentPage = 0

    implicitWidth: 600
    implicitHeight: 560

    Rectangle {
        anchors.fill: parent
        radius: 10
        color: Theme.textBackground
    }

    function focusFirstButton() {
        (backButton.visible ? backButton : nextButton).forceActiveFocus(Qt.PopupFocusReason)
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        SwipeView {
            id: pageView
            objectName: "pageView"
            Accessible.role: Accessible.Grouping
            Accessible.name: "Page " + (root.currentPage + 1) + " of " + root.pages.length
            Layout.fillWidth: true
            Layout.fillHeight: true
            interactive: false
            clip: true
            currentIndex: root.currentPage
            Repeater {
                model: root.pages
                OnboardingPageView {
                    required property var modelData
                    page: modelData
                }
            }
        }

        PageIndicator {
            objectName: "pageIndicator"
            Layout.alignment: Qt.AlignHCenter
            count: root.pages.length
            currentIndex: root.currentPage
            Accessible.role: Accessible.Indicator
            Accessible.name: "Page " + (root.currentPage + 1) + " of " + root.pages.length
        }

        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 40
            Layout.topMargin: 12
            ActionButton {
                id: backButton
                objectName: "backButton"
                title: "Back"
                style: "secondary"
                visible: root.currentPage >= 1
                action: () => root.currentPage -= 1
            }
            Item {
                Layout.fillWidth: true
                Layout.preferredHeight: nextButton.implicitHeight
            }
            ActionButton {
                id: nextButton
                objectName: "nextButton"
                title: root.currentPage < root.lastPage ? "Next" : "Get Started"
                style: "primary"
                action: () => {
                    if (root.currentPage < root.lastPage) {
                        root.currentPage += 1
                    } else {
                        RavelinthViewModel.preferences.hasSeenOnboarding = true
                        root.isPresented = false
                    }
                }
            }
        }
    }
}
