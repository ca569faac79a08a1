#pragma once

#include "UIViewController.h"

#include "platform/core/UIColor.h"

#include <QPointer>

#include <map>
#include <optional>
#include <vector>

class QStackedLayout;
class UIButton;

// The bar above the pages: a back button titled after the page below, the top page's title
// (or title view) and its right bar button items. Its tint colours the buttons; the title
// text attributes colour the title.
class UINavigationBar : public QWidget {
    Q_OBJECT

public:
    explicit UINavigationBar(QWidget* parent = nullptr);

    // The title's colour (the foreground colour of the title text attributes); nothing
    // means the normal label colour.
    std::optional<UIColor> titleTextColor() const { return titleColor_; }
    void setTitleTextColor(std::optional<UIColor> color);
    UIButton* backButton() const { return back_; }
    QString shownTitle() const;

    static constexpr int kHeight = 44;

    void show(UINavigationItem* item, const std::string& backTitle);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    std::optional<UIColor> titleColor_;
    QPointer<UINavigationItem> item_;
    QPointer<QWidget> titleView_;
    std::vector<QPointer<QWidget>> rightViews_;
    std::vector<QPointer<QWidget>> madeButtons_;
    UIButton* back_;
    class QLabel* title_;
    QString backTitle_;
    QString fullTitle_;
};

// A stack of pages under a navigation bar. Pushing and popping run the pages' appearance
// hooks in the platform's order. Escape and Alt+Left go back.
class UINavigationController : public UIViewController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    // The root page is shown once the controller itself appears (viewWillAppear / viewDidAppear).
    explicit UINavigationController(UIViewController* root = nullptr, QWidget* parent = nullptr);
    ~UINavigationController() override;

    UINavigationBar* navigationBar() const { return bar_; }
    const std::vector<UIViewController*>& viewControllers() const { return stack_; }
    UIViewController* topViewController() const { return stack_.empty() ? nullptr : stack_.back(); }

    void pushViewController(UIViewController* controller, bool animated = true);
    // Pops the top page (never the root); returns whether one was popped.
    bool popViewControllerAnimated(bool animated = true);

    // Runs the rotation hooks of the top page for a change between portrait and landscape.
    void rotate(UIInterfaceOrientation to);

    // Appearance hooks of the page on top, for the window that shows or hides the stack.
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;

private:
    // Puts the page on top without running its appearance hooks.
    void adopt(UIViewController* controller);
    void refreshBar();
    // Gives the page the keyboard unless one of its own widgets has it already.
    void keepKeyboardOn(UIViewController* page);

    UINavigationBar* bar_;
    QStackedLayout* pages_;
    std::vector<UIViewController*> stack_;
    std::map<const UIViewController*, QPointer<QWidget>> focusBeforePush_;
};
