#pragma once

#include "platform/qt/PSListController.h"

#include "platform/core/UIColor.h"

#include <stdexcept>

// Raised when a page has neither an entry table nor a property list of entries.
class PKNoSpecifiersError : public std::logic_error {
public:
    PKNoSpecifiersError() : std::logic_error("") {}
};

// The list page every settings page derives from: entries from the page's table (or a
// property list), translated labels, a picture or title header, the heart share button,
// and the page's tint on the bar, the window and the switches while the page is on screen.
// Pages customise it only through the hooks of PKListControllerProtocol.
class PKTintedListController : public PSListController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    SpecifierList& specifiers() override;
    std::string navigationTitle();
    SpecifierList& localizedSpecifiersWithSpecifiers(SpecifierList& specifiers);
    std::string localizedString(const std::string& text);
    void loadView() override;
    void heartWasTouched();
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    void setupHeader();
    bool showHeartImage() { return true; }
    bool shiftHeartImage() { return true; }
    UIColor heartImageColor();
    void didRotateFromInterfaceOrientation(UIInterfaceOrientation from) override;

    // The tint steps shared with the list-items page: apply on appearing, remove on leaving.
    static void applyTint(UIViewController& page);
    static void removeTint(UIViewController& page);

    // The share button in the bar (null when the page shows none).
    QWidget* heartButton() const { return heart_; }

private:
    void tintSwitches();

    QPointer<QWidget> heart_;
};
