#pragma once

#include "pages/PageClasses.h"

#include "platform/core/UIScreen.h"
#include "platform/qt/NSBundle.h"
#include "platform/qt/UIAlertView.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UIDevice.h"
#include "platform/qt/UINavigationController.h"

#include <QApplication>
#include <QCoreApplication>

#include <memory>
#include <string>
#include <vector>

// One application for the whole test binary, the page classes registered, the bundle at the
// compiled-in resources, a phone on system 16.0, and URLs caught instead of opened.
inline QApplication& testApplication()
{
    static int argc = 1;
    static char name[] = "ampwell-tests";
    static char* argv[] = {name, nullptr};
    static QApplication* application = [] {
        auto* made = new QApplication(argc, argv);
        registerAmpwellPages();
        return made;
    }();
    return *application;
}

// Catches every URL the pages open, and answers scheme queries from a list.
struct URLRecorder {
    std::vector<std::string> opened;
    std::vector<std::string> installedSchemes;

    URLRecorder()
    {
        UIApplication& application = UIApplication::sharedApplication();
        application.setURLOpenerForTesting([this](const std::string& url) {
            opened.push_back(url);
            return true;
        });
        application.setSchemeQueryForTesting([this](const std::string& scheme) {
            for (const std::string& installed : installedSchemes)
                if (installed == scheme)
                    return true;
            return false;
        });
    }
    ~URLRecorder()
    {
        UIApplication::sharedApplication().setURLOpenerForTesting(nullptr);
        UIApplication::sharedApplication().setSchemeQueryForTesting(nullptr);
    }
};

// A phone-sized window holding a navigation stack, the key window while it lives. The device
// (UIDevice) is whatever the test set before.
class TestWindow {
public:
    explicit TestWindow(UIViewController* root)
    {
        testApplication();
        UIScreen::mainScreen().setBounds(CGRectMake(0, 0, 390, 844));
        window_ = std::make_unique<QWidget>();
        window_->resize(390, 844);
        UIApplication::sharedApplication().setKeyWindow(window_.get());
        navigation_ = new UINavigationController(root, window_.get());
        navigation_->resize(390, 844);
        window_->show();
        navigation_->viewWillAppear(false);
        navigation_->viewDidAppear(false);
        settle();
    }
    ~TestWindow()
    {
        for (UIAlertView* alert : UIAlertView::visibleAlerts())
            alert->dismissWithClickedButtonIndex(0, false);
        settle();
        window_.reset();
        settle();
    }

    QWidget* window() const { return window_.get(); }
    UINavigationController* navigation() const { return navigation_; }
    UIViewController* top() const { return navigation_->topViewController(); }

    static void settle()
    {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

private:
    std::unique_ptr<QWidget> window_;
    UINavigationController* navigation_;
};

// The alert on screen with this title, or null.
inline UIAlertView* alertTitled(const std::string& title)
{
    for (UIAlertView* alert : UIAlertView::visibleAlerts())
        if (alert->title() == title)
            return alert;
    return nullptr;
}
