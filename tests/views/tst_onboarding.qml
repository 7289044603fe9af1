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

    // The texts that name a platform speak of this one.
    function test_pagesNameThisPlatform() {
        const view = createTemporaryObject(onboardingComponent, testCase)
        const pages = findChild(view, "pageView")
        compare([findChild(pages.itemAt(0), "description").text, view.pages[1].features[0].text,
                 view.pages[3].features[1].text, findChild(pages.itemAt(4), "subtitle").text],
                ["A powerful tool to find and clean up large files on your computer. Reclaim valuable disk space in minutes!",
                 "Scan any folder on your computer", "Reveal files in File Manager to verify",
                 "Let's clean up your computer"])
    }

    function test_pagingWithBackNextAndGetStarted() {
        seen.hasSeenOnboarding = false
        const view = createTemporaryObject(onboardingComponent, testCase)
        const backButton = findChild(view, "backButton")
        const nextButton = findChild(view, "nextButton")
        compare(view.currentPage, 0)
        verify(!backButton.visible)
        compare(nextButton.title, "Next")
        for (let page = 1; page <= 4; ++page) {
            mouseClick(nextButton)
            compare(view.currentPage, page)
            verify(backButton.visible)
        }
        compare(nextButton.title, "Get Started")
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
        mouseClick(findChild(view, "nextButton"))
        mouseClick(findChild(view, "nextButton"))
        compare(view.currentPage, 2)
        view.isPresented = false
        verify(!seen.hasSeenOnboarding)
        view.isPresented = true
        compare(view.currentPage, 0)
    }
}
