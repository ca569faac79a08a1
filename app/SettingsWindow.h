#pragma once

#include <QWidget>

class UINavigationController;
class ObjCClass;
class UIViewController;

// The phone-sized window: a navigation stack that opens on the main page. The window's size
// is the screen's; wider than tall counts as landscape and turns the pages.
class SettingsWindow : public QWidget {
    Q_OBJECT

public:
    static constexpr int kPhoneWidth = 390;
    static constexpr int kPhoneHeight = 844;

    explicit SettingsWindow(QWidget* parent = nullptr);

    UINavigationController* navigationController() const { return navigation_; }
    // Runs the main page's appearance hooks; call once the window is on screen.
    void appear();
    // Opens a page of the class above the main page; false when no page class has the name.
    bool pushPageNamed(const std::string& className);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateScreen();
    void screenChanged();
    // Opens the page of the class through the row that names it, on the page on top or on a
    // page that one of its rows opens, up to the depth; false when no such row is found.
    bool openThroughRow(const ObjCClass& cls, int depth);

    UINavigationController* navigation_;
};
