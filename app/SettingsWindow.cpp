#include "SettingsWindow.h"

#include "pages/QLAWSettingsMainController.h"
#include "render/preview/QLAWBatteryPreView.h"

#include "platform/core/UIScreen.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/PSTableCell.h"
#include "platform/qt/UINavigationController.h"

#include <QResizeEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

SettingsWindow::SettingsWindow(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("Ampwell Settings"));
    resize(kPhoneWidth, kPhoneHeight);
    setMinimumSize(320, 320);
    UIApplication::sharedApplication().setKeyWindow(this);
    updateScreen();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    navigation_ = new UINavigationController(new QLAWSettingsMainController(), this);
    layout->addWidget(navigation_);
}

void SettingsWindow::appear()
{
    // A window moved to a screen of another pixel ratio draws its previews anew for it.
    if (QWindow* handle = windowHandle())
        connect(handle, &QWindow::screenChanged, this, &SettingsWindow::screenChanged, Qt::UniqueConnection);
    updateScreen();
    navigation_->viewWillAppear(false);
    navigation_->viewDidAppear(false);
}

bool SettingsWindow::pushPageNamed(const std::string& className)
{
    const ObjCClass* cls = ObjCClass::named(className);
    if (!cls || !cls->isSubclassOfClass(UIViewController::staticClass()))
        return false;
    if (cls == &QLAWSettingsMainController::staticClass())
        return true;
    // A page is opened the way a user reaches it, through the row that names it, so that it
    // has what that row gives it (a list page its choices).
    if (openThroughRow(*cls, 2))
        return true;
    auto* page = dynamic_cast<UIViewController*>(cls->createInstance());
    if (!page)
        return false;
    navigation_->pushViewController(page, false);
    return true;
}

bool SettingsWindow::openThroughRow(const ObjCClass& cls, int depth)
{
    auto* top = dynamic_cast<PSListController*>(navigation_->topViewController());
    if (!top || depth <= 0)
        return false;
    SpecifierList entries = top->specifiers();
    for (const std::shared_ptr<PSSpecifier>& entry : entries) {
        if (entry->detailControllerClass() == &cls) {
            top->pushControllerForSpecifier(entry);
            return navigation_->topViewController() != top;
        }
        if (PSTableCell* row = top->cachedCellForSpecifier(entry); row && row->openedPageClass() == &cls) {
            row->activate();
            return navigation_->topViewController() != top;
        }
    }
    for (const std::shared_ptr<PSSpecifier>& entry : entries) {
        const ObjCClass* detail = entry->detailControllerClass();
        if (!detail || !detail->isSubclassOfClass(PSListController::staticClass()))
            continue;
        top->pushControllerForSpecifier(entry);
        if (navigation_->topViewController() == top)
            continue;
        if (openThroughRow(cls, depth - 1))
            return true;
        navigation_->popViewControllerAnimated(false);
    }
    return false;
}

void SettingsWindow::screenChanged()
{
    updateScreen();
    for (QLAWBatteryPreView* preview : findChildren<QLAWBatteryPreView*>())
        preview->refreshBattery();
}

void SettingsWindow::updateScreen()
{
    UIScreen& screen = UIScreen::mainScreen();
    screen.setBounds(CGRectMake(0, 0, width(), height()));
    if (QScreen* display = this->screen())
        screen.setScale(display->devicePixelRatio());
}

void SettingsWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updateScreen();
    if (navigation_)
        navigation_->rotate(width() > height() ? UIInterfaceOrientationLandscapeLeft : UIInterfaceOrientationPortrait);
}
