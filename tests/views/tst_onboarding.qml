import QtQuick
import QtTest
import Ravelinth

TestCase {
    id: testCase
    name: "Onboarding"
    when: windowShown
    visible: true
    width: 600
    height: 560

    Component {
        id: onboardingComponent
        OnboardingView {
            width: 600
            height: 560
        }
    }
    // The one store of preferences; the flag is put back after each test.
    readonly property Preferences seen: RavelinthViewModel.preferences
    property bool seenBefore
    function init() {
        seenBefore = seen.hasSeenOnboarding
    }
    function cleanup() {
        seen.hasSeenOnboarding = seenBefore
    }
    function part(view, name) {
        return findChild(view, name)
    }

    function test_pagesReadExactly() {
        const view = createTemporaryObject(onboardingComponent, testCase)
        const expected = [
            ["Welcome to Ravelinth", "Version 6.0", "A powerful tool to find and clean up large files on your computer. Reclaim valuable disk space in minutes!", []],
            ["Find Large Files", "Scan any folder", "Ravelinth scans your folders and identifies files that are taking up the most space.",
             ["Scan any folder on your computer", "Set minimum file size threshold", "Fast async scanning"]],
            ["Categorize & Analyze", "Understand your storage", "Files are automatically categorized so you can quickly identify what's using space.",
             ["Installers (.dmg, .pkg) - Usually safe to delete", "Archives (.zip, .tar) - Check if extracted", "Videos, Images, Documents & more"]],
            ["Clean Up Safely", "Free up space", "Move files to Trash with a single click. Files marked as \"Safe to Delete\" can usually be removed without worry.",
             ["Safe-to-delete detection", "Reveal files in File Manager to verify", "Easy undo via Trash"]],
            ["Ready to Start!", "Let's clean up your computer", "Click 'Get Started' to begin. Select a folder from the sidebar or use Quick Scan buttons.",
             ["Home - Scan your entire home folder", "Downloads - Find old installers", "Applications - Check app sizes"]]
        ]
        compare(view.pages.length, 5)
        for (let i = 0; i < expected.length; ++i) {
            const page = part(view, "pageView").itemAt(i)
            compare(findChild(page, "title").text, expected[i][0])
            compare(findChild(page, "subtitle").text, expected[i][1])
            compare(findChild(page, "description").text, expected[i][2])
            compare(view.pages[i].features.map(f => f.text), expected[i][3])
            compare(findChild(page, "features").visible, expected[i][3].length > 0)
        }
    }

    function test_pagingWithBackNextAndGetStarted() {
        seen.hasSeenOnboarding = false
        const view = createTemporaryObject(onboardingComponent, testCase)
        const backButton = part(view, "backButton")
        const nextButton = part(view, "nextButton")
        compare(view.currentPage, 0)
        verify(!backButton.visible)
        compare(nextButton.title, "Next")
        for (let page = 1; page <= 4; ++page) {
            wait(450)
            grabImage(view).save("onboarding-" + (page - 1) + ".png")
            mouseClick(nextButton)
            compare(view.currentPage, page)
            verify(backButton.visible)
        }
        compare(nextButton.title, "Get Started")
        wait(450)
        grabImage(view).save("onboarding-4.png")
        mouseClick(backButton)
        compare(view.currentPage, 3)
        compare(nextButton.title, "Next")
        mouseClick(nextButton)
        verify(!seen.hasSeenOnboarding)
        mouseClick(nextButton)
        verify(seen.hasSeenOnboarding)
        verify(!view.isPresented)
    }

    function test_closingOtherwiseLeavesTheFlagAndReopeningStartsOver() {
        seen.hasSeenOnboarding = false
        const view = createTemporaryObject(onboardingComponent, testCase)
        mouseClick(part(view, "nextButton"))
        mouseClick(part(view, "nextButton"))
        compare(view.currentPage, 2)
        view.isPresented = false
        verify(!seen.hasSeenOnboarding)
        view.isPresented = true
        compare(view.currentPage, 0)
    }
}
