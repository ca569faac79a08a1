#pragma once

#include "NSObject.h"
#include "UIBarButtonItem.h"

#include <QPointer>
#include <QWidget>

#include <optional>
#include <string>
#include <vector>

class UINavigationController;

enum UIInterfaceOrientation {
    UIInterfaceOrientationPortrait = 1,
    UIInterfaceOrientationPortraitUpsideDown = 2,
    UIInterfaceOrientationLandscapeLeft = 4,
    UIInterfaceOrientationLandscapeRight = 3,
};

// What a page shows in the navigation bar while it is on top.
class UINavigationItem : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    QWidget* titleView() const { return titleView_; }
    void setTitleView(QWidget* view);
    const std::vector<QPointer<UIBarButtonItem>>& rightBarButtonItems() const { return rightItems_; }
    void setRightBarButtonItems(const std::vector<UIBarButtonItem*>& items, bool animated = false);
    void setRightBarButtonItem(UIBarButtonItem* item) { setRightBarButtonItems({item}); }

signals:
    void changed();

private:
    std::string title_;
    QPointer<QWidget> titleView_;
    std::vector<QPointer<UIBarButtonItem>> rightItems_;
};

// A page: the widget is the page's view, made by loadView on first demand.
class UIViewController : public QWidget, public NSObject {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    explicit UIViewController(QWidget* parent = nullptr);

    void loadViewIfNeeded();
    bool isViewLoaded() const { return viewLoaded_; }

    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    UINavigationItem* navigationItem() { return navigationItem_; }
    UINavigationController* navigationController() const { return navigationController_; }
    void setNavigationController(UINavigationController* controller) { navigationController_ = controller; }

    // The device orientation the page is shown in.
    UIInterfaceOrientation interfaceOrientation() const { return orientation_; }
    void setInterfaceOrientation(UIInterfaceOrientation orientation) { orientation_ = orientation; }

    virtual void loadView() {}
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool) {}
    virtual void viewDidAppear(bool) {}
    virtual void viewWillDisappear(bool) {}
    virtual void viewDidDisappear(bool) {}
    virtual void viewDidLayoutSubviews() {}
    virtual void willRotateToInterfaceOrientation(UIInterfaceOrientation) {}
    virtual void didRotateFromInterfaceOrientation(UIInterfaceOrientation) {}
    // Escape on the page; true when the page dealt with it. Otherwise Escape goes back, as
    // Alt+Left always does.
    virtual bool escapePressed() { return false; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    bool viewLoaded_ = false;
    std::string title_;
    UINavigationItem* navigationItem_;
    UINavigationController* navigationController_ = nullptr;
    UIInterfaceOrientation orientation_ = UIInterfaceOrientationPortrait;
};
