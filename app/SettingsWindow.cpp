#include "SettingsWindow.h"

#include "pages/QLAWSettingsMainController.h"

#include "platform/core/UIScreen.h"
#include "platform/qt/UIApplication.h"
#include "platform/qt/UINavigationController.h"

#include <QResizeEvent>
#include <QScreen>
#include <QVBoxLayout>

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
    auto* page = dynamic_cast<UIViewController*>(cls->createInstance());
    if (!page)
        return false;
    navigation_->pushViewController(page, false);
    return true;
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
